#include <host/velq.h>
#include <host/velq_extension.h>

#include <QTemporaryDir>
#include <QtTest>

#include <sqlite3.h>

#include <array>
#include <atomic>
#include <climits>
#include <cstring>
#include <thread>
#include <vector>

#include "SdkReport.h"

//! What the SDK adds for its host, as misused; the process has one SDK, so the order is fixed.
class tst_VelqExtension : public QObject
{
    Q_OBJECT
private slots:
    void beforeTheFirstUse();
    void nullPointersFailAndTouchNothing();
    void sizesThatAreNoneFailAndTouchNothing();
    void wordsAreCutBetweenCharacters();
    void kindsTypesAndAmountsOutOfRangeFail();
    void anySpanIsAnswered_data();
    void anySpanIsAnswered();
    void rememberedDevicesAreListedAfterThoseThatAreThere();
    void aDeviceThatCannotBeIsRefused_data();
    void aDeviceThatCannotBeIsRefused();
    void anyTextOfADeviceIsKeptAsItIs_data();
    void anyTextOfADeviceIsKeptAsItIs();
    void theLargestCorrectionsAddUp();
    void copiesGoToNewFilesOnly();
    void everythingMayBeCalledFromInside();
    void manyThreadsMayCallEverything();

private:
    QTemporaryDir m_folder;
};

namespace {

std::atomic<int> g_failures { 0 };
std::atomic<int> g_calls { 0 };

constexpr _VELQ_EN_CONNECT_TYPE kNoType = static_cast<_VELQ_EN_CONNECT_TYPE>(2);

//! Takes a list and gives it back; the number of failures.
template <typename Row, typename Get, typename Release>
int takeList(Get get, Release release)
{
    Row *list = nullptr;
    int count = -1;
    int failures = get(&list, &count) != 0 ? 1 : 0;
    failures += count < 0 || (count == 0) != (list == nullptr) ? 1 : 0;
    return failures + (release(list) != 0 ? 1 : 0);
}

int takeLists()
{
    const auto hours = [](VELQ_Usage **list, int *count) {
        return VELQ_StatisticsSrv_GetHours(LLONG_MIN, LLONG_MAX, list, count);
    };
    const auto days = [](VELQ_Usage **list, int *count) {
        return VELQ_StatisticsSrv_GetDays(INT_MIN, INT_MAX, list, count);
    };
    const auto reasons = [](VELQ_Reason **list, int *count) {
        return VELQ_StatisticsSrv_GetReasons(INT_MAX, list, count);
    };
    return takeList<VELQ_Device>(VELQ_DevSrv_GetDevices, VELQ_DevSrv_ReleaseDevices)
        + takeList<VELQ_Usage>(hours, VELQ_StatisticsSrv_ReleaseUsage)
        + takeList<VELQ_Usage>(days, VELQ_StatisticsSrv_ReleaseUsage)
        + takeList<VELQ_Reason>(reasons, VELQ_StatisticsSrv_ReleaseReasons);
}

//! Calls every function with good arguments; the number of failures.
int callEverything()
{
    std::array<char, 4096> text {};
    int from = 0;
    int to = 0;
    int failures = takeLists();
    const auto expect = [&failures](bool good) { failures += good ? 0 : 1; };
    expect(VELQ_DevSrv_UseDevice("lo") == 0);
    expect(VELQ_DevSrv_GetUsedDevice(text.data(), int(text.size())) == 0);
    expect(VELQ_DevSrv_GetInterface(text.data(), int(text.size())) == 0);
    expect(VELQ_StatisticsSrv_GetPeriod(4, &from, &to) == 0 && from < to);
    expect(VELQ_StatisticsSrv_Correct(1, VELQ_CONNECT_TYPE_WLAN, 1000, 2000) == 0);
    expect(VELQ_StatisticsSrv_SetPeriodStart(6, 31) == 0);
    expect(VELQ_StoreSrv_GetProblem(text.data(), int(text.size())) == 0);
    expect(VELQ_StoreSrv_GetPath(text.data(), int(text.size())) == 0);
    expect(VELQ_StoreSrv_IsCounting() == 1);
    expect(VELQ_StoreSrv_SetKeptDays(730) == 0);
    expect(VELQ_StoreSrv_BackUp(text.data(), nullptr, 0) != 0); // where the store is
    return failures;
}

int everything(int, void *)
{
    g_failures += VELQ_NetConnectSrv_Connect() != VELQ_CONNECT_FAILED ? 1 : 0;
    g_failures += VELQ_NetConnectSrv_Disconnect() != VELQ_DISCONNECT_FAILED ? 1 : 0;
    g_failures += VELQ_DevSrv_SetInterface("lo") == 0 ? 1 : 0;
    g_failures += VELQ_DevSrv_StartDemo() == 0 ? 1 : 0;
    g_failures += VELQ_StoreSrv_SetDirectory("/tmp") == 0 ? 1 : 0;
    g_failures += callEverything();
    ++g_calls;
    return 0;
}

} // namespace

