#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace velq {

/*! The day of each year on which the clocks change. */
struct RuleDate
{
    enum class Kind { WeekdayOfMonth, DayWithoutLeap, DayFromZero };

    Kind kind = Kind::WeekdayOfMonth;
    int month = 1; //!< 1 to 12; this and the next two for WeekdayOfMonth
    int week = 1; //!< 1 to 5; 5 is the last
    int weekday = 0; //!< from Sunday
    int day = 0; //!< 1 to 365, never the 29th of February; or 0 to 365
    int seconds = 2 * 3600; //!< after that day's midnight by the clocks that go until then
};

/*! The clocks of a zone, the same in every year. */
struct ZoneRule
{
    int standard = 0; //!< seconds east of UTC
    int summer = 0;
    bool hasSummer = false;
    RuleDate begin {}; //!< of summer time
    RuleDate end {};
};

//! A rule as TZ may hold it: "CET-1CEST,M3.5.0,M10.5.0/3", "<+0530>-5:30".
[[nodiscard]] std::optional<ZoneRule> parseZoneRule(const std::string &text);

/*! The instant from which the clocks have another offset. */
struct ZoneChange
{
    std::int64_t instant = 0; //!< seconds since 1970 UTC
    int offset = 0; //!< seconds east of UTC
};

//! The changes of the years 1900 to 2400, in order.
[[nodiscard]] std::vector<ZoneChange> changesOf(const ZoneRule &rule);

} // namespace velq
