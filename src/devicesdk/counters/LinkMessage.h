#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace velq {

/*! What a link message of the kernel says. */
struct LinkMessage
{
    bool deleted = false; //!< the link is gone; its counters may be zeros already
    int index = 0;
    std::string name;
    std::string kind; //!< "bridge", "tun", "vlan", ...; empty for hardware
    std::string hardwareAddress; //!< the permanent one, "02:00:5e:10:00:01"; empty without one
    int lowerIndex = 0; //!< the link that this one sends through, in its namespace; 0: none
    int masterIndex = 0; //!< the bridge or bond that this one is a port of; 0: none
    bool loopback = false;
    bool up = false; //!< administratively up, with carrier and operational
    //! False as well in a Wi-Fi driver's notes, which have name and flags alone.
    bool hasCounters = false;
    std::uint64_t download = 0; //!< bytes
    std::uint64_t upload = 0;
};

/*!
 * Reads the first message of \a buffer, RTM_NEWLINK or RTM_DELLINK. Nothing for another message, a
 * message cut short, lengths that do not fit, or a bridge's note about one of its ports.
 * \a buffer has to be aligned to 4 bytes, as netlink messages are.
 */
[[nodiscard]] std::optional<LinkMessage> parseLinkMessage(const void *buffer, std::size_t size);

} // namespace velq
