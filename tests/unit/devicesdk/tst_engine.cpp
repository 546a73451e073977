#include "engine/Engine.h"

#include <QtTest>

#include <array>
#include <cstring>
#include <memory>
#include <vector>

#include "ScriptedLinks.h"
#include "StoreFolder.h"

using velq::Engine;
using velq::Report;

namespace {

constexpr qint64 kSecond = 1000000000;

//! What the tests change and the engine sees.
struct World
{
    ScriptedLinks script;
    qint64 bootNs = 5 * kSecond;
    qint64 wall = kNow;

    //! The link that the tests use.
    [[nodiscard]] velq::Link &link()
    {
        return script.links.at(3).link;
    }
    void flow(quint64 download, quint64 upload)
    {
        script.links.at(3).counters.download += download;
        script.links.at(3).counters.upload += upload;
    }
    void pass(qint64 seconds = 1)
    {
        bootNs += seconds * kSecond;
        wall += seconds;
    }
};

struct Event
{
    int number = 0;
    std::array<char, 8> data {};
};
std::vector<Event> g_events;
Engine *g_engine = nullptr;

int record(int event, void *data)
{
    Event seen;
    seen.number = event;
    std::memcpy(seen.data.data(), data, seen.data.size());
    g_events.push_back(seen);
    return 77; // not used
}

int askFromInside(int event, void *data)
{
    Report report;
    if (g_engine->report(0, 0, report) && g_engine->reset(0) && g_engine->report(1, 0, report)
        && g_engine->callbacks().remove(askFromInside))
        return record(event, data);
    return 1;
}

} // namespace

class tst_Engine : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void theLiveReportFollowsTheCounters();
    void aDisconnectEndsTheLiveFiguresAtOnce();
    void theOtherTypesReportIsEmpty();
    void withoutAConnectionTheLiveReportIsEmpty();
    void periodsEndWithTheirLastSecond();
    void weeksAndMonthsFollowTheChosenStart();
    void aClockStepNeitherLosesNorDoubles();
    void aClockBefore1970IsTheEpoch();
    void historyTakesWholeHoursOfBothTypes();
    void historyBeyondNowIsEmpty();
    void resetClearsStoredAndLive();
    void resetOfTheOtherTypeKeepsThis();
    void unknownKindsFail_data();
    void unknownKindsFail();
    void commitsEveryFewTicks();
    void aLittleWaitsLonger();
    void eachTickSendsOneEvent();
    void callbacksMayAskAndLeave();
    void theRouteMovingToAnotherLinkBooksTheRest();
    void aNewEngineGoesOnWhereTheLastWasKilled();
    void aStoreThatCanBeReadLateLosesNothing();
    void theUsedDeviceIsRemembered();
    void theOperatorsFigureIsTakenOver();
    void theOperatorsFigureReplacesTheLeastAmount();
    void hoursAreThinnedOutByPolicy();
    void afterClosingAnswersGoOnFromMemory();

private:
    void start();
    //! As after the end of the process: nothing more is written.
    void restart();
    [[nodiscard]] Report get(int kind, int type = 0);
    void secondOf(quint64 download, quint64 upload);
    //! Time passes until \a wall, while nothing is connected.
    void jump(qint64 wall);

    World m_world;
    std::unique_ptr<StoreFolder> m_folder;
    std::unique_ptr<Engine> m_engine;
};

void tst_Engine::init()
{
    m_world = {};
    m_world.script.connect(3, "va").counters = { 5000, 7000 };
    m_folder = std::make_unique<StoreFolder>();
    g_events.clear();
    start();
    m_engine->sample();
}

void tst_Engine::start()
{
    velq::EngineParts parts;
    parts.source = std::make_unique<ScriptedLinkSource>(m_world.script);
    parts.store = m_folder->options();
    parts.boot = "boot";
    parts.clock = { [this] { return std::int64_t(m_world.bootNs); },
                    [this] { return std::int64_t(m_world.wall); } };
    m_engine = std::make_unique<Engine>(std::move(parts));
    g_engine = m_engine.get();
}

