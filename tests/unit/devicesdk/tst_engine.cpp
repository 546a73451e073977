#include <QtTest>

#include <array>
#include <cstring>
#include <vector>

#include "EngineStage.h"

using velq::Engine;
using velq::Report;

namespace {

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

class tst_Engine : public QObject, private EngineStage
{
    Q_OBJECT
private slots:
    void init();
    void cleanup()
    {
        tearDown();
    }

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
    void eachTickSendsOneEvent();
    void callbacksMayAskAndLeave();
    void theRouteMovingToAnotherLinkBooksTheRest();
    void theOperatorsFigureIsTakenOver();
    void theOperatorsFigureReplacesTheLeastAmount();
};

void tst_Engine::init()
{
    setUp();
    g_engine = m_engine.get();
    g_events.clear();
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

QTEST_GUILESS_MAIN(tst_Engine)
#include "tst_engine.moc"
