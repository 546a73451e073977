#pragma once

#include "counters/LinkSource.h"

#include <cstdint>
#include <string>

namespace velq {

/*! The figures of the connection that is up. */
struct LiveFigures
{
    bool connected = false;
    int type = 0; //!< connect type; the latest one while nothing is connected
    bool roaming = false;
    std::string interface; //!< the chosen link, up or not; empty without one
    std::string device; //!< its key, see Identity.h
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

/*! The chosen link at one look. */
struct LiveLook
{
    const Link &link;
    const std::string &device; //!< its key
    bool roaming = false;
    LinkCounters counters; //!< now
    LinkCounters delta; //!< what flowed since the look before
    bool restarted = false; //!< its counters cannot be compared with those of the look before
};

/*! Follows the chosen link from one look to the next. */
class LiveConnection
{
public:
    //! \a look: the chosen link, null without one. \a nowNs of the boot clock.
    void advance(const LiveLook *look, std::int64_t nowNs);
    //! Lets the figures of \a type begin anew at the latest look.
    void restart(int type);

    [[nodiscard]] const LiveFigures &figures() const
    {
        return m_live;
    }

private:
    void disconnect();

    LiveFigures m_live;
    int m_index = 0;
    std::uint64_t m_instance = 0;
    std::int64_t m_lastNs = 0; // of the latest look
    std::int64_t m_sinceNs = 0; // when the figures began
};

} // namespace velq
