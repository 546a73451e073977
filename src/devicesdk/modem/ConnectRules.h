#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace velq {

/*! The numbers may be given to users of a C interface. */
enum class ConnectResult {
    Done = 0,
    Failed = 1, //!< tried, and not connected in time
    NoDevice = 2, //!< nobody knows the interface
    NoService = 3,
    NotManaged = 4, //!< NetworkManager leaves the device alone
    Refused = 5,
    NoProfile = 6, //!< NetworkManager has no connection that the device could take
};

//! What to do with a device.
enum class ConnectStep {
    Activate,
    Wait, //!< it is connecting already
    Done,
    NotManaged,
};
[[nodiscard]] ConnectStep connectStep(std::uint32_t deviceState);

//! Of an active connection in \a state; nothing while it is still activating.
[[nodiscard]] std::optional<ConnectResult> resultOfActivation(std::uint32_t state);

//! The result of a call that was answered with the D-Bus error \a name.
[[nodiscard]] ConnectResult connectResultOfError(const std::string &name);

//! The result when the system bus cannot be opened; \a error is of errno's kind.
[[nodiscard]] ConnectResult connectResultOfOpening(int error);

} // namespace velq
