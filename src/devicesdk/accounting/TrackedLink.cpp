#include "accounting/TrackedLink.h"

#include <utility>

namespace velq {

namespace {

constexpr std::int64_t kYouthNs = 60000000000; // connecting takes seconds

//! Whether no traffic leads from \a other to \a counters: less, or more than any link can carry.
bool isBelow(const LinkCounters &counters, const LinkCounters &other)
{
    constexpr auto kMost = std::uint64_t(1) << 62;
    return counters.download - other.download > kMost || counters.upload - other.upload > kMost;
}

LinkCounters difference(const LinkCounters &counters, const LinkCounters &base)
{
    return { counters.download - base.download, counters.upload - base.upload };
}

void add(LinkCounters &sum, const LinkCounters &other)
{
    sum.download += other.download;
    sum.upload += other.upload;
}

} // namespace

TrackedLink::TrackedLink(const Link &link, const std::optional<LinkCounters> &base,
                         std::int64_t nowNs)
    : m_link(link)
    , m_last(base)
    , m_firstNs(nowNs)
    , m_wasHere(!base)
    , m_sawDown(!link.up)
{
}

void TrackedLink::beginLook()
{
    m_delta = {};
    m_fell = false;
    m_sawDown = !m_link.up;
}

void TrackedLink::change(const Link &link)
{
    m_link = link;
    m_sawDown = m_sawDown || !link.up;
}

void TrackedLink::count(const LinkCounters &counters, bool fromEvent)
{
    if (!m_last) {
        m_last = m_untold = counters;
        return;
    }
    if (isBelow(counters, *m_last)) {
        if (fromEvent)
            return;
        m_fell = true;
        m_last = counters;
        return;
    }
    const LinkCounters more = difference(counters, *m_last);
    add(m_delta, more);
    add(m_unbooked, more);
    m_last = counters;
}

void TrackedLink::resume(const LinkMark &from)
{
    const LinkCounters known { from.download, from.upload };
    if (!isBelow(m_untold, known))
        add(m_recovered, difference(m_untold, known));
    else if (!m_fell && !isBelow(*m_last, known))
        m_delta = m_unbooked
            = difference(*m_last, known); // its looks were later than ours until now
    else
        m_fell = true;
    m_untold = {};
    m_told = true;
}

void TrackedLink::forgetBooks()
{
    m_untold = m_last.value_or(LinkCounters {});
    m_wasHere = true;
    m_told = false;
    m_delta = m_unbooked = m_kept = m_recovered = {};
    mark.reset();
    markAsked = noteTold = false;
}

void TrackedLink::claimAll()
{
    add(m_recovered, std::exchange(m_untold, {}));
    m_told = true;
}

LinkCounters TrackedLink::takeDelta(bool toBook, std::int64_t nowNs)
{
    const LinkCounters found = std::exchange(m_unbooked, {});
    if (toBook) {
        LinkCounters all = found;
        add(all, std::exchange(m_kept, {}));
        return all;
    }
    if (m_wasHere && !m_told)
        add(m_untold, found);
    if (!m_wasHere && nowNs - m_firstNs <= kYouthNs)
        add(m_kept, found);
    else
        m_kept = {};
    return {};
}

LinkCounters TrackedLink::takeRecovered()
{
    return std::exchange(m_recovered, {});
}

} // namespace velq
