#pragma once

#include <QObject>

//! A plug-in that needs a function which is nowhere.
class UnresolvedPlugin : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.valtrix.skylet.plugin.IUIPlugin")
public:
    UnresolvedPlugin();
};
