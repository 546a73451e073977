#include "counters/StatsMessage.h"

#include <QtTest>

#include <linux/if_link.h>

#include <array>

#include "NetlinkBytes.h"

using velq::parseStatsMessage;

class tst_StatsMessage : public QObject
{
    Q_OBJECT
private slots:
    void capturedCountersOfAllLinks();
    void countersAreReadInFullWidth();
    void aMessageCutAtAnyByteIsRefused();
    void hostileLengthsAreRefused();
    void countersTooShortAreRefused();
    void otherMessagesAreRefused();
    void lengthsBeyondEveryBufferAreRefused();
};

namespace {

auto parse(const Bytes &bytes)
{
    return parseStatsMessage(bytes.data(), bytes.size());
}

std::vector<Bytes> capturedMessages()
{
    const Bytes all = captured("counters.bin");
    std::vector<Bytes> messages;
    for (std::size_t offset = 0; offset < all.size();) {
        nlmsghdr header {};
        std::memcpy(&header, all.data() + offset, sizeof header);
        const auto begin = all.begin() + static_cast<std::ptrdiff_t>(offset);
        messages.emplace_back(begin, begin + header.nlmsg_len);
        offset += NLMSG_ALIGN(header.nlmsg_len);
    }
    return messages;
}

Bytes oneMessage()
{
    return capturedMessages().at(3);
}

constexpr std::size_t kPayload = sizeof(nlmsghdr) + sizeof(if_stats_msg) + sizeof(rtattr);

} // namespace

void tst_StatsMessage::capturedCountersOfAllLinks()
{
    using Row = std::array<quint64, 3>; // index, download, upload
    std::vector<Row> rows;
    for (const Bytes &bytes : capturedMessages()) {
        const auto stats = parse(bytes);
        QVERIFY(stats);
        rows.push_back({ quint64(stats->index), stats->download, stats->upload });
    }
    const std::vector<Row> expected
        = { { 1, 0, 0 }, { 2, 0, 0 }, { 3, 224, 108 }, { 20, 266, 154 }, { 21, 0, 0 } };
    QVERIFY(rows == expected);
}

void tst_StatsMessage::countersAreReadInFullWidth()
{
    Bytes bytes = oneMessage();
    overwrite(bytes, kPayload + offsetof(rtnl_link_stats64, rx_bytes), quint64(0xfedcba9876543210));
    overwrite(bytes, kPayload + offsetof(rtnl_link_stats64, tx_bytes), quint64(1) << 40);
    const auto stats = parse(bytes);
    QVERIFY(stats);
    QCOMPARE(stats->index, 20);
    QCOMPARE(stats->download, quint64(0xfedcba9876543210));
    QCOMPARE(stats->upload, quint64(1) << 40);
}

void tst_StatsMessage::aMessageCutAtAnyByteIsRefused()
{
    const Bytes whole = oneMessage();
    for (std::size_t size = 0; size < whole.size(); ++size) {
        Bytes cut = firstBytes(whole, size);
        QVERIFY(!parse(cut));
        if (size < sizeof(nlmsghdr))
            continue;
        overwrite(cut, 0, static_cast<unsigned>(size)); // the header admits it
        QVERIFY(!parse(cut));
    }
    QVERIFY(parse(whole));
}

void tst_StatsMessage::hostileLengthsAreRefused()
{
    for (const int length : { 0, 3, 5000, 0xffff }) {
        Bytes bytes = oneMessage();
        overwrite(bytes, kPayload - sizeof(rtattr), static_cast<unsigned short>(length));
        QVERIFY(!parse(bytes));
    }
}

void tst_StatsMessage::countersTooShortAreRefused()
{
    for (const std::size_t size : { std::size_t(0), std::size_t(31), std::size_t(32) }) {
        Bytes bytes = firstBytes(oneMessage(), sizeof(nlmsghdr) + sizeof(if_stats_msg));
        const Bytes payload(size, 1);
        appendAttribute(bytes, IFLA_STATS_LINK_64, payload.data(), payload.size());
        QCOMPARE(parse(bytes).has_value(), size >= 32); // up to the end of the fourth counter
    }
}

void tst_StatsMessage::otherMessagesAreRefused()
{
    QVERIFY(!parseStatsMessage(nullptr, 100));
    for (const int type : { NLMSG_DONE, NLMSG_ERROR, int(RTM_GETSTATS), int(RTM_NEWLINK) }) {
        Bytes bytes = oneMessage();
        overwrite(bytes, offsetof(nlmsghdr, nlmsg_type), static_cast<unsigned short>(type));
        QVERIFY(!parse(bytes));
    }
    for (const int index : { 0, -1 }) {
        Bytes bytes = oneMessage();
        overwrite(bytes, sizeof(nlmsghdr) + offsetof(if_stats_msg, ifindex), index);
        QVERIFY(!parse(bytes));
    }
}

void tst_StatsMessage::lengthsBeyondEveryBufferAreRefused()
{
    Bytes bytes = oneMessage();
    for (const unsigned length : { 0x7fffffffU, 0x80000010U, 0xffffffffU }) {
        overwrite(bytes, 0, length);
        QVERIFY(!parse(bytes));
    }
}

QTEST_GUILESS_MAIN(tst_StatsMessage)
#include "tst_statsmessage.moc"
