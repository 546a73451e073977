#include "store/Period.h"

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

Date firstDate(Period period, const tm &local)
{
    constexpr int kDaysPerWeek = 7;
    Date date { local.tm_year, local.tm_mon, local.tm_mday };
    if (period == Period::Week)
        date.day -= (local.tm_wday + kDaysPerWeek - 1) % kDaysPerWeek; // tm counts from Sunday
    else if (period == Period::Month || period == Period::Year)
        date.day = 1;
    if (period == Period::Year)
        date.month = 0;
    return date;
}

Date nextDate(Period period, Date date)
{
    constexpr int kDaysPerWeek = 7;
    switch (period) {
    case Period::Day:
        ++date.day;
        break;
    case Period::Week:
        date.day += kDaysPerWeek;
        break;
    case Period::Month:
        ++date.month;
        break;
    case Period::Year:
        ++date.year;
        break;
    }
    return date;
}

} // namespace

Span periodSpan(Period period, std::int64_t now)
{
    tzset(); // localtime_r() alone does not notice that the system's zone has changed
    const Date first = firstDate(period, localTime(now));
    return { firstInstant(first), firstInstant(nextDate(period, first)) };
}

std::int64_t periodStart(Period period, std::int64_t now)
{
    return periodSpan(period, now).from;
}

} // namespace velq
