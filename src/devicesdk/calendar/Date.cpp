#include "calendar/Date.h"

#include <cctz/civil_time.h>

namespace velq {

namespace {

constexpr cctz::civil_day kEpoch(1970, 1, 1);

} // namespace

Day dayNumber(const Date &date)
{
    return static_cast<Day>(cctz::civil_day(date.year, date.month, date.day) - kEpoch);
}

Date dateOf(Day day)
{
    const cctz::civil_day date = kEpoch + day;
    return { static_cast<int>(date.year()), date.month(), date.day() };
}

} // namespace velq
