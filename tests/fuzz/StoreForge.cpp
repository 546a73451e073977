#include "StoreForge.h"

#include "store/Schema.h"
#include "store/Store.h"

#include <sqlite3.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

using namespace velq;

namespace {

constexpr std::int64_t kToday = kForgeNow / 86400;
constexpr std::int64_t kNumbers[] = {
    0,
    1,
    2,
    3,
    4,
    -1,
    100,
    3600,
    kForgeNow,
    hourStart(kForgeNow),
    hourStart(kForgeNow) - kHourSeconds,
    hourStart(kForgeNow) + kHourSeconds,
    kForgeNow + 10 * 86400,
    kForgeNow - 800 * 86400,
    kToday,
    kToday - 1,
    kToday + 1,
    kToday - 400,
    kForgeBoot,
    kForgeBoot - 5,
    kForgeNow - kForgeBoot,
    INT32_MAX,
    INT32_MIN,
    std::int64_t(INT32_MAX) + 1,
    std::int64_t(1) << 32,
    (std::int64_t(1) << 32) + kToday,
    std::int64_t(1) << 62,
    -(std::int64_t(1) << 62),
    INT64_MAX,
    INT64_MAX - 1,
    INT64_MIN,
    INT64_MIN + 1,
};
const std::string kTexts[] = {
    "",
    kForgeBootId,
    "earlier boot",
    "name:wwan0",
    "hw:02:00:5e:10:00:01",
    "sim:123",
    "operator",
    "wwan0",
    "lo",
    "device",
    "hours_from",
    "9223372036854775807",
    "-9223372036854775808",
    "1e300",
    "12 and more",
    "none",
    "\xff\xfe\xc3\x28",
    std::string("wwan0\0more", 10),
    std::string(1, '\0'),
    "'; DROP TABLE day; --",
    std::string(300, 'x'),
    "\xf0\x9f\x93\xb6",
    "%s%n",
};
constexpr struct
{
    const char *name;
    int columns;
} kTables[] = { { "device", 6 }, { "hour", 8 },    { "day", 7 },   { "mark", 8 },  { "recent", 13 },
                { "reason", 9 }, { "setting", 2 }, { "reset", 2 }, { "bucket", 5 } };
constexpr const char *kTampers[] = {
    "PRAGMA user_version = 0",
    "PRAGMA user_version = 1",
    "PRAGMA user_version = 2",
    "PRAGMA user_version = 3",
    "PRAGMA user_version = -1",
    "PRAGMA user_version = 2147483647",
    "PRAGMA application_id = 77",
    "DROP TABLE hour",
    "DROP TABLE setting",
    "DROP TABLE reset",
    "DROP INDEX reason_at",
    "ALTER TABLE hour DROP COLUMN any_ms",
    "ALTER TABLE reason DROP COLUMN text",
    "ALTER TABLE mark RENAME COLUMN name TO label",
    "ALTER TABLE device ADD COLUMN more",
    "DELETE FROM device",
    "DELETE FROM reset",
    "UPDATE device SET id = id + 1",
    "CREATE TABLE notes (text)",
    "CREATE UNIQUE INDEX one_use ON day (use)",
    "CREATE TRIGGER eat AFTER INSERT ON hour BEGIN DELETE FROM hour; END",
    "CREATE TRIGGER refuse BEFORE INSERT ON mark BEGIN SELECT RAISE(ABORT, 'no'); END",
    "DROP TABLE setting; CREATE VIEW setting AS WITH RECURSIVE n(name, value) AS"
    " (SELECT 'a', 1 UNION ALL SELECT name, value + 1 FROM n) SELECT * FROM n",
    "DROP TABLE day; CREATE TABLE day (day, device, use, download, upload, time_ms, any_ms,"
    " UNIQUE (day, device, use))",
    "DROP TABLE setting; CREATE TABLE setting (name TEXT, value TEXT)",
    "PRAGMA writable_schema = ON; UPDATE sqlite_master SET sql = replace(sql, ' NOT NULL', '');"
    "PRAGMA writable_schema = RESET",
    "PRAGMA writable_schema = ON; UPDATE sqlite_master SET sql = replace(replace(sql, 'TEXT,',"
    " 'TEXT NOT NULL,'), 'INTEGER,', 'INTEGER NOT NULL,'); PRAGMA writable_schema = RESET",
    "PRAGMA writable_schema = ON; UPDATE sqlite_master SET rootpage = 3; PRAGMA writable_schema ="
    " RESET",
    "PRAGMA journal_mode = WAL",
    "PRAGMA auto_vacuum = FULL; VACUUM",
    "PRAGMA encoding = 'UTF-16'",
    "PRAGMA page_size = 512; VACUUM",
};
constexpr const char *kRows
    = "INSERT INTO device VALUES (1, 'name:wwan0', 'Modem', 'wwan0', 0, 1930478000),"
      " (2, 'hw:02:00:5e:10:00:01', 'Wi-Fi', 'wlan0', 1, 1930470000);"
      "INSERT INTO hour VALUES (1930474800, 22343, 1, 0, 100, 10, 5000, 5000),"
      " (1930474800, 22343, 2, 1, 7, 7, 7, 7), (1930300000, 22341, 1, 2, 50, 5, 0, 0);"
      "INSERT INTO day SELECT day, device, use, download, upload, time_ms, any_ms FROM hour;"
      "INSERT INTO mark VALUES ('boot', 3, 33, 'wwan0', 'name:wwan0', 0, 4000, 6000);"
      "INSERT INTO recent VALUES ('boot', 1929478400, 1930474800, 22343, 'name:wwan0', 0, 997000,"
      " 1930474800, 22343, 100, 10, 5000, 5000);"
      "INSERT INTO reason VALUES (1, 1930474800, 1, 'name:wwan0', 0, 10, 20, 0, '');"
      "INSERT INTO setting VALUES ('hours_from', '1867406400')";

void must(int code)
{
    if (code != SQLITE_OK)
        std::abort();
}

void makeFirst(const std::string &path)
{
    Database database;
    must(database.open(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE));
    Migrations first = schemaMigrations();
    first.resize(1);
    must(migrate(database, first));
    must(database.execute("INSERT INTO bucket VALUES (0, 79200, 1, 2, 3), (1, 80100, 10, 0, 0)"));
}

void insertRow(Database &database, FuzzBytes &bytes)
{
    const auto &table = bytes.oneOf(kTables);
    std::string sql = std::string("INSERT OR REPLACE INTO ") + table.name + " VALUES (?1";
    for (int i = 2; i <= table.columns; ++i)
        sql += ", ?" + std::to_string(i);
    sqlite3_stmt *row = nullptr;
    if (sqlite3_prepare_v2(database.handle(), (sql + ")").c_str(), -1, &row, nullptr) != SQLITE_OK)
        return;
    for (int i = 1; i <= table.columns; ++i) {
        const unsigned kind = bytes.next(16);
        const std::string text = kind < 5 ? forgedText(bytes) : std::string();
        if (kind < 4)
            sqlite3_bind_text(row, i, text.data(), int(text.size()), SQLITE_TRANSIENT);
        else if (kind == 4)
            sqlite3_bind_blob(row, i, text.data(), int(text.size()), SQLITE_TRANSIENT);
        else if (kind == 5)
            sqlite3_bind_double(row, i, double(bytes.number()) / 7);
        else if (kind > 6)
            sqlite3_bind_int64(row, i, forgedNumber(bytes));
    }
    (void)sqlite3_step(row);
    sqlite3_finalize(row);
}

void changeContents(const std::string &path, FuzzBytes &bytes)
{
    Database database;
    must(database.open(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE));
    (void)database.execute("PRAGMA synchronous = OFF; PRAGMA ignore_check_constraints = ON");
    // What was a store's own file keeps its mode, others have another one.
    (void)database.execute(bytes.next(2) ? "PRAGMA journal_mode = MEMORY" : "BEGIN");
    for (unsigned left = bytes.next(32); left > 0; --left) {
        if (bytes.next(8) > 0)
            insertRow(database, bytes);
        else
            (void)database.execute(bytes.oneOf(kTampers));
    }
    (void)database.execute("COMMIT");
}

//! Overwrites, cuts or lengthens.
void damage(std::string &content, FuzzBytes &bytes)
{
    for (unsigned left = bytes.next(16); left > 0; --left) {
        const auto at = static_cast<std::uint64_t>(bytes.next()) << 8 | bytes.next();
        const unsigned kind = bytes.next(8);
        const std::string piece = bytes.text();
        if (kind == 0)
            content.resize(content.size() * at / 65536);
        else if (kind == 1)
            content.append(at % 5000, '\x55');
        else if (!content.empty() && kind == 2)
            content[at % content.size()] ^= static_cast<char>(1 << (at % 8));
        else if (!content.empty())
            content.replace(at % content.size(), piece.size(), piece);
    }
}

} // namespace

