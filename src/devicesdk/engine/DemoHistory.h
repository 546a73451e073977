#pragma once

#include "store/Changes.h"

#include <cstdint>
#include <functional>

namespace velq {

constexpr const char *kDemoDevice = "name:demo0";

//! When the demo's past began.
[[nodiscard]] std::int64_t demoBegan(std::int64_t now);
/*! A plausible past for the demo: more than a year of usage up to \a now, the same for the same
 * day. */
[[nodiscard]] HourAmounts demoHistory(std::int64_t now,
                                      const std::function<Day(std::int64_t)> &dayOf);

} // namespace velq
