#pragma once

#include "modem/DisconnectRules.h"

#include <chrono>
#include <string>

namespace velq {

constexpr std::chrono::milliseconds kDisconnectTime { 5000 };

/*!
 * Lets NetworkManager disconnect the device that has \a interface as its own or as its IP interface
 * (they differ for modems), and waits until it is down. Takes no longer than \a time.
 */
[[nodiscard]] DisconnectResult
disconnectInterface(const std::string &interface, std::chrono::milliseconds time = kDisconnectTime);

} // namespace velq
