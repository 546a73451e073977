#pragma once

#include "counters/CounterSource.h"

namespace velq {

/*! What flowed between two readings. */
struct CounterDelta
{
    bool restarted = false; //!< the readings cannot be compared; nothing is known, nothing counted
    std::uint64_t download = 0; //!< bytes
    std::uint64_t upload = 0;
};

/*!
 * The difference of two readings. Another link, another generation or a counter that fell is a new
 * start, whose value is the base for what comes. 64-bit counters do not wrap in practice, so a
 * smaller value is never taken for a wrap.
 */
[[nodiscard]] CounterDelta counterDelta(const LinkReading &before, const LinkReading &now);

/*! Bytes per second, saturated to 32 bits; 0 unless \a elapsedNs is above 0. */
[[nodiscard]] std::uint32_t speed(std::uint64_t bytes, std::int64_t elapsedNs);

} // namespace velq
