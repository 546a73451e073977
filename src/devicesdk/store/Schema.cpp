#include "store/Schema.h"

#include <sqlite3.h>

#include <string>

namespace velq {

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
    };
}

SchemaCheck checkSchema(Database &database, const Migrations &migrations)
{
    SchemaCheck check;
    std::int64_t tables = 0;
    check.error = database.queryInteger("PRAGMA user_version", check.number);
    if (check.error == SQLITE_OK)
        check.error = database.queryInteger("SELECT count(*) FROM sqlite_master", tables);
    if (check.error != SQLITE_OK)
        return check;
    const auto current = static_cast<std::int64_t>(migrations.size());
    if (check.number > current)
        check.state = SchemaState::Newer;
    else if (check.number < 0 || (check.number == 0) != (tables == 0))
        check.state = SchemaState::Foreign;
    else
        check.state = check.number == current ? SchemaState::Current : SchemaState::Old;
    return check;
}

int migrate(Database &database, const Migrations &migrations)
{
    std::int64_t number = 0;
    int result = database.queryInteger("PRAGMA user_version", number);
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
