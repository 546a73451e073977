#pragma once

#include "modem/ConnectRules.h"
#include "modem/DisconnectRules.h"

#include <chrono>
#include <string>

namespace velq {

constexpr std::chrono::milliseconds kDisconnectTime { 5000 };
constexpr std::chrono::milliseconds kConnectTime { 30000 };

// A device is found by its IP interface, its own interface (they differ for modems) or a network
// port of its modem.

/*!
 * Lets NetworkManager disconnect the device of \a interface, and waits until it is down. Takes no
 * longer than \a time.
 */
[[nodiscard]] DisconnectResult
disconnectInterface(const std::string &interface, std::chrono::milliseconds time = kDisconnectTime);

/*!
 * Lets NetworkManager connect the device of \a interface with the connection that it holds best,
 * and waits until that is activated. Takes no longer than \a time, nor than kConnectTime; what is
 * not activated by then may still become so.
 */
[[nodiscard]] ConnectResult connectInterface(const std::string &interface,
                                             std::chrono::milliseconds time = kConnectTime);

} // namespace velq
