#include "LinkScript.h"

#include <QtTest>

using velq::BookingBatch;
using velq::Link;
using velq::ReasonKind;

class tst_Accountant : public QObject
{
    Q_OBJECT
private slots:
    void theFirstCountersAreOnlyABase();
    void differencesAreBookedWithTheirTime();
    void plainLooksWaitUntilTheyAreSettled();
    void millisecondsAreNeitherLostNorInvented();
    void aLinkMadeWhileWatchingCountsFromItsMaking();
    void aDeletedLinkBooksItsLastCounters();
    void deletedAndMadeAnewWithTheSameIndexLosesNothing();
    void aFallenCounterIsANewStart();
    void anOldEventDoesNotLookLikeAFall();
    void anInvalidLookIsMadeUpForByTheNext();
    void aRenameStaysTheSameDevice();
    void aLinkWithoutARouteIsNotCounted();
    void aLinkThatLostItsRouteCountsForAMinute();
    void aYoungLinkCountsFromItsMakingWhenTheRouteComes();
    void severalDevicesCountAtOnceAndTheirTimeOnce();
    void onlyTheNamedDeviceCounts();
    void aNamedLinkCountsThatCameAndWentBetweenTwoLooks();
    void anotherNameEndsTheGrace();
    void whatMayBeOverTheLinkEndsItsGrace();
    void timeIsNotBookedOverAReconnection();
};

namespace {

constexpr qint64 kSecond = 1000000000;
const std::string kDevice = "name:wwan0";

void begin(LinkScript &script)
{
    script.find(LinkScript::link("wwan0"), 5000, 7000);
    script.routeBy({ 3 });
    (void)script.look();
}

} // namespace

void tst_Accountant::theFirstCountersAreOnlyABase()
{
    LinkScript script;
    begin(script);
    QVERIFY(script.booked().isZero());
    QCOMPARE(int(script.batch.marks.size()), 1);
    QCOMPARE(script.batch.marks[0].download, quint64(5000));
    QCOMPARE(script.batch.marks[0].device, kDevice);
    QCOMPARE(int(script.batch.devices.size()), 1);
    QVERIFY(script.accountant.live().connected);
    QCOMPARE(script.accountant.live().firstDownload, quint64(5000));
}

void tst_Accountant::differencesAreBookedWithTheirTime()
{
    LinkScript script;
    begin(script);
    script.count(3, 5400, 7001);
    (void)script.look(2 * kSecond);
    QCOMPARE(int(script.batch.bookings.size()), 1);
    QCOMPARE(script.batch.bookings[0].device, kDevice);
    QCOMPARE(script.batch.bookings[0].use, 0);
    QVERIFY((script.booked() == velq::Amounts { 400, 1, 2000, 2000 }));
    QCOMPARE(script.accountant.live().downloadSpeed, quint32(200));
    QCOMPARE(script.batch.marks[0].upload, quint64(7001));
    QVERIFY(script.batch.devices.empty()); // told already
    script.count(3, 5400, 7001);
    (void)script.look();
    QVERIFY(script.batch.marks.empty());
}

void tst_Accountant::plainLooksWaitUntilTheyAreSettled()
{
    LinkScript script;
    begin(script);
    for (int i = 1; i <= 3; ++i) {
        script.count(3, 5000 + 100 * quint64(i), 7000 + quint64(i));
        (void)script.look(kSecond, false);
        QVERIFY(script.batch.isEmpty());
        QCOMPARE(script.accountant.live().download(), 100 * quint64(i));
        QCOMPARE(script.accountant.live().downloadSpeed, quint32(100));
    }
    script.batch = script.accountant.settle();
    QVERIFY((script.booked() == velq::Amounts { 300, 3, 3000, 3000 }));
    QCOMPARE(int(script.batch.marks.size()), 1);
    QCOMPARE(script.batch.marks[0].download, quint64(5300));
    QVERIFY(script.accountant.settle().isEmpty());
    script.count(3, 5301, 7003);
    script.change(LinkScript::link("wwan7"));
    (void)script.look(kSecond, false); // not a plain one
    QCOMPARE(script.booked().download, qint64(1));
}

