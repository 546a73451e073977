#include "engine/ConnectionTracker.h"

#include <QtTest>

using velq::Booking;
using velq::ConnectionTracker;
using velq::LinkReading;
using velq::ReadResult;
using velq::ReadStatus;

class tst_ConnectionTracker : public QObject
{
    Q_OBJECT
private slots:
    void theFirstReadingIsOnlyABase();
    void differencesAreBookedAndShown();
    void millisecondsAreNeitherLostNorInvented();
    void aLinkThatGoesDownBooksItsLastBytes();
    void aLinkThatComesUpCountsFromItsLastReading();
    void aFallenCounterIsANewConnection();
    void anotherGenerationIsANewConnection();
    void aVanishedLinkBooksNothingWhenItComesBack();
    void aRenameIsTheSameConnection();
    void aFailedReadingIsMadeUpForByTheNext();
    void aLinkThatIsLeftBooksItsLastBytes();
    void aReplacedLinkThatIsLeftBooksNothing();
    void restartLetsTheFiguresBeginAnew();
    void restartOfTheOtherTypeChangesNothing();
};

namespace {

constexpr qint64 kSecond = 1000000000;

ReadResult link(quint64 download, quint64 upload, bool up = true, int index = 3,
                quint64 generation = 0)
{
    ReadResult result;
    result.status = ReadStatus::Found;
    result.link.index = index;
    result.link.generation = generation;
    result.link.name = "va";
    result.link.up = up;
    result.link.download = download;
    result.link.upload = upload;
    return result;
}

ReadResult absent()
{
    return {};
}

//! A tracker that has seen the link up for ten seconds with 1000 bytes a second each way.
void warmUp(ConnectionTracker &tracker)
{
    for (quint64 i = 0; i <= 10; ++i)
        (void)tracker.advance(link(5000 + i * 1000, 7000 + i * 1000), qint64(i) * kSecond);
}

} // namespace

void tst_ConnectionTracker::theFirstReadingIsOnlyABase()
{
    ConnectionTracker tracker;
    QVERIFY(!tracker.live().connected);
    const Booking booking = tracker.advance(link(5000, 7000), 0);
    QVERIFY(booking.totals.isZero());
    QVERIFY(tracker.live().connected);
    QCOMPARE(tracker.live().download(), quint64(0));
    QCOMPARE(tracker.live().firstDownload, quint64(5000));
    QCOMPARE(tracker.live().timeMs, qint64(0));
    QCOMPARE(tracker.live().interface, std::string("va"));
    QCOMPARE(tracker.index(), 3);
}

void tst_ConnectionTracker::differencesAreBookedAndShown()
{
    ConnectionTracker tracker;
    warmUp(tracker);
    const Booking booking = tracker.advance(link(15000 + 4000, 17000 + 600), 12 * kSecond);
    QCOMPARE(booking.type, 0);
    QCOMPARE(booking.totals.download, quint64(4000));
    QCOMPARE(booking.totals.upload, quint64(600));
    QCOMPARE(booking.totals.timeMs, quint64(2000));
    QCOMPARE(tracker.live().download(), quint64(14000));
    QCOMPARE(tracker.live().upload(), quint64(10600));
    QCOMPARE(tracker.live().downloadSpeed, quint32(2000)); // over two seconds
    QCOMPARE(tracker.live().uploadSpeed, quint32(300));
    QCOMPARE(tracker.live().timeMs, qint64(12000));
}

void tst_ConnectionTracker::millisecondsAreNeitherLostNorInvented()
{
    ConnectionTracker tracker;
    quint64 sum = 0;
    const qint64 step = kSecond - 1; // truncated alone, each would lose a millisecond
    for (qint64 i = 0; i <= 1000; ++i)
        sum += tracker.advance(link(1, 1), i * step).totals.timeMs;
    QCOMPARE(sum, quint64(1000 * step / 1000000));
}

void tst_ConnectionTracker::aLinkThatGoesDownBooksItsLastBytes()
{
    ConnectionTracker tracker;
    warmUp(tracker);
    const Booking booking = tracker.advance(link(15300, 17000, false), 11 * kSecond);
    QCOMPARE(booking.totals.download, quint64(300));
    QCOMPARE(booking.totals.timeMs, quint64(0));
    QVERIFY(!tracker.live().connected);
    QCOMPARE(tracker.live().download(), quint64(0));
    QCOMPARE(tracker.live().downloadSpeed, quint32(0));
    QCOMPARE(tracker.live().interface, std::string("va")); // it is still the counted one
}

void tst_ConnectionTracker::aLinkThatComesUpCountsFromItsLastReading()
{
    ConnectionTracker tracker;
    (void)tracker.advance(link(5000, 7000, false), 0);
    QVERIFY(!tracker.live().connected);
    const Booking booking = tracker.advance(link(5200, 7000), kSecond);
    QCOMPARE(booking.totals.download, quint64(200));
    QCOMPARE(booking.totals.timeMs, quint64(0));
    QCOMPARE(tracker.live().download(), quint64(200));
    QCOMPARE(tracker.live().timeMs, qint64(0));
    (void)tracker.advance(link(5200, 7000), 2 * kSecond);
    QCOMPARE(tracker.live().timeMs, qint64(1000));
}

