#include <PluginStage.h>

#include <host/ISettingUIPlugin.h>

#include <QtTest>

#include "LibraryFolder.h"
#include "LoadedPlugin.h"
#include "TestLog.h"

class tst_PluginStage : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void statisticsComesAfterTheFirstShow();
    void usageIsWhatThePluginShows();
    void theViewsSwitch();
    void resizingStatisticsFits();
    void resizingUsageKeepsThePage();
    void enteringUsageTakesThePresentSize();
    void aResizeWithoutAUsagePageIsSurvived();
    void notificationsArrive();
    void aRefusingPluginStaysOut();
    void aForeignObjectStaysOut();
    void aPluginWithoutStatisticsShowsItsOwnPage();
    void aSettingsPageFillsTheStage();
    void afterLeavingNothingIsCalled();

private:
    [[nodiscard]] QWidget *page(const char *name) const;

    QScopedPointer<LibraryFolder> m_folder;
    QScopedPointer<PluginStage> m_stage;
    QScopedPointer<TestLog> m_log;
};

void tst_PluginStage::init()
{
    m_folder.reset(new LibraryFolder);
    m_log.reset(new TestLog);
    m_stage.reset(new PluginStage);
    m_stage->resize(400, 300);
}

void tst_PluginStage::cleanup()
{
    m_stage.reset();
    const QStringList problems = m_log->takeProblems();
    m_log.reset();
    QCOMPARE(problems, QStringList());
    QCOMPARE(QApplication::topLevelWidgets(), QWidgetList());
}

QWidget *tst_PluginStage::page(const char *name) const
{
    return m_stage->findChild<QWidget *>(QLatin1String(name));
}

void tst_PluginStage::statisticsComesAfterTheFirstShow()
{
    QObject *plugin = loadPlugin(m_folder->addModule("one", "good"));
    QVERIFY(m_stage->isEmpty());
    QVERIFY(m_stage->enter(plugin));
    QVERIFY(!m_stage->isEmpty());
    QVERIFY(m_stage->hasStatisticsPage());
    QCOMPARE(takeCalls(plugin),
             QStringList({ "QueryInterface 4098", "Init", "ShowWindow 400x300", "Hide",
                           "FitSize 400x300" }));
    QVERIFY(!page("NetInfoUIPlugin_WidgetParent")->isHidden());
    QVERIFY(page("NetInfoSettingDlg_MainWidget")->isHidden());
}

void tst_PluginStage::usageIsWhatThePluginShows()
{
    QObject *plugin = loadPlugin(m_folder->addModule("one", "good"));
    m_stage->setView(HostView::Usage);
    QVERIFY(m_stage->enter(plugin));
    QCOMPARE(takeCalls(plugin),
             QStringList({ "QueryInterface 4098", "Init", "ShowWindow 400x300" }));
    QVERIFY(page("NetInfoUIPlugin_WidgetParent")->isHidden());
    QVERIFY(!page("NetInfoSettingDlg_MainWidget")->isHidden());
}

void tst_PluginStage::theViewsSwitch()
{
    QObject *plugin = loadPlugin(m_folder->addModule("one", "good"));
    QVERIFY(m_stage->enter(plugin));
    m_stage->setView(HostView::Usage);
    QVERIFY(page("NetInfoUIPlugin_WidgetParent")->isHidden());
    QVERIFY(!page("NetInfoSettingDlg_MainWidget")->isHidden());
    m_stage->setView(HostView::Statistics);
    QVERIFY(!page("NetInfoUIPlugin_WidgetParent")->isHidden());
    QVERIFY(page("NetInfoSettingDlg_MainWidget")->isHidden());
    takeCalls(plugin);
    m_stage->setView(HostView::Statistics);
    QCOMPARE(takeCalls(plugin), QStringList());
}

void tst_PluginStage::resizingStatisticsFits()
{
    QObject *plugin = loadPlugin(m_folder->addModule("one", "good"));
    QVERIFY(m_stage->enter(plugin));
    m_stage->show();
    takeCalls(plugin);
    m_stage->resize(500, 350);
    QStringList calls;
    QTRY_VERIFY((calls += takeCalls(plugin)).contains("FitSize 500x350"));
    QVERIFY(!calls.join(' ').contains("ShowWindow")); // that would hide the page again
    QCOMPARE(page("NetInfoUIPlugin_WidgetParent")->geometry(), QRect(0, 0, 500, 350));
    QVERIFY(page("NetInfoUIPlugin_WidgetParent")->isVisible());
}

