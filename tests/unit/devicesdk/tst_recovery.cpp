#include "LinkScript.h"

#include <QtTest>

using velq::Link;
using velq::LinkMark;
using velq::ModemFacts;
using velq::NetworkFacts;
using velq::ReasonKind;

class tst_Recovery : public QObject
{
    Q_OBJECT
private slots:
    void whatFlowedMeanwhileIsBookedOnce();
    void theNameServesWhereInstancesAreNotTold();
    void anotherInstanceWithAnUnstableKeyIsNotRecovered();
    void aFallenCounterIsNotRecovered();
    void aDeviceThatCameBackBringsItsWholeCounter();
    void afterABootAKnownDeviceBringsItsWholeCounter();
    void aNewDeviceBringsNothing();
    void aModemIsRecoveredWhenItIsKnown();
    void aModemStaysTheSameWhileNobodyKnowsIt();
    void anotherSimIsAnotherDevice();
    void roamingIsCountedApart();
    void aSecondProcessGoesOnWhereTheFirstEnded();
    void aFirstProcessThatLookedLaterIsNotBookedAgain();
    void marksThatNobodyCanClaimAreSettled();
    void aDeviceThatWentKeepsItsMark();
    void theLinkThatCarriesAModemsConnectionIsNotItsNextLife();
    void theCarrierIsNotCountedBesideTheConnection();
    void aLinkThatWasThereBesideTheLastOneIsNotItsNextLife();
    void aModemThatIsNotFullyKnownYetChangesNothing();
};

namespace {

LinkMark mark(const std::string &device, std::uint64_t download, std::uint64_t upload,
              const std::string &boot = "boot", int index = 3, std::uint64_t instance = 33)
{
    return { { boot, index, instance }, "wwan0", device, 0, download, upload };
}

Link hardware(std::uint64_t instance = 33)
{
    Link link = LinkScript::link("wwan0", 3, instance);
    link.hardwareAddress = "02:00:00:00:00:01";
    return link;
}

const std::string kHardware = "hw:02:00:00:00:00:01";

std::shared_ptr<NetworkFacts> modem(const std::string &sim, bool roaming = false)
{
    auto facts = std::make_shared<NetworkFacts>();
    ModemFacts modem;
    modem.equipmentId = "356938035643809";
    modem.simId = sim;
    modem.model = "M1";
    modem.operatorName = "Test";
    modem.interface = "wwan0";
    modem.connected = true;
    modem.placed = true;
    modem.roaming = roaming;
    facts->bus = facts->modemManager = true;
    facts->modems.push_back(modem);
    return facts;
}

const std::string kModem = "sim:8949/356938035643809";

} // namespace

void tst_Recovery::whatFlowedMeanwhileIsBookedOnce()
{
    LinkScript script({ mark("name:wwan0", 1000, 2000) });
    script.find(LinkScript::link("wwan0"), 1500, 2007);
    script.routeBy({ 3 });
    (void)script.look();
    QVERIFY((script.bookedFor("name:wwan0") == velq::Amounts { 500, 7, 0, 0 }));
    QCOMPARE(int(script.batch.reasons.size()), 1);
    QVERIFY(script.batch.reasons[0].kind == ReasonKind::Recovered);
    QCOMPARE(script.batch.reasons[0].download, qint64(500));
    QCOMPARE(script.batch.marks[0].download, quint64(1500));
    QCOMPARE(script.accountant.live().download(), quint64(0)); // it was no connection of ours
    (void)script.look();
    QCOMPARE(script.booked().download, qint64(0));
}

void tst_Recovery::theNameServesWhereInstancesAreNotTold()
{
    LinkScript script({ mark("name:wwan0", 1000, 2000, "boot", 3, 0) });
    script.find(LinkScript::link("wwan0"), 1500, 2007);
    (void)script.look(); // not counted now, but it was
    QCOMPARE(script.booked().download, qint64(500));
    QVERIFY(!script.batch.settled.empty());

    LinkScript other({ mark("name:wwan0", 1000, 2000, "boot", 3, 0) });
    other.find(LinkScript::link("eth0"), 1500, 2007);
    other.routeBy({ 3 });
    (void)other.look();
    QVERIFY(other.booked().isZero());
}

