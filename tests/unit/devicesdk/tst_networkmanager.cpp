#include "modem/NetworkManager.h"

#include <QElapsedTimer>
#include <QtTest>

#include <functional>

#include "FakeBus.h"

using velq::connectInterface;
using velq::ConnectResult;
using velq::disconnectInterface;
using velq::DisconnectResult;

Q_DECLARE_METATYPE(ConnectResult)
Q_DECLARE_METATYPE(DisconnectResult)

namespace {

using Prepare = std::function<void(FakeBus &)>;
constexpr std::chrono::milliseconds kShort { 400 };

} // namespace

Q_DECLARE_METATYPE(Prepare)

class tst_NetworkManager : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();

    void aDeviceIsDisconnectedAndWatchedUntilItIsDown();
    void aModemIsFoundByItsOwnInterface();
    void aModemIsFoundByItsPort();
    void aDeviceIsConnectedAndWatchedUntilItIsUp();
    void aConnectionOnItsWayIsWaitedFor();
    void answersBecomeConnectResults_data();
    void answersBecomeConnectResults();
    void answersBecomeResults_data();
    void answersBecomeResults();
    void missingAnswersAreFailures_data();
    void missingAnswersAreFailures();
    void whatIsNoBusIsToldSo_data();
    void whatIsNoBusIsToldSo();
    void socketsThatHangAreLeftInTime_data();
    void socketsThatHangAreLeftInTime();
    void noFileStaysOpen();
};

namespace {

int openFiles()
{
    return int(QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::NoFilter).size());
}

QByteArray joined(const std::vector<std::string> &words)
{
    QByteArray text;
    for (const std::string &word : words)
        text += (text.isEmpty() ? "" : ", ") + QByteArray::fromStdString(word);
    return text;
}

//! Of a bus with "wwan0", which goes down when told, after \a prepare has changed it.
DisconnectResult resultOn(const Prepare &prepare)
{
    FakeBus bus;
    bus.devices = { { "wwan0", "wwan0" } };
    bus.states = { 100, 30 };
    prepare(bus);
    bus.start();
    return disconnectInterface("wwan0", kShort);
}

} // namespace

void tst_NetworkManager::initTestCase()
{
    qunsetenv("DBUS_STARTER_ADDRESS");
}

void tst_NetworkManager::aDeviceIsDisconnectedAndWatchedUntilItIsDown()
{
    FakeBus bus;
    bus.devices = { { "eth0", "eth0" }, { "ttyUSB0", "wwan0" } };
    bus.states = { 100, 110, 110, 30 };
    bus.start();
    QCOMPARE(disconnectInterface("wwan0"), DisconnectResult::Done);
    QCOMPARE(joined(bus.calls()),
             QByteArray("GetDeviceByIpIface, State /1, Disconnect /1, State /1, State /1, "
                        "State /1"));
}

void tst_NetworkManager::aModemIsFoundByItsOwnInterface()
{
    FakeBus bus;
    bus.devices = { { "eth0", "eth0" }, { "wwan0", "" }, { "wwan0qmux", "" } };
    bus.states = { 100, 30 };
    bus.start();
    QCOMPARE(disconnectInterface("wwan0"), DisconnectResult::Done);
    QCOMPARE(joined(bus.calls()),
             QByteArray("GetDeviceByIpIface, GetDevices, Interface /0, Interface /1, State /1, "
                        "Disconnect /1, State /1"));
}

void tst_NetworkManager::aModemIsFoundByItsPort()
{
    FakeBus bus;
    bus.devices = { { "eth0", "eth0", "/sys/eth0" },
                    { "cdc-wdm0", "", "/org/freedesktop/ModemManager1/Modem/3" } };
    bus.port = "wwan0";
    bus.states = { 30, 2 };
    bus.start();
    QCOMPARE(connectInterface("wwan0"), ConnectResult::Done);
    QCOMPARE(joined(bus.calls()),
             QByteArray("GetDeviceByIpIface, GetDevices, Interface /0, Interface /1, Udi /0, "
                        "Udi /1, GetAll, State /1, ActivateConnection, State"));
    QCOMPARE(connectInterface("wwan1"), ConnectResult::NoDevice);
}

void tst_NetworkManager::aDeviceIsConnectedAndWatchedUntilItIsUp()
{
    FakeBus bus;
    bus.devices = { { "wwan0", "wwan0" } };
    bus.states = { 30, 1, 1, 2 };
    bus.start();
    QCOMPARE(connectInterface("wwan0"), ConnectResult::Done);
    QCOMPARE(joined(bus.calls()),
             QByteArray("GetDeviceByIpIface, State /0, ActivateConnection, State, State, State"));
}