void tst_PluginStage::resizingUsageKeepsThePage()
{
    QObject *plugin = loadPlugin(m_folder->addModule("one", "good"));
    m_stage->setView(HostView::Usage);
    QVERIFY(m_stage->enter(plugin));
    m_stage->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_stage.data()));
    takeCalls(plugin);
    for (const QSize &size : { QSize(450, 310), QSize(500, 350), QSize(300, 200) }) {
        m_stage->resize(size);
        QCOMPARE(page("NetInfoSettingDlg_MainWidget")->geometry(), QRect(QPoint(0, 0), size));
    }
    m_stage->hide();
    m_stage->show();
    QCoreApplication::processEvents();
    QCOMPARE(takeCalls(plugin), QStringList()); // a second ShowWindow would load the page anew
}

void tst_PluginStage::enteringUsageTakesThePresentSize()
{
    QObject *plugin = loadPlugin(m_folder->addModule("one", "good"));
    QVERIFY(m_stage->enter(plugin));
    m_stage->show();
    m_stage->resize(500, 350);
    takeCalls(plugin);
    m_stage->setView(HostView::Usage);
    QCOMPARE(takeCalls(plugin), QStringList("ShowWindow 500x350"));
    QCOMPARE(page("NetInfoSettingDlg_MainWidget")->geometry(), QRect(0, 0, 500, 350));
}

void tst_PluginStage::aResizeWithoutAUsagePageIsSurvived()
{
    QObject *plugin = loadPlugin(m_folder->addModule("one", "good"));
    m_stage->setView(HostView::Usage);
    QVERIFY(m_stage->enter(plugin));
    m_stage->show();
    delete page("NetInfoSettingDlg_MainWidget");
    takeCalls(plugin);
    m_stage->resize(500, 350);
    QCOMPARE(takeCalls(plugin), QStringList());
}

void tst_PluginStage::notificationsArrive()
{
    QObject *plugin = loadPlugin(m_folder->addModule("one", "good"));
    m_stage->languageChanged(); // nobody there yet
    QVERIFY(m_stage->enter(plugin));
    takeCalls(plugin);
    m_stage->languageChanged();
    m_stage->storedStatisticsChanged();
    QCOMPARE(takeCalls(plugin), QStringList({ "Notify 320", "Notify 837" }));
}

void tst_PluginStage::aRefusingPluginStaysOut()
{
    QObject *plugin = loadPlugin(m_folder->addModule("one", "refusing"));
    QVERIFY(!m_stage->enter(plugin));
    QVERIFY(m_stage->isEmpty());
    QCOMPARE(takeCalls(plugin), QStringList({ "QueryInterface 4098", "Init" }));
    m_stage->setView(HostView::Usage);
    QCOMPARE(takeCalls(plugin), QStringList());
}

void tst_PluginStage::aForeignObjectStaysOut()
{
    QVERIFY(!m_stage->enter(loadPlugin(m_folder->addModule("one", "foreign"))));
    QVERIFY(!m_stage->enter(nullptr));
    QVERIFY(m_stage->isEmpty());
}

void tst_PluginStage::aPluginWithoutStatisticsShowsItsOwnPage()
{
    QObject *plugin = loadPlugin(m_folder->addModule("one", "pageless"));
    QVERIFY(m_stage->enter(plugin));
    QVERIFY(!m_stage->hasStatisticsPage());
    QCOMPARE(takeCalls(plugin),
             QStringList({ "QueryInterface 4098", "Init", "ShowWindow 400x300" }));
    QVERIFY(!page("NetInfoSettingDlg_MainWidget")->isHidden());
}

void tst_PluginStage::aSettingsPageFillsTheStage()
{
    QObject *plugin = loadPlugin(m_folder->addModule("one", "good"));
    QVERIFY(m_stage->enter(plugin));
    QRect area(10, 10, 50, 50);
    qobject_cast<ISettingUIPlugin *>(plugin)->ShowSettingDialog(m_stage.data(), area);
    QTRY_VERIFY(m_stage->settingsPage());
    QCOMPARE(m_stage->settingsPage()->geometry(), m_stage->rect());
}

void tst_PluginStage::afterLeavingNothingIsCalled()
{
    QObject *plugin = loadPlugin(m_folder->addModule("one", "good"));
    QVERIFY(m_stage->enter(plugin));
    m_stage->show();
    m_stage->leave();
    takeCalls(plugin);
    m_stage->setView(HostView::Usage);
    m_stage->resize(222, 111);
    m_stage->languageChanged();
    QCoreApplication::processEvents();
    QVERIFY(m_stage->isEmpty());
    QCOMPARE(takeCalls(plugin), QStringList());
}

QTEST_MAIN(tst_PluginStage)
#include "tst_pluginstage.moc"
