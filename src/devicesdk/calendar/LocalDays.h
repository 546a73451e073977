#pragma once

#include "calendar/Period.h"

#include <cstdint>
#include <mutex>

namespace velq {

/*!
 * The local days of this system, for those who ask each second: the latest answer is remembered,
 * and whether the system's zone has changed is looked at by follow() alone. Any thread.
 */
class LocalDays
{
public:
    //! As TimeZone::dayOf() of the zone that was found last.
    [[nodiscard]] Day dayOf(std::int64_t second);
    //! Looks whether the system's zone is another one now.
    void follow();

private:
    std::mutex m_mutex;
    TimeZone m_zone = TimeZone::system();
    Day m_day = 0;
    Span m_span; // of m_day
};

} // namespace velq
