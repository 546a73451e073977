#include "accounting/Identity.h"
#include "api/Guard.h"
#include "api/Lists.h"
#include "counters/InterfaceName.h"

#include <host/velq.h>
#include <host/velq_extension.h>

#include <cstring>
#include <string>

using namespace velq;

static_assert(VELQ_INTERFACE_SIZE > kLongestInterfaceName, "the longest name and its NUL");

namespace {

VELQ_Device deviceOf(const DeviceNote &note)
{
    VELQ_Device device {};
    writeText(device.key, note.key);
    writeText(device.label, note.label);
    writeText(device.interface, note.interface);
    device.connectType = note.type;
    return device;
}

//! Those that are there, then those that are remembered, the latest first.
std::vector<VELQ_Device> allDevices(Engine &engine, const std::vector<StoredDevice> &stored)
{
    std::vector<VELQ_Device> all;
    for (const PresentDevice &present : engine.presentDevices()) {
        VELQ_Device device = deviceOf(present.note);
        device.present = 1;
        device.up = present.up ? 1 : 0;
        device.counted = present.counted ? 1 : 0;
        device.chosen = present.chosen ? 1 : 0;
        device.roaming = present.roaming ? 1 : 0;
        device.hasModemFigures = present.modemFigures ? 1 : 0;
        device.modemDownload = present.modemFigures.value_or(LinkCounters {}).download;
        device.modemUpload = present.modemFigures.value_or(LinkCounters {}).upload;
        all.push_back(device);
    }
    for (auto it = stored.rbegin(); it != stored.rend(); ++it) {
        if (it->note.key == kOperatorDevice)
            continue;
        VELQ_Device device = deviceOf(it->note);
        device.lastUse = it->seen;
        const auto known = std::find_if(all.begin(), all.end(), [&](const VELQ_Device &other) {
            return std::strcmp(other.key, device.key) == 0;
        });
        if (known == all.end())
            all.push_back(device);
        else
            known->lastUse = device.lastUse;
    }
    return all;
}

} // namespace

int VELQ_DevSrv_GetDevices(VELQ_Device **list, int *count)
{
    if (!list || !count)
        return kFailure;
    return withService([=](Service &service) {
        std::vector<StoredDevice> stored;
        if (!service.engine().ledger().devices(stored))
            return false;
        giveList(allDevices(service.engine(), stored), list, count);
        return true;
    });
}

int VELQ_DevSrv_ReleaseDevices(VELQ_Device *list)
{
    delete[] list;
    return kSuccess;
}

int VELQ_DevSrv_UseDevice(const char *device)
{
    return withService([device](Service &service) {
        const std::string text = device ? device : "";
        const bool good = text.empty() || isDeviceKey(text) || isInterfaceName(text);
        return good && text.size() < VELQ_DEVICE_SIZE && service.engine().useDevice(text);
    });
}

int VELQ_DevSrv_GetUsedDevice(char *device, int size)
{
    if (!device || size <= 0)
        return kFailure;
    return withService(
        [=](Service &service) { return writeWhole(device, size, service.engine().usedDevice()); });
}

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
        return writeWhole(name, size, service.engine().live().interface);
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
