#pragma once

#include <semaphore.h>

#include <chrono>
#include <functional>
#include <mutex>
#include <thread>

namespace velq {

/*!
 * A thread that calls a function once a second, at absolute times of the monotonic clock, so that
 * it does not drift. Seconds that are missed (a slow call, sleep) are dropped, not made up for. A
 * call may come a tenth of the interval late, so that the processor wakes up once for several
 * programs.
 */
class Ticker
{
public:
    Ticker();
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
    [[nodiscard]] bool stopsBefore(std::chrono::steady_clock::time_point time,
                                   std::chrono::nanoseconds late);

    sem_t m_stops {}; // unlike a condition it takes one call of the kernel to wait for
    std::mutex m_mutex; // guards the thread
    std::thread m_thread;
};

} // namespace velq
