<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>NetInfoUIExPlugin</name>
    <message>
        <source>IDS_TREE_SPEED</source>
        <translation>Geschwindigkeit:</translation>
    </message>
    <message>
        <source>IDS_TREE_DATA</source>
        <translation>Daten:</translation>
    </message>
    <message>
        <source>IDS_TREE_TIME_TRANSFER</source>
        <translation>Verbindungsdauer:</translation>
    </message>
    <message>
        <source>IDS_TREE_UPLOADED_DATA</source>
        <translation>Gesendet:</translation>
    </message>
    <message>
        <source>IDS_TREE_DOWNLOADED_DATA</source>
        <translation>Empfangen:</translation>
    </message>
    <message>
        <source>IDS_TREE_TRANSFER</source>
        <translation>Übertragung</translation>
    </message>
    <message>
        <source>IDS_DIALUP_TRANSFER</source>
        <translation>(mobil)</translation>
    </message>
    <message>
        <source>IDS_WLAN_TRANSFER</source>
        <translation>(WLAN)</translation>
    </message>
    <message>
        <source>IDS_TREE_UPLOAD</source>
        <translation>Senden</translation>
    </message>
    <message>
        <source>IDS_TREE_DOWNLOAD</source>
        <translation>Empfangen</translation>
    </message>
    <message>
        <source>IDS_TREE_STATISTICS</source>
        <translation>Statistik</translation>
    </message>
    <message>
        <source>IDS_TREE_TIME_LASTRESET</source>
        <translation>Zuletzt zurückgesetzt:</translation>
    </message>
    <message>
        <source>IDS_TREE_DAILY</source>
        <translation>Heute</translation>
    </message>
    <message>
        <source>IDS_TREE_MONTHLY</source>
        <translation>Dieser Monat</translation>
    </message>
    <message>
        <source>IDS_TREE_YEARLY</source>
        <translation>Dieses Jahr</translation>
    </message>
    <message>
        <source>IDS_NOTES</source>
        <translation>Die Zahlen sind Schätzungen; es gilt die Rechnung Ihres Anbieters.</translation>
    </message>
    <message>
        <source>IDS_CLEAR_VOLUME</source>
        <translation>Statistik zurücksetzen</translation>
    </message>
    <message>
        <source>IDS_EXPAND_ALL</source>
        <translation>Alle aufklappen</translation>
    </message>
    <message>
        <source>IDS_COLLAPSE_ALL</source>
        <translation>Alle zuklappen</translation>
    </message>
    <message>
        <source>IDS_CONFIRM</source>
        <translation>Bestätigen</translation>
    </message>
    <message>
        <source>IDS_RESET_QUERY</source>
        <translation>Alle gespeicherten Statistiken zurücksetzen? Das lässt sich nicht rückgängig machen.</translation>
    </message>
    <message>
        <source>IDS_YES</source>
        <translation>Ja</translation>
    </message>
    <message>
        <source>IDS_NO</source>
        <translation>Nein</translation>
    </message>
    <message>
        <source>IDS_OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>IDS_SETTING_NAME</source>
        <translation>Datenverbrauch</translation>
    </message>
    <message>
        <source>IDS_UNIT_B</source>
        <translation>B</translation>
    </message>
    <message>
        <source>IDS_UNIT_KB</source>
        <translation>KB</translation>
    </message>
    <message>
        <source>IDS_UNIT_MB</source>
        <translation>MB</translation>
    </message>
    <message>
        <source>IDS_UNIT_GB</source>
        <translation>GB</translation>
    </message>
    <message>
        <source>IDS_UNIT_TB</source>
        <translation>TB</translation>
    </message>
    <message>
        <source>IDS_UNIT_BPS</source>
        <translation>B/s</translation>
    </message>
    <message>
        <source>IDS_UNIT_KBPS</source>
        <translation>KB/s</translation>
    </message>
    <message>
        <source>IDS_UNIT_MBPS</source>
        <translation>MB/s</translation>
    </message>
    <message>
        <source>IDS_UNIT_GBPS</source>
        <translation>GB/s</translation>
    </message>
    <message>
        <source>IDS_UNIT_TBPS</source>
        <translation>TB/s</translation>
    </message>
    <message>
        <source>IDS_STA_TOTALVOLUME</source>
        <translation>Datenverbrauch:</translation>
    </message>
    <message>
        <source>IDC_STA_TIMEVOLUME</source>
        <translation>Verbrauchte Zeit:</translation>
    </message>
    <message>
        <source>IDC_VOLUMENOTES</source>
        <translation>Die Zahlen sind Schätzungen; es gilt die Rechnung Ihres Anbieters.</translation>
    </message>
    <message>
        <source>IDS_BTN_RESET</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>IDC_BTN_SETLIMIT</source>
        <translation>Limit festlegen …</translation>
    </message>
    <message>
        <source>IDS_UNIT_HOURS</source>
        <translation>Stunden</translation>
    </message>
    <message>
        <source>IDS_BOX_WARNBEFORE</source>
        <translation>Ihr Datenvolumen für diesen Zeitraum ist fast verbraucht.</translation>
    </message>
    <message>
        <source>IDS_BOX_WARNAFTER</source>
        <translation>Ihr Datenvolumen für diesen Zeitraum ist verbraucht.</translation>
    </message>
    <message>
        <source>IDS_BOX_TIMEWARNBEFORE</source>
        <translation>Ihre Verbindungszeit für diesen Zeitraum ist fast verbraucht.</translation>
    </message>
    <message>
        <source>IDS_BOX_TIMEWARNAFTER</source>
        <translation>Ihre Verbindungszeit für diesen Zeitraum ist verbraucht.</translation>
    </message>
    <message>
        <source>IDS_BOX_WARNTITLE</source>
        <translation>Verbrauchswarnung</translation>
    </message>
    <message>
        <source>IDS_BOX_WARNIDOK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>IDS_DISCONNECT_BUTTON</source>
        <translation>Trennen</translation>
    </message>
    <message>
        <source>IDS_SAVESETTING</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>IDS_CLEAR_BUTTON</source>
        <translation>Verlauf löschen</translation>
    </message>
    <message>
        <source>IDS_GRP_RECURRENCE</source>
        <translation>Wiederholung</translation>
    </message>
    <message>
        <source>IDS_RADIO_DAILY</source>
        <translation>Täglich</translation>
    </message>
    <message>
        <source>IDC_RADIO_WEEKLY</source>
        <translation>Wöchentlich</translation>
    </message>
    <message>
        <source>IDS_RADIO_MONTHLY</source>
        <translation>Monatlich</translation>
    </message>
    <message>
        <source>IDS_MONDAY</source>
        <translation>Mo</translation>
    </message>
    <message>
        <source>IDS_TUESDAY</source>
        <translation>Di</translation>
    </message>
    <message>
        <source>IDS_WEDNESAY</source>
        <translation>Mi</translation>
    </message>
    <message>
        <source>IDS_THURSDAY</source>
        <translation>Do</translation>
    </message>
    <message>
        <source>IDS_FRIDAY</source>
        <translation>Fr</translation>
    </message>
    <message>
        <source>IDS_SATURDAY</source>
        <translation>Sa</translation>
    </message>
    <message>
        <source>IDS_SUNDAY</source>
        <translation>So</translation>
    </message>
    <message>
        <source>IDS_GRP_SETLIMIT</source>
        <translation>Limit</translation>
    </message>
    <message>
        <source>IDS_UNIT_DATA_VOLUME_MB</source>
        <translation>MB</translation>
    </message>
    <message>
        <source>IDS_SAVE_FAILED</source>
        <translation>Die Einstellungen konnten nicht gespeichert werden.</translation>
    </message>
    <message>
        <source>IDS_CHANGED_SAVE</source>
        <translation>Die Einstellungen wurden gespeichert.</translation>
    </message>
    <message>
        <source>IDS_PROPMT</source>
        <translation>Hinweis</translation>
    </message>
    <message>
        <source>IDS_TRENDS_SPEED</source>
        <translation>Geschwindigkeit in </translation>
    </message>
    <message>
        <source>IDS_TRENDS_UPLOAD_SPEED</source>
        <translation>Sendegeschwindigkeit</translation>
    </message>
    <message>
        <source>IDS_TRENDS_DOWNLOAD_SPEED</source>
        <translation>Empfangsgeschwindigkeit</translation>
    </message>
    <message>
        <source>IDS_GRP_SETPERIOD</source>
        <translation>Zeitraum</translation>
    </message>
    <message>
        <source>IDS_GRP_SETWARNINGS</source>
        <translation>Warnungen</translation>
    </message>
    <message>
        <source>IDS_STAT_MAX</source>
        <translation>Gemessen wird auf diesem Computer. Ihr Anbieter zählt vielleicht anders.</translation>
    </message>
    <message>
        <source>IDS_STA_STARTDATE</source>
        <translation>Beginn:</translation>
    </message>
    <message>
        <source>IDS_CHK_SET</source>
        <translation>Wiederholt</translation>
    </message>
    <message>
        <source>IDS_CHK_VOLUME</source>
        <translation>Daten</translation>
    </message>
    <message>
        <source>IDS_VOLUME_LIMIT</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>IDS_CHK_BEFORE</source>
        <translation>Vor Erreichen eines Limits warnen</translation>
    </message>
    <message>
        <source>IDS_CHK_AFTER</source>
        <translation>Bei Überschreiten eines Limits warnen</translation>
    </message>
    <message>
        <source>IDS_INPUT_DATA_VOLUME</source>
        <translation>Bitte geben Sie das Datenlimit ein.</translation>
    </message>
    <message>
        <source>IDS_INPUT_TIME_VOLUME_LIMIT</source>
        <translation>Bitte geben Sie das Zeitlimit ein.</translation>
    </message>
