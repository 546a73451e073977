// Rules and files of time zones that are broken, and names that are none.

#include "calendar/TimeZone.h"
#include "calendar/ZoneFile.h"
#include "calendar/ZoneRule.h"
#include "calendar/ZoneTables.h"

#include <QTemporaryFile>
#include <QtTest>

#include <algorithm>
#include <limits>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

using velq::TimeZone;
using Changes = std::vector<std::pair<qint64, int>>; // the instant and the type's number
Q_DECLARE_METATYPE(Changes)

class tst_ZoneFile : public QObject
{
    Q_OBJECT
private slots:
    void onlyRulesAreTaken_data();
    void onlyRulesAreTaken();
    void aRuleIsTakenApart();
    void onlyNamesOfZonesHavePaths_data();
    void onlyNamesOfZonesHavePaths();
    void everyCutIsNoticed();
    void countsBeyondTheFileAreNoticed();
    void tablesAreRead();
    void tablesThatContradictThemselvesAreRefused_data();
    void tablesThatContradictThemselvesAreRefused();
    void aFileWithLittleButARuleIsFollowed_data();
    void aFileWithLittleButARuleIsFollowed();
    void anOldFileIsFollowed();
    void aFileWithLeapSecondsIsRefused();
    void damagedFilesDoNoHarm();
};

namespace {

std::string fileOf(const char *zone)
{
    const auto bytes = velq::readZoneFile(velq::zonePath(zone));
    if (!bytes)
        qFatal("no zone %s", zone);
    return *bytes;
}

std::optional<TimeZone> zoneOf(const std::string &bytes)
{
    QTemporaryFile file;
    if (!file.open() || file.write(bytes.data(), qint64(bytes.size())) < 0 || !file.flush())
        qFatal("no file");
    return TimeZone::ofFile(file.fileName().toStdString(), "tested");
}

void append(std::string &bytes, qint64 number, int size)
{
    for (int i = size; i-- > 0;)
        bytes += char(number >> (8 * i));
}

void appendHeader(std::string &bytes, std::size_t changes, std::size_t types)
{
    bytes += "TZif2";
    bytes.append(15, '\0');
    for (const std::size_t count :
         { std::size_t(0), std::size_t(0), std::size_t(0), changes, types, std::size_t(0) })
        append(bytes, qint64(count), 4);
}

//! A file with one type of local time.
std::string zoneBytes(int offset, const Changes &changes, const std::string &rule)
{
    std::string bytes;
    appendHeader(bytes, 0, 0); // who knows only short instants finds nothing
    appendHeader(bytes, changes.size(), 1);
    for (const auto &[instant, type] : changes)
        append(bytes, instant, 8);
    for (const auto &[instant, type] : changes)
        append(bytes, type, 1);
    append(bytes, offset, 4);
    append(bytes, 0, 2); // no summer time, and where the name is
    return bytes + '\n' + rule + '\n';
}

//! The order of days must hold even in a zone that is nonsense.
bool keepsItsWord(const TimeZone &zone, std::int64_t instant)
{
    const velq::Day day = zone.dayOf(instant);
    return zone.firstInstant(day) <= instant && instant < zone.firstInstant(day + 1);
}

} // namespace

void tst_ZoneFile::onlyRulesAreTaken_data()
{
    QTest::addColumn<QByteArray>("rule");
    QTest::addColumn<bool>("taken");
    for (const char *rule :
         { "UTC0", "CET-1", "CET-1CEST", "CET-01:00:00CEST-02:00:00,M3.5.0/2,M10.5.0/3",
           "<-03>3<-02>,M3.5.0/-2,M10.5.0/-1", "EST5EDT,J1,J365/167:59:59", "EST+5EDT,0,365/-167",
           "AAA23:59:59", "AAA-23:59:59" })
        QTest::newRow(rule) << QByteArray(rule) << true;
    for (const char *rule : { "",
                              "CET",
                              "CE-1",
                              "-1",
                              "CET-",
                              "CET-24",
                              "CET24",
                              "CET-1:60",
                              "CET-1:00:60",
                              "CET-1:",
                              "CET--1",
                              "<CET-1",
                              "<CE>-1",
                              "CET>-1",
                              "CET-1CE",
                              "CET-1CEST,",
                              "CET-1CEST,M3.5.0",
                              "CET-1CEST,M3.5.0,",
                              "CET-1CEST,M0.5.0,M10.5.0",
                              "CET-1CEST,M13.5.0,M10.5.0",
                              "CET-1CEST,M3.0.0,M10.5.0",
                              "CET-1CEST,M3.6.0,M10.5.0",
                              "CET-1CEST,M3.5.7,M10.5.0",
                              "CET-1CEST,M3.5,M10.5.0",
                              "CET-1CEST,J0,J300",
                              "CET-1CEST,J366,J1",
                              "CET-1CEST,366,1",
                              "CET-1CEST,J60/168,J300",
                              "CET-1CEST,J60,J300 ",
                              "CET-1CEST,J60,J300,J301",
                              "CET-99999999999999999999",
                              "CET-1,M3.5.0,M10.5.0" })
        QTest::newRow(*rule ? rule : "nothing") << QByteArray(rule) << false;
}

