// Rules and compiled files of time zones: whatever they hold, they are refused or make a zone whose
// days follow each other.

#include "calendar/TimeZone.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <limits>
#include <string>

namespace {

void check(const velq::TimeZone &zone, std::int64_t anywhere)
{
    using Limits = std::numeric_limits<std::int64_t>;
    constexpr std::int64_t kFar = 80'000'000'000'000; // 2.5 million years
    (void)zone.dayOf(Limits::min());
    (void)zone.dayOf(Limits::max());
    for (const std::int64_t instant :
         { anywhere % kFar, anywhere % 8'000'000'000, std::int64_t(0), kFar }) {
        const velq::Day day = zone.dayOf(instant);
        if (zone.firstInstant(day) > instant || zone.firstInstant(day + 1) <= instant)
            std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string bytes(reinterpret_cast<const char *>(data), size);
    std::int64_t anywhere = 0; // the last bytes, which files may have behind their rule
    if (size >= sizeof anywhere)
        std::memcpy(&anywhere, data + size - sizeof anywhere, sizeof anywhere);
    if (const auto zone = velq::TimeZone::ofRule(bytes))
        check(*zone, anywhere);
    if (const auto zone = velq::TimeZone::ofBytes(bytes, "fuzzed"))
        check(*zone, anywhere);
    return 0;
}
