#pragma once

#include "calendar/Date.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace velq {

struct ZoneTables;

/*! A time zone: when each date begins there. Immutable; copies share their rules. */
class TimeZone
{
public:
    //! The zone that the system's time zone files know as \a name, "Europe/Berlin".
    [[nodiscard]] static std::optional<TimeZone> named(const std::string &name);
    //! The zone of a compiled time zone file, wherever that is.
    [[nodiscard]] static std::optional<TimeZone> ofFile(const std::string &path,
                                                        const std::string &name);
    //! The zone of such a file's \a bytes.
    [[nodiscard]] static std::optional<TimeZone> ofBytes(const std::string &bytes,
                                                         const std::string &name);
    //! The zone of a rule as TZ may hold it: "CET-1CEST,M3.5.0,M10.5.0/3". Named by the rule.
    [[nodiscard]] static std::optional<TimeZone> ofRule(const std::string &rule);
    [[nodiscard]] static TimeZone utc();
    /*!
     * What TZ says, else /etc/localtime, else UTC. Each call looks whether the variable or the file
     * has changed; the zone's rules are read again only then.
     */
    [[nodiscard]] static TimeZone system();

    [[nodiscard]] const std::string &name() const;

    //! The day with firstInstant(day) <= \a instant < firstInstant(day + 1).
    [[nodiscard]] Day dayOf(std::int64_t instant) const;
    /*!
     * Where \a day begins, in seconds since 1970 UTC. Where a change of the clocks skips midnight,
     * with the first instant that exists; where midnight comes twice, with the first one. A date
     * that never was (a country that crossed the date line) begins and ends with the next one.
     */
    [[nodiscard]] std::int64_t firstInstant(Day day) const;

private:
    /*! A span of time with the same offset; local times are seconds as if of UTC. */
    struct Stretch
    {
        std::int64_t begin = 0;
        std::int64_t offset = 0; // seconds east of UTC
        std::int64_t localEnd = 0; // one after the latest that was shown up to its end
    };
    struct Content
    {
        std::string name;
        std::vector<Stretch> stretches; // of all time, in order
    };

    explicit TimeZone(const std::string &name, const ZoneTables &tables);

    std::shared_ptr<const Content> m_content;
};

} // namespace velq
