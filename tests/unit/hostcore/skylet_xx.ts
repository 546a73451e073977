<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name>NetInfoUIExPlugin</name>
    <message>
        <source>IDS_YES</source>
        <translation>Aye</translation>
    </message>
</context>
</TS>
