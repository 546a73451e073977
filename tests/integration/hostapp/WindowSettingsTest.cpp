#include "WindowSettingsTest.h"

#include <host/IBasePlugin.h>

#include <QApplication>

void WindowSettingsTest::initTestCase()
{
    m_languages.reset(new Languages(NETINFO_LANG_BUILT));
}

void WindowSettingsTest::init()
{
    m_languages->use("en");
    m_log.reset(new TestLog);
    m_folder.reset(new LibraryFolder);
    m_window.reset(new MainWindow({ "en", "de", "ar" }));
    m_plugin = loadPlugin(m_folder->addModule("good", "good"));
    m_plugin->setProperty("moduleName", "Data usage");
    QVERIFY(m_window->stage()->enter(m_plugin));
    m_window->setSettingModules({ SettingModule(), SettingModule(m_plugin) });
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.data()));
    m_window->activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), m_window.data());
}

void WindowSettingsTest::cleanup()
{
    m_window.reset();
    qobject_cast<IBasePlugin *>(m_plugin)->OnDestroy();
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
    const QStringList problems = m_log->takeProblems();
    m_log.reset();
    QCOMPARE(problems, QStringList());
    QCOMPARE(QApplication::topLevelWidgets(), QWidgetList());
}

void WindowSettingsTest::showOnStage()
{
    QTest::mouseClick(child("Test_SetLimit"), Qt::LeftButton);
    QTRY_VERIFY(isStageInUse());
    takeCalls(m_plugin);
}
