#include "NetInfoUILogic.h"

#include <QDateTime>
#include <QLocale>
#include <QSignalSpy>
#include <QtTest>

#include "FakeHost.h"
#include "FakeSdk.h"
#include "NetInfoConfigParse.h"
#include "PluginFolder.h"
#include "TestLog.h"

namespace {

const QString kSource = QStringLiteral("<time>: ../../src/NetInfoUIExPlugin/NetInfoUILogic.cpp: ");

} // namespace

class tst_NetInfoUILogic : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void theInstanceIsSingleUntilDestroyed();
    void initRegistersTheCallback();
    void aFailedRegistrationIsOnlyLogged();
    void destroyUnregistersAndReleasesTheReader();
    void otherEventsAreIgnored();
    void anEventWithoutDataIsZero();
    void anEventWithoutAnInstanceIsZero();
    void aConnectedEventReportsTheLiveFigures();
    void aDisconnectedEventReportsZeros();
    void aFailingLiveReportEmitsNothing();
    void statisticsAreFetchedByKind_data();
    void statisticsAreFetchedByKind();
    void aFailingReportLeavesTheRecord();
    void theHistoryIsFetchedByKey();
    void aFailingHistoryLeavesTheRecord();
    void resetClearsTheCurrentType();
    void aFailingResetIsOne();
    void theLastResetIsInTheSystemsShortForm();
    void aFailingLastResetIsTrue();
    void durationIsAppended();
    void theSignalsSignatureIsFixed();

private:
    QScopedPointer<PluginFolder> m_folder;
    QScopedPointer<TestLog> m_log;
};

void tst_NetInfoUILogic::init()
{
    resetFakeHost();
    resetFakeSdk();
    m_folder.reset(new PluginFolder);
    m_folder->writeSwitches(PluginFolder::allSwitches());
    m_log.reset(new TestLog);
}

void tst_NetInfoUILogic::cleanup()
{
    NetInfoUILogic::Destroy();
    const QStringList problems = m_log->takeProblems();
    m_log.reset();
    QVERIFY2(problems.isEmpty(), qPrintable(problems.join(QLatin1Char(10))));
}

void tst_NetInfoUILogic::theInstanceIsSingleUntilDestroyed()
{
    NetInfoUILogic *const first = NetInfoUILogic::Instance();
    QCOMPARE(m_log->takeLines(),
             QStringList({ kSource + "Instance: Entered", kSource + "Instance: Exit" }));
    QCOMPARE(NetInfoUILogic::Instance(), first);
    QCOMPARE(int(first->GetConnectType()), 0);
    QVERIFY(!first->IsFunctionEnable(QStringLiteral("STATISTICS"))); // nothing is read before Init
    QCOMPARE(fakeSdk().registered, 0);
    first->SetCurrerentConnectType(VELQ_CONNECT_TYPE_WLAN);
    NetInfoUILogic::Destroy();
    NetInfoUILogic::Destroy();
    QCOMPARE(int(NetInfoUILogic::Instance()->GetConnectType()), 0);
}

void tst_NetInfoUILogic::initRegistersTheCallback()
{
    NetInfoUILogic *const source = NetInfoUILogic::Instance();
    m_log->takeLines();
    QCOMPARE(source->Init(), 0);
    QVERIFY(fakeSdkHasCallback());
    const QStringList lines = m_log->takeLines();
    const QString where
        = QStringLiteral("<time>: ../../src/NetInfoUIExPlugin/NetInfoUILogic.cpp: Init: ");
    QCOMPARE(lines.at(0),
             "========> " + where + "VELQ_Statistics_RegisterStatisticsCallbackEvent called");
    QCOMPARE(lines.at(1),
             "<======== " + where + "VELQ_Statistics_RegisterStatisticsCallbackEvent Success");
    QCOMPARE(lines.at(2),
             "<======== " + where + "VELQ_NetConnectSrv_RegisterNetConnectEvent called");
    QCOMPARE(lines.at(3), kSource + "getConfigData: Entered");
    QCOMPARE(lines.at(6),
             "========> " + kSource + "getConfigData: VELQ_DevSrv_GetCustomizeName called");
    QCOMPARE(lines.at(7),
             "<======== " + kSource + "getConfigData: VELQ_DevSrv_GetCustomizeName success");
    QCOMPARE(lines.at(8), kSource + "getConfigData: Exit");
    QCOMPARE(int(lines.size()), 9);
}

