#include "modem/NetworkManager.h"
#include "modem/NetworkWatcher.h"

#include <QtTest>

#include "MockServices.h"

using velq::connectInterface;
using velq::ConnectResult;
using velq::disconnectInterface;
using velq::DisconnectResult;
using velq::ModemFacts;
using velq::NetworkFacts;
using velq::NetworkWatcher;
using namespace MockServices;

//! The facts with the real NetworkManager and a modem; run by with_networkmanager.sh --modem.
class tst_ModemWatch : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void theModemIsDescribed();
    void connectingFindsTheModemByItsPort();
    void roamingIsFollowed();
    void anotherSimIsNoticed();
    void theBearersFiguresAreRead();
    void droppedByTheNetworkItIsDown();
    void fiftyReconnectsAreFollowed();
    void anUnpluggedModemIsForgotten();
    void aKilledModemManagerIsFoundAgain();
    void aKilledNetworkManagerIsFoundAgain();
    void aKilledBusIsFoundAgain();
    void afterAllThatItConnects();
    void whatCannotBeConnectedIsToldSo();

private:
    std::unique_ptr<NetworkWatcher> m_watcher;
};

namespace {

constexpr int kReconnects = 50;
constexpr std::uint32_t kModemType = 8;
constexpr const char *kSim = "89000123456789012341";

ModemFacts modemOf(const NetworkFacts &facts)
{
    return facts.modems.size() == 1 ? facts.modems.front() : ModemFacts();
}

ModemFacts modemOf(const NetworkWatcher &watcher)
{
    return modemOf(*watcher.facts());
}

bool isModemKnown(const NetworkWatcher &watcher)
{
    const ModemFacts modem = modemOf(watcher);
    return modem.simId == kSim && modem.registered && !modem.operatorName.empty();
}

bool isConnected(const NetworkWatcher &watcher)
{
    const auto facts = watcher.facts();
    return modemOf(*facts).connected && modemOf(*facts).interface == "wwan0"
        && facts->primaryInterface == "wwan0";
}

bool isDisconnected(const NetworkWatcher &watcher)
{
    const auto facts = watcher.facts();
    return facts->modems.size() == 1 && !modemOf(*facts).connected
        && modemOf(*facts).interface.empty() && facts->primaryInterface.empty();
}

bool hasModemDevice(const NetworkWatcher &watcher)
{
    const auto facts = watcher.facts();
    return std::any_of(facts->devices.begin(), facts->devices.end(), [](const auto &device) {
        return device.type == kModemType && device.interface == "ttyUSB2";
    });
}

void say(const char *what, const QElapsedTimer &time)
{
    qInfo("%s after %lld ms", what, static_cast<long long>(time.elapsed()));
}

} // namespace

void tst_ModemWatch::initTestCase()
{
    if (!qEnvironmentVariableIsSet("NETINFO_SERVICES"))
        QSKIP("run by tests/integration/network/with_networkmanager.sh --modem");
    velq::WatcherOptions options;
    options.statsInterval = std::chrono::milliseconds(500);
    m_watcher = std::make_unique<NetworkWatcher>(options);
    QVERIFY(m_watcher->start());
}

void tst_ModemWatch::theModemIsDescribed()
{
    QTRY_VERIFY(isModemKnown(*m_watcher) && hasModemDevice(*m_watcher));
    const ModemFacts modem = modemOf(*m_watcher);
    QCOMPARE(modem.path, std::string("/org/freedesktop/ModemManager1/Modem/0"));
    QCOMPARE(modem.equipmentId, std::string("490154203237518"));
    QCOMPARE(modem.deviceId, std::string("device-1"));
    QCOMPARE(modem.model, std::string("Stick 1"));
    QCOMPARE(modem.imsi, std::string("001010123456789"));
    QCOMPARE(modem.operatorName, std::string("Test Net"));
    QCOMPARE(modem.netPorts, std::vector<std::string> { "wwan0" });
    QVERIFY(!modem.connected && !modem.roaming && modem.interface.empty());
    const auto facts = m_watcher->facts();
    QVERIFY(facts->bus && facts->networkManager && facts->modemManager);
    QCOMPARE(facts->primaryInterface, std::string());
}

