#include "accounting/Identity.h"
#include "accounting/Uplinks.h"

#include <QtTest>

#include <initializer_list>

using velq::DefaultRoute;
using velq::Link;
using velq::Links;
using velq::ModemFacts;
using velq::NetworkFacts;
using velq::uplinks;

class tst_Uplinks : public QObject
{
    Q_OBJECT
private slots:
    void theRoutesLinksInTheirOrder();
    void aConnectedModemComesFirstThenThePrimaryConnection();
    void aTunnelOverACountedDeviceIsNotAddedAgain();
    void aTunnelAloneStandsForTheHardwareThatIsUp();
    void aTunnelCountsWhereThereIsNothingElse();
    void pointToPointCountsUnlessItMayBeATunnel();
    void aModemWithAKindIsHardware();
    void aBridgeStandsForItsPorts();
    void aBridgeOfGuestsCountsItself();
    void aVlanStandsForTheLinkBelow();
    void stacksAreFollowedDown();
    void ringsEnd();
    void missingLinksAreSkipped();
    void devicesAreKnownByTheBestKey();
};

namespace {

struct Row
{
    int index;
    const char *name;
    const char *kind;
    int lower = 0;
    int master = 0;
    bool up = true;
};

Links links(std::initializer_list<Row> rows)
{
    Links links;
    for (const Row &row : rows) {
        Link link;
        link.index = row.index;
        link.name = row.name;
        link.kind = row.kind;
        link.lowerIndex = row.lower;
        link.masterIndex = row.master;
        link.up = row.up;
        link.loopback = link.name == "lo";
        links[row.index] = link;
    }
    return links;
}

std::vector<DefaultRoute> routes(std::initializer_list<int> indexes)
{
    std::vector<DefaultRoute> routes;
    for (const int index : indexes)
        routes.push_back({ 2, index, 0 });
    return routes;
}

using Found = std::vector<int>;

} // namespace

void tst_Uplinks::theRoutesLinksInTheirOrder()
{
    const Links all = links({ { 1, "lo", "" }, { 2, "eth0", "" }, { 3, "wlan0", "" } });
    QVERIFY((uplinks(all, routes({ 3, 2, 3 }), {}) == Found { 3, 2 }));
    QVERIFY(uplinks(all, {}, {}).empty());
}

void tst_Uplinks::aConnectedModemComesFirstThenThePrimaryConnection()
{
    const Links all = links({ { 2, "eth0", "" }, { 3, "wlan0", "" }, { 4, "wwan0", "" } });
    NetworkFacts facts;
    facts.primaryInterface = "wlan0";
    facts.modems.resize(1);
    facts.modems[0].interface = "wwan0";
    QVERIFY((uplinks(all, routes({ 2 }), facts) == Found { 3, 2 }));
    facts.modems[0].connected = true;
    QVERIFY((uplinks(all, routes({ 2 }), facts) == Found { 4, 3, 2 }));
}

void tst_Uplinks::aTunnelOverACountedDeviceIsNotAddedAgain()
{
    const Links all = links({ { 2, "eth0", "" },
                              { 9, "wg0", "wireguard" },
                              { 10, "tun0", "tun" },
                              { 11, "ovpn0", "ovpn" },
                              { 12, "dco0", "ovpn-dco" } });
    QVERIFY((uplinks(all, routes({ 12, 11, 10, 9, 2 }), {}) == Found { 2 }));
}

void tst_Uplinks::aTunnelAloneStandsForTheHardwareThatIsUp()
{
    const Links all = links({ { 1, "lo", "" },
                              { 2, "eth0", "" },
                              { 3, "eth1", "", 0, 0, false },
                              { 10, "tun0", "tun" } });
    QVERIFY((uplinks(all, routes({ 10 }), {}) == Found { 2 }));
}

void tst_Uplinks::aTunnelCountsWhereThereIsNothingElse()
{
    const Links all = links({ { 1, "lo", "" }, { 10, "tun0", "tun" } });
    QVERIFY((uplinks(all, routes({ 10 }), {}) == Found { 10 }));
}

void tst_Uplinks::pointToPointCountsUnlessItMayBeATunnel()
{
    const Links all
        = links({ { 2, "eth0", "" }, { 9, "ppp0", "ppp" }, { 10, "wg0", "wireguard" } });
    QVERIFY((uplinks(all, routes({ 9 }), {}) == Found { 9 })); // PPPoE, or a serial line
    QVERIFY((uplinks(all, routes({ 10, 9 }), {}) == Found { 9 }));
    QVERIFY((uplinks(all, routes({ 9, 2 }), {}) == Found { 2 })); // L2TP, PPTP
    NetworkFacts facts;
    facts.modems.resize(1);
    facts.modems[0].interface = "ppp0";
    facts.modems[0].connected = true;
    QVERIFY((uplinks(all, routes({ 9, 2 }), facts) == Found { 9, 2 }));
}

