#include "counters/LinkMessage.h"

#include <QtTest>

#include <linux/if.h>
#include <linux/if_link.h>

#include <climits>

#include "NetlinkBytes.h"

using velq::parseLinkMessage;

class tst_LinkMessage : public QObject
{
    Q_OBJECT
private slots:
    void aCapturedLinkThatIsUp();
    void aCapturedLinkWithoutCarrierIsNotUp();
    void aCapturedDeletion();
    void capturedKindsAndNeighbours_data();
    void capturedKindsAndNeighbours();
    void aClosingLinkHasItsLastCounters();
    void leavingABridgeIsNoDeletion();
    void flagsThatMeanUp_data();
    void flagsThatMeanUp();
    void aMessageCutAtAnyByteIsRefused();
    void aMessageThatClaimsToEndAnywhereNeverReadsOn();
    void hostileAttributeLengths_data();
    void hostileAttributeLengths();
    void everyByteFlippedIsSurvived();
    void countersTooShortAreNoCounters();
    void countersAreReadInFullWidth();
    void aNameWithoutItsEndIsNotReadBeyond();
    void hardwareAddresses_data();
    void hardwareAddresses();
    void aHostileKindIsRefused();
    void numbersTooShortAreNone();
    void aNoteOfADriverHasNoCounters();
    void anIndexThatCannotBeIsRefused();
    void otherMessagesAreRefused();
    void lengthsBeyondEveryBufferAreRefused();
};

namespace {

auto parse(const Bytes &bytes)
{
    return parseLinkMessage(bytes.data(), bytes.size());
}

constexpr std::size_t kFlags = sizeof(nlmsghdr) + offsetof(ifinfomsg, ifi_flags);

std::size_t statisticsOf(const Bytes &bytes)
{
    return attributeOffset(bytes, sizeof(ifinfomsg), IFLA_STATS64);
}

} // namespace

void tst_LinkMessage::aCapturedLinkThatIsUp()
{
    const auto link = parse(captured("link-up.bin"));
    QVERIFY(link);
    QCOMPARE(link->deleted, false);
    QCOMPARE(link->index, 3);
    QCOMPARE(link->name, std::string("va"));
    QCOMPARE(link->up, true);
    QCOMPARE(link->hasCounters, true);
    QCOMPARE(link->download, quint64(266));
    QCOMPARE(link->upload, quint64(266));
}

void tst_LinkMessage::aCapturedLinkWithoutCarrierIsNotUp()
{
    const auto link = parse(captured("link-no-carrier.bin"));
    QVERIFY(link);
    QCOMPARE(link->name, std::string("va"));
    QCOMPARE(link->up, false);
    QVERIFY(link->hasCounters);
}

void tst_LinkMessage::aCapturedDeletion()
{
    const auto link = parse(captured("link-deleted.bin"));
    QVERIFY(link);
    QCOMPARE(link->deleted, true);
    QCOMPARE(link->index, 3);
}

void tst_LinkMessage::capturedKindsAndNeighbours_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("kind");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("lower");
    QTest::addColumn<int>("master");
    QTest::newRow("a port of a bridge, its peer elsewhere") << "link-port.bin"
                                                            << "va"
                                                            << "veth" << 20 << 0 << 3;
    QTest::newRow("a tunnel") << "link-tun.bin"
                              << "ppp7"
                              << "tun" << 2 << 0 << 0;
    QTest::newRow("a link over a bridge") << "link-over-bridge.bin"
                                          << "mac0"
                                          << "macvlan" << 21 << 3 << 0;
}

void tst_LinkMessage::capturedKindsAndNeighbours()
{
    QFETCH(QString, file);
    const auto link = parse(captured(file.toLatin1().constData()));
    QVERIFY(link);
    QTEST(QString::fromStdString(link->name), "name");
    QTEST(QString::fromStdString(link->kind), "kind");
    QTEST(link->index, "index");
    QTEST(link->lowerIndex, "lower");
    QTEST(link->masterIndex, "master");
    QCOMPARE(link->loopback, false);
    QCOMPARE(link->hardwareAddress, std::string()); // none of these has one for ever
    QVERIFY(link->hasCounters);
}

void tst_LinkMessage::aClosingLinkHasItsLastCounters()
{
    const auto link = parse(captured("link-closing.bin"));
    QVERIFY(link);
    QCOMPARE(link->deleted, false);
    QCOMPARE(link->up, false);
    QCOMPARE(link->upload, quint64(154));
    QCOMPARE(link->download, quint64(0)); // its peer's upload, and there is no peer any more
}

void tst_LinkMessage::leavingABridgeIsNoDeletion()
{
    const Bytes bytes = captured("link-left-bridge.bin");
    QVERIFY(!bytes.empty());
    QVERIFY(!parse(bytes));
}

