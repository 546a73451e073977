#include "store/RecentBook.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <utility>

namespace velq {

namespace {

constexpr std::int64_t kStepSeconds = 60; // less is drift or a correction that no bucket notices
constexpr std::int64_t kSettledSeconds = 3 * 24 * kHourSeconds;
constexpr std::int64_t kForgottenSeconds = 31 * 24 * kHourSeconds; // a computer may run for years
constexpr std::int64_t kPatienceSeconds = 24 * kHourSeconds; // until a clock counts as set

bool isStep(std::int64_t offset, std::int64_t other)
{
    return std::llabs(offset - other) > kStepSeconds;
}

//! The middle of what was booked, by the boot clock: it goes to one hour as a whole.
std::int64_t middle(const RecentKey &key, const RecentRow &row)
{
    const std::int64_t began = row.bootSeconds + key.offset;
    const std::int64_t left = key.home.start + kHourSeconds - 1 - began;
    const std::int64_t lasted = std::min(row.amounts.timeMs / 1000, left);
    return row.bootSeconds + std::max<std::int64_t>(0, lasted) / 2;
}

} // namespace

RecentBook::RecentBook(std::string boot, DayOf dayOf)
    : m_boot(std::move(boot))
    , m_dayOf(std::move(dayOf))
{
}

void RecentBook::load(RecentRows rows)
{
    m_rows = std::move(rows);
    m_offset.reset(); // the clock may have stepped since these were stored
    m_firstSeconds.reset();
    m_hasEarlier = std::any_of(m_rows.begin(), m_rows.end(),
                               [this](const auto &row) { return row.first.boot != m_boot; });
}

void RecentBook::book(std::int64_t offset, std::int64_t bootSeconds, const HourKey &home,
                      const Amounts &amounts, Changes &changes)
{
    // Small corrections of the clock do not begin a new row: the first offset stands for them.
    if (!m_offset || isStep(offset, *m_offset))
        m_offset = offset;
    const RecentKey key { m_boot, *m_offset, home };
    const auto [it, isNew] = m_rows.try_emplace(key);
    if (isNew)
        it->second = { bootSeconds, home.start, home.day, {} };
    it->second.amounts.add(amounts);
    changes.recent[key] = it->second;
    if (isNew)
        forgetOld(bootSeconds, changes);
}

void RecentBook::forget(RecentRows::iterator &row, Changes &changes)
{
    changes.recent.erase(row->first);
    changes.forgotten.insert(row->first);
    row = m_rows.erase(row);
}

void RecentBook::forgetOld(std::int64_t bootSeconds, Changes &changes)
{
    for (auto it = m_rows.begin(); it != m_rows.end();) {
        const auto &[key, row] = *it;
        if (key.boot == m_boot && bootSeconds - row.bootSeconds > kForgottenSeconds)
            forget(it, changes);
        else
            ++it;
    }
}

bool RecentBook::isDue(const RecentKey &key, const RecentRow &row, std::int64_t offset,
                       std::int64_t bootSeconds) const
{
    if (key.boot != m_boot)
        return false;
    const bool inFuture = row.start > bootSeconds + offset;
    return inFuture || bootSeconds - row.bootSeconds <= kSettledSeconds;
}

void RecentBook::place(const RecentKey &key, RecentRow &row, std::int64_t start, Day day,
                       std::vector<Move> &moves, Changes &changes)
{
    if (row.start == start && row.day == day)
        return;
    Move move { key.home, key.home, row.amounts };
    move.from.start = row.start;
    move.from.day = row.day;
    move.to.start = row.start = start;
    move.to.day = row.day = day;
    moves.push_back(std::move(move));
    changes.recent[key] = row;
}

std::vector<Move> RecentBook::date(std::int64_t offset, std::int64_t bootSeconds, Changes &changes)
{
    std::vector<Move> moves;
    if (!m_firstSeconds)
        m_firstSeconds = bootSeconds;
    if (!m_offset || isStep(offset, *m_offset)) {
        for (auto &[key, row] : m_rows) {
            if (!isDue(key, row, offset, bootSeconds))
                continue;
            const std::int64_t second = middle(key, row) + offset;
            if (isStep(offset, key.offset))
                place(key, row, hourStart(second), m_dayOf(second), moves, changes);
            else
                place(key, row, key.home.start, key.home.day, moves, changes);
        }
        m_offset = offset;
    }
    if (m_hasEarlier)
        settleEarlier(bootSeconds + offset, bootSeconds, moves, changes);
    return moves;
}

void RecentBook::settleEarlier(std::int64_t now, std::int64_t bootSeconds, std::vector<Move> &moves,
                               Changes &changes)
{
    const bool trusted = bootSeconds - *m_firstSeconds >= kPatienceSeconds;
    m_hasEarlier = false;
    for (auto it = m_rows.begin(); it != m_rows.end();) {
        auto &[key, row] = *it;
        if (key.boot == m_boot) {
            ++it;
            continue;
        }
        const bool inFuture = row.start > now;
        if (inFuture && !trusted) {
            m_hasEarlier = true;
            ++it;
            continue;
        }
        if (inFuture)
            place(key, row, hourStart(now), m_dayOf(now), moves, changes);
        forget(it, changes);
    }
}

void RecentBook::reset(int type, Changes &changes)
{
    for (auto it = m_rows.begin(); it != m_rows.end();) {
        if (typeOfUse(it->first.home.use) != type) {
            ++it;
            continue;
        }
        forget(it, changes);
    }
}

} // namespace velq
