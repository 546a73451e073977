#include "store/Changes.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace velq {

namespace {

constexpr double kMuchBytes = 1 << 20;

// As floating point numbers, which do not overflow.
double bytesOf(const HourAmounts &hours)
{
    double bytes = 0;
    for (const auto &[key, amounts] : hours)
        bytes += std::abs(double(amounts.download)) + std::abs(double(amounts.upload));
    return bytes;
}

} // namespace

bool Changes::hasOthers() const
{
    return !forgotten.empty() || !settled.empty() || !devices.empty() || !reasons.empty()
        || !settings.empty() || keepHoursFrom
        || std::any_of(resets.begin(), resets.end(), [](const auto &at) { return bool(at); });
}

bool Changes::isEmpty() const
{
    return hours.empty() && recent.empty() && marks.empty() && seen.empty() && !hasOthers();
}

bool Changes::isUrgent() const
{
    return hasOthers() || bytesOf(hours) >= kMuchBytes;
}

void Changes::prepend(Changes earlier)
{
    for (std::size_t type = 0; type < resets.size(); ++type) {
        if (!resets[type])
            resets[type] = earlier.resets[type];
    }
    for (const auto &[key, amounts] : hours)
        earlier.hours[key].add(amounts);
    hours.swap(earlier.hours);
    // Of what replaces, the later one stays. What came and went needs to be gone only.
    for (const RecentKey &key : forgotten)
        earlier.recent.erase(key);
    for (const LinkId &id : settled)
        earlier.marks.erase(id);
    for (const auto &[key, row] : recent)
        earlier.forgotten.erase(key);
    for (const auto &[id, mark] : marks)
        earlier.settled.erase(id);
    recent.merge(earlier.recent);
    marks.merge(earlier.marks);
    devices.merge(earlier.devices);
    seen.merge(earlier.seen);
    settings.merge(earlier.settings);
    forgotten.merge(earlier.forgotten);
    settled.merge(earlier.settled);
    reasons.insert(reasons.begin(), std::make_move_iterator(earlier.reasons.begin()),
                   std::make_move_iterator(earlier.reasons.end()));
    if (!keepHoursFrom)
        keepHoursFrom = earlier.keepHoursFrom;
}

} // namespace velq
