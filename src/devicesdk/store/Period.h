#pragma once

#include "store/Bucket.h"

namespace velq {

enum class Period { Day, Week, Month, Year };

/*!
 * The period that holds \a now, in local time: from its first instant to that of the next one.
 * Weeks begin on Monday. Where a change of the clocks skips midnight, the day begins with its first
 * instant that exists; where midnight comes twice, with the first one.
 */
[[nodiscard]] Span periodSpan(Period period, std::int64_t now);

//! The first instant of the period that holds \a now.
[[nodiscard]] std::int64_t periodStart(Period period, std::int64_t now);

} // namespace velq
