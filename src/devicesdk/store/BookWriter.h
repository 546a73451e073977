#pragma once

#include "store/Changes.h"
#include "store/Sqlite.h"

#include <map>
#include <string>

namespace velq {

/*! Writes changes into the tables of an open database, in one transaction. */
class BookWriter
{
public:
    //! 0, or SQLite's code.
    [[nodiscard]] int prepare(Database &database);
    void finalize();
    //! In a forked child, see Database::abandon().
    void abandon();

    //! 0, or SQLite's code; the caller rolls back then and calls forgetDevices(). The latest use of
    //! a device is written once a minute, which spares a page of most commits.
    [[nodiscard]] int write(const Changes &changes);
    //! Device numbers of a transaction that was rolled back do not count.
    void forgetDevices()
    {
        m_devices.clear();
        m_seen.clear();
    }

private:
    [[nodiscard]] int writeAll(const Changes &changes);
    [[nodiscard]] int writeResets(const Changes &changes);
    [[nodiscard]] int writeDevices(const Changes &changes);
    [[nodiscard]] int writeSeen(const Changes &changes);
    [[nodiscard]] int writeHours(const Changes &changes);
    [[nodiscard]] int writeRecent(const Changes &changes);
    [[nodiscard]] int writeMarks(const Changes &changes);
    [[nodiscard]] int writeReasons(const Changes &changes);
    [[nodiscard]] int writeSettings(const Changes &changes);
    [[nodiscard]] int thinOut(const Changes &changes);
    //! The number of \a device in the store, which is made when it is new. 0 is success.
    [[nodiscard]] int deviceNumber(const std::string &key, std::int64_t &number);
    [[nodiscard]] int addHour(const HourKey &key, const Amounts &amounts);

    enum Query {
        Begin,
        Commit,
        ResetHours,
        ResetDays,
        SetReset,
        AddDevice,
        FindDevice,
        DescribeDevice,
        SeeDevice,
        AddHour,
        AddDay,
        PutRecent,
        DropRecent,
        PutMark,
        DropMark,
        AddReason,
        PutSetting,
        DropHours,
        DropReasons,
        DropMarks,
        QueryCount
    };
    static const char *sqlOf(int query);

    Statement m_statements[QueryCount];
    std::map<std::string, std::int64_t> m_devices; // their numbers
    std::map<std::string, std::int64_t> m_seen; // what was written last
};

} // namespace velq
