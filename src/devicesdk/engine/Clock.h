#pragma once

#include <cstdint>
#include <functional>

namespace velq {

/*! The two clocks: one that never steps and runs through sleep, and the calendar's. */
struct Clock
{
    std::function<std::int64_t()> bootNs; //!< nanoseconds since the system started
    std::function<std::int64_t()> wallSeconds; //!< seconds since 1970-01-01 UTC

    [[nodiscard]] static Clock system();
};

} // namespace velq