void tst_ModemWatch::connectingFindsTheModemByItsPort()
{
    QElapsedTimer time;
    time.start();
    QCOMPARE(connectInterface("wwan0"), ConnectResult::Done);
    say("connected", time);
    QTRY_VERIFY(isConnected(*m_watcher));
    const auto facts = m_watcher->facts();
    QCOMPARE(velq::connectedModem(*facts), velq::modemOfInterface(*facts, "wwan0"));
    QVERIFY(velq::connectedModem(*facts) != nullptr);
    QCOMPARE(connectInterface("wwan0"), ConnectResult::Done); // it is already
    QCOMPARE(disconnectInterface("wwan0"), DisconnectResult::Done);
    QTRY_VERIFY(isDisconnected(*m_watcher));
    QCOMPARE(disconnectInterface("wwan0"), DisconnectResult::NoConnection);
    QCOMPARE(connectInterface("ttyUSB2"), ConnectResult::Done);
    QTRY_VERIFY(isConnected(*m_watcher));
}

void tst_ModemWatch::roamingIsFollowed()
{
    QVERIFY(mock(QStringLiteral("SetNetwork"),
                 { QStringLiteral("uint32:5"), QStringLiteral("string:Abroad") }));
    QTRY_VERIFY(modemOf(*m_watcher).roaming);
    QCOMPARE(modemOf(*m_watcher).operatorName, std::string("Abroad"));
    QVERIFY(mock(QStringLiteral("SetNetwork"),
                 { QStringLiteral("uint32:1"), QStringLiteral("string:Test Net") }));
    QTRY_VERIFY(!modemOf(*m_watcher).roaming);
    QVERIFY(modemOf(*m_watcher).registered);
}

void tst_ModemWatch::anotherSimIsNoticed()
{
    QVERIFY(mock(QStringLiteral("SetSim"), { QStringLiteral("string:8949000000000000001") }));
    QTRY_COMPARE(modemOf(*m_watcher).simId, std::string("8949000000000000001"));
    QVERIFY(mock(QStringLiteral("SetSim"), { QStringLiteral("string:%1").arg(kSim) }));
    QTRY_COMPARE(modemOf(*m_watcher).simId, std::string(kSim));
}

void tst_ModemWatch::theBearersFiguresAreRead()
{
    QVERIFY(modemOf(*m_watcher).hasStats);
    QVERIFY(mock(QStringLiteral("SetStats"),
                 { QStringLiteral("uint64:5000000000"), QStringLiteral("uint64:321"),
                   QStringLiteral("uint32:42") }));
    QTRY_COMPARE(modemOf(*m_watcher).bearerDownload, std::uint64_t(5000000000));
    QCOMPARE(modemOf(*m_watcher).bearerUpload, std::uint64_t(321));
    QCOMPARE(modemOf(*m_watcher).bearerSeconds, std::uint32_t(42));
}

void tst_ModemWatch::droppedByTheNetworkItIsDown()
{
    QVERIFY(mock(QStringLiteral("DropConnection")));
    QTRY_VERIFY(isDisconnected(*m_watcher));
    QVERIFY(!modemOf(*m_watcher).hasStats);
}

void tst_ModemWatch::fiftyReconnectsAreFollowed()
{
    QElapsedTimer time;
    time.start();
    int connected = 0;
    int disconnected = 0;
    for (int i = 0; i < kReconnects; ++i) {
        QCOMPARE(connectInterface("wwan0"), ConnectResult::Done);
        QTRY_VERIFY(isConnected(*m_watcher));
        ++connected;
        QCOMPARE(disconnectInterface("wwan0"), DisconnectResult::Done);
        QTRY_VERIFY(isDisconnected(*m_watcher));
        ++disconnected;
    }
    qInfo("%d connects and %d disconnects followed in %lld ms", connected, disconnected,
          static_cast<long long>(time.elapsed()));
}

