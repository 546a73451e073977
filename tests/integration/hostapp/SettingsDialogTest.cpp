#include "SettingsDialogTest.h"

#include <host/IBasePlugin.h>

#include <QApplication>

void SettingsDialogTest::initTestCase()
{
    m_languages.reset(new Languages(NETINFO_LANG_BUILT));
}

void SettingsDialogTest::init()
{
    m_languages->use("en");
    m_log.reset(new TestLog);
    m_folder.reset(new LibraryFolder);
    m_window.reset(new QWidget);
    m_window->show();
    for (const char *module : { "good", "second" }) {
        QObject *plugin = loadPlugin(m_folder->addModule(module, module));
        plugin->setProperty("moduleName", module);
        m_plugins.append(plugin);
    }
}

void SettingsDialogTest::cleanup()
{
    m_window.reset();
    for (QObject *plugin : m_plugins) {
        if (plugin)
            qobject_cast<IBasePlugin *>(plugin)->OnDestroy();
    }
    m_plugins.clear();
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
    const QStringList problems = m_log->takeProblems();
    m_log.reset();
    QCOMPARE(problems, QStringList());
    QCOMPARE(QApplication::topLevelWidgets(), QWidgetList());
}

void SettingsDialogTest::open(int count)
{
    delete m_dialog;
    SettingModules modules;
    for (int i = 0; i < count; ++i)
        modules.append(SettingModule(m_plugins.at(i)));
    m_dialog = new SettingsDialog(modules, m_window.data());
    m_dialog->open();
    QVERIFY(QTest::qWaitForWindowExposed(m_dialog));
    m_dialog->activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), m_dialog.data());
}
