// A store file with any contents, or damaged in any way: it is opened, read, written and opened
// again, and what is promised holds. What was booked is there, what cannot be used is set aside.

#include "SqliteMemory.h"
#include "StoreForge.h"

#include "calendar/TimeZone.h"
#include "engine/Engine.h"
#include "store/Store.h"

#include "ScriptedLinks.h"

#include <sqlite3.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iostream>

using namespace velq;

namespace {

constexpr std::int64_t kNsPerSecond = 1000000000;
constexpr Span kAlways { INT64_MIN, INT64_MAX };
constexpr DaySpan kAllDays { INT32_MIN, INT32_MAX };

void requireThat(bool condition, const char *what, int line)
{
    if (condition)
        return;
    std::cerr << "line " << line << ": not so: " << what << '\n';
    std::abort();
}
#define require(condition) requireThat(bool(condition), #condition, __LINE__)

/*! The folder of all runs, and what a store is made from. */
struct Bench
{
    std::string folder;
    StoreTemplates templates;

    Bench()
    {
        setenv("TZ", "UTC", 1);
        require(useOwnSqliteMemory());
        // In memory, so that a run does not wait for a disk.
        std::string name = access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp";
        name += "/fuzz-store-XXXXXX";
        folder = mkdtemp(name.data()) ? name : std::string();
        require(!folder.empty());
        templates = makeTemplates(folder);
    }
    ~Bench()
    {
        std::filesystem::remove_all(folder);
    }
    Bench(const Bench &) = delete;
    Bench &operator=(const Bench &) = delete;
};

/*! The computer on which the store is used. */
struct World
{
    ScriptedLinks links;
    std::int64_t bootNs = kForgeBoot * kNsPerSecond;
    std::int64_t wall = kForgeNow;

