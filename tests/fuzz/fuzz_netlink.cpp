// Any bytes as messages of the kernel: the readers keep to the message, and the table of links to
// its promises whatever the messages say and in whatever order they come. Nothing is booked that
// the counters did not count.

#include "accounting/Accountant.h"
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
    //! A default route over each link.
    [[nodiscard]] std::vector<velq::DefaultRoute> routes() const
    {
        std::vector<velq::DefaultRoute> routes;
        for (const auto &known : m_instances)
            routes.push_back({ AF_INET, known.first, 0 });
        return routes;
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

struct Sums
{
    std::uint64_t download = 0;
    std::uint64_t upload = 0;

    void add(std::uint64_t down, std::uint64_t up)
    {
        download += down;
        upload += up;
    }
    [[nodiscard]] bool isAtMost(const Sums &other) const
    {
        return download <= other.download && upload <= other.upload;
    }
};

//! Compares what is booked with what the steps say has flowed.
class Books
{
public:
    //! False when the sums are too large to go on.
    [[nodiscard]] bool look(const std::vector<LinkStep> &steps,
                            std::vector<velq::DefaultRoute> routes)
    {
        for (const LinkStep &step : steps)
            count(step);
        constexpr auto kMost = std::uint64_t(1) << 60;
        if (!m_flowed.isAtMost({ kMost, kMost }) || !m_before.isAtMost({ kMost, kMost }))
            return false;
        m_nowNs += 1000000000;
        const velq::LinkNews news { true, steps, std::move(routes) };
        const velq::BookingBatch batch = m_accountant.advance(news, nullptr, m_nowNs);
        for (const auto &booking : batch.bookings) {
            require(booking.amounts.download >= 0 && booking.amounts.upload >= 0);
            m_booked.add(std::uint64_t(booking.amounts.download),
                         std::uint64_t(booking.amounts.upload));
        }
        for (const auto &reason : batch.reasons) {
            if (reason.kind == velq::ReasonKind::Recovered)
                m_recovered.add(std::uint64_t(reason.download), std::uint64_t(reason.upload));
        }
        require(m_recovered.isAtMost(m_before) && m_recovered.isAtMost(m_booked));
        Sums most = m_flowed;
        most.add(m_recovered.download, m_recovered.upload);
        require(m_booked.isAtMost(most));
        return true;
    }

private:
    void count(const LinkStep &step)
    {
        if (!step.counters)
            return;
        const Sums now { step.counters->download, step.counters->upload };
        Sums &last = m_last[step.link.index];
        if (step.kind == LinkStep::Kind::Appeared) {
            if (!step.base)
                m_before.add(now.download, now.upload);
            last = step.base ? Sums { step.base->download, step.base->upload } : now;
        }
        constexpr auto kMost = std::uint64_t(1) << 62; // more than any link can carry
        const Sums more { now.download - last.download, now.upload - last.upload };
        const bool fell = !last.isAtMost(now) || !more.isAtMost({ kMost, kMost });
        if (fell && step.fromEvent)
            return;
        if (!fell)
            m_flowed.add(more.download, more.upload);
        last = now;
    }

    velq::Accountant m_accountant { "boot", {} };
    std::map<int, Sums> m_last; // of the links, by index
    std::int64_t m_nowNs = 0;
    Sums m_before; // counted by links that were there before anybody looked
    Sums m_flowed;
    Sums m_booked;
    Sums m_recovered; // of what is booked
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
    Books books;
    while (size >= sizeof(nlmsghdr)) {
        // A block of its own, which ends where the input does: a byte too many is noticed.
        const std::vector<std::uint8_t> message(data, data + size);
        nlmsghdr header {};
        std::memcpy(&header, data, sizeof header);
        tell(table, header, message.data(), message.size());
        const std::vector<LinkStep> steps = table.takeSteps();
        follower.follow(steps);
        if (!books.look(steps, follower.routes()))
            return 0;
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
