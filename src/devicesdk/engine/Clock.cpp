#include "engine/Clock.h"

#include <ctime>

namespace velq {

namespace {

std::int64_t bootTime()
{
    timespec now {};
    (void)clock_gettime(CLOCK_BOOTTIME, &now);
    constexpr std::int64_t kNsPerSecond = 1000000000;
    return std::int64_t(now.tv_sec) * kNsPerSecond + now.tv_nsec;
}

std::int64_t wallTime()
{
    return std::time(nullptr);
}

} // namespace

Clock Clock::system()
{
    return { bootTime, wallTime };
}

} // namespace velq