void tst_Recovery::anotherInstanceWithAnUnstableKeyIsNotRecovered()
{
    for (const LinkMark &stored :
         { mark("name:wwan0", 10, 20, "boot", 3, 32), mark("name:wwan0", 10, 20, "earlier boot"),
           mark("name:wwan0", 10, 20, "boot", 4) }) {
        LinkScript script({ stored });
        script.find(LinkScript::link("wwan0"), 1500, 2007);
        script.routeBy({ 3 });
        (void)script.look();
        QVERIFY(script.booked().isZero());
    }
}

void tst_Recovery::aFallenCounterIsNotRecovered()
{
    LinkScript script({ mark("name:wwan0", 1000, 2000) });
    script.find(LinkScript::link("wwan0"), 1500, 1999);
    script.routeBy({ 3 });
    (void)script.look();
    QVERIFY(script.booked().isZero());
    QVERIFY(script.batch.reasons[0].kind == ReasonKind::CounterFell);
}

void tst_Recovery::aDeviceThatCameBackBringsItsWholeCounter()
{
    LinkScript script({ mark(kHardware, 100000, 200000, "boot", 3, 32) });
    script.find(hardware(), 1500, 2007); // plugged in again while nobody counted
    script.routeBy({ 3 });
    (void)script.look();
    QCOMPARE(script.bookedFor(kHardware).download, qint64(1500));
    QCOMPARE(script.bookedFor(kHardware).upload, qint64(2007));
    QCOMPARE(script.batch.settled.front().instance, quint64(32));
}

void tst_Recovery::afterABootAKnownDeviceBringsItsWholeCounter()
{
    LinkScript script({ mark(kHardware, 100000, 200000, "earlier boot") });
    script.find(hardware(), 1500, 2007);
    script.routeBy({ 3 });
    (void)script.look();
    QCOMPARE(script.booked().download, qint64(1500));
    script.count(3, 1501, 2007);
    (void)script.look();
    QCOMPARE(script.booked().download, qint64(1));
}

void tst_Recovery::aNewDeviceBringsNothing()
{
    LinkScript script({ mark("hw:02:00:00:00:00:99", 1, 1, "earlier boot") });
    script.find(hardware(), 1500, 2007);
    script.routeBy({ 3 });
    (void)script.look();
    QVERIFY(script.booked().isZero());
    QVERIFY(script.batch.settled.empty()); // the other device may come back
}

void tst_Recovery::aModemIsRecoveredWhenItIsKnown()
{
    LinkScript script({ mark(kModem, 100000, 200000, "earlier boot") });
    script.find(LinkScript::link("wwan0"), 1500, 2007);
    script.routeBy({ 3 });
    (void)script.look();
    QVERIFY(script.booked().isZero()); // the buses have not answered yet
    script.facts = modem("8949");
    script.count(3, 1600, 2007);
    (void)script.look();
    QCOMPARE(script.bookedFor(kModem).download, qint64(1500 + 100));

    LinkScript late({ mark(kModem, 100000, 200000, "earlier boot") });
    late.accountant.use(kModem);
    late.find(LinkScript::link("wwan0"), 1500, 2007);
    (void)late.look();
    for (const quint64 download : { 1600U, 1700U }) { // not known to be the named one
        late.count(3, download, 2007);
        (void)late.look();
        QVERIFY(late.booked().isZero());
    }
    late.facts = modem("8949");
    late.count(3, 1800, 2007);
    (void)late.look();
    QCOMPARE(late.bookedFor(kModem).download, qint64(1800));
    late.accountant.use("other");
    (void)late.look();
    late.count(3, 1900, 2007);
    (void)late.look();
    late.accountant.use(kModem);
    (void)late.look();
    QVERIFY(late.booked().isZero()); // what it carried meanwhile was not to be counted
}

void tst_Recovery::aModemStaysTheSameWhileNobodyKnowsIt()
{
    LinkScript script({ mark(kModem, 1000, 2000) });
    script.accountant.use(kModem);
    script.find(LinkScript::link("wwan0"), 1500, 2007);
    (void)script.look(); // the mark knows it
    QCOMPARE(script.bookedFor(kModem).download, qint64(500));
    script.facts = modem("8949");
    script.count(3, 1600, 2007);
    (void)script.look();
    QCOMPARE(script.bookedFor(kModem).download, qint64(100));
    QCOMPARE(script.batch.devices[0].label, std::string("M1 (Test)"));
    script.facts = nullptr; // the service ends
    script.count(3, 1700, 2007);
    (void)script.look();
    QCOMPARE(script.bookedFor(kModem).download, qint64(100));
    QCOMPARE(script.accountant.live().device, kModem);
}

