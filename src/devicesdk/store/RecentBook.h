#pragma once

#include "store/Changes.h"

#include <functional>
#include <string>
#include <vector>

namespace velq {

/*! Amounts that go from one row of the books to another. */
struct Move
{
    HourKey from;
    HourKey to;
    Amounts amounts;
};

/*!
 * What was booked since the system started, so that a step of the wall clock can date it anew: the
 * boot clock knows when it was, and the newest wall clock is taken to be right. A clock that steps
 * away and back thus leaves no trace. What is older than three days stays where it is, unless that
 * is in the future now; what is older than a month is forgotten.
 */
class RecentBook
{
public:
    using DayOf = std::function<Day(std::int64_t second)>;

    RecentBook(std::string boot, DayOf dayOf);

    //! Takes over what is stored, also of earlier boots.
    void load(RecentRows rows);
    //! Notes \a amounts that were booked under \a home; the changed row goes to \a changes.
    void book(std::int64_t offset, std::int64_t bootSeconds, const HourKey &home,
              const Amounts &amounts, Changes &changes);
    /*!
     * What has to move now that the offset is \a offset. Cheap while there is no step. The moved
     * rows go to \a changes, but not the moves.
     */
    [[nodiscard]] std::vector<Move> date(std::int64_t offset, std::int64_t bootSeconds,
                                         Changes &changes);
    //! Forgets what was booked for \a type.
    void reset(int type, Changes &changes);

private:
    //! Lets \a row, which becomes the next one, not move any more.
    void forget(RecentRows::iterator &row, Changes &changes);
    //! What is so old that no clock has been wrong since then.
    void forgetOld(std::int64_t bootSeconds, Changes &changes);
    [[nodiscard]] bool isDue(const RecentKey &key, const RecentRow &row, std::int64_t offset,
                             std::int64_t bootSeconds) const;
    void place(const RecentKey &key, RecentRow &row, std::int64_t start, Day day,
               std::vector<Move> &moves, Changes &changes);
    //! Rows of earlier boots: their boot clock is gone, but they cannot be in the future.
    void settleEarlier(std::int64_t now, std::int64_t bootSeconds, std::vector<Move> &moves,
                       Changes &changes);

    const std::string m_boot;
    const DayOf m_dayOf;
    RecentRows m_rows;
    std::optional<std::int64_t> m_offset; // of the latest look at the clock
    std::optional<std::int64_t> m_firstSeconds; // of the boot clock, since these rows are loaded
    bool m_hasEarlier = false;
};

} // namespace velq
