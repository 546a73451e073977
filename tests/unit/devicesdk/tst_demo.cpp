#include "calendar/Period.h"
#include "engine/DemoHistory.h"
#include "engine/DemoSource.h"

#include <QtTest>

#include <algorithm>

#include "StoreFolder.h"

using velq::DemoSource;

class tst_Demo : public QObject
{
    Q_OBJECT
private slots:
    void speedsAreLivelyAndBounded();
    void countersNeverFallAndFollowTheScript();
    void disconnectedItPausesFor15SecondsAndGoesOn();
    void aLongSleepIsCaughtUpQuickly();
    void theHistoryFillsEveryPeriod();
    void connectingEndsThePause();
};

namespace {

constexpr qint64 kSecond = 1000000000;

std::uint64_t downloadOf(DemoSource &source)
{
    return source.read().steps.at(0).counters->download;
}

bool isUp(DemoSource &source)
{
    return source.read().steps.at(0).link.up;
}

} // namespace

void tst_Demo::speedsAreLivelyAndBounded()
{
    std::uint64_t fastest = 0;
    std::uint64_t slowest = ~std::uint64_t(0);
    int changes = 0;
    for (int second = 0; second < 120; ++second) {
        const velq::DemoSpeed speed = velq::demoSpeed(second);
        QVERIFY(speed.upload > 0);
        fastest = std::max(fastest, speed.download);
        slowest = std::min(slowest, speed.download);
        changes += speed.download != velq::demoSpeed(second + 1).download ? 1 : 0;
    }
    QVERIFY(fastest > 2000000);
    QVERIFY(fastest < 8000000);
    QVERIFY(slowest < 50000);
    QVERIFY(changes > 100);
}

void tst_Demo::countersNeverFallAndFollowTheScript()
{
    qint64 now = 7 * kSecond;
    DemoSource source({ [&now] { return std::int64_t(now); }, [] { return std::int64_t(kNow); } });
    const velq::LinkNews news = source.read();
    QVERIFY(news.valid);
    QCOMPARE(int(news.routes.size()), 1);
    const velq::LinkStep first = news.steps.at(0);
    QVERIFY(first.kind == velq::LinkStep::Kind::Appeared);
    QVERIFY(!first.base); // it was there before
    QCOMPARE(news.routes[0].index, first.link.index);
    QCOMPARE(first.link.name, std::string("demo0"));
    QVERIFY(first.link.up);
    QVERIFY(!first.link.wireless);
    std::uint64_t last = first.counters->download;
    for (int i = 0; i < 300; ++i) {
        now += kSecond / 10;
        const velq::LinkStep next = source.read().steps.at(0);
        QVERIFY(next.kind == velq::LinkStep::Kind::Counted);
        QVERIFY(next.counters->download >= last);
        last = next.counters->download;
    }
    std::uint64_t expected = 0;
    for (int second = 0; second < 30; ++second)
        expected += velq::demoSpeed(second).download;
    QCOMPARE(last - first.counters->download, expected);
}

void tst_Demo::disconnectedItPausesFor15SecondsAndGoesOn()
{
    qint64 now = 0;
    const velq::Clock clock { [&now] { return std::int64_t(now); },
                              [] { return std::int64_t(kNow); } };
    DemoSource paused(clock);
    now = 10 * kSecond + kSecond / 2; // in the middle of a second of the script
    const std::uint64_t before = downloadOf(paused);
    paused.noteDisconnect(1);
    for (const qint64 wait : { qint64(0), kSecond, 13 * kSecond, kSecond - 1 }) {
        now += wait;
        QVERIFY(!isUp(paused));
        QCOMPARE(downloadOf(paused), before);
    }
    now += 1; // 15 seconds
    QVERIFY(isUp(paused));
    QCOMPARE(downloadOf(paused), before);
    now += kSecond * 3 / 2; // the script's second 12
    const std::uint64_t after = downloadOf(paused);
    QCOMPARE(after - before,
             velq::demoSpeed(10).download - velq::demoSpeed(10).download / 2
                 + velq::demoSpeed(11).download);
}

void tst_Demo::aLongSleepIsCaughtUpQuickly()
{
    qint64 now = 0;
    DemoSource source({ [&now] { return std::int64_t(now); }, [] { return std::int64_t(kNow); } });
    const std::uint64_t before = downloadOf(source);
    now = 365LL * 86400 * kSecond;
    const std::uint64_t after = downloadOf(source);
    QVERIFY(after > before);
    QVERIFY(after - before < 8000000ULL * 3601);
}

void tst_Demo::theHistoryFillsEveryPeriod()
{
    const velq::HourAmounts past = velq::demoHistory(kNow, utcDay);
    std::int64_t smaller = 0;
    for (const velq::Period period :
         { velq::Period::Day, velq::Period::Month, velq::Period::Year }) {
        const velq::DaySpan days = velq::periodDays(period, utcDay(kNow));
        velq::Amounts sum;
        for (const auto &[key, amounts] : past) {
            if (key.day >= days.from && key.day < days.to)
                sum.add(amounts);
        }
        QVERIFY(sum.download > smaller);
        QVERIFY(sum.upload > 0);
        QVERIFY(sum.upload < sum.download);
        QVERIFY(sum.timeMs > 0);
        smaller = sum.download;
    }
    for (const auto &[key, amounts] : past) {
        QVERIFY(key.start < kNow);
        QCOMPARE(key.start % velq::kHourSeconds, std::int64_t(0));
        QCOMPARE(key.day, utcDay(key.start));
        QVERIFY(amounts.timeMs <= velq::kHourSeconds * 1000);
    }
    QVERIFY(velq::demoHistory(0, utcDay).empty());
}

void tst_Demo::connectingEndsThePause()
{
    qint64 now = 0;
    DemoSource source({ [&now] { return std::int64_t(now); }, [] { return std::int64_t(kNow); } });
    source.noteConnect(); // it is connected: nothing changes
    QVERIFY(isUp(source));
    source.noteDisconnect(1);
    now = 5 * kSecond;
    QVERIFY(!isUp(source));
    source.noteConnect();
    QVERIFY(isUp(source));
}

QTEST_GUILESS_MAIN(tst_Demo)
#include "tst_demo.moc"