void tst_Engine::restart()
{
    m_engine.reset();
    start();
}

void tst_Engine::cleanup()
{
    m_engine.reset();
    m_folder.reset();
}

Report tst_Engine::get(int kind, int type)
{
    Report report;
    if (!m_engine->report(kind, type, report))
        qFatal("no report");
    return report;
}

void tst_Engine::secondOf(quint64 download, quint64 upload)
{
    m_world.flow(download, upload);
    m_world.pass();
    m_engine->tick();
}

void tst_Engine::jump(qint64 wall)
{
    if (wall > m_world.wall)
        m_world.bootNs += (wall - m_world.wall) * kSecond;
    m_world.wall = wall;
    m_world.script.bounced = true;
    m_engine->sample();
}

void tst_Engine::theLiveReportFollowsTheCounters()
{
    QCOMPARE(get(0).download, std::uint64_t(0));
    secondOf(1000, 10);
    secondOf(3000, 20);
    const Report report = get(0);
    QCOMPARE(report.download, std::uint64_t(4000));
    QCOMPARE(report.upload, std::uint64_t(30));
    QCOMPARE(report.downloadSpeed, 3000U);
    QCOMPARE(report.uploadSpeed, 20U);
    QCOMPARE(report.seconds, std::int64_t(2));
    QCOMPARE(report.lastReset, 0U);
    const velq::LiveFigures live = m_engine->live();
    QCOMPARE(live.firstDownload, std::uint64_t(5000));
    QCOMPARE(live.lastUpload, std::uint64_t(7030));
}

void tst_Engine::aDisconnectEndsTheLiveFiguresAtOnce()
{
    secondOf(1000, 10);
    m_world.flow(500, 5); // since the latest tick
    m_engine->noteDisconnect();
    QVERIFY(!m_engine->live().connected);
    QCOMPARE(get(0).download, std::uint64_t(0));
    QCOMPARE(get(1).download, std::uint64_t(1500));
    m_world.link().up = true;
    secondOf(0, 0);
    secondOf(70, 0);
    QCOMPARE(get(0).download, std::uint64_t(70));
    QCOMPARE(get(0).seconds, std::int64_t(1));
    QCOMPARE(get(1).download, std::uint64_t(1570));
}

void tst_Engine::theOtherTypesReportIsEmpty()
{
    secondOf(1000, 10);
    for (const int kind : { 0, 1, 3, 4, 5 }) {
        const Report report = get(kind, 1);
        QCOMPARE(report.download, std::uint64_t(0));
        QCOMPARE(report.seconds, std::int64_t(0));
    }
    m_world.script.disconnect(3);
    m_world.script.connect(4, "wlan0").link.wireless = true;
    m_world.pass();
    m_engine->tick();
    m_world.script.links.at(4).counters.download += 500;
    m_world.pass();
    m_engine->tick();
    QCOMPARE(get(0, 0).download, std::uint64_t(0));
    QCOMPARE(get(0, 1).download, std::uint64_t(500));
    QCOMPARE(get(1, 0).download, std::uint64_t(1000));
    QCOMPARE(get(1, 1).download, std::uint64_t(500));
}

void tst_Engine::withoutAConnectionTheLiveReportIsEmpty()
{
    secondOf(1000, 10);
    m_world.link().up = false;
    secondOf(50, 5);
    QCOMPARE(get(0).download, std::uint64_t(0));
    QCOMPARE(get(0).downloadSpeed, 0U);
    QCOMPARE(get(1).download, std::uint64_t(1050)); // those were real
    m_world.script.disconnect(3);
    m_world.pass();
    m_engine->tick();
    QCOMPARE(get(0).seconds, std::int64_t(0));
    QVERIFY(m_engine->live().interface.empty());
    QCOMPARE(get(1).seconds, std::int64_t(1));
}

