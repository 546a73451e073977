#include "engine/Engine.h"

#include <QtTest>

#include <array>
#include <cstring>
#include <memory>
#include <vector>

#include "StoreFolder.h"

using velq::Engine;
using velq::LinkReading;
using velq::ReadResult;
using velq::ReadStatus;
using velq::Report;

namespace {

constexpr qint64 kSecond = 1000000000;

//! What the tests change and the engine sees.
struct World
{
    ReadResult chosen;
    ReadResult left; // answer to the last look at a link that is no longer chosen
    std::vector<int> lastLooks;
    qint64 bootNs = 5 * kSecond;
    qint64 wall = kNow;

    void connect(quint64 download, quint64 upload)
    {
        chosen.status = ReadStatus::Found;
        chosen.link.index = 3;
        chosen.link.name = "va";
        chosen.link.up = true;
        chosen.link.download = download;
        chosen.link.upload = upload;
    }
    void flow(quint64 download, quint64 upload)
    {
        chosen.link.download += download;
        chosen.link.upload += upload;
    }
    void pass(qint64 seconds = 1)
    {
        bootNs += seconds * kSecond;
        wall += seconds;
    }
};

class ScriptedSource : public velq::CounterSource
{
public:
    explicit ScriptedSource(World &world)
        : m_world(world)
    {
    }
    ReadResult readChosen() override
    {
        return m_world.chosen;
    }
    ReadResult readIndex(int index) override
    {
        m_world.lastLooks.push_back(index);
        return m_world.left;
    }
    void noteDisconnect() override
    {
        m_world.chosen.link.up = false;
    }

private:
    World &m_world;
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
    void eachTickSendsOneEvent();
    void callbacksMayAskAndLeave();
    void theRouteMovingToAnotherLinkBooksTheRest();
    void afterClosingAnswersGoOnFromMemory();

private:
    [[nodiscard]] Report get(int kind, int type = 0);
    void secondOf(quint64 download, quint64 upload);

