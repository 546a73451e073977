#pragma once
// The device SDK's own ledger, periods and store behind its C functions, with a clock and counters
// that a test moves. Instead of the library: velq.h and the period start.

#include <cstdint>
#include <string>

/*!
 * One SDK in the process, as ever: open() stands for the start of a process, close() and abandon()
 * for its end. The C functions fail in between. Callbacks and the period start are forgotten with
 * it; the clock and the counters go on. One thread.
 */
namespace SimulatedSdk {

//! Opens the store in \a directory and moves the process into the time zone \a zone
//! ("Europe/Berlin"). The connection "wwan0" is up. False when the store cannot be written.
[[nodiscard]] bool open(const std::string &directory, const std::string &zone);
//! The wall clock, in seconds since 1970-01-01 UTC; also before open(). No time passes by it.
void setNow(std::int64_t utcSeconds);
//! Lets bytes flow for some seconds of the connection's time. Up to a minute the clock stands
//! still; beyond, it runs to the last of these seconds.
void flow(std::uint64_t bytesDown, std::uint64_t bytesUp, std::int64_t seconds);
//! Calls the statistics callbacks, on this thread.
void tick();
void commit();
//! A clean end: everything is written.
void close();
//! As if killed: of what was booked after the last commit() the next open() finds the bytes only.
void abandon();

} // namespace SimulatedSdk