    World()
    {
        ScriptedLinks::State &state = links.connect(3, "wwan0");
        state.link.instance = 33;
        state.counters = { 5000, 7000 };
    }
    void pass(std::int64_t seconds)
    {
        bootNs += seconds * kNsPerSecond;
        wall += seconds;
    }
    void flow(std::uint64_t amount)
    {
        for (auto &[index, state] : links.links) {
            state.counters.download += amount;
            state.counters.upload += amount / 2;
        }
    }
};

std::unique_ptr<Engine> start(World &world, const std::string &folder)
{
    EngineParts parts;
    parts.source = std::make_unique<ScriptedLinkSource>(world.links);
    parts.store.directory = folder;
    parts.store.wallSeconds = [] { return kForgeNow; };
    parts.boot = kForgeBootId;
    parts.clock = { [&world] { return world.bootNs; }, [&world] { return world.wall; } };
    return std::make_unique<Engine>(std::move(parts));
}

bool contains(const std::string &text, const char *words)
{
    return text.find(words) != std::string::npos;
}

/*! All that is in the books. */
struct Contents
{
    DayAmounts days;
    HourAmounts hours;
    std::vector<Reason> reasons;
    std::string device;
    std::string hoursFrom;
    std::array<std::int64_t, kConnectTypes> resets {};
};

Contents contentsOf(Engine &engine)
{
    Ledger &ledger = engine.ledger();
    Contents contents;
    require(ledger.days(kAllDays, contents.days));
    require(ledger.hours(kAlways, contents.hours));
    require(ledger.reasons(INT32_MAX, contents.reasons));
    contents.device = engine.usedDevice();
    contents.hoursFrom = ledger.setting("hours_from");
    for (int type = 0; type < kConnectTypes; ++type)
        contents.resets[std::size_t(type)] = ledger.lastReset(type);
    return contents;
}

bool isSame(const Reason &one, const Reason &other)
{
    return one.kind == other.kind && one.at == other.at && one.device == other.device
        && one.use == other.use && one.download == other.download && one.upload == other.upload
        && one.seconds == other.seconds && one.text == other.text;
}

void requireSame(const Contents &now, const Contents &before)
{
    const auto same = [](const auto &one, const auto &other) {
        return !(one.first < other.first) && !(other.first < one.first)
            && one.second == other.second;
    };
    require(
        std::equal(now.days.begin(), now.days.end(), before.days.begin(), before.days.end(), same));
    require(std::equal(now.hours.begin(), now.hours.end(), before.hours.begin(), before.hours.end(),
                       same));
    require(std::equal(now.reasons.begin(), now.reasons.end(), before.reasons.begin(),
                       before.reasons.end(), isSame));
    require(now.device == before.device);
    require(now.hoursFrom == before.hoursFrom);
    require(now.resets == before.resets);
}

//! The figures of a span are the sum of its rows, as long as they fit.
void requireSums(Engine &engine, const DaySpan &span, const DayAmounts &days)
{
    for (int use = 0; use < kUseKinds; ++use) {
        __int128 sum = 0;
        __int128 size = 0;
        for (const auto &[key, amounts] : days) {
            if (key.use != use || key.day < span.from || key.day >= span.to)
                continue;
            sum += amounts.download;
            size += amounts.download < 0 ? -__int128(amounts.download) : amounts.download;
        }
        const Amounts total = engine.ledger().totalsOfUse(use, span);
        require(size > INT64_MAX || total.download == sum);
    }
}

void askEverything(Engine &engine, FuzzBytes &bytes)
{
    Ledger &ledger = engine.ledger();
    Report report;
    for (int type = 0; type < kConnectTypes; ++type) {
        for (int kind = 0; kind < 6; ++kind) {
            require(engine.report(kind, type, report));
            require(std::int64_t(report.download) >= 0 && report.seconds >= 0);
        }
    }
    for (const std::uint64_t key :
         { std::uint64_t(0), std::uint64_t(kForgeNow), std::uint64_t(forgedNumber(bytes)) })
        (void)engine.history(key, report);
    Amounts amounts;
    (void)ledger.totalsSince(hourStart(kForgeNow) - 24 * kHourSeconds, amounts);
    std::vector<StoredDevice> devices;
    std::vector<Reason> reasons;
    HourAmounts hours;
    DayAmounts days;
    (void)ledger.devices(devices);
    (void)ledger.reasons(5, reasons);
    require(reasons.size() <= 5);
    (void)ledger.hours({ forgedNumber(bytes), forgedNumber(bytes) }, hours);
    (void)ledger.days(kAllDays, days);
    (void)ledger.marks();
    (void)engine.interfaceToConnect();
    (void)engine.presentDevices();
}

//! One thing that a user, a network or a clock may do.
void act(Engine &engine, World &world, FuzzBytes &bytes)
{
    constexpr int kKinds = 6;
    switch (bytes.next(12)) {
    case 0:
        (void)engine.correct(int(bytes.next(kKinds)), int(bytes.next(kConnectTypes)),
                             std::max<std::int64_t>(0, forgedNumber(bytes) / 2),
                             std::int64_t(bytes.next()));
        break;
    case 1:
        require(engine.reset(int(bytes.next(kConnectTypes))));
        break;
    case 2:
        require(engine.useDevice(forgedText(bytes)));
        break;
    case 3:
        engine.setKeptDays(int(bytes.next(36501)));
        break;
    case 4: // as far as the clock of a computer goes
        world.wall = std::clamp<std::int64_t>(forgedNumber(bytes), -kForgeNow, kForgeNow * 3);
        break;
    case 5:
        world.links.disconnect(3);
        break;
    case 6:
        world.links.connect(3, bytes.next(2) ? "wwan0" : "eth0").link.wireless = bytes.next(2) > 0;
        break;
    case 7:
        world.pass(bytes.next() * 100);
        break;
    case 8:
        engine.ledger().commit();
        break;
    default:
        world.flow(bytes.next() * 1000);
        world.pass(1);
        engine.sample();
        break;
    }
}

//! Reads beside a process that has not looked at the file yet.
void readBeside(const std::string &folder, FuzzBytes &bytes)
{
    WriterLock other;
    require(other.take(folder + "/" + kLockFileName) == WriterLock::Result::Taken);
    World world;
    const auto engine = start(world, folder);
    require(engine->ledger().isShared());
    askEverything(*engine, bytes);
    engine->tick();
    require(!engine->reset(0) && !engine->useDevice("lo") && !engine->correct(1, 0, 5, 5));
    engine->close();
}

//! A second process sees what the first one has written.
void requireSeenBeside(const std::string &folder, const Contents &contents)
{
    World world;
    const auto engine = start(world, folder);
    require(engine->ledger().isShared());
    requireSame(contentsOf(*engine), contents);
}

void requireCopy(Engine &engine, const std::string &folder)
{
    const std::string path = folder + "/copy";
    require(engine.ledger().backUp(path).empty());
    Database copy;
    std::string health;
    require(copy.open(path, 1) == 0); // read only
    require(copy.queryText("PRAGMA integrity_check(1)", health) == 0 && health == "ok");
}

//! What is booked is in the books, at once and after it is written.
Contents bookMore(Engine &engine, const World &world)
{
    constexpr const char *kDevice = "hw:02:00:5e:10:00:77";
    BookingBatch batch;
    batch.bookings.push_back({ kDevice, 2, { 1234, 5678, 9, 9 } });
    const Moment now { std::max<std::int64_t>(0, world.wall), world.bootNs / kNsPerSecond };
    engine.ledger().book(batch, now);
    const Contents contents = contentsOf(engine);
    const HourKey key { hourStart(now.wallSeconds), TimeZone::utc().dayOf(now.wallSeconds), kDevice,
                        2 };
    require(contents.hours.at(key) == batch.bookings.front().amounts);
    engine.ledger().commit();
    requireSame(contentsOf(engine), contents);
    return contents;
}

struct Evidence
{
    std::string file;
    std::string log;
};

//! What was not taken over is still there.
void requireEvidence(Engine &engine, const std::string &folder, const Evidence &before)
{
    const std::string path = folder + "/" + kStoreFileName;
    const std::string problem = engine.ledger().problem();
    const bool isAside = contains(problem, "set aside");
    if (!isAside && !contains(problem, "memory"))
        return;
    const std::string place = isAside ? path + ".damaged-20310305-120000" : path;
    require(contentOf(place) == before.file);
    require(contentOf(place + "-wal") == before.log);
}

void run(const Bench &bench, FuzzBytes &bytes)
{
    forgeStore(bench.templates, bench.folder, bytes);
    const std::string path = bench.folder + "/" + kStoreFileName;
    const Evidence before { contentOf(path), contentOf(path + "-wal") };
    const unsigned options = bytes.next();
    if (options % 8 == 1) // none of these in most runs: they cost as much as all the rest
        readBeside(bench.folder, bytes);
    World world;
    auto engine = start(world, bench.folder);
    requireEvidence(*engine, bench.folder, before);
    const std::string problem = engine->ledger().problem();
    const bool isKept = !contains(problem, "memory");
    require(isKept || contains(problem, "newer version") || contains(problem, "write-protected"));
    askEverything(*engine, bytes);
    for (unsigned left = options >> 3; left > 0; --left)
        act(*engine, world, bytes);
    world.links.connect(3, "wwan0");
    for (int i = 0; i < 2 * kCommitSeconds; ++i) {
        world.flow(1000);
        world.pass(1);
        engine->tick();
    }
    askEverything(*engine, bytes); // which commits
    require(engine->ledger().problem() == problem);
    if (isKept && options % 8 == 2)
        requireSeenBeside(bench.folder, contentsOf(*engine));
    if (isKept && options % 8 == 3)
        requireCopy(*engine, bench.folder);
    const Contents contents = bookMore(*engine, world);
    for (const DaySpan &span : { DaySpan { 0, 30000 }, DaySpan { 22343, 22344 } })
        requireSums(*engine, span, contents.days);
    engine->close();
    engine.reset();
    if (!isKept)
        return;
    engine = start(world, bench.folder);
    require(engine->ledger().problem().empty());
    requireSame(contentsOf(*engine), contents);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const Bench bench;
    FuzzBytes bytes(data, size);
    run(bench, bytes);
    removeFilesIn(bench.folder);
    require(sqlite3_memory_used() == 0); // nothing stays open
    return 0;
}
