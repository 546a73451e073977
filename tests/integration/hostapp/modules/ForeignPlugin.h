#pragma once

#include <QObject>

//! A plug-in of some other program.
class ForeignPlugin : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.example.Foreign")
};
