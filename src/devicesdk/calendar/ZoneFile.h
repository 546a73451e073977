#pragma once

#include <optional>
#include <string>

namespace velq {

//! The file of the zone \a name; empty if that is no name of a zone.
[[nodiscard]] std::string zonePath(const std::string &name);

//! The content of a file that may be a compiled time zone file: a regular one, and not too large.
[[nodiscard]] std::optional<std::string> readZoneFile(const std::string &path);

} // namespace velq
