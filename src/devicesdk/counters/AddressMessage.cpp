#include "counters/AddressMessage.h"

#include "counters/MessageParts.h"

#include <linux/if_addr.h>
#include <linux/rtnetlink.h>

namespace velq {

int linkOfNewAddress(const void *message, std::size_t size)
{
    const auto *header = wholeMessage(message, size, sizeof(ifaddrmsg));
    if (!header || header->nlmsg_type != RTM_NEWADDR)
        return 0;
    const auto *info = static_cast<const ifaddrmsg *>(mnl_nlmsg_get_payload(header));
    // A link has its own IPv6 address by itself as soon as it is up.
    return info->ifa_scope < RT_SCOPE_LINK ? static_cast<int>(info->ifa_index) : 0;
}

} // namespace velq