void tst_NetworkManager::aConnectionOnItsWayIsWaitedFor()
{
    FakeBus bus;
    bus.devices = { { "wwan0", "wwan0" } };
    bus.states = { 50, 1, 2 };
    bus.start();
    QCOMPARE(connectInterface("wwan0"), ConnectResult::Done);
    QCOMPARE(joined(bus.calls()),
             QByteArray("GetDeviceByIpIface, State /0, ActiveConnection /0, State, State"));
}

void tst_NetworkManager::answersBecomeConnectResults_data()
{
    QTest::addColumn<Prepare>("prepare");
    QTest::addColumn<ConnectResult>("result");
    const auto row = [](const char *name, ConnectResult result, const Prepare &prepare) {
        QTest::newRow(name) << prepare << result;
    };
    const std::string error = "org.freedesktop.DBus.Error.";
    const std::string manager = "org.freedesktop.NetworkManager.";
    row("unknown interface", ConnectResult::NoDevice, [](FakeBus &bus) {
        bus.devices = { { "eth0", "eth0" } };
    });
    row("not managed", ConnectResult::NotManaged, [](FakeBus &bus) { bus.states = { 10 }; });
    row("connected already", ConnectResult::Done, [](FakeBus &bus) { bus.states = { 100 }; });
    row("it fails", ConnectResult::Failed, [](FakeBus &bus) { bus.states = { 30, 1, 4 }; });
    row("its attempt goes", ConnectResult::Failed, [](FakeBus &bus) {
        bus.states = { 30, 1, kGone };
    });
    row("it takes too long", ConnectResult::Failed, [](FakeBus &bus) { bus.states = { 30, 1 }; });
    row("no service", ConnectResult::NoService,
        [=](FakeBus &bus) { bus.errors["GetDeviceByIpIface"] = error + "ServiceUnknown"; });
    row("not permitted", ConnectResult::Refused,
        [=](FakeBus &bus) { bus.errors["ActivateConnection"] = manager + "PermissionDenied"; });
    row("no profile", ConnectResult::NoProfile,
        [=](FakeBus &bus) { bus.errors["ActivateConnection"] = manager + "UnknownConnection"; });
    row("the request is not answered", ConnectResult::Failed,
        [](FakeBus &bus) { bus.silent = { "ActivateConnection" }; });
    row("the bus ends", ConnectResult::Failed,
        [](FakeBus &bus) { bus.leavesAt = "ActivateConnection"; });
}

void tst_NetworkManager::answersBecomeConnectResults()
{
    QFETCH(Prepare, prepare);
    FakeBus bus;
    bus.devices = { { "wwan0", "wwan0" } };
    bus.states = { 30, 1, 2 };
    prepare(bus);
    bus.start();
    QElapsedTimer time;
    time.start();
    QTEST(connectInterface("wwan0", kShort), "result");
    QVERIFY2(time.elapsed() < 2000, QByteArray::number(time.elapsed()).constData());
}

void tst_NetworkManager::answersBecomeResults_data()
{
    QTest::addColumn<Prepare>("prepare");
    QTest::addColumn<DisconnectResult>("result");
    const auto row = [](const char *name, DisconnectResult result, const Prepare &prepare) {
        QTest::newRow(name) << prepare << result;
    };
    const std::string error = "org.freedesktop.DBus.Error.";
    const std::string denied = "org.freedesktop.NetworkManager.PermissionDenied";
    row("unknown interface", DisconnectResult::NotManaged, [](FakeBus &bus) {
        bus.devices = { { "eth0", "eth0" } };
    });
    row("no devices", DisconnectResult::NotManaged, [](FakeBus &bus) { bus.devices.clear(); });
    row("not managed", DisconnectResult::NotManaged, [](FakeBus &bus) { bus.states = { 10 }; });
    row("not connected", DisconnectResult::NoConnection, [](FakeBus &bus) { bus.states = { 30 }; });
    row("no service", DisconnectResult::NoService,
        [=](FakeBus &bus) { bus.errors["GetDeviceByIpIface"] = error + "ServiceUnknown"; });
    row("not permitted", DisconnectResult::Refused,
        [=](FakeBus &bus) { bus.errors["Disconnect"] = denied; });
    row("not permitted by the bus", DisconnectResult::Refused,
        [=](FakeBus &bus) { bus.errors["GetDeviceByIpIface"] = error + "AccessDenied"; });
    row("down between look and request", DisconnectResult::Done, [](FakeBus &bus) {
        bus.errors["Disconnect"] = "org.freedesktop.NetworkManager.Device.NotActive";
    });
    row("the state cannot be read", DisconnectResult::Failed,
        [=](FakeBus &bus) { bus.errors["State"] = error + "Failed"; });
    row("it stays active", DisconnectResult::Failed, [](FakeBus &bus) { bus.states = { 100 }; });
    row("it takes long", DisconnectResult::Done, [](FakeBus &bus) { bus.states = { 100, 110 }; });
    row("it goes with its connection", DisconnectResult::Done, [](FakeBus &bus) {
        bus.states = { 100, kGone };
    });
    row("it has gone before", DisconnectResult::Failed,
        [](FakeBus &bus) { bus.states = { kGone }; });
}

