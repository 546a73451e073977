#pragma once

#include "calendar/Date.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <vector>

/*!
 * When dates begin in a zone as the C library sees it: an oracle that has nothing in common with
 * the calendar. It asks for the offset every few hours of a span of time, finds the second of each
 * change, and takes for the begin of a day the first instant whose local date is that day or a
 * later one.
 */
class CLibraryZone
{
public:
    //! \a value is what TZ may hold. Changes the process' zone.
    CLibraryZone(const char *value, std::int64_t from, std::int64_t to)
    {
        use(value);
        m_stretches.push_back({ from, offsetAt(from) });
        for (std::int64_t at = from; at < to; at += kStep)
            findChange(at, at + kStep);
    }

    static void use(const char *value)
    {
        setenv("TZ", value, 1);
        tzset();
    }

    //! The days have to be asked for in order.
    [[nodiscard]] std::int64_t firstInstant(velq::Day day)
    {
        const std::int64_t midnight = day * std::int64_t(86400);
        while (m_at + 1 < m_stretches.size()
               && midnight - m_stretches[m_at].offset >= m_stretches[m_at + 1].begin)
            ++m_at;
        const Stretch &stretch = m_stretches[m_at];
        return std::max(stretch.begin, midnight - stretch.offset);
    }

    //! The instants at which the offset changes, and before all the begin of the span.
    [[nodiscard]] std::vector<std::int64_t> changes() const
    {
        std::vector<std::int64_t> instants;
        for (const Stretch &stretch : m_stretches)
            instants.push_back(stretch.begin);
        return instants;
    }

private:
    struct Stretch
    {
        std::int64_t begin;
        std::int64_t offset; // seconds east of UTC
    };

    // No zone has changed its clocks there and back again within so short a time.
    static constexpr std::int64_t kStep = 6 * 3600;

    [[nodiscard]] static std::int64_t offsetAt(std::int64_t instant)
    {
        const auto time = static_cast<time_t>(instant);
        tm local {};
        (void)localtime_r(&time, &local);
        return local.tm_gmtoff;
    }

    void findChange(std::int64_t before, std::int64_t after)
    {
        if (offsetAt(after) == m_stretches.back().offset)
            return;
        while (after - before > 1) {
            const std::int64_t middle = before + (after - before) / 2;
            (offsetAt(middle) == m_stretches.back().offset ? before : after) = middle;
        }
        m_stretches.push_back({ after, offsetAt(after) });
    }

    std::vector<Stretch> m_stretches;
    std::size_t m_at = 0;
};
