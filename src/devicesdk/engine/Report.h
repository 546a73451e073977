#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace velq {

constexpr std::size_t kReportSize = 576;
constexpr std::size_t kEventSize = 8;

/*! The fields of a statistics report. */
struct Report
{
    std::uint64_t download = 0; //!< bytes
    std::uint64_t upload = 0;
    std::uint32_t downloadSpeed = 0; //!< bytes per second
    std::uint32_t uploadSpeed = 0;
    std::int64_t seconds = 0; //!< time connected
    std::uint32_t lastReset = 0; //!< seconds since 1970-01-01 UTC
};

//! Lays \a report out in the \a target's 576 bytes, zero where no field is.
void writeReport(const Report &report, void *target);

//! The data of the statistics event.
[[nodiscard]] std::array<char, kEventSize> eventData(bool connected, int type);

//! Whole seconds, rounded: ticks come a little late, and 9.999 s are ten.
[[nodiscard]] std::int64_t toSeconds(std::uint64_t milliseconds);

//! A time as 32 bits, saturated at both ends.
[[nodiscard]] std::uint32_t toTime32(std::int64_t seconds);

} // namespace velq
