#include "counters/AddressMessage.h"

#include <libmnl/libmnl.h>
#include <linux/if_addr.h>
#include <linux/rtnetlink.h>

#include <climits>

namespace velq {

int linkOfNewAddress(const void *message, std::size_t size)
{
    const auto *header = static_cast<const nlmsghdr *>(message);
    if (!message || size > INT_MAX || !mnl_nlmsg_ok(header, static_cast<int>(size))
        || header->nlmsg_type != RTM_NEWADDR
        || mnl_nlmsg_get_payload_len(header) < sizeof(ifaddrmsg))
        return 0;
    const auto *info = static_cast<const ifaddrmsg *>(mnl_nlmsg_get_payload(header));
    // A link has its own IPv6 address by itself as soon as it is up.
    return info->ifa_scope < RT_SCOPE_LINK ? static_cast<int>(info->ifa_index) : 0;
}

} // namespace velq
