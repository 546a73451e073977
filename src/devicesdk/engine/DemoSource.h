#pragma once

#include "counters/CounterSource.h"
#include "engine/Clock.h"

namespace velq {

/*! A scripted connection "demo0": the same lively speeds in every run. */
class DemoSource : public CounterSource
{
public:
    explicit DemoSource(Clock clock);

    ReadResult readChosen() override;
    ReadResult readIndex(int index) override;

private:
    const Clock m_clock;
    const std::int64_t m_beganNs;
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
