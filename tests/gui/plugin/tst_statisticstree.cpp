#include "NetInfoUIService.h"

#include <QAction>
#include <QHeaderView>
#include <QLabel>
#include <QTreeWidget>
#include <QtTest>

#include "NetInfoUILogic.h"
#include "PluginTest.h"

namespace {

const QString kDialup = QStringLiteral("D0B83E56-19F2-4C6A-B7E4-05A9C31D8F62");

//! Pixels that \a item's row needs, \a depth levels below the top.
int requiredBy(const QTreeWidget *tree, const QTreeWidgetItem *item, int depth)
{
    const QFontMetrics metrics(item->data(0, Qt::FontRole).value<QFont>());
    return metrics.horizontalAdvance(item->text(0)) + tree->indentation() * (depth + 2);
}

} // namespace

class tst_StatisticsTree : public PluginTest
{
    Q_OBJECT
private slots:
    void theTreeReadsAsAWhole();
    void aDialupPluginNamesTheTransfer();
    void theTreeIsSetUp();
    void everyNodeIsExpandedAndHasItsIcon();
    void aSwitchHidesItsBranch_data();
    void aSwitchHidesItsBranch();
    void withoutTransferTimeTheRowDoesNotExist();
    void withoutASourceTheBuildersStop();
    void theColumnIs280AtFirst();
    void buildersDoubleNothing();
    void theBoundaryIsExact();
    void upTo280NothingWidens();
    void from281TheColumnWidens();
    void ancestorsCountAsIndentation();
    void theColumnNeverShrinks();
    void enableScrollFillsTheTree();
    void theNoteReplacesTheMeters();
    void theNoteNeedsItsMeters();
    void theNoteFollowsItsSwitch();
    void theNoteFollowsTheLanguage();
};

void tst_StatisticsTree::theTreeReadsAsAWhole()
{
    start();
    const QString reset
        = QLocale::system().toString(QDateTime::fromSecsSinceEpoch(0), QLocale::ShortFormat);
    QCOMPARE(
        rows(),
        QStringList({ "IDS_TREE_TRANSFER", "  IDS_TREE_TIME_TRANSFER 00:00:00", "  IDS_TREE_UPLOAD",
                      "    IDS_TREE_SPEED 0 Bps", "    IDS_TREE_DATA 0 B", "  IDS_TREE_DOWNLOAD",
                      "    IDS_TREE_SPEED 0 Bps", "    IDS_TREE_DATA 0 B", "IDS_TREE_STATISTICS",
                      "  IDS_TREE_TIME_LASTRESET " + reset, "  IDS_TREE_DAILY",
                      "    IDS_TREE_UPLOADED_DATA 0 B", "    IDS_TREE_DOWNLOADED_DATA 0 B",
                      "  IDS_TREE_MONTHLY", "    IDS_TREE_UPLOADED_DATA 0 B",
                      "    IDS_TREE_DOWNLOADED_DATA 0 B", "  IDS_TREE_YEARLY",
                      "    IDS_TREE_UPLOADED_DATA 0 B", "    IDS_TREE_DOWNLOADED_DATA 0 B" }));
}

void tst_StatisticsTree::aDialupPluginNamesTheTransfer()
{
    fakeHost().availablePlugins << kDialup;
    start();
    QCOMPARE(rows().first(), QStringLiteral("IDS_TREE_TRANSFER IDS_DIALUP_TRANSFER"));
}

