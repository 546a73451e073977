#include "NetInfoUIService.h"

#include <QApplication>
#include <QTime>
#include <QTreeWidget>
#include <QtTest>

#include "NetInfoUILogic.h"
#include "PluginTest.h"

class tst_LiveUpdate : public PluginTest
{
    Q_OBJECT
private slots:
    void aReportRewritesEveryRow();
    void theSuffixFollowsTheConnectType_data();
    void theSuffixFollowsTheConnectType();
    void theSuffixNeedsNoPluginHere();
    void translatingNeedsThePluginForASuffix();
    void withoutATreeAReportIsRefused();
    void theTraceOfAReport();
    void storedFiguresAreFetchedInOrder();
    void aFailedFetchLeavesTheRows();
    void theHistoryIsAskedForZero();
    void missingRowsAreRefused();
    void wideRowsWidenTheColumn();
    void aDeclinedResetChangesNothing_data();
    void aDeclinedResetChangesNothing();
    void aConfirmedResetClearsAndReloads();
    void theHostMayDestroyWhileTheQuestionIsOpen();
    void translatingKeepsTheLastFigures();
    void iconsFollowTheLayoutDirection();
    void aFailingLastResetKeepsTheKnownTime();
    void theSlotsSignaturesAreFixed();
};

void tst_LiveUpdate::aReportRewritesEveryRow()
{
    start();
    FakeReport &live = fakeSdk().reports[0];
    live.uploadSpeed = 1;
    live.upload = 2;
    live.downloadSpeed = 3;
    live.download = 4;
    live.time = 5;
    for (const int kind : { 1, 4, 5 }) {
        fakeSdk().reports[kind].upload = quint64(kind) * 10;
        fakeSdk().reports[kind].download = quint64(kind) * 10 + 1;
    }
    fakeSdk().reports[2].lastReset = 86400;
    sendStatisticsEvent(true);
    const QString reset = QLocale::system().toString(QDateTime(QDate(1970, 1, 2), QTime(0, 0)),
                                                     QLocale::ShortFormat);
    QCOMPARE(rows(),
             QStringList(
                 { "IDS_TREE_TRANSFER IDS_DIALUP_TRANSFER", "  IDS_TREE_TIME_TRANSFER 00:00:05",
                   "  IDS_TREE_UPLOAD", "    IDS_TREE_SPEED 1 Bps", "    IDS_TREE_DATA 2 B",
                   "  IDS_TREE_DOWNLOAD", "    IDS_TREE_SPEED 3 Bps", "    IDS_TREE_DATA 4 B",
                   "IDS_TREE_STATISTICS", "  IDS_TREE_TIME_LASTRESET " + reset, "  IDS_TREE_DAILY",
                   "    IDS_TREE_UPLOADED_DATA 10 B", "    IDS_TREE_DOWNLOADED_DATA 11 B",
                   "  IDS_TREE_MONTHLY", "    IDS_TREE_UPLOADED_DATA 40 B",
                   "    IDS_TREE_DOWNLOADED_DATA 41 B", "  IDS_TREE_YEARLY",
                   "    IDS_TREE_UPLOADED_DATA 50 B", "    IDS_TREE_DOWNLOADED_DATA 51 B" }));
}

void tst_LiveUpdate::theSuffixFollowsTheConnectType_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("text");
    QTest::newRow("1 is wireless") << 1 << "IDS_TREE_TRANSFER IDS_WLAN_TRANSFER";
    QTest::newRow("0 is dial-up") << 0 << "IDS_TREE_TRANSFER IDS_DIALUP_TRANSFER";
    QTest::newRow("2 is dial-up") << 2 << "IDS_TREE_TRANSFER IDS_DIALUP_TRANSFER";
    QTest::newRow("-1 is dial-up") << -1 << "IDS_TREE_TRANSFER IDS_DIALUP_TRANSFER";
}

void tst_LiveUpdate::theSuffixFollowsTheConnectType()
{
    QFETCH(int, type);
    start();
    sendStatisticsEvent(true, type);
    QTEST(rows().first(), "text");
}

void tst_LiveUpdate::theSuffixNeedsNoPluginHere()
{
    fakeHost().hasContainer = false;
    start();
    QCOMPARE(rows().first(), QStringLiteral("IDS_TREE_TRANSFER"));
    sendStatisticsEvent(false);
    QCOMPARE(rows().first(), QStringLiteral("IDS_TREE_TRANSFER IDS_DIALUP_TRANSFER"));
}

void tst_LiveUpdate::translatingNeedsThePluginForASuffix()
{
    CNetInfoUIService *const service = start();
    sendStatisticsEvent(true, 1);
    service->Notify(320, 0, 0);
    QCOMPARE(rows().first(), QStringLiteral("IDS_TREE_TRANSFER"));
    fakeHost().availablePlugins << QStringLiteral("D0B83E56-19F2-4C6A-B7E4-05A9C31D8F62");
    service->Notify(320, 0, 0);
    QCOMPARE(rows().first(), QStringLiteral("IDS_TREE_TRANSFER IDS_WLAN_TRANSFER"));
}

