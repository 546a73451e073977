#include <host/velq.h>
#include <host/velq_extension.h>

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <array>
#include <atomic>
#include <csignal>

#include <unistd.h>

#include "SdkReport.h"

//! Disconnecting with the real NetworkManager; run by with_networkmanager.sh.
class tst_VelqDisconnect : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void theConnectionIsThere();
    void aDisconnectTakesItDownWithinASecond();
    void itStaysDown();
    void connectedAgainItIsANewConnection();
    void velqctlDisconnectsAndConnects();
    void anotherUserIsRefused();
    void whatIsNotManagedIsToldSo();
    void withoutNetworkManagerThereIsNoService();
    void withoutABusThereIsNoService();

private:
    QTemporaryDir m_folder;
};

namespace {

std::atomic<int> g_ticks { 0 };
std::atomic<int> g_connected { -1 };

int note(int, void *data)
{
    g_connected = static_cast<const char *>(data)[0];
    ++g_ticks;
    return 0;
}

int connections()
{
    VELQ_ConnectionStatus *list = nullptr;
    int count = -1;
    if (VELQ_NetConnectSrv_GetConnectionStatus(&list, &count) == 0)
        (void)VELQ_NetConnectSrv_ReleaseConnectionStatus(list);
    return count;
}

//! What \a command prints; empty when it fails.
QByteArray run(const QString &command)
{
    QStringList words = command.split(' ');
    QProcess process;
    process.start(words.takeFirst(), words);
    const bool good = process.waitForFinished(20000) && process.exitCode() == 0;
    return good ? process.readAllStandardOutput().trimmed() : QByteArray();
}

bool hasAddress()
{
    return run(QStringLiteral("ip -j -4 addr show wwan0")).contains("10.79.0.2");
}

QByteArray stateOfDevice()
{
    return run(QStringLiteral("nmcli -g GENERAL.STATE device show wwan0"));
}

} // namespace

void tst_VelqDisconnect::initTestCase()
{
    if (!qEnvironmentVariableIsSet("NETINFO_SERVICES"))
        QSKIP("run by tests/integration/network/with_networkmanager.sh");
    QCOMPARE(VELQ_StoreSrv_SetDirectory(m_folder.path().toUtf8().constData()), 0);
    QCOMPARE(VELQ_Statistics_RegisterStatisticsCallbackEvent(note), 0);
}

void tst_VelqDisconnect::theConnectionIsThere()
{
    QCOMPARE(connections(), 1);
    std::array<char, 16> name {};
    QCOMPARE(VELQ_DevSrv_GetInterface(name.data(), int(name.size())), 0);
    QCOMPARE(QByteArray(name.data()), QByteArray("wwan0"));
    QVERIFY(hasAddress());
    QVERIFY(stateOfDevice().startsWith("100"));
    QTRY_COMPARE_WITH_TIMEOUT(g_connected.load(), 1, 3000);
}

void tst_VelqDisconnect::aDisconnectTakesItDownWithinASecond()
{
    QElapsedTimer time;
    time.start();
    const int result = VELQ_NetConnectSrv_Disconnect();
    const qint64 milliseconds = time.elapsed();
    const int left = connections();
    const bool addressLeft = hasAddress();
    qInfo("disconnected in %lld ms", static_cast<long long>(milliseconds));
    QCOMPARE(result, int(VELQ_DISCONNECT_DONE));
    QCOMPARE(left, 0);
    QVERIFY(!addressLeft);
    QVERIFY2(milliseconds < 1000, QByteArray::number(milliseconds).constData());
    QVERIFY(stateOfDevice().startsWith("30"));
    QCOMPARE(sdkReport(0).download(), quint64(0));
    QCOMPARE(VELQ_NetConnectSrv_Disconnect(), int(VELQ_DISCONNECT_NO_CONNECTION));
}