//! Wrong arguments fail without starting the service: choices are still taken after them.
void tst_VelqExtension::beforeTheFirstUse()
{
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/bus");
    qputenv("VELQ_INTERFACE", "lo");
    int number = 0;
    QVERIFY(VELQ_DevSrv_GetDevices(nullptr, &number) != 0);
    QVERIFY(VELQ_DevSrv_GetUsedDevice(nullptr, 10) != 0);
    QVERIFY(VELQ_StatisticsSrv_GetPeriod(1, nullptr, &number) != 0);
    QVERIFY(VELQ_StatisticsSrv_Correct(1, kNoType, 0, 0) != 0);
    QVERIFY(VELQ_StoreSrv_SetKeptDays(-1) != 0);
    QVERIFY(VELQ_StoreSrv_BackUp(nullptr, nullptr, 0) != 0);
    QCOMPARE(VELQ_DevSrv_ReleaseDevices(nullptr), 0);
    QCOMPARE(VELQ_StatisticsSrv_ReleaseUsage(nullptr), 0);
    QCOMPARE(VELQ_StatisticsSrv_ReleaseReasons(nullptr), 0);
    QVERIFY(VELQ_DevSrv_SetInterface(QByteArray(100000, 'x').constData()) != 0);
    QVERIFY(VELQ_StoreSrv_SetDirectory(QByteArray(100000, '/').constData()) != 0);
    const QByteArray folder = m_folder.filePath("store").toUtf8();
    QCOMPARE(VELQ_StoreSrv_SetDirectory(folder.constData()), 0);
    QCOMPARE(VELQ_StoreSrv_IsCounting(), 1); // the first use
    QVERIFY(QFile::exists(m_folder.filePath("store/velq.db")));
}

void tst_VelqExtension::nullPointersFailAndTouchNothing()
{
    int number = 77;
    auto *devices = reinterpret_cast<VELQ_Device *>(&number);
    auto *usage = reinterpret_cast<VELQ_Usage *>(&number);
    auto *reasons = reinterpret_cast<VELQ_Reason *>(&number);
    QVERIFY(VELQ_DevSrv_GetDevices(&devices, nullptr) != 0);
    QVERIFY(VELQ_StatisticsSrv_GetHours(0, 1, &usage, nullptr) != 0);
    QVERIFY(VELQ_StatisticsSrv_GetHours(0, 1, nullptr, &number) != 0);
    QVERIFY(VELQ_StatisticsSrv_GetDays(0, 1, &usage, nullptr) != 0);
    QVERIFY(VELQ_StatisticsSrv_GetDays(0, 1, nullptr, &number) != 0);
    QVERIFY(VELQ_StatisticsSrv_GetReasons(1, &reasons, nullptr) != 0);
    QVERIFY(VELQ_StatisticsSrv_GetReasons(1, nullptr, &number) != 0);
    QVERIFY(VELQ_StatisticsSrv_GetPeriod(1, &number, nullptr) != 0);
    QVERIFY(VELQ_DevSrv_GetCounters(nullptr) != 0);
    QVERIFY(VELQ_DevSrv_GetInterface(nullptr, 16) != 0);
    QVERIFY(VELQ_StoreSrv_GetPath(nullptr, 4096) != 0);
    QVERIFY(VELQ_StoreSrv_GetProblem(nullptr, 4096) != 0);
    QCOMPARE(number, 77);
    QCOMPARE(static_cast<void *>(devices), static_cast<void *>(&number));
    QCOMPARE(static_cast<void *>(usage), static_cast<void *>(&number));
    QCOMPARE(static_cast<void *>(reasons), static_cast<void *>(&number));
}

