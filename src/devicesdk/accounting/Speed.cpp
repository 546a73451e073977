#include "accounting/Speed.h"

#include <limits>

namespace velq {

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
