#include "modem/DisconnectRules.h"

#include <algorithm>
#include <cerrno>
#include <iterator>

namespace velq {

namespace {

// NetworkManager's device states that matter here; 40 to 90 are the steps of connecting.
constexpr std::uint32_t kUnknown = 0;
constexpr std::uint32_t kUnmanaged = 10;
constexpr std::uint32_t kDisconnected = 30;
constexpr std::uint32_t kDeactivating = 110;
constexpr std::uint32_t kFailed = 120;

struct ErrorRow
{
    const char *name;
    DisconnectResult result;
};

constexpr ErrorRow kErrors[] = {
    { "org.freedesktop.DBus.Error.ServiceUnknown", DisconnectResult::NoService },
    { "org.freedesktop.DBus.Error.NameHasNoOwner", DisconnectResult::NoService },
    { "org.freedesktop.DBus.Error.AccessDenied", DisconnectResult::Refused },
    { "org.freedesktop.DBus.Error.AuthFailed", DisconnectResult::Refused },
    { "org.freedesktop.DBus.Error.InteractiveAuthorizationRequired", DisconnectResult::Refused },
    { "org.freedesktop.NetworkManager.PermissionDenied", DisconnectResult::Refused },
    { "org.freedesktop.NetworkManager.Device.NotAllowed", DisconnectResult::Refused },
    { "org.freedesktop.NetworkManager.UnknownDevice", DisconnectResult::NotManaged },
    // It went down between the look at its state and the request.
    { "org.freedesktop.NetworkManager.Device.NotActive", DisconnectResult::Done },
};

} // namespace

std::optional<DisconnectResult> resultOfState(std::uint32_t state)
{
    if (state == kUnknown)
        return DisconnectResult::Failed;
    if (state == kUnmanaged)
        return DisconnectResult::NotManaged;
    if (isDown(state))
        return DisconnectResult::NoConnection;
    return std::nullopt;
}

bool isDown(std::uint32_t state)
{
    return state <= kDisconnected || state == kFailed;
}

DisconnectResult resultAtTimeout(std::uint32_t state)
{
    return isDown(state) || state == kDeactivating ? DisconnectResult::Done
                                                   : DisconnectResult::Failed;
}

DisconnectResult resultOfError(const std::string &name)
{
    const auto *row = std::find_if(std::begin(kErrors), std::end(kErrors),
                                   [&name](const ErrorRow &error) { return name == error.name; });
    return row == std::end(kErrors) ? DisconnectResult::Failed : row->result;
}

bool isGone(const std::string &name)
{
    return name == "org.freedesktop.DBus.Error.UnknownObject"
        || name == "org.freedesktop.DBus.Error.UnknownMethod"
        || name == "org.freedesktop.DBus.Error.UnknownInterface";
}

DisconnectResult resultOfOpening(int error)
{
    const bool lacksResources = error == ENOMEM || error == EMFILE || error == ENFILE;
    const bool wasLeft = error == ECONNRESET || error == EPIPE || error == ENOTCONN;
    return lacksResources || wasLeft ? DisconnectResult::Failed : DisconnectResult::NoService;
}

} // namespace velq