void tst_Recovery::anotherSimIsAnotherDevice()
{
    LinkScript script;
    script.facts = modem("8949");
    script.find(LinkScript::link("wwan0"), 0, 0);
    (void)script.look();
    script.facts = modem("8950");
    script.count(3, 10, 0);
    (void)script.look();
    QCOMPARE(script.bookedFor("sim:8950/356938035643809").download, qint64(10));
    script.facts = modem("");
    script.count(3, 30, 0);
    (void)script.look();
    QCOMPARE(script.bookedFor("modem:356938035643809").download, qint64(20));
}

void tst_Recovery::roamingIsCountedApart()
{
    LinkScript script;
    script.facts = modem("8949");
    script.find(LinkScript::link("wwan0"), 0, 0);
    (void)script.look();
    QVERIFY(!script.accountant.live().roaming);
    script.facts = modem("8949", true);
    script.count(3, 10, 0);
    (void)script.look();
    QCOMPARE(script.batch.bookings[0].use, velq::useKind(0, true));
    QVERIFY(script.accountant.live().roaming);
    QVERIFY(!script.accountant.present()[0].modemFigures);
    script.facts = modem("8949", true);
    script.facts->modems[0].hasStats = true;
    script.facts->modems[0].bearerUpload = 77;
    (void)script.look();
    QCOMPARE(script.accountant.present()[0].modemFigures->upload, quint64(77));
}

void tst_Recovery::aSecondProcessGoesOnWhereTheFirstEnded()
{
    LinkScript script;
    script.find(LinkScript::link("wwan0"), 0, 0);
    script.routeBy({ 3 });
    (void)script.look();
    script.count(3, 5000, 0); // looked at, while another process booked it
    (void)script.look();
    const auto liveBefore = script.accountant.live().download();
    script.accountant.goOnFrom({ mark("name:wwan0", 4000, 0) });
    script.count(3, 5100, 0);
    (void)script.look();
    QCOMPARE(script.booked().download, qint64(1000 + 100));
    QCOMPARE(script.batch.marks[0].download, quint64(5100));
    QCOMPARE(script.accountant.live().download(), liveBefore + 100);
}

void tst_Recovery::aFirstProcessThatLookedLaterIsNotBookedAgain()
{
    LinkScript script;
    script.find(LinkScript::link("wwan0"), 1000, 2000);
    script.routeBy({ 3 });
    (void)script.look();
    script.accountant.goOnFrom({ mark("name:wwan0", 1700, 2500) }); // within the same second
    script.count(3, 1900, 2600);
    (void)script.look();
    QCOMPARE(script.booked().download, qint64(200));
    QCOMPARE(script.booked().upload, qint64(100));
    QVERIFY(script.batch.reasons.empty());
}

void tst_Recovery::marksThatNobodyCanClaimAreSettled()
{
    LinkScript script({ mark("name:wwan0", 1, 1, "boot", 9), mark(kHardware, 1, 1, "boot", 8) });
    script.find(LinkScript::link("eth0"), 0, 0);
    (void)script.look();
    QCOMPARE(int(script.batch.settled.size()), 1);
    QCOMPARE(script.batch.settled[0].index, 9);
}

void tst_Recovery::aDeviceThatWentKeepsItsMark()
{
    LinkScript script;
    script.find(hardware(), 0, 0);
    script.routeBy({ 3 });
    (void)script.look();
    script.go(3);
    (void)script.look();
    QVERIFY(script.batch.settled.empty()); // it may come back while nobody counts
    script.appear(hardware(34));
    script.count(3, 5, 5);
    (void)script.look();
    QCOMPARE(script.booked().download, qint64(5)); // it came back under our eyes: nothing to add
    QCOMPARE(script.batch.settled.front().instance, quint64(33));
}

namespace {

//! A modem whose connections are links of their own over "wwan0".
std::shared_ptr<NetworkFacts> multiplexed(const std::string &interface)
{
    auto facts = modem("8949");
    facts->modems[0].netPorts = { "wwan0" };
    facts->modems[0].interface = interface;
    facts->modems[0].connected = !interface.empty();
    return facts;
}

Link connection(int index, std::uint64_t instance)
{
    Link link = LinkScript::link("qmapmux0.0", index, instance);
    link.kind = "rmnet";
    link.lowerIndex = 3;
    return link;
}

} // namespace

