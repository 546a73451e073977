#include "StartupHost.h"

#include <host/Startup.h>

static IPluginContainer *theContainer = nullptr;

IPluginContainer *Startup::GetPluginContainer()
{
    return theContainer;
}

void StartupHost::setPluginContainer(IPluginContainer *container)
{
    theContainer = container;
}
