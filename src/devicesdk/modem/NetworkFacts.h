#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace velq {

/*! A modem as ModemManager describes it. Texts are empty and numbers 0 while nothing is known. */
struct ModemFacts
{
    std::string path; //!< of the object; another one each time the modem appears
    std::string equipmentId; //!< IMEI, or what the modem has in its place
    std::string deviceId; //!< stays the same over restarts and ports
    std::string simId; //!< ICCID; empty without a SIM, or while it is locked
    bool simPending = false; //!< there is a SIM that has not been read yet
    std::string imsi;
    std::string model;
    std::string operatorName;
    std::string interface; //!< the connected bearer's; empty while the modem is not connected
    std::vector<std::string> netPorts; //!< network interfaces of the modem, connected or not
    bool connected = false;
    bool registered = false;
    bool placed = false; //!< roaming is known: registered at home or abroad
    bool roaming = false; //!< only while registered
    bool hasStats = false; //!< the bearer's own figures follow; they may be ten seconds old
    std::uint64_t bearerDownload = 0;
    std::uint64_t bearerUpload = 0;
    std::uint32_t bearerSeconds = 0;
};

/*! A device of NetworkManager's, with its numbers for type and state. */
struct ManagedDevice
{
    std::string path;
    std::string interface; //!< of a modem: its control port, such as "cdc-wdm0"
    std::string ipInterface; //!< empty while there is none
    std::uint32_t type = 0;
    std::uint32_t state = 0;
};

/*! What the system bus says at a moment. What a service has said goes when the service does. */
struct NetworkFacts
{
    bool bus = false; //!< connected to the bus
    bool networkManager = false; //!< it is on the bus
    bool modemManager = false;
    std::vector<ModemFacts> modems;
    std::vector<ManagedDevice> devices;
    std::string primaryInterface; //!< of NetworkManager's primary connection; empty without one
};

//! The connected modem, one whose interface is known before others; null without one.
[[nodiscard]] const ModemFacts *connectedModem(const NetworkFacts &facts);

//! The modem behind \a interface: by its bearer, else by its network ports; null without one.
[[nodiscard]] const ModemFacts *modemOfInterface(const NetworkFacts &facts,
                                                 const std::string &interface);

} // namespace velq