void tst_Recovery::theLinkThatCarriesAModemsConnectionIsNotItsNextLife()
{
    LinkScript script;
    script.find(LinkScript::link("wwan0"), 5000, 5000);
    script.find(connection(7, 70), 4000, 4000);
    script.facts = multiplexed("qmapmux0.0");
    script.routeBy({ 7 });
    (void)script.look();
    script.count(3, 6000, 6000);
    script.count(7, 5000, 5000);
    QCOMPARE(script.look().bookings.size(), std::size_t(1));
    QCOMPARE(script.bookedFor(kModem).download, qint64(1000));

    script.go(7); // a reconnect: the link goes, what carried it stays
    script.facts = multiplexed({});
    script.routeBy({});
    (void)script.look();
    script.appear(connection(8, 80));
    script.facts = multiplexed("qmapmux0.0");
    script.routeBy({ 8 });
    for (int i = 0; i < 3; ++i) {
        QVERIFY(script.look().reasons.empty());
        QCOMPARE(script.booked().download, qint64(0));
    }
}

void tst_Recovery::aLinkThatWasThereBesideTheLastOneIsNotItsNextLife()
{
    // The connection's link was made anew while nobody counted: it brings its whole counter, and
    // what has carried all connections does not.
    LinkScript script({ mark(kModem, 4000, 4000, "boot", 7, 70) });
    script.find(LinkScript::link("wwan0"), 9000, 9000);
    script.find(connection(8, 80), 300, 300);
    script.facts = multiplexed("qmapmux0.0");
    script.routeBy({ 8 });
    (void)script.look();
    QCOMPARE(script.booked().download, qint64(300));

    // Nor does it while there is no connection; the mark waits.
    LinkScript down({ mark(kModem, 4000, 4000, "boot", 7, 70) });
    down.find(LinkScript::link("wwan0"), 9000, 9000);
    down.facts = multiplexed({});
    (void)down.look();
    QVERIFY(down.booked().isZero());
    QVERIFY(down.batch.settled.empty());
}

void tst_Recovery::theCarrierIsNotCountedBesideTheConnection()
{
    LinkScript script;
    script.accountant.use(kModem);
    script.find(LinkScript::link("wwan0"), 5000, 5000);
    script.find(connection(7, 70), 4000, 4000);
    script.facts = multiplexed("qmapmux0.0");
    (void)script.look();
    script.count(3, 6000, 6000);
    script.count(7, 5000, 5000);
    (void)script.look();
    QCOMPARE(script.booked().download, qint64(1000));
    QCOMPARE(script.accountant.live().interface, std::string("qmapmux0.0"));

    // A link of a kind that shares the address of the hardware stands for it.
    LinkScript other;
    other.accountant.use(kHardware);
    other.find(hardware(), 5000, 5000);
    Link above = hardware(44);
    above.index = 4;
    above.name = "macsec0";
    above.kind = "macsec";
    above.lowerIndex = 3;
    other.find(above, 100, 100);
    (void)other.look();
    other.count(3, 6000, 6000);
    other.count(4, 1000, 1000);
    (void)other.look();
    QCOMPARE(other.booked().download, qint64(1000));
    QCOMPARE(other.accountant.live().interface, std::string("wwan0"));
}

void tst_Recovery::aModemThatIsNotFullyKnownYetChangesNothing()
{
    LinkScript script;
    script.find(hardware(), 100, 0);
    script.facts = modem("8949", true);
    script.routeBy({ 3 });
    (void)script.look();
    // The service starts anew: the modem is there before its SIM and its network are.
    script.facts = modem({}, false);
    script.facts->modems[0].simPending = true;
    script.facts->modems[0].placed = false;
    script.count(3, 200, 0);
    (void)script.look();
    QCOMPARE(script.bookedFor(kModem).download, qint64(100));
    QVERIFY(velq::isRoaming(script.batch.bookings[0].use));
    QVERIFY(script.batch.devices.empty());
    // A modem that nobody has known before waits for its SIM.
    LinkScript other;
    other.find(hardware(), 100, 0);
    other.facts = script.facts;
    other.routeBy({ 3 });
    (void)other.look();
    QCOMPARE(other.batch.devices[0].key, kHardware);
}

QTEST_GUILESS_MAIN(tst_Recovery)
#include "tst_recovery.moc"
