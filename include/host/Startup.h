#ifndef HOST_STARTUP_H
#define HOST_STARTUP_H

#include "HostCoreExport.h"

class IPluginContainer;

//! Entry to the host's services.
class HOST_CORE_EXPORT Startup
{
public:
    //! The host's plug-in container, or null while there is none. Stays the host's. GUI thread.
    static IPluginContainer *GetPluginContainer();
};

#endif // HOST_STARTUP_H
