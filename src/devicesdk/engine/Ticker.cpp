#include "engine/Ticker.h"

#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <ctime>
#include <new>
#include <system_error>
#include <utility>

namespace velq {

namespace {

constexpr long kNsPerMs = 1000000;
constexpr int kMsPerSecond = 1000;

int makeTimer(int intervalMs)
{
    const int timer = timerfd_create(CLOCK_BOOTTIME, TFD_CLOEXEC | TFD_NONBLOCK);
    if (timer < 0)
        return -1;
    itimerspec times {};
    times.it_interval.tv_sec = intervalMs / kMsPerSecond;
    times.it_interval.tv_nsec = (intervalMs % kMsPerSecond) * kNsPerMs;
    times.it_value = times.it_interval;
    (void)timerfd_settime(timer, 0, &times, nullptr); // valid by construction
    return timer;
}

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

} // namespace

Ticker::~Ticker()
{
    stop();
}

bool Ticker::start(std::function<void()> tick, int intervalMs)
{
    m_timer = makeTimer(intervalMs);
    m_stop = eventfd(0, EFD_CLOEXEC);
    if (m_timer >= 0 && m_stop >= 0) {
        const std::lock_guard<std::mutex> guard(m_mutex);
        const SignalsBlocked blocked; // the new thread inherits the mask
        try {
            m_thread = std::thread([this, call = std::move(tick)] { run(call); });
            (void)pthread_setname_np(m_thread.native_handle(), "velq");
            return true;
        } catch (const std::exception &) { // no more threads, or no memory for one
        }
    }
    closeFiles();
    return false;
}

void Ticker::run(const std::function<void()> &tick)
{
    for (;;) {
        std::array<pollfd, 2> files { pollfd { m_stop, POLLIN, 0 }, pollfd { m_timer, POLLIN, 0 } };
        if (poll(files.data(), files.size(), -1) < 0 && errno != EINTR)
            return;
        if (files[0].revents)
            return;
        std::uint64_t expirations = 0;
        if (read(m_timer, &expirations, sizeof expirations) == sizeof expirations)
            tick();
    }
}

void Ticker::stop()
{
    std::thread thread;
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        std::swap(thread, m_thread);
    }
    if (!thread.joinable())
        return;
    const std::uint64_t one = 1;
    while (write(m_stop, &one, sizeof one) < 0 && errno == EINTR) { }
    if (thread.get_id() == std::this_thread::get_id()) {
        thread.detach(); // it is inside tick() and still needs the files when it comes back
        return;
    }
    thread.join();
    closeFiles();
}

void Ticker::abandon()
{
    if (m_thread.joinable())
        m_thread.detach();
}

void Ticker::closeFiles()
{
    for (int *file : { &m_timer, &m_stop }) {
        if (*file >= 0)
            (void)close(*file);
        *file = -1;
    }
}

} // namespace velq
