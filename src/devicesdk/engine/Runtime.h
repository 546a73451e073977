#pragma once

#include "engine/Engine.h"
#include "engine/Environment.h"
#include "engine/Ticker.h"
#include "modem/ConnectRules.h"
#include "modem/DisconnectRules.h"
#include "modem/NetworkWatcher.h"

#include <atomic>
#include <functional>
#include <memory>
#include <string>

namespace velq {

/*! The running service: an engine and the thread that drives it. */
class Service
{
public:
    explicit Service(const HostChoices &choices);
    ~Service();
    Service(const Service &) = delete;
    Service &operator=(const Service &) = delete;

    //! Ends the thread and commits. From the thread itself: commits, the thread goes no further.
    void stop();
    //! In a forked child: lets go of what belongs to the parent.
    void abandon();

    [[nodiscard]] Engine &engine()
    {
        return *m_engine;
    }
    [[nodiscard]] std::string customizeName() const;
    //! Empty while the figures are in memory only.
    [[nodiscard]] std::string storePath() const;
    //! Takes the counted connection down; blocks for kDisconnectTime at most.
    [[nodiscard]] DisconnectResult disconnect();
    //! Brings the chosen device up; blocks for kConnectTime at most.
    [[nodiscard]] ConnectResult connect();

private:
    const bool m_demo;
    const DataDirectory m_directory;
    NetworkWatcher m_watcher;
    std::unique_ptr<Engine> m_engine;
    Ticker m_ticker;
};

/*!
 * The one service of the process. It is made by its first use and ends when the library is unloaded
 * or the process exits; a forked child has none.
 */
namespace Runtime {

//! The service, made when needed; null after the end, in a forked child, or without memory.
[[nodiscard]] std::shared_ptr<Service> service();
//! The service if it runs, else null.
[[nodiscard]] std::shared_ptr<Service> runningService();
//! Changes what the host has chosen; false once there is, or was, a service.
[[nodiscard]] bool choose(const std::function<void(HostChoices &)> &change);
//! For the service that runs or will be made. False after the end and in a forked child.
[[nodiscard]] bool setPeriodStart(const PeriodStart &start);

} // namespace Runtime

} // namespace velq
