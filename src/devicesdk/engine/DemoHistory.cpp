#include "engine/DemoHistory.h"

#include <algorithm>
#include <ctime>

namespace velq {

namespace {

constexpr std::int64_t kHour = 3600;
constexpr std::int64_t kDay = 24 * kHour;
constexpr std::int64_t kDays = 400; // the longest year, and a month before it
constexpr int kWakingFrom = 7; // local hours
constexpr int kWakingTo = 23;

std::uint64_t scatter(std::int64_t number)
{
    auto mixed = static_cast<std::uint64_t>(number) * 0x9e3779b97f4a7c15U;
    mixed = (mixed ^ (mixed >> 29)) * 0xbf58476d1ce4e5b9U;
    return (mixed ^ (mixed >> 32)) % 1000;
}

int localHour(std::int64_t second)
{
    const auto time = static_cast<time_t>(second);
    tm local {};
    (void)localtime_r(&time, &local);
    return local.tm_hour;
}

//! A quarter of an hour of surfing: some megabytes, most of the time connected.
Totals quarter(std::int64_t start)
{
    constexpr std::uint64_t kMsPerSecond = 1000;
    constexpr std::uint64_t kDownloadUnit = 14000; // 14 MB at most
    Totals totals;
    totals.download = 1500000 + scatter(start) * kDownloadUnit;
    totals.upload = totals.download / (6 + scatter(start + 1) % 8);
    totals.timeMs = (std::uint64_t(kBucketSeconds) / 2 + scatter(start + 2) % 450) * kMsPerSecond;
    return totals;
}

} // namespace

Changes demoHistory(std::int64_t now)
{
    Changes changes;
    const std::int64_t last = bucketStart(now);
    // One quarter of each waking hour: enough for every report, and quick to make.
    for (std::int64_t start = last - kBucketSeconds; start > last - kDays * kDay; start -= kHour) {
        const int hour = localHour(start);
        if (start >= 0 && hour >= kWakingFrom && hour < kWakingTo)
            changes.buckets[{ start, 0 }] = quarter(start);
    }
    const std::int64_t begun = std::max<std::int64_t>(0, last - kDays * kDay);
    changes.resets.fill(begun);
    return changes;
}

} // namespace velq
