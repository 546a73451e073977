#pragma once

#include <cstdint>

namespace velq {

/*! Bytes per second, saturated to 32 bits; 0 unless \a elapsedNs is above 0. */
[[nodiscard]] std::uint32_t speed(std::uint64_t bytes, std::int64_t elapsedNs);

} // namespace velq
