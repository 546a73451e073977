#include <MainWindow.h>
#include <Session.h>

#include <HostPaths.h>

#include <host/IPluginContainer.h>
#include <host/Startup.h>

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QTabBar>
#include <QTemporaryDir>
#include <QtTest>

#include "LibraryFolder.h"
#include "TestLog.h"

namespace {

MainWindow *window()
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (auto *found = qobject_cast<MainWindow *>(widget))
            return found;
    }
    return nullptr;
}

void chooseLanguage(const QString &code)
{
    for (QAction *action : window()->menuBar()->actions().at(2)->menu()->actions()) {
        if (action->data().toString() == code)
            action->trigger();
    }
}

} // namespace

// One session, since a process has one device SDK: its life from the plug-ins to their end.
class tst_Session : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();
    void thePluginIsOnTheStage();
    void theHostIsTheConnectionPlugin();
    void aFailedPluginIsSaidInTheWindow();
    void theFiguresReachTheStatusLine();
    void aLanguageTurnsTheWindowAndReachesThePlugin();
    void closingRemembersTheView();
    void thePluginEndsBeforeItsWidgets();

private:
    QStringList takeCalls() const;

    LibraryFolder m_library;
    QTemporaryDir m_data;
    QObject *m_plugin = nullptr; // lives as long as the process
    QScopedPointer<Session> m_session;
    QScopedPointer<TestLog> m_log;
};

void tst_Session::initTestCase()
{
    m_library.addModule("page", "good");
    m_library.addFile("broken", "text.so", "text");
    HostPaths::setLibraryPath(m_library.path());
    Options options;
    options.demo = true;
    options.dataDirectory = m_data.path();
    options.language = "en";
    m_session.reset(new Session(options, false));
    QVERIFY(!m_session->prepare());
    QVERIFY(window());
    window()->show();
    m_plugin = Startup::GetPluginContainer()->GetPlugin("TEST-PAGE", 4098);
    QVERIFY(m_plugin);
}

void tst_Session::init()
{
    m_log.reset(new TestLog);
}

void tst_Session::cleanup()
{
    const QStringList problems = m_log->takeProblems();
    m_log.reset();
    QCOMPARE(problems, QStringList());
}

QStringList tst_Session::takeCalls() const
{
    const QStringList calls = m_plugin->property("calls").toStringList();
    m_plugin->setProperty("calls", QStringList());
    return calls;
}

void tst_Session::thePluginIsOnTheStage()
{
    const QStringList calls = takeCalls();
    QVERIFY(calls.contains("Init"));
    QCOMPARE(calls.count("Init"), 1);
    const auto *page = window()->findChild<QWidget *>("NetInfoUIPlugin_WidgetParent");
    QVERIFY(page);
    QTRY_VERIFY(page->isVisible());
}

void tst_Session::theHostIsTheConnectionPlugin()
{
    QVERIFY(
        Startup::GetPluginContainer()->IsPluginAvailable("D0B83E56-19F2-4C6A-B7E4-05A9C31D8F62"));
}

void tst_Session::aFailedPluginIsSaidInTheWindow()
{
    const auto *label = window()->findChild<QLabel *>("Host_MessageText");
    QVERIFY(label->isVisible());
    QVERIFY(label->text().contains("/plugins/broken/text.so: It cannot be loaded: "));
    QVERIFY(!QApplication::activeModalWidget());
}

void tst_Session::theFiguresReachTheStatusLine()
{
    const auto *label = window()->findChild<QLabel *>("Host_StatusInterface");
    QTRY_COMPARE(label->text(), QString("demo0"));
}

void tst_Session::aLanguageTurnsTheWindowAndReachesThePlugin()
{
    takeCalls();
    chooseLanguage("ar");
    QCOMPARE(QGuiApplication::layoutDirection(), Qt::RightToLeft);
    QCOMPARE(takeCalls().count("Notify 320"), 1);
    QCOMPARE(window()->findChild<QTabBar *>("Host_Views")->tabText(1),
             QString::fromUtf8("الإ&حصاءات"));
    chooseLanguage("ar");
    QCOMPARE(takeCalls().count("Notify 320"), 0);
    chooseLanguage("de");
    QCOMPARE(QGuiApplication::layoutDirection(), Qt::LeftToRight);
    QCOMPARE(HostSettings(m_data.path() + '/').language(), QString("de"));
}

void tst_Session::closingRemembersTheView()
{
    window()->setView(HostView::Usage);
    window()->close();
    const HostSettings settings(m_data.path() + '/');
    QVERIFY(settings.view() == HostView::Usage);
    QVERIFY(!settings.geometry().isEmpty());
}

void tst_Session::thePluginEndsBeforeItsWidgets()
{
    takeCalls();
    m_session.reset();
    QCOMPARE(takeCalls(), QStringList("OnDestroy in the window"));
    QVERIFY(!Startup::GetPluginContainer());
    QCOMPARE(QApplication::topLevelWidgets(), QWidgetList());
}

QTEST_MAIN(tst_Session)
#include "tst_session.moc"
