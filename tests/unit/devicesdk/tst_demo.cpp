#include "calendar/Period.h"
#include "engine/DemoHistory.h"
#include "engine/DemoSource.h"

#include <QtTest>

#include <algorithm>

#include "StoreFolder.h"

using velq::DemoSource;
using velq::ReadResult;
using velq::ReadStatus;

class tst_Demo : public QObject
{
    Q_OBJECT
private slots:
    void speedsAreLivelyAndBounded();
    void countersNeverFallAndFollowTheScript();
    void disconnectedItPausesFor15SecondsAndGoesOn();
    void aLongSleepIsCaughtUpQuickly();
    void theHistoryFillsEveryPeriod();
};

namespace {

constexpr qint64 kSecond = 1000000000;

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
    const ReadResult first = source.readChosen();
    QCOMPARE(first.status, ReadStatus::Found);
    QCOMPARE(first.link.name, std::string("demo0"));
    QVERIFY(first.link.up);
    QVERIFY(!first.link.wireless);
    std::uint64_t last = first.link.download;
    for (int i = 0; i < 300; ++i) {
        now += kSecond / 10;
        const ReadResult next = source.readChosen();
        QVERIFY(next.link.download >= last);
        last = next.link.download;
    }
    std::uint64_t expected = 0;
    for (int second = 0; second < 30; ++second)
        expected += velq::demoSpeed(second).download;
    QCOMPARE(last - first.link.download, expected);
    QCOMPARE(source.readIndex(first.link.index).link.download, last);
    QCOMPARE(source.readIndex(99).status, ReadStatus::Absent);
}

void tst_Demo::disconnectedItPausesFor15SecondsAndGoesOn()
{
    qint64 now = 0;
    const velq::Clock clock { [&now] { return std::int64_t(now); },
                              [] { return std::int64_t(kNow); } };
    DemoSource paused(clock);
    now = 10 * kSecond + kSecond / 2; // in the middle of a second of the script
    const std::uint64_t before = paused.readChosen().link.download;
    paused.noteDisconnect();
    for (const qint64 wait : { qint64(0), kSecond, 13 * kSecond, kSecond - 1 }) {
        now += wait;
        QVERIFY(!paused.readChosen().link.up);
        QCOMPARE(paused.readChosen().link.download, before);
    }
    now += 1; // 15 seconds
    QVERIFY(paused.readChosen().link.up);
    QCOMPARE(paused.readChosen().link.download, before);
    now += kSecond * 3 / 2; // the script's second 12
    const std::uint64_t after = paused.readChosen().link.download;
    QCOMPARE(after - before,
             velq::demoSpeed(10).download - velq::demoSpeed(10).download / 2
                 + velq::demoSpeed(11).download);
}

void tst_Demo::aLongSleepIsCaughtUpQuickly()
{
    qint64 now = 0;
    DemoSource source({ [&now] { return std::int64_t(now); }, [] { return std::int64_t(kNow); } });
    const std::uint64_t before = source.readChosen().link.download;
    now = 365LL * 86400 * kSecond;
    const std::uint64_t after = source.readChosen().link.download;
    QVERIFY(after > before);
    QVERIFY(after - before < 8000000ULL * 3601);
}

void tst_Demo::theHistoryFillsEveryPeriod()
{
    const velq::Changes past = velq::demoHistory(kNow);
    std::uint64_t smaller = 0;
    for (const velq::Period period :
         { velq::Period::Day, velq::Period::Month, velq::Period::Year }) {
        const velq::Totals totals
            = velq::sum(past.buckets, 0, velq::periodSpan(period, kNow, velq::TimeZone::utc()));
        QVERIFY(totals.download > smaller);
        QVERIFY(totals.upload > 0);
        QVERIFY(totals.upload < totals.download);
        QVERIFY(totals.timeMs > 0);
        smaller = totals.download;
    }
    for (const auto &[key, totals] : past.buckets) {
        QVERIFY(key.first < kNow);
        QCOMPARE(key.first % velq::kBucketSeconds, std::int64_t(0));
        QVERIFY(totals.timeMs <= std::uint64_t(velq::kBucketSeconds) * 1000);
    }
    QVERIFY(velq::demoHistory(0).buckets.empty());
}

QTEST_GUILESS_MAIN(tst_Demo)
#include "tst_demo.moc"
