#pragma once

#include "accounting/Booking.h"
#include "counters/LinkSource.h"
#include "modem/NetworkFacts.h"

#include <string>

namespace velq {

/*!
 * Who a link is, whatever its name is today. The key is stored; the best of
 *   "sim:ICCID/EQUIPMENT"  a modem with its SIM, another SIM being another device,
 *   "modem:EQUIPMENT"      a modem without one,
 *   "hw:ADDRESS"           the permanent hardware address,
 *   "name:INTERFACE"       nothing better is known; not stable.
 */
[[nodiscard]] DeviceNote identify(const Link &link, const NetworkFacts &facts);

//! Whether a device is still the same one when a new link bears \a key.
[[nodiscard]] bool isStableKey(const std::string &key);

//! Whether \a text can be a key.
[[nodiscard]] bool isDeviceKey(const std::string &text);

} // namespace velq
