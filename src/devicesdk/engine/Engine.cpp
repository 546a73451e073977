#include "engine/Engine.h"

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <optional>
#include <utility>

namespace velq {

namespace {

constexpr int kEventStatistics = 8000;
constexpr int kKindLive = 0;
constexpr int kKindLastReset = 2;

constexpr std::int64_t kNsPerSecond = 1000000000;
constexpr const char *kDeviceSetting = "device";

std::optional<Period> periodOfKind(int kind)
{
    switch (kind) {
    case 1:
        return Period::Day;
    case 3:
        return Period::Week;
    case 4:
        return Period::Month;
    case 5:
        return Period::Year;
    default:
        return std::nullopt;
    }
}

//! A correction may be larger than what has been counted so far.
std::uint64_t unsignedAmount(std::int64_t amount)
{
    return static_cast<std::uint64_t>(std::max<std::int64_t>(0, amount));
}

Report reportOf(const Amounts &amounts)
{
    Report report;
    report.download = unsignedAmount(amounts.download);
    report.upload = unsignedAmount(amounts.upload);
    report.seconds = toSeconds(unsignedAmount(amounts.anyMs));
    return report;
}

std::int64_t wallSeconds(const Clock &clock)
{
    return std::max<std::int64_t>(0, clock.wallSeconds()); // before 1970 it is not set yet
}

LedgerOptions ledgerOptions(const EngineParts &parts, LocalDays &days)
{
    LedgerOptions options;
    options.store = parts.store;
    options.boot = parts.boot;
    options.dayOf = [&days](std::int64_t second) { return days.dayOf(second); };
    options.begunAt = parts.begunAt.value_or(wallSeconds(parts.clock));
    return options;
}

} // namespace

Engine::Engine(EngineParts parts)
    : m_clock(parts.clock)
    , m_source(std::move(parts.source))
    , m_facts(std::move(parts.facts))
    , m_ledger(ledgerOptions(parts, m_localDays))
    , m_accountant(parts.boot, m_ledger.marks())
    , m_takeovers(m_ledger.takeovers())
    , m_renewals(m_ledger.renewals())
{
    m_accountant.use(usedDevice());
}

std::int64_t Engine::now() const
{
    return wallSeconds(m_clock);
}

Moment Engine::moment() const
{
    return { now(), m_clock.bootNs() / kNsPerSecond };
}

void Engine::sample()
{
    const std::lock_guard<std::mutex> guard(m_sampleMutex);
    sampleLocked();
}

void Engine::noteDisconnect()
{
    const std::lock_guard<std::mutex> guard(m_sampleMutex);
    int chosen = 0;
    {
        const std::lock_guard<std::mutex> accounts(m_mutex);
        chosen = m_accountant.chosenIndex();
    }
    m_source->noteDisconnect(chosen);
    sampleLocked();
}

void Engine::noteConnect()
{
    const std::lock_guard<std::mutex> guard(m_sampleMutex);
    m_source->noteConnect();
    sampleLocked();
}

std::string Engine::interfaceToConnect()
{
    std::string used;
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        used = m_named.empty() ? m_ledger.setting(kDeviceSetting) : m_named;
    }
    for (const PresentDevice &device : presentDevices()) {
        if (used.empty() ? device.chosen : device.note.key == used)
            return device.note.interface;
    }
    std::vector<StoredDevice> devices;
    (void)m_ledger.devices(devices); // the latest one comes last
    for (auto device = devices.rbegin(); device != devices.rend(); ++device) {
        if (!device->note.interface.empty() && (used.empty() || device->note.key == used))
            return device->note.interface;
    }
    return used; // the name of an interface, perhaps one that is not there yet
}

void Engine::sampleLocked()
{
    if (m_unfinished && !beginAnew())
        return;
    m_unfinished = true;
    const LinkNews news = m_source->read();
    followStore(m_ledger.takeovers());
    take(news);
    m_unfinished = false;
}

void Engine::take(const LinkNews &news)
{
    const auto facts = m_facts ? m_facts() : nullptr;
    const std::int64_t bootNs = m_clock.bootNs();
    const Moment moment { now(), bootNs / kNsPerSecond };
    const std::lock_guard<std::mutex> guard(m_mutex);
    const bool elsewhere = isElsewhere(moment);
    if (elsewhere)
        settleLocked();
    const BookingBatch batch = m_accountant.advance(news, facts, bootNs, elsewhere);
    m_looked = moment;
    if (elsewhere || !batch.isEmpty())
        m_ledger.book(batch, moment, m_takeovers);
}

bool Engine::isElsewhere(const Moment &moment) const
{
    if (!m_looked)
        return true;
    constexpr std::int64_t kStepSeconds = 2; // both clocks are cut to seconds
    const std::int64_t step = (moment.wallSeconds - m_looked->wallSeconds)
        - (moment.bootSeconds - m_looked->bootSeconds);
    return std::abs(step) > kStepSeconds
        || hourStart(moment.wallSeconds) != hourStart(m_looked->wallSeconds)
        || m_localDays.dayOf(moment.wallSeconds) != m_localDays.dayOf(m_looked->wallSeconds);
}

void Engine::settle()
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    settleLocked();
}

void Engine::settleLocked()
{
    try {
        if (m_looked)
            m_ledger.book(m_accountant.settle(), *m_looked, m_takeovers);
    } catch (...) { // no memory
        m_unfinished = true;
        throw;
    }
}

