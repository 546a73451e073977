#include <host/velq.h>
#include <host/velq_extension.h>

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <array>

#include "SdkReport.h"

//! The demo through the exported functions.
class tst_VelqDemo : public QObject
{
    Q_OBJECT
private slots:
    void theDemoShowsALivelyConnection();
    void storedPeriodsAreFilled();
    void aResetClearsThem();
    void aDisconnectTakesTheConnectionDown();
    void nothingIsWritten();

private:
    QTemporaryDir m_folder;
};

void tst_VelqDemo::theDemoShowsALivelyConnection()
{
    QCOMPARE(VELQ_StoreSrv_SetDirectory(m_folder.path().toUtf8().constData()), 0);
    QCOMPARE(VELQ_DevSrv_StartDemo(), 0);
    QTRY_VERIFY_WITH_TIMEOUT(sdkReport(0).downloadSpeed() > 0, 4000);
    const SdkReport live = sdkReport(0);
    QVERIFY(live.uploadSpeed() > 0);
    QVERIFY(live.download() > 0);
    QVERIFY(live.seconds() >= 1);
    std::array<char, 16> name {};
    QCOMPARE(VELQ_DevSrv_GetInterface(name.data(), int(name.size())), 0);
    QCOMPARE(QByteArray(name.data()), QByteArray("demo0"));
    VELQ_Counters counters {};
    QCOMPARE(VELQ_DevSrv_GetCounters(&counters), 0);
    QVERIFY(counters.firstDownload > 0);
    QVERIFY(counters.lastDownload - counters.firstDownload >= live.download());
    VELQ_ConnectionStatus *list = nullptr;
    int count = 0;
    QCOMPARE(VELQ_NetConnectSrv_GetConnectionStatus(&list, &count), 0);
    QCOMPARE(count, 1);
    QVERIFY(list);
    QCOMPARE(VELQ_NetConnectSrv_ReleaseConnectionStatus(list), 0);
    QCOMPARE(sdkReport(0, 1).download(), quint64(0)); // the demo is no Wi-Fi
}

void tst_VelqDemo::storedPeriodsAreFilled()
{
    const quint64 live = sdkReport(0).download();
    QVERIFY(sdkReport(1).download() >= live);
    QVERIFY(sdkReport(4).download() >= sdkReport(1).download());
    QVERIFY(sdkReport(5).download() >= sdkReport(4).download());
    const SdkReport all = sdkHistory(0);
    QCOMPARE(all.result, 0);
    QVERIFY(all.download() > sdkReport(5).download());
    QVERIFY(all.download() > 1000000000);
    QVERIFY(sdkReport(2).lastReset() > 0);
}

void tst_VelqDemo::aResetClearsThem()
{
    QCOMPARE(VELQ_Statistics_Reset(VELQ_CONNECT_TYPE_DIALUP), 0);
    for (const int kind : { 0, 1, 3, 4, 5 })
        QVERIFY(sdkReport(kind).download() < 20000000); // two seconds at most
    QVERIFY(sdkHistory(0).download() < 20000000);
}

void tst_VelqDemo::aDisconnectTakesTheConnectionDown()
{
    QCOMPARE(VELQ_NetConnectSrv_Disconnect(), int(VELQ_DISCONNECT_DONE));
    VELQ_ConnectionStatus *list = nullptr;
    int count = -1;
    QCOMPARE(VELQ_NetConnectSrv_GetConnectionStatus(&list, &count), 0);
    QCOMPARE(count, 0);
    QVERIFY(!list);
    QCOMPARE(sdkReport(0).download(), quint64(0));
    QCOMPARE(VELQ_NetConnectSrv_Disconnect(), int(VELQ_DISCONNECT_NO_CONNECTION));
}

void tst_VelqDemo::nothingIsWritten()
{
    QVERIFY(QDir(m_folder.path()).isEmpty());
    std::array<char, 64> problem { 'x' };
    QCOMPARE(VELQ_StoreSrv_GetProblem(problem.data(), int(problem.size())), 0);
    QCOMPARE(problem.front(), '\0');
}

QTEST_GUILESS_MAIN(tst_VelqDemo)
#include "tst_velqdemo.moc"
