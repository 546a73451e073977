#include "counters/LinkMonitor.h"
#include "engine/Engine.h"

#include <QProcess>
#include <QtTest>

#include <ctime>
#include <map>

#include "FaultStage.h"
#include "Frames.h"

using velq::Engine;

//! Clocks that step, zones that change and sleep, with a real link's counters.
class tst_FaultClock : public FaultStage
{
    Q_OBJECT
private slots:
    void theWallClockIsADayOffForAWhile_data();
    void theWallClockIsADayOffForAWhile();
    void theClocksChange_data();
    void theClocksChange();
    void theZoneChangesBetweenStarts();
    void asleepForThreeHours();
    void theBootClockIsThreeHoursAhead();
};

namespace {

constexpr qint64 kHour = velq::kHourSeconds;
constexpr qint64 kDay = 24 * kHour;
constexpr qint64 kNsPerSecond = 1000000000;

//! The uploads of each hour of UTC that is not empty.
using Hours = std::map<qint64, qint64>;

QByteArray textOf(const Hours &hours)
{
    QByteArray text;
    for (const auto &[start, bytes] : hours)
        text += QByteArray::number(start) + ":" + QByteArray::number(bytes) + " ";
    return text;
}

/*! An engine that counts "va", with both clocks in the test's hands. */
class Desk
{
public:
    Desk(const QString &folder, qint64 wallSeconds)
        : wall(wallSeconds)
        , m_folder(folder)
    {
        start();
        m_base = kernelUsage("va");
    }
    void start()
    {
        velq::EngineParts parts;
        parts.source = std::make_unique<velq::LinkMonitor>();
        parts.store.directory = m_folder.toStdString();
        parts.store.wallSeconds = [this] { return wall; };
        parts.boot = "boot";
        parts.clock = { [this] { return boot * kNsPerSecond; }, [this] { return wall; } };
        engine = std::make_unique<Engine>(std::move(parts));
        engine->nameDevice("va");
        engine->sample();
    }
    void restart()
    {
        engine->close();
        engine.reset();
        start();
    }
    void pass(qint64 seconds)
    {
        boot += seconds;
        wall += seconds;
    }
    //! Hours in each of which some frames are sent, with a look and a commit after each.
    [[nodiscard]] bool work(int hours)
    {
        for (int i = 0; i < hours; ++i) {
            const int count = 10 + ++m_worked;
            pass(kHour / 2);
            if (!sendFrames("va", count, 1000))
                return false;
            engine->sample();
            engine->ledger().commit();
            sent[boot - boot % kHour] += count * 1000;
            pass(kHour / 2);
        }
        return true;
    }
    //! What was sent, in the hours in which it was, by the wall clock as it goes now.
    [[nodiscard]] Hours expected() const
    {
        Hours hours;
        for (const auto &[start, bytes] : sent)
            hours[start + wall - boot] += bytes;
        return hours;
    }
    [[nodiscard]] Hours hours()
    {
        velq::HourAmounts rows;
        if (!engine->ledger().hours({ INT64_MIN, INT64_MAX }, rows))
            qFatal("the hours cannot be read");
        Hours found;
        for (const auto &[key, amounts] : rows) {
            if (amounts.upload != 0)
                found[key.start] += amounts.upload;
        }
        return found;
    }
    [[nodiscard]] quint64 report(int kind)
    {
        velq::Report report;
        return engine->report(kind, 0, report) ? report.upload : ~0ULL;
    }
    //! Compares what is booked with the kernel's counters.
    [[nodiscard]] bool isExact(const QByteArray &what)
    {
        Usage booked {};
        for (const auto &[start, bytes] : hours())
            booked.upload += quint64(bytes);
        return ::isExact(what, kernelUsage("va") - m_base, booked);
    }
    [[nodiscard]] bool hasFuture()
    {
        const Hours all = hours();
        return !all.empty() && all.rbegin()->first > wall;
    }

    qint64 boot = 100 * kHour; // seconds; whole hours together with the wall clock
    qint64 wall;
    std::unique_ptr<Engine> engine;
    Hours sent; // by the boot clock

private:
    const QString m_folder;
    Usage m_base;
    int m_worked = 0;
};

void setZone(const char *zone)
{
    qputenv("TZ", zone);
    tzset();
}

constexpr qint64 kMorning = 1930467600; // 2031-03-05 09:00 UTC, 10:00 in Berlin

} // namespace

void tst_FaultClock::theWallClockIsADayOffForAWhile_data()
{
    QTest::addColumn<qint64>("step");
    QTest::addColumn<bool>("restart");
    for (const bool restart : { false, true }) {
        const QByteArray words = restart ? ", started anew each time" : "";
        QTest::newRow(("a day ahead and back" + words).constData()) << kDay << restart;
        QTest::newRow(("a day back and ahead" + words).constData()) << -kDay << restart;
        QTest::newRow(("in 1970 for a while" + words).constData())
            << kHour - (kMorning + 10 * kHour) << restart;
    }
}

void tst_FaultClock::theWallClockIsADayOffForAWhile()
{
    QFETCH(qint64, step);
    QFETCH(bool, restart);
    setZone("Europe/Berlin");
    Desk desk(m_folder->path(), kMorning);
    QVERIFY(desk.work(3));
    desk.wall += step;
    if (restart)
        desk.restart();
    QVERIFY(desk.work(2));
    QVERIFY(desk.isExact(QByteArray(QTest::currentDataTag()) + ", meanwhile"));
    desk.wall -= step;
    if (restart)
        desk.restart();
    QVERIFY(desk.work(2));
    QVERIFY(desk.isExact(QTest::currentDataTag()));
    QCOMPARE(textOf(desk.hours()), textOf(desk.expected()));
    QVERIFY(!desk.hasFuture());
    for (const int kind : { 1, 3, 4, 5 })
        QCOMPARE(desk.report(kind), desk.report(5));
}

