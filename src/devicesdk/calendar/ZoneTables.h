#pragma once

#include "calendar/ZoneRule.h"

#include <optional>
#include <string>
#include <vector>

namespace velq {

/*! What a compiled time zone file says of the clocks. */
struct ZoneTables
{
    int offset = 0; //!< seconds east of UTC, until the first change
    std::vector<ZoneChange> changes; //!< ascending
    std::string rule; //!< what goes on for ever after the last change; empty: nothing changes
};

//! Takes a file's \a bytes apart. Nothing if they are no such file, are cut, contradict themselves
//! or count leap seconds.
[[nodiscard]] std::optional<ZoneTables> readZoneTables(const std::string &bytes);

} // namespace velq
