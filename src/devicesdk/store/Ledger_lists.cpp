#include "store/Ledger.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>

namespace velq {

namespace {

constexpr std::int64_t kTwoDays = 48 * kHourSeconds;

void addWithin(const HourAmounts &from, const Span &span, HourAmounts &to)
{
    for (const auto &[key, amounts] : from) {
        if (span.contains(key.start))
            to[key].add(amounts);
    }
}

//! Takes out of stored \a rows what a pending reset clears.
template <typename Rows>
void eraseReset(const Changes &pending, Rows &rows)
{
    for (auto it = rows.begin(); it != rows.end();) {
        const auto type = static_cast<std::size_t>(typeOfUse(it->first.use));
        it = pending.resets[type] ? rows.erase(it) : std::next(it);
    }
}

} // namespace

bool Ledger::totalsSince(std::int64_t second, Amounts &amounts)
{
    const std::lock_guard<std::mutex> storeGuard(m_storeMutex);
    constexpr Day kLastDay = std::numeric_limits<Day>::max();
    const Day first = m_options.dayOf(second);
    // Hours that were thinned out count with their whole day.
    bool wholeDay = false;
    {
        const std::lock_guard<std::mutex> guard(m_pendingMutex);
        wholeDay = second < hoursFrom() + kTwoDays;
    }
    Amounts sum;
    if (!wholeDay) {
        // Which hours belong to which day depends on where the computer was.
        HourAmounts after;
        HourAmounts before;
        if (!readHours({ second, second + kTwoDays }, after)
            || !readHours({ second - kTwoDays, second }, before))
            return false;
        for (const auto &[key, found] : after) {
            if (key.day <= first)
                sum.add(found);
        }
        for (const auto &[key, found] : before) {
            if (key.day > first)
                sum.subtract(found);
        }
    }
    const std::lock_guard<std::mutex> guard(m_pendingMutex);
    for (int type = 0; type < kConnectTypes; ++type)
        sum.add(m_days.sum(type, { wholeDay ? first : first + 1, kLastDay }));
    amounts = sum;
    return true;
}

bool Ledger::readHours(const Span &span, HourAmounts &hours)
{
    // Commits wait for the store's lock, which the caller holds: the two halves belong together.
    HourAmounts found;
    if (m_store.isReadable()
        && !m_store.read([&](const BookReader &reader) { return reader.hours(span, found); }))
        return false;
    const std::lock_guard<std::mutex> guard(m_pendingMutex);
    eraseReset(m_pending, found);
    addWithin(m_pending.hours, span, found);
    hours = std::move(found);
    return true;
}

bool Ledger::hours(const Span &span, HourAmounts &hours)
{
    const std::lock_guard<std::mutex> storeGuard(m_storeMutex);
    return readHours(span, hours);
}

bool Ledger::days(const DaySpan &span, DayAmounts &days)
{
    const std::lock_guard<std::mutex> storeGuard(m_storeMutex);
    DayAmounts found;
    if (m_store.isReadable()
        && !m_store.read([&](const BookReader &reader) { return reader.days(span, found); }))
        return false;
    const std::lock_guard<std::mutex> guard(m_pendingMutex);
    eraseReset(m_pending, found);
    for (const auto &[key, amounts] : m_pending.hours) {
        if (key.day >= span.from && key.day < span.to)
            found[{ key.day, key.device, key.use }].add(amounts);
    }
    days = std::move(found);
    return true;
}

bool Ledger::devices(std::vector<StoredDevice> &devices)
{
    commit(); // so that they are all in one place, if that is possible
    const std::lock_guard<std::mutex> storeGuard(m_storeMutex);
    std::vector<StoredDevice> found;
    if (m_store.isReadable()
        && !m_store.read([&](const BookReader &reader) { return reader.devices(found); }))
        return false;
    devices = std::move(found);
    return true;
}

bool Ledger::reasons(int count, std::vector<Reason> &reasons)
{
    const std::lock_guard<std::mutex> storeGuard(m_storeMutex);
    std::vector<Reason> found;
    if (m_store.isReadable()
        && !m_store.read([&](const BookReader &reader) { return reader.reasons(count, found); }))
        return false;
    const std::lock_guard<std::mutex> guard(m_pendingMutex);
    found.insert(found.end(), m_pending.reasons.begin(), m_pending.reasons.end());
    const auto most = static_cast<std::size_t>(std::max(0, count));
    if (found.size() > most)
        found.erase(found.begin(), found.end() - static_cast<std::ptrdiff_t>(most));
    reasons = std::move(found);
    return true;
}

std::vector<LinkMark> Ledger::marks()
{
    const std::lock_guard<std::mutex> storeGuard(m_storeMutex);
    std::vector<LinkMark> marks;
    (void)m_store.read([&](const BookReader &reader) { return reader.marks(marks); });
    return marks;
}

} // namespace velq