void tst_LinkMessage::flagsThatMeanUp_data()
{
    QTest::addColumn<unsigned>("flags");
    QTest::addColumn<bool>("up");
    const unsigned all = IFF_UP | IFF_RUNNING | IFF_LOWER_UP;
    QTest::newRow("up, running, carrier") << all << true;
    QTest::newRow("others change nothing") << (all | IFF_NOARP | IFF_POINTOPOINT) << true;
    QTest::newRow("set down") << unsigned(IFF_RUNNING | IFF_LOWER_UP) << false;
    QTest::newRow("no carrier") << unsigned(IFF_UP | IFF_RUNNING) << false;
    QTest::newRow("not operational, as before authentication")
        << unsigned(IFF_UP | IFF_LOWER_UP) << false;
    QTest::newRow("nothing") << 0U << false;
}

void tst_LinkMessage::flagsThatMeanUp()
{
    QFETCH(unsigned, flags);
    QFETCH(bool, up);
    Bytes bytes = captured("link-up.bin");
    overwrite(bytes, kFlags, flags);
    const auto link = parse(bytes);
    QVERIFY(link);
    QCOMPARE(link->up, up);
}

void tst_LinkMessage::aMessageCutAtAnyByteIsRefused()
{
    const Bytes whole = captured("link-up.bin");
    QVERIFY(whole.size() > sizeof(nlmsghdr));
    for (std::size_t size = 0; size < whole.size(); ++size)
        QVERIFY2(!parse(firstBytes(whole, size)), qPrintable(QString::number(size)));
}

void tst_LinkMessage::aMessageThatClaimsToEndAnywhereNeverReadsOn()
{
    const Bytes whole = captured("link-up.bin");
    const std::size_t counters = statisticsOf(whole);
    QVERIFY(counters > 0);
    int refused = 0;
    for (std::size_t size = sizeof(nlmsghdr); size < whole.size(); ++size) {
        Bytes cut = firstBytes(whole, size);
        overwrite(cut, 0, static_cast<unsigned>(size));
        const auto link = parse(cut);
        refused += link ? 0 : 1;
        if (size <= counters)
            QVERIFY(!link || !link->hasCounters);
    }
    QVERIFY2(refused > int(whole.size() / 2), "most cuts fall into an attribute");
}

void tst_LinkMessage::hostileAttributeLengths_data()
{
    QTest::addColumn<int>("length");
    QTest::newRow("zero, which would never advance") << 0;
    QTest::newRow("shorter than its header") << 3;
    QTest::newRow("beyond the end") << 5000;
    QTest::newRow("the largest") << 0xffff;
}

void tst_LinkMessage::hostileAttributeLengths()
{
    QFETCH(int, length);
    for (const unsigned short type : { IFLA_IFNAME, IFLA_STATS64 }) {
        Bytes bytes = captured("link-up.bin");
        const std::size_t offset = attributeOffset(bytes, sizeof(ifinfomsg), type);
        QVERIFY(offset > 0);
        overwrite(bytes, offset, static_cast<unsigned short>(length));
        QVERIFY(!parse(bytes));
    }
}

void tst_LinkMessage::everyByteFlippedIsSurvived()
{
    const Bytes whole = captured("link-up.bin");
    int accepted = 0;
    for (std::size_t i = 0; i < whole.size(); ++i) {
        Bytes bytes = whole;
        bytes[i] = static_cast<char>(~bytes[i]);
        const auto link = parse(bytes);
        accepted += link ? 1 : 0;
        if (link)
            QVERIFY(link->name.size() < whole.size());
    }
    QVERIFY(accepted > 0);
    QVERIFY(accepted < int(whole.size()));
}

void tst_LinkMessage::countersTooShortAreNoCounters()
{
    const Bytes whole = captured("link-up.bin");
    for (const std::size_t size : { std::size_t(0), std::size_t(31), std::size_t(32) }) {
        Bytes bytes = firstBytes(whole, sizeof(nlmsghdr) + sizeof(ifinfomsg));
        const Bytes payload(size, 1);
        appendAttribute(bytes, IFLA_STATS64, payload.data(), payload.size());
        const auto link = parse(bytes);
        QVERIFY(link);
        QCOMPARE(link->hasCounters, size >= 32); // up to the end of the fourth counter
    }
}

void tst_LinkMessage::countersAreReadInFullWidth()
{
    Bytes bytes = captured("link-up.bin");
    const std::size_t payload = statisticsOf(bytes) + sizeof(rtattr);
    overwrite(bytes, payload + offsetof(rtnl_link_stats64, rx_bytes), quint64(0xfedcba9876543210));
    overwrite(bytes, payload + offsetof(rtnl_link_stats64, tx_bytes), quint64(1) << 40);
    const auto link = parse(bytes);
    QVERIFY(link);
    QCOMPARE(link->download, quint64(0xfedcba9876543210));
    QCOMPARE(link->upload, quint64(1) << 40);
}

