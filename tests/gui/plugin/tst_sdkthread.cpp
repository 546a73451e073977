// Events from a thread of the SDK while the GUI works, and while the plug-in is destroyed.

#include <QApplication>
#include <QTreeWidget>
#include <QtTest>

#include <atomic>
#include <thread>

#include "NetInfoUILogic.h"
#include "PluginTest.h"

namespace {

constexpr int kEvents = 10000;

} // namespace

class tst_SdkThread : public PluginTest
{
    Q_OBJECT
private slots:
    void tenThousandEventsDuringGuiWork();
    void eventsDuringDestroy();
};

void tst_SdkThread::tenThousandEventsDuringGuiWork()
{
    CNetInfoUIService *const service = start();
    show();
    widget("NetInfoUIPlugin_WidgetParent")->show();
    fakeSdk().reports[0].time = 3725;
    fakeSdk().reports[0].upload = 4711;
    const Qt::HANDLE gui = QThread::currentThreadId();
    int received = 0;
    bool onGuiThread = true;
    connect(NetInfoUILogic::Instance(), &NetInfoUILogic::statisticsChanged, this, [&] {
        ++received;
        onGuiThread = onGuiThread && QThread::currentThreadId() == gui;
    });
    std::thread sdk([] {
        for (int i = 0; i < kEvents; ++i)
            sendStatisticsEvent(true, i % 2);
    });
    while (received < kEvents) {
        service->Notify(received % 64 == 0 ? 320 : 837, 0, 0);
        NetInfoUILogic::Instance()->GetConnectType();
        QApplication::processEvents(QEventLoop::AllEvents, 50);
        m_log->dropLines();
    }
    sdk.join();
    QCOMPARE(received, kEvents);
    QVERIFY(onGuiThread);
    QVERIFY(row(QStringLiteral("IDS_TREE_TIME_TRANSFER 01:02:05")));
    QVERIFY(row(QStringLiteral("IDS_TREE_DATA 4711 B"), QStringLiteral("IDS_TREE_UPLOAD")));
}

void tst_SdkThread::eventsDuringDestroy()
{
    for (int round = 0; round < 50; ++round) {
        start();
        std::atomic<bool> stop { false };
        std::atomic<int> sent { 0 };
        std::thread sdk([&] {
            while (!stop) {
                sendStatisticsEvent(true, 1);
                ++sent;
            }
        });
        while (sent < 20)
            QApplication::processEvents();
        CNetInfoUIService::Destroy();
        QVERIFY(!fakeSdkHasCallback());
        QCOMPARE(sendStatisticsEvent(true), -1);
        stop = true;
        sdk.join();
        m_log->dropLines();
    }
}

QTEST_MAIN(tst_SdkThread)
#include "tst_sdkthread.moc"
