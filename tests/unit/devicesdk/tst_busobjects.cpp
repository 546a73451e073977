#include "modem/BusObjects.h"

#include <QtTest>

using namespace velq;

//! From the services' objects to facts, and which objects are followed.
class tst_BusObjects : public QObject
{
    Q_OBJECT
private slots:
    void aModemIsDescribedByItsObjects();
    void withoutObjectsThereAreNoFacts();
    void aSimThatHasNotAnsweredIsPending();
    void registrations_data();
    void registrations();
    void modemStates_data();
    void modemStates();
    void bearers_data();
    void bearers();
    void whatAModemNamesIsFollowed();
    void onlyConnectedBearersAge();
    void devicesAndThePrimaryInterface();
    void primaryInterfaces_data();
    void primaryInterfaces();
};

namespace {

const std::string kRoot = "/org/freedesktop/ModemManager1";
const std::string kModem = "/org/freedesktop/ModemManager1/Modem/0";
const std::string kService = "org.freedesktop.ModemManager1";
const std::string kManager = "org.freedesktop.NetworkManager";
const std::string kManagerPath = "/org/freedesktop/NetworkManager";

PropertyValue number(std::uint64_t value)
{
    return value;
}

PropertyValue list(const std::vector<std::string> &values)
{
    return values;
}

PropertyValue text(const char *value)
{
    return std::string(value);
}

ObjectTree modemTree()
{
    return {
        { { kRoot, kObjectManager }, { { kModems, list({ kModem }) } } },
        { { kModem, kModemInterface },
          { { "State", number(11) },
            { "Sim", text("/sim") },
            { "Bearers", list({ "/idle", "/bearer" }) },
            { "Ports", list({ "wwan0" }) },
            { "Model", text("M1") },
            { "DeviceIdentifier", text("d1") },
            { "EquipmentIdentifier", text("490") } } },
        { { kModem, kModemInterface + std::string(".Modem3gpp") },
          { { "RegistrationState", number(1) }, { "OperatorName", text("Net") } } },
        { { "/sim", kService + ".Sim" },
          { { "SimIdentifier", text("8900") }, { "Imsi", text("00101") } } },
        { { "/idle", kService + ".Bearer" }, { { "Connected", number(0) } } },
        { { "/bearer", kService + ".Bearer" },
          { { "Connected", number(1) },
            { "Interface", text("wwan0") },
            { "Stats", TrafficStats { 5, 6, 7 } } } },
    };
}

ObjectTree deviceTree()
{
    return {
        { { kManagerPath, kManager },
          { { "PrimaryConnection", text("/active") },
            { "Devices", list({ "/lo", "/modem", "/new" }) } } },
        { { "/active", kManager + ".Connection.Active" }, { { "Devices", list({ "/modem" }) } } },
        { { "/lo", kManager + ".Device" },
          { { "Interface", text("lo") },
            { "IpInterface", text("lo") },
            { "DeviceType", number(32) },
            { "State", number(10) } } },
        { { "/modem", kManager + ".Device" },
          { { "Interface", text("cdc-wdm0") },
            { "IpInterface", text("wwan0") },
            { "DeviceType", number(8) },
            { "State", number(100) } } },
    };
}

QStringList words(const std::vector<ObjectKey> &keys)
{
    QStringList result;
    for (const ObjectKey &key : keys)
        result << QString::fromStdString(key.first + ' ' + key.second).remove("org.freedesktop.");
    result.sort();
    return result;
}

} // namespace

void tst_BusObjects::aModemIsDescribedByItsObjects()
{
    const auto modems = modemFacts(modemTree());
    QCOMPARE(modems.size(), std::size_t(1));
    const ModemFacts &modem = modems.front();
    QCOMPARE(modem.path, kModem);
    QCOMPARE(modem.equipmentId, std::string("490"));
    QCOMPARE(modem.deviceId, std::string("d1"));
    QCOMPARE(modem.model, std::string("M1"));
    QCOMPARE(modem.simId, std::string("8900"));
    QCOMPARE(modem.imsi, std::string("00101"));
    QCOMPARE(modem.operatorName, std::string("Net"));
    QCOMPARE(modem.interface, std::string("wwan0"));
    QCOMPARE(modem.netPorts, std::vector<std::string> { "wwan0" });
    QVERIFY(modem.connected && modem.registered && !modem.roaming && modem.hasStats);
    QVERIFY(modem.placed && !modem.simPending);
    QCOMPARE(modem.bearerDownload, std::uint64_t(5));
    QCOMPARE(modem.bearerUpload, std::uint64_t(6));
    QCOMPARE(modem.bearerSeconds, std::uint32_t(7));
}