void tst_LiveUpdate::withoutATreeAReportIsRefused()
{
    CNetInfoUIService *const service = CNetInfoUIService::instance();
    m_log->takeLines();
    service->onStatisticsChanged(1, 2, 3, 4, QStringLiteral("00:00:01"));
    const QStringList lines = m_log->takeLines();
    QCOMPARE(int(lines.size()), 2);
    QCOMPARE(lines.at(0), "<time>: " + kSource + ": onStatisticsChanged: Entered");
    const QRegularExpression refused(QStringLiteral("^Arg is NULL: <time>: ")
                                     + QRegularExpression::escape(kSource)
                                     + QStringLiteral(": onStatisticsChanged \\d+$"));
    QVERIFY2(refused.match(lines.at(1)).hasMatch(), qPrintable(lines.at(1)));
}

void tst_LiveUpdate::theTraceOfAReport()
{
    CNetInfoUIService *const service = start();
    service->onStatisticsChanged(1, 2, 3, 4, QStringLiteral("00:00:01"));
    const QStringList lines = m_log->takeLines();
    QCOMPARE(lines.first(), "<time>: " + kSource + ": onStatisticsChanged: Entered");
    QCOMPARE(lines.last(), "<time>: " + kSource + ": onStatisticsChanged: Exit");
    QVERIFY(row(QStringLiteral("IDS_TREE_TIME_TRANSFER 00:00:01")));
}

void tst_LiveUpdate::storedFiguresAreFetchedInOrder()
{
    CNetInfoUIService *const service = start();
    fakeSdk().calls.clear();
    QVERIFY(service->updateStoredStatistics());
    QList<int> kinds;
    for (const FakeReportCall &call : fakeSdk().calls)
        kinds << call.kind;
    QCOMPARE(kinds, QList<int>({ 1, 4, 5, 3, 2 })); // daily, monthly, yearly, weekly, last reset
}

void tst_LiveUpdate::aFailedFetchLeavesTheRows()
{
    CNetInfoUIService *const service = start();
    const QStringList before = rows();
    fakeSdk().reports[1].upload = 77;
    fakeSdk().reports[2].lastReset = 86400;
    fakeSdk().reports[4].result = 1; // monthly, selector 2
    fakeSdk().calls.clear();
    m_log->takeLines();
    QVERIFY(!service->updateStoredStatistics());
    QCOMPARE(rows(), before);
    QCOMPARE(int(fakeSdk().calls.size()), 2); // the daily record was fetched, nothing after monthly
    QCOMPARE(m_log->takeLines().last(),
             "<time>: " + kSource
                 + ": updateStoredStatistics: Not able to get the stats from the Logic");
    service->updateStatisticsStrings(); // shows the record as it is now
    QVERIFY(row(QStringLiteral("IDS_TREE_UPLOADED_DATA 77 B"), QStringLiteral("IDS_TREE_DAILY")));
}

void tst_LiveUpdate::theHistoryIsAskedForZero()
{
    CNetInfoUIService *const service = start();
    fakeSdk().historyKeys.clear();
    service->updateStoredStatistics();
    QVERIFY(fakeSdk().historyKeys == std::vector<unsigned long long>({ 0 }));
    QVERIFY(!service->GetBeforeNowThreeMonthlyTime().isValid()); // no start date is set
}

void tst_LiveUpdate::missingRowsAreRefused()
{
    CNetInfoUIService *const service = CNetInfoUIService::instance();
    m_log->takeLines();
    QVERIFY(!service->updateStoredStatistics());
    QCOMPARE(m_log->takeLines(),
             QStringList({ "<time>: " + kSource + ": updateStoredStatistics: invalid args" }));
}

