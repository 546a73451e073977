#include <host/velq.h>
#include <host/velq_extension.h>

#include <QTemporaryDir>
#include <QtTest>

#include <array>
#include <atomic>
#include <thread>
#include <utility>
#include <vector>

#include "SdkReport.h"

extern "C" int velqFunctionCount(void);

//! The exported functions as misused and as used; the process has one SDK, so the order is fixed.
class tst_VelqApi : public QObject
{
    Q_OBJECT
private slots:
    void theHeadersAreC();
    void beforeUseWrongArgumentsFailAndAreNoUse();
    void choicesAreTakenBeforeTheFirstUse();
    void choicesFailAfterIt();
    void thePeriodStartIsTakenAtAnyTime();
    void wrongKindsAndTypesFailAndTouchNothing_data();
    void wrongKindsAndTypesFailAndTouchNothing();
    void nullPointersFail();
    void smallBuffersAreRespected();
    void reportsClearTheirBlock();
    void aRegisteredCallbackComesOnceASecond();
    void everythingMayBeCalledFromInside();
    void unregisteringWaitsForTheRunningCallback();
    void disconnectingWithoutABusSaysSo();
    void manyThreadsMayCallEverything();
    void afterAllCallbacksAreGoneItStillAnswers();

private:
    QTemporaryDir m_folder;
};

namespace {

std::atomic<int> g_calls { 0 };
std::atomic<int> g_event { 0 };
std::atomic<int> g_insideFailures { 0 };
std::atomic<bool> g_inside { false };
std::atomic<bool> g_left { false };

int count(int event, void *data)
{
    g_event = event;
    const auto *bytes = static_cast<const unsigned char *>(data);
    if (bytes[0] > 1 || bytes[4] > 1 || bytes[5] || bytes[6] || bytes[7])
        ++g_insideFailures;
    ++g_calls;
    return 0;
}

int linger(int, void *)
{
    g_inside = true;
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    g_left = true;
    return 0;
}

//! Calls every function with good arguments; the number of failures.
int callEverything()
{
    int failures = 0;
    for (const int kind : { 0, 1, 2, 3, 4, 5 })
        failures += sdkReport(kind).result != 0 ? 1 : 0;
    failures += sdkHistory(0).result != 0 ? 1 : 0;
    failures += VELQ_Statistics_Reset(VELQ_CONNECT_TYPE_WLAN) != 0 ? 1 : 0;
    VELQ_ConnectionStatus *list = nullptr;
    int number = -1;
    failures += VELQ_NetConnectSrv_GetConnectionStatus(&list, &number) != 0 ? 1 : 0;
    failures += (number == 0) != (list == nullptr) ? 1 : 0;
    failures += VELQ_NetConnectSrv_ReleaseConnectionStatus(list) != 0 ? 1 : 0;
    std::array<char, 512> text {};
    failures += VELQ_DevSrv_GetCustomizeName(text.data()) != 0 ? 1 : 0;
    failures += VELQ_DevSrv_GetInterface(text.data(), int(text.size())) != 0 ? 1 : 0;
    failures += VELQ_StoreSrv_GetProblem(text.data(), int(text.size())) != 0 ? 1 : 0;
    failures += VELQ_StatisticsSrv_SetPeriodStart(number, 31) != 0 ? 1 : 0;
    VELQ_Counters counters {};
    failures += VELQ_NetConnectSrv_Disconnect() == VELQ_DISCONNECT_DONE ? 1 : 0;
    (void)VELQ_DevSrv_GetCounters(&counters); // fails where the loopback is down
    failures += counters.lastDownload < counters.firstDownload ? 1 : 0;
    return failures;
}

int everything(int, void *)
{
    g_insideFailures += VELQ_NetConnectSrv_Disconnect() != VELQ_DISCONNECT_FAILED ? 1 : 0;
    g_insideFailures += callEverything();
    g_insideFailures += VELQ_Statistics_RegisterStatisticsCallbackEvent(everything) != 0 ? 1 : 0;
    g_insideFailures += VELQ_Statistics_UnRegisterStatisticsCallbackEvent(everything) != 0 ? 1 : 0;
    ++g_calls;
    return 0;
}

} // namespace

