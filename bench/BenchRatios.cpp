#include "BenchRatios.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <map>

namespace {

// A run says whether it ended early: until version 1.7 of Google Benchmark, and later.
template <typename Run>
auto endedEarly(const Run &run) -> decltype(bool(run.error_occurred))
{
    return run.error_occurred;
}
template <typename Run>
auto endedEarly(const Run &run) -> decltype(bool(run.skipped))
{
    return run.skipped != 0;
}

//! The console's report, which also keeps every run's time: CPU time, or of a benchmark that asks
//! for it the wall-clock time.
class RatioReporter : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run> &runs) override
    {
        for (const Run &run : runs) {
            if (run.run_type != Run::RT_Iteration)
                continue;
            if (endedEarly(run))
                m_failed = true;
            else if (run.run_name.time_type == "real_time")
                m_times[run.run_name.function_name].push_back(run.GetAdjustedRealTime());
            else
                m_times[run.run_name.function_name].push_back(run.GetAdjustedCPUTime());
        }
        ConsoleReporter::ReportRuns(runs);
    }

    [[nodiscard]] bool hasFailed() const
    {
        return m_failed;
    }

    [[nodiscard]] double median(const std::string &name) const
    {
        const auto found = m_times.find(name);
        if (found == m_times.end() || found->second.empty())
            return 0;
        std::vector<double> times = found->second;
        std::sort(times.begin(), times.end());
        return times[times.size() / 2];
    }

private:
    std::map<std::string, std::vector<double>> m_times;
    bool m_failed = false;
};

bool report(const RatioReporter &reporter, const BenchRatio &ratio)
{
    const double slower = reporter.median(ratio.slower);
    const double faster = reporter.median(ratio.faster);
    if (slower <= 0 || faster <= 0) {
        std::printf("not run: %s\n", ratio.what.c_str());
        return true;
    }
    const double value = slower / faster;
    if (ratio.atLeast <= 0 && ratio.atMost <= 0) {
        std::printf("%-58s %8.2f\n", ratio.what.c_str(), value);
        return true;
    }
    const bool met = (ratio.atLeast <= 0 || value >= ratio.atLeast)
        && (ratio.atMost <= 0 || value <= ratio.atMost);
    std::printf("%-58s %8.2f  (target: at %s %.1f)  %s\n", ratio.what.c_str(), value,
                ratio.atLeast > 0 ? "least" : "most",
                ratio.atLeast > 0 ? ratio.atLeast : ratio.atMost, met ? "met" : "MISSED");
    return met;
}

} // namespace

int runBenchmarks(int argc, char **argv, const std::vector<BenchRatio> &ratios)
{
    // Several runs of each, their order mixed, so that a slow moment does not hit one benchmark
    // alone.
    std::vector<char *> arguments(argv, argv + argc);
    char repetitions[] = "--benchmark_repetitions=9";
    char interleaving[] = "--benchmark_enable_random_interleaving=true";
    char minimumTime[] = "--benchmark_min_time=0.05";
    arguments.insert(arguments.begin() + 1, { repetitions, interleaving, minimumTime });
    int count = int(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
        return 2;
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);

    std::printf("\nMedian times as ratios:\n");
    bool allMet = !reporter.hasFailed();
    for (const BenchRatio &ratio : ratios)
        allMet = report(reporter, ratio) && allMet;
    return allMet ? 0 : 1;
}
