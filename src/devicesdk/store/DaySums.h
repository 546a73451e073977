#pragma once

#include "accounting/Booking.h"
#include "calendar/Period.h"

#include <array>
#include <optional>
#include <vector>

namespace velq {

/*!
 * The sums of all devices by day and kind of use, in memory: ten years are 3,653 rows, and every
 * report is a sum over some of them.
 */
class DaySums
{
public:
    void add(Day day, int use, const Amounts &amounts);
    void reset(int type);
    void clear()
    {
        m_rows.clear();
    }
    //! The latest day before \a day of which anything is known.
    [[nodiscard]] std::optional<Day> latestBefore(Day day) const;
    //! The sum of a connect type, at home and abroad.
    [[nodiscard]] Amounts sum(int type, const DaySpan &span) const;
    [[nodiscard]] Amounts sumOfUse(int use, const DaySpan &span) const;

private:
    struct Row
    {
        Day day = 0;
        std::array<Amounts, kUseKinds> amounts {};
    };
    using Rows = std::vector<Row>; // ordered by day

    [[nodiscard]] Rows::const_iterator lowerBound(Day day) const;

    Rows m_rows;
};

} // namespace velq