    World m_world;
    std::unique_ptr<StoreFolder> m_folder;
    std::unique_ptr<Engine> m_engine;
};

void tst_Engine::init()
{
    m_world = {};
    m_world.connect(5000, 7000);
    m_folder = std::make_unique<StoreFolder>();
    const velq::Clock clock { [this] { return std::int64_t(m_world.bootNs); },
                              [this] { return std::int64_t(m_world.wall); } };
    m_engine = std::make_unique<Engine>(std::make_unique<ScriptedSource>(m_world),
                                        m_folder->options(), clock);
    g_engine = m_engine.get();
    g_events.clear();
    m_engine->sample();
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
    m_world.chosen.link.up = true;
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
    m_world.chosen.link.wireless = true;
    m_world.chosen.link.index = 4;
    secondOf(0, 0);
    secondOf(500, 5);
    QCOMPARE(get(0, 0).download, std::uint64_t(0));
    QCOMPARE(get(0, 1).download, std::uint64_t(500));
    QCOMPARE(get(1, 0).download, std::uint64_t(1000));
    QCOMPARE(get(1, 1).download, std::uint64_t(500));
}

void tst_Engine::withoutAConnectionTheLiveReportIsEmpty()
{
    secondOf(1000, 10);
    m_world.chosen.link.up = false;
    secondOf(50, 5);
    QCOMPARE(get(0).download, std::uint64_t(0));
    QCOMPARE(get(0).downloadSpeed, 0U);
    QCOMPARE(get(1).download, std::uint64_t(1050)); // those were real
    m_world.chosen = {};
    secondOf(0, 0);
    QCOMPARE(get(0).seconds, std::int64_t(0));
    QVERIFY(m_engine->live().interface.empty());
    QCOMPARE(get(1).seconds, std::int64_t(1));
}

void tst_Engine::periodsEndWithTheirLastSecond()
{
    m_world.wall = 1932681598; // 2031-03-30 23:59:58, a Sunday
    secondOf(1, 0);
    QCOMPARE(get(1).download, std::uint64_t(1));
    secondOf(10, 0); // the first second of Monday
    QCOMPARE(get(1).download, std::uint64_t(10));
    QCOMPARE(get(3).download, std::uint64_t(10));
    QCOMPARE(get(4).download, std::uint64_t(11));
    QCOMPARE(get(5).download, std::uint64_t(11));
    m_world.wall = 1932768000 + 86399; // 2031-04-01 23:59:59
    secondOf(100, 0); // the first second of the 2nd
    QCOMPARE(get(1).download, std::uint64_t(100));
    QCOMPARE(get(3).download, std::uint64_t(110));
    QCOMPARE(get(4).download, std::uint64_t(100));
    QCOMPARE(get(5).download, std::uint64_t(111));
}

void tst_Engine::weeksAndMonthsFollowTheChosenStart()
{
    constexpr qint64 kDay = 86400;
    m_world.wall = kNow - 7 * kDay; // Wednesday 2031-02-26
    secondOf(1, 0);
    m_world.wall = kNow - 6 * kDay; // Thursday 2031-02-27
    secondOf(10, 0);
    m_world.wall = kNow - 5 * kDay; // Friday 2031-02-28
    secondOf(100, 0);
    m_world.wall = kNow; // Wednesday 2031-03-05
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
    QCOMPARE(get(1).download, std::uint64_t(10));
    QCOMPARE(get(0).seconds, std::int64_t(2));
    m_world.wall -= 2 * 86400;
    secondOf(100, 0);
    QCOMPARE(get(1).download, std::uint64_t(101));
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
    m_world.wall += 1800;
    secondOf(10, 20); // 12:30
    m_world.wall += 1800;
    m_world.chosen.link.wireless = true;
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
    const char *count = "SELECT coalesce(sum(download), 0) FROM bucket";
    for (int i = 1; i < velq::kCommitSeconds; ++i) {
        secondOf(1, 0);
        QCOMPARE(runSql(m_folder->file(), count), 0LL);
    }
    secondOf(1, 0);
    QCOMPARE(runSql(m_folder->file(), count), qint64(velq::kCommitSeconds));
}

void tst_Engine::eachTickSendsOneEvent()
{
    m_engine->callbacks().add(record);
    m_engine->callbacks().add(record);
    secondOf(1, 0);
    m_world.chosen.link.wireless = true;
    m_world.chosen.link.index = 9;
    secondOf(0, 0);
    m_world.chosen = {};
    secondOf(0, 0);
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
    m_world.left = m_world.chosen;
    m_world.left.link.download += 250;
    m_world.chosen.link.index = 4;
    m_world.chosen.link.download = 90000;
    secondOf(0, 0);
    QCOMPARE(m_world.lastLooks, std::vector<int>({ 3 }));
    QCOMPARE(get(1).download, std::uint64_t(1250));
    QCOMPARE(get(0).download, std::uint64_t(0));
    secondOf(5, 0);
    QCOMPARE(get(0).download, std::uint64_t(5));
    m_world.chosen = { ReadStatus::Failed, {} };
    m_world.pass();
    m_engine->tick();
    QCOMPARE(m_world.lastLooks.size(), std::size_t(1)); // not knowing is not leaving
    QCOMPARE(get(0).download, std::uint64_t(5));
}

void tst_Engine::afterClosingAnswersGoOnFromMemory()
{
    secondOf(1000, 10);
    m_engine->close();
    QCOMPARE(runSql(m_folder->file(), "SELECT download FROM bucket"), 1000LL);
    QCOMPARE(get(0).download, std::uint64_t(1000));
    Report report;
    QVERIFY(m_engine->report(1, 0, report)); // nothing pending is left, nothing crashes
    QVERIFY(!m_engine->reset(0));
    QCOMPARE(get(0).download, std::uint64_t(1000));
}

QTEST_GUILESS_MAIN(tst_Engine)
#include "tst_engine.moc"
