#include "engine/Engine.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace velq {

namespace {

constexpr int kEventStatistics = 8000;
constexpr int kKindLive = 0;
constexpr int kKindLastReset = 2;

bool periodOf(int kind, Period &period)
{
    switch (kind) {
    case 1:
        period = Period::Day;
        return true;
    case 3:
        period = Period::Week;
        return true;
    case 4:
        period = Period::Month;
        return true;
    case 5:
        period = Period::Year;
        return true;
    default:
        return false;
    }
}

Report reportOf(const Totals &totals)
{
    Report report;
    report.download = totals.download;
    report.upload = totals.upload;
    report.seconds = toSeconds(totals.timeMs);
    return report;
}

} // namespace

Engine::Engine(std::unique_ptr<CounterSource> source, StoreOptions store, Clock clock)
    : m_clock(std::move(clock))
    , m_source(std::move(source))
    , m_ledger(std::move(store), std::max<std::int64_t>(0, m_clock.wallSeconds()))
{
}

std::int64_t Engine::now() const
{
    return std::max<std::int64_t>(0, m_clock.wallSeconds()); // a clock before 1970 is not set yet
}

void Engine::sample()
{
    const std::lock_guard<std::mutex> guard(m_sampleMutex);
    sampleLocked();
}

void Engine::noteDisconnect()
{
    const std::lock_guard<std::mutex> guard(m_sampleMutex);
    m_source->noteDisconnect();
    sampleLocked();
}

void Engine::sampleLocked()
{
    const ReadResult reading = m_source->readChosen();
    const std::int64_t nowNs = m_clock.bootNs();
    const int counted = m_tracker.index(); // changed by samples only
    const bool left = counted > 0 && reading.status != ReadStatus::Failed
        && (reading.status == ReadStatus::Absent || reading.link.index != counted);
    const ReadResult lastLook = left ? m_source->readIndex(counted) : ReadResult {};
    const std::lock_guard<std::mutex> guard(m_mutex);
    if (left)
        book(m_tracker.leave(lastLook));
    book(m_tracker.advance(reading, nowNs));
}

void Engine::book(const Booking &booking)
{
    m_ledger.book(booking.type, now(), booking.totals);
}

void Engine::tick()
{
    sample();
    if (--m_ticksToCommit <= 0) {
        m_ticksToCommit = kCommitSeconds;
        m_ledger.commit();
    }
    const LiveFigures figures = live();
    auto data = eventData(figures.connected, figures.type);
    m_callbacks.notify(kEventStatistics, data.data());
}

void Engine::close()
{
    m_ledger.close();
}

void Engine::abandon()
{
    m_ledger.abandon();
}

LiveFigures Engine::live() const
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    return m_tracker.live();
}

bool Engine::report(int kind, int type, Report &report)
{
    if (kind == kKindLive) {
        report = liveReport(type);
        return true;
    }
    if (kind == kKindLastReset) {
        report = {};
        report.lastReset = toTime32(m_ledger.lastReset(type));
        return true;
    }
    return periodReport(kind, type, report);
}

Report Engine::liveReport(int type) const
{
    const LiveFigures figures = live();
    Report report;
    if (!figures.connected || figures.type != type)
        return report;
    report.download = figures.download();
    report.upload = figures.upload();
    report.downloadSpeed = figures.downloadSpeed;
    report.uploadSpeed = figures.uploadSpeed;
    report.seconds = toSeconds(static_cast<std::uint64_t>(figures.timeMs));
    return report;
}

bool Engine::periodReport(int kind, int type, Report &report)
{
    Period period {};
    Totals totals;
    if (!periodOf(kind, period)
        || !m_ledger.totals(type, periodSpan(period, now(), TimeZone::system(), m_periodStart),
                            totals))
        return false;
    report = reportOf(totals);
    return true;
}

bool Engine::history(std::uint64_t key, Report &report)
{
    constexpr std::uint64_t kHour = 3600;
    constexpr auto kLatest = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    Span span;
    span.from = static_cast<std::int64_t>(std::min(key - key % kHour, kLatest));
    span.to = bucketStart(now()) + kBucketSeconds;
    Totals all;
    for (int type = 0; type < kConnectTypes; ++type) {
        Totals totals;
        if (!m_ledger.totals(type, span, totals))
            return false;
        all.add(totals);
    }
    report = reportOf(all);
    return true;
}

bool Engine::reset(int type)
{
    // Under the lock of the samples: no second is booked between the two halves.
    const std::lock_guard<std::mutex> guard(m_mutex);
    if (!m_ledger.reset(type, now()))
        return false;
    m_tracker.restart(type);
    return true;
}

} // namespace velq
