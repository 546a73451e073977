#pragma once

#include "counters/LinkSource.h"
#include "engine/Clock.h"

namespace velq {

/*!
 * A scripted connection "demo0": the same lively speeds in every run. Disconnected, it comes up
 * again after 15 seconds and goes on where it was.
 */
class DemoSource : public LinkSource
{
public:
    explicit DemoSource(Clock clock);

    LinkNews read() override;
    void noteDisconnect(int index) override;
    void noteConnect() override;

private:
    [[nodiscard]] std::int64_t scriptNs(std::int64_t nowNs);

    const Clock m_clock;
    std::int64_t m_beganNs; // when the script began, pauses not counted
    std::int64_t m_pausedNs = 0; // the script's time while it is down
    std::int64_t m_upAgainNs = 0;
    bool m_told = false; // that the link is there
    bool m_up = false; // what was told last
    std::int64_t m_second = 0; // whole seconds that are in the counters
    std::uint64_t m_download = 0;
    std::uint64_t m_upload = 0;
};

/*! Bytes per second of the script in its \a second. */
struct DemoSpeed
{
    std::uint64_t download = 0;
    std::uint64_t upload = 0;
};
[[nodiscard]] DemoSpeed demoSpeed(std::int64_t second);

} // namespace velq
