#pragma once

#include "store/Bucket.h"
#include "store/Changes.h"
#include "store/DaySums.h"
#include "store/Sqlite.h"

#include <map>
#include <string>
#include <tuple>
#include <vector>

namespace velq {

/*! A row of the day sums. */
struct DayKey
{
    Day day = 0;
    std::string device;
    int use = 0;

    [[nodiscard]] bool operator<(const DayKey &other) const
    {
        return std::tie(day, device, use) < std::tie(other.day, other.device, other.use);
    }
};

using DayAmounts = std::map<DayKey, Amounts>;

struct StoredDevice
{
    DeviceNote note;
    std::int64_t seen = 0; //!< the latest use, seconds since 1970-01-01 UTC; 0: never
};

/*!
 * Reads the tables of an open database. Results are SQLite's codes, 0 is success; what was read
 * until a failure stays in the target.
 */
class BookReader
{
public:
    explicit BookReader(Database &database)
        : m_database(database)
    {
    }

    [[nodiscard]] int daySums(DaySums &sums) const;
    [[nodiscard]] int hours(const Span &span, HourAmounts &hours) const;
    [[nodiscard]] int days(const DaySpan &span, DayAmounts &days) const;
    [[nodiscard]] int marks(std::vector<LinkMark> &marks) const;
    [[nodiscard]] int recent(RecentRows &rows) const;
    [[nodiscard]] int devices(std::vector<StoredDevice> &devices) const;
    //! The latest \a count at most, the oldest first.
    [[nodiscard]] int reasons(int count, std::vector<Reason> &reasons) const;
    [[nodiscard]] int settings(std::map<std::string, std::string> &settings) const;
    //! Untouched where there is none.
    [[nodiscard]] int lastReset(int type, std::int64_t &at) const;

private:
    template <typename Row>
    int each(Statement &statement, Row &&row) const;

    Database &m_database;
};

} // namespace velq
