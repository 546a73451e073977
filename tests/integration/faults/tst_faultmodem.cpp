#include <QTemporaryDir>
#include <QtTest>

#include <fcntl.h>
#include <unistd.h>

#include "FaultClient.h"
#include "FaultTraffic.h"
#include "Frames.h"
#include "MockServices.h"

using namespace MockServices;

/*!
 * A modem that reconnects, roams and is plugged in anew, and services that are killed, while a
 * program counts: all is booked once, for one device. Run by with_networkmanager.sh --modem.
 */
class tst_FaultModem : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanupTestCase();

    void fiftyReconnectsUnderTraffic();
    void roamingIsKeptApart();
    void servicesAreKilledUnderTraffic();
    void pluggedInAnewWhileNobodyCounts();
    void allOfItIsOneDevice();

private:
    [[nodiscard]] bool isBookedExactly(const QByteArray &what);
    [[nodiscard]] bool becomesQuiet();
    [[nodiscard]] Usage kernel() const;

    QTemporaryDir m_folder;
    ClientOptions m_options;
    FaultClient m_client;
    Usage m_base; // the counters when counting began
    Usage m_earlier; // of links that are gone
    int m_cell = -1; // the namespace of the far end
};

namespace {

const QByteArray kDevice = "sim:89000123456789012341/490154203237518";

bool connectByHand()
{
    return run(QStringLiteral("nmcli"),
               { QStringLiteral("--wait"), QStringLiteral("10"), QStringLiteral("connection"),
                 QStringLiteral("up"), QStringLiteral("cell") });
}

bool ip(const QString &arguments)
{
    return run(QStringLiteral("ip"), arguments.split(' '));
}

bool ipAtTheFarEnd(const QString &arguments)
{
    return run(QStringLiteral("nsenter"),
               QStringList { "-n", "-t", qEnvironmentVariable("NETINFO_PEER"), "ip" }
                   + arguments.split(' '));
}

} // namespace

Usage tst_FaultModem::kernel() const
{
    return kernelUsage("wwan0") + m_earlier - m_base;
}

//! The services may send something at any time, so that the counters are read before and after.
bool tst_FaultModem::isBookedExactly(const QByteArray &what)
{
    constexpr int kTries = 5;
    Usage before;
    Usage booked;
    for (int i = 0; i < kTries; ++i) {
        before = kernel();
        booked = m_client.look();
        if (kernel() == before)
            break;
    }
    return isExact(what, before, booked);
}

//! NetworkManager announces a new connection's address, two seconds apart: three looks see none.
bool tst_FaultModem::becomesQuiet()
{
    constexpr int kLooks = 3;
    constexpr int kTries = 20;
    int quiet = 0;
    for (int i = 0; i < kTries && quiet < kLooks; ++i) {
        const Usage before = kernel();
        (void)m_client.look();
        quiet = kernel() == before ? quiet + 1 : 0;
    }
    return quiet == kLooks;
}

void tst_FaultModem::initTestCase()
{
    if (!qEnvironmentVariableIsSet("NETINFO_SERVICES"))
        QSKIP("run by tests/integration/network/with_networkmanager.sh --modem");
    qputenv("TZ", noonZone());
    QVERIFY(silenceNewLinks());
    const QByteArray cell = "/proc/" + qgetenv("NETINFO_PEER") + "/ns/net";
    m_cell = open(cell.constData(), O_RDONLY | O_CLOEXEC);
    QVERIFY(m_cell >= 0);
    m_options.folder = m_folder.filePath("store");
    Usage first;
    m_client.start(m_options);
    QVERIFY(m_client.waitUntilReady(first));
    QCOMPARE(first.upload, 0ULL);
    QVERIFY(connectByHand());
    QTRY_COMPARE_WITH_TIMEOUT(m_client.ask("device"), kDevice + " 0", 5000);
    // What a link that was there before sends until it is found connected is nobody's.
    bool isSettled = false; // NetworkManager announces the address for some seconds
    for (int i = 0; i < 10 && !isSettled; ++i) {
        const Usage before = kernelUsage("wwan0");
        m_base = before - m_client.look();
        isSettled = kernelUsage("wwan0") == before;
    }
    QVERIFY(isSettled);
}

void tst_FaultModem::cleanupTestCase()
{
    if (m_cell >= 0)
        (void)close(m_cell);
}

