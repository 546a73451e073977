// Reports over ten years of hours, beside SQL that sums the same hours by their index: 87,600 rows
// of two devices, as days have them too. It is the last half hour of a day, a week, a month and a
// year, so that SQL has all of each to sum. CPU times.

#include <QTemporaryDir>

#include <sqlite3.h>

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <memory>
#include <utility>

#include "BenchRatios.h"
#include "engine/Engine.h"
#include "store/Sqlite.h"

namespace {

constexpr int kRows = 87600;
constexpr int kDaily = 1;
constexpr int kWeekly = 3;
constexpr int kMonthly = 4;
constexpr int kYearly = 5;

constexpr std::int64_t kEvening = 1704065400; // Sunday 2023-12-31 23:30 UTC

//! The clock of the system, set to that evening.
std::int64_t wallSeconds()
{
    static const std::int64_t ahead = kEvening - velq::Clock::system().wallSeconds();
    return std::time(nullptr) + ahead;
}

class NoLinks : public velq::LinkSource
{
public:
    velq::LinkNews read() override
    {
        velq::LinkNews news;
        news.valid = true;
        return news;
    }
    void noteDisconnect(int) override { }
};

velq::Day localDay(std::int64_t second)
{
    return velq::TimeZone::system().dayOf(second);
}

std::unique_ptr<velq::Engine> openEngine(const std::string &folder)
{
    velq::EngineParts parts;
    parts.clock = velq::Clock::system();
    parts.clock.wallSeconds = wallSeconds;
    parts.boot = "bench";
    parts.store.directory = folder;
    parts.store.wallSeconds = parts.clock.wallSeconds;
    parts.source = std::make_unique<NoLinks>();
    auto engine = std::make_unique<velq::Engine>(std::move(parts));
    engine->setKeptDays(0);
    return engine;
}

//! The devices take turns by the week; the last hour is the current one.
velq::HourAmounts tenYears(std::int64_t now)
{
    constexpr int kHoursPerWeek = 168;
    velq::HourAmounts hours;
    std::int64_t start = velq::hourStart(now) - (kRows - 1) * velq::kHourSeconds;
    for (int i = 0; i < kRows; ++i, start += velq::kHourSeconds) {
        const char *const device = i / kHoursPerWeek % 2 ? "sim:1" : "hw:1";
        hours[{ start, localDay(start), device, 0 }] = { 1000 + i, 100, 3600000, 3600000 };
    }
    return hours;
}

QTemporaryDir *g_folder = nullptr;
velq::Engine *g_engine = nullptr;

//! Fails a benchmark whose answer takes a millisecond or more.
class Limit
{
public:
    explicit Limit(benchmark::State &state)
        : m_state(state)
        , m_begin(std::chrono::steady_clock::now())
    {
    }
    void check() const
    {
        const auto passed = std::chrono::steady_clock::now() - m_begin;
        if (passed > std::chrono::milliseconds(1) * m_state.iterations())
            m_state.SkipWithError("above a millisecond");
    }

private:
    benchmark::State &m_state;
    const std::chrono::steady_clock::time_point m_begin;
};

void askReport(benchmark::State &state, int kind)
{
    velq::Report report;
    const Limit limit(state);
    for (auto _ : state) {
        if (!g_engine->report(kind, 0, report))
            state.SkipWithError("no report");
        benchmark::DoNotOptimize(report);
    }
    limit.check();
    state.counters["download"] = double(report.download);
}

void askHistory(benchmark::State &state, std::uint64_t key)
{
    velq::Report report;
    const Limit limit(state);
    for (auto _ : state) {
        if (!g_engine->history(key, report))
            state.SkipWithError("no history");
        benchmark::DoNotOptimize(report);
    }
    limit.check();
    state.counters["download"] = double(report.download);
}

void sumHours(benchmark::State &state, const velq::Span &span)
{
    velq::Database database;
    velq::Statement statement;
    const std::string path = g_folder->filePath("velq.db").toStdString();
    if (database.open(path, SQLITE_OPEN_READONLY) != SQLITE_OK
        || statement.prepare(database,
                             "SELECT sum(download), sum(upload), sum(any_ms) FROM hour"
                             " WHERE start >= ?1 AND start < ?2 AND use % 2 = 0")
            != SQLITE_OK) {
        state.SkipWithError("no store");
        return;
    }
    std::int64_t download = 0;
    for (auto _ : state) {
        statement.bind(1, span.from);
        statement.bind(2, span.to);
        if (statement.step() != SQLITE_ROW)
            state.SkipWithError("not summed");
        download = statement.integer(0);
        statement.reset();
    }
    state.counters["download"] = double(download);
}

velq::Span spanOf(velq::Period period)
{
    return velq::periodSpan(period, wallSeconds(), velq::TimeZone::system());
}

void daily(benchmark::State &state)
{
    askReport(state, kDaily);
}
void weekly(benchmark::State &state)
{
    askReport(state, kWeekly);
}
void monthly(benchmark::State &state)
{
    askReport(state, kMonthly);
}
void yearly(benchmark::State &state)
{
    askReport(state, kYearly);
}
void allYears(benchmark::State &state)
{
    askHistory(state, 0);
}
//! From the middle of a day on, so that hours are read as well.
void halfOfTheYears(benchmark::State &state)
{
    const std::int64_t now = velq::hourStart(wallSeconds());
    askHistory(state, static_cast<std::uint64_t>(now - kRows / 2 * velq::kHourSeconds));
}

void sqlDaily(benchmark::State &state)
{
    sumHours(state, spanOf(velq::Period::Day));
}
void sqlWeekly(benchmark::State &state)
{
    sumHours(state, spanOf(velq::Period::Week));
}
void sqlMonthly(benchmark::State &state)
{
    sumHours(state, spanOf(velq::Period::Month));
}
void sqlYearly(benchmark::State &state)
{
    sumHours(state, spanOf(velq::Period::Year));
}
void sqlAllYears(benchmark::State &state)
{
    sumHours(state, { 0, std::numeric_limits<std::int64_t>::max() });
}
void sqlHalfOfTheYears(benchmark::State &state)
{
    const std::int64_t now = velq::hourStart(wallSeconds());
    sumHours(state,
             { now - kRows / 2 * velq::kHourSeconds, std::numeric_limits<std::int64_t>::max() });
}

//! Only the first question after opening; that of ten years, the longest.
void firstReport(benchmark::State &state)
{
    for (auto _ : state) {
        const auto engine = openEngine(g_folder->path().toStdString());
        velq::Report report;
        const auto begin = std::chrono::steady_clock::now();
        if (!engine->history(0, report))
            state.SkipWithError("no history");
        const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - begin;
        state.SetIterationTime(passed.count());
        if (passed > std::chrono::milliseconds(1))
            state.SkipWithError("above a millisecond");
    }
}

void opening(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(openEngine(g_folder->path().toStdString()));
}

BENCHMARK(opening)->Unit(benchmark::kMillisecond);
BENCHMARK(firstReport)->UseManualTime()->Iterations(20)->Unit(benchmark::kMicrosecond);
BENCHMARK(daily)->Unit(benchmark::kMicrosecond);
BENCHMARK(sqlDaily)->Unit(benchmark::kMicrosecond);
BENCHMARK(weekly)->Unit(benchmark::kMicrosecond);
BENCHMARK(sqlWeekly)->Unit(benchmark::kMicrosecond);
BENCHMARK(monthly)->Unit(benchmark::kMicrosecond);
BENCHMARK(sqlMonthly)->Unit(benchmark::kMicrosecond);
BENCHMARK(yearly)->Unit(benchmark::kMicrosecond);
BENCHMARK(sqlYearly)->Unit(benchmark::kMicrosecond);
BENCHMARK(halfOfTheYears)->Unit(benchmark::kMicrosecond);
BENCHMARK(sqlHalfOfTheYears)->Unit(benchmark::kMicrosecond);
BENCHMARK(allYears)->Unit(benchmark::kMicrosecond);
BENCHMARK(sqlAllYears)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char **argv)
{
    (void)setenv("TZ", "UTC", 1);
    QTemporaryDir folder;
    g_folder = &folder;
    {
        const auto engine = openEngine(folder.path().toStdString());
        engine->ledger().seed(tenYears(wallSeconds()));
        if (!engine->ledger().problem().empty()) {
            std::fprintf(stderr, "%s\n", engine->ledger().problem().c_str());
            return 1;
        }
        engine->close();
    }
    // The one that answers leaves the store to those that are opened and measured.
    QTemporaryDir own;
    const auto engine = openEngine(own.path().toStdString());
    engine->ledger().seed(tenYears(wallSeconds()));
    g_engine = engine.get();
    return runBenchmarks(
        argc, argv,
        { { "ten years: SQL / report", "sqlAllYears", "allYears", 50, 0 },
          { "five years: SQL / report", "sqlHalfOfTheYears", "halfOfTheYears", 50, 0 },
          { "year: SQL / report", "sqlYearly", "yearly", 50, 0 },
          { "month: SQL / report", "sqlMonthly", "monthly", 50, 0 },
          { "week: SQL / report", "sqlWeekly", "weekly", 50, 0 },
          { "day: SQL / report", "sqlDaily", "daily", 50, 0 } });
}