void tst_BusObjects::withoutObjectsThereAreNoFacts()
{
    QVERIFY(modemFacts({}).empty());
    QVERIFY(deviceFacts({}).empty());
    QVERIFY(primaryInterface({}).empty());
    ObjectTree tree = modemTree();
    tree.erase({ kModem, kModemInterface });
    QVERIFY(modemFacts(tree).empty()); // listed, but it has not answered
}

void tst_BusObjects::aSimThatHasNotAnsweredIsPending()
{
    ObjectTree tree = modemTree();
    tree.erase({ "/sim", kService + ".Sim" });
    QVERIFY(modemFacts(tree).front().simPending);
    tree[{ kModem, kModemInterface }]["Sim"] = text("/"); // there is none
    QVERIFY(!modemFacts(tree).front().simPending);
}

void tst_BusObjects::registrations_data()
{
    QTest::addColumn<unsigned>("number");
    QTest::addColumn<bool>("registered");
    QTest::addColumn<bool>("roaming");
    QTest::newRow("idle") << 0U << false << false;
    QTest::newRow("home") << 1U << true << false;
    QTest::newRow("searching") << 2U << false << false;
    QTest::newRow("denied") << 3U << false << false;
    QTest::newRow("unknown") << 4U << false << false;
    QTest::newRow("roaming") << 5U << true << true;
    QTest::newRow("home, messages only") << 6U << true << false;
    QTest::newRow("roaming, messages only") << 7U << true << true;
    QTest::newRow("emergencies only") << 8U << false << false;
    QTest::newRow("home, without calls") << 9U << true << false;
    QTest::newRow("roaming, without calls") << 10U << true << true;
    QTest::newRow("attached for nothing") << 11U << false << false;
}

void tst_BusObjects::registrations()
{
    QFETCH(unsigned, number);
    ObjectTree tree = modemTree();
    tree[{ kModem, kModemInterface + std::string(".Modem3gpp") }]["RegistrationState"]
        = std::uint64_t(number);
    const ModemFacts modem = modemFacts(tree).front();
    QTEST(modem.registered, "registered");
    QTEST(modem.roaming, "roaming");
    QTEST(modem.placed, "registered");
}

void tst_BusObjects::modemStates_data()
{
    QTest::addColumn<unsigned>("state");
    QTest::addColumn<bool>("connected");
    QTest::addColumn<bool>("registered"); // of a modem that has no other word for it
    QTest::newRow("unknown") << 0U << false << false;
    QTest::newRow("searching") << 7U << false << false;
    QTest::newRow("registered") << 8U << false << true;
    QTest::newRow("disconnecting") << 9U << false << true;
    QTest::newRow("connecting") << 10U << false << true;
    QTest::newRow("connected") << 11U << true << true;
    QTest::newRow("a number of the future") << 12U << false << false;
}

void tst_BusObjects::modemStates()
{
    QFETCH(unsigned, state);
    ObjectTree tree = modemTree();
    tree[{ kModem, kModemInterface }]["State"] = std::uint64_t(state);
    tree.erase({ kModem, kModemInterface + std::string(".Modem3gpp") });
    const ModemFacts modem = modemFacts(tree).front();
    QTEST(modem.connected, "connected");
    QTEST(modem.registered, "registered");
    QVERIFY(!modem.placed); // nobody says whether that is abroad
    QCOMPARE(modem.interface.empty(), !modem.connected);
    QCOMPARE(modem.hasStats, modem.connected);
}