void tst_LinkMessage::aNameWithoutItsEndIsNotReadBeyond()
{
    Bytes bytes = firstBytes(captured("link-up.bin"), sizeof(nlmsghdr) + sizeof(ifinfomsg));
    appendAttribute(bytes, IFLA_IFNAME, "wwan", 4); // no NUL, and it fills the message to its end
    const auto link = parse(bytes);
    QVERIFY(link);
    QCOMPARE(link->name, std::string("wwan"));
}

void tst_LinkMessage::hardwareAddresses_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    QTest::newRow("Ethernet") << QByteArray("\x02\x00\x5e\x10\xff\x01", 6) << "02:00:5e:10:ff:01";
    QTest::newRow("zeros") << QByteArray(6, 0) << "";
    QTest::newRow("empty") << QByteArray() << "";
    QTest::newRow("the longest") << QByteArray(32, 1) << QString("01:").repeated(32).chopped(1);
    QTest::newRow("longer than any") << QByteArray(33, 1) << "";
}

void tst_LinkMessage::hardwareAddresses()
{
    QFETCH(QByteArray, bytes);
    Bytes message = firstBytes(captured("link-up.bin"), sizeof(nlmsghdr) + sizeof(ifinfomsg));
    appendAttribute(message, IFLA_PERM_ADDRESS, bytes.constData(), std::size_t(bytes.size()));
    const auto link = parse(message);
    QVERIFY(link);
    QTEST(QString::fromStdString(link->hardwareAddress), "text");
}

void tst_LinkMessage::aHostileKindIsRefused()
{
    const Bytes whole = captured("link-port.bin");
    const std::size_t outer = attributeOffset(whole, sizeof(ifinfomsg), IFLA_LINKINFO);
    QVERIFY(outer > 0);
    for (const int length : { 0, 3, 2000, 0xffff }) {
        Bytes bytes = whole;
        overwrite(bytes, outer + sizeof(rtattr), static_cast<unsigned short>(length));
        QVERIFY(!parse(bytes));
    }
}

void tst_LinkMessage::numbersTooShortAreNone()
{
    Bytes bytes = firstBytes(captured("link-up.bin"), sizeof(nlmsghdr) + sizeof(ifinfomsg));
    appendAttribute(bytes, IFLA_LINK, "abc", 3);
    const int negative = -5;
    appendAttribute(bytes, IFLA_MASTER, &negative, sizeof negative);
    const auto link = parse(bytes);
    QVERIFY(link);
    QCOMPARE(link->lowerIndex, 0);
    QCOMPARE(link->masterIndex, 0);
}

void tst_LinkMessage::aNoteOfADriverHasNoCounters()
{
    Bytes bytes = firstBytes(captured("link-up.bin"), sizeof(nlmsghdr) + sizeof(ifinfomsg));
    appendAttribute(bytes, IFLA_IFNAME, "wlan0", 6);
    appendAttribute(bytes, IFLA_WIRELESS, "scan", 4);
    const auto link = parse(bytes);
    QVERIFY(link);
    QCOMPARE(link->up, true);
    QCOMPARE(link->hasCounters, false);
}

void tst_LinkMessage::anIndexThatCannotBeIsRefused()
{
    for (const int index : { 0, -1, INT_MIN }) {
        Bytes bytes = captured("link-up.bin");
        overwrite(bytes, sizeof(nlmsghdr) + offsetof(ifinfomsg, ifi_index), index);
        QVERIFY(!parse(bytes));
    }
}

void tst_LinkMessage::otherMessagesAreRefused()
{
    QVERIFY(!parseLinkMessage(nullptr, 100));
    for (const int type : { NLMSG_DONE, NLMSG_ERROR, int(RTM_GETLINK), int(RTM_NEWROUTE) }) {
        Bytes bytes = captured("link-up.bin");
        overwrite(bytes, offsetof(nlmsghdr, nlmsg_type), static_cast<unsigned short>(type));
        QVERIFY(!parse(bytes));
    }
}

void tst_LinkMessage::lengthsBeyondEveryBufferAreRefused()
{
    Bytes bytes = captured("link-up.bin");
    for (const unsigned length : { 0x7fffffffU, 0x80000010U, 0xffffffffU }) {
        overwrite(bytes, 0, length);
        QVERIFY(!parse(bytes));
    }
}

QTEST_GUILESS_MAIN(tst_LinkMessage)
#include "tst_linkmessage.moc"
