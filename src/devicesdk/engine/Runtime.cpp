#include "engine/Runtime.h"

#include "calendar/TimeZone.h"
#include "counters/LinkMonitor.h"
#include "engine/CustomizeName.h"
#include "engine/DemoHistory.h"
#include "engine/DemoSource.h"
#include "modem/NetworkManager.h"

#include <pthread.h>
#include <unistd.h>

#include <algorithm>
#include <mutex>
#include <new>
#include <utility>

namespace velq {

namespace {

Day localDay(std::int64_t second)
{
    return TimeZone::system().dayOf(second);
}

std::unique_ptr<Engine> makeEngine(const HostChoices &choices, const DataDirectory &directory,
                                   const NetworkWatcher &watcher)
{
    EngineParts parts;
    parts.clock = Clock::system();
    parts.boot = bootId();
    parts.store.wallSeconds = parts.clock.wallSeconds;
    const std::int64_t now = std::max<std::int64_t>(0, parts.clock.wallSeconds());
    if (choices.demo) {
        parts.store.inMemory = true;
        parts.begunAt = demoBegan(now);
        parts.source = std::make_unique<DemoSource>(parts.clock);
    } else {
        parts.store.directory = directory.path;
        parts.store.complaint = directory.complaint;
        parts.source = std::make_unique<LinkMonitor>();
        parts.facts = [&watcher] { return watcher.facts(); };
    }
    auto engine = std::make_unique<Engine>(std::move(parts));
    if (choices.demo)
        engine->ledger().seed(demoHistory(now, localDay));
    else
        engine->nameDevice(chosenInterface(choices));
    return engine;
}

} // namespace

Service::Service(const HostChoices &choices)
    : m_demo(choices.demo)
    , m_directory(dataDirectory(choices))
    , m_engine(makeEngine(choices, m_directory, m_watcher))
{
    m_engine->setPeriodStart(choices.periodStart);
    if (!m_demo)
        (void)m_watcher.start(); // without a thread for it the kernel alone is asked
    m_engine->sample(); // so that the first question has an answer
    if (!m_ticker.start([this] { m_engine->tick(); }))
        throw std::bad_alloc(); // no thread: there is no service
}

Service::~Service()
{
    stop();
}

void Service::stop()
{
    m_ticker.stop();
    m_watcher.stop();
    m_engine->close();
}

void Service::abandon()
{
    m_ticker.abandon();
    m_watcher.abandon();
    m_engine->abandon();
}

std::string Service::customizeName() const
{
    return velq::customizeName(m_directory.path);
}

std::string Service::storePath() const
{
    return m_demo || m_directory.path.empty() ? std::string()
                                              : m_directory.path + "/" + kStoreFileName;
}

DisconnectResult Service::disconnect()
{
    if (m_engine->callbacks().isRunningHere()) // sampling would stand still meanwhile
        return DisconnectResult::Failed;
    const LiveFigures figures = m_engine->live();
    if (!figures.connected)
        return DisconnectResult::NoConnection;
    const DisconnectResult result
        = m_demo ? DisconnectResult::Done : disconnectInterface(figures.interface);
    if (result == DisconnectResult::Done)
        m_engine->noteDisconnect();
    return result;
}

ConnectResult Service::connect()
{
    if (m_engine->callbacks().isRunningHere()) // sampling would stand still meanwhile
        return ConnectResult::Failed;
    const std::string interface = m_engine->interfaceToConnect();
    if (interface.empty())
        return ConnectResult::NoDevice;
    const ConnectResult result = m_demo ? ConnectResult::Done : connectInterface(interface);
    if (result == ConnectResult::Done)
        m_engine->noteConnect();
    return result;
}

namespace Runtime {

namespace {

/*!
 * Never destroyed, because threads of the host may still call while the process exits; what it
 * holds is released by endService(), so that nothing stays behind when the library is unloaded.
 */
union State {
    struct Content
    {
        std::mutex mutex;
        HostChoices choices;
        std::shared_ptr<Service> service;
        bool used = false;
        bool ended = false;
    } content;

    State()
        : content()
    {
    }
    ~State() { }
};

// 0 while there is no service yet; else the process that made it. A child that was forked has the
// number of its parent here, and must not touch a mutex that was perhaps held in the moment of the
// fork.
std::atomic<pid_t> g_owner { 0 };

State::Content &state()
{
    static State state;
    return state.content;
}

bool isForeignProcess()
{
    const pid_t owner = g_owner.load();
    return owner != 0 && owner != getpid();
}

void afterForkInChild()
{
    // The shared pointer stays as it is: destroying the service would join a thread that this
    // process does not have and close a database that is the parent's.
    if (g_owner.load() != 0 && state().service)
        state().service->abandon();
}

void endService()
{
    if (isForeignProcess())
        return;
    std::shared_ptr<Service> service;
    {
        const std::lock_guard<std::mutex> guard(state().mutex);
        state().ended = true;
        service = std::exchange(state().service, nullptr);
        state().choices = {};
    }
    if (service)
        service->stop(); // outside the lock: a callback may be calling in
}

//! Runs at exit and when the library is unloaded, after the destructors of the host's statics.
struct Ender
{
    ~Ender()
    {
        endService();
    }
} g_ender;

void make(State::Content &content)
{
    content.used = true;
    static const int kForkHandler = pthread_atfork(nullptr, nullptr, afterForkInChild);
    (void)kForkHandler; // without memory for it a child keeps the lock file open, no more
    g_owner.store(getpid()); // before the work: a child forked meanwhile must not wait for it
    content.service = std::make_shared<Service>(content.choices);
}

} // namespace

std::shared_ptr<Service> service()
{
    if (isForeignProcess())
        return nullptr;
    const std::lock_guard<std::mutex> guard(state().mutex);
    if (!state().service && !state().ended)
        make(state());
    return state().service;
}

std::shared_ptr<Service> runningService()
{
    if (isForeignProcess())
        return nullptr;
    const std::lock_guard<std::mutex> guard(state().mutex);
    return state().service;
}

bool choose(const std::function<void(HostChoices &)> &change)
{
    if (isForeignProcess())
        return false;
    const std::lock_guard<std::mutex> guard(state().mutex);
    if (state().used)
        return false;
    change(state().choices);
    return true;
}

bool setPeriodStart(const PeriodStart &start)
{
    if (isForeignProcess())
        return false;
    const std::lock_guard<std::mutex> guard(state().mutex);
    if (state().ended)
        return false;
    state().choices.periodStart = start;
    if (state().service)
        state().service->engine().setPeriodStart(start);
    return true;
}

} // namespace Runtime

} // namespace velq