std::int64_t forgedNumber(FuzzBytes &bytes)
{
    const unsigned kind = bytes.next();
    return kind < 224 ? kNumbers[kind % std::size(kNumbers)] : bytes.number();
}

std::string forgedText(FuzzBytes &bytes)
{
    const unsigned kind = bytes.next();
    return kind < 224 ? kTexts[kind % std::size(kTexts)] : bytes.text();
}

StoreTemplates makeTemplates(const std::string &folder)
{
    StoreTemplates templates;
    const std::string path = folder + "/" + kStoreFileName;
    makeFirst(path);
    templates.first = contentOf(path);
    removeFilesIn(folder);
    StoreOptions options;
    options.directory = folder;
    {
        Store store(options);
        store.open();
        Database database;
        must(database.open(path, SQLITE_OPEN_READWRITE));
        must(database.execute(kRows));
    }
    templates.current = contentOf(path);
    Store store(options);
    Changes changes;
    changes.hours[{ hourStart(kForgeNow), Day(kToday), "name:wwan0", 0 }] = { 5, 6, 7, 8 };
    if (!store.commit(changes))
        std::abort();
    templates.open = contentOf(path);
    templates.log = contentOf(path + "-wal");
    store.close();
    removeFilesIn(folder);
    return templates;
}

void forgeStore(const StoreTemplates &templates, const std::string &folder, FuzzBytes &bytes)
{
    const std::string path = folder + "/" + kStoreFileName;
    const unsigned kind = bytes.next(8);
    std::string content = kind == 0 ? std::string()
        : kind == 1                 ? templates.first
        : kind == 7                 ? templates.open
                                    : templates.current;
    std::string log = kind == 7 ? templates.log : std::string();
    if (kind >= 5)
        damage(content, bytes);
    if (kind >= 6)
        damage(log, bytes);
    writeFile(path, content);
    if (!log.empty())
        writeFile(path + "-wal", log);
    if (kind < 5)
        changeContents(path, bytes);
}

std::string contentOf(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    return { std::istreambuf_iterator<char>(file), {} };
}

void writeFile(const std::string &path, const std::string &content)
{
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << content;
    if (!file.flush())
        std::abort();
}

void removeFilesIn(const std::string &folder)
{
    for (const auto &entry : std::filesystem::directory_iterator(folder))
        std::filesystem::remove(entry.path());
}