void tst_VelqApi::theHeadersAreC()
{
    QCOMPARE(velqFunctionCount(), 16);
}

void tst_VelqApi::beforeUseWrongArgumentsFailAndAreNoUse()
{
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/bus");
    QVERIFY(VELQ_Statistics_UnRegisterStatisticsCallbackEvent(count) != 0);
    QVERIFY(VELQ_Statistics_RegisterStatisticsCallbackEvent(nullptr) != 0);
    QVERIFY(VELQ_Statistics_GetReport(0, nullptr, VELQ_CONNECT_TYPE_DIALUP) != 0);
    QVERIFY(sdkReport(6).result != 0);
    QVERIFY(VELQ_Statistics_Reset(static_cast<_VELQ_EN_CONNECT_TYPE>(2)) != 0);
    QVERIFY(VELQ_DevSrv_GetCustomizeName(nullptr) != 0);
    QVERIFY(VELQ_DevSrv_GetCounters(nullptr) != 0);
    QCOMPARE(VELQ_NetConnectSrv_ReleaseConnectionStatus(nullptr), 0);
    for (const char *name : { "0123456789abcdef", "a/b", "a b", ".." })
        QVERIFY2(VELQ_DevSrv_SetInterface(name) != 0, name);
    for (const auto &[weekday, day] : { std::pair(-1, 1), { 7, 1 }, { 0, 0 }, { 0, 32 } })
        QVERIFY(VELQ_StatisticsSrv_SetPeriodStart(weekday, day) != 0);
    QCOMPARE(VELQ_StatisticsSrv_SetPeriodStart(3, 31), 0); // no use either
    QVERIFY(VELQ_StoreSrv_SetDirectory("relative") != 0);
    QVERIFY(VELQ_StoreSrv_SetDirectory(QByteArray(5000, '/').constData()) != 0);
}

void tst_VelqApi::choicesAreTakenBeforeTheFirstUse()
{
    QCOMPARE(VELQ_DevSrv_SetInterface("wwan9"), 0);
    QCOMPARE(VELQ_DevSrv_SetInterface(nullptr), 0);
    QCOMPARE(VELQ_DevSrv_SetInterface(""), 0);
    QCOMPARE(VELQ_DevSrv_SetInterface("lo"), 0);
    QCOMPARE(VELQ_StoreSrv_SetDirectory(nullptr), 0);
    const QByteArray folder = m_folder.filePath("data").toUtf8();
    QCOMPARE(VELQ_StoreSrv_SetDirectory(folder.constData()), 0);
    std::array<char, 64> name {};
    QCOMPARE(VELQ_DevSrv_GetInterface(name.data(), int(name.size())), 0); // the first use
    QCOMPARE(QByteArray(name.data()), QByteArray("lo"));
    QVERIFY(QFile::exists(m_folder.filePath("data/velq.db")));
    std::array<char, 64> problem { 'x' };
    QCOMPARE(VELQ_StoreSrv_GetProblem(problem.data(), int(problem.size())), 0);
    QCOMPARE(QByteArray(problem.data()), QByteArray());
}

void tst_VelqApi::choicesFailAfterIt()
{
    QVERIFY(VELQ_DevSrv_SetInterface("lo") != 0);
    QVERIFY(VELQ_DevSrv_StartDemo() != 0);
    QVERIFY(VELQ_StoreSrv_SetDirectory("/tmp") != 0);
}

void tst_VelqApi::thePeriodStartIsTakenAtAnyTime()
{
    QVERIFY(VELQ_StatisticsSrv_SetPeriodStart(7, 31) != 0);
    QCOMPARE(VELQ_StatisticsSrv_SetPeriodStart(6, 15), 0);
    QCOMPARE(VELQ_StatisticsSrv_SetPeriodStart(0, 1), 0);
}

