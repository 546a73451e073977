#include "counters/RouteMessage.h"

#include "counters/MessageParts.h"

#include <linux/rtnetlink.h>
#include <sys/socket.h>

#include <algorithm>
#include <cstring>

namespace velq {

namespace {

template <typename T>
bool readValue(const nlattr *attribute, T &value)
{
    if (mnl_attr_get_payload_len(attribute) < sizeof value)
        return false;
    std::memcpy(&value, mnl_attr_get_payload(attribute), sizeof value);
    return true;
}

bool isUsable(unsigned flags)
{
    return (flags & (RTNH_F_DEAD | RTNH_F_LINKDOWN)) == 0;
}

//! The links of the usable hops of a route over several links; none when a length is wrong.
std::vector<int> usableHops(const nlattr *attribute)
{
    std::vector<int> links;
    const auto *bytes = static_cast<const char *>(mnl_attr_get_payload(attribute));
    std::size_t left = mnl_attr_get_payload_len(attribute);
    rtnexthop hop {};
    while (left >= sizeof hop) {
        std::memcpy(&hop, bytes, sizeof hop);
        if (hop.rtnh_len < sizeof hop || hop.rtnh_len > left)
            return {};
        if (isUsable(hop.rtnh_flags))
            links.push_back(hop.rtnh_ifindex);
        const std::size_t step = std::min(left, MNL_ALIGN(static_cast<std::size_t>(hop.rtnh_len)));
        bytes += step;
        left -= step;
    }
    return links;
}

struct Fields
{
    DefaultRoute route;
    std::uint32_t table = 0;
    std::vector<int> links; // by which it leaves
};

void readAttribute(const nlattr *attribute, Fields &fields)
{
    switch (mnl_attr_get_type(attribute)) {
    case RTA_OIF:
        if (int link = 0; readValue(attribute, link))
            fields.links = { link };
        break;
    case RTA_PRIORITY:
        (void)readValue(attribute, fields.route.metric);
        break;
    case RTA_TABLE:
        (void)readValue(attribute, fields.table);
        break;
    case RTA_MULTIPATH:
        fields.links = usableHops(attribute);
        break;
    default:
        break;
    }
}

} // namespace

std::vector<DefaultRoute> parseRouteMessage(const void *buffer, std::size_t size)
{
    const auto *header = wholeMessage(buffer, size, sizeof(rtmsg));
    if (!header || header->nlmsg_type != RTM_NEWROUTE)
        return {};
    const auto *info = static_cast<const rtmsg *>(mnl_nlmsg_get_payload(header));
    const bool family = info->rtm_family == AF_INET || info->rtm_family == AF_INET6;
    if (!family || info->rtm_dst_len != 0 || info->rtm_src_len != 0 || info->rtm_type != RTN_UNICAST
        || !isUsable(info->rtm_flags))
        return {};
    Fields fields;
    fields.route.family = info->rtm_family;
    fields.table = info->rtm_table;
    const bool whole = visitAttributes(header, sizeof(rtmsg), [&fields](const nlattr *attribute) {
        readAttribute(attribute, fields);
        return true;
    });
    std::vector<DefaultRoute> routes;
    for (const int link : fields.links) {
        fields.route.index = link;
        if (whole && fields.table == RT_TABLE_MAIN && link > 0)
            routes.push_back(fields.route);
    }
    return routes;
}

bool isDefaultRouteChange(const void *buffer, std::size_t size)
{
    const auto *header = wholeMessage(buffer, size, sizeof(rtmsg));
    if (!header || (header->nlmsg_type != RTM_NEWROUTE && header->nlmsg_type != RTM_DELROUTE))
        return false;
    return static_cast<const rtmsg *>(mnl_nlmsg_get_payload(header))->rtm_dst_len == 0;
}

bool isPreferred(const DefaultRoute &route, const DefaultRoute &other)
{
    if (route.family != other.family)
        return route.family == AF_INET;
    return route.metric < other.metric;
}

} // namespace velq
