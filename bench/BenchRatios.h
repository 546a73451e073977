#pragma once
// Runs the registered benchmarks several times in one run and compares their median CPU times,
// or the wall-clock times of those with UseRealTime().

#include <string>
#include <vector>

//! One claim: the \a slower benchmark takes at least \a atLeast times, or at most \a atMost times,
//! the time of the \a faster one. A bound of 0 is none; without any the ratio is only reported.
struct BenchRatio
{
    std::string what;
    std::string slower;
    std::string faster;
    double atLeast;
    double atMost;
};

//! Runs everything, prints the ratios with their targets, and returns 0 when all are met and no
//! benchmark stopped with an error.
[[nodiscard]] int runBenchmarks(int argc, char **argv, const std::vector<BenchRatio> &ratios);