void tst_Uplinks::aModemWithAKindIsHardware()
{
    const Links all
        = links({ { 1, "lo", "" }, { 4, "wwan0", "wwan" }, { 10, "wg0", "wireguard" } });
    QVERIFY((uplinks(all, routes({ 10 }), {}) == Found { 4 }));
    QVERIFY(velq::isHardware(all.at(4)));
    QVERIFY(!velq::isHardware(all.at(1)));
    QVERIFY(!velq::isHardware(all.at(10)));
}

void tst_Uplinks::aBridgeStandsForItsPorts()
{
    const Links all = links({ { 2, "eth0", "", 0, 8 },
                              { 3, "vethguest", "veth", 0, 8 },
                              { 4, "tap0", "tun", 0, 8 },
                              { 8, "br0", "bridge" } });
    QVERIFY((uplinks(all, routes({ 8 }), {}) == Found { 2 }));
}

void tst_Uplinks::aBridgeOfGuestsCountsItself()
{
    const Links several = links(
        { { 3, "vethone", "veth", 0, 8 }, { 4, "vethtwo", "veth", 0, 8 }, { 8, "br0", "bridge" } });
    QVERIFY((uplinks(several, routes({ 8 }), {}) == Found { 8 }));
    const Links one = links({ { 3, "vethone", "veth", 0, 8 }, { 8, "br0", "bridge" } });
    QVERIFY((uplinks(one, routes({ 8 }), {}) == Found { 3 }));
}

void tst_Uplinks::aVlanStandsForTheLinkBelow()
{
    const Links all = links({ { 2, "eth0", "" }, { 6, "eth0.7", "vlan", 2 } });
    QVERIFY((uplinks(all, routes({ 6, 2 }), {}) == Found { 2 }));
    // The link below is in another namespace.
    QVERIFY((uplinks(links({ { 6, "mv0", "macvlan", 0 } }), routes({ 6 }), {}) == Found { 6 }));
}

void tst_Uplinks::stacksAreFollowedDown()
{
    const Links all = links({ { 2, "eth0", "", 0, 5 },
                              { 3, "eth1", "", 0, 5 },
                              { 5, "bond0", "bond" },
                              { 6, "bond0.7", "vlan", 5, 8 },
                              { 8, "br0", "bridge" } });
    QVERIFY((uplinks(all, routes({ 8 }), {}) == Found { 2, 3 }));
}

void tst_Uplinks::ringsEnd()
{
    const Links all = links({ { 5, "one", "vlan", 6 }, { 6, "two", "vlan", 5 } });
    QVERIFY(uplinks(all, routes({ 5 }), {}).empty());
}

void tst_Uplinks::missingLinksAreSkipped()
{
    NetworkFacts facts;
    facts.primaryInterface = "gone0";
    facts.modems.resize(1);
    facts.modems[0].connected = true; // without an interface yet
    QVERIFY(uplinks(links({ { 2, "eth0", "" } }), routes({ 77 }), facts).empty());
}

void tst_Uplinks::devicesAreKnownByTheBestKey()
{
    Link link;
    link.name = "wwan0";
    NetworkFacts facts;
    QCOMPARE(identify(link, facts).key, std::string("name:wwan0"));
    link.hardwareAddress = "02:00:00:00:00:01";
    QCOMPARE(identify(link, facts).key, std::string("hw:02:00:00:00:00:01"));
    facts.modems.resize(1);
    ModemFacts &modem = facts.modems[0];
    modem.netPorts = { "wwan0" };
    QCOMPARE(identify(link, facts).key, std::string("hw:02:00:00:00:00:01"));
    modem.deviceId = "abc";
    QCOMPARE(identify(link, facts).key, std::string("modem:abc"));
    modem.equipmentId = "356938035643809";
    QCOMPARE(identify(link, facts).key, std::string("modem:356938035643809"));
    modem.simId = "8949";
    QCOMPARE(identify(link, facts).key, std::string("sim:8949/356938035643809"));
    link.wireless = true;
    QCOMPARE(identify(link, facts).type, 1);
    // Another modem has the bearer on this interface.
    facts.modems.resize(2);
    facts.modems[1].interface = "wwan0";
    facts.modems[1].equipmentId = "2";
    QCOMPARE(identify(link, facts).key, std::string("modem:2"));
}

QTEST_GUILESS_MAIN(tst_Uplinks)
#include "tst_uplinks.moc"
