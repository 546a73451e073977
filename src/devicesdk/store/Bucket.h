#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <utility>

namespace velq {

//! Length of a bucket. Every time zone in use has its midnight on such a border.
constexpr std::int64_t kBucketSeconds = 900;
constexpr int kConnectTypes = 2; // 0: everything that is not Wi-Fi, 1: Wi-Fi

/*! Amounts of a span. */
struct Totals
{
    std::uint64_t download = 0; //!< bytes
    std::uint64_t upload = 0;
    std::uint64_t timeMs = 0; //!< time connected

    void add(const Totals &other);
    [[nodiscard]] bool isZero() const;
};

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

//! The start of the bucket that holds \a second.
[[nodiscard]] std::int64_t bucketStart(std::int64_t second);

using BucketKey = std::pair<std::int64_t, int>; //!< start of the bucket, connect type
using Buckets = std::map<BucketKey, Totals>;

//! The sum of the buckets of \a type that start in \a span.
[[nodiscard]] Totals sum(const Buckets &buckets, int type, const Span &span);

/*! What is not in the store yet: resets, applied first, and amounts to be added. */
struct Changes
{
    std::array<std::optional<std::int64_t>, kConnectTypes> resets; //!< when, per connect type
    Buckets buckets;

    [[nodiscard]] bool isEmpty() const;
};

} // namespace velq
