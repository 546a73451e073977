// Loads the built module as a host does and walks the whole cycle, twice, on a replayed connection.

#include <QApplication>
#include <QLibrary>
#include <QPluginLoader>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QtTest>

#include <host/CommonUtils.h>
#include <host/INotify.h>
#include <host/ISettingUIPlugin.h>
#include <host/ISwitchUIService.h>
#include <host/IUIPlugin.h>
#include <host/velq_extension.h>

#include "HostPaths.h"
#include "Languages.h"
#include "TestLog.h"

class tst_PluginModule : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();
    void theModuleLoads();
    void theWholeCycleTwice();

private:
    void walkTheCycle();
    [[nodiscard]] QString rowText(int top, int node, int row) const;
    [[nodiscard]] QTreeWidget *tree() const;

    QTemporaryDir m_data;
    QScopedPointer<TestLog> m_log;
    QScopedPointer<Languages> m_languages;
    QScopedPointer<QWidget> m_window;
    QPluginLoader m_loader { QStringLiteral(NETINFO_MODULE) };
};

void tst_PluginModule::initTestCase()
{
    QCOMPARE(VELQ_StoreSrv_SetDirectory(m_data.path().toUtf8().constData()), 0);
    QCOMPARE(VELQ_DevSrv_StartDemo(), 0);
    HostPaths::setLibraryPath(QStringLiteral(NETINFO_TEST_LIBRARY_PATH));
    HostPaths::setUserDataDirectory(m_data.path());
    m_languages.reset(new Languages(QStringLiteral(NETINFO_TEST_LANG)));
    QVERIFY(m_languages->hasEnglish());
}

void tst_PluginModule::init()
{
    m_log.reset(new TestLog);
}

void tst_PluginModule::cleanup()
{
    const QStringList problems = m_log->takeProblems();
    m_log.reset();
    QVERIFY2(problems.isEmpty(), qPrintable(problems.join(QLatin1Char('\n'))));
    QCOMPARE(QApplication::topLevelWidgets(), QWidgetList());
}

void tst_PluginModule::theModuleLoads()
{
    QObject *const entry = m_loader.instance();
    QVERIFY2(entry, qPrintable(m_loader.errorString()));
    QCOMPARE(QPluginLoader(QStringLiteral(NETINFO_MODULE)).instance(), entry);
    QCOMPARE(m_loader.metaData().value(QStringLiteral("IID")).toString(),
             QStringLiteral("com.valtrix.skylet.plugin.IUIPlugin"));
    QVERIFY(qobject_cast<IBasePlugin *>(entry));
    QVERIFY(qobject_cast<INotify *>(entry));
    using Query = const char *(*)();
    const auto query = reinterpret_cast<Query>(
        QLibrary::resolve(QStringLiteral(NETINFO_MODULE), "qt_plugin_query_verification_data"));
    QVERIFY(query);
    QCOMPARE(QByteArray(query()),
             QByteArray("pattern=QT_PLUGIN_VERIFICATION_DATA\nversion=4.6.2\ndebug=false\n"
                        "buildkey=macosx macx g++-4 full-config"));
}

void tst_PluginModule::theWholeCycleTwice()
{
    walkTheCycle();
    walkTheCycle();
}

QTreeWidget *tst_PluginModule::tree() const
{
    return m_window->findChild<QTreeWidget *>(QStringLiteral("NetInfoUIPlugin_WidgetTree"));
}

QString tst_PluginModule::rowText(int top, int node, int row) const
{
    const QTreeWidgetItem *const item = tree()->topLevelItem(top)->child(node);
    return row < 0 ? item->text(0) : item->child(row)->text(0);
}

void tst_PluginModule::walkTheCycle()
{
    auto *const plugin = qobject_cast<IUIPlugin *>(m_loader.instance());
    auto *const notify = qobject_cast<INotify *>(m_loader.instance());
    QVERIFY(plugin && notify);
    QObject *service = nullptr;
    QVERIFY(plugin->QueryInterface(4098, &service));
    auto *const setting = qobject_cast<ISettingUIPlugin *>(service);
    auto *const switching = qobject_cast<ISwitchUIService *>(service);
    QVERIFY(setting && switching);
    QVERIFY(plugin->Init());
    QVERIFY(plugin->IsReady());
    QVERIFY(!setting->GetModuleName().isEmpty());
    QCOMPARE(switching->GetWindowTitle(), setting->GetModuleName());

    m_window.reset(new QWidget);
    m_window->resize(700, 500);
    m_window->show();
    QRect rect(0, 0, 700, 500);
    QVERIFY(plugin->ShowWindow(m_window.data(), rect));
    plugin->Hide();
    auto *const page
        = m_window->findChild<QWidget *>(QStringLiteral("NetInfoUIPlugin_WidgetParent"));
    QVERIFY(page);
    page->show();
    QCOMPARE(plugin->FitSize(rect), 0);
    const QString before = rowText(0, 0, -1);
    QTRY_VERIFY_WITH_TIMEOUT(rowText(0, 0, -1) != before, 10000); // the connection time runs
    QVERIFY(rowText(0, 2, 1).startsWith(QLatin1String("Data: ")));
    QVERIFY2(!tree()->topLevelItem(0)->icon(0).isNull(), "the shipped icons are there");

    for (const char *code : { "ar", "de", "en" }) {
        QVERIFY(m_languages->use(QLatin1String(code)));
        QCOMPARE(notify->Notify(320, 0, 0), 0);
        QCOMPARE(tree()->topLevelItem(1)->text(0),
                 QCoreApplication::translate("NetInfoUIExPlugin", "IDS_TREE_STATISTICS"));
    }
    QCOMPARE(notify->Notify(837, 0, 0), 0);
    plugin->OnDestroy();
    QVERIFY(!plugin->ShowWindow(m_window.data(), rect));
    QCOMPARE(notify->Notify(837, 0, 0), -1);
    QVERIFY(m_window->children().isEmpty());
    m_window.reset();
}

QTEST_MAIN(tst_PluginModule)
#include "tst_pluginmodule.moc"
