#include "api/Guard.h"
#include "counters/InterfaceName.h"

#include <host/velq.h>
#include <host/velq_extension.h>

#include <cstring>
#include <string>

using namespace velq;

int VELQ_DevSrv_GetCustomizeName(char *name)
{
    if (!name)
        return kFailure;
    return withService([name](Service &service) {
        const std::string text = service.customizeName();
        std::memset(name, 0, VELQ_CUSTOMIZE_NAME_SIZE);
        std::memcpy(name, text.data(), text.size()); // at most 127 bytes
        return true;
    });
}

int VELQ_DevSrv_SetInterface(const char *name)
{
    return guarded([name] {
        const std::string text = name ? name : "";
        if (!text.empty() && !isInterfaceName(text))
            return false;
        return Runtime::choose([&text](HostChoices &choices) { choices.interface = text; });
    });
}

int VELQ_DevSrv_StartDemo(void)
{
    return guarded(
        [] { return Runtime::choose([](HostChoices &choices) { choices.demo = true; }); });
}

int VELQ_DevSrv_GetInterface(char *name, int size)
{
    if (!name || size <= 0)
        return kFailure;
    return withService([=](Service &service) {
        const std::string text = service.engine().live().interface;
        if (text.size() >= static_cast<std::size_t>(size))
            return false;
        std::memcpy(name, text.c_str(), text.size() + 1);
        return true;
    });
}

int VELQ_DevSrv_GetCounters(VELQ_Counters *counters)
{
    if (!counters)
        return kFailure;
    return withService([counters](Service &service) {
        const LiveFigures figures = service.engine().live();
        if (!figures.connected)
            return false;
        *counters = { figures.firstDownload, figures.firstUpload, figures.lastDownload,
                      figures.lastUpload };
        return true;
    });
}
