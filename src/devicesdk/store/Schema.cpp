#include "store/Schema.h"

#include "calendar/TimeZone.h"

#include <sqlite3.h>

#include <string>

namespace velq {

namespace {

// 2: hours of UTC, cut at local midnight, and their sums by local day, for each device and kind of
// use; up to where links are booked; what a step of the clock may still move; what was out of the
// ordinary. The quarter hours of before become hours of a device of their own.
constexpr const char *kBooks
    = "CREATE TABLE device ("
      " id INTEGER PRIMARY KEY,"
      " key TEXT NOT NULL UNIQUE,"
      " label TEXT NOT NULL DEFAULT '',"
      " interface TEXT NOT NULL DEFAULT '',"
      " type INTEGER NOT NULL DEFAULT 0,"
      " seen INTEGER NOT NULL DEFAULT 0);"
      "CREATE TABLE hour ("
      " start INTEGER NOT NULL, day INTEGER NOT NULL, device INTEGER NOT NULL REFERENCES device,"
      " use INTEGER NOT NULL CHECK (use BETWEEN 0 AND 3),"
      " download INTEGER NOT NULL, upload INTEGER NOT NULL,"
      " time_ms INTEGER NOT NULL, any_ms INTEGER NOT NULL,"
      " PRIMARY KEY (start, day, device, use)) WITHOUT ROWID;"
      "CREATE TABLE day ("
      " day INTEGER NOT NULL, device INTEGER NOT NULL REFERENCES device,"
      " use INTEGER NOT NULL CHECK (use BETWEEN 0 AND 3),"
      " download INTEGER NOT NULL, upload INTEGER NOT NULL,"
      " time_ms INTEGER NOT NULL, any_ms INTEGER NOT NULL,"
      " PRIMARY KEY (day, device, use)) WITHOUT ROWID;"
      "CREATE TABLE mark ("
      " boot TEXT NOT NULL, link INTEGER NOT NULL, instance INTEGER NOT NULL,"
      " name TEXT NOT NULL, device TEXT NOT NULL, use INTEGER NOT NULL,"
      " download INTEGER NOT NULL, upload INTEGER NOT NULL,"
      " PRIMARY KEY (boot, link, instance)) WITHOUT ROWID;"
      "CREATE TABLE recent ("
      " boot TEXT NOT NULL, offset INTEGER NOT NULL, home_start INTEGER NOT NULL,"
      " home_day INTEGER NOT NULL, device TEXT NOT NULL, use INTEGER NOT NULL,"
      " boot_seconds INTEGER NOT NULL, start INTEGER NOT NULL, day INTEGER NOT NULL,"
      " download INTEGER NOT NULL, upload INTEGER NOT NULL,"
      " time_ms INTEGER NOT NULL, any_ms INTEGER NOT NULL,"
      " PRIMARY KEY (boot, offset, home_start, home_day, device, use)) WITHOUT ROWID;"
      "CREATE TABLE reason ("
      " id INTEGER PRIMARY KEY, at INTEGER NOT NULL, kind INTEGER NOT NULL,"
      " device TEXT NOT NULL, use INTEGER NOT NULL, download INTEGER NOT NULL,"
      " upload INTEGER NOT NULL, seconds INTEGER NOT NULL, text TEXT NOT NULL);"
      "CREATE INDEX reason_at ON reason (at);"
      "CREATE TABLE setting (name TEXT NOT NULL PRIMARY KEY, value TEXT NOT NULL) WITHOUT ROWID;"
      "INSERT INTO device (key, label) SELECT 'earlier', 'before devices were told apart'"
      " WHERE EXISTS (SELECT 1 FROM bucket);"
      "INSERT INTO hour SELECT start - start % 3600, velq_day(start), 1, type,"
      " sum(download), sum(upload), sum(time_ms), sum(time_ms) FROM bucket"
      " GROUP BY start - start % 3600, velq_day(start), type;"
      "INSERT INTO day SELECT day, device, use, sum(download), sum(upload), sum(time_ms),"
      " sum(any_ms) FROM hour GROUP BY day, device, use;"
      "DROP TABLE bucket";

// Everything that a database is made of, with its triggers and views. What ANALYZE adds is
// harmless.
constexpr const char *kDescribe
    = "SELECT (SELECT encoding FROM pragma_encoding) || coalesce(group_concat(line, ';'), '') FROM"
      " (SELECT type || ' ' || name || ' ' || tbl_name || ' ' || sql AS line FROM sqlite_master"
      " WHERE sql IS NOT NULL AND NOT (type = 'table' AND name LIKE 'sqlite_stat%')"
      " ORDER BY type, name)";

// Makes a query that finds a value of another type than its column's, in whatever tables there are.
constexpr const char *kStrangeValues
    = "SELECT group_concat('SELECT 1 FROM ' || name || ' WHERE ' || (SELECT"
      " group_concat('typeof(' || name || ') <> ''' || lower(type) || '''', ' OR ')"
      " FROM pragma_table_info(m.name)), ' UNION ALL ') || ' LIMIT 1' FROM sqlite_master AS m"
      " WHERE type = 'table' AND name NOT LIKE 'sqlite_stat%'";

constexpr const char *kComplete
    = "BEGIN IMMEDIATE;"
      "INSERT OR IGNORE INTO reset (type, at) VALUES (0, CAST(strftime('%s', 'now') AS INTEGER)),"
      " (1, CAST(strftime('%s', 'now') AS INTEGER));"
      "INSERT OR IGNORE INTO device (id, key, label) SELECT device, 'unknown ' || device, 'unknown'"
      " FROM (SELECT device FROM hour UNION SELECT device FROM day)"
      " WHERE device NOT IN (SELECT id FROM device);"
      "COMMIT";

//! What a database with schema \a number is made of. SQLite's code.
int describeSchema(std::size_t number, Migrations migrations, std::string &description)
{
    Database model;
    migrations.resize(number);
    int code = model.open(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    code = code ? code : migrate(model, migrations);
    return code ? code : model.queryText(kDescribe, description);
}

void localDay(sqlite3_context *context, int, sqlite3_value **values)
{
    sqlite3_result_int(context, TimeZone::system().dayOf(sqlite3_value_int64(values[0])));
}

} // namespace

Migrations schemaMigrations()
{
    return {
        // 1: amounts per bucket (start in seconds since 1970-01-01 UTC) and connect type; when the
        // figures of a type were last reset, at first the time when the store was begun
        "CREATE TABLE bucket ("
        " type INTEGER NOT NULL CHECK (type IN (0, 1)),"
        " start INTEGER NOT NULL,"
        " download INTEGER NOT NULL CHECK (download >= 0),"
        " upload INTEGER NOT NULL CHECK (upload >= 0),"
        " time_ms INTEGER NOT NULL CHECK (time_ms >= 0),"
        " PRIMARY KEY (type, start)) WITHOUT ROWID;"
        "CREATE TABLE reset ("
        " type INTEGER NOT NULL PRIMARY KEY CHECK (type IN (0, 1)),"
        " at INTEGER NOT NULL);"
        "INSERT INTO reset (type, at) VALUES"
        " (0, CAST(strftime('%s', 'now') AS INTEGER)),"
        " (1, CAST(strftime('%s', 'now') AS INTEGER));",
        kBooks,
    };
}

SchemaCheck checkSchema(Database &database, const Migrations &migrations)
{
    SchemaCheck check;
    check.error = database.queryInteger("PRAGMA user_version", check.number);
    std::string found;
    if (check.error == SQLITE_OK)
        check.error = database.queryText(kDescribe, found);
    if (check.error != SQLITE_OK)
        return check;
    const auto current = static_cast<std::int64_t>(migrations.size());
    if (check.number > current) {
        check.state = SchemaState::Newer;
        return check;
    }
    std::string expected;
    if (check.number >= 0)
        check.error = describeSchema(static_cast<std::size_t>(check.number), migrations, expected);
    if (check.error == SQLITE_OK)
        check.state = found != expected ? SchemaState::Foreign
            : check.number == current   ? SchemaState::Current
                                        : SchemaState::Old;
    return check;
}

int checkContent(Database &database)
{
    std::string health;
    int code = database.queryText("PRAGMA quick_check(1)", health);
    if (code == SQLITE_OK && health != "ok")
        code = SQLITE_CORRUPT;
    std::string query;
    if (code == SQLITE_OK)
        code = database.queryText(kStrangeValues, query);
    std::int64_t found = 0;
    if (code == SQLITE_OK && !query.empty())
        code = database.queryInteger(query.c_str(), found);
    return code == SQLITE_OK && found ? SQLITE_CORRUPT : code;
}

int completeRows(Database &database)
{
    const int code = database.execute(kComplete);
    if (code != SQLITE_OK)
        (void)database.execute("ROLLBACK");
    return code;
}

int migrate(Database &database, const Migrations &migrations)
{
    std::int64_t number = 0;
    int result = database.queryInteger("PRAGMA user_version", number);
    if (result == SQLITE_OK)
        result = sqlite3_create_function(database.handle(), "velq_day", 1, SQLITE_UTF8, nullptr,
                                         localDay, nullptr, nullptr);
    while (result == SQLITE_OK && number < static_cast<std::int64_t>(migrations.size())) {
        const std::string step = std::string("BEGIN IMMEDIATE;")
            + migrations[static_cast<std::size_t>(number)]
            + ";PRAGMA user_version = " + std::to_string(number + 1) + ";COMMIT;";
        result = database.execute(step.c_str());
        if (result != SQLITE_OK)
            (void)database.execute("ROLLBACK");
        ++number;
    }
    return result;
}

} // namespace velq
