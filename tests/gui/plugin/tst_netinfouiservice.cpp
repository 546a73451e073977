#include "NetInfoUIService.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QSplitter>
#include <QStyle>
#include <QTreeWidget>
#include <QtTest>

#include "NetInfoUILogic.h"
#include "PluginTest.h"

class tst_NetInfoUIService : public PluginTest
{
    Q_OBJECT
private slots:
    void theTraceNamesTheLifeCycle();
    void initTwiceDoublesNothing();
    void thePagesHaveTheirNamesAndMargins();
    void showPresentsTheOperatorPageAndHidesTheNormalOne();
    void showTellsWhetherTheStoredFiguresCame();
    void showMovesToAnotherWindow();
    void showGivesTheTreeTheFocus();
    void scrollBarsComeOnlyWithLimits_data();
    void scrollBarsComeOnlyWithLimits();
    void fitSizeLeavesTheOperatorPage();
    void hideHidesBoth();
    void onlyTwoMessagesDoAnything();
    void theLanguageReachesEveryText();
    void hostWindowsMayDieFirst();
    void initRebuildsWhatDiedWithAWindow();
    void thePagesGoBeforeTheSource();
    void theModuleNameNeedsALimit_data();
    void theModuleNameNeedsALimit();
    void switchingIsAnsweredInWords();
    void theSplitterIsWatchedOnlyWithoutLimits_data();
    void theSplitterIsWatchedOnlyWithoutLimits();
    void pluginsAreAskedOfTheContainer();
    void iconsAreReadOnceForEachDirection();
    void textsComeFromOneContext();
};

void tst_NetInfoUIService::theTraceNamesTheLifeCycle()
{
    CNetInfoUIService::instance();
    QCOMPARE(m_log->takeLines().filter(kSource), // the settings are read, too
             QStringList({ kSource + ": CNetInfoUIService called" }));
    CNetInfoUIService::instance()->Init();
    QCOMPARE(m_log->takeLines().first(), kSource + QStringLiteral(": Init: called"));
    QRect rect(0, 0, 10, 10);
    CNetInfoUIService::instance()->FitSize(rect);
    QCOMPARE(m_log->takeLines(),
             QStringList({ "<time>: " + kSource + ": FitSize: Entered",
                           "<time>: " + kSource + ": FitSize: Exit" }));
    CNetInfoUIService::instance()->Notify(5, 0, 0);
    QCOMPARE(m_log->takeLines(), QStringList({ "<time>: " + kSource + ": Notify: called" }));
    CNetInfoUIService::Destroy();
    QCOMPARE(m_log->takeLines().last(), kSource + QStringLiteral(": ~CNetInfoUIService called"));
}

void tst_NetInfoUIService::initTwiceDoublesNothing()
{
    start();
    const int widgets = int(QApplication::allWidgets().size());
    const QStringList before = rows();
    QVERIFY(CNetInfoUIService::instance()->Init());
    QCOMPARE(int(QApplication::allWidgets().size()), widgets);
    QCOMPARE(fakeSdk().registered, 1);
    QCOMPARE(rows(), before);
    show();
    fakeSdk().calls.clear();
    sendStatisticsEvent(true);
    QCOMPARE(int(fakeSdk().calls.size()), 6); // live, four stored, last reset: each once
}

void tst_NetInfoUIService::thePagesHaveTheirNamesAndMargins()
{
    start();
    QWidget *const page = widget("NetInfoUIPlugin_WidgetParent");
    QVERIFY(page);
    auto *const layout
        = page->findChild<QHBoxLayout *>(QStringLiteral("NetInfoUIPlugin_LayoutParent"));
    QVERIFY(layout);
    QCOMPARE(layout->contentsMargins(), QMargins(3, 8, 3, 8));
    auto *const splitter
        = page->findChild<QSplitter *>(QStringLiteral("NetInfoUIPlugin_SplitterPane"));
    QVERIFY(splitter);
    QCOMPARE(splitter->handleWidth(), 1);
    QCOMPARE(splitter->orientation(), Qt::Horizontal);
    auto *const left
        = splitter->findChild<QWidget *>(QStringLiteral("NetInfoUIPlugin_WidgetLeftAreaParent"));
    QVERIFY(left);
    QCOMPARE(left->layout()->objectName(), QStringLiteral("NetInfoUIPlugin_LayoutVerticalLeft"));
    QCOMPARE(left->layout()->contentsMargins(), QMargins(0, 0, 0, 0));
    QVERIFY(left->layout()->indexOf(tree()) >= 0);
    QWidget *const operatorPage = widget("NetInfoSettingDlg_MainWidget");
    QVERIFY(operatorPage);
    QVERIFY(operatorPage->style()->inherits("QWindowsStyle"));
}

