#pragma once

#include "PeriodFigures.h"

#include <host/velq_extension.h>

#include <array>
#include <string>
#include <vector>

namespace velqctl {

/*! What a monitoring system is told. */
struct Metrics
{
    std::vector<VELQ_Usage> days; //!< of the whole books
    std::vector<PeriodFigures> periods;
    std::array<long long, kConnectTypes> lastResets {}; //!< seconds since 1970; 0: not known
    bool connected = false;
    bool storeHasProblem = false;
};

//! A whole exposition, with its end mark.
[[nodiscard]] std::string openMetrics(const Metrics &metrics);
//! \a text as it stands between a label's quotes.
[[nodiscard]] std::string labelValue(const std::string &text);

} // namespace velqctl
