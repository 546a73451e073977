#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string>

namespace velq {

/*!
 * What a compiled time zone file says, as the bytes that it has for it: when the clocks change, to
 * which type of local time, and after the last change the rule that goes on for ever.
 */
struct ZoneTables
{
    std::string instants; //!< 8 bytes each, seconds since 1970 UTC, ascending
    std::string indexes; //!< a byte for each instant: its type from then on
    std::string types; //!< 6 bytes each; local time begins with the first
    std::string names; //!< of the types, each with a zero byte behind
    std::string rule; //!< empty: the last change stays

    [[nodiscard]] std::size_t typeCount() const;
    void addType(int offset, bool summer); //!< \a offset in seconds east of UTC
    void addChange(std::int64_t instant, std::size_t type);
    //! The instant of the last change; the smallest number if there is none.
    [[nodiscard]] std::int64_t lastChange() const;
};

//! Takes a file's \a bytes apart. Nothing if they are no such file, are cut, or count leap seconds.
[[nodiscard]] std::optional<ZoneTables> readZoneTables(const std::string &bytes);

[[nodiscard]] std::string zoneBytes(const ZoneTables &tables);

} // namespace velq
