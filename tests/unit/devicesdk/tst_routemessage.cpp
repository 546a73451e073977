#include "counters/RouteMessage.h"

#include <QtTest>

#include "NetlinkBytes.h"

using velq::DefaultRoute;
using velq::parseRouteMessage;

class tst_RouteMessage : public QObject
{
    Q_OBJECT
private slots:
    void capturedRoutes_data();
    void capturedRoutes();
    void routesThatAreNotUsed_data();
    void routesThatAreNotUsed();
    void aTableInAnAttributeCounts();
    void ofSeveralHopsAllUsableOnesCount();
    void hostileHopsAreRefused();
    void cutMessagesAreRefused();
    void theOrderOfPreference();
    void changesOfDefaultRoutes_data();
    void changesOfDefaultRoutes();
    void lengthsBeyondEveryBufferAreRefused();
};

namespace {

Bytes routeBytes(int family = AF_INET)
{
    Bytes bytes(sizeof(nlmsghdr) + sizeof(rtmsg));
    nlmsghdr header {};
    header.nlmsg_len = static_cast<unsigned>(bytes.size());
    header.nlmsg_type = RTM_NEWROUTE;
    rtmsg route {};
    route.rtm_family = static_cast<unsigned char>(family);
    route.rtm_table = RT_TABLE_MAIN;
    route.rtm_type = RTN_UNICAST;
    overwrite(bytes, 0, header);
    overwrite(bytes, sizeof header, route);
    return bytes;
}

constexpr std::size_t kBody = sizeof(nlmsghdr);

void appendNumber(Bytes &bytes, unsigned short type, int value)
{
    appendAttribute(bytes, type, &value, sizeof value);
}

auto parse(const Bytes &bytes)
{
    return parseRouteMessage(bytes.data(), bytes.size());
}

rtnexthop hop(int index, unsigned char flags)
{
    rtnexthop hop {};
    hop.rtnh_len = sizeof hop;
    hop.rtnh_flags = flags;
    hop.rtnh_ifindex = index;
    return hop;
}

} // namespace

void tst_RouteMessage::capturedRoutes_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("family");
    QTest::addColumn<unsigned>("metric");
    QTest::newRow("IPv4") << "routes-ipv4.bin" << int(AF_INET) << 100U;
    QTest::newRow("IPv6") << "routes-ipv6.bin" << int(AF_INET6) << 1024U;
}

void tst_RouteMessage::capturedRoutes()
{
    QFETCH(QString, file);
    QFETCH(int, family);
    QFETCH(unsigned, metric);
    const Bytes bytes = captured(file.toLatin1().constData());
    std::vector<DefaultRoute> found;
    int messages = 0;
    for (std::size_t offset = 0; offset < bytes.size(); ++messages) {
        const Bytes rest(bytes.begin() + static_cast<std::ptrdiff_t>(offset), bytes.end());
        for (const DefaultRoute &route : parse(rest))
            found.push_back(route);
        nlmsghdr header {};
        std::memcpy(&header, rest.data(), sizeof header);
        offset += NLMSG_ALIGN(header.nlmsg_len);
    }
    QVERIFY2(messages > 1, "the table has other routes, which have to be passed over");
    QCOMPARE(found.size(), std::size_t(1));
    QCOMPARE(found.front().family, family);
    QCOMPARE(found.front().index, 3);
    QCOMPARE(found.front().metric, metric);
}

void tst_RouteMessage::routesThatAreNotUsed_data()
{
    QTest::addColumn<int>("offset");
    QTest::addColumn<int>("value");
    QTest::addColumn<bool>("wide");
    QTest::newRow("to a network") << int(offsetof(rtmsg, rtm_dst_len)) << 24 << false;
    QTest::newRow("by source") << int(offsetof(rtmsg, rtm_src_len)) << 8 << false;
    QTest::newRow("unreachable") << int(offsetof(rtmsg, rtm_type)) << int(RTN_UNREACHABLE) << false;
    QTest::newRow("another table") << int(offsetof(rtmsg, rtm_table)) << 100 << false;
    QTest::newRow("another family") << int(offsetof(rtmsg, rtm_family)) << int(AF_BRIDGE) << false;
    QTest::newRow("dead") << int(offsetof(rtmsg, rtm_flags)) << int(RTNH_F_DEAD) << true;
    QTest::newRow("link down") << int(offsetof(rtmsg, rtm_flags)) << int(RTNH_F_LINKDOWN) << true;
}

void tst_RouteMessage::routesThatAreNotUsed()
{
    QFETCH(int, offset);
    QFETCH(int, value);
    QFETCH(bool, wide);
    Bytes bytes = routeBytes();
    appendNumber(bytes, RTA_OIF, 5);
    QCOMPARE(parse(bytes).size(), std::size_t(1));
    if (wide)
        overwrite(bytes, kBody + std::size_t(offset), unsigned(value));
    else
        overwrite(bytes, kBody + std::size_t(offset), static_cast<unsigned char>(value));
    QVERIFY(parse(bytes).empty());
}

