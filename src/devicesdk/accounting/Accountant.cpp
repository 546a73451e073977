#include "accounting/Accountant.h"

#include "accounting/Identity.h"

#include <algorithm>
#include <utility>

namespace velq {

namespace {

constexpr std::int64_t kNsPerMs = 1000000;
// A link still counts that long after it lost its route: reconnecting takes seconds, and what flows
// around it is the connection's. Not so when what counts now may be over that very link.
constexpr std::int64_t kGraceNs = 60000000000;
constexpr std::int64_t kHourNs = 3600000000000;

Amounts amountsOf(const LinkCounters &counters)
{
    Amounts amounts;
    amounts.download = static_cast<std::int64_t>(counters.download);
    amounts.upload = static_cast<std::int64_t>(counters.upload);
    return amounts;
}

int useOf(const TrackedLink &tracked)
{
    return useKind(tracked.link().wireless ? 1 : 0, tracked.roaming);
}

bool isModemKey(const std::string &key)
{
    return key.compare(0, 4, "sim:") == 0 || key.compare(0, 6, "modem:") == 0;
}

Reason reasonOf(ReasonKind kind, const TrackedLink &tracked, const Amounts &amounts)
{
    Reason reason;
    reason.kind = kind;
    reason.device = tracked.note.key;
    reason.use = useOf(tracked);
    reason.download = amounts.download;
    reason.upload = amounts.upload;
    return reason;
}

//! A driver whose counters fall all the time is told once an hour.
bool isNewFall(TrackedLink &tracked, std::int64_t nowNs)
{
    if (tracked.fallToldNs && nowNs - *tracked.fallToldNs < kHourNs)
        return false;
    tracked.fallToldNs = nowNs;
    return true;
}

bool isSameRoute(const DefaultRoute &one, const DefaultRoute &other)
{
    return one.family == other.family && one.index == other.index && one.metric == other.metric;
}

} // namespace

Accountant::Accountant(std::string boot, std::vector<LinkMark> stored)
    : m_boot(std::move(boot))
    , m_recovery(m_boot, std::move(stored))
{
}

void Accountant::use(const std::string &device)
{
    m_used = device;
    m_changed = true;
    for (TrackedLink &tracked : m_links)
        tracked.countedNs.reset();
}

void Accountant::goOnFrom(std::vector<LinkMark> stored)
{
    m_recovery = Recovery(m_boot, std::move(stored));
    for (TrackedLink &tracked : m_links)
        tracked.forgetBooks();
    m_changed = m_first = true;
}

void Accountant::learn(std::vector<LinkMark> stored)
{
    m_recovery = Recovery(m_boot, std::move(stored));
    for (TrackedLink &tracked : m_links)
        tracked.markAsked = false;
    m_changed = m_first = true;
}

void Accountant::tellAgain()
{
    for (TrackedLink &tracked : m_links) {
        tracked.noteTold = false;
        tracked.mark.reset();
    }
}

LinkId Accountant::idOf(const Link &link) const
{
    return { m_boot, link.index, link.instance };
}

TrackedLink *Accountant::find(int index)
{
    const auto it
        = std::find_if(m_links.begin(), m_links.end(), [index](const TrackedLink &tracked) {
              return tracked.link().index == index;
          });
    return it == m_links.end() ? nullptr : &*it;
}

BookingBatch Accountant::advance(const LinkNews &news,
                                 const std::shared_ptr<const NetworkFacts> &facts,
                                 std::int64_t nowNs, bool book)
{
    BookingBatch batch;
    if (!news.valid)
        return batch; // the next look covers this second as well
    for (TrackedLink &tracked : m_links)
        tracked.beginLook();
    m_gone.clear();
    for (const LinkStep &step : news.steps)
        take(step, nowNs);
    if (!std::equal(news.routes.begin(), news.routes.end(), m_routes.begin(), m_routes.end(),
                    isSameRoute)) {
        m_routes = news.routes;
        m_changed = true;
    }
    const bool decided = decide(facts, batch);
    const bool fell = std::any_of(m_links.begin(), m_links.end(),
                                  [](const TrackedLink &tracked) { return tracked.fell(); });
    m_lookNs = nowNs;
    if (book || decided || fell)
        bookAll(nowNs, batch);
    follow(nowNs);
    return batch;
}

BookingBatch Accountant::settle()
{
    BookingBatch batch;
    if (m_lastNs != m_lookNs)
        bookAll(m_lookNs, batch);
    return batch;
}

void Accountant::take(const LinkStep &step, std::int64_t nowNs)
{
    const int index = step.link.index;
    if (step.kind == LinkStep::Kind::Appeared)
        appear(step, nowNs);
    TrackedLink *tracked = find(index);
    if (!tracked)
        return;
    if (step.kind == LinkStep::Kind::Changed) {
        tracked->change(step.link);
        m_changed = true;
    }
    if (step.counters)
        tracked->count(*step.counters, step.fromEvent);
    if (step.kind == LinkStep::Kind::Gone)
        leave(index);
}

void Accountant::appear(const LinkStep &step, std::int64_t nowNs)
{
    leave(step.link.index); // its end may have been overheard
    m_links.emplace_back(step.link, step.base, nowNs);
    m_changed = true;
}

void Accountant::leave(int index)
{
    const auto it
        = std::find_if(m_links.begin(), m_links.end(), [index](const TrackedLink &tracked) {
              return tracked.link().index == index;
          });
    if (it == m_links.end())
        return;
    it->gone = true;
    m_gone.push_back(std::move(*it));
    m_links.erase(it);
    m_changed = true;
}

bool Accountant::decide(const std::shared_ptr<const NetworkFacts> &facts, BookingBatch &batch)
{
    if (facts == m_facts && !m_changed)
        return false;
    m_facts = facts;
    m_changed = false;
    const NetworkFacts nothing;
    const NetworkFacts &known = facts ? *facts : nothing;
    for (Tracked *list : { &m_links, &m_gone }) {
        for (TrackedLink &tracked : *list) {
            identifyOne(tracked, known);
            claim(tracked, batch);
        }
    }
    m_counted = countedLinks(known);
    m_chosen = m_counted.empty() ? 0 : m_counted.front();
    m_hasGrace = std::none_of(m_links.begin(), m_links.end(), [this](const TrackedLink &tracked) {
        return isCounted(tracked.link().index) && mayBeOverAnother(tracked.link());
    });
    if (std::exchange(m_first, false))
        settleUnclaimed(batch);
    return true;
}

void Accountant::identifyOne(TrackedLink &tracked, const NetworkFacts &facts)
{
    resume(tracked);
    const ModemFacts *const modem = modemOfInterface(facts, tracked.link().name);
    if (modem && modem->placed) // else it is where it was
        tracked.roaming = modem->roaming;
    // A modem stays the one it was while nobody can say which it is.
    DeviceNote note = identify(tracked.link(), facts);
    if ((!modem || modem->simPending) && isModemKey(tracked.note.key)) {
        note.key = tracked.note.key;
        note.label = tracked.note.label;
    }
    // Nor does a rename make another device of it.
    const bool named = !tracked.note.key.empty() && !isStableKey(tracked.note.key);
    if (named && !isStableKey(note.key))
        note.key = tracked.note.key;
    if (note == tracked.note)
        return;
    tracked.note = std::move(note);
    tracked.noteTold = false;
}

void Accountant::resume(TrackedLink &tracked)
{
    if (tracked.markAsked || !tracked.last())
        return;
    tracked.markAsked = true;
    const auto mark = tracked.wasHere() ? m_recovery.takeSameLink(tracked.link()) : std::nullopt;
    if (!mark)
        return;
    tracked.resume(*mark);
    tracked.note.key = mark->device;
    tracked.note.label = tracked.link().name;
    tracked.roaming = isRoaming(mark->use);
    tracked.mark = mark;
}

void Accountant::claim(TrackedLink &tracked, BookingBatch &batch)
{
    if (!tracked.last() || !isStableKey(tracked.note.key))
        return;
    if (!tracked.gone && isBeside(tracked))
        return;
    std::vector<LinkId> present;
    for (const TrackedLink &other : m_links)
        present.push_back(idOf(other.link()));
    const auto mark = m_recovery.takeEarlierLife(tracked.note.key, idOf(tracked.link()), present);
    if (!mark)
        return;
    tracked.claimAll();
    batch.settled.push_back(mark->id);
}

bool Accountant::isBeside(const TrackedLink &tracked) const
{
    Links links;
    std::vector<int> same;
    for (const TrackedLink &other : m_links) {
        if (other.note.key != tracked.note.key)
            continue;
        links[other.link().index] = other.link();
        same.push_back(other.link().index);
    }
    same = withoutDoubles(links, std::move(same));
    return std::find(same.begin(), same.end(), tracked.link().index) == same.end();
}

void Accountant::settleUnclaimed(BookingBatch &batch)
{
    for (const LinkMark &mark : m_recovery.dropUnstable())
        batch.settled.push_back(mark.id);
}

std::vector<int> Accountant::countedLinks(const NetworkFacts &facts) const
{
    Links links;
    std::vector<int> named;
    for (const TrackedLink &tracked : m_links) {
        const Link &link = tracked.link();
        links[link.index] = link;
        if (isUsed(tracked))
            named.push_back(link.index);
    }
    return m_used.empty() ? uplinks(links, m_routes, facts)
                          : withoutDoubles(links, std::move(named));
}

bool Accountant::isUsed(const TrackedLink &tracked) const
{
    return !m_used.empty() && (tracked.note.key == m_used || tracked.link().name == m_used);
}

bool Accountant::isCounted(int index) const
{
    return std::find(m_counted.begin(), m_counted.end(), index) != m_counted.end();
}

void Accountant::bookAll(std::int64_t nowNs, BookingBatch &batch)
{
    m_anyTimed = {};
    if (TrackedLink *const chosen = find(m_chosen)) // first, so that the shared time is its
        book(*chosen, true, nowNs, batch);
    for (TrackedLink &tracked : m_links) {
        if (tracked.link().index != m_chosen)
            book(tracked, isCounted(tracked.link().index), nowNs, batch);
    }
    for (TrackedLink &tracked : m_gone) {
        if (isUsed(tracked)) // perhaps it came and went since the look before
            tracked.countedNs = nowNs;
        book(tracked, false, nowNs, batch);
    }
    m_lastNs = nowNs;
}

void Accountant::book(TrackedLink &tracked, bool countedNow, std::int64_t nowNs,
                      BookingBatch &batch)
{
    if (countedNow)
        tracked.countedNs = nowNs;
    const std::int64_t graceNs = m_hasGrace ? kGraceNs : 0;
    const bool toBook = tracked.countedNs && nowNs - *tracked.countedNs <= graceNs;
    Amounts amounts;
    bookTime(tracked, countedNow, nowNs, amounts);
    const Amounts recovered = amountsOf(tracked.takeRecovered());
    amounts.add(amountsOf(tracked.takeDelta(toBook || tracked.mark, nowNs)));
    amounts.add(recovered);
    const int use = useOf(tracked);
    if (!amounts.isZero())
        batch.bookings.push_back({ tracked.note.key, use, amounts });
    if (!recovered.isZero())
        batch.reasons.push_back(reasonOf(ReasonKind::Recovered, tracked, recovered));
    if (tracked.fell() && (toBook || tracked.mark) && isNewFall(tracked, nowNs))
        batch.reasons.push_back(reasonOf(ReasonKind::CounterFell, tracked, {}));
    if (!tracked.noteTold && (toBook || !amounts.isZero())) {
        batch.devices.push_back(tracked.note);
        tracked.noteTold = true;
    }
    if (toBook && !tracked.gone)
        putMark(tracked, batch);
    else
        dropMark(tracked, batch);
}

void Accountant::bookTime(TrackedLink &tracked, bool countedNow, std::int64_t nowNs,
                          Amounts &amounts)
{
    const bool up = countedNow && tracked.link().up;
    if (up && tracked.timed && !tracked.sawDown()) {
        // Of whole milliseconds of the clock, so that fractions are neither lost nor invented.
        amounts.timeMs = nowNs / kNsPerMs - m_lastNs / kNsPerMs;
        bool &anyTimed = m_anyTimed[tracked.link().wireless ? 1 : 0];
        if (!std::exchange(anyTimed, true))
            amounts.anyMs = amounts.timeMs;
    }
    tracked.timed = up;
}

void Accountant::putMark(TrackedLink &tracked, BookingBatch &batch)
{
    if (!tracked.last())
        return;
    LinkMark mark { idOf(tracked.link()), tracked.link().name,      tracked.note.key,
                    useOf(tracked),       tracked.last()->download, tracked.last()->upload };
    if (tracked.mark && mark == *tracked.mark)
        return;
    tracked.mark = mark;
    batch.marks.push_back(std::move(mark));
}

void Accountant::dropMark(TrackedLink &tracked, BookingBatch &batch)
{
    if (!tracked.mark)
        return;
    // When the device comes back while nobody counts, its new link has counted for us as well.
    if (tracked.gone && isStableKey(tracked.mark->device))
        m_recovery.add(*tracked.mark);
    else
        batch.settled.push_back(tracked.mark->id);
    tracked.mark.reset();
}

void Accountant::follow(std::int64_t nowNs)
{
    const TrackedLink *const chosen = find(m_chosen);
    if (!chosen || !chosen->last()) {
        m_live.advance(nullptr, nowNs);
        return;
    }
    const LiveLook look { chosen->link(),  chosen->note.key, chosen->roaming,
                          *chosen->last(), chosen->delta(),  chosen->fell() || chosen->sawDown() };
    m_live.advance(&look, nowNs);
}

std::vector<PresentDevice> Accountant::present() const
{
    std::vector<PresentDevice> devices;
    for (const TrackedLink &tracked : m_links) {
        if (!isHardware(tracked.link()) && !isCounted(tracked.link().index))
            continue;
        PresentDevice device;
        device.note = tracked.note;
        device.up = tracked.link().up;
        device.counted = isCounted(tracked.link().index);
        device.chosen = tracked.link().index == m_chosen;
        device.roaming = tracked.roaming;
        const ModemFacts *const modem
            = m_facts ? modemOfInterface(*m_facts, tracked.link().name) : nullptr;
        if (modem && modem->hasStats)
            device.modemFigures = LinkCounters { modem->bearerDownload, modem->bearerUpload };
        devices.push_back(std::move(device));
    }
    return devices;
}

} // namespace velq
