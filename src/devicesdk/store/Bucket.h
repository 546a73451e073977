#pragma once

#include <cstdint>

namespace velq {

/*! A span of wall-clock time, in seconds since 1970-01-01 UTC, without its end. */
struct Span
{
    std::int64_t from = 0;
    std::int64_t to = 0;

    [[nodiscard]] bool contains(std::int64_t second) const
    {
        return second >= from && second < to;
    }
};

} // namespace velq
