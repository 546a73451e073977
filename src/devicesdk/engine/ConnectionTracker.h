#pragma once

#include "counters/CounterSource.h"
#include "store/Bucket.h"

#include <optional>
#include <string>

namespace velq {

/*! The figures of the connection that is up. */
struct LiveFigures
{
    bool connected = false;
    int type = 0; //!< connect type; the latest one while nothing is connected
    std::string interface; //!< the counted link, up or not; empty without one
    std::uint64_t firstDownload = 0; //!< the link's counters when these figures began
    std::uint64_t firstUpload = 0;
    std::uint64_t lastDownload = 0; //!< at the latest reading
    std::uint64_t lastUpload = 0;
    std::uint32_t downloadSpeed = 0; //!< bytes per second
    std::uint32_t uploadSpeed = 0;
    std::int64_t timeMs = 0; //!< since these figures began

    [[nodiscard]] std::uint64_t download() const
    {
        return lastDownload - firstDownload;
    }
    [[nodiscard]] std::uint64_t upload() const
    {
        return lastUpload - firstUpload;
    }
};

/*! What one reading adds to the books. */
struct Booking
{
    int type = 0;
    Totals totals;
};

/*!
 * Turns readings into live figures and bookings. Within one generation of a link every difference
 * is real traffic and is booked, also that of the reading that finds the link down. A new link, a
 * new generation or a counter that fell is a new start: its first value is only a base.
 */
class ConnectionTracker
{
public:
    //! Takes the reading of the counted link at \a nowNs of the boot clock.
    [[nodiscard]] Booking advance(const ReadResult &reading, std::int64_t nowNs);
    //! Books what the link that was counted until now still carried; it is no longer the chosen
    //! one.
    [[nodiscard]] Booking leave(const ReadResult &lastLook);
    //! Lets the live figures of \a type begin anew at the latest reading.
    void restart(int type);

    //! The index of the counted link, 0 without one.
    [[nodiscard]] int index() const
    {
        return m_last ? m_last->index : 0;
    }
    [[nodiscard]] const LiveFigures &live() const
    {
        return m_live;
    }

private:
    void disconnect();
    void begin(const LinkReading &base);
    void update(const LinkReading &link, const Booking &booking, std::int64_t elapsedNs);

    std::optional<LinkReading> m_last;
    std::int64_t m_lastNs = 0;
    std::int64_t m_sinceNs = 0; // when the live figures began
    std::int64_t m_bookedMs = 0; // of the connection, so that fractions are not lost
    std::int64_t m_bookedFromNs = 0;
    LiveFigures m_live;
};

} // namespace velq
