#include "modem/ConnectRules.h"

#include "modem/DisconnectRules.h"

#include <algorithm>
#include <iterator>

namespace velq {

namespace {

// NetworkManager's device states.
constexpr std::uint32_t kUnmanaged = 10;
constexpr std::uint32_t kPreparing = 40;
constexpr std::uint32_t kSecondaries = 90; // the last step of connecting
constexpr std::uint32_t kActivated = 100;

// NetworkManager's states of an active connection.
constexpr std::uint32_t kActivating = 1;
constexpr std::uint32_t kActive = 2;

struct ErrorRow
{
    const char *name;
    ConnectResult result;
};

// The others mean the same as for disconnecting.
constexpr ErrorRow kErrors[] = {
    { "org.freedesktop.NetworkManager.UnknownDevice", ConnectResult::NoDevice },
    { "org.freedesktop.NetworkManager.UnknownConnection", ConnectResult::NoProfile },
    { "org.freedesktop.NetworkManager.ConnectionNotAvailable", ConnectResult::NoProfile },
};

ConnectResult fromDisconnect(DisconnectResult result)
{
    switch (result) {
    case DisconnectResult::NoService:
        return ConnectResult::NoService;
    case DisconnectResult::NotManaged:
        return ConnectResult::NotManaged;
    case DisconnectResult::Refused:
        return ConnectResult::Refused;
    default:
        return ConnectResult::Failed;
    }
}

} // namespace

ConnectStep connectStep(std::uint32_t deviceState)
{
    if (deviceState == kUnmanaged)
        return ConnectStep::NotManaged;
    if (deviceState == kActivated)
        return ConnectStep::Done;
    return deviceState >= kPreparing && deviceState <= kSecondaries ? ConnectStep::Wait
                                                                    : ConnectStep::Activate;
}

std::optional<ConnectResult> resultOfActivation(std::uint32_t state)
{
    if (state == kActivating)
        return std::nullopt;
    return state == kActive ? ConnectResult::Done : ConnectResult::Failed;
}

ConnectResult connectResultOfError(const std::string &name)
{
    const auto *row = std::find_if(std::begin(kErrors), std::end(kErrors),
                                   [&name](const ErrorRow &error) { return name == error.name; });
    return row == std::end(kErrors) ? fromDisconnect(resultOfError(name)) : row->result;
}

ConnectResult connectResultOfOpening(int error)
{
    return fromDisconnect(resultOfOpening(error));
}

} // namespace velq
