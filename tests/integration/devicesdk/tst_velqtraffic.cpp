#include <host/velq.h>
#include <host/velq_extension.h>

#include <QCoreApplication>
#include <QTemporaryDir>
#include <QtTest>

#include <array>
#include <atomic>
#include <cstdio>

#include "NetworkPair.h"
#include "SdkReport.h"

namespace {

NetworkPair *g_network = nullptr;
std::atomic<int> g_ticks { 0 };
std::atomic<int> g_connected { -1 };

int note(int, void *data)
{
    g_connected = static_cast<const char *>(data)[0];
    ++g_ticks;
    return 0;
}

QByteArray outputOf(const char *command)
{
    std::array<char, 4096> text {};
    FILE *pipe = popen(command, "r"); // NOLINT: the command is a constant
    const std::size_t size = pipe ? fread(text.data(), 1, text.size(), pipe) : 0;
    if (pipe)
        (void)pclose(pipe);
    return QByteArray(text.data(), int(size));
}

void waitForTicks(int count)
{
    const int target = g_ticks + count;
    QTRY_VERIFY_WITH_TIMEOUT(g_ticks >= target, 5000 + count * 1000);
}

QByteArray interfaceName()
{
    std::array<char, 16> name {};
    (void)VELQ_DevSrv_GetInterface(name.data(), int(name.size()));
    return name.data();
}

//! What lies between the payload and what a link may count for it.
bool isPayload(quint64 counted, qint64 payload)
{
    return counted >= quint64(payload) && double(counted) <= 1.08 * double(payload);
}

constexpr qint64 kUpload = 20000000;
constexpr qint64 kEarly = 3000000;
constexpr qint64 kDownload = 12000000;

} // namespace

//! Real traffic of known size through a real link, from the kernel's counters to the reports.
class tst_VelqTraffic : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void withoutADefaultRouteNothingIsConnected();
    void theDefaultRoutesLinkIsCounted();
    void trafficIsCountedWithinItsBounds();
    void theCountersAreTheKernels();
    void aRenamedLinkIsStillTheSame();
    void withoutCarrierNothingIsConnected();
    void aNewLinkOfTheSameNameInventsNothing();
    void theRouteMovesToABetterLink();
    void storedPeriodsHoldEverything();

private:
    QTemporaryDir m_folder;
    quint64 m_stored = 0; // daily upload before a step
};

void tst_VelqTraffic::initTestCase()
{
    QVERIFY(g_network->makeLink());
    QCOMPARE(VELQ_StoreSrv_SetDirectory(m_folder.filePath("data").toUtf8().constData()), 0);
    QCOMPARE(VELQ_Statistics_RegisterStatisticsCallbackEvent(note), 0);
}

void tst_VelqTraffic::withoutADefaultRouteNothingIsConnected()
{
    QTRY_COMPARE_WITH_TIMEOUT(g_connected.load(), 0, 3000);
    QCOMPARE(interfaceName(), QByteArray());
    VELQ_Counters counters {};
    QVERIFY(VELQ_DevSrv_GetCounters(&counters) != 0);
    VELQ_ConnectionStatus *list = nullptr;
    int count = -1;
    QCOMPARE(VELQ_NetConnectSrv_GetConnectionStatus(&list, &count), 0);
    QCOMPARE(count, 0);
    QVERIFY(!list);
    QVERIFY(g_network->upload(1000000)); // flows, but not through what is counted
    waitForTicks(1);
    QCOMPARE(sdkReport(1).upload(), quint64(0));
}

void tst_VelqTraffic::theDefaultRoutesLinkIsCounted()
{
    QVERIFY(g_network->ipHere("route add default via 10.81.0.2 dev va metric 500"));
    QTRY_COMPARE_WITH_TIMEOUT(interfaceName(), QByteArray("va"), 3000);
    QTRY_COMPARE_WITH_TIMEOUT(g_connected.load(), 1, 3000);
    QVERIFY2(sdkReport(1).upload() < 10000, "what flowed before is not counted");
}

void tst_VelqTraffic::trafficIsCountedWithinItsBounds()
{
    const SdkReport before = sdkReport(0);
    QVERIFY(g_network->upload(kUpload));
    QVERIFY(g_network->download(kDownload));
    waitForTicks(2);
    const SdkReport after = sdkReport(0);
    const quint64 uploaded = after.upload() - before.upload();
    const quint64 downloaded = after.download() - before.download();
    qInfo("sent %lld, counted %llu; received %lld, counted %llu", kUpload, uploaded, kDownload,
          downloaded);
    QVERIFY(isPayload(uploaded, kUpload));
    QVERIFY(isPayload(downloaded, kDownload));
    QVERIFY(after.seconds() >= 2);
    QVERIFY(sdkReport(1).upload() >= uploaded);
}

