#include "Devices.h"

#include <host/velq_extension.h>

#include <algorithm>
#include <array>

QString deviceText(const QString &label, const QString &interfaceName)
{
    if (label.isEmpty() || label == interfaceName)
        return interfaceName;
    return interfaceName.isEmpty() ? label : QStringLiteral("%1, %2").arg(label, interfaceName);
}

QString usedKey(const HostDevices &devices)
{
    const auto named = [&devices](QString HostDevice::*name) {
        return std::find_if(devices.list.begin(), devices.list.end(),
                            [&](const HostDevice &device) { return device.*name == devices.used; });
    };
    auto found = named(&HostDevice::key);
    if (found == devices.list.end() && !devices.used.isEmpty())
        found = named(&HostDevice::interfaceName);
    return found == devices.list.end() ? devices.used : found->key;
}

HostDevices readDevices()
{
    HostDevices devices;
    std::array<char, VELQ_DEVICE_SIZE> used {};
    if (VELQ_DevSrv_GetUsedDevice(used.data(), int(used.size())) == 0)
        devices.used = QString::fromUtf8(used.data());
    VELQ_Device *list = nullptr;
    int count = 0;
    if (VELQ_DevSrv_GetDevices(&list, &count) != 0)
        return devices;
    for (int i = 0; i < count; ++i) {
        const VELQ_Device &from = list[i];
        HostDevice device;
        device.key = QString::fromUtf8(from.key);
        device.text = deviceText(QString::fromUtf8(from.label), QString::fromUtf8(from.interface));
        device.present = from.present != 0;
        device.counted = from.counted != 0;
        device.interfaceName = QString::fromUtf8(from.interface);
        devices.list.append(device);
    }
    VELQ_DevSrv_ReleaseDevices(list);
    return devices;
}
