#include "modem/NetworkManager.h"

#include "modem/BusConnection.h"
#include "modem/BusObjects.h"

#include <algorithm>
#include <thread>

namespace velq {

namespace {

constexpr const char *kService = "org.freedesktop.NetworkManager";
constexpr const char *kPath = "/org/freedesktop/NetworkManager";
constexpr const char *kDevice = "org.freedesktop.NetworkManager.Device";
constexpr const char *kActive = "org.freedesktop.NetworkManager.Connection.Active";
constexpr const char *kModemService = "org.freedesktop.ModemManager1";
constexpr const char *kModemPaths = "/org/freedesktop/ModemManager1/Modem/";
constexpr const char *kUnknownDevice = "org.freedesktop.NetworkManager.UnknownDevice";
constexpr const char *kNonsense = "nonsense"; // no error name: an answer of another type, or late
constexpr std::chrono::milliseconds kLookInterval { 20 };
constexpr std::chrono::milliseconds kConnectLookInterval { 50 };

/*! A device's path, or the name of the error for which there is none. */
struct Found
{
    std::string path;
    std::string error;
};

bool hasPort(BusConnection &bus, const std::string &modem, const std::string &interface)
{
    const auto properties = bus.properties(kModemService, modem, kModemInterface).readProperties();
    const auto ports = properties ? listOf(*properties, "Ports") : std::vector<std::string>();
    return std::find(ports.begin(), ports.end(), interface) != ports.end();
}

//! A modem that is down has no network interface for NetworkManager, but ModemManager knows it.
std::string deviceByPort(BusConnection &bus, const std::vector<std::string> &paths,
                         const std::string &interface)
{
    for (const std::string &path : paths) {
        std::string modem;
        if (bus.property(path, kDevice, "Udi").readVariant(modem)
            && modem.rfind(kModemPaths, 0) == 0 && hasPort(bus, modem, interface))
            return path;
    }
    return {};
}

//! By the name that the device has itself: the IP interface has been asked for already.
Found deviceByInterface(BusConnection &bus, const std::string &interface)
{
    const BusReply reply = bus.call(kPath, kService, "GetDevices");
    std::vector<std::string> paths;
    if (!reply.read(paths))
        return { {}, reply.error().empty() ? kNonsense : reply.error() };
    for (const std::string &path : paths) {
        std::string name; // a device that has gone meanwhile has none
        if (bus.property(path, kDevice, "Interface").readVariant(name) && name == interface)
            return { path, {} };
    }
    const std::string path = deviceByPort(bus, paths, interface);
    if (path.empty())
        return { {}, bus.timeLeft().count() > 0 ? kUnknownDevice : kNonsense };
    return { path, {} };
}

Found findDevice(BusConnection &bus, const std::string &interface)
{
    const BusReply reply = bus.call(kPath, kService, "GetDeviceByIpIface", { interface.c_str() });
    Found device;
    if (reply.read(device.path))
        return device;
    device.error = reply.error().empty() ? kNonsense : reply.error();
    return device.error == kUnknownDevice ? deviceByInterface(bus, interface) : device;
}

//! \a state: what the device was in when it was told to disconnect.
DisconnectResult waitUntilDown(BusConnection &bus, const std::string &device, std::uint32_t state)
{
    while (bus.timeLeft().count() > 0) {
        const BusReply reply = bus.property(device, kDevice, "State");
        if (isGone(reply.error())) // software devices go with their connection
            return DisconnectResult::Done;
        if (!reply.readVariant(state))
            break;
        if (isDown(state))
            return DisconnectResult::Done;
        std::this_thread::sleep_for(kLookInterval);
    }
    return resultAtTimeout(state);
}

ConnectResult waitUntilActive(BusConnection &bus, const std::string &connection)
{
    while (bus.timeLeft().count() > 0) {
        const BusReply reply = bus.property(connection, kActive, "State");
        std::uint32_t state = 0;
        if (!reply.readVariant(state)) // it goes when the attempt has failed
            return connectResultOfError(reply.error());
        if (const auto result = resultOfActivation(state))
            return *result;
        std::this_thread::sleep_for(kConnectLookInterval);
    }
    return ConnectResult::Failed;
}

ConnectResult waitForAttempt(BusConnection &bus, const std::string &device)
{
    const BusReply reply = bus.property(device, kDevice, "ActiveConnection");
    std::string connection;
    return reply.readVariant(connection) ? waitUntilActive(bus, connection)
                                         : connectResultOfError(reply.error());
}

ConnectResult activate(BusConnection &bus, const std::string &device)
{
    // Without a connection named, NetworkManager takes the one used last.
    const BusReply reply
        = bus.call(kPath, kService, "ActivateConnection", { "/", device.c_str(), "/" }, 'o');
    std::string connection;
    return reply.read(connection) ? waitUntilActive(bus, connection)
                                  : connectResultOfError(reply.error());
}

} // namespace

DisconnectResult disconnectInterface(const std::string &interface, std::chrono::milliseconds time)
{
    BusConnection bus(kService, time);
    if (const int error = bus.open())
        return resultOfOpening(error);
    const Found device = findDevice(bus, interface);
    if (!device.error.empty())
        return resultOfError(device.error);
    const BusReply look = bus.property(device.path, kDevice, "State");
    std::uint32_t state = 0;
    if (!look.readVariant(state))
        return resultOfError(look.error());
    if (const auto result = resultOfState(state))
        return *result;
    const BusReply reply = bus.call(device.path, kDevice, "Disconnect");
    return reply.error().empty() ? waitUntilDown(bus, device.path, state)
                                 : resultOfError(reply.error());
}

ConnectResult connectInterface(const std::string &interface, std::chrono::milliseconds time)
{
    BusConnection bus(kService, std::min(time, kConnectTime));
    if (const int error = bus.open())
        return connectResultOfOpening(error);
    const Found device = findDevice(bus, interface);
    if (!device.error.empty())
        return connectResultOfError(device.error);
    const BusReply look = bus.property(device.path, kDevice, "State");
    std::uint32_t state = 0;
    if (!look.readVariant(state))
        return connectResultOfError(look.error());
    switch (connectStep(state)) {
    case ConnectStep::Done:
        return ConnectResult::Done;
    case ConnectStep::NotManaged:
        return ConnectResult::NotManaged;
    case ConnectStep::Wait:
        return waitForAttempt(bus, device.path);
    case ConnectStep::Activate:
        break;
    }
    return activate(bus, device.path);
}

} // namespace velq
