#include "calendar/Period.h"

#include <algorithm>

namespace velq {

namespace {

constexpr int kDaysPerWeek = 7;

//! From Monday; 1970-01-01 was a Thursday.
int weekdayOf(Day day)
{
    constexpr int kEpoch = 3;
    return (day % kDaysPerWeek + kDaysPerWeek + kEpoch) % kDaysPerWeek;
}

//! Always from the chosen day, never from the month before: the 31st stays the 31st.
Day monthBegin(int year, int month, int dayOfMonth)
{
    const Day first = dayNumber({ year, month, 1 });
    const Day next = dayNumber({ year, month + 1, 1 });
    return std::min(first + dayOfMonth, next) - 1;
}

DaySpan monthDays(Day today, int dayOfMonth)
{
    const Date date = dateOf(today);
    const Day begin = monthBegin(date.year, date.month, dayOfMonth);
    if (today < begin)
        return { monthBegin(date.year, date.month - 1, dayOfMonth), begin };
    return { begin, monthBegin(date.year, date.month + 1, dayOfMonth) };
}

} // namespace

bool isValid(const PeriodStart &start)
{
    constexpr int kLongestMonth = 31;
    return start.weekday >= 0 && start.weekday < kDaysPerWeek && start.dayOfMonth >= 1
        && start.dayOfMonth <= kLongestMonth;
}

DaySpan periodDays(Period period, Day today, const PeriodStart &start)
{
    switch (period) {
    case Period::Day:
        break;
    case Period::Week: {
        const int passed = (weekdayOf(today) + kDaysPerWeek - start.weekday) % kDaysPerWeek;
        return { today - passed, today - passed + kDaysPerWeek };
    }
    case Period::Month:
        return monthDays(today, start.dayOfMonth);
    case Period::Year: {
        const int year = dateOf(today).year;
        return { dayNumber({ year, 1, 1 }), dayNumber({ year + 1, 1, 1 }) };
    }
    }
    return { today, today + 1 };
}

Span periodSpan(Period period, std::int64_t now, const TimeZone &zone, const PeriodStart &start)
{
    const DaySpan days = periodDays(period, zone.dayOf(now), start);
    return { zone.firstInstant(days.from), zone.firstInstant(days.to) };
}

} // namespace velq
