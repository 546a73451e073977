#include "NetInfoUIPlugin.h"

#include <QtTest>

#include "NetInfoUILogic.h"
#include "NetInfoUIService.h"
#include "PluginTest.h"

extern "C" QObject *qt_plugin_instance();
extern "C" const char *qt_plugin_query_verification_data();

class tst_NetInfoUIPlugin : public PluginTest
{
    Q_OBJECT
private slots:
    void theExportGivesOneObject();
    void aDeletedObjectIsMadeAnew();
    void theVerificationTextIsFixed();
    void theConstructorMakesTheController();
    void bothRequestsGiveTheController();
    void otherRequestsLeaveOutAlone();
    void fixedAnswers();
    void callsAreForwarded();
    void afterDestroyEverythingIsHarmless();
    void aQueryAfterDestroyMakesANewController();
    void metacastResolvesTheInterfaces();
    void aControllerThatWasNotInitialisedSurvives();
    void theHostMayDestroyAgainWhileThePagesGo();
};

void tst_NetInfoUIPlugin::theExportGivesOneObject()
{
    QObject *const first = qt_plugin_instance();
    QVERIFY(qobject_cast<CNetInfoUIPlugin *>(first));
    QCOMPARE(qt_plugin_instance(), first);
}

void tst_NetInfoUIPlugin::aDeletedObjectIsMadeAnew()
{
    delete qt_plugin_instance();
    QVERIFY(qobject_cast<CNetInfoUIPlugin *>(qt_plugin_instance()));
    delete qt_plugin_instance();
}

void tst_NetInfoUIPlugin::theVerificationTextIsFixed()
{
    QCOMPARE(QByteArray(qt_plugin_query_verification_data()),
             QByteArray("pattern=QT_PLUGIN_VERIFICATION_DATA\nversion=4.6.2\ndebug=false\n"
                        "buildkey=macosx macx g++-4 full-config"));
}

void tst_NetInfoUIPlugin::theConstructorMakesTheController()
{
    CNetInfoUIPlugin plugin;
    QCOMPARE(m_log->takeLines().filter(QStringLiteral("called")),
             QStringList({ "../../src/NetInfoUIExPlugin/NetInfoUIPlugin.cpp: CNetInfoUIPlugin "
                           "called",
                           "../../src/NetInfoUIExPlugin/NetInfoUIService.cpp: CNetInfoUIService "
                           "called" }));
}

void tst_NetInfoUIPlugin::bothRequestsGiveTheController()
{
    CNetInfoUIPlugin plugin;
    m_log->takeLines();
    QObject *first = nullptr;
    QObject *second = nullptr;
    QVERIFY(plugin.QueryInterface(4098, &first));
    QVERIFY(plugin.QueryInterface(38183, &second));
    QVERIFY(first);
    QCOMPARE(first, second);
    QCOMPARE(first, static_cast<QObject *>(CNetInfoUIService::instance()));
    QVERIFY(qobject_cast<ISettingUIPlugin *>(first));
    QVERIFY(qobject_cast<ISwitchUIService *>(first));
    QCOMPARE(m_log->takeLines().first(),
             QStringLiteral("../../src/NetInfoUIExPlugin/NetInfoUIPlugin.cpp: QueryInterface "
                            "called"));
}

void tst_NetInfoUIPlugin::otherRequestsLeaveOutAlone()
{
    CNetInfoUIPlugin plugin;
    QObject *out = &plugin;
    for (const int id : { 0, 1, -1, 4097, 4099, 38182, 38184 })
        QVERIFY(!plugin.QueryInterface(id, &out));
    QCOMPARE(out, static_cast<QObject *>(&plugin));
}

void tst_NetInfoUIPlugin::fixedAnswers()
{
    CNetInfoUIPlugin plugin;
    QVERIFY(plugin.IsReady());
    QVERIFY(!plugin.ChangeLang(QStringLiteral("de")));
    QVERIFY(!plugin.ChangeLang(QString()));
    QCOMPARE(plugin.GetPluginType(), 0);
    QVERIFY(plugin.GetCLSID().isNull());
    QCOMPARE(plugin.GetVersion(), 0);
    QCOMPARE(plugin.GetPluginName(), QStringLiteral("NetInfoUIPlugin"));
    QVERIFY(!plugin.IsAllowRelease());
    plugin.Release();
    QCOMPARE(plugin.GetLastError(), 0);
}

void tst_NetInfoUIPlugin::callsAreForwarded()
{
    CNetInfoUIPlugin plugin;
    QVERIFY(plugin.Init());
    QCOMPARE(plugin.DoModal(), 0);
    QRect rect(1, 2, 300, 200);
    QVERIFY(plugin.ShowWindow(m_window.data(), rect));
    QWidget *const page = widget("NetInfoSettingDlg_MainWidget");
    QVERIFY(page->isVisibleTo(m_window.data()));
    rect = QRect(3, 4, 50, 60);
    QCOMPARE(plugin.FitSize(rect), 0);
    QCOMPARE(widget("NetInfoUIPlugin_WidgetParent")->geometry(), rect);
    plugin.Hide();
    QVERIFY(!page->isVisibleTo(m_window.data()));
    QCOMPARE(plugin.Notify(837, 1, 2), 0);
    QCOMPARE(plugin.Notify(1, 1, 2), 0);
}

