#include "counters/StatsMessage.h"

#include "counters/MessageParts.h"

#include <linux/if_link.h>
#include <linux/rtnetlink.h>

#include <cstring>

namespace velq {

namespace {

// Kernels differ in how many counters follow; the byte counters are among the first four.
constexpr std::size_t kNeeded
    = offsetof(rtnl_link_stats64, tx_bytes) + sizeof(rtnl_link_stats64::tx_bytes);

} // namespace

bool readByteCounters(const nlattr *attribute, std::uint64_t &download, std::uint64_t &upload)
{
    if (mnl_attr_get_payload_len(attribute) < kNeeded)
        return false;
    // Copied: the attribute is aligned to 4 bytes only.
    const auto *payload = static_cast<const char *>(mnl_attr_get_payload(attribute));
    std::memcpy(&download, payload + offsetof(rtnl_link_stats64, rx_bytes), sizeof download);
    std::memcpy(&upload, payload + offsetof(rtnl_link_stats64, tx_bytes), sizeof upload);
    return true;
}

std::optional<StatsMessage> parseStatsMessage(const void *buffer, std::size_t size)
{
    const auto *header = wholeMessage(buffer, size, sizeof(if_stats_msg));
    if (!header || header->nlmsg_type != RTM_NEWSTATS)
        return std::nullopt;
    if_stats_msg info {};
    std::memcpy(&info, mnl_nlmsg_get_payload(header), sizeof info);
    StatsMessage message;
    bool hasCounters = false;
    const bool whole = visitAttributes(header, sizeof info, [&](const nlattr *attribute) {
        if (mnl_attr_get_type(attribute) == IFLA_STATS_LINK_64
            && readByteCounters(attribute, message.download, message.upload))
            hasCounters = true;
        return true;
    });
    message.index = static_cast<int>(info.ifindex);
    if (!whole || !hasCounters || message.index <= 0)
        return std::nullopt;
    return message;
}

} // namespace velq
