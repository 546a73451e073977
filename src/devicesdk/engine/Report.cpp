#include "engine/Report.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace velq {

namespace {

// Byte by byte, so that the layout is little-endian on every machine.
template <typename T>
void put(char *bytes, std::size_t offset, T value)
{
    constexpr unsigned kByteBits = 8;
    auto rest = static_cast<std::uint64_t>(value);
    for (std::size_t i = 0; i < sizeof value; ++i, rest >>= kByteBits)
        bytes[offset + i] = static_cast<char>(rest & 0xff);
}

} // namespace

void writeReport(const Report &report, void *target)
{
    std::array<char, kReportSize> bytes {};
    put(bytes.data(), 524, report.download);
    put(bytes.data(), 532, report.upload);
    put(bytes.data(), 540, report.downloadSpeed);
    put(bytes.data(), 544, report.uploadSpeed);
    put(bytes.data(), 556, report.seconds);
    put(bytes.data(), 568, report.lastReset);
    std::memcpy(target, bytes.data(), bytes.size());
}

std::array<char, kEventSize> eventData(bool connected, int type)
{
    std::array<char, kEventSize> bytes {};
    bytes[0] = connected ? 1 : 0;
    put(bytes.data(), 4, static_cast<std::uint32_t>(type));
    return bytes;
}

std::int64_t toSeconds(std::uint64_t milliseconds)
{
    constexpr std::uint64_t kMsPerSecond = 1000;
    const std::uint64_t carry = milliseconds % kMsPerSecond >= kMsPerSecond / 2 ? 1 : 0;
    return static_cast<std::int64_t>(milliseconds / kMsPerSecond + carry);
}

std::uint32_t toTime32(std::int64_t seconds)
{
    constexpr std::int64_t kMax = std::numeric_limits<std::uint32_t>::max();
    return static_cast<std::uint32_t>(std::clamp<std::int64_t>(seconds, 0, kMax));
}

} // namespace velq