void tst_NetInfoUILogic::aFailedRegistrationIsOnlyLogged()
{
    fakeSdk().registerResult = 7;
    QCOMPARE(NetInfoUILogic::Instance()->Init(), 0);
    QVERIFY(m_log->takeLines().contains(
        "<======== " + kSource + "Init: VELQ_Statistics_RegisterStatisticsCallbackEvent Failed"));
    QVERIFY(NetInfoUILogic::Instance()->IsFunctionEnable(QStringLiteral("STATISTICS")));
}

void tst_NetInfoUILogic::destroyUnregistersAndReleasesTheReader()
{
    NetInfoUILogic::Instance()->Init();
    NetInfoConfigParse::GetInstance()->m_limitCfgs.append(NetInfoLimitCfg());
    m_log->takeLines();
    NetInfoUILogic::Destroy();
    QVERIFY(!fakeSdkHasCallback());
    QCOMPARE(m_log->takeLines(),
             QStringList({ kSource + "Destroy: Entered", kSource + "UnregSDK: Entered",
                           kSource + "UnregSDK: Exit", kSource + "Destroy: Exit" }));
    QVERIFY(NetInfoConfigParse::GetInstance()->m_limitCfgs.isEmpty());
    NetInfoConfigParse::OnDestroy();
}

void tst_NetInfoUILogic::otherEventsAreIgnored()
{
    NetInfoUILogic *const source = NetInfoUILogic::Instance();
    QSignalSpy spy(source, &NetInfoUILogic::statisticsChanged);
    unsigned char data[8] = { 1 };
    m_log->takeLines();
    for (const int event : { 7999, 8001, 0, -8000 }) {
        QCOMPARE(NetInfoUILogic::StatisticsEventCallBack(event, data), 1);
        QCOMPARE(
            m_log->takeLines(),
            QStringList(
                { kSource + QStringLiteral("StatisticsEventCallBack: CBNotify-%1 ").arg(event) }));
    }
    QCOMPARE(NetInfoUILogic::StatisticsEventCallBack(1, nullptr), 1);
    QCOMPARE(int(spy.count()), 0);
    QVERIFY(fakeSdk().calls.empty());
}

void tst_NetInfoUILogic::anEventWithoutDataIsZero()
{
    QSignalSpy spy(NetInfoUILogic::Instance(), &NetInfoUILogic::statisticsChanged);
    QCOMPARE(NetInfoUILogic::StatisticsEventCallBack(8000, nullptr), 0);
    QCOMPARE(int(spy.count()), 0);
}

void tst_NetInfoUILogic::anEventWithoutAnInstanceIsZero()
{
    unsigned char data[8] = { 1 };
    QCOMPARE(NetInfoUILogic::StatisticsEventCallBack(8000, data), 0);
    QCOMPARE(m_log->takeLines(), // and the callback made none
             QStringList({ kSource + "StatisticsEventCallBack: CBNotify-8000 " }));
}

void tst_NetInfoUILogic::aConnectedEventReportsTheLiveFigures()
{
    NetInfoUILogic *const source = NetInfoUILogic::Instance();
    source->Init();
    QSignalSpy spy(source, &NetInfoUILogic::statisticsChanged);
    FakeReport &live = fakeSdk().reports[0];
    live.uploadSpeed = 4000000000u;
    live.downloadSpeed = 22;
    live.upload = Q_UINT64_C(0xffffffffffffffff);
    live.download = 44;
    live.time = 3725;
    m_log->takeLines();
    QCOMPARE(sendStatisticsEvent(true, 1), 1);
    QCOMPARE(int(spy.count()), 1);
    const QVariantList args = spy.takeFirst();
    QCOMPARE(args.at(0).toULongLong(), 4000000000ull);
    QCOMPARE(args.at(1).toULongLong(), 22ull);
    QCOMPARE(args.at(2).toULongLong(), ~0ull);
    QCOMPARE(args.at(3).toULongLong(), 44ull);
    QCOMPARE(args.at(4).toString(), QStringLiteral("01:02:05"));
    QCOMPARE(int(source->GetConnectType()), 1);
    QCOMPARE(int(fakeSdk().calls.size()), 1);
    QCOMPARE(fakeSdk().calls[0].kind, 0);
    QCOMPARE(fakeSdk().calls[0].type, 1);
    QVERIFY(fakeSdk().calls[0].cleared);
    QCOMPARE(m_log->takeLines(),
             QStringList({ kSource + "StatisticsEventCallBack: CBNotify-8000 ",
                           kSource + "convertTimeToString: Entered",
                           kSource + "StatisticsEventCallBack: Exit" }));
}

