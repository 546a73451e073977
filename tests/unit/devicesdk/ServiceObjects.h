#pragma once
// A modem and devices as the services describe them.

#include "FakeServices.h"

inline const std::string kModemManager = FakeServices::kModemManager;
inline const std::string kNetworkManager = FakeServices::kNetworkManager;
inline const std::string kModem = "/org/freedesktop/ModemManager1/Modem/0";
inline const std::string kSim = "/org/freedesktop/ModemManager1/SIM/0";
inline const std::string kBearer = "/org/freedesktop/ModemManager1/Bearer/0";
inline const std::string kModemInterface = kModemManager + ".Modem";
inline const std::string kModem3gpp = kModemManager + ".Modem.Modem3gpp";
inline const std::string kManagerPath = "/org/freedesktop/NetworkManager";
inline const std::string kDevice = kNetworkManager + ".Device";

inline FakeObject modemObject()
{
    return { { kModemInterface,
               { { "State", fakeNumber(11, 'i') },
                 { "Model", fakeText("M1") },
                 { "EquipmentIdentifier", fakeText("490") },
                 { "Sim", fakeText(kSim, 'o') },
                 { "Bearers", fakePaths({ kBearer }) },
                 { "Ports", fakePorts({ { "cdc-wdm0", 6 }, { "wwan0", 2 } }) } } },
             { kModem3gpp,
               { { "RegistrationState", fakeNumber(1) }, { "OperatorName", fakeText("Net") } } } };
}

inline FakeObject bearerObject()
{
    return { { kModemManager + ".Bearer",
               { { "Connected", fakeNumber(1, 'b') },
                 { "Interface", fakeText("wwan0") },
                 { "Stats", fakeStats(100, 50, 3) } } } };
}

inline FakeObject deviceObject(const std::string &name, unsigned state)
{
    return { { kDevice,
               { { "Interface", fakeText(name) },
                 { "IpInterface", fakeText(name) },
                 { "DeviceType", fakeNumber(1) },
                 { "State", fakeNumber(state) } } } };
}

inline void setModem(FakeServices &bus)
{
    bus.setObject(kModem, modemObject());
    bus.setObject(kSim, { { kModemManager + ".Sim", { { "SimIdentifier", fakeText("8900") } } } });
    bus.setObject(kBearer, bearerObject());
    bus.appear(kModemManager);
}

inline void setDevices(FakeServices &bus, int count)
{
    std::vector<std::string> paths;
    for (int i = 0; i < count; ++i) {
        paths.push_back(kManagerPath + "/Devices/" + std::to_string(i));
        bus.setObject(paths.back(), deviceObject("eth" + std::to_string(i), 100));
    }
    bus.setObject(kManagerPath,
                  { { kNetworkManager,
                      { { "PrimaryConnection", fakeText(kManagerPath + "/Active/1", 'o') },
                        { "Devices", fakePaths(paths) } } } });
    bus.setObject(kManagerPath + "/Active/1",
                  { { kNetworkManager + ".Connection.Active",
                      { { "Devices", fakePaths({ paths.front() }) } } } });
    bus.appear(kNetworkManager);
}
