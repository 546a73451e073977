// Looks at fifty links that all count, without a kernel and a disk; run by
// tst_sampleinstructions, which counts the instructions of measuredLooks().

#include "engine/Engine.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>

namespace {

constexpr int kLinks = 50;
constexpr int kBytes = 1000; // on each link and look

class CountingLinks : public velq::LinkSource
{
public:
    velq::LinkNews read() override
    {
        velq::LinkNews news;
        news.valid = true;
        news.routes.push_back({ 2, 1, 0 });
        const bool first = m_bytes == 0;
        m_bytes += kBytes;
        news.steps.reserve(kLinks);
        for (int index = 1; index <= kLinks; ++index) {
            velq::LinkStep step;
            step.kind = first ? velq::LinkStep::Kind::Appeared : velq::LinkStep::Kind::Counted;
            step.link.index = index;
            step.link.instance = static_cast<std::uint64_t>(index);
            if (first) {
                step.link.name = "eth" + std::to_string(index);
                step.link.up = true;
            }
            step.counters = { m_bytes, m_bytes };
            news.steps.push_back(std::move(step));
        }
        return news;
    }
    void noteDisconnect(int) override { }

private:
    std::uint64_t m_bytes = 0;
};

std::int64_t g_seconds = 1930478400;

std::unique_ptr<velq::Engine> makeEngine()
{
    velq::EngineParts parts;
    parts.clock.wallSeconds = [] { return g_seconds; };
    parts.clock.bootNs = [] { return (g_seconds - 1930478000) * 1000000000; };
    parts.boot = "boot";
    parts.store.inMemory = true;
    parts.source = std::make_unique<CountingLinks>();
    return std::make_unique<velq::Engine>(std::move(parts));
}

} // namespace

//! Not in an unnamed namespace and never inlined, so that callgrind finds it.
extern "C" __attribute__((noinline)) void measuredLooks(velq::Engine &engine, int count)
{
    for (int i = 0; i < count; ++i, ++g_seconds) {
        engine.sample();
        if (i % velq::kCommitSeconds == 0)
            (void)engine.ledger(); // books what waits, as each commit does
    }
}

int main(int argc, char **argv)
{
    const int count = argc > 1 ? std::atoi(argv[1]) : 0;
    const auto engine = makeEngine();
    for (int i = 0; i < 10; ++i, ++g_seconds)
        engine->sample();
    const auto before = engine->live().download();
    measuredLooks(*engine, count);
    const bool counted
        = engine->live().download() - before == static_cast<std::uint64_t>(count) * kBytes;
    std::printf("GCC %d\n", __GNUC__);
    return counted ? 0 : 1;
}
