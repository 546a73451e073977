#include "calendar/SystemZone.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

using velq::SystemZone;
using velq::TimeZone;

class tst_SystemZone : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void theVariableDecides_data();
    void theVariableDecides();
    void aFileByItsPath();
    void aLinkedLocalFileHasTheZonesName();
    void aCopiedLocalFileHasItsOwnName();
    void aMissingLocalFileIsUtc();
    void aDamagedLocalFileIsUtc();
    void aFifoDoesNotBlock();
    void aLocalFileThatChangesIsFollowed();
    void aLocalFileThatAppearsIsFollowed();
    void aVariableThatChangesIsFollowed();
    void aFileOfTheVariableThatChangesIsFollowed();
    void whatIsForgottenIsReadAgain();
    void theProcessVariableIsTheSystems();
    void anotherFolderOfZones();
    void theProcessZoneStaysAlone();
    void manyThreadsMayAsk();

private:
    [[nodiscard]] std::string path(const char *name) const;
    void write(const char *name, const QByteArray &content);
    void link(const char *name, const std::string &target);
    [[nodiscard]] TimeZone local()
    {
        return m_zone->current(nullptr);
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<SystemZone> m_zone; // with the local file "localtime" there
};

namespace {

const char kZones[] = "/usr/share/zoneinfo/";
const velq::Day kSummer = velq::dayNumber({ 2031, 7, 1 });

//! Hours that the zone is ahead of UTC on a day in July.
double hoursAhead(const TimeZone &zone)
{
    return double(kSummer * 86400LL - zone.firstInstant(kSummer)) / 3600;
}

QByteArray zoneFile(const char *name)
{
    QFile file(QLatin1String(kZones) + QLatin1String(name));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("no zone %s", name);
    return file.readAll();
}

} // namespace

std::string tst_SystemZone::path(const char *name) const
{
    return m_directory->filePath(QLatin1String(name)).toStdString();
}

void tst_SystemZone::write(const char *name, const QByteArray &content)
{
    QFile file(QString::fromStdString(path(name)));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), qint64(content.size()));
}

//! In one step, as administrators' tools do it.
void tst_SystemZone::link(const char *name, const std::string &target)
{
    QCOMPARE(symlink(target.c_str(), path("new").c_str()), 0);
    QCOMPARE(rename(path("new").c_str(), path(name).c_str()), 0);
}

void tst_SystemZone::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(m_directory->isValid());
    m_zone = std::make_unique<SystemZone>(path("localtime"));
}

void tst_SystemZone::cleanup()
{
    qputenv("TZ", "UTC");
    qunsetenv("TZDIR");
    m_zone.reset();
}

void tst_SystemZone::theVariableDecides_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<double>("hours");
    const auto row = [](const char *statement, const char *value, const char *name, double hours) {
        QTest::newRow(statement) << QByteArray(value) << QByteArray(name) << hours;
    };
    row("a name", "Europe/Berlin", "Europe/Berlin", 2);
    row("a name after a colon", ":Europe/Berlin", "Europe/Berlin", 2);
    row("UTC", "UTC", "UTC", 0);
    row("empty is UTC", "", "UTC", 0);
    row("a colon alone is UTC", ":", "UTC", 0);
    row("a rule", "CET-1CEST,M3.5.0,M10.5.0/3", "CET-1CEST,M3.5.0,M10.5.0/3", 2);
    row("a rule after a colon", ":CET-1CEST,M3.5.0,M10.5.0/3", "CET-1CEST,M3.5.0,M10.5.0/3", 2);
    row("a rule without summer time", "JST-9", "JST-9", 9);
    row("a rule with its own summer offset", "AAA0BBB-3:30,M4.1.0,M10.1.0",
        "AAA0BBB-3:30,M4.1.0,M10.1.0", 3.5);
    row("a rule without dates has the usual ones", "ABC5DEF", "ABC5DEF", -4);
    row("a rule of the south", "NZST-12NZDT,M9.5.0,M4.1.0/3", "NZST-12NZDT,M9.5.0,M4.1.0/3", 12);
    row("summer all the year", "XXX3EDT4,0/0,J365/23", "XXX3EDT4,0/0,J365/23", -4);
    row("a rule that is a file's name", "EST5EDT", "EST5EDT", -4);
    row("a quoted name", "<+0545>-5:45", "<+0545>-5:45", 5.75);
    row("a path of a zone", "/usr/share/zoneinfo/Asia/Tokyo", "Asia/Tokyo", 9);
    row("a path after a colon", ":/usr/share/zoneinfo/Asia/Tokyo", "Asia/Tokyo", 9);
    row("an unknown name is UTC", "Europe/Atlantis", "UTC", 0);
    row("a missing path is UTC", "/nowhere/Berlin", "UTC", 0);
    row("a folder is UTC", "/usr/share/zoneinfo/Europe", "UTC", 0);
    row("a folder's name is UTC", "Europe", "UTC", 0);
    row("no zone's file is UTC", "/etc/passwd", "UTC", 0);
    row("an endless file is UTC", "/dev/zero", "UTC", 0);
    row("a way out of the folder is UTC", "../../etc/localtime", "UTC", 0);
    row("a rule with something behind it is UTC", "CET-1CEST,M3.5.0,M10.5.0/3x", "UTC", 0);
    row("a rule in several lines is UTC", "CET-1\nCEST", "UTC", 0);
    row("other characters are UTC", "\xff\x01 ,;", "UTC", 0);
}

