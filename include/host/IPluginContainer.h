#ifndef HOST_IPLUGINCONTAINER_H
#define HOST_IPLUGINCONTAINER_H

#include <QString>

QT_BEGIN_NAMESPACE
class QObject;
QT_END_NAMESPACE

//! The host's list of plug-ins. Called by table: the order is fixed. GUI thread only.
class IPluginContainer
{
public:
    virtual ~IPluginContainer() { }
    //! Whether a plug-in with the class identifier \a id is loaded.
    virtual bool IsPluginAvailable(const QString &id) = 0;
    //! The object of plug-in \a id that serves request \a kind, or null. It stays the plug-in's.
    virtual QObject *GetPlugin(const QString &id, int kind) = 0;
};

#endif // HOST_IPLUGINCONTAINER_H