void tst_VelqDisconnect::itStaysDown()
{
    const int ticks = g_ticks;
    QTRY_VERIFY_WITH_TIMEOUT(g_ticks >= ticks + 3, 8000);
    QCOMPARE(g_connected.load(), 0);
    QCOMPARE(connections(), 0);
    QVERIFY(stateOfDevice().startsWith("30"));
}

void tst_VelqDisconnect::connectedAgainItIsANewConnection()
{
    QVERIFY(!run(QStringLiteral("nmcli --wait 10 connection up cell")).isEmpty());
    QTRY_COMPARE_WITH_TIMEOUT(connections(), 1, 5000);
    QVERIFY(sdkReport(0).seconds() <= 2);
    const int ticks = g_ticks;
    QTRY_VERIFY_WITH_TIMEOUT(g_ticks >= ticks + 2, 8000);
    QCOMPARE(connections(), 1);
    QCOMPARE(g_connected.load(), 1);
}

void tst_VelqDisconnect::velqctlDisconnectsAndConnects()
{
    const QTemporaryDir folder; // of a program that counts by itself
    const QString velqctl = QStringLiteral(VELQCTL " --json --data-dir ") + folder.path();
    QVERIFY(run(velqctl + QStringLiteral(" disconnect")).contains("\"done\": true"));
    QVERIFY(!hasAddress());
    QVERIFY(run(velqctl + QStringLiteral(" connect")).contains("\"done\": true"));
    QVERIFY(hasAddress());
    QTRY_COMPARE_WITH_TIMEOUT(connections(), 1, 5000);
}

void tst_VelqDisconnect::anotherUserIsRefused()
{
    constexpr uid_t kNobody = 65534;
    if (seteuid(kNobody) != 0)
        QSKIP("this user namespace has one user only");
    const int result = VELQ_NetConnectSrv_Disconnect();
    QCOMPARE(seteuid(0), 0);
    QCOMPARE(result, int(VELQ_DISCONNECT_REFUSED));
    QCOMPARE(connections(), 1);
    QVERIFY(stateOfDevice().startsWith("100"));
}

void tst_VelqDisconnect::whatIsNotManagedIsToldSo()
{
    (void)run(QStringLiteral("nmcli device set wwan0 managed no"));
    QTRY_VERIFY_WITH_TIMEOUT(stateOfDevice().startsWith("10 "), 5000);
    (void)run(QStringLiteral("ip link set wwan0 up"));
    (void)run(QStringLiteral("ip addr replace 10.79.0.2/24 dev wwan0"));
    (void)run(QStringLiteral("ip route replace default via 10.79.0.1"));
    QTRY_COMPARE_WITH_TIMEOUT(connections(), 1, 5000);
    QCOMPARE(VELQ_NetConnectSrv_Disconnect(), int(VELQ_DISCONNECT_NOT_MANAGED));
    QCOMPARE(connections(), 1);
    QVERIFY(hasAddress());
}

void tst_VelqDisconnect::withoutNetworkManagerThereIsNoService()
{
    QFile file(qEnvironmentVariable("NETINFO_SERVICES") + QStringLiteral("/nm.pid"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const pid_t process = file.readAll().trimmed().toInt();
    QVERIFY(process > 1);
    QCOMPARE(kill(process, SIGKILL), 0);
    QTRY_COMPARE_WITH_TIMEOUT(VELQ_NetConnectSrv_Disconnect(), int(VELQ_DISCONNECT_NO_SERVICE),
                              5000);
    QCOMPARE(connections(), 1);
}

void tst_VelqDisconnect::withoutABusThereIsNoService()
{
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/bus");
    QCOMPARE(VELQ_NetConnectSrv_Disconnect(), int(VELQ_DISCONNECT_NO_SERVICE));
    QCOMPARE(connections(), 1);
}

QTEST_GUILESS_MAIN(tst_VelqDisconnect)
#include "tst_velqdisconnect.moc"
