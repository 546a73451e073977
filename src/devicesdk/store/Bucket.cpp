#include "store/Bucket.h"

#include <algorithm>

namespace velq {

void Totals::add(const Totals &other)
{
    download += other.download;
    upload += other.upload;
    timeMs += other.timeMs;
}

bool Totals::isZero() const
{
    return download == 0 && upload == 0 && timeMs == 0;
}

std::int64_t bucketStart(std::int64_t second)
{
    const std::int64_t offset = second % kBucketSeconds;
    return second - (offset < 0 ? offset + kBucketSeconds : offset);
}

Totals sum(const Buckets &buckets, int type, const Span &span)
{
    Totals totals;
    const auto end = buckets.lower_bound({ span.to, 0 });
    for (auto it = buckets.lower_bound({ span.from, 0 }); it != end && it != buckets.end(); ++it) {
        if (it->first.second == type)
            totals.add(it->second);
    }
    return totals;
}

bool Changes::isEmpty() const
{
    return buckets.empty()
        && std::none_of(resets.begin(), resets.end(), [](const auto &at) { return bool(at); });
}

} // namespace velq