void tst_VelqTraffic::theCountersAreTheKernels()
{
    waitForTicks(1);
    VELQ_Counters counters {};
    QCOMPARE(VELQ_DevSrv_GetCounters(&counters), 0);
    const QList<QByteArray> lines = outputOf("ip -s link show dev va").split('\n');
    QList<quint64> numbers; // of the lines that follow those with "RX:" and "TX:"
    for (int i = 0; i + 1 < lines.size(); ++i) {
        if (lines[i].contains("RX:") || lines[i].contains("TX:"))
            numbers.append(lines[i + 1].simplified().split(' ').value(0).toULongLong());
    }
    QCOMPARE(numbers.size(), 2);
    QVERIFY(numbers[0] >= counters.lastDownload && numbers[0] < counters.lastDownload + 5000);
    QVERIFY(numbers[1] >= counters.lastUpload && numbers[1] < counters.lastUpload + 5000);
    const SdkReport live = sdkReport(0);
    QVERIFY(live.upload() >= counters.lastUpload - counters.firstUpload);
    QVERIFY(live.upload() < counters.lastUpload - counters.firstUpload + 5000);
}

void tst_VelqTraffic::aRenamedLinkIsStillTheSame()
{
    const SdkReport before = sdkReport(0);
    if (!g_network->ipHere("link set va name wwan7")) // older kernels want it down for this
        QSKIP("this kernel does not rename a link that is up");
    QTRY_COMPARE_WITH_TIMEOUT(interfaceName(), QByteArray("wwan7"), 3000);
    QVERIFY(sdkReport(0).upload() >= before.upload());
    QVERIFY(sdkReport(0).seconds() > before.seconds());
    QVERIFY(sdkReport(0).upload() < before.upload() + 10000);
    QVERIFY(g_network->ipHere("link set wwan7 name va"));
    QTRY_COMPARE_WITH_TIMEOUT(interfaceName(), QByteArray("va"), 3000);
}

void tst_VelqTraffic::withoutCarrierNothingIsConnected()
{
    m_stored = sdkReport(1).upload();
    QVERIFY(g_network->ipThere("link set vb down"));
    QTRY_COMPARE_WITH_TIMEOUT(g_connected.load(), 0, 4000);
    QCOMPARE(sdkReport(0).upload(), quint64(0));
    QVERIFY(g_network->ipThere("link set vb up"));
    QTRY_COMPARE_WITH_TIMEOUT(g_connected.load(), 1, 4000);
    QVERIFY2(sdkReport(0).upload() < 10000, "the connection is a new one");
    QVERIFY(sdkReport(0).seconds() < 5);
    QVERIFY(sdkReport(1).upload() < m_stored + 10000);
}

void tst_VelqTraffic::aNewLinkOfTheSameNameInventsNothing()
{
    m_stored = sdkReport(1).upload();
    QVERIFY(g_network->ipHere("link del va"));
    QTRY_COMPARE_WITH_TIMEOUT(g_connected.load(), 0, 3000);
    QCOMPARE(interfaceName(), QByteArray());
    QVERIFY(g_network->makeLink());
    QVERIFY(g_network->upload(kEarly)); // before it carries the route
    waitForTicks(2);
    QVERIFY(sdkReport(1).upload() < m_stored + 10000);
    QVERIFY(g_network->ipHere("route add default via 10.81.0.2 dev va metric 500"));
    QTRY_COMPARE_WITH_TIMEOUT(g_connected.load(), 1, 3000);
    waitForTicks(1);
    QVERIFY2(sdkReport(0).upload() < 10000, "the connection begins with the route");
    QVERIFY2(isPayload(sdkReport(1).upload() - m_stored, kEarly), "the link with its making");
    QVERIFY(g_network->upload(kUpload));
    waitForTicks(2);
    QVERIFY(isPayload(sdkReport(0).upload(), kUpload));
    QVERIFY(isPayload(sdkReport(1).upload() - m_stored, kUpload + kEarly));
}

void tst_VelqTraffic::theRouteMovesToABetterLink()
{
    QVERIFY(g_network->ipHere("link add vc type veth peer name vd"));
    QVERIFY(g_network->ipHere("link set vd up") && g_network->ipHere("link set vc up"));
    QVERIFY(g_network->ipHere("addr add 10.82.0.1/24 dev vc"));
    QVERIFY(g_network->ipHere("route add default via 10.82.0.2 dev vc metric 100"));
    QTRY_COMPARE_WITH_TIMEOUT(interfaceName(), QByteArray("vc"), 3000);
    QVERIFY(g_network->ipHere("link del vc"));
    QTRY_COMPARE_WITH_TIMEOUT(interfaceName(), QByteArray("va"), 3000);
    QTRY_COMPARE_WITH_TIMEOUT(g_connected.load(), 1, 3000);
}

void tst_VelqTraffic::storedPeriodsHoldEverything()
{
    const quint64 daily = sdkReport(1).upload();
    QVERIFY(isPayload(daily, 2 * kUpload + kEarly));
    for (const int kind : { 3, 4, 5 })
        QVERIFY(sdkReport(kind).upload() >= daily);
    QVERIFY(sdkHistory(0).upload() >= daily);
    QCOMPARE(sdkReport(1, 1).upload(), quint64(0)); // no Wi-Fi here
    QCOMPARE(VELQ_Statistics_UnRegisterStatisticsCallbackEvent(note), 0);
}

int main(int argc, char **argv)
{
    // Before the first thread, which Qt would start.
    NetworkPair network;
    const QByteArray reason = network.enter();
    if (!reason.isEmpty()) {
        std::printf("SKIPPED: %s\n", reason.constData());
        return 77;
    }
    g_network = &network;
    QCoreApplication application(argc, argv);
    tst_VelqTraffic test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_velqtraffic.moc"