void tst_ZoneFile::onlyRulesAreTaken()
{
    QFETCH(QByteArray, rule);
    QTEST(TimeZone::ofRule(rule.toStdString()).has_value(), "taken");
}

void tst_ZoneFile::aRuleIsTakenApart()
{
    const auto rule = velq::parseZoneRule("<-0330>3:30:10NDT,J60/-1:30,M10.5.6");
    QVERIFY(rule);
    QCOMPARE(rule->standard, -(3 * 3600 + 30 * 60 + 10));
    QVERIFY(rule->hasSummer);
    QCOMPARE(rule->summer, rule->standard + 3600);
    QCOMPARE(int(rule->begin.kind), int(velq::RuleDate::Kind::DayWithoutLeap));
    QCOMPARE(rule->begin.day, 60);
    QCOMPARE(rule->begin.seconds, -5400);
    QCOMPARE(int(rule->end.kind), int(velq::RuleDate::Kind::WeekdayOfMonth));
    QCOMPARE(rule->end.month, 10);
    QCOMPARE(rule->end.week, 5);
    QCOMPARE(rule->end.weekday, 6);
    QCOMPARE(rule->end.seconds, 7200);
}

void tst_ZoneFile::onlyNamesOfZonesHavePaths_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<bool>("path");
    for (const char *name : { "UTC", "Etc/GMT+5", "America/Port-au-Prince", "a_b/c" })
        QTest::newRow(name) << QByteArray(name) << true;
    for (const char *name : { "/etc/localtime", "../x", "a/../b", "zone.tab", "a b", "\xc3\xa4" })
        QTest::newRow(name) << QByteArray(name) << false;
    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("with a zero byte") << QByteArray("UTC\0x", 5) << false;
    QTest::newRow("very long") << QByteArray(256, 'a') << false;
}

void tst_ZoneFile::onlyNamesOfZonesHavePaths()
{
    QFETCH(QByteArray, name);
    QFETCH(bool, path);
    QCOMPARE(!velq::zonePath(name.toStdString()).empty(), path);
    if (!path)
        QVERIFY(!TimeZone::named(name.toStdString()));
}

void tst_ZoneFile::everyCutIsNoticed()
{
    const std::string whole = fileOf("Europe/Berlin");
    QVERIFY(velq::readZoneTables(whole));
    for (std::size_t length = 0; length < whole.size(); ++length)
        QVERIFY2(!velq::readZoneTables(whole.substr(0, length)), std::to_string(length).c_str());
}

void tst_ZoneFile::countsBeyondTheFileAreNoticed()
{
    const std::string whole = fileOf("Europe/Berlin");
    for (std::size_t count = 20; count < 44; count += 4) {
        std::string bytes = whole;
        for (std::size_t i = 0; i < 4; ++i)
            bytes[count + i] = '\xff';
        QVERIFY(!velq::readZoneTables(bytes));
    }
}

void tst_ZoneFile::tablesAreRead()
{
    const auto tables = velq::readZoneTables(fileOf("Europe/Berlin"));
    QVERIFY(tables);
    QCOMPARE(tables->rule, std::string("CET-1CEST,M3.5.0,M10.5.0/3"));
    QCOMPARE(tables->offset, 53 * 60 + 28); // before there were zones
    const auto found = std::find_if(tables->changes.begin(), tables->changes.end(),
                                    [](const auto &change) { return change.instant == 323830800; });
    QVERIFY(found != tables->changes.end()); // 1980-04-06, the first summer time in 30 years
    QCOMPARE(found->offset, 7200);
    QCOMPARE((found - 1)->offset, 3600);
}

void tst_ZoneFile::tablesThatContradictThemselvesAreRefused_data()
{
    constexpr qint64 kFarthest = qint64(1) << 60;
    QTest::addColumn<Changes>("changes");
    QTest::addColumn<int>("offset");
    QTest::addColumn<bool>("taken");
    QTest::newRow("in order") << Changes { { 1, 0 }, { 2, 0 } } << 3600 << true;
    QTest::newRow("two at once") << Changes { { 2, 0 }, { 2, 0 } } << 3600 << false;
    QTest::newRow("backwards") << Changes { { 2, 0 }, { 1, 0 } } << 3600 << false;
    QTest::newRow("a type that is not there") << Changes { { 1, 1 } } << 3600 << false;
    QTest::newRow("the earliest") << Changes { { -kFarthest, 0 } } << 3600 << true;
    QTest::newRow("too early") << Changes { { -kFarthest - 1, 0 } } << 3600 << false;
    QTest::newRow("the latest") << Changes { { kFarthest, 0 } } << 3600 << true;
    QTest::newRow("too late") << Changes { { kFarthest + 1, 0 } } << 3600 << false;
    QTest::newRow("almost a day ahead") << Changes {} << 86399 << true;
    QTest::newRow("a day ahead") << Changes {} << 86400 << false;
    QTest::newRow("almost a day behind") << Changes {} << -86399 << true;
    QTest::newRow("a day behind") << Changes {} << -86400 << false;
}

