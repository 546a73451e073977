#include "store/Period.h"

#include <algorithm>
#include <ctime>

namespace velq {

namespace {

struct Date
{
    int year = 0; // since 1900, as in tm
    int month = 0; // 0 to 11
    int day = 0; // 1 to 31; beyond, it runs on into the neighbouring months
};

tm localTime(std::int64_t second)
{
    const auto time = static_cast<time_t>(second);
    tm local {};
    (void)localtime_r(&time, &local); // fails for years beyond int only; then the epoch's date
    return local;
}

std::int64_t dateNumber(int year, int month, int day)
{
    return (std::int64_t(year) * 16 + month) * 32 + day; // ordered as dates are
}

std::int64_t localDate(std::int64_t second)
{
    const tm local = localTime(second);
    return dateNumber(local.tm_year, local.tm_mon, local.tm_mday);
}

//! The calendar's own date for one whose day or month runs over.
std::int64_t normalised(const Date &date)
{
    tm parts {};
    parts.tm_year = date.year;
    parts.tm_mon = date.month;
    parts.tm_mday = date.day;
    const time_t noon = timegm(&parts); // UTC has no gaps, so only the calendar counts
    (void)gmtime_r(&noon, &parts);
    return dateNumber(parts.tm_year, parts.tm_mon, parts.tm_mday);
}

std::int64_t firstInstant(const Date &date)
{
    tm parts {};
    parts.tm_year = date.year;
    parts.tm_mon = date.month;
    parts.tm_mday = date.day;
    parts.tm_isdst = -1;
    std::int64_t instant = mktime(&parts);
    const std::int64_t wanted = normalised(date);
    // mktime() may answer either side of a skipped midnight and either of two midnights. The
    // longest known change is a whole day (a country that crossed the date line).
    constexpr int kSteps = int(26 * std::int64_t(3600) / kBucketSeconds);
    for (int i = 0; i < kSteps && localDate(instant - kBucketSeconds) >= wanted; ++i)
        instant -= kBucketSeconds;
    for (int i = 0; i < kSteps && localDate(instant) < wanted; ++i)
        instant += kBucketSeconds;
    return instant;
}

int daysInMonth(int year, int month)
{
    tm parts {};
    parts.tm_year = year;
    parts.tm_mon = month + 1;
    const time_t lastDay = timegm(&parts); // the next month's day 0
    (void)gmtime_r(&lastDay, &parts);
    return parts.tm_mday;
}

//! Always from the chosen day, never from the month before: the 31st stays the 31st.
Date monthBegin(int year, int month, int dayOfMonth)
{
    return { year, month, std::min(dayOfMonth, daysInMonth(year, month)) };
}

Date monthBegin(const tm &local, int dayOfMonth)
{
    const Date date = monthBegin(local.tm_year, local.tm_mon, dayOfMonth);
    return local.tm_mday < date.day ? monthBegin(local.tm_year, local.tm_mon - 1, dayOfMonth)
                                    : date;
}

constexpr int kDaysPerWeek = 7;

Date firstDate(Period period, const tm &local, const PeriodStart &start)
{
    switch (period) {
    case Period::Day:
        break;
    case Period::Week: {
        const int weekday = (local.tm_wday + kDaysPerWeek - 1) % kDaysPerWeek; // tm: from Sunday
        const int passed = (weekday + kDaysPerWeek - start.weekday) % kDaysPerWeek;
        return { local.tm_year, local.tm_mon, local.tm_mday - passed };
    }
    case Period::Month:
        return monthBegin(local, start.dayOfMonth);
    case Period::Year:
        return { local.tm_year, 0, 1 };
    }
    return { local.tm_year, local.tm_mon, local.tm_mday };
}

Date nextDate(Period period, Date date, const PeriodStart &start)
{
    switch (period) {
    case Period::Day:
        ++date.day;
        break;
    case Period::Week:
        date.day += kDaysPerWeek;
        break;
    case Period::Month:
        return monthBegin(date.year, date.month + 1, start.dayOfMonth);
    case Period::Year:
        ++date.year;
        break;
    }
    return date;
}

} // namespace

bool isValid(const PeriodStart &start)
{
    constexpr int kLongestMonth = 31;
    return start.weekday >= 0 && start.weekday < kDaysPerWeek && start.dayOfMonth >= 1
        && start.dayOfMonth <= kLongestMonth;
}

Span periodSpan(Period period, std::int64_t now, const PeriodStart &start)
{
    tzset(); // localtime_r() alone does not notice that the system's zone has changed
    const Date first = firstDate(period, localTime(now), start);
    return { firstInstant(first), firstInstant(nextDate(period, first, start)) };
}

} // namespace velq