void tst_VelqApi::wrongKindsAndTypesFailAndTouchNothing_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("type");
    QTest::newRow("kind -1") << -1 << 0;
    QTest::newRow("kind 6") << 6 << 0;
    QTest::newRow("kind 8000") << 8000 << 0;
    QTest::newRow("type -1") << 1 << -1;
    QTest::newRow("type 2") << 1 << 2;
    QTest::newRow("live of type 2") << 0 << 2;
    QTest::newRow("last reset of the largest type") << 2 << 0x7fffffff;
}

void tst_VelqApi::wrongKindsAndTypesFailAndTouchNothing()
{
    QFETCH(int, kind);
    QFETCH(int, type);
    const SdkReport report = sdkReport(kind, type);
    QVERIFY(report.result != 0);
    QVERIFY(report.isUntouched());
    if (type != 0)
        QVERIFY(VELQ_Statistics_Reset(static_cast<_VELQ_EN_CONNECT_TYPE>(type)) != 0);
}

void tst_VelqApi::nullPointersFail()
{
    QVERIFY(VELQ_Statistics_GetReport(1, nullptr, VELQ_CONNECT_TYPE_DIALUP) != 0);
    QVERIFY(VELQ_Statistics_GetSpecHistroryData(nullptr, 0) != 0);
    int number = 77;
    QVERIFY(VELQ_NetConnectSrv_GetConnectionStatus(nullptr, &number) != 0);
    QCOMPARE(number, 77);
    auto *list = reinterpret_cast<VELQ_ConnectionStatus *>(&number);
    QVERIFY(VELQ_NetConnectSrv_GetConnectionStatus(&list, nullptr) != 0);
    QCOMPARE(reinterpret_cast<int *>(list), &number);
    QVERIFY(VELQ_DevSrv_GetInterface(nullptr, 10) != 0);
    QVERIFY(VELQ_StoreSrv_GetProblem(nullptr, 10) != 0);
    QVERIFY(VELQ_Statistics_UnRegisterStatisticsCallbackEvent(nullptr) != 0);
    QVERIFY(VELQ_Statistics_UnRegisterStatisticsCallbackEvent(count) != 0);
}

void tst_VelqApi::smallBuffersAreRespected()
{
    QByteArray buffer(4, 'x');
    QVERIFY(VELQ_DevSrv_GetInterface(buffer.data(), 2) != 0); // "lo" needs three bytes
    QVERIFY(VELQ_DevSrv_GetInterface(buffer.data(), 0) != 0);
    QVERIFY(VELQ_DevSrv_GetInterface(buffer.data(), -1) != 0);
    QVERIFY(VELQ_StoreSrv_GetProblem(buffer.data(), 0) != 0);
    QCOMPARE(buffer, QByteArray("xxxx"));
    QCOMPARE(VELQ_DevSrv_GetInterface(buffer.data(), 3), 0);
    QCOMPARE(buffer, QByteArray("lo\0x", 4));
    QByteArray name(VELQ_CUSTOMIZE_NAME_SIZE + 1, 'x');
    QCOMPARE(VELQ_DevSrv_GetCustomizeName(name.data()), 0);
    QCOMPARE(QByteArray(name.constData()), QByteArray("common"));
    QCOMPARE(name.back(), 'x');
}

void tst_VelqApi::reportsClearTheirBlock()
{
    for (const int kind : { 0, 1, 2, 3, 4, 5 }) {
        SdkReport report = sdkReport(kind, 1); // Wi-Fi: the loopback is none
        QCOMPARE(report.result, 0);
        const bool isReset = kind == 2;
        QCOMPARE(report.lastReset() != 0, isReset);
        report.bytes.replace(568, 4, QByteArray(4, '\0'));
        QCOMPARE(report.bytes, QByteArray(VELQ_STATISTICS_REPORT_SIZE, '\0'));
    }
}