void tst_StatisticsTree::theTreeIsSetUp()
{
    start();
    QVERIFY(tree()->isHeaderHidden());
    QVERIFY(!tree()->rootIsDecorated());
    QCOMPARE(tree()->textElideMode(), Qt::ElideNone);
    QCOMPARE(tree()->selectionBehavior(), QAbstractItemView::SelectItems);
    QCOMPARE(tree()->contextMenuPolicy(), Qt::CustomContextMenu);
    QVERIFY(dynamic_cast<GridDelegateLayout *>(tree()->itemDelegate()));
    QCOMPARE(tree()->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QCOMPARE(tree()->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
}

void tst_StatisticsTree::everyNodeIsExpandedAndHasItsIcon()
{
    m_folder->useShippedFiles();
    const QList<QColor> colours
        = { Qt::red,    Qt::green,   Qt::blue,      Qt::cyan,    Qt::magenta,
            Qt::yellow, Qt::darkRed, Qt::darkGreen, Qt::darkBlue };
    for (int i = 0; i < 9; ++i)
        m_folder->writeIcon(QStringLiteral("Icon_0%1").arg(i + 1), colours.at(i), colours.at(i));
    start();
    const QList<QPair<QString, int>> expected
        = { { "IDS_TREE_TRANSFER", 1 },       { "IDS_TREE_TIME_TRANSFER", 9 },
            { "IDS_TREE_UPLOAD", 2 },         { "IDS_TREE_DOWNLOAD", 3 },
            { "IDS_TREE_SPEED", 9 },          { "IDS_TREE_DATA", 9 },
            { "IDS_TREE_STATISTICS", 4 },     { "IDS_TREE_TIME_LASTRESET", 9 },
            { "IDS_TREE_DAILY", 6 },          { "IDS_TREE_MONTHLY", 7 },
            { "IDS_TREE_YEARLY", 8 },         { "IDS_TREE_UPLOADED_DATA", 9 },
            { "IDS_TREE_DOWNLOADED_DATA", 9 } };
    const auto check = [&] {
        for (const auto &pair : expected) {
            const QTreeWidgetItem *const item = row(pair.first);
            QVERIFY(item);
            QVERIFY(item->isExpanded());
            QCOMPARE(item->icon(0).pixmap(16, 16).toImage().pixelColor(8, 8),
                     colours.at(pair.second - 1));
        }
    };
    check(); // as built, after a report, after a change of the language
    sendStatisticsEvent(true);
    check();
    CNetInfoUIService::instance()->Notify(320, 0, 0);
    check();
}

void tst_StatisticsTree::aSwitchHidesItsBranch_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("gone");
    QTest::addColumn<int>("left");
    QTest::newRow("transfer") << "TRANSFER"
                              << "IDS_TREE_TRANSFER" << 11;
    QTest::newRow("upload") << "TRANSFERUPLOAD"
                            << "IDS_TREE_UPLOAD" << 16;
    QTest::newRow("download") << "TRANSFERDOWNLOAD"
                              << "IDS_TREE_DOWNLOAD" << 16;
    QTest::newRow("statistics") << "STATISTICS"
                                << "IDS_TREE_STATISTICS" << 8;
    QTest::newRow("last reset") << "SHOWRESETSTATISTICS"
                                << "IDS_TREE_TIME_LASTRESET" << 18;
    QTest::newRow("daily") << "STATISTICSDAILY"
                           << "IDS_TREE_DAILY" << 16;
    QTest::newRow("monthly") << "STATISTICSMONTHLY"
                             << "IDS_TREE_MONTHLY" << 16;
    QTest::newRow("yearly") << "STATISTICSYEARLY"
                            << "IDS_TREE_YEARLY" << 16;
    QTest::newRow("the graph's switch hides no row") << "SHOWGRAPH"
                                                     << "-" << 19;
}

void tst_StatisticsTree::aSwitchHidesItsBranch()
{
    QFETCH(QString, name);
    QFETCH(QString, gone);
    start({ name });
    QTEST(int(rows().size()), "left");
    for (const QString &text : rows())
        QVERIFY2(text.trimmed() != gone && !text.trimmed().startsWith(gone + ' '),
                 qPrintable(text));
    // Hidden rows are still there, and the live update goes on.
    QVERIFY(CNetInfoUIService::instance()->updateStoredStatistics());
}

void tst_StatisticsTree::withoutTransferTimeTheRowDoesNotExist()
{
    start({ "TRANSFERTIME" });
    for (QTreeWidgetItemIterator it(tree()); *it; ++it)
        QVERIFY(!(*it)->text(0).startsWith(QLatin1String("IDS_TREE_TIME_TRANSFER")));
    sendStatisticsEvent(true);
    CNetInfoUIService::instance()->Notify(320, 0, 0);
    sendStatisticsEvent(true);
    QCOMPARE(int(rows().size()), 18);
    QVERIFY(row(QStringLiteral("IDS_TREE_TRANSFER IDS_DIALUP_TRANSFER")));
}

void tst_StatisticsTree::withoutASourceTheBuildersStop()
{
    CNetInfoUIService *const service = CNetInfoUIService::instance();
    m_log->takeLines();
    const auto line = [](const char *rest) { return "<time>: " + kSource + ": " + rest; };
    service->createMainWidget();
    QCOMPARE(m_log->takeLines(),
             QStringList({ line("createMainWidget: Memory not allocated for a Widget") }));
    service->createStatisticsWidget();
    service->addUpLoadWidgetStatisticsWidget();
    service->addDownLoadWidgetStatisticsWidget();
    service->addStatisticsNodeComponets();
    service->addStatisticsMonthlyNode();
    service->addStatisticsYearlyNode();
    QCOMPARE(m_log->takeLines(),
             QStringList({ line("createStatisticsWidget: Memory not allocated for widget"),
                           line("addUpLoadWidgetStatisticsWidget: Memory not allocated for widget"),
                           line("addDownLoadWidgetStatisticsWidget: Memory not allocated for "
                                "widget"),
                           line("addStatisticsNodeComponets: InVal Args"),
                           line("addStatisticsMonthlyNode: InVal Args"),
                           line("addStatisticsYearlyNode: InVal Args") }));
    QVERIFY(!tree());
}

void tst_StatisticsTree::theColumnIs280AtFirst()
{
    useNarrowFont();
    start({ "DATAVOLUMELIMIT", "TIMEVOLUMELIMIT" });
    QCOMPARE(tree()->columnWidth(0), 280);
    show();
    QCOMPARE(tree()->columnWidth(0), 280);
}

void tst_StatisticsTree::buildersDoubleNothing()
{
    CNetInfoUIService *const service = start();
    const QStringList before = rows();
    service->createMainWidget();
    service->createStatisticsWidget();
    service->addStatisticsNodeComponets();
    service->addUpLoadWidgetStatisticsWidget();
    service->createRightClickActions();
    QCOMPARE(rows(), before);
    QCOMPARE(int(service->findChildren<QAction *>().size()), 3);
}

void tst_StatisticsTree::theBoundaryIsExact()
{
    CNetInfoUIService *const service = start();
    QTreeWidgetItem *const item = row(QStringLiteral("IDS_TREE_STATISTICS"));
    item->setText(0, QString());
    tree()->setIndentation(140); // counted twice at the top
    service->checkTreeColumnWidth(item);
    QCOMPARE(tree()->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    while (requiredBy(tree(), item, 0) % 2 == 0)
        item->setText(0, item->text(0) + QLatin1Char('i'));
    tree()->setIndentation(tree()->indentation() - (requiredBy(tree(), item, 0) - 281) / 2);
    QCOMPARE(requiredBy(tree(), item, 0), 281);
    service->checkTreeColumnWidth(item);
    QCOMPARE(tree()->columnWidth(0), 281);
    QCOMPARE(tree()->horizontalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
}

void tst_StatisticsTree::upTo280NothingWidens()
{
    CNetInfoUIService *const service = start();
    tree()->setColumnWidth(0, 100);
    QTreeWidgetItem *const item = row(QStringLiteral("IDS_TREE_STATISTICS"));
    const int rest = 280 - requiredBy(tree(), item, 0);
    QVERIFY(rest > 0);
    tree()->setIndentation(tree()->indentation() + rest / 2); // depth 0 counts it twice
    if (rest % 2 == 0)
        QCOMPARE(requiredBy(tree(), item, 0), 280);
    service->checkTreeColumnWidth(item);
    QCOMPARE(tree()->columnWidth(0), 100);
    QCOMPARE(tree()->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    service->checkTreeColumnWidth(nullptr);
}

void tst_StatisticsTree::from281TheColumnWidens()
{
    CNetInfoUIService *const service = start();
    QTreeWidgetItem *const item = row(QStringLiteral("IDS_TREE_STATISTICS"));
    tree()->setIndentation(0);
    item->setText(0, QString());
    while (requiredBy(tree(), item, 0) <= 280) {
        service->checkTreeColumnWidth(item);
        QCOMPARE(tree()->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
        item->setText(0, item->text(0) + QLatin1Char('i'));
    }
    const int required = requiredBy(tree(), item, 0);
    service->checkTreeColumnWidth(item);
    QCOMPARE(tree()->columnWidth(0), required);
    QCOMPARE(tree()->minimumWidth(), 1);
    QCOMPARE(tree()->horizontalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
    QCOMPARE(tree()->verticalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
}

void tst_StatisticsTree::ancestorsCountAsIndentation()
{
    CNetInfoUIService *const service = start();
    tree()->setIndentation(200);
    QTreeWidgetItem *const item
        = row(QStringLiteral("IDS_TREE_UPLOADED_DATA"), QStringLiteral("IDS_TREE_YEARLY"));
    service->checkTreeColumnWidth(item);
    QCOMPARE(tree()->columnWidth(0), requiredBy(tree(), item, 2));
    QFont large = item->font(0);
    large.setPixelSize(40);
    item->setFont(0, large); // an item's own font is measured
    service->checkTreeColumnWidth(item);
    QCOMPARE(tree()->columnWidth(0), requiredBy(tree(), item, 2));
}

void tst_StatisticsTree::theColumnNeverShrinks()
{
    CNetInfoUIService *const service = start();
    QTreeWidgetItem *const item = row(QStringLiteral("IDS_TREE_STATISTICS"));
    item->setText(0, QString(100, QLatin1Char('m')));
    service->checkTreeColumnWidth(item);
    const int widest = tree()->columnWidth(0);
    QVERIFY(widest > 280);
    item->setText(0, QString(60, QLatin1Char('m')));
    QVERIFY(requiredBy(tree(), item, 0) > 280);
    service->checkTreeColumnWidth(item);
    QCOMPARE(tree()->columnWidth(0), widest);
    item->setText(0, QStringLiteral("m"));
    service->checkTreeColumnWidth(item);
    QCOMPARE(tree()->columnWidth(0), widest);
}

void tst_StatisticsTree::enableScrollFillsTheTree()
{
    useNarrowFont();
    CNetInfoUIService *const service = start();
    tree()->resize(333, 200);
    tree()->setContentsMargins(7, 0, 11, 0);
    service->enableScroll();
    QCOMPARE(tree()->columnWidth(0), tree()->contentsRect().width() - 18);
    row(QStringLiteral("IDS_TREE_STATISTICS"))->setText(0, QString(100, QLatin1Char('m')));
    service->enableScroll();
    QVERIFY(tree()->columnWidth(0) > 333);
    QCOMPARE(tree()->horizontalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
}

void tst_StatisticsTree::theNoteReplacesTheMeters()
{
    (void)start({ "DATAVOLUMELIMIT", "TIMEVOLUMELIMIT" });
    for (const char *name :
         { "NetInfoUIPlugin_LabelDataVolume", "NetInfoUIPlugin_ProgressDatavolume",
           "NetInfoUIPlugin_LabelTimeVolume", "NetInfoUIPlugin_ProgressVolume" })
        QVERIFY2(widget(name)->isHidden(), name);
    QCOMPARE(tree()->topLevelItemCount(), 4);
    QCOMPARE(tree()->topLevelItem(2)->text(0), QString());
    QVERIFY(!(tree()->topLevelItem(2)->flags() & Qt::ItemIsSelectable));
    QVERIFY(!(tree()->topLevelItem(2)->flags() & Qt::ItemIsEnabled));
    QCOMPARE(tree()->topLevelItem(3)->text(0), QStringLiteral("     IDS_NOTES"));
    QVERIFY(!tree()->topLevelItem(3)->isHidden());
    QVERIFY(tree()->expandsOnDoubleClick());
}

void tst_StatisticsTree::theNoteNeedsItsMeters()
{
    CNetInfoUIService *const service = start();
    QCOMPARE(tree()->topLevelItemCount(), 2); // a limit is on: no note
    delete widget("NetInfoUIPlugin_ProgressVolume");
    service->addNoteInTree();
    QCOMPARE(tree()->topLevelItemCount(), 2);
    QVERIFY(!widget("NetInfoUIPlugin_LabelDataVolume")->isHidden());
}

void tst_StatisticsTree::theNoteFollowsItsSwitch()
{
    (void)start({ "STATISTICSNOTES", "SHOWRESETSTATISTICS", "DATAVOLUMELIMIT", "TIMEVOLUMELIMIT" });
    QVERIFY(tree()->topLevelItem(3)->isHidden());
    QVERIFY(!row(QStringLiteral("IDS_TREE_TIME_LASTRESET")));
}

void tst_StatisticsTree::theNoteFollowsTheLanguage()
{
    CNetInfoUIService *const service = start({ "DATAVOLUMELIMIT", "TIMEVOLUMELIMIT" });
    fakeHost().language = QStringLiteral(".ar");
    service->Notify(320, 0, 0);
    QCOMPARE(tree()->topLevelItem(3)->text(0), QStringLiteral("     IDS_NOTES.ar"));
}

QTEST_MAIN(tst_StatisticsTree)
#include "tst_statisticstree.moc"