void tst_Engine::periodsEndWithTheirLastSecond()
{
    jump(1932681598); // 2031-03-30 23:59:58, a Sunday
    secondOf(1, 0);
    QCOMPARE(get(1).download, std::uint64_t(1));
    secondOf(10, 0); // the first second of Monday
    QCOMPARE(get(1).download, std::uint64_t(10));
    QCOMPARE(get(3).download, std::uint64_t(10));
    QCOMPARE(get(4).download, std::uint64_t(11));
    QCOMPARE(get(5).download, std::uint64_t(11));
    jump(1932768000 + 86399); // 2031-04-01 23:59:59
    secondOf(100, 0); // the first second of the 2nd
    QCOMPARE(get(1).download, std::uint64_t(100));
    QCOMPARE(get(3).download, std::uint64_t(110));
    QCOMPARE(get(4).download, std::uint64_t(100));
    QCOMPARE(get(5).download, std::uint64_t(111));
}

void tst_Engine::weeksAndMonthsFollowTheChosenStart()
{
    constexpr qint64 kDay = 86400;
    jump(kNow - 7 * kDay); // Wednesday 2031-02-26
    secondOf(1, 0);
    jump(kNow - 6 * kDay); // Thursday 2031-02-27
    secondOf(10, 0);
    jump(kNow - 5 * kDay); // Friday 2031-02-28
    secondOf(100, 0);
    jump(kNow); // Wednesday 2031-03-05
    secondOf(1000, 0);
    m_engine->ledger().commit();
    const auto sums = [this] {
        return QString::number(get(1).download) + ' ' + QString::number(get(3).download) + ' '
            + QString::number(get(4).download) + ' ' + QString::number(get(5).download);
    };
    for (int round = 0; round < 2; ++round) { // the second time from the sums that are kept
        m_engine->setPeriodStart({});
        QCOMPARE(sums(), QStringLiteral("1000 1000 1000 1111"));
        m_engine->setPeriodStart({ 3, 31 });
        QCOMPARE(sums(), QStringLiteral("1000 1110 1100 1111"));
        m_engine->setPeriodStart({ 2, 27 });
        QCOMPARE(sums(), QStringLiteral("1000 1000 1110 1111"));
    }
    secondOf(10000, 0);
    m_engine->ledger().commit();
    QCOMPARE(sums(), QStringLiteral("11000 11000 11110 11111"));
    m_engine->setPeriodStart({ 3, 31 });
    QCOMPARE(sums(), QStringLiteral("11000 11110 11100 11111"));
}

void tst_Engine::aClockStepNeitherLosesNorDoubles()
{
    secondOf(1, 0);
    m_world.wall += 2 * 86400;
    secondOf(10, 0);
    QCOMPARE(get(1).download, std::uint64_t(11)); // the newest clock is right, also for before
    QCOMPARE(get(0).seconds, std::int64_t(2));
    m_world.wall -= 2 * 86400;
    secondOf(100, 0);
    QCOMPARE(get(1).download, std::uint64_t(111));
    QCOMPARE(get(5).download, std::uint64_t(111));
    QCOMPARE(get(5).seconds, std::int64_t(3));
    QCOMPARE(get(0).downloadSpeed, 100U);
}

void tst_Engine::aClockBefore1970IsTheEpoch()
{
    m_world.wall = -5000;
    secondOf(10, 0);
    QCOMPARE(get(1).download, std::uint64_t(10));
    QVERIFY(m_engine->reset(0));
    QCOMPARE(get(2).lastReset, 0U);
}

void tst_Engine::historyTakesWholeHoursOfBothTypes()
{
    secondOf(1, 2); // 12:00
    jump(m_world.wall + 1800);
    secondOf(10, 20); // 12:30
    jump(m_world.wall + 1800);
    m_world.link().wireless = true;
    secondOf(100, 200); // 13:00
    const auto history = [this](quint64 key) {
        Report report;
        return m_engine->history(key, report) ? report.download : ~std::uint64_t(0);
    };
    QCOMPARE(history(0), std::uint64_t(111));
    QCOMPARE(history(kNow), std::uint64_t(111));
    QCOMPARE(history(kNow + 3599), std::uint64_t(111)); // rounded down to its hour
    QCOMPARE(history(kNow + 3600), std::uint64_t(100));
    Report report;
    QVERIFY(m_engine->history(0, report));
    QCOMPARE(report.upload, std::uint64_t(222));
    QCOMPARE(report.seconds, std::int64_t(3));
}