void tst_Accountant::millisecondsAreNeitherLostNorInvented()
{
    LinkScript script;
    begin(script);
    qint64 sum = 0;
    const qint64 step = kSecond - 1; // truncated alone, each would lose a millisecond
    const qint64 before = script.nowNs;
    for (int i = 0; i < 1000; ++i) {
        (void)script.look(step);
        sum += script.booked().timeMs;
    }
    QCOMPARE(sum, (script.nowNs / 1000000) - (before / 1000000));
}

void tst_Accountant::aLinkMadeWhileWatchingCountsFromItsMaking()
{
    LinkScript script;
    (void)script.look();
    script.appear(LinkScript::link("wwan0"));
    script.count(3, 90, 10);
    script.routeBy({ 3 });
    (void)script.look();
    QCOMPARE(script.booked().download, qint64(90));
    QCOMPARE(script.accountant.live().download(), quint64(90));
}

void tst_Accountant::aDeletedLinkBooksItsLastCounters()
{
    LinkScript script;
    begin(script);
    Link down = LinkScript::link("wwan0");
    down.up = false;
    script.changeWithCounters(down, 5900, 7000);
    script.go(3);
    script.routeBy({});
    (void)script.look();
    QCOMPARE(script.booked().download, qint64(900));
    QCOMPARE(int(script.batch.settled.size()), 1);
    QVERIFY(!script.accountant.live().connected);
    QVERIFY(script.accountant.live().interface.empty());
    QVERIFY(script.accountant.present().empty());
}

void tst_Accountant::deletedAndMadeAnewWithTheSameIndexLosesNothing()
{
    LinkScript script;
    begin(script);
    script.count(3, 5900, 7000, true);
    script.go(3);
    script.appear(LinkScript::link("wwan0", 3, 34));
    script.count(3, 6100, 50); // already beyond the old ones
    (void)script.look();
    QCOMPARE(script.booked().download, qint64(900 + 6100));
    QCOMPARE(script.booked().upload, qint64(50));
    QCOMPARE(script.accountant.live().download(), quint64(6100));
    QCOMPARE(script.batch.marks.back().id.instance, quint64(34));
    QCOMPARE(script.batch.settled.back().instance, quint64(33));
}

void tst_Accountant::aFallenCounterIsANewStart()
{
    LinkScript script;
    begin(script);
    script.count(3, 90, 20000);
    (void)script.look();
    QCOMPARE(script.booked().download, qint64(0));
    QCOMPARE(script.booked().upload, qint64(0));
    QCOMPARE(int(script.batch.reasons.size()), 1);
    QVERIFY(script.batch.reasons[0].kind == ReasonKind::CounterFell);
    QCOMPARE(script.accountant.live().download(), quint64(0));
    script.count(3, 100, 20000);
    (void)script.look();
    QCOMPARE(script.booked().download, qint64(10));
    script.count(3, 5, 20000); // again, within the hour
    (void)script.look();
    QVERIFY(script.batch.reasons.empty());
    script.count(3, 1, 20000);
    (void)script.look(3600 * kSecond);
    QCOMPARE(int(script.batch.reasons.size()), 1);
}

void tst_Accountant::anOldEventDoesNotLookLikeAFall()
{
    LinkScript script;
    begin(script);
    script.count(3, 6000, 8000);
    script.count(3, 5500, 7500, true); // was written before the counters above
    script.count(3, 6001, 8000);
    (void)script.look();
    QCOMPARE(script.booked().download, qint64(1001));
    QVERIFY(script.batch.reasons.empty());
}

void tst_Accountant::anInvalidLookIsMadeUpForByTheNext()
{
    LinkScript script;
    begin(script);
    const BookingBatch batch = script.accountant.advance({}, nullptr, script.nowNs + kSecond);
    QVERIFY(batch.isEmpty());
    QVERIFY(script.accountant.live().connected);
    script.count(3, 7000, 7000);
    (void)script.look(2 * kSecond);
    QVERIFY((script.booked() == velq::Amounts { 2000, 0, 2000, 2000 }));
    QCOMPARE(script.accountant.live().downloadSpeed, quint32(1000));
}

