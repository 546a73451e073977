#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace velq {

/*! What ModemManager says of a modem. */
struct ModemFacts
{
    std::string path;
    std::string equipmentId; //!< IMEI or its like
    std::string deviceId; //!< ModemManager's own, stable one
    std::string simId; //!< ICCID; empty without a SIM
    std::string imsi;
    std::string model;
    std::string operatorName;
    std::string interface; //!< the connected bearer's, else empty
    std::vector<std::string> netPorts;
    bool connected = false;
    bool registered = false;
    bool roaming = false;
    bool hasStats = false;
    std::uint64_t bearerDownload = 0;
    std::uint64_t bearerUpload = 0;
    std::uint32_t bearerSeconds = 0;
};

/*! What NetworkManager says of a device. */
struct ManagedDevice
{
    std::string path;
    std::string interface;
    std::string ipInterface;
    std::uint32_t type = 0;
    std::uint32_t state = 0;
};

/*! What the buses say at one moment. */
struct NetworkFacts
{
    bool bus = false;
    bool networkManager = false;
    bool modemManager = false;
    std::vector<ModemFacts> modems;
    std::vector<ManagedDevice> devices;
    std::string primaryInterface; //!< of NetworkManager's primary connection; empty without one
};

} // namespace velq
