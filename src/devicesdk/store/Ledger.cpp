#include "store/Ledger.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <utility>

namespace velq {

namespace {

constexpr const char *kHoursFrom = "hours_from"; // hours before have been thinned out to days
constexpr std::int64_t kMsPerSecond = 1000;
constexpr std::int64_t kLongMs = 60 * kMsPerSecond; // a pause, not a late look
constexpr std::int64_t kDaySeconds = 24 * kHourSeconds;

std::size_t at(int type)
{
    return static_cast<std::size_t>(type);
}

std::int64_t offsetOf(const Moment &moment)
{
    return moment.wallSeconds - moment.bootSeconds;
}

Reason clockReason(const std::vector<Move> &moves)
{
    Amounts moved;
    for (const Move &move : moves)
        moved.add(move.amounts);
    Reason reason;
    reason.kind = ReasonKind::ClockStepped;
    reason.download = moved.download;
    reason.upload = moved.upload;
    reason.seconds = moves.front().to.start - moves.front().from.start;
    return reason;
}

} // namespace

Ledger::Ledger(LedgerOptions options)
    : m_options(std::move(options))
    , m_store(m_options.store)
    , m_recent(m_options.boot, m_options.dayOf)
{
    m_resets.fill(m_options.begunAt);
    m_store.open();
    m_shared = m_store.state() == StoreState::Shared;
    m_marksKnown = m_store.isReadable() || m_shared;
    const std::lock_guard<std::mutex> guard(m_pendingMutex);
    loadLocked();
}

void Ledger::loadLocked()
{
    const std::uint64_t version = m_store.version();
    if (version == m_loadedVersion)
        return;
    m_loadedVersion = version;
    noteSetAsides();
    DaySums days;
    RecentRows recent;
    std::map<std::string, std::string> settings;
    auto resets = m_resets;
    const bool read = m_store.read([&](const BookReader &reader) {
        int code = reader.daySums(days);
        code = code ? code : reader.recent(recent);
        code = code ? code : reader.settings(settings);
        for (int type = 0; type < kConnectTypes; ++type)
            code = code ? code : reader.lastReset(type, resets[at(type)]);
        return code;
    });
    if (!read)
        return; // what is known stays
    if (m_begun != m_store.begun())
        tellNewStore(settings);
    m_days = std::move(days);
    m_resets = resets;
    for (int type = 0; type < kConnectTypes; ++type) {
        if (const auto &pending = m_pending.resets[at(type)]) {
            m_days.reset(type);
            m_resets[at(type)] = *pending;
        }
    }
    for (const auto &[key, amounts] : m_pending.hours)
        m_days.add(key.day, key.use, amounts);
    for (const auto &[key, row] : m_pending.recent)
        recent[key] = row;
    for (const RecentKey &key : m_pending.forgotten)
        recent.erase(key);
    m_recent.load(std::move(recent));
    for (const auto &[name, value] : m_pending.settings)
        settings[name] = value;
    m_settings = std::move(settings);
}

void Ledger::tellNewStore(const std::map<std::string, std::string> &stored)
{
    for (const auto &[name, value] : m_settings) {
        if (name != kHoursFrom && stored.count(name) == 0)
            m_pending.settings.insert({ name, value });
    }
    m_begun = m_store.begun();
    ++m_renewals;
}

void Ledger::noteSetAsides()
{
    for (; m_toldSetAsides < m_store.setAsides(); ++m_toldSetAsides) {
        Reason reason;
        reason.kind = ReasonKind::SetAside;
        reason.at = m_options.store.wallSeconds ? m_options.store.wallSeconds() : 0;
        m_pending.reasons.push_back(std::move(reason));
    }
}

void Ledger::addLocked(const HourKey &key, const Amounts &amounts)
{
    m_pending.hours[key].add(amounts);
    m_days.add(key.day, key.use, amounts);
}

void Ledger::bookAt(std::int64_t second, const Booking &booking, const Moment &moment)
{
    const HourKey key { hourStart(second), m_options.dayOf(second), booking.device, booking.use };
    addLocked(key, booking.amounts);
    m_recent.book(offsetOf(moment), second - offsetOf(moment), key, booking.amounts, m_pending);
}

void Ledger::bookLocked(const Booking &booking, const Moment &moment)
{
    Booking rest = booking;
    // After a pause (sleep) the time goes to the hours in which it passed. Nobody knows when the
    // bytes flowed; they stay at its end.
    const std::int64_t last = hourStart(moment.wallSeconds);
    const std::int64_t beganMs = moment.wallSeconds * kMsPerSecond - booking.amounts.timeMs;
    std::int64_t hour = last;
    if (booking.amounts.timeMs > kLongMs)
        hour = hourStart(std::max<std::int64_t>(0, beganMs / kMsPerSecond));
    for (; hour < last; hour += kHourSeconds) {
        Booking piece = booking;
        const std::int64_t fromMs = std::max(hour * kMsPerSecond, beganMs);
        const std::int64_t ms = (hour + kHourSeconds) * kMsPerSecond - fromMs;
        piece.amounts = { 0, 0, ms, std::min(ms, rest.amounts.anyMs) };
        rest.amounts.subtract(piece.amounts);
        bookAt(fromMs / kMsPerSecond, piece, moment);
    }
    bookAt(moment.wallSeconds, rest, moment);
}

void Ledger::redate(const Moment &moment)
{
    const std::vector<Move> moves = m_recent.date(offsetOf(moment), moment.bootSeconds, m_pending);
    if (moves.empty())
        return;
    for (const Move &move : moves) {
        Amounts taken;
        taken.subtract(move.amounts);
        addLocked(move.from, taken);
        addLocked(move.to, move.amounts);
    }
    Reason reason = clockReason(moves);
    reason.at = moment.wallSeconds;
    m_pending.reasons.push_back(std::move(reason));
}

void Ledger::book(const BookingBatch &batch, const Moment &moment,
                  const std::optional<std::uint64_t> &takeovers)
{
    const std::lock_guard<std::mutex> guard(m_pendingMutex);
    if (m_shared || (takeovers && *takeovers != m_takeovers))
        return;
    redate(moment);
    for (const Booking &booking : batch.bookings) {
        bookLocked(booking, moment);
        m_pending.seen[booking.device] = moment.wallSeconds;
    }
    for (const LinkMark &mark : batch.marks) {
        m_pending.marks[mark.id] = mark;
        m_pending.settled.erase(mark.id);
    }
    for (const LinkId &id : batch.settled) {
        m_pending.marks.erase(id);
        m_pending.settled.insert(id);
    }
    for (const DeviceNote &note : batch.devices)
        m_pending.devices[note.key] = note;
    for (Reason reason : batch.reasons) {
        reason.at = moment.wallSeconds;
        m_pending.reasons.push_back(std::move(reason));
    }
}

void Ledger::seed(const HourAmounts &past)
{
    {
        const std::lock_guard<std::mutex> guard(m_pendingMutex);
        for (const auto &[key, amounts] : past)
            addLocked(key, amounts);
    }
    commit();
}

bool Ledger::isUrgent()
{
    const std::lock_guard<std::mutex> guard(m_pendingMutex);
    return !m_written || m_pending.isUrgent();
}

void Ledger::commit()
{
    const std::lock_guard<std::mutex> guard(m_storeMutex);
    if (!m_closed && !isLate())
        commitLocked();
}

bool Ledger::isLate()
{
    if (m_marksKnown)
        return false;
    m_store.open();
    std::vector<LinkMark> marks;
    m_marksKnown = m_store.read([&](const BookReader &reader) { return reader.marks(marks); });
    // Ours would replace them, and what flowed in between would be lost.
    if (m_store.state() == StoreState::Shared || marks.empty())
        return false;
    const std::lock_guard<std::mutex> guard(m_pendingMutex);
    m_lateMarks = std::move(marks);
    loadLocked();
    return true;
}

void Ledger::commitLocked()
{
    // Taken out, not copied: what is booked meanwhile gathers beside it.
    Changes changes;
    {
        const std::lock_guard<std::mutex> guard(m_pendingMutex);
        std::swap(changes, m_pending);
    }
    bool written = false;
    try {
        written = m_store.commit(changes);
    } catch (...) { // no memory for an error's words; the amounts go back below
    }
    const std::lock_guard<std::mutex> guard(m_pendingMutex);
    const bool wasShared = std::exchange(m_shared, m_store.state() == StoreState::Shared);
    m_written = written;
    if (!written && !m_shared)
        m_pending.prepend(std::move(changes));
    if (wasShared && !m_shared) {
        ++m_takeovers;
        m_marksKnown = m_store.isReadable();
    }
    loadLocked();
}

Amounts Ledger::totals(int type, const DaySpan &span)
{
    const std::lock_guard<std::mutex> guard(m_pendingMutex);
    return m_days.sum(type, span);
}

Amounts Ledger::totalsOfUse(int use, const DaySpan &span)
{
    const std::lock_guard<std::mutex> guard(m_pendingMutex);
    return m_days.sumOfUse(use, span);
}

bool Ledger::reset(int type, const Moment &moment)
{
    const std::lock_guard<std::mutex> storeGuard(m_storeMutex);
    {
        const std::lock_guard<std::mutex> guard(m_pendingMutex);
        if (m_shared || m_closed)
            return false;
        auto &hours = m_pending.hours;
        for (auto it = hours.begin(); it != hours.end();)
            it = typeOfUse(it->first.use) == type ? hours.erase(it) : std::next(it);
        m_recent.reset(type, m_pending);
        m_days.reset(type);
        m_pending.resets[at(type)] = m_resets[at(type)] = moment.wallSeconds;
        Reason reason;
        reason.kind = ReasonKind::Reset;
        reason.at = moment.wallSeconds;
        reason.use = type;
        m_pending.reasons.push_back(std::move(reason));
    }
    commitLocked();
    return true;
}

std::int64_t Ledger::lastReset(int type)
{
    const std::lock_guard<std::mutex> guard(m_pendingMutex);
    return m_resets[at(type)];
}

std::string Ledger::problem()
{
    const std::lock_guard<std::mutex> guard(m_storeMutex);
    return m_store.problem();
}

std::string Ledger::setting(const std::string &name)
{
    const std::lock_guard<std::mutex> guard(m_pendingMutex);
    const auto it = m_settings.find(name);
    return it == m_settings.end() ? std::string() : it->second;
}

bool Ledger::setSetting(const std::string &name, const std::string &value)
{
    const std::lock_guard<std::mutex> guard(m_pendingMutex);
    if (m_shared)
        return false;
    m_settings[name] = m_pending.settings[name] = value;
    return true;
}

void Ledger::thinOut(int days, std::int64_t now)
{
    const std::lock_guard<std::mutex> guard(m_pendingMutex);
    // Yesterday and today may be what a wrong clock says; the use before was under another one.
    const auto used = m_days.latestBefore(m_options.dayOf(now) - 1);
    if (m_shared || !used)
        return;
    constexpr std::int64_t kPatienceDays = 4;
    const std::int64_t latest = std::min(now, (*used + kPatienceDays) * kDaySeconds);
    const std::int64_t from = hourStart(latest - days * kDaySeconds);
    // What is gone stays gone when more is to be kept; after a clock that was ahead, up to now.
    const std::int64_t before = std::min(hoursFrom(), now);
    m_pending.keepHoursFrom = from;
    m_settings[kHoursFrom] = m_pending.settings[kHoursFrom]
        = std::to_string(std::max(from, before));
}

std::int64_t Ledger::hoursFrom() const
{
    const auto it = m_settings.find(kHoursFrom);
    return it == m_settings.end()
        ? 0
        : std::min<std::int64_t>(std::strtoll(it->second.c_str(), nullptr, 10), kLatestSecond);
}

std::string Ledger::backUp(const std::string &path)
{
    commit();
    const std::lock_guard<std::mutex> guard(m_storeMutex);
    return m_store.backUp(path);
}

std::uint64_t Ledger::takeovers()
{
    const std::lock_guard<std::mutex> guard(m_pendingMutex);
    return m_takeovers;
}

int Ledger::renewals()
{
    const std::lock_guard<std::mutex> guard(m_pendingMutex);
    return m_renewals;
}

std::vector<LinkMark> Ledger::takeLateMarks()
{
    const std::lock_guard<std::mutex> guard(m_pendingMutex);
    return std::exchange(m_lateMarks, {});
}

bool Ledger::isShared()
{
    const std::lock_guard<std::mutex> guard(m_pendingMutex);
    return m_shared;
}

void Ledger::close()
{
    const std::lock_guard<std::mutex> guard(m_storeMutex);
    if (m_closed)
        return;
    if (!m_store.isRemoved()) // what somebody has deleted does not come back for a farewell
        commitLocked();
    m_closed = true;
    m_store.close();
}

void Ledger::abandon()
{
    m_store.abandon(); // the only thread of a forked child; the locks may never be free again
}

} // namespace velq