void tst_VelqExtension::sizesThatAreNoneFailAndTouchNothing()
{
    QCOMPARE(VELQ_DevSrv_UseDevice("name:lo"), 0);
    QByteArray buffer(4, 'x');
    for (const int size : { 0, -1, INT_MIN }) {
        QVERIFY(VELQ_DevSrv_GetUsedDevice(buffer.data(), size) != 0);
        QVERIFY(VELQ_StoreSrv_GetPath(buffer.data(), size) != 0);
        QVERIFY(VELQ_StoreSrv_GetProblem(buffer.data(), size) != 0);
    }
    QVERIFY(VELQ_DevSrv_GetUsedDevice(buffer.data(), 4) != 0); // needs eight
    QVERIFY(VELQ_StoreSrv_GetPath(buffer.data(), 4) != 0);
    QVERIFY(VELQ_StoreSrv_BackUp("/nonexistent/folder/copy", buffer.data(), 0) != 0);
    QVERIFY(VELQ_StoreSrv_BackUp("/nonexistent/folder/copy", buffer.data(), -1) != 0);
    QCOMPARE(buffer, QByteArray("xxxx"));
    QVERIFY(VELQ_StoreSrv_BackUp("/nonexistent/folder/copy", buffer.data(), 3) != 0);
    QCOMPARE(buffer, QByteArray("/n\0x", 4));
    QCOMPARE(VELQ_DevSrv_UseDevice(nullptr), 0);
}

//! What is wrong names a path, which may have any letters.
void tst_VelqExtension::wordsAreCutBetweenCharacters()
{
    QByteArray buffer(8, 'x');
    QVERIFY(VELQ_StoreSrv_BackUp("/\xc3\xbc\xc3\xbc/copy", buffer.data(), 5) != 0);
    QCOMPARE(buffer, QByteArray("/\xc3\xbc\0xxxx", 8));
}

void tst_VelqExtension::kindsTypesAndAmountsOutOfRangeFail()
{
    int from = 77;
    int to = 78;
    for (const int kind : { INT_MIN, -1, 0, 2, 6, 8000, INT_MAX }) {
        QVERIFY(VELQ_StatisticsSrv_GetPeriod(kind, &from, &to) != 0);
        QVERIFY(VELQ_StatisticsSrv_Correct(kind, VELQ_CONNECT_TYPE_DIALUP, 1, 1) != 0);
    }
    QCOMPARE(from, 77);
    QCOMPARE(to, 78);
    for (const int type : { INT_MIN, -1, 2, INT_MAX }) {
        const auto wrong = static_cast<_VELQ_EN_CONNECT_TYPE>(type);
        QVERIFY(VELQ_StatisticsSrv_Correct(1, wrong, 1, 1) != 0);
    }
    constexpr unsigned long long kTooMuch = (1ULL << 62) + 1;
    QVERIFY(VELQ_StatisticsSrv_Correct(1, VELQ_CONNECT_TYPE_WLAN, kTooMuch, 0) != 0);
    QVERIFY(VELQ_StatisticsSrv_Correct(1, VELQ_CONNECT_TYPE_WLAN, 0, ULLONG_MAX) != 0);
    for (const int days : { INT_MIN, -1, 36501, INT_MAX })
        QVERIFY(VELQ_StoreSrv_SetKeptDays(days) != 0);
    VELQ_Reason *reasons = nullptr;
    int count = 77;
    for (const int most : { INT_MIN, -1 })
        QVERIFY(VELQ_StatisticsSrv_GetReasons(most, &reasons, &count) != 0);
    QCOMPARE(count, 77);
    QCOMPARE(sdkReport(1, 1).upload(), quint64(0)); // nothing of it was done
}

void tst_VelqExtension::anySpanIsAnswered_data()
{
    QTest::addColumn<qint64>("from");
    QTest::addColumn<qint64>("to");
    QTest::addColumn<bool>("isEmpty");
    QTest::newRow("all") << qint64(LLONG_MIN) << qint64(LLONG_MAX) << false;
    QTest::newRow("backwards") << qint64(LLONG_MAX) << qint64(LLONG_MIN) << true;
    QTest::newRow("nothing") << qint64(0) << qint64(0) << true;
    QTest::newRow("the far past") << qint64(LLONG_MIN) << qint64(-1) << true;
    QTest::newRow("the far future") << qint64(LLONG_MAX - 1) << qint64(LLONG_MAX) << true;
}