void tst_Engine::historyBeyondNowIsEmpty()
{
    secondOf(1, 2);
    Report report;
    for (const quint64 key : { quint64(kNow + 3600), quint64(INT64_MAX), ~quint64(0) }) {
        report.download = 5;
        QVERIFY(m_engine->history(key, report));
        QCOMPARE(report.download, std::uint64_t(0));
    }
}

void tst_Engine::resetClearsStoredAndLive()
{
    secondOf(1000, 10);
    m_engine->ledger().commit();
    secondOf(1000, 10);
    QVERIFY(m_engine->reset(0));
    QCOMPARE(get(2).lastReset, quint32(m_world.wall));
    for (const int kind : { 0, 1, 3, 4, 5 }) {
        QCOMPARE(get(kind).download, std::uint64_t(0));
        QCOMPARE(get(kind).seconds, std::int64_t(0));
    }
    secondOf(7, 3);
    for (const int kind : { 0, 1, 3, 4, 5 }) {
        QCOMPARE(get(kind).download, std::uint64_t(7));
        QCOMPARE(get(kind).seconds, std::int64_t(1));
    }
}

void tst_Engine::resetOfTheOtherTypeKeepsThis()
{
    secondOf(1000, 10);
    const quint32 before = get(2, 0).lastReset;
    m_world.pass(100);
    QVERIFY(m_engine->reset(1));
    QCOMPARE(get(0).download, std::uint64_t(1000));
    QCOMPARE(get(1).download, std::uint64_t(1000));
    QCOMPARE(get(2, 0).lastReset, before);
    QCOMPARE(get(2, 1).lastReset, quint32(m_world.wall));
}

void tst_Engine::unknownKindsFail_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("below") << -1;
    QTest::newRow("above") << 6;
    QTest::newRow("far") << 8000;
}

void tst_Engine::unknownKindsFail()
{
    QFETCH(int, kind);
    Report report;
    report.download = 5;
    QVERIFY(!m_engine->report(kind, 0, report));
    QCOMPARE(report.download, std::uint64_t(5));
}

void tst_Engine::commitsEveryFewTicks()
{
    const char *count = "SELECT coalesce(sum(download), 0) FROM hour";
    for (int i = 1; i < velq::kCommitSeconds; ++i) {
        secondOf(1, 0);
        QCOMPARE(runSql(m_folder->file(), count), 0LL);
    }
    secondOf(1, 0);
    QCOMPARE(runSql(m_folder->file(), count), qint64(velq::kCommitSeconds));
}

//! A little of what is known already may wait for a minute.
void tst_Engine::aLittleWaitsLonger()
{
    constexpr qint64 kMuch = 1 << 20;
    const char *count = "SELECT coalesce(sum(download), 0) FROM hour";
    const auto commitNow = [this](quint64 bytes) {
        secondOf(bytes, 0);
        for (int i = 1; i < velq::kCommitSeconds; ++i)
            secondOf(0, 0);
    };
    commitNow(1);
    for (int i = 1; i < velq::kLongestWaitSeconds; ++i) {
        secondOf(1, 0);
        QCOMPARE(runSql(m_folder->file(), count), 1LL);
    }
    secondOf(1, 0);
    QCOMPARE(runSql(m_folder->file(), count), qint64(1 + velq::kLongestWaitSeconds));
    commitNow(kMuch - 1);
    QCOMPARE(runSql(m_folder->file(), count), qint64(1 + velq::kLongestWaitSeconds));
    commitNow(1);
    QCOMPARE(runSql(m_folder->file(), count), qint64(1 + velq::kLongestWaitSeconds) + kMuch);
}