void tst_SystemZone::theVariableDecides()
{
    QFETCH(QByteArray, value);
    QFETCH(QByteArray, name);
    link("localtime", std::string(kZones) + "Pacific/Apia"); // which must not matter
    const TimeZone zone = m_zone->current(value.constData());
    QCOMPARE(QByteArray::fromStdString(zone.name()), name);
    QTEST(hoursAhead(zone), "hours");
}

void tst_SystemZone::aFileByItsPath()
{
    write("mine", zoneFile("Asia/Kathmandu"));
    const TimeZone zone = m_zone->current(path("mine").c_str());
    QCOMPARE(zone.name(), path("mine"));
    QCOMPARE(hoursAhead(zone), 5.75);
}

void tst_SystemZone::aLinkedLocalFileHasTheZonesName()
{
    link("localtime", std::string(kZones) + "Asia/Kathmandu");
    QCOMPARE(local().name(), std::string("Asia/Kathmandu"));
    QCOMPARE(hoursAhead(local()), 5.75);
}

void tst_SystemZone::aCopiedLocalFileHasItsOwnName()
{
    write("localtime", zoneFile("Asia/Kathmandu"));
    QCOMPARE(local().name(), path("localtime"));
    QCOMPARE(hoursAhead(local()), 5.75);
}

void tst_SystemZone::aMissingLocalFileIsUtc()
{
    QCOMPARE(local().name(), std::string("UTC"));
    link("localtime", "/nowhere/zoneinfo/Asia/Tokyo");
    QCOMPARE(local().name(), std::string("UTC"));
}

void tst_SystemZone::aDamagedLocalFileIsUtc()
{
    const QByteArray whole = zoneFile("Europe/Berlin");
    for (const QByteArray &content : { QByteArray(), QByteArray(whole.size(), '\0'),
                                       whole.left(whole.size() / 2), QByteArray(100000, 'T') }) {
        write("localtime", content);
        QCOMPARE(local().name(), std::string("UTC"));
        QCOMPARE(hoursAhead(local()), 0.0);
    }
}

void tst_SystemZone::aFifoDoesNotBlock()
{
    QCOMPARE(mkfifo(path("localtime").c_str(), 0600), 0);
    QCOMPARE(local().name(), std::string("UTC"));
}

void tst_SystemZone::aLocalFileThatChangesIsFollowed()
{
    link("localtime", std::string(kZones) + "Asia/Tokyo");
    QCOMPARE(hoursAhead(local()), 9.0);
    link("localtime", std::string(kZones) + "Europe/Berlin"); // another link
    QCOMPARE(hoursAhead(local()), 2.0);
    QCOMPARE(unlink(path("localtime").c_str()), 0);
    write("localtime", zoneFile("Asia/Kathmandu")); // a file instead
    QCOMPARE(hoursAhead(local()), 5.75);
    write("localtime", zoneFile("Asia/Tokyo")); // the same file written again
    QCOMPARE(hoursAhead(local()), 9.0);
    write("localtime", "nonsense");
    QCOMPARE(local().name(), std::string("UTC"));
    link("localtime", std::string(kZones) + "Asia/Tokyo"); // one that was there before
    QCOMPARE(hoursAhead(local()), 9.0);
}

