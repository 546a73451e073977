// One look at the counters of all links, with one and with fifty interfaces, beside other ways to
// the same counters: the kernel's list of links, and its table as text. CPU times, the kernel's
// part included. Needs network namespaces.

#include <QByteArray>
#include <QFile>

#include <benchmark/benchmark.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <memory>

#include "BenchRatios.h"
#include "counters/LinkMessage.h"
#include "counters/LinkMonitor.h"
#include "counters/MessageQueue.h"
#include "counters/MessageStream.h"
#include "NetworkPair.h"

namespace {

constexpr int kPairs = 25;

//! The ways to the counters of one namespace, made in it; their handles stay there.
struct Ways
{
    velq::LinkMonitor monitor;
    velq::MessageStream list { std::make_unique<velq::KernelQueue>(0),
                               [](const void *, std::size_t) {} };
    QFile table { QStringLiteral("/proc/thread-self/net/dev") };

    bool open()
    {
        return table.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }
};

std::unique_ptr<Ways> g_few; // one interface
std::unique_ptr<Ways> g_many; // fifty

void readMonitor(benchmark::State &state, Ways &ways)
{
    std::size_t steps = 0;
    for (auto _ : state) {
        const velq::LinkNews news = ways.monitor.read();
        if (!news.valid)
            state.SkipWithError("no valid news");
        steps = news.steps.size();
    }
    state.counters["links"] = double(steps);
}

void readList(benchmark::State &state, Ways &ways)
{
    struct
    {
        nlmsghdr header;
        ifinfomsg body;
    } request {};
    request.header.nlmsg_len = sizeof request;
    request.header.nlmsg_type = RTM_GETLINK;
    request.header.nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
    int links = 0;
    for (auto _ : state) {
        links = 0;
        const auto answer
            = ways.list.ask(&request.header, [&](const void *message, std::size_t size) {
                  links += velq::parseLinkMessage(message, size) ? 1 : 0;
              });
        if (answer.status != velq::MessageStream::Answer::Status::Whole)
            state.SkipWithError("not listed");
    }
    state.counters["links"] = links;
}

void readTable(benchmark::State &state, Ways &ways)
{
    int lines = 0;
    for (auto _ : state) {
        if (!ways.table.seek(0))
            state.SkipWithError("no table");
        const QByteArray text = ways.table.readAll();
        lines = 0;
        for (const char *at = text.constData(); (at = std::strchr(at, ':')); ++at, ++lines) {
            unsigned long long download = 0;
            unsigned long long upload = 0;
            (void)std::sscanf(at + 1, "%llu %*u %*u %*u %*u %*u %*u %*u %llu", &download, &upload);
            benchmark::DoNotOptimize(download + upload);
        }
    }
    state.counters["links"] = lines;
}

void lookAtOne(benchmark::State &state)
{
    readMonitor(state, *g_few);
}
void lookAtFifty(benchmark::State &state)
{
    readMonitor(state, *g_many);
}
void listOfOne(benchmark::State &state)
{
    readList(state, *g_few);
}
void listOfFifty(benchmark::State &state)
{
    readList(state, *g_many);
}
void textOfOne(benchmark::State &state)
{
    readTable(state, *g_few);
}
void textOfFifty(benchmark::State &state)
{
    readTable(state, *g_many);
}

BENCHMARK(lookAtOne)->Unit(benchmark::kMicrosecond);
BENCHMARK(lookAtFifty)->Unit(benchmark::kMicrosecond);
BENCHMARK(listOfOne)->Unit(benchmark::kMicrosecond);
BENCHMARK(listOfFifty)->Unit(benchmark::kMicrosecond);
BENCHMARK(textOfOne)->Unit(benchmark::kMicrosecond);
BENCHMARK(textOfFifty)->Unit(benchmark::kMicrosecond);

bool makeLinks(const NetworkPair &network)
{
    if (!network.makeLink())
        return false;
    // Here is one end of this pair; there are its other end and the rest.
    for (int i = 1; i < kPairs; ++i) {
        const QString a = QStringLiteral("a%1").arg(i);
        const QString b = QStringLiteral("b%1").arg(i);
        if (!network.ipThere("link add " + a + " up type veth peer name " + b)
            || !network.ipThere("link set " + b + " up"))
            return false;
    }
    return network.ipThere("link add br0 up type bridge");
}

} // namespace

int main(int argc, char **argv)
{
    NetworkPair network;
    const QByteArray problem = network.enter();
    if (!problem.isEmpty() || !makeLinks(network)) {
        std::fprintf(stderr, "SKIP: no namespaces with links: %s\n", problem.constData());
        return 77;
    }
    g_few = std::make_unique<Ways>();
    const bool opened = g_few->open() && network.runThere([] {
        g_many = std::make_unique<Ways>();
        return g_many->open();
    });
    if (!opened)
        return 1;
    return runBenchmarks(
        argc, argv,
        { { "fifty links: list / one look", "listOfFifty", "lookAtFifty", 3, 0 },
          { "fifty links: table as text / one look", "textOfFifty", "lookAtFifty", 3, 0 },
          { "fifty links / one", "lookAtFifty", "lookAtOne", 0, 0 },
          { "one link: list / one look", "listOfOne", "lookAtOne", 0, 0 } });
}
