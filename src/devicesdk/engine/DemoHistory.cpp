#include "engine/DemoHistory.h"

#include <algorithm>
#include <ctime>

namespace velq {

namespace {

constexpr std::int64_t kDay = 24 * kHourSeconds;
constexpr std::int64_t kDays = 400; // the longest year, and a month before it
constexpr int kWakingFrom = 7; // local hours
constexpr int kWakingTo = 23;

std::int64_t scatter(std::int64_t number)
{
    auto mixed = static_cast<std::uint64_t>(number) * 0x9e3779b97f4a7c15U;
    mixed = (mixed ^ (mixed >> 29)) * 0xbf58476d1ce4e5b9U;
    return static_cast<std::int64_t>((mixed ^ (mixed >> 32)) % 1000);
}

int localHour(std::int64_t second)
{
    const auto time = static_cast<time_t>(second);
    tm local {};
    (void)localtime_r(&time, &local);
    return local.tm_hour;
}

//! A quarter of an hour of surfing: some megabytes, most of the time connected.
Amounts quarter(std::int64_t start)
{
    constexpr std::int64_t kMsPerSecond = 1000;
    constexpr std::int64_t kDownloadUnit = 14000; // 14 MB at most
    Amounts amounts;
    amounts.download = 1500000 + scatter(start) * kDownloadUnit;
    amounts.upload = amounts.download / (6 + scatter(start + 1) % 8);
    amounts.timeMs = amounts.anyMs = (450 + scatter(start + 2) % 450) * kMsPerSecond;
    return amounts;
}

} // namespace

std::int64_t demoBegan(std::int64_t now)
{
    return std::max<std::int64_t>(0, hourStart(now) - kDays * kDay);
}

HourAmounts demoHistory(std::int64_t now, const std::function<Day(std::int64_t)> &dayOf)
{
    HourAmounts history;
    for (std::int64_t start = hourStart(now) - kHourSeconds; start > demoBegan(now);
         start -= kHourSeconds) {
        const int hour = localHour(start);
        if (hour >= kWakingFrom && hour < kWakingTo)
            history[{ start, dayOf(start), kDemoDevice, 0 }] = quarter(start);
    }
    return history;
}

} // namespace velq
