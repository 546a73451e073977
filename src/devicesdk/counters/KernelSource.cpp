#include "counters/KernelSource.h"

#include "counters/AddressMessage.h"
#include "counters/InterfaceName.h"
#include "counters/LinkMessage.h"
#include "counters/RouteMessage.h"

#include <libmnl/libmnl.h>
#include <linux/if_link.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>

#include <cerrno>
#include <utility>

namespace velq {

namespace {

constexpr std::size_t kRequestSize = 256; // header, body and one short attribute

} // namespace

KernelSource::KernelSource(std::string name, std::string root)
    : m_name(std::move(name))
    , m_root(std::move(root))
{
    open();
}

void KernelSource::open()
{
    constexpr unsigned kRoutes = RTMGRP_IPV4_ROUTE | RTMGRP_IPV6_ROUTE;
    constexpr unsigned kAddresses = RTMGRP_IPV4_IFADDR | RTMGRP_IPV6_IFADDR;
    m_open = m_requests.open(0) && m_events.open(RTMGRP_LINK | kRoutes | kAddresses);
}

ReadResult KernelSource::readChosen()
{
    if (!m_open)
        return { ReadStatus::Failed, {} };
    readEvents();
    ReadResult result;
    if (!m_name.empty()) {
        if (isInterfaceName(m_name)) // a name from the environment may be one that cannot exist
            result = readLink(0, m_name);
    } else {
        if (m_routesChanged && !lookUpRoute())
            return { ReadStatus::Failed, {} };
        if (m_routeIndex > 0)
            result = readLink(m_routeIndex, {});
    }
    if (result.status == ReadStatus::Found) {
        m_watchedIndex = result.link.index;
        applyDisconnect(result.link);
    } else if (result.status == ReadStatus::Absent) {
        m_routesChanged = true;
    }
    return result;
}

void KernelSource::noteDisconnect()
{
    readEvents(); // what was announced until now is of the connection that ends
    m_disconnectedIndex = m_watchedIndex;
}

void KernelSource::applyDisconnect(LinkReading &link)
{
    if (link.index != m_disconnectedIndex)
        return;
    if (!link.up)
        m_disconnectedIndex = 0; // when it comes up, it does so anew
    link.up = false;
}

ReadResult KernelSource::readIndex(int index)
{
    return m_open ? readLink(index, {}) : ReadResult { ReadStatus::Failed, {} };
}

void KernelSource::readEvents()
{
    const bool complete = m_events.drain(
        [this](const void *message, std::size_t size) { noteEvent(message, size); });
    if (!complete) {
        m_routesChanged = true;
        m_disconnectedIndex = 0; // it may have connected again
    }
}

void KernelSource::noteEvent(const void *message, std::size_t size)
{
    const auto *header = static_cast<const nlmsghdr *>(message);
    if (header->nlmsg_type == RTM_NEWADDR || header->nlmsg_type == RTM_DELADDR) {
        const int connected = linkOfNewAddress(message, size);
        if (connected > 0 && connected == m_disconnectedIndex)
            m_disconnectedIndex = 0;
        return;
    }
    // Links count as well: a carrier that comes or goes changes whether a route is usable.
    m_routesChanged = true;
    const auto link = parseLinkMessage(message, size);
    if (!link || !link->deleted)
        return;
    if (link->index == m_watchedIndex)
        ++m_generation;
    if (link->index == m_disconnectedIndex)
        m_disconnectedIndex = 0;
}

bool KernelSource::lookUpRoute()
{
    std::optional<DefaultRoute> best;
    if (!dumpRoutes(AF_INET, best) || (!best && !dumpRoutes(AF_INET6, best)))
        return false;
    m_routeIndex = best ? best->index : 0;
    m_routesChanged = false;
    return true;
}

bool KernelSource::dumpRoutes(int family, std::optional<DefaultRoute> &best)
{
    alignas(nlmsghdr) char bytes[kRequestSize] {};
    auto *request = mnl_nlmsg_put_header(bytes);
    request->nlmsg_type = RTM_GETROUTE;
    request->nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
    auto *info = static_cast<rtmsg *>(mnl_nlmsg_put_extra_header(request, sizeof(rtmsg)));
    info->rtm_family = static_cast<unsigned char>(family);
    const int error = m_requests.ask(request, [&best](const void *message, std::size_t size) {
        const auto route = parseRouteMessage(message, size);
        if (route && (!best || isPreferred(*route, *best)))
            best = route;
    });
    // A kernel without this family has no route of it.
    return error == 0 || error == EAFNOSUPPORT || error == EOPNOTSUPP;
}

ReadResult KernelSource::readLink(int index, const std::string &name)
{
    alignas(nlmsghdr) char bytes[kRequestSize] {};
    auto *request = mnl_nlmsg_put_header(bytes);
    request->nlmsg_type = RTM_GETLINK;
    request->nlmsg_flags = NLM_F_REQUEST;
    auto *info = static_cast<ifinfomsg *>(mnl_nlmsg_put_extra_header(request, sizeof(ifinfomsg)));
    info->ifi_family = AF_UNSPEC;
    info->ifi_index = index;
    if (!name.empty())
        mnl_attr_put_strz(request, IFLA_IFNAME, name.c_str());
    std::optional<LinkMessage> link;
    const int error = m_requests.ask(request, [&link](const void *message, std::size_t size) {
        link = parseLinkMessage(message, size);
    });
    if (error == ENODEV)
        return { ReadStatus::Absent, {} };
    if (error != 0 || !link || link->deleted || !link->hasCounters)
        return { ReadStatus::Failed, {} };
    ReadResult result;
    result.status = ReadStatus::Found;
    result.link.index = link->index;
    result.link.generation = m_generation;
    result.link.name = link->name;
    result.link.up = link->up;
    result.link.wireless = isWireless(m_root, link->name);
    result.link.download = link->download;
    result.link.upload = link->upload;
    return result;
}

} // namespace velq
