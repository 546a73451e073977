#include "engine/DemoSource.h"

#include <sys/socket.h>

#include <utility>

namespace velq {

namespace {

constexpr std::int64_t kNsPerSecond = 1000000000;
constexpr std::int64_t kPauseNs = 15 * kNsPerSecond;
constexpr int kDemoIndex = 1;
constexpr std::uint64_t kEarlierDownload = 73400320; // the link has carried traffic before
constexpr std::uint64_t kEarlierUpload = 9437184;

//! 0 to 999, scattered, the same for the same number.
std::uint64_t scatter(std::uint64_t number)
{
    number = (number ^ (number >> 30)) * 0xbf58476d1ce4e5b9U;
    number = (number ^ (number >> 27)) * 0x94d049bb133111ebU;
    return (number ^ (number >> 31)) % 1000;
}

//! The share of a second's bytes that has flowed after \a ns of it.
std::uint64_t part(std::uint64_t bytes, std::int64_t ns)
{
    return bytes * static_cast<std::uint64_t>(ns) / static_cast<std::uint64_t>(kNsPerSecond);
}

} // namespace

DemoSpeed demoSpeed(std::int64_t second)
{
    // A minute in phases: reading pages, a film, an upload, a large download, little.
    struct Phase
    {
        std::int64_t until = 0;
        DemoSpeed base;
    };
    constexpr Phase kPhases[] = { { 8, { 180000, 30000 } },
                                  { 26, { 1250000, 60000 } },
                                  { 36, { 140000, 640000 } },
                                  { 52, { 3900000, 110000 } },
                                  { 60, { 24000, 6000 } } };
    constexpr std::int64_t kMinute = 60;
    constexpr std::uint64_t kScale = 1000;
    const auto number = static_cast<std::uint64_t>(second);
    const std::uint64_t swing = kScale * 6 / 10 + scatter(number * 2) * 8 / 10; // 0.6 to 1.4
    const std::uint64_t otherSwing = kScale * 6 / 10 + scatter(number * 2 + 1) * 8 / 10;
    for (const Phase &phase : kPhases) {
        if (second % kMinute < phase.until)
            return { phase.base.download * swing / kScale,
                     phase.base.upload * otherSwing / kScale };
    }
    return {};
}

DemoSource::DemoSource(Clock clock)
    : m_clock(std::move(clock))
    , m_beganNs(m_clock.bootNs())
    , m_download(kEarlierDownload)
    , m_upload(kEarlierUpload)
{
}

std::int64_t DemoSource::scriptNs(std::int64_t nowNs)
{
    if (nowNs < m_upAgainNs)
        return m_pausedNs;
    if (m_upAgainNs > 0)
        m_beganNs = m_upAgainNs - m_pausedNs;
    m_upAgainNs = 0;
    return nowNs - m_beganNs;
}

void DemoSource::noteDisconnect(int)
{
    const std::int64_t now = m_clock.bootNs();
    m_pausedNs = scriptNs(now);
    m_upAgainNs = now + kPauseNs;
}

void DemoSource::noteConnect()
{
    const std::int64_t now = m_clock.bootNs();
    if (now < m_upAgainNs)
        m_upAgainNs = now;
}

LinkNews DemoSource::read()
{
    const std::int64_t now = m_clock.bootNs();
    const std::int64_t elapsed = scriptNs(now);
    constexpr std::int64_t kLongestCatchUp = 3600; // after a sleep the script goes on, not back
    const std::int64_t second = elapsed / kNsPerSecond;
    if (second - m_second > kLongestCatchUp)
        m_second = second - kLongestCatchUp;
    for (; m_second < second; ++m_second) {
        const DemoSpeed bytes = demoSpeed(m_second);
        m_download += bytes.download;
        m_upload += bytes.upload;
    }
    const DemoSpeed running = demoSpeed(m_second);
    LinkStep step;
    step.link.index = kDemoIndex;
    step.link.instance = 1;
    step.link.name = "demo0";
    step.link.up = now >= m_upAgainNs;
    step.counters = { m_download + part(running.download, elapsed % kNsPerSecond),
                      m_upload + part(running.upload, elapsed % kNsPerSecond) };
    if (!m_told)
        step.kind = LinkStep::Kind::Appeared;
    else if (m_up != step.link.up)
        step.kind = LinkStep::Kind::Changed;
    m_told = true;
    m_up = step.link.up;
    return { true, { step }, { { AF_INET, kDemoIndex, 0 } } };
}

} // namespace velq