void tst_FaultClock::theClocksChange_data()
{
    QTest::addColumn<qint64>("midnight"); // at which the day of the change begins
    QTest::addColumn<int>("length");
    QTest::newRow("23 hours in spring") << qint64(1932591600) << 23; // 2031-03-29 23:00 UTC
    QTest::newRow("25 hours in autumn") << qint64(1950732000) << 25; // 2031-10-25 22:00 UTC
}

void tst_FaultClock::theClocksChange()
{
    QFETCH(qint64, midnight);
    QFETCH(int, length);
    setZone("Europe/Berlin");
    Desk desk(m_folder->path(), midnight - 4 * kHour);
    QVERIFY(desk.work(4));
    QVERIFY(desk.work(length - 1));
    quint64 today = 0;
    for (const auto &[start, bytes] : desk.expected())
        today += start >= midnight ? quint64(bytes) : 0;
    QCOMPARE(desk.report(1), today);
    QVERIFY(desk.work(1));
    desk.wall -= 1; // the last second of that day
    QCOMPARE(desk.report(1), today + quint64(desk.sent.rbegin()->second));
    desk.wall += 1;
    QCOMPARE(desk.report(1), 0ULL);
    QVERIFY(desk.work(4));
    QVERIFY(desk.isExact(QTest::currentDataTag()));
    QCOMPARE(textOf(desk.hours()), textOf(desk.expected()));
    QCOMPARE(int(desk.hours().size()), length + 8);
    QVERIFY(!desk.hasFuture());
}

//! Each hour stays in the day that it had where the computer was.
void tst_FaultClock::theZoneChangesBetweenStarts()
{
    constexpr qint64 kEvening = 1930510800; // 2031-03-05 21:00 UTC, 22:00 in Berlin
    Desk desk(m_folder->path(), kEvening);
    quint64 days = 0;
    for (const char *zone : { "Europe/Berlin", "America/New_York", "Pacific/Auckland", "UTC" }) {
        setZone(zone);
        desk.restart();
        QVERIFY(desk.work(3));
        QCOMPARE(textOf(desk.hours()), textOf(desk.expected()));
        QVERIFY(!desk.hasFuture());
    }
    velq::DayAmounts rows;
    QVERIFY(desk.engine->ledger().days({ 0, INT32_MAX }, rows));
    for (const auto &[key, amounts] : rows)
        days += quint64(amounts.upload);
    QCOMPARE(days, desk.report(5));
    QVERIFY(desk.isExact("four zones, started anew in each"));
}

void tst_FaultClock::asleepForThreeHours()
{
    setZone("Europe/Berlin");
    Desk desk(m_folder->path(), kMorning);
    QVERIFY(desk.work(2));
    QVERIFY(sendFrames("va", 5, 1000)); // just before; it is found at the end
    desk.pass(3 * kHour);
    desk.engine->sample();
    desk.sent[desk.boot - desk.boot % kHour] += 5000;
    QVERIFY(desk.work(2));
    QVERIFY(desk.isExact("asleep for three hours"));
    QCOMPARE(textOf(desk.hours()), textOf(desk.expected()));
    velq::Report report;
    QVERIFY(desk.engine->report(1, 0, report));
    QCOMPARE(qint64(report.seconds), 6 * kHour + kHour / 2); // up to the last look
}

//! A program in a namespace of its own sees three hours that the wall clock has not seen: what was
//! booked before has been three hours earlier then.
void tst_FaultClock::theBootClockIsThreeHoursAhead()
{
    const QStringList ahead { "unshare", "--time", "--boottime", "10800" };
    if (QProcess::execute("unshare", ahead.mid(1) + QStringList { "true" }) != 0)
        QSKIP("time namespaces are not allowed here");
    qputenv("TZ", noonZone());
    ClientOptions options = beginStore("store", "");
    const Usage base = kernelUsage("va");
    const auto uploadSince = [&](qint64 hours) {
        const qint64 from = std::time(nullptr) + hours * kHour;
        const QByteArray sql
            = "SELECT sum(upload) FROM hour WHERE start > " + QByteArray::number(from);
        return stored(options.folder, sql.constData());
    };
    Usage usage;
    for (const bool isAhead : { false, true }) {
        options.launcher = isAhead ? ahead : QStringList();
        FaultClient client;
        client.start(options);
        QVERIFY(client.waitUntilReady(usage));
        QVERIFY(sendFrames("va", 100, 1000));
        QCOMPARE(client.look().upload, (kernelUsage("va") - base).upload);
        QVERIFY(client.end());
        QCOMPARE(uploadSince(-2), isAhead ? 100000 : qint64((kernelUsage("va") - base).upload));
        QVERIFY(uploadSince(0) <= 0);
    }
    QVERIFY(
        isExact("boot clock three hours ahead", kernelUsage("va") - base, usageAtLast(options)));
}

int main(int argc, char **argv)
{
    return FaultStage::run<tst_FaultClock>(argc, argv);
}
#include "tst_faultclock.moc"
