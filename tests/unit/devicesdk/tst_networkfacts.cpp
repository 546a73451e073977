#include "modem/NetworkFacts.h"

#include <QtTest>

using velq::ModemFacts;
using velq::NetworkFacts;

Q_DECLARE_METATYPE(NetworkFacts)

class tst_NetworkFacts : public QObject
{
    Q_OBJECT
private slots:
    void theConnectedModem_data();
    void theConnectedModem();
    void theModemOfAnInterface_data();
    void theModemOfAnInterface();
};

namespace {

ModemFacts modem(const char *path, bool connected, const char *interface,
                 const std::vector<std::string> &ports = {})
{
    ModemFacts facts;
    facts.path = path;
    facts.connected = connected;
    facts.interface = interface;
    facts.netPorts = ports;
    return facts;
}

NetworkFacts with(const std::vector<ModemFacts> &modems)
{
    NetworkFacts facts;
    facts.modems = modems;
    return facts;
}

QString pathOf(const ModemFacts *modem)
{
    return modem ? QString::fromStdString(modem->path) : QStringLiteral("none");
}

} // namespace

void tst_NetworkFacts::theConnectedModem_data()
{
    QTest::addColumn<NetworkFacts>("facts");
    QTest::addColumn<QString>("path");
    QTest::newRow("no modem") << NetworkFacts() << "none";
    QTest::newRow("none is connected") << with({ modem("/0", false, "") }) << "none";
    QTest::newRow("the second one is")
        << with({ modem("/0", false, ""), modem("/1", true, "wwan1") }) << "/1";
    QTest::newRow("the first of two")
        << with({ modem("/0", true, "wwan0"), modem("/1", true, "wwan1") }) << "/0";
    QTest::newRow("a known interface comes first")
        << with({ modem("/0", true, ""), modem("/1", true, "wwan1") }) << "/1";
    QTest::newRow("no interface is known") << with({ modem("/0", true, "") }) << "/0";
}

void tst_NetworkFacts::theConnectedModem()
{
    QFETCH(NetworkFacts, facts);
    QTEST(pathOf(velq::connectedModem(facts)), "path");
}

void tst_NetworkFacts::theModemOfAnInterface_data()
{
    QTest::addColumn<QString>("interface");
    QTest::addColumn<QString>("path");
    QTest::newRow("a bearer's") << "ppp0"
                                << "/0";
    QTest::newRow("a port's") << "wwan0"
                              << "/0";
    QTest::newRow("a port of the one, the bearer of the other") << "wwan1"
                                                                << "/1";
    QTest::newRow("nobody's") << "eth0"
                              << "none";
    QTest::newRow("no interface") << ""
                                  << "none";
}

void tst_NetworkFacts::theModemOfAnInterface()
{
    const NetworkFacts facts
        = with({ modem("/0", true, "ppp0", { "wwan0", "wwan1" }), modem("/1", true, "wwan1"),
                 modem("/2", false, "", { "usb0" }) });
    QFETCH(QString, interface);
    QTEST(pathOf(velq::modemOfInterface(facts, interface.toStdString())), "path");
}

QTEST_GUILESS_MAIN(tst_NetworkFacts)
#include "tst_networkfacts.moc"
