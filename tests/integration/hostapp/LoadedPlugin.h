#pragma once
// A test module in this process.

#include <QObject>
#include <QPluginLoader>
#include <QStringList>
#include <QVariant>

//! The plug-in in \a file, for as long as the process lives.
[[nodiscard]] inline QObject *loadPlugin(const QString &file)
{
    QPluginLoader loader(file);
    loader.setLoadHints(QLibrary::PreventUnloadHint);
    QObject *plugin = loader.instance();
    if (!plugin)
        qFatal("%s", qPrintable(loader.errorString()));
    return plugin;
}

//! What the host has called since the last time.
inline QStringList takeCalls(QObject *plugin)
{
    const QStringList calls = plugin->property("calls").toStringList();
    plugin->setProperty("calls", QStringList());
    return calls;
}