void tst_NetInfoUIPlugin::afterDestroyEverythingIsHarmless()
{
    CNetInfoUIPlugin plugin;
    plugin.Init();
    for (int i = 0; i < 2; ++i) {
        plugin.OnDestroy();
        QRect rect(0, 0, 100, 100);
        QVERIFY(!plugin.ShowWindow(m_window.data(), rect));
        QCOMPARE(plugin.DoModal(), -1);
        plugin.Hide();
        QCOMPARE(plugin.FitSize(rect), 0);
        QVERIFY(!plugin.Init());
        QCOMPARE(plugin.Notify(320, 0, 0), -1);
        QVERIFY(plugin.IsReady());
        QCOMPARE(plugin.GetPluginName(), QStringLiteral("NetInfoUIPlugin"));
    }
    QVERIFY(m_window->children().isEmpty());
}

void tst_NetInfoUIPlugin::aQueryAfterDestroyMakesANewController()
{
    CNetInfoUIPlugin plugin;
    plugin.Init();
    plugin.OnDestroy();
    QObject *out = nullptr;
    QVERIFY(plugin.QueryInterface(4098, &out));
    QCOMPARE(plugin.DoModal(), 0);
    QVERIFY(plugin.Init());
    QVERIFY(widget("NetInfoUIPlugin_WidgetTree"));
}

void tst_NetInfoUIPlugin::metacastResolvesTheInterfaces()
{
    CNetInfoUIPlugin plugin;
    const auto cast = [&plugin](const char *name) { return plugin.qt_metacast(name); };
    QVERIFY(!cast(nullptr));
    QVERIFY(!cast("nothing"));
    QVERIFY(!cast("IBasePlugin"));
    QCOMPARE(cast("CNetInfoUIPlugin"), static_cast<void *>(&plugin));
    QCOMPARE(cast("QObject"), static_cast<void *>(static_cast<QObject *>(&plugin)));
    void *const ui = static_cast<IUIPlugin *>(&plugin);
    QCOMPARE(cast("IUIPlugin"), ui);
    QCOMPARE(cast("com.valtrix.skylet.plugin.IBasePlugin"), ui);
    QCOMPARE(cast("com.valtrix.skylet.plugin.IUIPlugin"), ui);
    void *const notify = static_cast<INotify *>(&plugin);
    QCOMPARE(cast("INotify"), notify);
    QCOMPARE(cast("com.valtrix.skylet.plugin.INotify"), notify);

    QObject *service = nullptr;
    plugin.QueryInterface(4098, &service);
    auto *const controller = static_cast<CNetInfoUIService *>(service);
    void *const setting = static_cast<ISettingUIPlugin *>(controller);
    QCOMPARE(service->qt_metacast("ISettingUIPlugin"), setting);
    QCOMPARE(service->qt_metacast("com.valtrix.skylet.plugin.ISettingUIPlugin"), setting);
    void *const switching = static_cast<ISwitchUIService *>(controller);
    QCOMPARE(service->qt_metacast("ISwitchUIService"), switching);
    QCOMPARE(service->qt_metacast("com.valtrix.skylet.plugin.ISwitchUIService"), switching);
}

void tst_NetInfoUIPlugin::aControllerThatWasNotInitialisedSurvives()
{
    CNetInfoUIPlugin plugin;
    QRect rect(0, 0, 100, 100);
    QVERIFY(plugin.ShowWindow(m_window.data(), rect));
    QCOMPARE(plugin.FitSize(rect), 0);
    plugin.Hide();
    QCOMPARE(plugin.Notify(320, 0, 0), 0);
    QCOMPARE(plugin.Notify(837, 0, 0), 0);
    QObject *out = nullptr;
    plugin.QueryInterface(4098, &out);
    auto *const service = static_cast<CNetInfoUIService *>(out);
    QVERIFY(service->ShowSettingDialog(m_window.data(), rect));
    QVERIFY(service->HideSetting());
    QVERIFY(service->OnClickSettingOkButton());
    QVERIFY(service->OnClickSettingCancelButton());
    QVERIFY(!service->IsActiveSetting());
    QCOMPARE(service->GetWindowTitle(), QStringLiteral("IDS_SETTING_NAME"));
    fakeHost().messageAnswer = 1024;
    service->onResetButtonClicked();
    QVERIFY(fakeSdk().resets.empty());
    service->expandAll();
    service->collapseAll();
    service->enableScroll();
    service->movedSplitter(1, 2);
    service->addNoteInTree();
    service->updateTransferStrings();
    service->updateStatisticsStrings();
    service->updateRightClickItems();
    service->checkTreeColumnWidth(nullptr);
    plugin.OnDestroy();
}

void tst_NetInfoUIPlugin::theHostMayDestroyAgainWhileThePagesGo()
{
    CNetInfoUIPlugin plugin;
    plugin.Init();
    int calls = 0;
    connect(widget("NetInfoUIPlugin_WidgetTree"), &QObject::destroyed, this, [&] {
        ++calls;
        plugin.OnDestroy();
        QCOMPARE(plugin.DoModal(), -1);
    });
    plugin.OnDestroy();
    QCOMPARE(calls, 1);
}

QTEST_MAIN(tst_NetInfoUIPlugin)
#include "tst_netinfouiplugin.moc"