void tst_Accountant::aRenameStaysTheSameDevice()
{
    LinkScript script;
    begin(script);
    script.change(LinkScript::link("wwan7"));
    script.count(3, 5010, 7000);
    (void)script.look();
    QCOMPARE(script.bookedFor(kDevice).download, qint64(10));
    QCOMPARE(script.accountant.live().interface, std::string("wwan7"));
    QCOMPARE(script.accountant.live().timeMs, qint64(1000));
    QCOMPARE(script.batch.devices[0].interface, std::string("wwan7"));
}

void tst_Accountant::aLinkWithoutARouteIsNotCounted()
{
    LinkScript script;
    begin(script);
    script.find(LinkScript::link("eth1", 4, 44), 100, 100);
    (void)script.look();
    script.count(4, 900100, 900100);
    script.count(3, 5001, 7000);
    (void)script.look();
    QCOMPARE(script.booked().download, qint64(1));
    QCOMPARE(int(script.accountant.present().size()), 2);
    QVERIFY(!script.accountant.present()[1].counted);
}

void tst_Accountant::aLinkThatLostItsRouteCountsForAMinute()
{
    LinkScript script;
    begin(script);
    script.routeBy({});
    script.count(3, 5300, 7000);
    (void)script.look();
    QCOMPARE(script.booked().download, qint64(300));
    QVERIFY(!script.accountant.live().connected);
    script.count(3, 5400, 7000);
    (void)script.look(59 * kSecond); // what flows around a reconnection
    QCOMPARE(script.booked().download, qint64(100));
    QVERIFY(script.batch.settled.empty());
    script.count(3, 5500, 7000);
    (void)script.look();
    QCOMPARE(int(script.batch.settled.size()), 1);
    script.count(3, 5600, 7000);
    (void)script.look();
    QVERIFY(script.booked().isZero());
}

void tst_Accountant::aYoungLinkCountsFromItsMakingWhenTheRouteComes()
{
    LinkScript script;
    (void)script.look();
    script.appear(LinkScript::link("wwan0"));
    (void)script.look();
    script.count(3, 300, 200); // finding an address
    (void)script.look(10 * kSecond);
    QVERIFY(script.booked().isZero());
    script.count(3, 350, 200);
    script.routeBy({ 3 });
    (void)script.look();
    QCOMPARE(script.booked().download, qint64(350));
    QCOMPARE(script.booked().upload, qint64(200));

    LinkScript old; // it was there before anybody looked
    old.find(LinkScript::link("wwan0"), 100, 100);
    (void)old.look();
    old.count(3, 300, 200);
    (void)old.look();
    old.count(3, 350, 200);
    old.routeBy({ 3 });
    (void)old.look();
    QCOMPARE(old.booked().download, qint64(50));

    LinkScript late;
    (void)late.look();
    late.appear(LinkScript::link("wwan0"));
    (void)late.look();
    late.count(3, 300, 200);
    (void)late.look(61 * kSecond);
    late.count(3, 350, 200);
    late.routeBy({ 3 });
    (void)late.look();
    QCOMPARE(late.booked().download, qint64(50));
}

void tst_Accountant::severalDevicesCountAtOnceAndTheirTimeOnce()
{
    LinkScript script;
    script.find(LinkScript::link("wwan0"), 0, 0);
    script.find(LinkScript::link("eth0", 4, 44), 0, 0);
    Link wifi = LinkScript::link("wlan0", 5, 55);
    wifi.wireless = true;
    script.find(wifi, 0, 0);
    script.routeBy({ 4, 3, 5 });
    (void)script.look();
    script.count(3, 10, 0);
    script.count(4, 200, 0);
    script.count(5, 3000, 0);
    (void)script.look();
    QVERIFY((script.bookedFor("name:eth0") == velq::Amounts { 200, 0, 1000, 1000 }));
    QVERIFY((script.bookedFor("name:wwan0") == velq::Amounts { 10, 0, 1000, 0 }));
    QVERIFY((script.bookedFor("name:wlan0") == velq::Amounts { 3000, 0, 1000, 1000 }));
    QCOMPARE(script.accountant.live().interface, std::string("eth0"));
    for (const velq::Booking &booking : script.batch.bookings)
        QCOMPARE(booking.use, booking.device == "name:wlan0" ? 1 : 0);
}