void tst_BusObjects::bearers_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("interface");
    QTest::newRow("usual") << "wwan0"
                           << "wwan0";
    QTest::newRow("none") << ""
                          << "";
    QTest::newRow("no name for an interface") << "../../etc"
                                              << "";
    QTest::newRow("too long") << "wwan0123456789ab"
                              << "";
}

void tst_BusObjects::bearers()
{
    QFETCH(QString, name);
    ObjectTree tree = modemTree();
    tree[{ "/bearer", kService + ".Bearer" }]["Interface"] = name.toStdString();
    const ModemFacts modem = modemFacts(tree).front();
    QTEST(QString::fromStdString(modem.interface), "interface");
    QCOMPARE(modem.hasStats, !modem.interface.empty());
}

void tst_BusObjects::whatAModemNamesIsFollowed()
{
    const auto objects = modemManagerRules().objects;
    QCOMPARE(words(objects({})),
             QStringList { "/org/freedesktop/ModemManager1 DBus.ObjectManager" });
    QCOMPARE(words(objects(modemTree())),
             (QStringList { "/bearer ModemManager1.Bearer", "/idle ModemManager1.Bearer",
                            "/org/freedesktop/ModemManager1 DBus.ObjectManager",
                            "/org/freedesktop/ModemManager1/Modem/0 ModemManager1.Modem",
                            "/org/freedesktop/ModemManager1/Modem/0 ModemManager1.Modem.Modem3gpp",
                            "/sim ModemManager1.Sim" }));
    ObjectTree tree = modemTree();
    tree[{ kModem, kModemInterface }]["Sim"] = std::string("/");
    QVERIFY(!words(objects(tree)).join(' ').contains("Sim"));
    QCOMPARE(words(networkManagerRules().objects(deviceTree())),
             (QStringList { "/active NetworkManager.Connection.Active", "/lo NetworkManager.Device",
                            "/modem NetworkManager.Device", "/new NetworkManager.Device",
                            "/org/freedesktop/NetworkManager NetworkManager" }));
}

void tst_BusObjects::onlyConnectedBearersAge()
{
    for (const auto &[key, properties] : modemTree())
        QCOMPARE(modemManagerRules().isAging(key, properties), key.first == "/bearer");
    for (const auto &[key, properties] : deviceTree())
        QVERIFY(!networkManagerRules().isAging(key, properties));
}

void tst_BusObjects::devicesAndThePrimaryInterface()
{
    const auto devices = deviceFacts(deviceTree());
    QCOMPARE(devices.size(), std::size_t(2)); // the new one has not answered
    QCOMPARE(devices[1].path, std::string("/modem"));
    QCOMPARE(devices[1].interface, std::string("cdc-wdm0"));
    QCOMPARE(devices[1].ipInterface, std::string("wwan0"));
    QCOMPARE(devices[1].type, 8U);
    QCOMPARE(devices[1].state, 100U);
}

void tst_BusObjects::primaryInterfaces_data()
{
    QTest::addColumn<QString>("connection");
    QTest::addColumn<QString>("ipInterface");
    QTest::addColumn<QString>("primary");
    QTest::newRow("its IP interface") << "/active"
                                      << "wwan0"
                                      << "wwan0";
    QTest::newRow("its own without one") << "/active"
                                         << ""
                                         << "cdc-wdm0";
    QTest::newRow("no connection") << "/"
                                   << "wwan0"
                                   << "";
    QTest::newRow("unknown connection") << "/other"
                                        << "wwan0"
                                        << "";
}

void tst_BusObjects::primaryInterfaces()
{
    QFETCH(QString, connection);
    QFETCH(QString, ipInterface);
    ObjectTree tree = deviceTree();
    tree[{ kManagerPath, kManager }]["PrimaryConnection"] = connection.toStdString();
    tree[{ "/modem", kManager + ".Device" }]["IpInterface"] = ipInterface.toStdString();
    QTEST(QString::fromStdString(primaryInterface(tree)), "primary");
}

QTEST_GUILESS_MAIN(tst_BusObjects)
#include "tst_busobjects.moc"
