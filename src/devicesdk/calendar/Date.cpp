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
    // cctz counts on year by year, so it begins as near as possible.
    constexpr std::int64_t kYears = 400;
    constexpr std::int64_t kDaysOfThem = 146097;
    const cctz::civil_day near(kEpoch.year() + day * kYears / kDaysOfThem, 1, 1);
    const cctz::civil_day date = near + (day - (near - kEpoch));
    return { static_cast<int>(date.year()), date.month(), date.day() };
}

} // namespace velq
