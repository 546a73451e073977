#include "calendar/TimeZone.h"

#include "calendar/ZoneBytes.h"
#include "calendar/ZoneFile.h"
#include "calendar/ZoneRule.h"
#include "calendar/ZoneTables.h"

#include <cctz/time_zone.h>

#include <algorithm>
#include <chrono>
#include <utility>

namespace velq {

namespace {

constexpr std::int64_t kSecondsPerDay = 86400;

const char kUtc[] = "UTC";

cctz::civil_second midnight(Day day)
{
    const Date date = dateOf(day);
    return cctz::civil_second(date.year, date.month, date.day);
}

/*!
 * Replaces the rule after the last change by the changes that it means. cctz takes a rule only from
 * files that repeat it in their last changes, which those of many systems do not.
 */
bool spellOutRule(ZoneTables &tables)
{
    constexpr std::size_t kMostTypes = 254; // and two more: an index has 8 bits
    if (tables.rule.empty())
        return true;
    const auto rule = parseZoneRule(tables.rule);
    if (!rule || tables.typeCount() > kMostTypes)
        return false;
    const std::int64_t last = tables.lastChange();
    const std::size_t type = tables.typeCount(); // of standard time; the next one is of summer time
    tables.addType(rule->standard, false);
    tables.addType(rule->summer, true);
    for (const RuleChange &change : changesOf(*rule))
        if (change.instant > last)
            tables.addChange(change.instant, type + (change.summer ? 1 : 0));
    tables.rule.clear();
    return true;
}

} // namespace

struct TimeZone::Content
{
    std::string name;
    cctz::time_zone rules; // points to what cctz keeps for ever
};

TimeZone::TimeZone(std::shared_ptr<const Content> content)
    : m_content(std::move(content))
{
}

std::optional<TimeZone> TimeZone::named(const std::string &name)
{
    if (name == kUtc) // needs no files
        return utc();
    const std::string path = zonePath(name);
    return path.empty() ? std::nullopt : ofFile(path, name);
}

std::optional<TimeZone> TimeZone::ofFile(const std::string &path, const std::string &name)
{
    const auto bytes = readZoneFile(path);
    auto tables = bytes ? readZoneTables(*bytes) : std::nullopt;
    return tables ? ofTables(std::move(*tables), name) : std::nullopt;
}

std::optional<TimeZone> TimeZone::ofRule(const std::string &rule)
{
    const auto parsed = parseZoneRule(rule);
    if (!parsed)
        return std::nullopt;
    ZoneTables tables;
    tables.addType(parsed->standard, false);
    tables.names.assign(1, '\0');
    tables.rule = rule;
    return ofTables(std::move(tables), rule);
}

std::optional<TimeZone> TimeZone::ofTables(ZoneTables tables, const std::string &name)
{
    cctz::time_zone rules;
    if (!spellOutRule(tables) || !loadZoneBytes(zoneBytes(tables), rules))
        return std::nullopt;
    return TimeZone(std::make_shared<const Content>(Content { name, rules }));
}

TimeZone TimeZone::utc()
{
    return TimeZone(std::make_shared<const Content>(Content { kUtc, cctz::utc_time_zone() }));
}

const std::string &TimeZone::name() const
{
    return m_content->name;
}

Day TimeZone::dayOf(std::int64_t instant) const
{
    // Beyond some million years a day has no number; the last one that has takes them all.
    constexpr std::int64_t kLastDay = 1'000'000'000;
    const std::int64_t bounded
        = std::clamp(instant, -kLastDay * kSecondsPerDay, kLastDay * kSecondsPerDay);
    // Where clocks go back over midnight a local date comes twice, so that it alone does not tell
    // the day: an instant after the first midnight belongs to the new day for good.
    auto day = static_cast<Day>(bounded / kSecondsPerDay);
    while (firstInstant(day) > bounded)
        --day;
    while (firstInstant(day + 1) <= bounded)
        ++day;
    return day;
}

std::int64_t TimeZone::firstInstant(Day day) const
{
    const cctz::time_zone::civil_lookup found = m_content->rules.lookup(midnight(day));
    const bool skipped = found.kind == cctz::time_zone::civil_lookup::SKIPPED;
    const auto instant = skipped ? found.trans : found.pre; // pre is also the first of two
    return std::chrono::duration_cast<std::chrono::seconds>(instant.time_since_epoch()).count();
}

} // namespace velq
