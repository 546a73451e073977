#pragma once

#include "modem/ServiceMirror.h"

#include <string>

namespace velq {

/*! One connection to the system bus, with its copies of the services. One thread. */
class BusSession
{
public:
    explicit BusSession(const MirrorTimes &times);
    ~BusSession();
    BusSession(const BusSession &) = delete;
    BusSession &operator=(const BusSession &) = delete;

    //! Begins to connect to the bus at \a address. False when that is not possible.
    [[nodiscard]] bool open(const std::string &address);
    //! Waits until there is something to do, or \a stopFile can be read, and does a part of it.
    //! False when the connection has ended or \a stopFile can be read.
    [[nodiscard]] bool work(int stopFile);
    //! Whether the bus has let us in.
    [[nodiscard]] bool isReady() const;
    //! Whether facts() differ since the last call.
    [[nodiscard]] bool takeChanged();
    [[nodiscard]] NetworkFacts facts() const;

private:
    [[nodiscard]] int waitingTime() const;
    [[nodiscard]] bool isUsable() const;

    const MirrorTimes m_times;
    ServiceMirror m_modemManager;
    ServiceMirror m_networkManager;
    sd_bus *m_bus = nullptr;
    BusClock::time_point m_readyBy;
    bool m_hasMore = false; //!< messages have been read that are not handled yet
    bool m_wasReady = false;
};

} // namespace velq
