#pragma once
// Looking into netlink messages without trusting the lengths in them.

#include <libmnl/libmnl.h>

#include <climits>
#include <cstddef>

namespace velq {

/*! The message at the start of \a buffer, when it is whole and has \a bodySize bytes; else null. */
[[nodiscard]] inline const nlmsghdr *wholeMessage(const void *buffer, std::size_t size,
                                                  std::size_t bodySize = 0)
{
    const auto *header = static_cast<const nlmsghdr *>(buffer);
    // Not libmnl's own check: it takes a length above INT_MAX for a small one.
    if (!buffer || size < sizeof *header || header->nlmsg_len < sizeof *header + bodySize
        || header->nlmsg_len > size)
        return nullptr;
    return header;
}

/*! Visits the attributes from \a first to \a end. False when one reaches over the end. */
template <typename Visit>
[[nodiscard]] bool visitAttributes(const void *first, const char *end, const Visit &visit)
{
    const auto *attribute = static_cast<const nlattr *>(first);
    auto left = end - reinterpret_cast<const char *>(attribute);
    while (left > 0) {
        if (left > INT_MAX || !mnl_attr_ok(attribute, static_cast<int>(left)))
            return false;
        if (!visit(attribute))
            return false;
        attribute = mnl_attr_next(attribute);
        left = end - reinterpret_cast<const char *>(attribute);
    }
    return true;
}

/*! The same for the attributes of a whole message, which follow \a bodySize bytes. */
template <typename Visit>
[[nodiscard]] bool visitAttributes(const nlmsghdr *header, std::size_t bodySize, const Visit &visit)
{
    // Not libmnl's own end of the payload: that is rounded up, beyond a hostile message.
    return visitAttributes(mnl_nlmsg_get_payload_offset(header, bodySize),
                           reinterpret_cast<const char *>(header) + header->nlmsg_len, visit);
}

} // namespace velq
