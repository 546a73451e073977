#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace velq {

//! The file of the zone \a name; empty if that is no name of a zone.
[[nodiscard]] std::string zonePath(const std::string &name);

//! The content of a file that may be a compiled time zone file: a regular one, and not too large.
[[nodiscard]] std::optional<std::string> readZoneFile(const std::string &path);

//! Whether \a bytes have the shape of a compiled time zone file, as long as its counts say.
[[nodiscard]] bool isZoneFile(const std::string &bytes);

/*! From \a instant (seconds since 1970 UTC) on. */
struct OffsetChange
{
    std::int64_t instant = 0;
    bool summer = false;
};

//! The compiled file of a zone with two offsets (seconds east of UTC), which begins with the first.
[[nodiscard]] std::string makeZoneFile(int standard, int summer,
                                       const std::vector<OffsetChange> &changes);

} // namespace velq
