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
        download += other.download;
        upload += other.upload;
        timeMs += other.timeMs;
        anyMs += other.anyMs;
    }
    void subtract(const Amounts &other)
    {
        add({ -other.download, -other.upload, -other.timeMs, -other.anyMs });
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
};

} // namespace velq
