#pragma once

#include <optional>
#include <string>

namespace velqctl {

//! "2024-03-01" for a day as days since 1970-01-01.
[[nodiscard]] std::string dayText(int day);
//! The day of a text like "2024-03-01", years 1970 to 9999; empty for anything else.
[[nodiscard]] std::optional<int> parseDay(const std::string &text);
//! "2024-03-01T14:00:00Z" for seconds since 1970-01-01 UTC.
[[nodiscard]] std::string utcText(long long seconds);
//! "2024-03-01 15:00:00" in the system's time zone.
[[nodiscard]] std::string localText(long long seconds);
//! "1:05:09" for 3909 seconds; hours are not cut at 24.
[[nodiscard]] std::string durationText(long long seconds);

} // namespace velqctl