void tst_RouteMessage::aTableInAnAttributeCounts()
{
    Bytes bytes = routeBytes();
    appendNumber(bytes, RTA_OIF, 5);
    appendNumber(bytes, RTA_TABLE, 1000); // does not fit into the header's byte
    QVERIFY(parse(bytes).empty());
    Bytes withoutLink = routeBytes();
    appendNumber(withoutLink, RTA_TABLE, RT_TABLE_MAIN);
    QVERIFY(parse(withoutLink).empty());
}

void tst_RouteMessage::ofSeveralHopsAllUsableOnesCount()
{
    Bytes bytes = routeBytes();
    const rtnexthop hops[] = { hop(7, RTNH_F_LINKDOWN), hop(8, 0), hop(9, 0), hop(0, 0) };
    appendAttribute(bytes, RTA_MULTIPATH, hops, sizeof hops);
    const auto routes = parse(bytes);
    QCOMPARE(routes.size(), std::size_t(2));
    QCOMPARE(routes[0].index, 8);
    QCOMPARE(routes[1].index, 9);
}

void tst_RouteMessage::hostileHopsAreRefused()
{
    for (const int length : { 0, 1, 7, 9, 0xffff }) {
        Bytes bytes = routeBytes();
        rtnexthop only = hop(7, RTNH_F_DEAD);
        only.rtnh_len = static_cast<unsigned short>(length);
        appendAttribute(bytes, RTA_MULTIPATH, &only, sizeof only);
        QVERIFY(parse(bytes).empty());
    }
    Bytes bytes = routeBytes();
    appendAttribute(bytes, RTA_MULTIPATH, "abc", 3);
    QVERIFY(parse(bytes).empty());
    Bytes shortLink = routeBytes();
    appendAttribute(shortLink, RTA_OIF, "ab", 2);
    QVERIFY(parse(shortLink).empty());
}

void tst_RouteMessage::cutMessagesAreRefused()
{
    Bytes whole = routeBytes();
    appendNumber(whole, RTA_OIF, 5);
    for (std::size_t size = 0; size < whole.size(); ++size) {
        Bytes cut = firstBytes(whole, size);
        QVERIFY(parse(cut).empty());
        if (size >= sizeof(nlmsghdr)) {
            overwrite(cut, 0, static_cast<unsigned>(size));
            QVERIFY(parse(cut).empty());
        }
    }
    QCOMPARE(parse(whole).size(), std::size_t(1));
}

void tst_RouteMessage::theOrderOfPreference()
{
    const DefaultRoute ipv4 { AF_INET, 1, 600 };
    const DefaultRoute better { AF_INET, 2, 100 };
    const DefaultRoute ipv6 { AF_INET6, 3, 1 };
    QVERIFY(velq::isPreferred(better, ipv4));
    QVERIFY(!velq::isPreferred(ipv4, better));
    QVERIFY(velq::isPreferred(ipv4, ipv6));
    QVERIFY(!velq::isPreferred(ipv6, ipv4));
    QVERIFY(!velq::isPreferred(ipv4, ipv4)); // of equals the first stays
}

void tst_RouteMessage::changesOfDefaultRoutes_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("length");
    QTest::addColumn<bool>("isChange");
    QTest::newRow("new") << int(RTM_NEWROUTE) << 0 << true;
    QTest::newRow("deleted") << int(RTM_DELROUTE) << 0 << true;
    QTest::newRow("to a network") << int(RTM_NEWROUTE) << 24 << false;
    QTest::newRow("no route") << int(RTM_NEWRULE) << 0 << false;
}

void tst_RouteMessage::changesOfDefaultRoutes()
{
    QFETCH(int, type);
    QFETCH(int, length);
    Bytes bytes = routeBytes();
    overwrite(bytes, offsetof(nlmsghdr, nlmsg_type), static_cast<unsigned short>(type));
    overwrite(bytes, kBody + offsetof(rtmsg, rtm_dst_len), static_cast<unsigned char>(length));
    QTEST(velq::isDefaultRouteChange(bytes.data(), bytes.size()), "isChange");
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        const Bytes cut = firstBytes(bytes, size);
        QVERIFY(!velq::isDefaultRouteChange(cut.data(), cut.size()));
    }
}

void tst_RouteMessage::lengthsBeyondEveryBufferAreRefused()
{
    Bytes bytes = routeBytes();
    appendNumber(bytes, RTA_OIF, 5);
    for (const unsigned length : { 0x7fffffffU, 0x80000010U, 0xffffffffU }) {
        overwrite(bytes, 0, length);
        QVERIFY(parse(bytes).empty());
        QVERIFY(!velq::isDefaultRouteChange(bytes.data(), bytes.size()));
    }
}

QTEST_GUILESS_MAIN(tst_RouteMessage)
#include "tst_routemessage.moc"
