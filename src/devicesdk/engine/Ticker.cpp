#include "engine/Ticker.h"

#include <pthread.h>

#include <csignal>
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

//! The first time of the schedule that holds \a last which is still to come.
Clock::time_point after(Clock::time_point last, std::chrono::milliseconds interval)
{
    const auto passed = (Clock::now() - last) / interval;
    return last + (passed + 1) * interval;
}

} // namespace

Ticker::~Ticker()
{
    stop();
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
    std::unique_lock<std::mutex> lock(m_mutex);
    auto next = Clock::now() + interval;
    while (!m_stops.wait_until(lock, next, [this] { return m_stopping; })) {
        lock.unlock();
        tick();
        lock.lock();
        next = after(next, interval);
    }
}

void Ticker::stop()
{
    std::thread thread;
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        std::swap(thread, m_thread);
        m_stopping = true;
    }
    m_stops.notify_all();
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
