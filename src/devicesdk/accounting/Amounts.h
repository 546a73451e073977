#pragma once

#include <cstdint>

namespace velq {

/*! Amounts of a span. Signed, because books also take amounts back. */
struct Amounts
{
    std::int64_t download = 0; //!< bytes
    std::int64_t upload = 0;
    std::int64_t timeMs = 0; //!< time connected, the sum over the devices
    std::int64_t anyMs = 0; //!< time in which any device of the connect type was connected

    void add(const Amounts &other)
    {
        addTo(download, other.download);
        addTo(upload, other.upload);
        addTo(timeMs, other.timeMs);
        addTo(anyMs, other.anyMs);
    }
    void subtract(const Amounts &other)
    {
        subtractFrom(download, other.download);
        subtractFrom(upload, other.upload);
        subtractFrom(timeMs, other.timeMs);
        subtractFrom(anyMs, other.anyMs);
    }
    [[nodiscard]] bool isZero() const
    {
        return download == 0 && upload == 0 && timeMs == 0 && anyMs == 0;
    }
    [[nodiscard]] bool operator==(const Amounts &other) const
    {
        return download == other.download && upload == other.upload && timeMs == other.timeMs
            && anyMs == other.anyMs;
    }

private:
    // No traffic is that large, but what an operator or a store says may be: it stays at the limit.
    static void addTo(std::int64_t &sum, std::int64_t amount)
    {
        if (__builtin_add_overflow(sum, amount, &sum))
            sum = amount > 0 ? INT64_MAX : INT64_MIN;
    }
    static void subtractFrom(std::int64_t &sum, std::int64_t amount)
    {
        if (__builtin_sub_overflow(sum, amount, &sum))
            sum = amount < 0 ? INT64_MAX : INT64_MIN;
    }
};

} // namespace velq
