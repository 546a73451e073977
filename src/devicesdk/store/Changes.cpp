#include "store/Changes.h"

#include <algorithm>
#include <utility>

namespace velq {

bool Changes::isEmpty() const
{
    return hours.empty() && recent.empty() && forgotten.empty() && marks.empty() && settled.empty()
        && devices.empty() && seen.empty() && reasons.empty() && settings.empty() && !keepHoursFrom
        && std::none_of(resets.begin(), resets.end(), [](const auto &at) { return bool(at); });
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
