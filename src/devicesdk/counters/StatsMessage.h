#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

struct nlattr;

namespace velq {

/*! The byte counters of a link. */
struct StatsMessage
{
    int index = 0;
    std::uint64_t download = 0; //!< bytes
    std::uint64_t upload = 0;
};

/*!
 * Reads the first message of \a buffer. Nothing unless it is a whole RTM_NEWSTATS with the byte
 * counters of a link. \a buffer has to be aligned to 4 bytes.
 */
[[nodiscard]] std::optional<StatsMessage> parseStatsMessage(const void *buffer, std::size_t size);

/*! The byte counters in an attribute of 64-bit counters; false when it is too short for them. */
[[nodiscard]] bool readByteCounters(const nlattr *attribute, std::uint64_t &download,
                                    std::uint64_t &upload);

} // namespace velq