void tst_VelqApi::aRegisteredCallbackComesOnceASecond()
{
    g_calls = 0;
    QCOMPARE(VELQ_Statistics_RegisterStatisticsCallbackEvent(count), 0);
    QCOMPARE(VELQ_Statistics_RegisterStatisticsCallbackEvent(count), 0);
    QTRY_COMPARE_WITH_TIMEOUT(g_calls.load(), 1, 3000);
    QElapsedTimer time;
    time.start();
    QTRY_VERIFY_WITH_TIMEOUT(g_calls >= 3, 5000);
    QVERIFY2(time.elapsed() > 1500, "two more seconds, so not called twice in one");
    QCOMPARE(g_event.load(), int(VELQ_EVENT_STATISTICS));
    QCOMPARE(g_insideFailures.load(), 0);
    QCOMPARE(VELQ_Statistics_UnRegisterStatisticsCallbackEvent(count), 0);
    QVERIFY(VELQ_Statistics_UnRegisterStatisticsCallbackEvent(count) != 0);
}

void tst_VelqApi::everythingMayBeCalledFromInside()
{
    g_calls = 0;
    g_insideFailures = 0;
    QCOMPARE(VELQ_Statistics_RegisterStatisticsCallbackEvent(everything), 0);
    QTRY_COMPARE_WITH_TIMEOUT(g_calls.load(), 1, 3000);
    QCOMPARE(g_insideFailures.load(), 0);
    QVERIFY(VELQ_Statistics_UnRegisterStatisticsCallbackEvent(everything) != 0); // it has left
}

void tst_VelqApi::unregisteringWaitsForTheRunningCallback()
{
    QCOMPARE(VELQ_Statistics_RegisterStatisticsCallbackEvent(linger), 0);
    QTRY_VERIFY_WITH_TIMEOUT(g_inside, 3000);
    QVERIFY(!g_left);
    QCOMPARE(VELQ_Statistics_UnRegisterStatisticsCallbackEvent(linger), 0);
    QVERIFY(g_left);
}

void tst_VelqApi::disconnectingWithoutABusSaysSo()
{
    VELQ_Counters counters {};
    const bool connected = VELQ_DevSrv_GetCounters(&counters) == 0; // is the loopback up?
    QCOMPARE(VELQ_NetConnectSrv_Disconnect(),
             int(connected ? VELQ_DISCONNECT_NO_SERVICE : VELQ_DISCONNECT_NO_CONNECTION));
    QCOMPARE(VELQ_DevSrv_GetCounters(&counters) == 0, connected);
}

void tst_VelqApi::manyThreadsMayCallEverything()
{
    g_insideFailures = 0;
    QCOMPARE(VELQ_Statistics_RegisterStatisticsCallbackEvent(count), 0);
    std::atomic<int> failures { 0 };
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&failures] {
            for (int round = 0; round < 40; ++round) {
                failures += callEverything();
                (void)VELQ_Statistics_RegisterStatisticsCallbackEvent(linger);
                (void)VELQ_Statistics_UnRegisterStatisticsCallbackEvent(linger);
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(failures.load(), 0);
    QCOMPARE(VELQ_Statistics_UnRegisterStatisticsCallbackEvent(count), 0);
    QVERIFY(VELQ_Statistics_UnRegisterStatisticsCallbackEvent(linger) != 0);
}

void tst_VelqApi::afterAllCallbacksAreGoneItStillAnswers()
{
    QCOMPARE(callEverything(), 0);
    const SdkReport report = sdkReport(2, 1);
    const auto now = QDateTime::currentSecsSinceEpoch();
    QVERIFY(report.lastReset() <= now && report.lastReset() + 60 > now);
}

QTEST_GUILESS_MAIN(tst_VelqApi)
#include "tst_velqapi.moc"
