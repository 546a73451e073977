#include "store/Schema.h"

#include <QtTest>

#include <sqlite3.h>

using velq::checkSchema;
using velq::Database;
using velq::migrate;
using velq::Migrations;
using velq::SchemaState;

class tst_Schema : public QObject
{
    Q_OBJECT
private slots:
    void anEmptyDatabaseGetsEveryStep();
    void anOldDatabaseGetsTheMissingSteps();
    void aStepThatFailsLeavesWhatWasReached();
    void aNewerDatabaseIsKnownAsSuch();
    void theShippedStepsMakeTheTables();
    void quarterHoursBecomeHoursOfTheirDays();
    void aClosedDatabaseIsUnreadable();
};

namespace {

const char *kFirst = "CREATE TABLE first (value); INSERT INTO first VALUES (1)";
const char *kSecond = "CREATE TABLE second (value); INSERT INTO second SELECT value FROM first";
const char *kBroken = "CREATE TABLE third (value); CREATE TABLE first (value)";

void openMemory(Database &database)
{
    if (database.open(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE) != SQLITE_OK)
        qFatal("no database");
}

std::int64_t number(Database &database, const char *sql)
{
    std::int64_t value = -1;
    if (database.queryInteger(sql, value) != SQLITE_OK)
        return -2;
    return value;
}

} // namespace

void tst_Schema::anEmptyDatabaseGetsEveryStep()
{
    Database database;
    openMemory(database);
    const Migrations steps { kFirst, kSecond };
    QCOMPARE(checkSchema(database, steps).state, SchemaState::Old);
    QCOMPARE(migrate(database, steps), SQLITE_OK);
    QCOMPARE(number(database, "PRAGMA user_version"), std::int64_t(2));
    QCOMPARE(number(database, "SELECT value FROM second"), std::int64_t(1));
    QCOMPARE(checkSchema(database, steps).state, SchemaState::Current);
    QCOMPARE(migrate(database, steps), SQLITE_OK); // nothing is left to do
    QCOMPARE(number(database, "SELECT count(*) FROM second"), std::int64_t(1));
}

void tst_Schema::anOldDatabaseGetsTheMissingSteps()
{
    Database database;
    openMemory(database);
    QCOMPARE(migrate(database, { kFirst }), SQLITE_OK);
    QCOMPARE(database.execute("UPDATE first SET value = 42"), SQLITE_OK);
    QCOMPARE(migrate(database, { kFirst, kSecond }), SQLITE_OK);
    QCOMPARE(number(database, "SELECT value FROM second"), std::int64_t(42));
}

void tst_Schema::aStepThatFailsLeavesWhatWasReached()
{
    Database database;
    openMemory(database);
    QVERIFY(migrate(database, { kFirst, kSecond, kBroken }) != SQLITE_OK);
    QCOMPARE(number(database, "PRAGMA user_version"), std::int64_t(2));
    QCOMPARE(number(database, "SELECT count(*) FROM sqlite_master WHERE name = 'third'"),
             std::int64_t(0));
    QCOMPARE(migrate(database, { kFirst, kSecond }), SQLITE_OK); // no transaction stayed open
}

void tst_Schema::aNewerDatabaseIsKnownAsSuch()
{
    Database database;
    openMemory(database);
    QCOMPARE(migrate(database, { kFirst, kSecond }), SQLITE_OK);
    const velq::SchemaCheck check = checkSchema(database, { kFirst });
    QCOMPARE(check.state, SchemaState::Newer);
    QCOMPARE(check.number, std::int64_t(2));
}

void tst_Schema::theShippedStepsMakeTheTables()
{
    Database database;
    openMemory(database);
    QCOMPARE(migrate(database, velq::schemaMigrations()), SQLITE_OK);
    QCOMPARE(number(database, "SELECT count(*) FROM hour"), std::int64_t(0));
    QCOMPARE(number(database, "SELECT count(*) FROM device"), std::int64_t(0));
    QCOMPARE(number(database, "SELECT count(*) FROM reset"), std::int64_t(2));
    QVERIFY(database.execute("INSERT INTO day VALUES (0, 1, 4, 0, 0, 0, 0)") != SQLITE_OK);
}

void tst_Schema::quarterHoursBecomeHoursOfTheirDays()
{
    Database database;
    openMemory(database);
    Migrations first = velq::schemaMigrations();
    first.resize(1);
    QCOMPARE(migrate(database, first), SQLITE_OK);
    // Four quarters of an hour, the next hour of the same day, the next day, and Wi-Fi.
    QCOMPARE(database.execute("INSERT INTO bucket VALUES (0, 79200, 1, 2, 3), (0, 80100, 10, 0, 0),"
                              " (0, 81900, 100, 0, 0), (0, 82800, 1000, 5, 0),"
                              " (0, 86400, 10000, 0, 0), (1, 79200, 7, 7, 7)"),
             SQLITE_OK);
    QCOMPARE(migrate(database, velq::schemaMigrations()), SQLITE_OK);
    QCOMPARE(number(database, "SELECT download FROM hour WHERE start = 79200 AND use = 0"),
             std::int64_t(111));
    QCOMPARE(number(database, "SELECT count(*) FROM hour"), std::int64_t(4));
    QCOMPARE(number(database, "SELECT download FROM day WHERE day = 0 AND use = 0"),
             std::int64_t(1111));
    QCOMPARE(number(database, "SELECT download FROM day WHERE day = 1"), std::int64_t(10000));
    QCOMPARE(number(database, "SELECT any_ms FROM day WHERE day = 0 AND use = 1"), std::int64_t(7));
    QCOMPARE(number(database, "SELECT count(*) FROM device"), std::int64_t(1));
}

void tst_Schema::aClosedDatabaseIsUnreadable()
{
    Database database;
    QCOMPARE(checkSchema(database, velq::schemaMigrations()).state, SchemaState::Unreadable);
    QVERIFY(migrate(database, velq::schemaMigrations()) != SQLITE_OK);
}

QTEST_GUILESS_MAIN(tst_Schema)
#include "tst_schema.moc"