void tst_ModemWatch::anUnpluggedModemIsForgotten()
{
    QVERIFY(mock(QStringLiteral("RemoveModem")));
    QTRY_VERIFY(m_watcher->facts()->modems.empty());
    QTRY_VERIFY(!hasModemDevice(*m_watcher));
    QVERIFY(mock(QStringLiteral("AddModem")));
    QTRY_VERIFY(isModemKnown(*m_watcher));
    QTRY_VERIFY(hasModemDevice(*m_watcher));
}

void tst_ModemWatch::aKilledModemManagerIsFoundAgain()
{
    QElapsedTimer time;
    QVERIFY(killService("mm"));
    time.start();
    QTRY_VERIFY(!m_watcher->facts()->modemManager);
    say("ModemManager's facts gone", time);
    QVERIFY(m_watcher->facts()->modems.empty());
    QVERIFY(m_watcher->facts()->networkManager);
    time.start();
    QVERIFY(startService("mm"));
    QTRY_VERIFY(isModemKnown(*m_watcher));
    say("right again, its start included,", time);
}

void tst_ModemWatch::aKilledNetworkManagerIsFoundAgain()
{
    QElapsedTimer time;
    QVERIFY(killService("nm"));
    time.start();
    QTRY_VERIFY(!m_watcher->facts()->networkManager);
    say("NetworkManager's facts gone", time);
    QVERIFY(m_watcher->facts()->devices.empty() && m_watcher->facts()->primaryInterface.empty());
    QVERIFY(isModemKnown(*m_watcher));
    QCOMPARE(connectInterface("wwan0"), ConnectResult::NoService);
    time.start();
    QVERIFY(startService("nm"));
    QTRY_VERIFY(hasModemDevice(*m_watcher));
    say("right again, its start included,", time);
}

void tst_ModemWatch::aKilledBusIsFoundAgain()
{
    QElapsedTimer time;
    QVERIFY(killService("bus"));
    time.start();
    QTRY_VERIFY(!m_watcher->facts()->bus);
    say("the bus's facts gone", time);
    const auto facts = m_watcher->facts();
    QVERIFY(!facts->networkManager && !facts->modemManager && facts->modems.empty()
            && facts->devices.empty());
    (void)killService("mm"); // they may have ended with the bus
    (void)killService("nm");
    time.start();
    QVERIFY(startService("bus"));
    QTRY_VERIFY_WITH_TIMEOUT(m_watcher->facts()->bus, 7000);
    say("the bus is found", time);
    QVERIFY(startService("mm"));
    QVERIFY(startService("nm"));
    QTRY_VERIFY(isModemKnown(*m_watcher) && hasModemDevice(*m_watcher));
    say("right again, all starts included,", time);
}

void tst_ModemWatch::afterAllThatItConnects()
{
    QCOMPARE(connectInterface("wwan0"), ConnectResult::Done);
    QTRY_VERIFY(isConnected(*m_watcher));
    QCOMPARE(disconnectInterface("wwan0"), DisconnectResult::Done);
    QTRY_VERIFY(isDisconnected(*m_watcher));
}

void tst_ModemWatch::whatCannotBeConnectedIsToldSo()
{
    QCOMPARE(connectInterface("wwan7"), ConnectResult::NoDevice);
    QVERIFY(
        run(QStringLiteral("nmcli"),
            { QStringLiteral("connection"), QStringLiteral("delete"), QStringLiteral("cell") }));
    QCOMPARE(connectInterface("wwan0"), ConnectResult::NoProfile);
    m_watcher->stop();
}

QTEST_GUILESS_MAIN(tst_ModemWatch)
#include "tst_modemwatch.moc"
