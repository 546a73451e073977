#pragma once

#include <host/HostCoreExport.h>

class IPluginContainer;

//! The application's side of Startup. GUI thread.
namespace StartupHost {

//! Makes \a container what Startup::GetPluginContainer() answers. Not owned; null takes it back.
HOST_CORE_EXPORT void setPluginContainer(IPluginContainer *container);

} // namespace StartupHost