void tst_ZoneFile::tablesThatContradictThemselvesAreRefused()
{
    QFETCH(Changes, changes);
    QFETCH(int, offset);
    QTEST(zoneOf(zoneBytes(offset, changes, "")).has_value(), "taken");
}

// Many systems leave out every change that the rule says anyway, also when the last one that is
// left was to another rule, or there is none.
void tst_ZoneFile::aFileWithLittleButARuleIsFollowed_data()
{
    QTest::addColumn<bool>("withChange");
    QTest::newRow("no change") << false;
    QTest::newRow("a change to another offset") << true;
}

void tst_ZoneFile::aFileWithLittleButARuleIsFollowed()
{
    QFETCH(bool, withChange);
    Changes changes;
    if (withChange)
        changes.push_back({ velq::dayNumber({ 1999, 6, 1 }) * 86400LL, 0 });
    const auto zone = zoneOf(zoneBytes(7200, changes, "CET-1CEST,M3.5.0,M10.5.0/3"));
    QVERIFY(zone);
    const auto berlin = TimeZone::named("Europe/Berlin");
    QVERIFY(berlin);
    for (velq::Day day = velq::dayNumber({ 2000, 1, 1 }); day < velq::dayNumber({ 2101, 1, 1 });
         ++day)
        QCOMPARE(zone->firstInstant(day), berlin->firstInstant(day));
}

void tst_ZoneFile::anOldFileIsFollowed()
{
    std::string bytes("TZif\0", 5);
    bytes.append(15, '\0');
    bytes.append(std::string("\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\2\0\0\0\2\0\0\0\2", 24));
    bytes.append(std::string("\xff\xff\xff\x00\0\1\0\0", 8)); // -256 and 65536
    bytes.append(std::string("\0\1"
                             "\0\0\x0e\x10\0\0"
                             "\0\0\x1c\x20\1\0"
                             "X\0",
                             16));
    const auto zone = zoneOf(bytes);
    QVERIFY(zone);
    QCOMPARE(zone->firstInstant(-10), std::int64_t(-10 * 86400 - 3600));
    QCOMPARE(zone->firstInstant(10), std::int64_t(10 * 86400 - 7200));
}

void tst_ZoneFile::aFileWithLeapSecondsIsRefused()
{
    // Version 1, one leap second, one type: its clock would not be the system's.
    std::string bytes("TZif\0", 5);
    bytes.append(15, '\0');
    bytes.append(std::string("\0\0\0\0\0\0\0\0\0\0\0\1\0\0\0\0\0\0\0\1\0\0\0\4", 24));
    bytes.append(std::string("\0\0\0\0\0\0UTC\0\4\xb2\x58\0\0\0\0\1", 18));
    QVERIFY(!velq::readZoneTables(bytes));
    QVERIFY(!zoneOf(bytes));
}

void tst_ZoneFile::damagedFilesDoNoHarm()
{
    using Limits = std::numeric_limits<std::int64_t>;
    constexpr std::int64_t kFar = 80'000'000'000'000; // 2.5 million years
    bool given = false;
    const quint64 seed = qEnvironmentVariable("NETINFO_SEED").toULongLong(&given);
    const quint64 used = given ? seed : std::random_device {}();
    qInfo("NETINFO_SEED=%llu", static_cast<unsigned long long>(used));
    std::mt19937_64 random(used);
    int taken = 0;
    constexpr int kRounds = 1000;
    for (int round = 0; round < kRounds; ++round) {
        QByteArray bytes
            = QByteArray::fromStdString(fileOf(round % 2 ? "UTC" : "America/St_Johns"));
        for (int i = 0; i <= round % 4; ++i)
            bytes[int(random() % quint64(bytes.size()))] = char(random());
        const auto zone = zoneOf(bytes.toStdString());
        if (!zone)
            continue;
        ++taken;
        for (const std::int64_t instant :
             { -kFar, kFar, std::int64_t(0), std::int64_t(random() % 8000000000) })
            QVERIFY(keepsItsWord(*zone, instant));
        (void)zone->dayOf(Limits::min());
        (void)zone->dayOf(Limits::max());
    }
    qInfo("%d of %d damaged files taken", taken, kRounds);
    QVERIFY(taken > 0 && taken < kRounds);
}

QTEST_GUILESS_MAIN(tst_ZoneFile)
#include "tst_zonefile.moc"