void tst_VelqExtension::anySpanIsAnswered()
{
    QFETCH(qint64, from);
    QFETCH(qint64, to);
    QFETCH(bool, isEmpty);
    QCOMPARE(VELQ_StatisticsSrv_Correct(1, VELQ_CONNECT_TYPE_WLAN, 5, 6), 0);
    const auto narrowed
        = [](qint64 value) { return int(qBound(qint64(INT_MIN), value, qint64(INT_MAX))); };
    VELQ_Usage *list = nullptr;
    int count = -1;
    QCOMPARE(VELQ_StatisticsSrv_GetHours(from, to, &list, &count), 0);
    QCOMPARE(count == 0, isEmpty);
    QCOMPARE(VELQ_StatisticsSrv_ReleaseUsage(list), 0);
    QCOMPARE(VELQ_StatisticsSrv_GetDays(narrowed(from), narrowed(to), &list, &count), 0);
    QCOMPARE(count == 0, isEmpty);
    QCOMPARE(list == nullptr, isEmpty);
    QCOMPARE(VELQ_StatisticsSrv_ReleaseUsage(list), 0);
    QCOMPARE(sdkHistory(ULLONG_MAX).result, 0);
    QCOMPARE(sdkHistory(ULLONG_MAX).upload(), quint64(0));
}

void tst_VelqExtension::rememberedDevicesAreListedAfterThoseThatAreThere()
{
    QCOMPARE(takeLists(), 0); // which commits
    const auto runSql = [this](const char *sql) {
        sqlite3 *database = nullptr;
        const QByteArray file = m_folder.filePath("store/velq.db").toUtf8();
        const bool done = sqlite3_open(file.constData(), &database) == SQLITE_OK
            && sqlite3_exec(database, sql, nullptr, nullptr, nullptr) == SQLITE_OK;
        sqlite3_close(database);
        return done;
    };
    QVERIFY(runSql(
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 20)"
        " INSERT INTO device (key, label, seen) SELECT 'sim:' || i, 'Away', 1000 + i FROM n"));
    VELQ_Device *list = nullptr;
    int count = 0;
    QCOMPARE(VELQ_DevSrv_GetDevices(&list, &count), 0);
    int away = 0;
    for (int i = 0; i < count; ++i) {
        if (std::strncmp(list[i].key, "sim:", 4) != 0) {
            QCOMPARE(away, 0);
            continue;
        }
        QCOMPARE(list[i].present, 0);
        QCOMPARE(list[i].lastUse, 1020LL - away); // the latest first
        ++away;
    }
    QCOMPARE(away, 20);
    QCOMPARE(VELQ_DevSrv_ReleaseDevices(list), 0);
    QVERIFY(runSql("DELETE FROM device WHERE key LIKE 'sim:%'"));
}

void tst_VelqExtension::aDeviceThatCannotBeIsRefused_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("a kind only") << QByteArray("sim:");
    QTest::newRow("another kind") << QByteArray("imei:123");
    QTest::newRow("a blank") << QByteArray(" ");
    QTest::newRow("16 bytes") << QByteArray(16, 'x');
    QTest::newRow("128 bytes") << "hw:" + QByteArray(125, 'x');
    QTest::newRow("a megabyte") << "hw:" + QByteArray(1000000, 'x');
    QTest::newRow("a path") << QByteArray("../../etc");
}

void tst_VelqExtension::aDeviceThatCannotBeIsRefused()
{
    QFETCH(QByteArray, text);
    QCOMPARE(VELQ_DevSrv_UseDevice("name:lo"), 0);
    QVERIFY(VELQ_DevSrv_UseDevice(text.constData()) != 0);
    std::array<char, VELQ_DEVICE_SIZE> used {};
    QCOMPARE(VELQ_DevSrv_GetUsedDevice(used.data(), int(used.size())), 0);
    QCOMPARE(QByteArray(used.data()), QByteArray("name:lo"));
}