void tst_Accountant::onlyTheNamedDeviceCounts()
{
    LinkScript script;
    script.accountant.use("eth0");
    begin(script);
    QVERIFY(!script.accountant.live().connected);
    script.find(LinkScript::link("eth0", 4, 44), 50, 50);
    (void)script.look();
    script.count(3, 6000, 7000);
    script.count(4, 57, 50);
    (void)script.look();
    QCOMPARE(script.booked().download, qint64(7));
    script.accountant.use("name:wwan0"); // by its key
    (void)script.look();
    script.count(3, 6005, 7000);
    (void)script.look();
    QCOMPARE(script.booked().download, qint64(5));
}

void tst_Accountant::aNamedLinkCountsThatCameAndWentBetweenTwoLooks()
{
    LinkScript script;
    script.accountant.use("eth0");
    begin(script);
    for (const int index : { 4, 5 }) {
        script.appear(LinkScript::link("eth0", index, 40 + std::uint64_t(index)), 50, 60);
        script.count(index, 57, 61, true);
        script.go(index);
        script.appear(LinkScript::link("eth1", 10 + index, 50 + std::uint64_t(index)), 0, 0);
        script.count(10 + index, 1000, 1000, true);
        script.go(10 + index);
    }
    (void)script.look();
    QCOMPARE(script.bookedFor("name:eth0").download, qint64(14));
    QCOMPARE(script.bookedFor("name:eth0").upload, qint64(2));
    QCOMPARE(script.booked().download, qint64(14));
    QVERIFY(script.batch.marks.empty());
}

void tst_Accountant::anotherNameEndsTheGrace()
{
    LinkScript script;
    begin(script);
    script.find(LinkScript::link("eth0", 4, 44), 50, 50);
    (void)script.look();
    script.accountant.use("eth0");
    script.count(3, 6000, 7000);
    (void)script.look();
    QCOMPARE(script.booked().download, qint64(1000)); // until now it did count
    script.count(3, 7000, 7000);
    (void)script.look();
    QCOMPARE(script.booked().download, qint64(0));
}

void tst_Accountant::whatMayBeOverTheLinkEndsItsGrace()
{
    LinkScript script;
    begin(script);
    velq::Link dialled = LinkScript::link("ppp0", 4, 44);
    dialled.kind = "ppp";
    script.appear(dialled);
    script.count(3, 6000, 7000);
    script.routeBy({ 4 });
    (void)script.look();
    QCOMPARE(script.booked().download, qint64(1000)); // of before
    script.count(3, 9000, 8000);
    script.count(4, 2900, 950);
    (void)script.look();
    QCOMPARE(script.booked().download, qint64(2900));
    QCOMPARE(script.booked().upload, qint64(950));
}

void tst_Accountant::timeIsNotBookedOverAReconnection()
{
    LinkScript script;
    begin(script);
    script.count(3, 5100, 7000);
    (void)script.look();
    Link link = LinkScript::link("wwan0");
    link.up = false;
    script.change(link);
    link.up = true;
    script.change(link);
    script.count(3, 5200, 7000);
    (void)script.look();
    QVERIFY((script.booked() == velq::Amounts { 100, 0, 0, 0 }));
    QVERIFY(script.accountant.live().connected);
    QCOMPARE(script.accountant.live().timeMs, qint64(0));
    QCOMPARE(script.accountant.live().download(), quint64(100));
}

QTEST_GUILESS_MAIN(tst_Accountant)
#include "tst_accountant.moc"
