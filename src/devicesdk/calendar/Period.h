#pragma once

#include "calendar/Date.h"
#include "calendar/TimeZone.h"
#include "store/Bucket.h"

namespace velq {

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wshadow" // GCC takes Period::Day for a second Day
enum class Period { Day, Week, Month, Year };
#pragma GCC diagnostic pop

/*! Where weeks and months begin. Aligned so that every compiler has it atomic without a library. */
struct alignas(2 * sizeof(int)) PeriodStart
{
    int weekday = 0; //!< 0 (Monday) to 6 (Sunday)
    int dayOfMonth = 1; //!< 1 to 31; in a shorter month its last day
};

[[nodiscard]] bool isValid(const PeriodStart &start);

/*! Some days, without the last one. */
struct DaySpan
{
    Day from = 0;
    Day to = 0;
};

//! The period that holds \a today. \a start is for weeks and months; days and years do not move.
[[nodiscard]] DaySpan periodDays(Period period, Day today, const PeriodStart &start = {});

/*!
 * The period that holds \a now (seconds since 1970 UTC) in \a zone: from its first instant to that
 * of the next one. Periods of one kind follow each other without gap or overlap.
 */
[[nodiscard]] Span periodSpan(Period period, std::int64_t now, const TimeZone &zone,
                              const PeriodStart &start = {});

} // namespace velq
