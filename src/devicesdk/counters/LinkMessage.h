#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace velq {

/*! What a link message of the kernel says. */
struct LinkMessage
{
    bool deleted = false; //!< the link is gone; its counters are zeros then and mean nothing
    int index = 0;
    std::string name;
    bool up = false; //!< administratively up, with carrier and operational
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
