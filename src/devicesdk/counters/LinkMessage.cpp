#include "counters/LinkMessage.h"

#include <libmnl/libmnl.h>
#include <linux/if.h>
#include <linux/if_link.h>
#include <linux/rtnetlink.h>

#include <climits>
#include <cstring>

namespace velq {

namespace {

void readCounters(const nlattr *attribute, LinkMessage &message)
{
    // Kernels differ in how many counters follow; the byte counters are among the first four.
    constexpr std::size_t kNeeded
        = offsetof(rtnl_link_stats64, tx_bytes) + sizeof(rtnl_link_stats64::tx_bytes);
    if (mnl_attr_get_payload_len(attribute) < kNeeded)
        return;
    // Copied: the attribute is aligned to 4 bytes only.
    const auto *payload = static_cast<const char *>(mnl_attr_get_payload(attribute));
    std::memcpy(&message.download, payload + offsetof(rtnl_link_stats64, rx_bytes), 8);
    std::memcpy(&message.upload, payload + offsetof(rtnl_link_stats64, tx_bytes), 8);
    message.hasCounters = true;
}

void readName(const nlattr *attribute, LinkMessage &message)
{
    const auto *text = static_cast<const char *>(mnl_attr_get_payload(attribute));
    message.name.assign(text, strnlen(text, mnl_attr_get_payload_len(attribute)));
}

//! False when an attribute reaches over the end of the message.
bool readAttributes(const nlmsghdr *header, LinkMessage &message)
{
    // Not libmnl's own end of the payload: that is rounded up, beyond a hostile message.
    const auto *tail = reinterpret_cast<const char *>(header) + header->nlmsg_len;
    const auto *attribute
        = static_cast<const nlattr *>(mnl_nlmsg_get_payload_offset(header, sizeof(ifinfomsg)));
    auto left = tail - reinterpret_cast<const char *>(attribute);
    while (left > 0) {
        if (left > INT_MAX || !mnl_attr_ok(attribute, static_cast<int>(left)))
            return false;
        if (mnl_attr_get_type(attribute) == IFLA_IFNAME)
            readName(attribute, message);
        else if (mnl_attr_get_type(attribute) == IFLA_STATS64)
            readCounters(attribute, message);
        attribute = mnl_attr_next(attribute);
        left = tail - reinterpret_cast<const char *>(attribute);
    }
    return true;
}

} // namespace

std::optional<LinkMessage> parseLinkMessage(const void *buffer, std::size_t size)
{
    const auto *header = static_cast<const nlmsghdr *>(buffer);
    if (!buffer || size > INT_MAX || !mnl_nlmsg_ok(header, static_cast<int>(size)))
        return std::nullopt;
    if (header->nlmsg_type != RTM_NEWLINK && header->nlmsg_type != RTM_DELLINK)
        return std::nullopt;
    if (mnl_nlmsg_get_payload_len(header) < sizeof(ifinfomsg))
        return std::nullopt;
    const auto *info = static_cast<const ifinfomsg *>(mnl_nlmsg_get_payload(header));
    // A port that leaves a bridge is announced by RTM_DELLINK too, with the bridge's family.
    if (info->ifi_family != AF_UNSPEC)
        return std::nullopt;
    LinkMessage message;
    message.deleted = header->nlmsg_type == RTM_DELLINK;
    message.index = info->ifi_index;
    // RUNNING stands for an operational state of "up" or "unknown" (tunnels, PPP).
    constexpr unsigned kUp = IFF_UP | IFF_RUNNING | IFF_LOWER_UP;
    message.up = (info->ifi_flags & kUp) == kUp;
    if (!readAttributes(header, message))
        return std::nullopt;
    return message;
}

} // namespace velq
