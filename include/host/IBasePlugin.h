#ifndef HOST_IBASEPLUGIN_H
#define HOST_IBASEPLUGIN_H

#include <QObject>
#include <QString>

#include "IBaseInterface.h"
#include "IDestroyEvent.h"

//! What every plug-in answers. Called by table: the order is fixed, new operations get a new
//! interface. GUI thread only.
class IBasePlugin : public IBaseInterface, public IDestroyEvent
{
public:
    //! Builds the plug-in. True when it is usable. May be called more than once.
    virtual bool Init() = 0;
    //! The kind of the plug-in, 0 for a user-interface plug-in.
    virtual int GetPluginType() = 0;
    //! The class identifier by which the container finds the plug-in; a null text when it has none.
    virtual QString GetCLSID() = 0;
    //! The plug-in's version number, 0 when it keeps none.
    virtual int GetVersion() = 0;
    //! The plug-in's own name, never translated.
    virtual QString GetPluginName() = 0;
    //! Whether the host may unload the module.
    virtual bool IsAllowRelease() = 0;
    //! Writes the object that serves request \a id to \a out and returns true; the object stays the
    //! plug-in's. An unknown id gives false and leaves \a out untouched.
    virtual bool QueryInterface(int id, QObject **out) = 0;
};

Q_DECLARE_INTERFACE(IBasePlugin, "com.valtrix.skylet.plugin.IBasePlugin")

#endif // HOST_IBASEPLUGIN_H
