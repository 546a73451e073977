#ifndef HOST_INOTIFY_H
#define HOST_INOTIFY_H

#include <QObject>

//! Messages from the host. Called by table: the order is fixed, new operations get a new interface.
class INotify
{
public:
    virtual ~INotify() { }
    //! Handles \a msg (320 language changed, 837 stored statistics changed; others are ignored).
    //! 0, or -1 without a controller. GUI thread.
    virtual int Notify(unsigned int msg, unsigned int wparam, unsigned int lparam) = 0;
};

Q_DECLARE_INTERFACE(INotify, "com.valtrix.skylet.plugin.INotify")

#endif // HOST_INOTIFY_H
