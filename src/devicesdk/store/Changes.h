#pragma once

#include "accounting/Booking.h"
#include "calendar/Period.h"

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace velq {

constexpr std::int64_t kHourSeconds = 3600;

//! The start of the hour (UTC) that holds \a second.
[[nodiscard]] constexpr std::int64_t hourStart(std::int64_t second)
{
    const std::int64_t offset = second % kHourSeconds;
    return second - (offset < 0 ? offset + kHourSeconds : offset);
}

//! The device of amounts that the operator's figure adds or takes away.
constexpr const char *kOperatorDevice = "operator";

//! No clock shows more: tens of thousands of years. Sums of such times fit.
constexpr std::int64_t kLatestSecond = std::int64_t(1) << 40;

/*! A row of the books: an hour of UTC, and of it what belongs to one local day. */
struct HourKey
{
    std::int64_t start = 0; //!< seconds since 1970-01-01 UTC
    Day day = 0; //!< the local day in the time zone of the booking
    std::string device;
    int use = 0;

    [[nodiscard]] bool operator<(const HourKey &other) const
    {
        return std::tie(start, day, device, use)
            < std::tie(other.start, other.day, other.device, other.use);
    }
};

using HourAmounts = std::map<HourKey, Amounts>;

/*! Where and when something was booked first, so that it can be dated anew. */
struct RecentKey
{
    std::string boot; //!< the kernel's boot id
    std::int64_t offset = 0; //!< wall clock minus boot clock when it was booked, in seconds
    HourKey home;

    [[nodiscard]] bool operator<(const RecentKey &other) const
    {
        return std::tie(boot, offset, home) < std::tie(other.boot, other.offset, other.home);
    }
};

struct RecentRow
{
    std::int64_t bootSeconds = 0; //!< the boot clock at the first booking
    std::int64_t start = 0; //!< the hour in which the amounts are now
    Day day = 0;
    Amounts amounts;
};

using RecentRows = std::map<RecentKey, RecentRow>;

/*! What is not in the store yet. Resets are applied first. */
struct Changes
{
    std::array<std::optional<std::int64_t>, kConnectTypes> resets; //!< when, by connect type
    HourAmounts hours; //!< to be added
    RecentRows recent; //!< replace the stored ones
    std::set<RecentKey> forgotten; //!< recent rows that are not needed any more
    std::map<LinkId, LinkMark> marks;
    std::set<LinkId> settled;
    std::map<std::string, DeviceNote> devices;
    std::map<std::string, std::int64_t> seen; //!< device key to the latest use
    std::vector<Reason> reasons;
    std::map<std::string, std::string> settings;
    std::optional<std::int64_t> keepHoursFrom; //!< hours before it are thinned out to days

    [[nodiscard]] bool isEmpty() const;
    //! Whether it should be written soon: a MiB or more, or anything besides amounts and marks.
    [[nodiscard]] bool isUrgent() const;
    //! Puts \a earlier, which could not be written, before what gathered meanwhile.
    void prepend(Changes earlier);

private:
    //! Anything that is not of every second.
    [[nodiscard]] bool hasOthers() const;
};

} // namespace velq