void tst_FaultModem::fiftyReconnectsUnderTraffic()
{
    constexpr int kReconnects = 50;
    FaultTraffic upload("wwan0");
    FaultTraffic download("cell", m_cell);
    Usage usage;
    for (int i = 0; i < kReconnects; ++i) {
        QTRY_COMPARE_WITH_TIMEOUT(m_client.ask("device"), kDevice + " 0", 5000);
        QCOMPARE(m_client.ask("disconnect"), QByteArray("0"));
        if (i % 10 == 9) {
            m_client.kill();
            m_client.start(m_options);
            QVERIFY(m_client.waitUntilReady(usage));
        }
        QTRY_VERIFY_WITH_TIMEOUT(m_client.ask("connect") == "0", 5000);
    }
    upload.stop();
    download.stop();
    QVERIFY(isBookedExactly("50 reconnects, 5 kills"));
}

void tst_FaultModem::roamingIsKeptApart()
{
    const auto abroad = [this] {
        return stored(m_options.folder, "SELECT ifnull(sum(upload), 0) FROM day WHERE use >= 2");
    };
    QTRY_COMPARE_WITH_TIMEOUT(m_client.ask("device"), kDevice + " 0", 5000);
    QCOMPARE(abroad(), 0LL);
    QVERIFY(becomesQuiet());
    const Usage before = kernel();
    QVERIFY(mock(QStringLiteral("SetNetwork"), { "uint32:5", "string:Abroad" }));
    QTRY_COMPARE_WITH_TIMEOUT(m_client.ask("device"), kDevice + " 1", 5000);
    QVERIFY(sendFrames("wwan0", 321, 1000));
    QVERIFY(isBookedExactly("at home and abroad"));
    const Usage away = kernel() - before;
    QVERIFY(mock(QStringLiteral("SetNetwork"), { "uint32:1", "string:Test Net" }));
    QTRY_COMPARE_WITH_TIMEOUT(m_client.ask("device"), kDevice + " 0", 5000);
    QVERIFY(sendFrames("wwan0", 100, 1000));
    QVERIFY(isBookedExactly("at home again"));
    QCOMPARE(m_client.ask("device"), kDevice + " 0"); // which commits
    QCOMPARE(abroad(), qint64(away.upload));
}

void tst_FaultModem::servicesAreKilledUnderTraffic()
{
    FaultTraffic upload("wwan0");
    FaultTraffic download("cell", m_cell);
    for (const char *service : { "mm", "nm" }) {
        QVERIFY(killService(service));
        QTest::qSleep(1200);
        QVERIFY(startService(service));
        QTest::qSleep(500);
    }
    QVERIFY(killService("bus"));
    (void)killService("mm"); // they may have ended with the bus
    (void)killService("nm");
    QTest::qSleep(1200);
    for (const char *service : { "bus", "mm", "nm" })
        QVERIFY(startService(service));
    QTRY_VERIFY_WITH_TIMEOUT(connectByHand(), 20000);
    QTRY_COMPARE_WITH_TIMEOUT(m_client.ask("device"), kDevice + " 0", 8000);
    upload.stop();
    download.stop();
    QVERIFY(isBookedExactly("ModemManager, NetworkManager and the bus killed"));
}

//! Nobody saw the new link being made, but it is the same device's.
void tst_FaultModem::pluggedInAnewWhileNobodyCounts()
{
    // Which commits: what no commit has when it is killed can only be learnt from a link that
    // lives.
    QCOMPARE(m_client.ask("device"), kDevice + " 0");
    m_client.kill();
    m_earlier = m_earlier + kernelUsage("wwan0");
    QVERIFY(ip("link del wwan0"));
    QVERIFY(ip("link add wwan0 type veth peer name cell netns "
               + qEnvironmentVariable("NETINFO_PEER")));
    QVERIFY(ipAtTheFarEnd("link set cell up") && ip("link set wwan0 up"));
    QVERIFY(sendFrames("wwan0", 200, 1000));
    Usage usage;
    m_client.start(m_options);
    QVERIFY(m_client.waitUntilReady(usage));
    const auto uploadNow
        = [this] { return m_client.ask("usage").split(' ').value(1).toULongLong(); };
    QTRY_VERIFY_WITH_TIMEOUT(uploadNow() >= kernel().upload, 8000);
    QVERIFY(isBookedExactly("plugged in anew while nobody counted"));
}

void tst_FaultModem::allOfItIsOneDevice()
{
    QVERIFY(m_client.end());
    QCOMPARE(stored(m_options.folder, "SELECT count(*) FROM device WHERE key LIKE 'sim:%'"), 1LL);
    QCOMPARE(stored(m_options.folder,
                    "SELECT count(DISTINCT device) FROM day WHERE upload > 0 OR download > 0"),
             1LL);
    QCOMPARE(stored(m_options.folder, "SELECT sum(upload) FROM day"), qint64(kernel().upload));
    QCOMPARE(stored(m_options.folder, "SELECT sum(upload) FROM hour"), qint64(kernel().upload));
}

QTEST_GUILESS_MAIN(tst_FaultModem)
#include "tst_faultmodem.moc"
