#include "modem/BusSession.h"

#include <poll.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <limits>

namespace velq {

namespace {

constexpr std::uint64_t kNoTimeout = std::numeric_limits<std::uint64_t>::max();
constexpr std::chrono::milliseconds kLongest { 3600000 };

//! Of the bus's own timers; the same clock as BusClock.
BusClock::time_point timeOf(std::uint64_t microseconds)
{
    if (microseconds >= kNoTimeout / 2000)
        return BusClock::time_point::max();
    return BusClock::time_point(std::chrono::microseconds(microseconds));
}

} // namespace

BusSession::BusSession(const MirrorTimes &times)
    : m_times(times)
    , m_modemManager(modemManagerRules(), times)
    , m_networkManager(networkManagerRules(), times)
{
}

BusSession::~BusSession()
{
    // Before the mirrors: closed, it calls them no more. Not flushed: the bus may hang.
    sd_bus_close(m_bus);
    (void)sd_bus_unref(m_bus);
}

bool BusSession::open(const std::string &address)
{
    m_readyBy = BusClock::now() + m_times.call;
    return sd_bus_new(&m_bus) >= 0 && sd_bus_set_address(m_bus, address.c_str()) >= 0
        && sd_bus_set_bus_client(m_bus, 1) >= 0 && sd_bus_start(m_bus) >= 0
        && m_networkManager.attach(m_bus) && m_modemManager.attach(m_bus);
}

bool BusSession::isReady() const
{
    return sd_bus_is_ready(m_bus) > 0;
}

bool BusSession::isUsable() const
{
    return sd_bus_is_open(m_bus) > 0 && !m_networkManager.hasFailed() && !m_modemManager.hasFailed()
        && (isReady() || BusClock::now() < m_readyBy);
}

int BusSession::waitingTime() const
{
    if (m_hasMore)
        return 0;
    std::uint64_t busTime = kNoTimeout;
    (void)sd_bus_get_timeout(m_bus, &busTime);
    auto next
        = std::min({ timeOf(busTime), m_networkManager.nextWork(), m_modemManager.nextWork() });
    if (!isReady())
        next = std::min(next, m_readyBy);
    const auto now = BusClock::now();
    if (next <= now)
        return 0;
    if (next - now > kLongest)
        return int(kLongest.count());
    return int(std::chrono::ceil<std::chrono::milliseconds>(next - now).count());
}

bool BusSession::work(int stopFile)
{
    m_networkManager.work();
    m_modemManager.work();
    const int events = sd_bus_get_events(m_bus);
    if (events < 0)
        return false;
    std::array<pollfd, 2> files { pollfd { stopFile, POLLIN, 0 },
                                  pollfd { sd_bus_get_fd(m_bus), short(events), 0 } };
    if ((poll(files.data(), files.size(), waitingTime()) < 0 && errno != EINTR) || files[0].revents)
        return false;
    const int worked = sd_bus_process(m_bus, nullptr);
    m_hasMore = worked > 0;
    return worked >= 0 && isUsable();
}

bool BusSession::takeChanged()
{
    const bool becameReady = isReady() && !m_wasReady;
    m_wasReady = isReady();
    const bool networkChanged = m_networkManager.takeChanged();
    return m_modemManager.takeChanged() || networkChanged || becameReady;
}

NetworkFacts BusSession::facts() const
{
    NetworkFacts facts;
    facts.bus = isReady();
    facts.networkManager = m_networkManager.isPresent();
    facts.modemManager = m_modemManager.isPresent();
    facts.modems = modemFacts(m_modemManager.objects());
    facts.devices = deviceFacts(m_networkManager.objects());
    facts.primaryInterface = primaryInterface(m_networkManager.objects());
    return facts;
}

} // namespace velq
