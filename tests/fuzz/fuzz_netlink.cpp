// Any bytes as messages of the kernel: the readers keep to the message, and the table of links to
// its promises whatever the messages say and in whatever order they come.

#include "counters/AddressMessage.h"
#include "counters/LinkMessage.h"
#include "counters/LinkTable.h"
#include "counters/RouteMessage.h"
#include "counters/StatsMessage.h"

#include <linux/if_link.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <map>
#include <vector>

using velq::LinkStep;

namespace {

void require(bool condition)
{
    if (!condition)
        std::abort();
}

//! Follows the steps as a user does: every step belongs to a link that has appeared.
class Follower
{
public:
    void follow(const std::vector<LinkStep> &steps)
    {
        for (const LinkStep &step : steps)
            follow(step);
    }
    [[nodiscard]] std::size_t count() const
    {
        return m_instances.size();
    }

private:
    void follow(const LinkStep &step)
    {
        const auto known = m_instances.find(step.link.index);
        require(step.link.index > 0);
        if (step.kind == LinkStep::Kind::Appeared) {
            require(known == m_instances.end() && step.counters);
            m_instances[step.link.index] = step.link.instance;
            return;
        }
        require(known != m_instances.end() && known->second == step.link.instance);
        require(!step.base);
        require(step.kind != LinkStep::Kind::Counted || step.counters);
        if (step.kind == LinkStep::Kind::Gone)
            m_instances.erase(known);
    }

    std::map<int, std::uint64_t> m_instances; // of the links that are there, by index
};

void requireLink(const velq::LinkMessage &link, std::size_t size)
{
    require(link.index > 0 && link.lowerIndex >= 0 && link.masterIndex >= 0);
    require(link.lowerIndex != link.index);
    require(link.name.size() < size && link.kind.size() < size);
    require(link.name.find('\0') == std::string::npos);
    require(link.hardwareAddress.empty() || link.hardwareAddress.size() % 3 == 2);
    require(link.hasCounters || (link.download == 0 && link.upload == 0));
}

//! The bits of the sequence number say how the table is told.
void tell(velq::LinkTable &table, const nlmsghdr &header, const void *message, std::size_t size)
{
    if (header.nlmsg_seq & 1)
        table.beginAnswer();
    if (const auto link = velq::parseLinkMessage(message, size)) {
        requireLink(*link, size);
        if (header.nlmsg_seq & 2)
            table.applyAnswer(*link);
        else
            table.applyEvent(*link);
    }
    if (const auto stats = velq::parseStatsMessage(message, size)) {
        require(stats->index > 0);
        table.applyStats(*stats);
    }
    if (const int index = velq::linkOfNewAddress(message, size))
        header.nlmsg_seq & 4 ? table.noteDisconnect(index) : table.noteConnect(index);
    for (const auto &route : velq::parseRouteMessage(message, size)) {
        require(route.index > 0 && (route.family == AF_INET || route.family == AF_INET6));
        require(velq::isDefaultRouteChange(message, size));
    }
    if (header.nlmsg_seq & 8)
        table.endAnswer();
    if (header.nlmsg_seq & 16)
        table.noteLoss();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    std::uint64_t lookUps = 0;
    velq::LinkTable table([&lookUps](const std::string &, int) {
        ++lookUps;
        return velq::LinkPlace { lookUps % 3, lookUps % 2 == 0 };
    });
    Follower follower;
    while (size >= sizeof(nlmsghdr)) {
        // A block of its own, which ends where the input does: a byte too many is noticed.
        const std::vector<std::uint8_t> message(data, data + size);
        nlmsghdr header {};
        std::memcpy(&header, data, sizeof header);
        tell(table, header, message.data(), message.size());
        follower.follow(table.takeSteps());
        const std::size_t step = NLMSG_ALIGN(static_cast<std::size_t>(header.nlmsg_len));
        if (step < sizeof header || step > size)
            break;
        data += step;
        size -= step;
    }
    table.beginAnswer();
    table.endAnswer(); // which lists nothing
    follower.follow(table.takeSteps());
    require(follower.count() == 0);
    return 0;
}