</context>
<context>
    <name>skylet</name>
    <message>
        <source>HOST_TITLE</source>
        <translation>Skylet</translation>
    </message>
    <message>
        <source>HOST_MENU_FILE</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>HOST_MENU_VIEW</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>HOST_MENU_LANGUAGE</source>
        <translation>S&amp;prache</translation>
    </message>
    <message>
        <source>HOST_QUIT</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>HOST_SETTINGS</source>
        <translation>&amp;Einstellungen …</translation>
    </message>
    <message>
        <source>HOST_SETTINGS_TITLE</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>HOST_SETTINGS_PAGES</source>
        <translation>Einstellungsseiten</translation>
    </message>
    <message>
        <source>HOST_OK</source>
        <translation>&amp;OK</translation>
    </message>
    <message>
        <source>HOST_CANCEL</source>
        <translation>A&amp;bbrechen</translation>
    </message>
    <message>
        <source>HOST_MENU_DEVICE</source>
        <translation>&amp;Gerät</translation>
    </message>
    <message>
        <source>HOST_DEVICE_AUTOMATIC</source>
        <translation>&amp;Automatisch</translation>
    </message>
    <message>
        <source>HOST_DEVICE_ABSENT</source>
        <translation>%1 (nicht vorhanden)</translation>
    </message>
    <message>
        <source>HOST_DEVICE_REFUSED</source>
        <translation>Das Gerät lässt sich jetzt nicht wählen: Ein anderes Programm zählt.</translation>
    </message>
    <message>
        <source>HOST_CONNECT</source>
        <translation>&amp;Verbinden</translation>
    </message>
    <message>
        <source>HOST_CONNECTING</source>
        <translation>Die Verbindung wird hergestellt …</translation>
    </message>
    <message>
        <source>HOST_CONNECT_FAILED</source>
        <translation>Die Verbindung konnte nicht hergestellt werden: NetworkManager hat einen Fehler gemeldet oder nicht rechtzeitig geantwortet.</translation>
    </message>
    <message>
        <source>HOST_CONNECT_NO_DEVICE</source>
        <translation>Es gibt kein Gerät, das sich verbinden könnte.</translation>
    </message>
    <message>
        <source>HOST_CONNECT_NO_SERVICE</source>
        <translation>Die Verbindung kann nicht hergestellt werden: NetworkManager läuft nicht.</translation>
    </message>
    <message>
        <source>HOST_CONNECT_NOT_MANAGED</source>
        <translation>Die Verbindung kann nicht hergestellt werden: NetworkManager verwaltet das Gerät nicht.</translation>
    </message>
    <message>
        <source>HOST_CONNECT_REFUSED</source>
        <translation>Die Verbindung kann nicht hergestellt werden: Ihnen fehlt die Berechtigung dazu.</translation>
    </message>
    <message>
        <source>HOST_CONNECT_NO_PROFILE</source>
        <translation>Die Verbindung kann nicht hergestellt werden: In NetworkManager ist für das Gerät keine Verbindung eingerichtet.</translation>
    </message>
    <message>
        <source>HOST_DISCONNECT</source>
        <translation>&amp;Trennen</translation>
    </message>
    <message>
        <source>HOST_DISCONNECTING</source>
        <translation>Die Verbindung wird getrennt …</translation>
    </message>
    <message>
        <source>HOST_DISCONNECT_DONE</source>
        <translation>Die Verbindung wurde getrennt.</translation>
    </message>
    <message>
        <source>HOST_DISCONNECT_NO_CONNECTION</source>
        <translation>Es besteht keine Verbindung, die getrennt werden könnte.</translation>
    </message>
    <message>
        <source>HOST_DISCONNECT_NO_SERVICE</source>
        <translation>Die Verbindung kann nicht getrennt werden: NetworkManager läuft nicht.</translation>
    </message>
    <message>
        <source>HOST_DISCONNECT_NOT_MANAGED</source>
        <translation>Die Verbindung kann nicht getrennt werden: NetworkManager verwaltet sie nicht.</translation>
    </message>
    <message>
        <source>HOST_DISCONNECT_REFUSED</source>
        <translation>Die Verbindung kann nicht getrennt werden: Ihnen fehlt die Berechtigung dazu.</translation>
    </message>
    <message>
        <source>HOST_DISCONNECT_FAILED</source>
        <translation>Die Verbindung konnte nicht getrennt werden: NetworkManager hat einen Fehler gemeldet oder nicht geantwortet.</translation>
    </message>
    <message>
        <source>HOST_VIEW_USAGE</source>
        <translation>&amp;Verbrauch</translation>
    </message>
    <message>
        <source>HOST_VIEW_STATISTICS</source>
        <translation>&amp;Statistik</translation>
    </message>
    <message>
        <source>HOST_VIEWS</source>
        <translation>Ansichten</translation>
    </message>
    <message>
        <source>HOST_PAGE</source>
        <translation>Seite des Plug-ins</translation>
    </message>
    <message>
        <source>HOST_MESSAGES</source>
        <translation>Meldungen</translation>
    </message>
    <message>
        <source>HOST_DISMISS</source>
        <translation>S&amp;chließen</translation>
    </message>
    <message>
        <source>HOST_INTERFACE</source>
        <translation>Schnittstelle</translation>
    </message>
    <message>
        <source>HOST_CONNECTION</source>
        <translation>Verbindung</translation>
    </message>
    <message>
        <source>HOST_STORE</source>
        <translation>Speicher</translation>
    </message>
    <message>
        <source>HOST_NO_INTERFACE</source>
        <translation>Keine Schnittstelle</translation>
    </message>
    <message>
        <source>HOST_CONNECTED</source>
        <translation>Verbunden</translation>
    </message>
    <message>
        <source>HOST_NOT_CONNECTED</source>
        <translation>Nicht verbunden</translation>
    </message>
    <message>
        <source>HOST_DEMO</source>
        <translation>Vorführung</translation>
    </message>
    <message>
        <source>HOST_NO_PLUGIN</source>
        <translation>Es ist kein Plug-in geladen; es gibt nichts anzuzeigen.</translation>
    </message>
    <message>
        <source>HOST_NO_DATA_FOLDER</source>
        <translation>Der Datenordner %1 lässt sich nicht anlegen; es wird nichts gespeichert.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_FAILURE</source>
        <translation>Plug-in %1: %2</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_NO_FOLDER</source>
        <translation>Diesen Ordner gibt es nicht.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_FOLDER_EMPTY</source>
        <translation>Der Ordner enthält keine Plug-ins.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_NO_LIBRARY</source>
        <translation>Der Ordner enthält keine Bibliothek.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_NOT_LOADED</source>
        <translation>Es lässt sich nicht laden: %1</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_FOREIGN</source>
        <translation>Es ist kein Plug-in für dieses Programm.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_NOT_READABLE</source>
        <translation>Die Datei ist leer oder nicht lesbar.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_WRONG_QT</source>
        <translation>Es wurde für Qt %1 gebaut, dieses Programm verwendet aber Qt %2.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_TWICE</source>
        <translation>Seine Kennung gehört schon zu %1.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_NOT_STARTED</source>
        <translation>Es ist nicht gestartet.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_NO_STATISTICS</source>
        <translation>Es hat keine Statistikseite.</translation>
    </message>
</context>
</TS>