void tst_LiveUpdate::wideRowsWidenTheColumn()
{
    fakeHost().language = QString(60, QLatin1Char('m'));
    start();
    QCOMPARE(tree()->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    sendStatisticsEvent(true);
    QVERIFY(tree()->columnWidth(0) > 280);
    QCOMPARE(tree()->horizontalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
}

void tst_LiveUpdate::aDeclinedResetChangesNothing_data()
{
    QTest::addColumn<int>("answer");
    QTest::newRow("no") << 65536;
    QTest::newRow("closed") << 0;
    QTest::newRow("next to yes") << 1023;
}

void tst_LiveUpdate::aDeclinedResetChangesNothing()
{
    QFETCH(int, answer);
    CNetInfoUIService *const service = start();
    const QStringList before = rows();
    fakeHost().messageAnswer = answer;
    fakeSdk().reports[1].upload = 5;
    fakeSdk().calls.clear();
    service->onResetButtonClicked();
    QCOMPARE(m_log->takeLines(),
             QStringList({ "<time>: " + kSource + ": onResetButtonClicked: called" }));
    QCOMPARE(int(fakeHost().messages.size()), 1);
    const FakeMessage message = fakeHost().messages.first();
    QCOMPARE(message.title, QStringLiteral("IDS_CONFIRM"));
    QCOMPARE(message.text, QStringLiteral("IDS_RESET_QUERY"));
    QCOMPARE(message.buttons, QStringList({ "IDS_YES", "IDS_NO", QString() }));
    QVERIFY(fakeSdk().resets.empty());
    QVERIFY(fakeSdk().calls.empty());
    QCOMPARE(rows(), before);
}

void tst_LiveUpdate::aConfirmedResetClearsAndReloads()
{
    CNetInfoUIService *const service = start();
    sendStatisticsEvent(true, 1);
    fakeHost().messageAnswer = 1024;
    fakeSdk().reports[1].upload = 5;
    service->resetStatistics();
    QVERIFY(fakeSdk().resets == std::vector<int>({ 1 }));
    QVERIFY(row(QStringLiteral("IDS_TREE_UPLOADED_DATA 5 B"), QStringLiteral("IDS_TREE_DAILY")));
}

void tst_LiveUpdate::theHostMayDestroyWhileTheQuestionIsOpen()
{
    CNetInfoUIService *const service = start();
    show();
    fakeHost().messageAnswer = 1024;
    fakeHost().duringMessage = [] { CNetInfoUIService::Destroy(); };
    service->onResetButtonClicked();
    QVERIFY(fakeSdk().resets.empty());
    QVERIFY(!tree());
}

void tst_LiveUpdate::translatingKeepsTheLastFigures()
{
    CNetInfoUIService *const service = start();
    FakeReport &live = fakeSdk().reports[0];
    live.uploadSpeed = 11;
    live.upload = 12;
    live.downloadSpeed = 13;
    live.download = 14;
    live.time = 15;
    fakeSdk().reports[5].download = 16;
    sendStatisticsEvent(true);
    live = FakeReport();
    fakeHost().language = QStringLiteral(".fr");
    service->Notify(320, 0, 0);
    const QStringList expected = { "  IDS_TREE_TIME_TRANSFER.fr 00:00:15",
                                   "    IDS_TREE_SPEED.fr 11 Bps",
                                   "    IDS_TREE_DATA.fr 12 B",
                                   "    IDS_TREE_SPEED.fr 13 Bps",
                                   "    IDS_TREE_DATA.fr 14 B",
                                   "    IDS_TREE_DOWNLOADED_DATA.fr 16 B",
                                   "IDS_TREE_STATISTICS.fr",
                                   "  IDS_TREE_YEARLY.fr" };
    for (const QString &text : expected)
        QVERIFY2(rows().contains(text), qPrintable(text));
}

void tst_LiveUpdate::iconsFollowTheLayoutDirection()
{
    for (int i = 1; i <= 9; ++i)
        m_folder->writeIcon(QStringLiteral("Icon_0%1").arg(i), Qt::red, Qt::blue);
    CNetInfoUIService *const service = start();
    const auto leftColours = [this] {
        QStringList colours;
        for (QTreeWidgetItemIterator it(tree()); *it; ++it)
            colours << (*it)->icon(0).pixmap(16, 16).toImage().pixelColor(2, 8).name();
        colours.removeDuplicates();
        return colours;
    };
    QCOMPARE(leftColours(), QStringList(QColor(Qt::red).name()));
    QApplication::setLayoutDirection(Qt::RightToLeft);
    service->Notify(320, 0, 0);
    QCOMPARE(leftColours(), QStringList(QColor(Qt::blue).name()));
}

void tst_LiveUpdate::aFailingLastResetKeepsTheKnownTime()
{
    fakeSdk().reports[2].lastReset = 86400;
    CNetInfoUIService *const service = start();
    const QString known = row(QStringLiteral("IDS_TREE_TIME_LASTRESET"))->text(0);
    fakeSdk().reports[2].result = 1;
    service->Notify(320, 0, 0);
    QCOMPARE(row(QStringLiteral("IDS_TREE_TIME_LASTRESET"))->text(0), known);
}

void tst_LiveUpdate::theSlotsSignaturesAreFixed()
{
    for (const char *slot :
         { "onStatisticsChanged(ulong,ulong,qulonglong,qulonglong,QString)",
           "onResetButtonClicked()", "resetStatistics()", "expandAll()", "collapseAll()",
           "showTreeContextMenu(QPoint)", "movedSplitter(int,int)" })
        QVERIFY2(CNetInfoUIService::staticMetaObject.indexOfSlot(slot) >= 0, slot);
}

QTEST_MAIN(tst_LiveUpdate)
#include "tst_liveupdate.moc"
