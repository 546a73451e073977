#include "calendar/Date.h"

namespace velq {

namespace {

constexpr std::int64_t kMonths = 12;
constexpr std::int64_t kDaysPerFourCenturies = 146097;

//! Rounds down, also below zero; \a divisor is above it.
constexpr std::int64_t quotient(std::int64_t dividend, std::int64_t divisor)
{
    const std::int64_t rest = dividend % divisor;
    return (dividend - rest) / divisor - (rest < 0 ? 1 : 0);
}

//! Days before the first of a month that is counted from the March of the year 0.
constexpr std::int64_t daysBefore(std::int64_t month)
{
    const std::int64_t year = quotient(month, kMonths);
    const std::int64_t leapDays = quotient(year, 4) - quotient(year, 100) + quotient(year, 400);
    // From March on each five months have 153 days, in the order 31, 30, 31, 30, 31.
    return year * 365 + leapDays + quotient((month - year * kMonths) * 153 + 2, 5);
}

constexpr std::int64_t monthOf(const Date &date)
{
    return date.year * kMonths + date.month - 3;
}

constexpr std::int64_t kEpoch = daysBefore(monthOf({ 1970, 1, 1 }));

} // namespace

Day dayNumber(const Date &date)
{
    return static_cast<Day>(daysBefore(monthOf(date)) + date.day - 1 - kEpoch);
}

Date dateOf(Day day)
{
    const std::int64_t days = day + kEpoch;
    std::int64_t month = quotient(days * 400 * kMonths, kDaysPerFourCenturies); // or a neighbour
    while (daysBefore(month) > days)
        --month;
    while (daysBefore(month + 1) <= days)
        ++month;
    const std::int64_t fromJanuary = month + 2;
    const std::int64_t year = quotient(fromJanuary, kMonths);
    return { static_cast<int>(year), static_cast<int>(fromJanuary - year * kMonths + 1),
             static_cast<int>(days - daysBefore(month) + 1) };
}

} // namespace velq
