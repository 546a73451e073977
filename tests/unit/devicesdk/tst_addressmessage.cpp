#include "counters/AddressMessage.h"

#include <linux/if_addr.h>

#include <QtTest>

#include "NetlinkBytes.h"

class tst_AddressMessage : public QObject
{
    Q_OBJECT
private slots:
    void links_data();
    void links();
    void aCapturedAddress();
    void cutMessagesAreRefused();
    void lengthsBeyondEveryBufferAreRefused();
};

namespace {

Bytes addressBytes(int type, int index, int scope)
{
    Bytes bytes(sizeof(nlmsghdr) + sizeof(ifaddrmsg));
    nlmsghdr header {};
    header.nlmsg_len = static_cast<unsigned>(bytes.size());
    header.nlmsg_type = static_cast<unsigned short>(type);
    ifaddrmsg address {};
    address.ifa_family = AF_INET;
    address.ifa_scope = static_cast<unsigned char>(scope);
    address.ifa_index = static_cast<unsigned>(index);
    overwrite(bytes, 0, header);
    overwrite(bytes, sizeof header, address);
    return bytes;
}

} // namespace

void tst_AddressMessage::links_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("scope");
    QTest::addColumn<int>("link");
    QTest::newRow("a new address") << int(RTM_NEWADDR) << int(RT_SCOPE_UNIVERSE) << 7;
    QTest::newRow("a new address of a site") << int(RTM_NEWADDR) << int(RT_SCOPE_SITE) << 7;
    QTest::newRow("the link's own address") << int(RTM_NEWADDR) << int(RT_SCOPE_LINK) << 0;
    QTest::newRow("this host's") << int(RTM_NEWADDR) << int(RT_SCOPE_HOST) << 0;
    QTest::newRow("an address that goes") << int(RTM_DELADDR) << int(RT_SCOPE_UNIVERSE) << 0;
    QTest::newRow("a link") << int(RTM_NEWLINK) << int(RT_SCOPE_UNIVERSE) << 0;
}

void tst_AddressMessage::links()
{
    QFETCH(int, type);
    QFETCH(int, scope);
    const Bytes bytes = addressBytes(type, 7, scope);
    QTEST(velq::linkOfNewAddress(bytes.data(), bytes.size()), "link");
}

void tst_AddressMessage::aCapturedAddress()
{
    const Bytes bytes = captured("address.bin");
    QCOMPARE(velq::linkOfNewAddress(bytes.data(), bytes.size()), 20);
}

void tst_AddressMessage::cutMessagesAreRefused()
{
    const Bytes whole = addressBytes(RTM_NEWADDR, 7, RT_SCOPE_UNIVERSE);
    for (std::size_t size = 0; size < whole.size(); ++size) {
        Bytes cut = firstBytes(whole, size);
        QCOMPARE(velq::linkOfNewAddress(cut.data(), cut.size()), 0);
        if (size < sizeof(nlmsghdr))
            continue;
        overwrite(cut, 0, static_cast<unsigned>(size)); // the header admits it
        QCOMPARE(velq::linkOfNewAddress(cut.data(), cut.size()), 0);
    }
    QCOMPARE(velq::linkOfNewAddress(nullptr, 0), 0);
}

void tst_AddressMessage::lengthsBeyondEveryBufferAreRefused()
{
    Bytes bytes = captured("address.bin");
    for (const unsigned length : { 0x7fffffffU, 0x80000010U, 0xffffffffU }) {
        overwrite(bytes, 0, length);
        QCOMPARE(velq::linkOfNewAddress(bytes.data(), bytes.size()), 0);
    }
}

QTEST_GUILESS_MAIN(tst_AddressMessage)
#include "tst_addressmessage.moc"
