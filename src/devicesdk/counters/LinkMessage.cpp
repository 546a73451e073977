#include "counters/LinkMessage.h"

#include "counters/MessageParts.h"
#include "counters/StatsMessage.h"

#include <linux/if.h>
#include <linux/if_link.h>
#include <linux/rtnetlink.h>

#include <cstring>

namespace velq {

namespace {

std::string textOf(const nlattr *attribute)
{
    const auto *text = static_cast<const char *>(mnl_attr_get_payload(attribute));
    return std::string(text, strnlen(text, mnl_attr_get_payload_len(attribute)));
}

int numberOf(const nlattr *attribute)
{
    int number = 0;
    if (mnl_attr_get_payload_len(attribute) >= sizeof number)
        std::memcpy(&number, mnl_attr_get_payload(attribute), sizeof number);
    return number > 0 ? number : 0;
}

std::string addressOf(const nlattr *attribute)
{
    constexpr char kDigits[] = "0123456789abcdef";
    constexpr std::size_t kLongest = 32; // of the kernel's hardware addresses
    const std::size_t size = mnl_attr_get_payload_len(attribute);
    const auto *bytes = static_cast<const unsigned char *>(mnl_attr_get_payload(attribute));
    std::string text;
    bool isZero = true;
    for (std::size_t i = 0; i < size && size <= kLongest; ++i) {
        if (i > 0)
            text += ':';
        text += kDigits[bytes[i] >> 4];
        text += kDigits[bytes[i] & 15];
        isZero = isZero && bytes[i] == 0;
    }
    return isZero ? std::string() : text;
}

//! False when an attribute inside reaches over the end.
bool readKind(const nlattr *attribute, LinkMessage &message)
{
    const auto *inside = static_cast<const char *>(mnl_attr_get_payload(attribute));
    const auto *end = inside + mnl_attr_get_payload_len(attribute);
    return visitAttributes(inside, end, [&message](const nlattr *inner) {
        if (mnl_attr_get_type(inner) == IFLA_INFO_KIND)
            message.kind = textOf(inner);
        return true;
    });
}

bool readAttribute(const nlattr *attribute, LinkMessage &message, bool &lowerIsElsewhere)
{
    switch (mnl_attr_get_type(attribute)) {
    case IFLA_IFNAME:
        message.name = textOf(attribute);
        break;
    case IFLA_STATS64:
        if (readByteCounters(attribute, message.download, message.upload))
            message.hasCounters = true;
        break;
    case IFLA_LINKINFO:
        return readKind(attribute, message);
    case IFLA_PERM_ADDRESS:
        message.hardwareAddress = addressOf(attribute);
        break;
    case IFLA_LINK:
        message.lowerIndex = numberOf(attribute);
        break;
    case IFLA_LINK_NETNSID:
        lowerIsElsewhere = true;
        break;
    case IFLA_MASTER:
        message.masterIndex = numberOf(attribute);
        break;
    default:
        break;
    }
    return true;
}

bool readAttributes(const nlmsghdr *header, LinkMessage &message)
{
    bool lowerIsElsewhere = false;
    const bool whole = visitAttributes(header, sizeof(ifinfomsg), [&](const nlattr *attribute) {
        return readAttribute(attribute, message, lowerIsElsewhere);
    });
    if (lowerIsElsewhere || message.lowerIndex == message.index) // the number means another link
        message.lowerIndex = 0;
    return whole;
}

} // namespace

std::optional<LinkMessage> parseLinkMessage(const void *buffer, std::size_t size)
{
    const auto *header = wholeMessage(buffer, size, sizeof(ifinfomsg));
    if (!header || (header->nlmsg_type != RTM_NEWLINK && header->nlmsg_type != RTM_DELLINK))
        return std::nullopt;
    const auto *info = static_cast<const ifinfomsg *>(mnl_nlmsg_get_payload(header));
    // A port that leaves a bridge is announced by RTM_DELLINK too, with the bridge's family.
    if (info->ifi_family != AF_UNSPEC || info->ifi_index <= 0)
        return std::nullopt;
    LinkMessage message;
    message.deleted = header->nlmsg_type == RTM_DELLINK;
    message.index = info->ifi_index;
    message.loopback = (info->ifi_flags & IFF_LOOPBACK) != 0;
    // RUNNING stands for an operational state of "up" or "unknown" (tunnels, PPP).
    constexpr unsigned kUp = IFF_UP | IFF_RUNNING | IFF_LOWER_UP;
    message.up = (info->ifi_flags & kUp) == kUp;
    if (!readAttributes(header, message))
        return std::nullopt;
    return message;
}

} // namespace velq