void tst_Engine::eachTickSendsOneEvent()
{
    m_engine->callbacks().add(record);
    m_engine->callbacks().add(record);
    secondOf(1, 0);
    m_world.link().wireless = true;
    secondOf(0, 0);
    m_world.script.disconnect(3);
    m_engine->tick();
    QCOMPARE(g_events.size(), std::size_t(3));
    const char *expected[] = { "0100000000000000", "0100000001000000", "0000000001000000" };
    for (std::size_t i = 0; i < g_events.size(); ++i) {
        QCOMPARE(g_events[i].number, 8000);
        QCOMPARE(QByteArray(g_events[i].data.data(), 8).toHex(), QByteArray(expected[i]));
    }
}

void tst_Engine::callbacksMayAskAndLeave()
{
    m_engine->callbacks().add(askFromInside);
    secondOf(1, 0);
    QCOMPARE(g_events.size(), std::size_t(1));
    secondOf(1, 0);
    QCOMPARE(g_events.size(), std::size_t(1));
}

void tst_Engine::theRouteMovingToAnotherLinkBooksTheRest()
{
    secondOf(1000, 10);
    m_world.flow(250, 0);
    m_world.script.connect(4, "vb").counters = { 90000, 90000 };
    secondOf(0, 0);
    QCOMPARE(get(1).download, std::uint64_t(1250));
    QCOMPARE(get(0).download, std::uint64_t(0));
    m_world.script.links.at(4).counters.download += 5;
    secondOf(0, 0);
    QCOMPARE(get(0).download, std::uint64_t(5));
    m_world.script.readable = false;
    m_world.pass();
    m_engine->tick();
    QCOMPARE(get(0).download, std::uint64_t(5)); // not knowing is not leaving
}

void tst_Engine::aNewEngineGoesOnWhereTheLastWasKilled()
{
    secondOf(1000, 10);
    m_engine->ledger().commit();
    secondOf(200, 2); // not committed any more
    restart();
    m_world.flow(30, 3); // nobody counts
    m_engine->sample();
    QCOMPARE(get(1).download, std::uint64_t(1230));
    QCOMPARE(get(1).upload, std::uint64_t(15));
    std::vector<velq::Reason> reasons;
    QVERIFY(m_engine->ledger().reasons(10, reasons));
    QCOMPARE(int(reasons.size()), 1);
    QCOMPARE(reasons[0].download, std::int64_t(230));
}

void tst_Engine::aStoreThatCanBeReadLateLosesNothing()
{
    secondOf(1000, 10);
    QVERIFY(m_engine->useDevice("va"));
    m_engine->ledger().commit();
    m_engine.reset();
    m_world.flow(200, 2); // nobody counts
    const QString away = m_folder->file() + QStringLiteral(".away");
    QVERIFY(QFile::rename(m_folder->file(), away));
    QVERIFY(QDir().mkdir(m_folder->file())); // cannot be opened
    start();
    m_engine->sample();
    for (int i = 0; i < 6; ++i)
        secondOf(30, 3);
    QCOMPARE(get(1).download, std::uint64_t(180));
    QVERIFY(QDir().rmdir(m_folder->file()));
    QVERIFY(QFile::rename(away, m_folder->file()));
    m_engine->ledger().commit();
    m_engine->ledger().commit(); // even before a look
    for (int i = 0; i < 12; ++i)
        secondOf(0, 0);
    QCOMPARE(get(1).download, std::uint64_t(1380));
    QCOMPARE(get(1).upload, std::uint64_t(30));
    QCOMPARE(m_engine->usedDevice(), std::string("va"));
    QCOMPARE(runSql(m_folder->file(), "SELECT sum(download) FROM day"), 1380LL);
    restart();
    m_engine->sample();
    QCOMPARE(get(1).download, std::uint64_t(1380));
}

