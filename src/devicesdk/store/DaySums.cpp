#include "store/DaySums.h"

#include <algorithm>
#include <iterator>

namespace velq {

DaySums::Rows::const_iterator DaySums::lowerBound(Day day) const
{
    return std::lower_bound(m_rows.begin(), m_rows.end(), day,
                            [](const Row &row, Day wanted) { return row.day < wanted; });
}

void DaySums::add(Day day, int use, const Amounts &amounts)
{
    const auto place = m_rows.begin() + (lowerBound(day) - m_rows.cbegin());
    const auto row
        = place != m_rows.end() && place->day == day ? place : m_rows.insert(place, { day, {} });
    row->amounts[static_cast<std::size_t>(use)].add(amounts);
}

void DaySums::reset(int type)
{
    for (Row &row : m_rows) {
        for (int use = type; use < kUseKinds; use += kConnectTypes)
            row.amounts[static_cast<std::size_t>(use)] = {};
    }
}

std::optional<Day> DaySums::latestBefore(Day day) const
{
    const auto row = lowerBound(day);
    return row == m_rows.begin() ? std::nullopt : std::optional(std::prev(row)->day);
}

Amounts DaySums::sum(int type, const DaySpan &span) const
{
    Amounts sum;
    for (int use = type; use < kUseKinds; use += kConnectTypes)
        sum.add(sumOfUse(use, span));
    return sum;
}

Amounts DaySums::sumOfUse(int use, const DaySpan &span) const
{
    Amounts sum;
    for (auto row = lowerBound(span.from); row != m_rows.end() && row->day < span.to; ++row)
        sum.add(row->amounts[static_cast<std::size_t>(use)]);
    return sum;
}

} // namespace velq
