#include "SimulatedSdk.h"

#include "ScriptedLinks.h"

#include "engine/Engine.h"

#include <host/velq.h>
#include <host/velq_extension.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <memory>
#include <utility>

struct VELQ_ConnectionStatus
{
};

namespace {

constexpr std::int64_t kNsPerSecond = 1000000000;
constexpr int kFailure = 1;

constexpr int kIndex = 1;
constexpr std::int64_t kBooted = 946684800; // 2000-01-01
constexpr std::int64_t kInstantSeconds = 60; // what no clock notices

struct World
{
    ScriptedLinks script;
    std::int64_t bootNs = kNsPerSecond;
    std::int64_t wallSeconds = 0;
    std::int64_t aheadSeconds = 0; // of the boot clock, before the wall clock
    std::unique_ptr<velq::Engine> engine;
};

World &world()
{
    static World world;
    return world;
}

//! Calls \a body with the engine, and answers as the C functions do.
template <typename Body>
int withEngine(Body &&body)
{
    return world().engine && body(*world().engine) ? 0 : kFailure;
}

bool isType(int type)
{
    return type >= 0 && type < velq::kConnectTypes;
}

} // namespace

bool SimulatedSdk::open(const std::string &directory, const std::string &zone)
{
    close();
    (void)setenv("TZ", zone.c_str(), 1);
    tzset();
    velq::EngineParts parts;
    parts.source = std::make_unique<ScriptedLinkSource>(world().script);
    parts.store.directory = directory;
    parts.store.wallSeconds = [] { return world().wallSeconds; };
    parts.boot = "simulated";
    parts.clock = { [] { return world().bootNs; }, [] { return world().wallSeconds; } };
    world().script.connect(kIndex, "wwan0");
    world().engine = std::make_unique<velq::Engine>(std::move(parts));
    world().engine->sample();
    return world().engine->ledger().problem().empty();
}

void SimulatedSdk::setNow(std::int64_t utcSeconds)
{
    // The system is up all the time, and the connection is down meanwhile.
    World &all = world();
    const std::int64_t passed = std::max<std::int64_t>(0, utcSeconds - all.wallSeconds);
    if (all.wallSeconds == 0) // another process of the same boot comes to the same
        all.bootNs = (utcSeconds - kBooted) * kNsPerSecond;
    else
        all.bootNs += std::max<std::int64_t>(0, passed - all.aheadSeconds) * kNsPerSecond;
    all.aheadSeconds = std::max<std::int64_t>(0, all.aheadSeconds - passed);
    all.wallSeconds = utcSeconds;
    all.script.bounced = true;
}

void SimulatedSdk::flow(std::uint64_t bytesDown, std::uint64_t bytesUp, std::int64_t seconds)
{
    World &all = world();
    if (all.engine && all.script.bounced)
        all.engine->sample(); // it comes up
    velq::LinkCounters &counters = all.script.links.at(kIndex).counters;
    counters.download += bytesDown;
    counters.upload += bytesUp;
    const std::int64_t wall = seconds > kInstantSeconds ? seconds - 1 : 0;
    all.bootNs += seconds * kNsPerSecond;
    all.wallSeconds += wall;
    all.aheadSeconds += seconds - wall;
    if (all.engine)
        all.engine->sample();
}

void SimulatedSdk::tick()
{
    if (!world().engine)
        return;
    const velq::LiveFigures figures = world().engine->live();
    auto data = velq::eventData(figures.connected, figures.type);
    world().engine->callbacks().notify(VELQ_EVENT_STATISTICS, data.data());
}

void SimulatedSdk::commit()
{
    if (world().engine)
        world().engine->ledger().commit();
}

void SimulatedSdk::close()
{
    if (world().engine)
        world().engine->close();
    world().engine.reset();
}

void SimulatedSdk::abandon()
{
    world().engine.reset(); // writes nothing
}

int VELQ_Statistics_RegisterStatisticsCallbackEvent(VELQ_StatisticsCallback callback)
{
    return withEngine([callback](velq::Engine &engine) {
        if (callback)
            engine.callbacks().add(callback);
        return callback != nullptr;
    });
}

int VELQ_Statistics_UnRegisterStatisticsCallbackEvent(VELQ_StatisticsCallback callback)
{
    return withEngine(
        [callback](velq::Engine &engine) { return engine.callbacks().remove(callback); });
}

int VELQ_Statistics_GetReport(int kind, void *report, _VELQ_EN_CONNECT_TYPE type)
{
    return withEngine([=](velq::Engine &engine) {
        velq::Report fields;
        const bool good
            = report && isType(type) && engine.report(kind, static_cast<int>(type), fields);
        if (good)
            velq::writeReport(fields, report);
        return good;
    });
}

int VELQ_Statistics_GetSpecHistroryData(void *report, unsigned long long key)
{
    return withEngine([=](velq::Engine &engine) {
        velq::Report fields;
        const bool good = report && engine.history(key, fields);
        if (good)
            velq::writeReport(fields, report);
        return good;
    });
}

int VELQ_Statistics_Reset(_VELQ_EN_CONNECT_TYPE type)
{
    return withEngine([type](velq::Engine &engine) {
        return isType(type) && engine.reset(static_cast<int>(type));
    });
}

int VELQ_StatisticsSrv_SetPeriodStart(int weekday, int dayOfMonth)
{
    return withEngine([=](velq::Engine &engine) {
        const velq::PeriodStart start { weekday, dayOfMonth };
        if (velq::isValid(start))
            engine.setPeriodStart(start);
        return velq::isValid(start);
    });
}

int VELQ_NetConnectSrv_GetConnectionStatus(VELQ_ConnectionStatus **list, int *count)
{
    return withEngine([=](velq::Engine &engine) {
        if (!list || !count)
            return false;
        *count = engine.live().connected ? 1 : 0;
        *list = *count > 0 ? new VELQ_ConnectionStatus[1] : nullptr;
        return true;
    });
}

int VELQ_NetConnectSrv_ReleaseConnectionStatus(VELQ_ConnectionStatus *list)
{
    delete[] list;
    return 0;
}

int VELQ_DevSrv_GetCustomizeName(char *name)
{
    if (name)
        std::strncpy(name, "common", VELQ_CUSTOMIZE_NAME_SIZE);
    return name ? 0 : kFailure;
}
