#include "calendar/TimeZone.h"

#include "calendar/ZoneFile.h"
#include "calendar/ZoneRule.h"
#include "calendar/ZoneTables.h"

#include <algorithm>
#include <limits>

namespace velq {

namespace {

constexpr std::int64_t kSecondsPerDay = 86400;

const char kUtc[] = "UTC";

//! Adds the changes that \a rule means after those that are there.
void spellOut(const ZoneRule &rule, std::vector<ZoneChange> &changes)
{
    std::vector<ZoneChange> later = changesOf(rule);
    if (!changes.empty()) {
        const std::int64_t last = changes.back().instant;
        later.erase(later.begin(),
                    std::find_if(later.begin(), later.end(), [last](const ZoneChange &change) {
                        return change.instant > last;
                    }));
    }
    changes.insert(changes.end(), later.begin(), later.end());
}

} // namespace

TimeZone::TimeZone(const std::string &name, const ZoneTables &tables)
{
    using Limits = std::numeric_limits<std::int64_t>;
    auto content = std::make_shared<Content>(Content { name, {} });
    std::vector<Stretch> &stretches = content->stretches;
    stretches.push_back({ Limits::min(), tables.offset, Limits::max() });
    for (const ZoneChange &change : tables.changes) {
        Stretch &last = stretches.back();
        const std::int64_t shown
            = stretches.size() > 1 ? stretches.end()[-2].localEnd : Limits::min();
        last.localEnd = std::max(shown, change.instant + last.offset);
        stretches.push_back({ change.instant, change.offset, Limits::max() });
    }
    m_content = std::move(content);
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
    return bytes ? ofBytes(*bytes, name) : std::nullopt;
}

std::optional<TimeZone> TimeZone::ofBytes(const std::string &bytes, const std::string &name)
{
    auto tables = readZoneTables(bytes);
    if (!tables)
        return std::nullopt;
    if (!tables->rule.empty()) {
        const auto rule = parseZoneRule(tables->rule);
        if (!rule)
            return std::nullopt;
        spellOut(*rule, tables->changes);
    }
    return TimeZone(name, *tables);
}

std::optional<TimeZone> TimeZone::ofRule(const std::string &rule)
{
    const auto parsed = parseZoneRule(rule);
    if (!parsed)
        return std::nullopt;
    return TimeZone(rule, { parsed->standard, changesOf(*parsed), {} });
}

TimeZone TimeZone::utc()
{
    return TimeZone(kUtc, {});
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
    const std::vector<Stretch> &stretches = m_content->stretches;
    const auto later = std::upper_bound(
        stretches.begin(), stretches.end(), bounded,
        [](std::int64_t wanted, const Stretch &stretch) { return wanted < stretch.begin; });
    // Where clocks go back over midnight a local date comes twice: a day that has begun stays.
    std::int64_t local = bounded + later[-1].offset;
    if (later - stretches.begin() > 1)
        local = std::max(local, later[-2].localEnd - 1);
    const std::int64_t before = local % kSecondsPerDay < 0 ? 1 : 0; // division rounds towards zero
    return static_cast<Day>(local / kSecondsPerDay - before);
}

std::int64_t TimeZone::firstInstant(Day day) const
{
    const std::int64_t midnight = day * kSecondsPerDay;
    const std::vector<Stretch> &stretches = m_content->stretches;
    // The last stretch has no end, so there always is one.
    const auto stretch = std::upper_bound(
        stretches.begin(), stretches.end(), midnight,
        [](std::int64_t wanted, const Stretch &found) { return wanted < found.localEnd; });
    return std::max(stretch->begin, midnight - stretch->offset);
}

} // namespace velq
