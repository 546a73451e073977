#pragma once

#include "store/Bucket.h"

namespace velq {

enum class Period { Day, Week, Month, Year };

/*! Where weeks and months begin. */
struct PeriodStart
{
    int weekday = 0; //!< 0 (Monday) to 6 (Sunday)
    int dayOfMonth = 1; //!< 1 to 31; in a shorter month its last day
};

[[nodiscard]] bool isValid(const PeriodStart &start);

/*!
 * The period that holds \a now, in local time: from its first instant to that of the next one.
 * \a start is for weeks and months; days and years are the calendar's. Where a change of the clocks
 * skips midnight, the day begins with its first instant that exists; where midnight comes twice,
 * with the first one.
 */
[[nodiscard]] Span periodSpan(Period period, std::int64_t now, const PeriodStart &start = {});

} // namespace velq
