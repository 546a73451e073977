#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace velq {

/*!
 * A thread that calls a function once a second, at absolute times of the monotonic clock, so that
 * it does not drift. Seconds that are missed (a slow call, sleep) are dropped, not made up for.
 */
class Ticker
{
public:
    Ticker() = default;
    ~Ticker();
    Ticker(const Ticker &) = delete;
    Ticker &operator=(const Ticker &) = delete;

    //! Starts calling \a tick, the first time after \a intervalMs. False without resources for it.
    //! Once only.
    [[nodiscard]] bool start(std::function<void()> tick, int intervalMs = 1000);
    //! Ends the thread at once and waits for a running call, unless called from it.
    void stop();
    //! In a forked child, where the thread does not exist.
    void abandon();

private:
    void run(const std::function<void()> &tick, std::chrono::milliseconds interval);

    std::mutex m_mutex; // guards what follows; not held while ticking
    std::condition_variable m_stops;
    bool m_stopping = false;
    std::thread m_thread;
};

} // namespace velq
