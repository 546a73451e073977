#include "modem/BusReplies.h"

#include <QtTest>

#include "BusMessages.h"

using namespace velq;

//! Reading of messages, right ones and others.
class tst_BusReplies : public QObject
{
    Q_OBJECT
private slots:
    void wantedPropertiesAreRead();
    void othersAreSkipped();
    void wrongTypesCountAsNothing();
    void numbersOfAllKindsAreRead_data();
    void numbersOfAllKindsAreRead();
    void onlyNetworkPortsAreKept();
    void figuresOfABearer();
    void figuresOfAWrongKindAreZero();
    void longTextsAndListsAreCut();
    void changesSayWhatIsToBeAskedFor();
    void modemsAreListed();
    void modemsComeAndGo();
    void namesHaveOwners();
    void otherMessagesAreRefused_data();
    void otherMessagesAreRefused();
};

namespace {

//! What sd_bus_message_append() makes of \a contents.
template <typename... Values>
BusMessage message(const char *contents, Values... values)
{
    BusMessage made = newBusMessage();
    if (sd_bus_message_append(made.get(), contents, values...) < 0)
        qFatal("the test's message is wrong");
    finish(made.get());
    return made;
}

constexpr const char *kModemName = "org.freedesktop.ModemManager1.Modem";

} // namespace

void tst_BusReplies::wantedPropertiesAreRead()
{
    const BusMessage reply = message("a{sv}", 4, "Model", "s", "M1", "Sim", "o", "/sim", "State",
                                     "i", 11, "Bearers", "ao", 2, "/a", "/b");
    const auto properties = readProperties(reply.get());
    QVERIFY(properties);
    QCOMPARE(textOf(*properties, "Model"), std::string("M1"));
    QCOMPARE(textOf(*properties, "Sim"), std::string("/sim"));
    QCOMPARE(numberOf(*properties, "State"), std::uint64_t(11));
    QCOMPARE(listOf(*properties, "Bearers"), (std::vector<std::string> { "/a", "/b" }));
    QVERIFY(!statsOf(*properties));
}

void tst_BusReplies::othersAreSkipped()
{
    const BusMessage reply = message("a{sv}", 3, "SignalQuality", "(ub)", 80U, 1, "UnlockRetries",
                                     "a{uu}", 1, 2U, 3U, "Model", "s", "M1");
    const auto properties = readProperties(reply.get());
    QVERIFY(properties);
    QCOMPARE(properties->size(), std::size_t(1));
    QCOMPARE(textOf(*properties, "Model"), std::string("M1"));
}

void tst_BusReplies::wrongTypesCountAsNothing()
{
    const BusMessage reply
        = message("a{sv}", 5, "Model", "u", 5U, "State", "s", "11", "Ports", "as", 1, "wwan0",
                  "Bearers", "(so)", "x", "/y", "Sim", "v", "s", "/sim");
    const auto properties = readProperties(reply.get());
    QVERIFY(properties);
    QCOMPARE(textOf(*properties, "Model"), std::string());
    QCOMPARE(numberOf(*properties, "State"), std::uint64_t(0));
    QVERIFY(listOf(*properties, "Ports").empty());
    QVERIFY(listOf(*properties, "Bearers").empty());
    QCOMPARE(textOf(*properties, "Sim"), std::string());
}

void tst_BusReplies::numbersOfAllKindsAreRead_data()
{
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<qint64>("sent");
    QTest::addColumn<quint64>("read");
    QTest::newRow("unsigned") << QByteArray("u") << qint64(4000000000) << quint64(4000000000);
    QTest::newRow("signed") << QByteArray("i") << qint64(7) << quint64(7);
    QTest::newRow("below zero") << QByteArray("i") << qint64(-1) << quint64(0);
    QTest::newRow("large") << QByteArray("t") << qint64(-1) << ~quint64(0);
    QTest::newRow("large signed") << QByteArray("x") << qint64(1) << quint64(1);
    QTest::newRow("large, below zero") << QByteArray("x") << qint64(-1) << quint64(0);
    QTest::newRow("true") << QByteArray("b") << qint64(1) << quint64(1);
    QTest::newRow("false") << QByteArray("b") << qint64(0) << quint64(0);
    QTest::newRow("small kinds are not used") << QByteArray("y") << qint64(7) << quint64(0);
}

void tst_BusReplies::numbersOfAllKindsAreRead()
{
    QFETCH(QByteArray, type);
    QFETCH(qint64, sent);
    const bool isLong = type == "t" || type == "x";
    const BusMessage reply = isLong
        ? message("a{sv}", 1, "State", type.constData(), sent)
        : message("a{sv}", 1, "State", type.constData(), int(quint32(sent)));
    const auto properties = readProperties(reply.get());
    QVERIFY(properties);
    QTEST(quint64(numberOf(*properties, "State")), "read");
}

void tst_BusReplies::onlyNetworkPortsAreKept()
{
    const BusMessage reply = message("a{sv}", 1, "Ports", "a(su)", 4, "ttyUSB2", 3U, "wwan0", 2U,
                                     "../x", 2U, "wwan1", 2U);
    const auto properties = readProperties(reply.get());
    QVERIFY(properties);
    QCOMPARE(listOf(*properties, "Ports"), (std::vector<std::string> { "wwan0", "wwan1" }));
}

