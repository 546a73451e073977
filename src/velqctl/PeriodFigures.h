#pragma once

#include <array>

namespace velqctl {

constexpr int kDaily = 1;
constexpr int kMonthly = 4;
constexpr std::array<int, 4> kPeriodKinds { kDaily, 3, kMonthly, 5 };
constexpr int kConnectTypes = 2;

/*! What a connect type has used in the current period of a kind. */
struct PeriodFigures
{
    int kind = kDaily;
    int type = 0;
    int from = 0; //!< days since 1970-01-01
    int to = 0; //!< without it
    unsigned long long download = 0; //!< bytes
    unsigned long long upload = 0;
    long long seconds = 0; //!< connected
};

//! The fields of the SDK's report of 576 bytes.
struct ReportFields
{
    unsigned long long download = 0;
    unsigned long long upload = 0;
    long long seconds = 0;
    long long lastReset = 0; //!< seconds since 1970-01-01 UTC
};
[[nodiscard]] ReportFields decodeReport(const unsigned char *report);

} // namespace velqctl
