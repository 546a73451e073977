#pragma once

#include <functional>
#include <mutex>
#include <thread>

namespace velq {

/*!
 * A thread that calls a function once a second, at absolute times of the boot clock, so that it
 * does not drift. Seconds that are missed (a slow call, sleep) are dropped, not made up for.
 */
class Ticker
{
public:
    Ticker() = default;
    ~Ticker();
    Ticker(const Ticker &) = delete;
    Ticker &operator=(const Ticker &) = delete;

    //! Starts calling \a tick, the first time after \a intervalMs. False without resources for it.
    [[nodiscard]] bool start(std::function<void()> tick, int intervalMs = 1000);
    //! Ends the thread at once and waits for a running call, unless called from it.
    void stop();
    //! In a forked child, where the thread does not exist.
    void abandon();

private:
    void run(const std::function<void()> &tick);
    void closeFiles();

    int m_timer = -1;
    int m_stop = -1;
    std::mutex m_mutex; // guards the handle, not the thread's work
    std::thread m_thread;
};

} // namespace velq
