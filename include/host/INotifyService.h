#ifndef HOST_INOTIFYSERVICE_H
#define HOST_INOTIFYSERVICE_H

#include <QObject>
#include <QString>

//! Carries messages from one plug-in to another. Called by table: the order is fixed. GUI thread
//! only.
class INotifyService
{
public:
    virtual ~INotifyService() { }
    //! Sends \a msg with its two parameters to the plug-in whose identifier is \a target. The
    //! receiver's result; it may run an event loop before it returns.
    virtual int NotifyMessage(const QString &target, unsigned int msg, unsigned int wparam,
                              unsigned int lparam)
        = 0;
};

Q_DECLARE_INTERFACE(INotifyService, "com.valtrix.skylet.plugin.INotifyService")

#endif // HOST_INOTIFYSERVICE_H