void tst_Engine::theUsedDeviceIsRemembered()
{
    m_world.script.connect(4, "vb");
    secondOf(0, 0);
    QVERIFY(m_engine->useDevice("va"));
    secondOf(10, 0);
    QCOMPARE(m_engine->live().interface, std::string("va"));
    m_engine->ledger().commit();
    restart();
    m_engine->sample();
    QCOMPARE(m_engine->usedDevice(), std::string("va"));
    QCOMPARE(m_engine->live().interface, std::string("va"));
    m_engine->nameDevice("vb"); // the host's own choice comes first
    secondOf(0, 0);
    QCOMPARE(m_engine->live().interface, std::string("vb"));
    m_engine->nameDevice({});
    secondOf(0, 0);
    QCOMPARE(m_engine->live().interface, std::string("va"));
    QVERIFY(m_engine->useDevice({}));
    secondOf(0, 0);
    QCOMPARE(m_engine->live().interface, std::string("vb"));
}

void tst_Engine::theOperatorsFigureIsTakenOver()
{
    secondOf(1000, 10);
    QVERIFY(m_engine->correct(4, 0, 5000, 4));
    QCOMPARE(get(4).download, std::uint64_t(5000));
    QCOMPARE(get(4).upload, std::uint64_t(4));
    QCOMPARE(get(4, 1).download, std::uint64_t(0));
    secondOf(7, 1);
    QCOMPARE(get(4).download, std::uint64_t(5007));
    QVERIFY(m_engine->correct(4, 0, 0, 0));
    QCOMPARE(get(4).download, std::uint64_t(0));
    QVERIFY(!m_engine->correct(0, 0, 1, 1));
    QVERIFY(!m_engine->correct(2, 0, 1, 1));
    jump(m_world.wall + 40 * 86400); // another month knows nothing of it
    secondOf(3, 0);
    QCOMPARE(get(4).download, std::uint64_t(3));
    QCOMPARE(get(5).download, std::uint64_t(3));
}

void tst_Engine::theOperatorsFigureReplacesTheLeastAmount()
{
    velq::BookingBatch batch;
    batch.bookings.push_back({ "hw:1", 0, { INT64_MIN, INT64_MIN, 0, 0 } });
    m_engine->ledger().book(batch, { m_world.wall, m_world.bootNs / kSecond });
    QVERIFY(m_engine->correct(4, 0, 5000, 4));
    std::vector<velq::Reason> reasons;
    QVERIFY(m_engine->ledger().reasons(1, reasons));
    QCOMPARE(reasons.at(0).download, std::int64_t(INT64_MAX)); // as much as there can be
}

void tst_Engine::hoursAreThinnedOutByPolicy()
{
    const auto count = [this] { return runSql(m_folder->file(), "SELECT count(*) FROM hour"); };
    secondOf(1, 0);
    for (int i = 0; i < 4; ++i)
        secondOf(0, 0);
    QCOMPARE(count(), 1LL);
    m_engine->setKeptDays(0);
    jump(m_world.wall + 3000 * qint64(86400));
    for (int i = 0; i < 5; ++i)
        secondOf(1, 0);
    m_engine->ledger().commit();
    QCOMPARE(count(), 2LL);
    m_engine->setKeptDays(velq::kKeptDays);
    jump(m_world.wall + 86400);
    for (int i = 0; i < 5; ++i)
        secondOf(1, 0);
    QCOMPARE(count(), 3LL); // the clock may be wrong
    jump(m_world.wall + 2 * 86400);
    for (int i = 0; i < 5; ++i)
        secondOf(1, 0);
    QCOMPARE(count(), 3LL); // of four
    QCOMPARE(runSql(m_folder->file(), "SELECT sum(download) FROM day"), 16LL);
}

void tst_Engine::afterClosingAnswersGoOnFromMemory()
{
    secondOf(1000, 10);
    m_engine->close();
    QCOMPARE(runSql(m_folder->file(), "SELECT download FROM hour"), 1000LL);
    QCOMPARE(get(0).download, std::uint64_t(1000));
    QCOMPARE(get(1).download, std::uint64_t(1000));
    QVERIFY(!m_engine->reset(0));
    QCOMPARE(get(0).download, std::uint64_t(1000));
}

QTEST_GUILESS_MAIN(tst_Engine)
#include "tst_engine.moc"