void tst_NetInfoUILogic::aDisconnectedEventReportsZeros()
{
    NetInfoUILogic *const source = NetInfoUILogic::Instance();
    source->Init();
    QSignalSpy spy(source, &NetInfoUILogic::statisticsChanged);
    fakeSdk().reports[0].upload = 5;
    QCOMPARE(sendStatisticsEvent(false, 1), 1);
    QCOMPARE(int(spy.count()), 1);
    QCOMPARE(spy.at(0),
             QVariantList({ QVariant::fromValue(ulong(0)), QVariant::fromValue(ulong(0)),
                            qulonglong(0), qulonglong(0), QStringLiteral("00:00:00") }));
    QCOMPARE(int(source->GetConnectType()), 0); // the type of no connection is not taken over
    QVERIFY(fakeSdk().calls.empty());
}

void tst_NetInfoUILogic::aFailingLiveReportEmitsNothing()
{
    NetInfoUILogic *const source = NetInfoUILogic::Instance();
    source->Init();
    QSignalSpy spy(source, &NetInfoUILogic::statisticsChanged);
    fakeSdk().reports[0].result = 1;
    m_log->takeLines();
    QCOMPARE(sendStatisticsEvent(true), 1);
    QCOMPARE(int(spy.count()), 0);
    QCOMPARE(m_log->takeLines().last(), kSource + "StatisticsEventCallBack: Exit");
}

void tst_NetInfoUILogic::statisticsAreFetchedByKind_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("kind");
    QTest::newRow("daily") << 0 << 1;
    QTest::newRow("weekly") << 1 << 3;
    QTest::newRow("monthly") << 2 << 4;
    QTest::newRow("yearly") << 3 << 5;
    QTest::newRow("any other is daily") << 9 << 1;
}

void tst_NetInfoUILogic::statisticsAreFetchedByKind()
{
    QFETCH(int, type);
    QFETCH(int, kind);
    fakeSdk().reports[kind].upload = 11;
    fakeSdk().reports[kind].download = 22;
    fakeSdk().reports[kind].time = -33;
    NetInfoUILogic *const source = NetInfoUILogic::Instance();
    source->SetCurrerentConnectType(VELQ_CONNECT_TYPE_WLAN);
    m_log->takeLines();
    NetInfoData data = {};
    QCOMPARE(source->GetStatistics(_enNetInfoType(type), data), 0);
    QCOMPARE(data.ullUpData, quint64(11));
    QCOMPARE(data.ullDownData, quint64(22));
    QCOMPARE(data.llTime, qint64(-33));
    QCOMPARE(fakeSdk().calls[0].kind, kind);
    QCOMPARE(fakeSdk().calls[0].type, 1);
    QVERIFY(fakeSdk().calls[0].cleared);
    QCOMPARE(m_log->takeLines(), QStringList({ kSource + "GetStatistics: Entered" }));
}

void tst_NetInfoUILogic::aFailingReportLeavesTheRecord()
{
    fakeSdk().reports[1].result = -3;
    NetInfoUILogic *const source = NetInfoUILogic::Instance();
    m_log->takeLines();
    NetInfoData data = { 1, 2, 3 };
    QCOMPARE(source->GetStatistics(NET_INFO_DAILY, data), -3);
    QCOMPARE(data.ullUpData, quint64(1));
    QCOMPARE(data.ullDownData, quint64(2));
    QCOMPARE(data.llTime, qint64(3));
    QCOMPARE(m_log->takeLines(),
             QStringList({ kSource + "GetStatistics: Entered",
                           kSource + "GetStatistics: VELQ_Statistics_GetReport Error" }));
}