void tst_BusReplies::figuresOfABearer()
{
    const quint64 received = 5000000000;
    const BusMessage reply
        = message("a{sv}", 1, "Stats", "a{sv}", 4, "rx-bytes", "t", received, "tx-bytes", "t",
                  quint64(7), "attempts", "u", 1U, "duration", "u", 42U);
    const auto properties = readProperties(reply.get());
    QVERIFY(properties);
    QVERIFY(statsOf(*properties) == (TrafficStats { received, 7, 42 }));
    const BusMessage nothing = message("a{sv}", 1, "Stats", "a{sv}", 0);
    QVERIFY(!statsOf(readProperties(nothing.get()).value()));
}

void tst_BusReplies::figuresOfAWrongKindAreZero()
{
    const BusMessage reply
        = message("a{sv}", 1, "Stats", "a{sv}", 3, "rx-bytes", "s", "many", "tx-bytes", "t",
                  quint64(7), "duration", "a{sv}", 1, "duration", "u", 9U);
    const auto properties = readProperties(reply.get());
    QVERIFY(properties);
    QVERIFY(statsOf(*properties) == (TrafficStats { 0, 7, 0 }));
}

void tst_BusReplies::longTextsAndListsAreCut()
{
    const std::string fits(kTextLimit, 'x');
    const std::string longer(kTextLimit + 1, 'x');
    BusMessage reply
        = message("a{sv}", 2, "Model", "s", fits.c_str(), "OperatorName", "s", longer.c_str());
    const auto texts = readProperties(reply.get());
    QVERIFY(texts);
    QCOMPARE(textOf(*texts, "Model"), fits);
    QCOMPARE(textOf(*texts, "OperatorName"), std::string());

    BusMessage list = newBusMessage();
    QVERIFY(sd_bus_message_open_container(list.get(), 'a', "{oa{sa{sv}}}") >= 0);
    for (std::size_t i = 0; i < kListLimit + 5; ++i)
        QVERIFY(sd_bus_message_append(list.get(), "{oa{sa{sv}}}", "/m", 1, kModemName, 0) >= 0);
    QVERIFY(sd_bus_message_close_container(list.get()) >= 0);
    finish(list.get());
    QCOMPARE(readManaged(list.get(), kModemName).value().size(), kListLimit);
}

void tst_BusReplies::changesSayWhatIsToBeAskedFor()
{
    const BusMessage told = message("sa{sv}as", "a.b", 1, "State", "i", 8, 1, "SignalQuality");
    const auto change = readChange(told.get());
    QVERIFY(change);
    QCOMPARE(change->interface, std::string("a.b"));
    QCOMPARE(numberOf(change->values, "State"), std::uint64_t(8));
    QVERIFY(!change->incomplete);
    const BusMessage untold = message("sa{sv}as", "a.b", 0, 2, "SignalQuality", "State");
    QVERIFY(readChange(untold.get()).value().incomplete);
}

void tst_BusReplies::modemsAreListed()
{
    const BusMessage reply = message("a{oa{sa{sv}}}", 2, "/0", 2, "a.b", 1, "X", "s", "y",
                                     kModemName, 1, "State", "i", 8, "/1", 1, "a.b", 0);
    QCOMPARE(readManaged(reply.get(), kModemName).value(), std::vector<std::string> { "/0" });
}

void tst_BusReplies::modemsComeAndGo()
{
    const BusMessage added = message("oa{sa{sv}}", "/0", 1, kModemName, 1, "State", "i", 8);
    QCOMPARE(readAdded(added.get(), kModemName).value(), std::string("/0"));
    const BusMessage other = message("oa{sa{sv}}", "/0", 1, "a.b", 0);
    QVERIFY(!readAdded(other.get(), kModemName));
    const BusMessage removed = message("oas", "/0", 2, "a.b", kModemName);
    QCOMPARE(readRemoved(removed.get(), kModemName).value(), std::string("/0"));
    const BusMessage part = message("oas", "/0", 1, "a.b");
    QVERIFY(!readRemoved(part.get(), kModemName));
}

void tst_BusReplies::namesHaveOwners()
{
    const BusMessage change = message("sss", "a.b", ":1.1", ":1.2");
    QCOMPARE(readOwnerChange(change.get()).value().name, std::string("a.b"));
    const BusMessage again = message("sss", "a.b", ":1.1", "");
    QCOMPARE(readOwnerChange(again.get()).value().owner, std::string());
    const BusMessage owner = message("s", ":1.2");
    QCOMPARE(readName(owner.get()).value(), std::string(":1.2"));
}

void tst_BusReplies::otherMessagesAreRefused_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("nothing") << 0;
    QTest::newRow("numbers") << 1;
    QTest::newRow("a dictionary of texts") << 2;
    QTest::newRow("a variant") << 3;
}

void tst_BusReplies::otherMessagesAreRefused()
{
    QFETCH(int, kind);
    const auto make = [kind] {
        switch (kind) {
        case 1:
            return message("uu", 1U, 2U);
        case 2:
            return message("a{ss}", 1, "State", "11");
        case 3:
            return message("v", "s", "x");
        default:
            return message("");
        }
    };
    QVERIFY(!readProperties(make().get()));
    QVERIFY(!readChange(make().get()));
    QVERIFY(!readManaged(make().get(), kModemName));
    QVERIFY(!readAdded(make().get(), kModemName));
    QVERIFY(!readRemoved(make().get(), kModemName));
    QVERIFY(!readOwnerChange(make().get()));
    QVERIFY(!readName(make().get()));
}

QTEST_GUILESS_MAIN(tst_BusReplies)
#include "tst_busreplies.moc"
