#include "counters/LinkMonitor.h"

#include "counters/AddressMessage.h"
#include "counters/LinkMessage.h"
#include "counters/MessageQueue.h"
#include "counters/StatsMessage.h"

#include <libmnl/libmnl.h>
#include <linux/if_link.h>
#include <linux/rtnetlink.h>
#include <net/if.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

namespace velq {

namespace {

using Answer = MessageStream::Answer;

constexpr unsigned kRouteGroups = RTMGRP_IPV4_ROUTE | RTMGRP_IPV6_ROUTE;
constexpr unsigned kAddressGroups = RTMGRP_IPV4_IFADDR | RTMGRP_IPV6_IFADDR;
constexpr std::size_t kRequestSize = 64; // header and any of the bodies

//! A question for everything of a kind, which \a body begins.
template <typename Body>
struct Request
{
    explicit Request(int type)
    {
        auto *header = mnl_nlmsg_put_header(bytes.data());
        header->nlmsg_type = static_cast<std::uint16_t>(type);
        header->nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
        body = static_cast<Body *>(mnl_nlmsg_put_extra_header(header, sizeof(Body)));
    }
    [[nodiscard]] nlmsghdr *header()
    {
        return reinterpret_cast<nlmsghdr *>(bytes.data());
    }

    alignas(nlmsghdr) std::array<char, kRequestSize> bytes {};
    Body *body = nullptr;
};

LinkTable::FindPlace placeFinder(std::string root)
{
    return [root = std::move(root)](const std::string &name, int index) {
        LinkPlace place = findLinkPlace(root, name, index);
        // A new link is often renamed before we read of it; its folder then has the later name.
        constexpr int kTries = 3;
        std::array<char, IF_NAMESIZE> later {};
        for (int i = 0; i < kTries && place.instance == 0; ++i) {
            if (!if_indextoname(static_cast<unsigned>(index), later.data()) || name == later.data())
                break;
            place = findLinkPlace(root, later.data(), index);
        }
        return place;
    };
}

} // namespace

LinkMonitor::LinkMonitor(std::string root)
    : LinkMonitor(std::make_unique<KernelQueue>(RTMGRP_LINK | kRouteGroups | kAddressGroups),
                  placeFinder(std::move(root)))
{
}

LinkMonitor::LinkMonitor(std::unique_ptr<MessageQueue> queue, LinkTable::FindPlace findPlace)
    : m_table(std::move(findPlace))
    , m_stream(std::move(queue),
               [this](const void *message, std::size_t size) { noteEvent(message, size); })
{
}

LinkNews LinkMonitor::read()
{
    LinkNews news;
    if (!readLinks() || (m_routesChanged && !lookUpRoutes()))
        return news;
    news.valid = true;
    news.steps = m_table.takeSteps();
    news.routes = m_routes;
    return news;
}

void LinkMonitor::noteDisconnect(int index)
{
    (void)readEvents(); // what was announced until now is of the connection that ends
    m_table.noteDisconnect(index);
}

bool LinkMonitor::readEvents()
{
    const bool read = m_stream.readEvents();
    takeLoss();
    return read;
}

void LinkMonitor::takeLoss()
{
    if (!m_stream.takeLoss())
        return;
    m_table.noteLoss();
    m_routesChanged = true;
}

void LinkMonitor::noteEvent(const void *message, std::size_t size)
{
    const int connected = linkOfNewAddress(message, size);
    if (connected > 0) {
        m_table.noteConnect(connected);
    } else if (const auto link = parseLinkMessage(message, size)) {
        m_table.applyEvent(*link);
        m_routesChanged = true; // a carrier that comes or goes changes whether a route is usable
    } else if (isDefaultRouteChange(message, size)) {
        m_routesChanged = true;
    }
}

Answer LinkMonitor::ask(nlmsghdr *request, const MessageStream::Visitor &visit)
{
    m_table.beginAnswer();
    const Answer answer = m_stream.ask(request, [&](const void *message, std::size_t size) {
        takeLoss(); // what follows may be of other links than the table's
        visit(message, size);
    });
    takeLoss();
    return answer;
}

bool LinkMonitor::readLinks()
{
    if (m_table.isComplete() && !m_countersRefused) {
        const auto status = readCounters();
        if (status == Answer::Status::Failed)
            return false;
        if (status == Answer::Status::Whole && m_table.isComplete())
            return true;
    }
    if (!readEvents()) // the answer needs room in the queue
        return false;
    // A list that links came into or left meanwhile is no whole one.
    constexpr int kTries = 3;
    for (int i = 0; i < kTries; ++i) {
        if (!listLinks())
            return false;
        if (m_table.isComplete())
            break;
    }
    return m_table.wasComplete();
}

bool LinkMonitor::listLinks()
{
    Request<ifinfomsg> request(RTM_GETLINK);
    const Answer answer = ask(request.header(), [this](const void *message, std::size_t size) {
        if (const auto link = parseLinkMessage(message, size))
            m_table.applyAnswer(*link);
    });
    if (answer.status == Answer::Status::Whole)
        m_table.endAnswer();
    return answer.status == Answer::Status::Whole || answer.status == Answer::Status::Interrupted;
}

Answer::Status LinkMonitor::readCounters()
{
    // The events that were waiting come with the answer. Links that they tell of are asked for once
    // more; most seconds have none, and need no call that only looks for them.
    const auto status = askCounters();
    const bool again
        = status == Answer::Status::Whole && m_table.isComplete() && m_table.hasNewer();
    return again ? askCounters() : status;
}

Answer::Status LinkMonitor::askCounters()
{
    Request<if_stats_msg> request(RTM_GETSTATS);
    request.body->filter_mask = IFLA_STATS_FILTER_BIT(IFLA_STATS_LINK_64);
    const Answer answer = ask(request.header(), [this](const void *message, std::size_t size) {
        if (const auto stats = parseStatsMessage(message, size))
            m_table.applyStats(*stats);
    });
    if (answer.status == Answer::Status::Refused)
        m_countersRefused = answer.error == EOPNOTSUPP || answer.error == EINVAL;
    return answer.status;
}

bool LinkMonitor::lookUpRoutes()
{
    m_routesChanged = false;
    std::vector<DefaultRoute> routes;
    Request<rtmsg> request(RTM_GETROUTE); // of every family
    const Answer answer = ask(request.header(), [&routes](const void *message, std::size_t size) {
        for (const DefaultRoute &route : parseRouteMessage(message, size))
            routes.push_back(route);
    });
    if (answer.status != Answer::Status::Whole)
        m_routesChanged = true;
    if (answer.status != Answer::Status::Whole && answer.status != Answer::Status::Interrupted)
        return false;
    std::stable_sort(routes.begin(), routes.end(), isPreferred);
    m_routes = std::move(routes);
    return true;
}

} // namespace velq
