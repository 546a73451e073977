#pragma once
// Numbers of the statistics as texts.

#include <QString>

namespace NetInfoRules {

//! \a seconds as hours, minutes and seconds, each with a leading "0" up to 9: "01:02:05". Hours
//! have no limit; a negative duration keeps its sign in each part, "00:00:0-5".
[[nodiscard]] QString durationText(long long seconds);

//! The history key of \a key: its decimal text read back without a sign, so a negative one is 0.
[[nodiscard]] unsigned long long historyKey(int key);

} // namespace NetInfoRules