void tst_NetInfoUIService::showPresentsTheOperatorPageAndHidesTheNormalOne()
{
    CNetInfoUIService *const service = start();
    m_window->show();
    QRect rect(QPoint(10, 20), QPoint(309, 219));
    QVERIFY(service->ShowWindow(m_window.data(), rect));
    QWidget *const operatorPage = widget("NetInfoSettingDlg_MainWidget");
    QWidget *const normalPage = widget("NetInfoUIPlugin_WidgetParent");
    for (QWidget *page : { operatorPage, normalPage }) {
        QCOMPARE(page->parentWidget(), m_window.data());
        QCOMPARE(page->pos(), QPoint(10, 20));
        QCOMPARE(page->size(), QSize(300, 200));
        QVERIFY(page->testAttribute(Qt::WA_MouseTracking));
    }
    QVERIFY(operatorPage->isVisible());
    QVERIFY(!normalPage->isVisible());
    QCOMPARE(operatorPage->contentsMargins(), QMargins(0, 0, 0, 0));
    QCOMPARE(normalPage->contentsMargins(), QMargins(4, 0, 4, 0));
}

void tst_NetInfoUIService::showTellsWhetherTheStoredFiguresCame()
{
    CNetInfoUIService *const service = start();
    QRect rect(0, 0, 300, 200);
    service->ShowWindow(m_window.data(), rect);
    QStringList lines = m_log->takeLines();
    QCOMPARE(lines.first(), "<time>: " + kSource + ": ShowWindow: Entered");
    QVERIFY(lines.contains(kSource + ": ShowWindow: Daily,Monthly ,yearly stats updated"));
    QCOMPARE(lines.last(), kSource + ": ShowWindow: Exit");
    fakeSdk().reports[1].result = 1;
    service->ShowWindow(m_window.data(), rect);
    lines = m_log->takeLines();
    QVERIFY(
        lines.contains(kSource + ": ShowWindow: Failed to get the Daily,Monthly ,yearly stats "));
}

void tst_NetInfoUIService::showMovesToAnotherWindow()
{
    CNetInfoUIService *const service = start();
    show();
    QWidget other;
    QRect rect(0, 0, 100, 100);
    QVERIFY(service->ShowWindow(&other, rect));
    QCOMPARE(widget("NetInfoSettingDlg_MainWidget")->parentWidget(), &other);
    QCOMPARE(widget("NetInfoUIPlugin_WidgetParent")->parentWidget(), &other);
    QVERIFY(m_window->children().isEmpty());
    rect = QRect(0, 0, 10, 10);
    QVERIFY(service->ShowWindow(m_window.data(), rect));
}

void tst_NetInfoUIService::showGivesTheTreeTheFocus()
{
    start();
    show();
    // The normal page is hidden, so the tree has the focus as soon as the host shows it.
    widget("NetInfoUIPlugin_WidgetParent")->show();
    QCOMPARE(m_window->focusWidget(), static_cast<QWidget *>(tree()));
}

void tst_NetInfoUIService::scrollBarsComeOnlyWithLimits_data()
{
    QTest::addColumn<QStringList>("off");
    QTest::addColumn<int>("policy");
    const int never = Qt::ScrollBarAlwaysOff;
    const int asNeeded = Qt::ScrollBarAsNeeded;
    QTest::newRow("both limits") << QStringList() << asNeeded;
    QTest::newRow("the data limit alone") << QStringList("TIMEVOLUMELIMIT") << asNeeded;
    QTest::newRow("the time limit alone") << QStringList("DATAVOLUMELIMIT") << asNeeded;
    QTest::newRow("no limit") << QStringList({ "DATAVOLUMELIMIT", "TIMEVOLUMELIMIT" }) << never;
}

