#pragma once

#include "modem/NetworkFacts.h"

#include <chrono>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

namespace velq {

struct WatcherOptions
{
    //! Of the bus. Empty: what DBUS_SYSTEM_BUS_ADDRESS says when the watcher is made, else the
    //! system's own place.
    std::string address;
    std::chrono::milliseconds callTime { 5000 }; //!< a service must answer within
    std::chrono::milliseconds statsInterval { 8000 }; //!< between two looks at a bearer's figures
    std::chrono::milliseconds firstRetry { 250 }; //!< after a failure; doubles each time...
    std::chrono::milliseconds lastRetry { 5000 }; //!< ...up to this
};

/*!
 * Follows NetworkManager, ModemManager and the bus itself through all their comings and goings, on
 * a thread of its own. Starts no service.
 */
class NetworkWatcher
{
public:
    explicit NetworkWatcher(WatcherOptions options = {});
    ~NetworkWatcher();
    NetworkWatcher(const NetworkWatcher &) = delete;
    NetworkWatcher &operator=(const NetworkWatcher &) = delete;

    //! Starts the thread, at most once at a time. False without resources for it.
    [[nodiscard]] bool start();
    //! Ends the thread, whatever the bus does. Not from two threads at once.
    void stop();
    //! In a forked child, where the thread does not exist. Only the destructor may follow.
    void abandon();

    //! The latest ones, empty while nothing is known; never null. Any thread; waits for nobody.
    [[nodiscard]] std::shared_ptr<const NetworkFacts> facts() const;

private:
    void run();
    //! Until the connection ends or it is time to stop.
    void watch();
    //! False when it is time to stop.
    [[nodiscard]] bool pause(std::chrono::milliseconds time) const;
    void publish(std::shared_ptr<const NetworkFacts> facts);

    const WatcherOptions m_options;
    const std::shared_ptr<const NetworkFacts> m_nothing;
    int m_stop = -1; //!< can be read when the thread is to end
    std::thread m_thread;
    mutable std::mutex m_mutex; //!< guards m_facts for the time of copying a pointer
    std::shared_ptr<const NetworkFacts> m_facts;
};

} // namespace velq
