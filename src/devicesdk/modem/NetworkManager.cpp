#include "modem/NetworkManager.h"

#include "modem/BusConnection.h"

#include <thread>

namespace velq {

namespace {

constexpr const char *kService = "org.freedesktop.NetworkManager";
constexpr const char *kPath = "/org/freedesktop/NetworkManager";
constexpr const char *kDevice = "org.freedesktop.NetworkManager.Device";
constexpr std::chrono::milliseconds kLookInterval { 20 };

/*! What a question found out, or why it did not. */
template <typename T>
struct Found
{
    T value {};
    DisconnectResult result = DisconnectResult::Done;
};

//! By the name that the device has itself: the IP interface has been asked for already.
Found<std::string> deviceByInterface(BusConnection &bus, const std::string &interface)
{
    const BusReply reply = bus.call(kPath, kService, "GetDevices");
    std::vector<std::string> paths;
    if (!reply.read(paths))
        return { {}, resultOfError(reply.error()) };
    for (const std::string &path : paths) {
        std::string name; // a device that has gone meanwhile has none
        if (bus.property(path, kDevice, "Interface").readVariant(name) && name == interface)
            return { path };
    }
    return { {},
             bus.timeLeft().count() > 0 ? DisconnectResult::NotManaged : DisconnectResult::Failed };
}

Found<std::string> findDevice(BusConnection &bus, const std::string &interface)
{
    const BusReply reply = bus.call(kPath, kService, "GetDeviceByIpIface", { interface.c_str() });
    Found<std::string> device;
    if (reply.read(device.value))
        return device;
    device.result = resultOfError(reply.error());
    return device.result == DisconnectResult::NotManaged ? deviceByInterface(bus, interface)
                                                         : device;
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

} // namespace

DisconnectResult disconnectInterface(const std::string &interface, std::chrono::milliseconds time)
{
    BusConnection bus(kService, time);
    if (const int error = bus.open())
        return resultOfOpening(error);
    const Found<std::string> device = findDevice(bus, interface);
    if (device.result != DisconnectResult::Done)
        return device.result;
    const BusReply look = bus.property(device.value, kDevice, "State");
    std::uint32_t state = 0;
    if (!look.readVariant(state))
        return resultOfError(look.error());
    if (const auto result = resultOfState(state))
        return *result;
    const BusReply reply = bus.call(device.value, kDevice, "Disconnect");
    return reply.error().empty() ? waitUntilDown(bus, device.value, state)
                                 : resultOfError(reply.error());
}

} // namespace velq