void tst_SystemZone::aLocalFileThatAppearsIsFollowed()
{
    QCOMPARE(local().name(), std::string("UTC"));
    link("localtime", std::string(kZones) + "Asia/Tokyo");
    QCOMPARE(local().name(), std::string("Asia/Tokyo"));
}

void tst_SystemZone::aVariableThatChangesIsFollowed()
{
    link("localtime", std::string(kZones) + "Asia/Kathmandu");
    QCOMPARE(hoursAhead(m_zone->current("Europe/Berlin")), 2.0);
    QCOMPARE(hoursAhead(m_zone->current("JST-9")), 9.0);
    QCOMPARE(hoursAhead(m_zone->current(nullptr)), 5.75);
    QCOMPARE(hoursAhead(m_zone->current("")), 0.0);
    QCOMPARE(hoursAhead(m_zone->current("Europe/Berlin")), 2.0);
}

void tst_SystemZone::aFileOfTheVariableThatChangesIsFollowed()
{
    write("mine", zoneFile("Asia/Tokyo"));
    const std::string file = path("mine");
    QCOMPARE(hoursAhead(m_zone->current(file.c_str())), 9.0);
    write("mine", zoneFile("Asia/Kathmandu"));
    QCOMPARE(hoursAhead(m_zone->current(file.c_str())), 5.75);
}

void tst_SystemZone::whatIsForgottenIsReadAgain()
{
    link("localtime", std::string(kZones) + "Asia/Tokyo");
    const TimeZone before = local();
    m_zone->forget();
    QCOMPARE(hoursAhead(before), 9.0); // copies live on
    QCOMPARE(hoursAhead(local()), 9.0);
}

void tst_SystemZone::theProcessVariableIsTheSystems()
{
    qputenv("TZ", "Asia/Kathmandu");
    QCOMPARE(TimeZone::system().name(), std::string("Asia/Kathmandu"));
    qputenv("TZ", "JST-9");
    QCOMPARE(hoursAhead(TimeZone::system()), 9.0);
}

void tst_SystemZone::anotherFolderOfZones()
{
    write("Home", zoneFile("Asia/Kathmandu"));
    QVERIFY(!TimeZone::named("Home"));
    qputenv("TZDIR", m_directory->path().toUtf8());
    QCOMPARE(hoursAhead(TimeZone::named("Home").value_or(TimeZone::utc())), 5.75);
    QCOMPARE(hoursAhead(m_zone->current("Home")), 5.75);
    QVERIFY(!TimeZone::named("Europe/Berlin"));
    QVERIFY(TimeZone::named("UTC")); // needs no file
}

void tst_SystemZone::theProcessZoneStaysAlone()
{
    qputenv("TZ", "Asia/Tokyo");
    tzset();
    const long before = timezone;
    qputenv("TZ", "Europe/Berlin"); // without tzset(): whose turn it is, is the host's affair
    QCOMPARE(hoursAhead(TimeZone::system()), 2.0);
    QCOMPARE(timezone, before);
}

void tst_SystemZone::manyThreadsMayAsk()
{
    link("localtime", std::string(kZones) + "Asia/Kathmandu");
    const std::array<std::pair<const char *, double>, 4> zones {
        { { nullptr, 5.75 }, { "Europe/Berlin", 2 }, { "JST-9", 9 }, { "Asia/Tokyo", 9 } }
    };
    std::atomic<int> wrong { 0 };
    std::vector<std::thread> threads;
    for (std::size_t first = 0; first < zones.size(); ++first)
        threads.emplace_back([&, first] {
            for (std::size_t i = first; i < first + 200; ++i) {
                const auto &[variable, hours] = zones[i % zones.size()];
                const TimeZone zone = m_zone->current(variable);
                wrong += hoursAhead(zone) != hours || zone.dayOf(kSummer * 86400LL) != kSummer;
            }
        });
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(wrong.load(), 0);
}

QTEST_GUILESS_MAIN(tst_SystemZone)
#include "tst_systemzone.moc"