void tst_NetworkManager::answersBecomeResults()
{
    QFETCH(Prepare, prepare);
    QTEST(resultOn(prepare), "result");
}

void tst_NetworkManager::missingAnswersAreFailures_data()
{
    QTest::addColumn<Prepare>("prepare");
    const auto row
        = [](const char *name, const Prepare &prepare) { QTest::newRow(name) << prepare; };
    row("the search is not answered", [](FakeBus &bus) { bus.silent = { "GetDeviceByIpIface" }; });
    row("the list is not answered", [](FakeBus &bus) {
        bus.devices.clear();
        bus.silent = { "GetDevices" };
    });
    row("the device is not answered", [](FakeBus &bus) {
        bus.devices = { { "wwan0", "" } };
        bus.silent = { "Interface" };
    });
    row("the request is not answered", [](FakeBus &bus) { bus.silent = { "Disconnect" }; });
    row("the bus ends", [](FakeBus &bus) { bus.leavesAt = "Disconnect"; });
}

void tst_NetworkManager::missingAnswersAreFailures()
{
    QFETCH(Prepare, prepare);
    QElapsedTimer time;
    time.start();
    QCOMPARE(resultOn(prepare), DisconnectResult::Failed);
    QVERIFY2(time.elapsed() < 2000, QByteArray::number(time.elapsed()).constData());
}

void tst_NetworkManager::whatIsNoBusIsToldSo_data()
{
    QTest::addColumn<QByteArray>("address");
    QTest::newRow("no such socket") << QByteArray("unix:path=/nonexistent/bus");
    QTest::newRow("no socket") << QByteArray("unix:path=/dev/null");
    QTest::newRow("no address") << QByteArray("nonsense");
    QTest::newRow("an address cut short") << QByteArray("unix:path=");
}

void tst_NetworkManager::whatIsNoBusIsToldSo()
{
    QFETCH(QByteArray, address);
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", address);
    QCOMPARE(disconnectInterface("wwan0", kShort), DisconnectResult::NoService);
    QCOMPARE(connectInterface("wwan0", kShort), ConnectResult::NoService);
}

void tst_NetworkManager::socketsThatHangAreLeftInTime_data()
{
    QTest::addColumn<QByteArray>("greeting");
    QTest::addColumn<bool>("closes");
    const QByteArray ok = "OK 0123456789abcdef0123456789abcdef\r\n";
    QTest::newRow("it never answers") << QByteArray() << false;
    QTest::newRow("it closes at once") << QByteArray() << true;
    QTest::newRow("it lets us in and never answers") << ok << false;
    QTest::newRow("it lets us in and closes") << ok << true;
    QTest::newRow("it refuses") << QByteArray("REJECTED EXTERNAL\r\n") << false;
    QTest::newRow("it talks about something else") << QByteArray("220 mail ready\r\n") << false;
    QTest::newRow("it sends bytes") << QByteArray(100000, '\xff') << false;
    QTest::newRow("it sends bytes after letting us in") << ok + QByteArray(4096, '\xff') << false;
    QTest::newRow("it lets us in and sends zeros") << ok + QByteArray(4096, '\0') << true;
}

void tst_NetworkManager::socketsThatHangAreLeftInTime()
{
    QFETCH(QByteArray, greeting);
    QFETCH(bool, closes);
    const DumbSocket socket(greeting.toStdString(), closes);
    QElapsedTimer time;
    time.start();
    QCOMPARE(disconnectInterface("wwan0", kShort), DisconnectResult::Failed);
    QVERIFY2(time.elapsed() < 2000, QByteArray::number(time.elapsed()).constData());
}

void tst_NetworkManager::noFileStaysOpen()
{
    FakeBus bus;
    bus.devices = { { "wwan0", "wwan0" } };
    bus.states = { 30 };
    bus.start();
    QCOMPARE(disconnectInterface("wwan0"), DisconnectResult::NoConnection);
    const int before = openFiles();
    for (int i = 0; i < 20; ++i)
        (void)disconnectInterface("wwan0");
    QTRY_VERIFY(openFiles() <= before); // the fake may have held one of the call before
}

QTEST_GUILESS_MAIN(tst_NetworkManager)
#include "tst_networkmanager.moc"
