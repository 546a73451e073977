#include "engine/Ticker.h"

#include <pthread.h>
#include <sys/prctl.h>

#include <cerrno>
#include <csignal>
#include <ctime>
#include <exception>
#include <utility>

namespace velq {

namespace {

using Clock = std::chrono::steady_clock;

//! The host's signals are handled by the host's threads.
class SignalsBlocked
{
public:
    SignalsBlocked()
    {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &m_before);
    }
    ~SignalsBlocked()
    {
        pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
    }
    SignalsBlocked(const SignalsBlocked &) = delete;
    SignalsBlocked &operator=(const SignalsBlocked &) = delete;

private:
    sigset_t m_before {};
};

//! Lets the timeouts of this thread come late; only while it waits, as threads that a callback
//! starts would inherit it.
class LateTimeouts
{
public:
    explicit LateTimeouts(std::chrono::nanoseconds most)
    {
        (void)prctl(PR_SET_TIMERSLACK, static_cast<unsigned long>(most.count()));
    }
    ~LateTimeouts()
    {
        (void)prctl(PR_SET_TIMERSLACK, 0UL); // what the thread began with
    }
    LateTimeouts(const LateTimeouts &) = delete;
    LateTimeouts &operator=(const LateTimeouts &) = delete;
};

//! Of the monotonic clock.
timespec timespecOf(Clock::time_point time)
{
    const auto since = time.time_since_epoch();
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(since);
    const auto rest = std::chrono::duration_cast<std::chrono::nanoseconds>(since - seconds);
    return { static_cast<time_t>(seconds.count()), static_cast<long>(rest.count()) };
}

//! The first time of the schedule that holds \a last which is still to come.
Clock::time_point after(Clock::time_point last, std::chrono::milliseconds interval)
{
    const auto passed = (Clock::now() - last) / interval;
    return last + (passed + 1) * interval;
}

} // namespace

Ticker::Ticker()
{
    (void)sem_init(&m_stops, 0, 0);
}

Ticker::~Ticker()
{
    stop();
    (void)sem_destroy(&m_stops);
}

bool Ticker::start(std::function<void()> tick, int intervalMs)
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    const SignalsBlocked blocked; // the new thread inherits the mask
    try {
        m_thread = std::thread([this, call = std::move(tick), intervalMs] {
            run(call, std::chrono::milliseconds(intervalMs));
        });
    } catch (const std::exception &) { // no more threads, or no memory for one
        return false;
    }
    (void)pthread_setname_np(m_thread.native_handle(), "velq");
    return true;
}

void Ticker::run(const std::function<void()> &tick, std::chrono::milliseconds interval)
{
    constexpr int kLatePart = 10;
    auto next = Clock::now() + interval;
    while (!stopsBefore(next, interval / kLatePart)) {
        tick();
        next = after(next, interval);
    }
}

bool Ticker::stopsBefore(Clock::time_point time, std::chrono::nanoseconds late)
{
    const LateTimeouts lateTimeouts(late);
    const timespec at = timespecOf(time);
    while (sem_clockwait(&m_stops, CLOCK_MONOTONIC, &at) != 0) {
        if (errno != EINTR)
            return false;
    }
    return true;
}

void Ticker::stop()
{
    std::thread thread;
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        std::swap(thread, m_thread);
    }
    (void)sem_post(&m_stops);
    if (!thread.joinable())
        return;
    if (thread.get_id() == std::this_thread::get_id())
        thread.detach(); // it is inside tick() and still needs this object when it comes back
    else
        thread.join();
}

void Ticker::abandon()
{
    if (m_thread.joinable())
        m_thread.detach();
}

} // namespace velq
