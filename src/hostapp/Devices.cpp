#include "Devices.h"

#include <host/velq_extension.h>

#include <array>

QString deviceText(const QString &label, const QString &interfaceName)
{
    if (label.isEmpty() || label == interfaceName)
        return interfaceName;
    return interfaceName.isEmpty() ? label : QStringLiteral("%1, %2").arg(label, interfaceName);
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
        devices.list.append(device);
    }
    VELQ_DevSrv_ReleaseDevices(list);
    return devices;
}