Ledger &Engine::ledger()
{
    settle();
    return m_ledger;
}

bool Engine::beginAnew()
{
    m_ledger.commit();
    if (m_ledger.isUrgent() && !m_ledger.isShared())
        return false; // its marks are not where the books end
    std::vector<LinkMark> marks = m_ledger.marks();
    const std::lock_guard<std::mutex> guard(m_mutex);
    m_accountant.goOnFrom(std::move(marks));
    return true;
}

void Engine::followStore(std::uint64_t takeovers)
{
    if (const int renewals = m_ledger.renewals(); renewals != m_renewals) {
        const std::lock_guard<std::mutex> guard(m_mutex);
        m_renewals = renewals;
        m_accountant.tellAgain();
    }
    const bool tookOver = takeovers != m_takeovers;
    std::vector<LinkMark> late = m_ledger.takeLateMarks();
    if (!tookOver && late.empty())
        return;
    std::vector<LinkMark> stored = tookOver ? m_ledger.marks() : std::move(late);
    const std::lock_guard<std::mutex> guard(m_mutex);
    settleLocked();
    m_takeovers = takeovers;
    if (tookOver)
        m_accountant.goOnFrom(std::move(stored));
    else
        m_accountant.learn(std::move(stored));
    m_accountant.use(m_named.empty() ? m_ledger.setting(kDeviceSetting) : m_named);
}

void Engine::tick()
{
    try {
        sample();
        if (++m_ticks % kCommitSeconds == 0)
            commitIfDue();
    } catch (const std::exception &) { // no memory: the next look begins anew
    }
    auto data = liveEvent();
    m_callbacks.notify(kEventStatistics, data.data());
}

void Engine::commitIfDue()
{
    settle();
    if (m_ticks % kZoneSeconds == 0)
        m_localDays.follow();
    thinOut();
    if (m_ticks - m_commitTick < kLongestWaitSeconds && !m_ledger.isUrgent())
        return;
    m_commitTick = m_ticks;
    m_ledger.commit();
}

void Engine::thinOut()
{
    const std::int64_t second = now();
    const Day today = m_localDays.dayOf(second);
    if (today == m_thinnedOut)
        return;
    m_thinnedOut = today;
    if (const int days = m_keptDays; days > 0)
        m_ledger.thinOut(days, second);
}

void Engine::close()
{
    settle();
    m_ledger.close();
}

void Engine::abandon()
{
    m_ledger.abandon();
}

LiveFigures Engine::live() const
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    return m_accountant.live();
}

std::array<char, kEventSize> Engine::liveEvent() const
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    return eventData(m_accountant.live().connected, m_accountant.live().type);
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
    const std::lock_guard<std::mutex> guard(m_mutex);
    const LiveFigures &figures = m_accountant.live();
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

DaySpan Engine::periodOf(int kind) const
{
    const auto period = periodOfKind(kind);
    return period ? periodDays(*period, m_localDays.dayOf(now()), m_periodStart) : DaySpan {};
}

bool Engine::periodReport(int kind, int type, Report &report)
{
    if (!periodOfKind(kind))
        return false;
    settle();
    report = reportOf(m_ledger.totals(type, periodOf(kind)));
    return true;
}

bool Engine::history(std::uint64_t key, Report &report)
{
    const auto second = std::min(key, static_cast<std::uint64_t>(kLatestSecond));
    Amounts amounts;
    settle();
    if (!m_ledger.totalsSince(hourStart(static_cast<std::int64_t>(second)), amounts))
        return false;
    report = reportOf(amounts);
    return true;
}

bool Engine::reset(int type)
{
    // Under the lock of the samples: no second is booked between the two halves.
    const std::lock_guard<std::mutex> guard(m_mutex);
    settleLocked();
    if (!m_ledger.reset(type, moment()))
        return false;
    m_accountant.restart(type);
    return true;
}

bool Engine::correct(int kind, int type, std::int64_t download, std::int64_t upload)
{
    if (!periodOfKind(kind))
        return false;
    const std::lock_guard<std::mutex> guard(m_mutex);
    if (m_ledger.isShared())
        return false;
    settleLocked();
    Amounts counted = m_ledger.totals(type, periodOf(kind));
    counted.timeMs = counted.anyMs = 0;
    BookingBatch batch;
    Booking booking { kOperatorDevice, useKind(type, false), { download, upload, 0, 0 } };
    booking.amounts.subtract(counted);
    Reason reason;
    reason.kind = ReasonKind::Corrected;
    reason.device = kOperatorDevice;
    reason.use = booking.use;
    reason.download = booking.amounts.download;
    reason.upload = booking.amounts.upload;
    batch.bookings.push_back(std::move(booking));
    batch.reasons.push_back(std::move(reason));
    m_ledger.book(batch, moment());
    return true;
}

std::string Engine::usedDevice()
{
    return m_ledger.setting(kDeviceSetting);
}

bool Engine::useDevice(const std::string &device)
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    if (!m_ledger.setSetting(kDeviceSetting, device))
        return false;
    settleLocked();
    if (m_named.empty())
        m_accountant.use(device);
    return true;
}

void Engine::nameDevice(const std::string &device)
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    settleLocked();
    m_named = device;
    m_accountant.use(device.empty() ? m_ledger.setting(kDeviceSetting) : device);
}

std::vector<PresentDevice> Engine::presentDevices() const
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    return m_accountant.present();
}

} // namespace velq