void tst_NetInfoUIService::scrollBarsComeOnlyWithLimits()
{
    QFETCH(QStringList, off);
    useNarrowFont();
    start(off);
    QCOMPARE(tree()->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QCOMPARE(tree()->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    show();
    QTEST(int(tree()->verticalScrollBarPolicy()), "policy");
    QTEST(int(tree()->horizontalScrollBarPolicy()), "policy");
}

void tst_NetInfoUIService::fitSizeLeavesTheOperatorPage()
{
    CNetInfoUIService *const service = start({ "DATAVOLUMELIMIT", "TIMEVOLUMELIMIT" });
    show();
    QRect rect(5, 6, 222, 111);
    QCOMPARE(service->FitSize(rect), 0);
    QCOMPARE(widget("NetInfoUIPlugin_WidgetParent")->geometry(), rect);
    QCOMPARE(widget("NetInfoSettingDlg_MainWidget")->geometry(), QRect(10, 20, 500, 300));
    QCOMPARE(tree()->columnWidth(0), 280);
    QCOMPARE(tree()->minimumWidth(), 1);
    QCOMPARE(tree()->verticalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
    QCOMPARE(tree()->horizontalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
}

void tst_NetInfoUIService::hideHidesBoth()
{
    CNetInfoUIService *const service = start();
    show();
    widget("NetInfoUIPlugin_WidgetParent")->show();
    service->Hide();
    QVERIFY(!widget("NetInfoUIPlugin_WidgetParent")->isVisible());
    QVERIFY(!widget("NetInfoSettingDlg_MainWidget")->isVisible());
}

void tst_NetInfoUIService::onlyTwoMessagesDoAnything()
{
    CNetInfoUIService *const service = start();
    show();
    const QStringList before = rows();
    fakeSdk().reports[1].upload = 17;
    fakeHost().language = QStringLiteral(".de");
    for (const unsigned int msg : { 0u, 1u, 319u, 321u, 836u, 838u, 4294967295u })
        QCOMPARE(service->Notify(msg, 320, 837), 0);
    QCOMPARE(rows(), before);
    fakeHost().language.clear();
    QCOMPARE(service->Notify(837, 0, 0), 0);
    QVERIFY(row(QStringLiteral("IDS_TREE_UPLOADED_DATA 17 B"), QStringLiteral("IDS_TREE_DAILY")));
}

void tst_NetInfoUIService::theLanguageReachesEveryText()
{
    fakeHost().availablePlugins << QStringLiteral("D0B83E56-19F2-4C6A-B7E4-05A9C31D8F62");
    CNetInfoUIService *const service = start();
    show();
    QCOMPARE(tree()->accessibleName(), QStringLiteral("IDS_SETTING_NAME"));
    fakeHost().language = QStringLiteral(".de");
    QCOMPARE(service->Notify(320, 0, 0), 0);
    QCOMPARE(tree()->accessibleName(), QStringLiteral("IDS_SETTING_NAME.de"));
    for (const QString &text : rows())
        QVERIFY2(text.contains(QLatin1String(".de")), qPrintable(text));
    QVERIFY(row(QStringLiteral("IDS_TREE_TRANSFER.de IDS_DIALUP_TRANSFER.de")));
    QCOMPARE(tree()->columnWidth(0), 280);
    QCOMPARE(tree()->minimumWidth(), 1);
}

void tst_NetInfoUIService::hostWindowsMayDieFirst()
{
    CNetInfoUIService *const service = start();
    show();
    m_window.reset(new QWidget); // takes both pages with it
    QVERIFY(!tree());
    QRect rect(0, 0, 100, 100);
    QVERIFY(service->ShowWindow(m_window.data(), rect));
    service->FitSize(rect);
    service->Hide();
    service->Notify(320, 0, 0);
    service->Notify(837, 0, 0);
    service->expandAll();
    service->collapseAll();
    service->enableScroll();
    service->addNoteInTree();
    service->movedSplitter(1, 1);
    service->showTreeContextMenu(QPoint(1, 1));
    sendStatisticsEvent(true);
    QVERIFY(!service->updateStoredStatistics());
}

void tst_NetInfoUIService::initRebuildsWhatDiedWithAWindow()
{
    CNetInfoUIService *const service = start();
    const QStringList before = rows();
    show();
    m_window.reset(new QWidget);
    QVERIFY(!tree());
    QVERIFY(service->Init());
    QCOMPARE(rows(), before);
    show();
    QVERIFY(widget("NetInfoSettingDlg_MainWidget")->isVisible());
    QCOMPARE(fakeSdk().registered, 1);
}

void tst_NetInfoUIService::thePagesGoBeforeTheSource()
{
    start();
    show();
    bool sourceWasThere = false;
    connect(widget("NetInfoUIPlugin_WidgetParent"), &QObject::destroyed, this,
            [&] { sourceWasThere = fakeSdkHasCallback(); });
    CNetInfoUIService::Destroy();
    QVERIFY(sourceWasThere);
    QVERIFY(!fakeSdkHasCallback());
}

void tst_NetInfoUIService::theModuleNameNeedsALimit_data()
{
    QTest::addColumn<QStringList>("off");
    QTest::addColumn<QString>("name");
    const QString name = QStringLiteral("IDS_SETTING_NAME");
    QTest::newRow("both limits") << QStringList() << name;
    QTest::newRow("the data limit alone") << QStringList("TIMEVOLUMELIMIT") << name;
    QTest::newRow("the time limit alone") << QStringList("DATAVOLUMELIMIT") << name;
    QTest::newRow("no limit") << QStringList({ "DATAVOLUMELIMIT", "TIMEVOLUMELIMIT" })
                              << QString("");
}

void tst_NetInfoUIService::theModuleNameNeedsALimit()
{
    QCOMPARE(CNetInfoUIService::instance()->GetModuleName(), QString("")); // no source before Init
    QFETCH(QStringList, off);
    QTEST(start(off)->GetModuleName(), "name");
}

void tst_NetInfoUIService::switchingIsAnsweredInWords()
{
    ISwitchUIService *const service = start();
    QVERIFY(service->IsTopWindow());
    QCOMPARE(service->GetWindowTitle(), QStringLiteral("IDS_SETTING_NAME"));
    service->SwitchWindow();
}

void tst_NetInfoUIService::theSplitterIsWatchedOnlyWithoutLimits_data()
{
    QTest::addColumn<QStringList>("off");
    QTest::addColumn<int>("width");
    QTest::newRow("a limit is on") << QStringList("DATAVOLUMELIMIT") << 77;
    QTest::newRow("no limit") << QStringList({ "DATAVOLUMELIMIT", "TIMEVOLUMELIMIT" }) << 280;
}

void tst_NetInfoUIService::theSplitterIsWatchedOnlyWithoutLimits()
{
    QFETCH(QStringList, off);
    QFETCH(int, width);
    start(off);
    tree()->setColumnWidth(0, 77);
    auto *const splitter = qobject_cast<QSplitter *>(widget("NetInfoUIPlugin_SplitterPane"));
    QVERIFY(QMetaObject::invokeMethod(splitter, "splitterMoved", Q_ARG(int, 5), Q_ARG(int, 1)));
    QCOMPARE(tree()->columnWidth(0), width);
    if (width == 280)
        QCOMPARE(tree()->horizontalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
}

void tst_NetInfoUIService::pluginsAreAskedOfTheContainer()
{
    CNetInfoUIService *const service = CNetInfoUIService::instance();
    m_log->takeLines();
    fakeHost().availablePlugins << QStringLiteral("A");
    QVERIFY(service->isPluginAvailable(QStringLiteral("A")));
    QCOMPARE(m_log->takeLines(),
             QStringList({ "<time> : " + kSource + ": isPluginAvailable:  Entered" }));
    QVERIFY(!service->isPluginAvailable(QStringLiteral("B")));
    fakeHost().hasContainer = false;
    QVERIFY(!service->isPluginAvailable(QStringLiteral("A")));
}

void tst_NetInfoUIService::iconsAreReadOnceForEachDirection()
{
    CNetInfoUIService *const service = CNetInfoUIService::instance();
    const QString name = QStringLiteral("Icon_01");
    const auto leftColour = [&] {
        return service->setIcon(m_folder->path() + name).pixmap(16, 16).toImage().pixelColor(2, 8);
    };
    m_folder->writeIcon(name, Qt::red, Qt::blue);
    QCOMPARE(leftColour(), QColor(Qt::red));
    m_folder->writeIcon(name, Qt::green, Qt::yellow);
    QCOMPARE(leftColour(), QColor(Qt::red)); // not read again
    QApplication::setLayoutDirection(Qt::RightToLeft);
    QCOMPARE(leftColour(), QColor(Qt::yellow)); // read again and mirrored
    m_folder->writeIcon(name, Qt::red, Qt::blue);
    QCOMPARE(leftColour(), QColor(Qt::yellow));
    QApplication::setLayoutDirection(Qt::LeftToRight);
    QCOMPARE(leftColour(), QColor(Qt::red));
    QVERIFY(service->setIcon(QStringLiteral("/nowhere")).isNull());
    QVERIFY(service->setIcon(m_folder->configPath()).isNull());
}

void tst_NetInfoUIService::textsComeFromOneContext()
{
    CNetInfoUIService *const service = start();
    show();
    sendStatisticsEvent(true);
    service->Notify(320, 0, 0);
    QCOMPARE(fakeHost().translationContexts, QStringList({ "NetInfoUIExPlugin" }));
    QCOMPARE(fakeHost().formatterModules, QStringList({ "NetInfoUIExPlugin" }));
    fakeHost().language = QStringLiteral("!");
    QCOMPARE(service->tr(QStringLiteral("IDS_YES")), QStringLiteral("IDS_YES!"));
}

QTEST_MAIN(tst_NetInfoUIService)
#include "tst_netinfouiservice.moc"
