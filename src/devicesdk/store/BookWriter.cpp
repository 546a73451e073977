#include "store/BookWriter.h"

#include <sqlite3.h>

namespace velq {

namespace {

constexpr std::int64_t kSeenSeconds = 60;

void bindAmounts(Statement &statement, int first, const Amounts &amounts)
{
    statement.bind(first, amounts.download);
    statement.bind(first + 1, amounts.upload);
    statement.bind(first + 2, amounts.timeMs);
    statement.bind(first + 3, amounts.anyMs);
}

void bindRecentKey(Statement &statement, const RecentKey &key)
{
    statement.bind(1, key.boot);
    statement.bind(2, key.offset);
    statement.bind(3, key.home.start);
    statement.bind(4, key.home.day);
    statement.bind(5, key.home.device);
    statement.bind(6, key.home.use);
}

void bindLink(Statement &statement, const LinkId &id)
{
    statement.bind(1, id.boot);
    statement.bind(2, id.index);
    statement.bind(3, static_cast<std::int64_t>(id.instance));
}

//! As in memory: what would overflow stays at the limit, where SQLite would make it a fraction.
void sum(sqlite3_context *context, int, sqlite3_value **values)
{
    Amounts sum;
    sum.download = sqlite3_value_int64(values[0]);
    sum.add({ sqlite3_value_int64(values[1]), 0, 0, 0 });
    sqlite3_result_int64(context, sum.download);
}

} // namespace

const char *BookWriter::sqlOf(int query)
{
    static constexpr const char *kQueries[] = {
        "BEGIN IMMEDIATE",
        "COMMIT",
        "DELETE FROM hour WHERE use % 2 = ?1",
        "DELETE FROM day WHERE use % 2 = ?1",
        "INSERT INTO reset (type, at) VALUES (?1, ?2)"
        " ON CONFLICT (type) DO UPDATE SET at = excluded.at",
        "INSERT OR IGNORE INTO device (key) VALUES (?1)",
        "SELECT id FROM device WHERE key = ?1",
        "UPDATE device SET label = ?2, interface = ?3, type = ?4 WHERE id = ?1",
        "UPDATE device SET seen = max(seen, ?2) WHERE id = ?1",
        "INSERT INTO hour (start, day, device, use, download, upload, time_ms, any_ms)"
        " VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8)"
        " ON CONFLICT (start, day, device, use) DO UPDATE SET"
        " download = velq_sum(download, excluded.download),"
        " upload = velq_sum(upload, excluded.upload),"
        " time_ms = velq_sum(time_ms, excluded.time_ms),"
        " any_ms = velq_sum(any_ms, excluded.any_ms)",
        "INSERT INTO day (day, device, use, download, upload, time_ms, any_ms)"
        " VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7)"
        " ON CONFLICT (day, device, use) DO UPDATE SET"
        " download = velq_sum(download, excluded.download),"
        " upload = velq_sum(upload, excluded.upload),"
        " time_ms = velq_sum(time_ms, excluded.time_ms),"
        " any_ms = velq_sum(any_ms, excluded.any_ms)",
        "INSERT OR REPLACE INTO recent (boot, offset, home_start, home_day, device, use,"
        " boot_seconds, start, day, download, upload, time_ms, any_ms)"
        " VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12, ?13)",
        "DELETE FROM recent WHERE boot = ?1 AND offset = ?2 AND home_start = ?3"
        " AND home_day = ?4 AND device = ?5 AND use = ?6",
        "INSERT OR REPLACE INTO mark (boot, link, instance, name, device, use, download, upload)"
        " VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8)",
        "DELETE FROM mark WHERE boot = ?1 AND link = ?2 AND instance = ?3",
        "INSERT INTO reason (at, kind, device, use, download, upload, seconds, text)"
        " VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8)",
        "INSERT OR REPLACE INTO setting (name, value) VALUES (?1, ?2)",
        "DELETE FROM hour WHERE start < ?1",
        "DELETE FROM reason WHERE at < ?1",
        // Of devices that do not come back.
        "DELETE FROM mark WHERE device IN (SELECT key FROM device WHERE seen > 0 AND seen < ?1)",
    };
    static_assert(sizeof kQueries / sizeof *kQueries == QueryCount, "a statement for each");
    return kQueries[query];
}

int BookWriter::prepare(Database &database)
{
    forgetDevices();
    int code = sqlite3_create_function(database.handle(), "velq_sum", 2, SQLITE_UTF8, nullptr, sum,
                                       nullptr, nullptr);
    for (int query = 0; code == SQLITE_OK && query < QueryCount; ++query)
        code = m_statements[query].prepare(database, sqlOf(query));
    return code;
}

void BookWriter::finalize()
{
    for (Statement &statement : m_statements)
        statement.finalize();
    forgetDevices();
}

void BookWriter::abandon()
{
    for (Statement &statement : m_statements)
        statement.abandon();
}

int BookWriter::write(const Changes &changes)
{
    int code = m_statements[Begin].run();
    code = code ? code : writeAll(changes);
    return code ? code : m_statements[Commit].run();
}

int BookWriter::writeAll(const Changes &changes)
{
    constexpr int (BookWriter::*kSteps[])(const Changes &)
        = { &BookWriter::writeResets,  &BookWriter::writeDevices,  &BookWriter::writeSeen,
            &BookWriter::writeHours,   &BookWriter::writeRecent,   &BookWriter::writeMarks,
            &BookWriter::writeReasons, &BookWriter::writeSettings, &BookWriter::thinOut };
    for (const auto step : kSteps) {
        const int code = (this->*step)(changes);
        if (code != SQLITE_OK)
            return code;
    }
    return SQLITE_OK;
}

int BookWriter::writeResets(const Changes &changes)
{
    for (int type = 0; type < kConnectTypes; ++type) {
        const auto &at = changes.resets[static_cast<std::size_t>(type)];
        if (!at)
            continue;
        m_statements[SetReset].bind(2, *at);
        for (const Query query : { ResetHours, ResetDays, SetReset }) {
            m_statements[query].bind(1, type);
            const int code = m_statements[query].run();
            if (code != SQLITE_OK)
                return code;
        }
    }
    return SQLITE_OK;
}

int BookWriter::deviceNumber(const std::string &key, std::int64_t &number)
{
    const auto known = m_devices.find(key);
    if (known != m_devices.end()) {
        number = known->second;
        return SQLITE_OK;
    }
    m_statements[AddDevice].bind(1, key);
    int code = m_statements[AddDevice].run();
    if (code != SQLITE_OK)
        return code;
    Statement &find = m_statements[FindDevice];
    find.bind(1, key);
    code = find.step();
    if (code == SQLITE_ROW)
        number = m_devices[key] = find.integer(0);
    find.reset();
    if (code == SQLITE_DONE) // it was made just now
        return SQLITE_CORRUPT;
    return code == SQLITE_ROW ? SQLITE_OK : code;
}

int BookWriter::writeDevices(const Changes &changes)
{
    std::int64_t number = 0;
    for (const auto &[key, note] : changes.devices) {
        if (const int code = deviceNumber(key, number); code != SQLITE_OK)
            return code;
        Statement &describe = m_statements[DescribeDevice];
        describe.bind(1, number);
        describe.bind(2, note.label);
        describe.bind(3, note.interface);
        describe.bind(4, note.type);
        if (const int code = describe.run(); code != SQLITE_OK)
            return code;
    }
    return SQLITE_OK;
}

int BookWriter::writeSeen(const Changes &changes)
{
    std::int64_t number = 0;
    for (const auto &[key, at] : changes.seen) {
        const auto written = m_seen.find(key);
        if (written != m_seen.end() && at < written->second + kSeenSeconds)
            continue;
        if (const int code = deviceNumber(key, number); code != SQLITE_OK)
            return code;
        m_statements[SeeDevice].bind(1, number);
        m_statements[SeeDevice].bind(2, at);
        if (const int code = m_statements[SeeDevice].run(); code != SQLITE_OK)
            return code;
        m_seen[key] = at;
    }
    return SQLITE_OK;
}

int BookWriter::addHour(const HourKey &key, const Amounts &amounts)
{
    std::int64_t number = 0;
    if (const int code = deviceNumber(key.device, number); code != SQLITE_OK)
        return code;
    Statement &hour = m_statements[AddHour];
    hour.bind(1, key.start);
    hour.bind(2, key.day);
    hour.bind(3, number);
    hour.bind(4, key.use);
    bindAmounts(hour, 5, amounts);
    if (const int code = hour.run(); code != SQLITE_OK)
        return code;
    Statement &day = m_statements[AddDay];
    day.bind(1, key.day);
    day.bind(2, number);
    day.bind(3, key.use);
    bindAmounts(day, 4, amounts);
    return day.run();
}

int BookWriter::writeHours(const Changes &changes)
{
    for (const auto &[key, amounts] : changes.hours) {
        if (const int code = addHour(key, amounts); code != SQLITE_OK)
            return code;
    }
    return SQLITE_OK;
}

int BookWriter::writeRecent(const Changes &changes)
{
    for (const RecentKey &key : changes.forgotten) {
        bindRecentKey(m_statements[DropRecent], key);
        if (const int code = m_statements[DropRecent].run(); code != SQLITE_OK)
            return code;
    }
    for (const auto &[key, row] : changes.recent) {
        Statement &put = m_statements[PutRecent];
        bindRecentKey(put, key);
        put.bind(7, row.bootSeconds);
        put.bind(8, row.start);
        put.bind(9, row.day);
        bindAmounts(put, 10, row.amounts);
        if (const int code = put.run(); code != SQLITE_OK)
            return code;
    }
    return SQLITE_OK;
}

int BookWriter::writeMarks(const Changes &changes)
{
    for (const LinkId &id : changes.settled) {
        bindLink(m_statements[DropMark], id);
        if (const int code = m_statements[DropMark].run(); code != SQLITE_OK)
            return code;
    }
    for (const auto &[id, mark] : changes.marks) {
        Statement &put = m_statements[PutMark];
        bindLink(put, id);
        put.bind(4, mark.name);
        put.bind(5, mark.device);
        put.bind(6, mark.use);
        put.bind(7, static_cast<std::int64_t>(mark.download)); // the bits, back as they were
        put.bind(8, static_cast<std::int64_t>(mark.upload));
        if (const int code = put.run(); code != SQLITE_OK)
            return code;
    }
    return SQLITE_OK;
}

int BookWriter::writeReasons(const Changes &changes)
{
    Statement &add = m_statements[AddReason];
    for (const Reason &reason : changes.reasons) {
        add.bind(1, reason.at);
        add.bind(2, static_cast<int>(reason.kind));
        add.bind(3, reason.device);
        add.bind(4, reason.use);
        add.bind(5, reason.download);
        add.bind(6, reason.upload);
        add.bind(7, reason.seconds);
        add.bind(8, reason.text);
        if (const int code = add.run(); code != SQLITE_OK)
            return code;
    }
    return SQLITE_OK;
}

int BookWriter::writeSettings(const Changes &changes)
{
    for (const auto &[name, value] : changes.settings) {
        m_statements[PutSetting].bind(1, name);
        m_statements[PutSetting].bind(2, value);
        if (const int code = m_statements[PutSetting].run(); code != SQLITE_OK)
            return code;
    }
    return SQLITE_OK;
}

int BookWriter::thinOut(const Changes &changes)
{
    if (!changes.keepHoursFrom)
        return SQLITE_OK;
    for (const Query query : { DropHours, DropReasons, DropMarks }) {
        m_statements[query].bind(1, *changes.keepHoursFrom);
        if (const int code = m_statements[query].run(); code != SQLITE_OK)
            return code;
    }
    return SQLITE_OK;
}

} // namespace velq
