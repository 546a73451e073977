#include "counters/CounterDelta.h"

#include <limits>

namespace velq {

CounterDelta counterDelta(const LinkReading &before, const LinkReading &now)
{
    CounterDelta delta;
    delta.restarted = now.index != before.index || now.generation != before.generation
        || now.download < before.download || now.upload < before.upload;
    if (delta.restarted)
        return delta;
    delta.download = now.download - before.download;
    delta.upload = now.upload - before.upload;
    return delta;
}

std::uint32_t speed(std::uint64_t bytes, std::int64_t elapsedNs)
{
    if (elapsedNs <= 0)
        return 0;
    constexpr auto kMax = std::numeric_limits<std::uint32_t>::max();
    constexpr long double kNsPerSecond = 1e9L;
    const long double perSecond
        = static_cast<long double>(bytes) * kNsPerSecond / static_cast<long double>(elapsedNs);
    if (perSecond >= static_cast<long double>(kMax))
        return kMax;
    return static_cast<std::uint32_t>(perSecond);
}

} // namespace velq