void tst_VelqExtension::anyTextOfADeviceIsKeptAsItIs_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("127 bytes") << "hw:" + QByteArray(124, 'x');
    QTest::newRow("no UTF-8") << QByteArray("sim:\xff\xfe\xc3\x28\x80");
    QTest::newRow("quotes") << QByteArray("hw:'; DROP TABLE day; --");
    QTest::newRow("control characters") << QByteArray("name:\x01\n\t\x7f");
    QTest::newRow("placeholders") << QByteArray("name:%s%n%1?1");
    QTest::newRow("empty") << QByteArray();
}

void tst_VelqExtension::anyTextOfADeviceIsKeptAsItIs()
{
    QFETCH(QByteArray, text);
    QCOMPARE(VELQ_DevSrv_UseDevice(text.constData()), 0);
    QCOMPARE(takeLists(), 0); // which commits
    std::array<char, VELQ_DEVICE_SIZE> used {};
    QCOMPARE(VELQ_DevSrv_GetUsedDevice(used.data(), int(text.size()) + 1), 0);
    QCOMPARE(QByteArray(used.data()), text);
    std::array<char, 400> problem {};
    QCOMPARE(VELQ_StoreSrv_GetProblem(problem.data(), int(problem.size())), 0);
    QCOMPARE(QByteArray(problem.data()), QByteArray());
}

//! More than any network carries, of both types together more than a signed number holds.
void tst_VelqExtension::theLargestCorrectionsAddUp()
{
    constexpr unsigned long long kMost = 1ULL << 62;
    for (const int type : { 0, 1 }) {
        const auto connectType = static_cast<_VELQ_EN_CONNECT_TYPE>(type);
        QCOMPARE(VELQ_StatisticsSrv_Correct(1, connectType, kMost, kMost), 0);
        QVERIFY(sdkReport(1, type).upload() >= kMost);
        QVERIFY(sdkReport(5, type).upload() >= kMost);
    }
    QCOMPARE(takeLists(), 0);
    QVERIFY(sdkHistory(0).upload() >= kMost);
    for (const int type : { 0, 1 }) {
        const auto connectType = static_cast<_VELQ_EN_CONNECT_TYPE>(type);
        QCOMPARE(VELQ_StatisticsSrv_Correct(1, connectType, 0, 0), 0);
        QVERIFY(sdkReport(1, type).upload() < 100000000);
    }
    QCOMPARE(takeLists(), 0);
}

void tst_VelqExtension::copiesGoToNewFilesOnly()
{
    const QByteArray copy = m_folder.filePath("copy").toUtf8();
    std::array<char, 400> problem {};
    const auto backUp = [&problem](const QByteArray &path) {
        return VELQ_StoreSrv_BackUp(path.constData(), problem.data(), int(problem.size()));
    };
    QCOMPARE(backUp(copy), 0);
    QVERIFY(QFileInfo(m_folder.filePath("copy")).size() > 0);
    for (const QByteArray &path :
         { copy, QByteArray("relative"), QByteArray(), QByteArray("/"), QByteArray("/dev/full"),
           m_folder.filePath("store/velq.db").toUtf8(), "/" + QByteArray(100000, 'x') })
        QVERIFY2(backUp(path) != 0, path.left(100).constData());
}

void tst_VelqExtension::everythingMayBeCalledFromInside()
{
    g_failures = 0;
    QCOMPARE(VELQ_Statistics_RegisterStatisticsCallbackEvent(everything), 0);
    QTRY_VERIFY_WITH_TIMEOUT(g_calls >= 2, 8000);
    QCOMPARE(VELQ_Statistics_UnRegisterStatisticsCallbackEvent(everything), 0);
    QCOMPARE(g_failures.load(), 0);
}

void tst_VelqExtension::manyThreadsMayCallEverything()
{
    g_failures = 0;
    QCOMPARE(VELQ_Statistics_RegisterStatisticsCallbackEvent(everything), 0);
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([] {
            for (int round = 0; round < 25; ++round)
                g_failures += callEverything();
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(VELQ_Statistics_UnRegisterStatisticsCallbackEvent(everything), 0);
    QCOMPARE(g_failures.load(), 0);
}

QTEST_GUILESS_MAIN(tst_VelqExtension)
#include "tst_velqextension.moc"
