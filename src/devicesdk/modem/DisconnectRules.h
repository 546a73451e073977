#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace velq {

/*! The numbers are those of the C interface. */
enum class DisconnectResult {
    Done = 0,
    Failed = 1,
    NoConnection = 2,
    NoService = 3,
    NotManaged = 4,
    Refused = 5,
};

//! What there is to say about a device in \a state without asking for a disconnect; nothing when it
//! is connected, connecting or on its way down.
[[nodiscard]] std::optional<DisconnectResult> resultOfState(std::uint32_t state);

//! Whether a device in \a state carries nothing any more.
[[nodiscard]] bool isDown(std::uint32_t state);

//! The result when the time is over and the device is still in \a state.
[[nodiscard]] DisconnectResult resultAtTimeout(std::uint32_t state);

//! The result of a call that was answered with the D-Bus error \a name.
[[nodiscard]] DisconnectResult resultOfError(const std::string &name);

//! Whether \a name says that the device exists no longer.
[[nodiscard]] bool isGone(const std::string &name);

//! The result when the system bus cannot be opened; \a error is of errno's kind.
[[nodiscard]] DisconnectResult resultOfOpening(int error);

} // namespace velq