void tst_NetInfoUILogic::theHistoryIsFetchedByKey()
{
    fakeSdk().history.upload = 1;
    fakeSdk().history.download = 2;
    fakeSdk().history.time = 3;
    NetInfoData data = {};
    NetInfoUILogic::Instance()->GetHistrorySpecData(77, data);
    QCOMPARE(data.ullUpData, quint64(1));
    QCOMPARE(data.ullDownData, quint64(2));
    QCOMPARE(data.llTime, qint64(3));
    NetInfoUILogic::Instance()->GetHistrorySpecData(-77, data);
    const std::vector<unsigned long long> keys = { 77, 0 };
    QVERIFY(fakeSdk().historyKeys == keys);
    QVERIFY(fakeSdk().historyCleared);
}

void tst_NetInfoUILogic::aFailingHistoryLeavesTheRecord()
{
    fakeSdk().history.result = 1;
    NetInfoUILogic *const source = NetInfoUILogic::Instance();
    m_log->takeLines();
    NetInfoData data = { 1, 2, 3 };
    source->GetHistrorySpecData(0, data);
    QCOMPARE(data.ullDownData, quint64(2));
    QCOMPARE(m_log->takeLines(), QStringList());
}

void tst_NetInfoUILogic::resetClearsTheCurrentType()
{
    NetInfoUILogic *const source = NetInfoUILogic::Instance();
    source->SetCurrerentConnectType(VELQ_CONNECT_TYPE_WLAN);
    QCOMPARE(source->ResetStatistics(), 0);
    QVERIFY(fakeSdk().resets == std::vector<int>({ 1 }));
}

void tst_NetInfoUILogic::aFailingResetIsOne()
{
    fakeSdk().resetResult = 99;
    NetInfoUILogic *const source = NetInfoUILogic::Instance();
    m_log->takeLines();
    QCOMPARE(source->ResetStatistics(), 1);
    QCOMPARE(m_log->takeLines(),
             QStringList({ kSource + "ResetStatistics: VELQ_Statistics_GetReport Error" }));
}

void tst_NetInfoUILogic::theLastResetIsInTheSystemsShortForm()
{
    fakeSdk().reports[2].lastReset = 4102444800u; // 2100: beyond 31 bits
    NetInfoUILogic *const source = NetInfoUILogic::Instance();
    source->SetCurrerentConnectType(VELQ_CONNECT_TYPE_WLAN);
    m_log->takeLines();
    QString text;
    QCOMPARE(source->GetLastResetTime(text), false);
    const QDateTime time(QDate(2100, 1, 1), QTime(0, 0)); // the tests run in UTC
    QCOMPARE(text, QLocale::system().toString(time, QLocale::ShortFormat));
    QVERIFY(!text.isEmpty());
    QCOMPARE(fakeSdk().calls[0].kind, 2);
    QCOMPARE(fakeSdk().calls[0].type, 1);
    QVERIFY(fakeSdk().calls[0].cleared);
    QCOMPARE(
        m_log->takeLines(),
        QStringList({ kSource + "GetLastResetTime: Entered", kSource + "GetLastResetTime: Exit" }));
}

void tst_NetInfoUILogic::aFailingLastResetIsTrue()
{
    fakeSdk().reports[2].result = 1;
    NetInfoUILogic *const source = NetInfoUILogic::Instance();
    m_log->takeLines();
    QString text = QStringLiteral("before");
    QCOMPARE(source->GetLastResetTime(text), true);
    QCOMPARE(text, QStringLiteral("before"));
    QCOMPARE(m_log->takeLines(),
             QStringList({ kSource + "GetLastResetTime: Entered",
                           kSource + "GetLastResetTime: VELQ_Statistics_GetReport Error",
                           kSource + "GetLastResetTime: Exit" }));
}

void tst_NetInfoUILogic::durationIsAppended()
{
    QString text = QStringLiteral("since ");
    QCOMPARE(NetInfoUILogic::Instance()->convertTimeToString(61, text), 0);
    QCOMPARE(text, QStringLiteral("since 00:01:01"));
}

void tst_NetInfoUILogic::theSignalsSignatureIsFixed()
{
    const QMetaObject &meta = NetInfoUILogic::staticMetaObject;
    const int index
        = meta.indexOfSignal("statisticsChanged(ulong,ulong,qulonglong,qulonglong,QString)");
    QVERIFY(index >= 0);
    const QList<QByteArray> names
        = { "ulUpSpeed", "ulDownSpeed", "ullUpData", "ullDownData", "stringTime" };
    QCOMPARE(meta.method(index).parameterNames(), names);
}

QTEST_GUILESS_MAIN(tst_NetInfoUILogic)
#include "tst_netinfouilogic.moc"
