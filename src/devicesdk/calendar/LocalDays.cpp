#include "calendar/LocalDays.h"

#include <utility>

namespace velq {

Day LocalDays::dayOf(std::int64_t second)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_span.contains(second)) {
        m_day = m_zone.dayOf(second);
        m_span = { m_zone.firstInstant(m_day), m_zone.firstInstant(m_day + 1) };
    }
    return m_day;
}

void LocalDays::follow()
{
    TimeZone zone = TimeZone::system();
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_zone = std::move(zone);
    m_span = {};
}

} // namespace velq
