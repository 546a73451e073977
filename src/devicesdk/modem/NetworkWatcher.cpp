#include "modem/NetworkWatcher.h"

#include "modem/BusSession.h"

#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <utility>

namespace velq {

namespace {

constexpr const char *kSystemBus = "unix:path=/run/dbus/system_bus_socket";

WatcherOptions withAddress(WatcherOptions options)
{
    const char *fromEnvironment = secure_getenv("DBUS_SYSTEM_BUS_ADDRESS");
    if (options.address.empty())
        options.address = fromEnvironment && *fromEnvironment ? fromEnvironment : kSystemBus;
    return options;
}

MirrorTimes mirrorTimes(const WatcherOptions &options)
{
    MirrorTimes times;
    times.call = options.callTime;
    times.refresh = options.statsInterval;
    times.firstRetry = options.firstRetry;
    times.lastRetry = options.lastRetry;
    return times;
}

//! With all signals blocked, which a new thread inherits: the host's threads handle them.
template <typename Run>
std::thread quietThread(Run run)
{
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    std::thread thread;
    try {
        thread = std::thread(std::move(run));
        (void)pthread_setname_np(thread.native_handle(), "velq-bus");
    } catch (const std::exception &) { // no more threads, or no memory for one
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return thread;
}

} // namespace

NetworkWatcher::NetworkWatcher(WatcherOptions options)
    : m_options(withAddress(std::move(options)))
    , m_nothing(std::make_shared<const NetworkFacts>())
    , m_facts(m_nothing)
{
}

NetworkWatcher::~NetworkWatcher()
{
    stop();
}

bool NetworkWatcher::start()
{
    if (m_thread.joinable())
        return true;
    m_stop = eventfd(0, EFD_CLOEXEC);
    if (m_stop >= 0)
        m_thread = quietThread([this] { run(); });
    if (!m_thread.joinable())
        stop();
    return m_thread.joinable();
}

void NetworkWatcher::stop()
{
    if (m_thread.joinable()) {
        const std::uint64_t one = 1;
        while (write(m_stop, &one, sizeof one) < 0 && errno == EINTR) { }
        m_thread.join();
    }
    if (m_stop >= 0)
        (void)close(m_stop);
    m_stop = -1;
}

void NetworkWatcher::abandon()
{
    if (m_thread.joinable())
        m_thread.detach();
}

std::shared_ptr<const NetworkFacts> NetworkWatcher::facts() const
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    return m_facts;
}

void NetworkWatcher::publish(std::shared_ptr<const NetworkFacts> facts)
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    m_facts.swap(facts);
}

bool NetworkWatcher::pause(std::chrono::milliseconds time) const
{
    pollfd file { m_stop, POLLIN, 0 };
    (void)poll(&file, 1, int(time.count()));
    return file.revents == 0;
}

void NetworkWatcher::run()
{
    std::chrono::milliseconds retry = m_options.firstRetry;
    do {
        const auto began = BusClock::now();
        try {
            watch();
        } catch (const std::exception &) { // out of memory: begin anew
        }
        publish(m_nothing);
        // A bus that leaves us again at once is no reason to come back at once.
        const bool lasted = BusClock::now() - began > m_options.lastRetry + m_options.callTime;
        retry = lasted ? m_options.firstRetry : retry;
        if (!pause(retry))
            return;
        retry = std::min(retry * 2, m_options.lastRetry);
    } while (true);
}

void NetworkWatcher::watch()
{
    BusSession session(mirrorTimes(m_options));
    bool works = session.open(m_options.address);
    while (works) {
        works = session.work(m_stop);
        if (works && session.takeChanged())
            publish(std::make_shared<const NetworkFacts>(session.facts()));
    }
}

} // namespace velq
