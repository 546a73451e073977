#pragma once

#include "store/Bucket.h"

namespace velq {

/*! A plausible past for the demo: more than a year of usage up to \a now, the same for the same
 * day. */
[[nodiscard]] Changes demoHistory(std::int64_t now);

} // namespace velq
