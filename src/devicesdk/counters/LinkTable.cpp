#include "counters/LinkTable.h"

#include "counters/LinkMessage.h"
#include "counters/StatsMessage.h"

#include <algorithm>
#include <utility>

namespace velq {

namespace {

bool isSame(const Link &one, const Link &other)
{
    return one.name == other.name && one.kind == other.kind
        && one.hardwareAddress == other.hardwareAddress && one.lowerIndex == other.lowerIndex
        && one.masterIndex == other.masterIndex && one.loopback == other.loopback
        && one.up == other.up;
}

Link linkOf(const LinkMessage &message, const LinkPlace &place)
{
    Link link;
    link.index = message.index;
    link.instance = place.instance;
    link.name = message.name;
    link.kind = message.kind;
    link.hardwareAddress = message.hardwareAddress;
    link.lowerIndex = message.lowerIndex;
    link.masterIndex = message.masterIndex;
    link.loopback = message.loopback;
    link.up = message.up;
    link.wireless = place.wireless;
    return link;
}

//! The counters of the event \a message, which comes after \a before.
LinkCounters eventCounters(const LinkMessage &message, const LinkCounters &before)
{
    LinkCounters now { message.download, message.upload };
    // A link that shows its peer's upload as its download has none when it closes because one of
    // the two is deleted. What was known before is then the last that can be known.
    if (!message.up && now.download < before.download && now.upload >= before.upload)
        now.download = before.download;
    return now;
}

} // namespace

LinkTable::LinkTable(FindPlace findPlace)
    : m_findPlace(std::move(findPlace))
{
}

void LinkTable::beginAnswer()
{
    m_deleted.clear();
    for (Known &known : m_links)
        known.listed = known.newer = false;
}

void LinkTable::applyEvent(const LinkMessage &message)
{
    const auto at = find(message.index);
    const bool isKnown = at != m_links.end() && at->link.index == message.index;
    if (message.deleted) {
        m_deleted.push_back(message.index);
        if (isKnown)
            removeDeleted(at, message);
        return;
    }
    if (!message.hasCounters) {
        if (isKnown)
            changeFlags(*at, message);
        else
            noteLoss(); // a link that exists and was never announced
        return;
    }
    if (isKnown && !m_complete && isAnotherLink(*at, message))
        return; // of which of the two it tells is not known; the list that follows will say
    if (isKnown)
        change(*at, message, true);
    else
        appear(at, message, true);
}

void LinkTable::applyAnswer(const LinkMessage &message)
{
    auto at = find(message.index);
    bool isKnown = at != m_links.end() && at->link.index == message.index;
    const auto &deleted = m_deleted;
    const bool isDeleted
        = std::find(deleted.begin(), deleted.end(), message.index) != deleted.end();
    if (message.deleted || !message.hasCounters || (isKnown ? at->newer : isDeleted))
        return;
    if (isKnown && !m_complete && isAnotherLink(*at, message)) {
        at = remove(at);
        isKnown = false;
    }
    if (isKnown)
        change(*at, message, false);
    else
        appear(at, message, false);
}

void LinkTable::applyStats(const StatsMessage &message)
{
    const auto at = find(message.index);
    if (!m_complete || at == m_links.end() || at->link.index != message.index || at->newer)
        return;
    at->counters = { message.download, message.upload };
    addStep(LinkStep::Kind::Counted, *at, false).counters = at->counters;
}

void LinkTable::endAnswer()
{
    for (auto at = m_links.begin(); at != m_links.end();)
        at = at->listed || at->newer ? at + 1 : remove(at);
    m_complete = m_wasComplete = true;
}

void LinkTable::noteLoss()
{
    m_complete = false;
    for (Known &known : m_links)
        endDisconnect(known); // it may have connected again
}

void LinkTable::noteDisconnect(int index)
{
    const auto at = find(index);
    if (at == m_links.end() || at->link.index != index || !at->link.up)
        return;
    at->disconnected = true;
    at->link.up = false;
    addStep(LinkStep::Kind::Changed, *at, true).link = at->link;
}

void LinkTable::noteConnect(int index)
{
    const auto at = find(index);
    if (at != m_links.end() && at->link.index == index)
        endDisconnect(*at);
}

bool LinkTable::hasNewer() const
{
    return std::any_of(m_links.begin(), m_links.end(),
                       [](const Known &known) { return known.newer; });
}

std::vector<LinkStep> LinkTable::takeSteps()
{
    std::vector<LinkStep> steps;
    steps.swap(m_steps);
    m_steps.reserve(m_links.size()); // for the next time
    return steps;
}

LinkTable::Iterator LinkTable::find(int index)
{
    return std::lower_bound(
        m_links.begin(), m_links.end(), index,
        [](const Known &known, int wanted) { return known.link.index < wanted; });
}

void LinkTable::appear(Iterator at, const LinkMessage &message, bool fromEvent)
{
    Known known;
    known.link = linkOf(message, m_findPlace(message.name, message.index));
    known.counters = { message.download, message.upload };
    known.kernelUp = message.up;
    known.listed = !fromEvent;
    known.newer = fromEvent;
    LinkStep &step = addStep(LinkStep::Kind::Appeared, known, fromEvent);
    step.link = known.link;
    step.counters = known.counters;
    // Announced to us it is new, or came with counters from elsewhere; found after a gap it came
    // in the gap, and all that it has counted is of that time.
    if (m_wasComplete)
        step.base = m_complete && fromEvent ? known.counters : LinkCounters {};
    m_links.insert(at, std::move(known));
}

void LinkTable::change(Known &known, const LinkMessage &message, bool fromEvent)
{
    known.kernelUp = message.up;
    known.disconnected = known.disconnected && message.up; // when it comes up, it does so anew
    known.counters = fromEvent ? eventCounters(message, known.counters)
                               : LinkCounters { message.download, message.upload };
    (fromEvent ? known.newer : known.listed) = true;
    Link now = linkOf(message, { known.link.instance, known.link.wireless });
    now.up = known.kernelUp && !known.disconnected;
    const bool same = isSame(now, known.link);
    known.link = std::move(now);
    const auto kind = same ? LinkStep::Kind::Counted : LinkStep::Kind::Changed;
    LinkStep &step = addStep(kind, known, fromEvent);
    step.counters = known.counters;
    if (!same)
        step.link = known.link;
}

void LinkTable::changeFlags(Known &known, const LinkMessage &message)
{
    known.kernelUp = message.up;
    known.disconnected = known.disconnected && message.up;
    const bool up = known.kernelUp && !known.disconnected;
    if (std::exchange(known.link.up, up) != up)
        addStep(LinkStep::Kind::Changed, known, true).link = known.link;
}

void LinkTable::removeDeleted(Iterator at, const LinkMessage &message)
{
    // A packet that was on its way when the link closed may be counted only now. Some kinds have
    // given up their counters already; those are zeros.
    const LinkCounters last { std::max(at->counters.download, message.download),
                              std::max(at->counters.upload, message.upload) };
    addStep(LinkStep::Kind::Gone, *at, true).counters = last;
    m_links.erase(at);
}

LinkTable::Iterator LinkTable::remove(Iterator at)
{
    addStep(LinkStep::Kind::Gone, *at, false);
    return m_links.erase(at);
}

void LinkTable::endDisconnect(Known &known)
{
    if (!std::exchange(known.disconnected, false))
        return;
    known.link.up = known.kernelUp;
    addStep(LinkStep::Kind::Changed, known, true).link = known.link;
}

bool LinkTable::isAnotherLink(const Known &known, const LinkMessage &message) const
{
    const auto instance = m_findPlace(message.name, message.index).instance;
    return instance != 0 && known.link.instance != 0 && instance != known.link.instance;
}

LinkStep &LinkTable::addStep(LinkStep::Kind kind, const Known &known, bool fromEvent)
{
    LinkStep &step = m_steps.emplace_back();
    step.kind = kind;
    step.link.index = known.link.index;
    step.link.instance = known.link.instance;
    step.fromEvent = fromEvent;
    return step;
}

} // namespace velq