void tst_ConnectionTracker::aFallenCounterIsANewConnection()
{
    ConnectionTracker tracker;
    warmUp(tracker);
    const Booking booking = tracker.advance(link(90, 20000), 11 * kSecond);
    QVERIFY(booking.totals.isZero());
    QVERIFY(tracker.live().connected);
    QCOMPARE(tracker.live().firstDownload, quint64(90));
    QCOMPARE(tracker.live().download(), quint64(0));
    QCOMPARE(tracker.live().timeMs, qint64(0));
    QCOMPARE(tracker.advance(link(100, 20000), 12 * kSecond).totals.download, quint64(10));
}

void tst_ConnectionTracker::anotherGenerationIsANewConnection()
{
    ConnectionTracker tracker;
    warmUp(tracker);
    // Deleted and made anew within a second: same index, counters already beyond the old ones.
    const Booking booking = tracker.advance(link(99000, 99000, true, 3, 1), 11 * kSecond);
    QVERIFY(booking.totals.isZero());
    QCOMPARE(tracker.live().firstDownload, quint64(99000));
    QCOMPARE(tracker.live().timeMs, qint64(0));
}

void tst_ConnectionTracker::aVanishedLinkBooksNothingWhenItComesBack()
{
    ConnectionTracker tracker;
    warmUp(tracker);
    QVERIFY(tracker.advance(absent(), 11 * kSecond).totals.isZero());
    QVERIFY(!tracker.live().connected);
    QVERIFY(tracker.live().interface.empty());
    QCOMPARE(tracker.index(), 0);
    QVERIFY(tracker.advance(link(80000, 80000, true, 9), 12 * kSecond).totals.isZero());
    QVERIFY(tracker.live().connected);
    QCOMPARE(tracker.live().download(), quint64(0));
}

void tst_ConnectionTracker::aRenameIsTheSameConnection()
{
    ConnectionTracker tracker;
    warmUp(tracker);
    ReadResult renamed = link(15010, 17000);
    renamed.link.name = "wwan7";
    QCOMPARE(tracker.advance(renamed, 11 * kSecond).totals.download, quint64(10));
    QCOMPARE(tracker.live().interface, std::string("wwan7"));
    QCOMPARE(tracker.live().timeMs, qint64(11000));
    QCOMPARE(tracker.live().download(), quint64(10010));
}

void tst_ConnectionTracker::aFailedReadingIsMadeUpForByTheNext()
{
    ConnectionTracker tracker;
    warmUp(tracker);
    QVERIFY(tracker.advance({ ReadStatus::Failed, {} }, 11 * kSecond).totals.isZero());
    QVERIFY(tracker.live().connected);
    const Booking booking = tracker.advance(link(17000, 17000), 12 * kSecond);
    QCOMPARE(booking.totals.download, quint64(2000));
    QCOMPARE(booking.totals.timeMs, quint64(2000));
    QCOMPARE(tracker.live().downloadSpeed, quint32(1000));
}

void tst_ConnectionTracker::aLinkThatIsLeftBooksItsLastBytes()
{
    ConnectionTracker tracker;
    warmUp(tracker);
    const Booking booking = tracker.leave(link(15400, 17001));
    QCOMPARE(booking.totals.download, quint64(400));
    QCOMPARE(booking.totals.upload, quint64(1));
    QVERIFY(!tracker.live().connected);
    QVERIFY(tracker.advance(link(1, 1, true, 4), 11 * kSecond).totals.isZero());
    QCOMPARE(tracker.live().firstDownload, quint64(1));
}

void tst_ConnectionTracker::aReplacedLinkThatIsLeftBooksNothing()
{
    ConnectionTracker tracker;
    warmUp(tracker);
    QVERIFY(tracker.leave(link(99000, 99000, true, 3, 1)).totals.isZero());
    QVERIFY(tracker.leave(absent()).totals.isZero());
    QVERIFY(tracker.leave(link(5, 5)).totals.isZero()); // nothing was counted any more
}

void tst_ConnectionTracker::restartLetsTheFiguresBeginAnew()
{
    ConnectionTracker tracker;
    warmUp(tracker);
    tracker.restart(0);
    QVERIFY(tracker.live().connected);
    QCOMPARE(tracker.live().download(), quint64(0));
    QCOMPARE(tracker.live().timeMs, qint64(0));
    const Booking booking = tracker.advance(link(15005, 17000), 11 * kSecond);
    QCOMPARE(booking.totals.download, quint64(5));
    QCOMPARE(booking.totals.timeMs, quint64(1000));
    QCOMPARE(tracker.live().download(), quint64(5));
    QCOMPARE(tracker.live().timeMs, qint64(1000));
}

void tst_ConnectionTracker::restartOfTheOtherTypeChangesNothing()
{
    ConnectionTracker tracker;
    warmUp(tracker);
    tracker.restart(1);
    QCOMPARE(tracker.live().download(), quint64(10000));
    ReadResult wireless = link(9000, 9000, true, 5);
    wireless.link.wireless = true;
    (void)tracker.leave(absent());
    (void)tracker.advance(wireless, 11 * kSecond);
    wireless.link.download = 9010;
    QCOMPARE(tracker.advance(wireless, 12 * kSecond).type, 1);
    tracker.restart(0);
    QCOMPARE(tracker.live().download(), quint64(10));
    tracker.restart(1);
    QCOMPARE(tracker.live().download(), quint64(0));
}

QTEST_GUILESS_MAIN(tst_ConnectionTracker)
#include "tst_connectiontracker.moc"
