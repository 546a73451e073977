#include <MainWindow.h>
#include <Session.h>

#include <HostPaths.h>

#include <host/INotifyService.h>
#include <host/IPluginContainer.h>
#include <host/Startup.h>

#include <QAction>
#include <QDialog>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QSemaphore>
#include <QTabBar>
#include <QTemporaryDir>
#include <QThread>
#include <QtTest>

#include <atomic>
#include <thread>

#include "LibraryFolder.h"
#include "SettingsFile.h"
#include "TestLog.h"

namespace {

const QString kNotifyService = QStringLiteral("5B1E7C20-3D4A-4F6B-9C81-2A7D0E4F6B13");
const QString kConnection = QStringLiteral("3F6A2B91-C84D-4E07-A1F3-6D52E0B9C724");
constexpr int kNotifyKind = 8209;

// The way a plug-in sends a message: by names and numbers alone.
int sendMessage(const QString &target, unsigned int msg, unsigned int wparam, unsigned int lparam)
{
    QObject *object = Startup::GetPluginContainer()->GetPlugin(kNotifyService, kNotifyKind);
    if (!object)
        return -4711;
    auto *service = static_cast<INotifyService *>(
        object->qt_metacast("com.valtrix.skylet.plugin.INotifyService"));
    return service ? service->NotifyMessage(target, msg, wparam, lparam) : -4712;
}

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
    for (QAction *action : window()->findChild<QMenu *>("Host_Languages")->actions()) {
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
    void theSavedPeriodStartIsToldFirst();
    void aNewPeriodStartReachesThePlugin();
    void theNotifyServiceAnswersItsKindAlone();
    void otherMessagesDoNothing_data();
    void otherMessagesDoNothing();
    void aMessageEndsTheConnection();
    void theMenuEndsTheConnection();
    void theMenuMakesTheConnectionAgain();
    void aDeviceIsChosenFromTheList();
    void aLanguageTurnsTheWindowAndReachesThePlugin();
    void everyStartedPluginMayHaveSettings();
    void closingRemembersTheView();
    void thePluginEndsBeforeItsWidgets();

private:
    QStringList takeCalls() const;
    [[nodiscard]] SdkCalls sdkCalls();
    [[nodiscard]] QString settingsFile() const
    {
        return m_data.filePath("DataUsageLimit.ini");
    }
    [[nodiscard]] static QString lastMessage()
    {
        const auto *label = window()->findChild<QLabel *>("Host_MessageText");
        return label->isVisible() ? label->text().section('\n', -1) : QString();
    }

    struct Told
    {
        int weekday;
        int dayOfMonth;
        bool beforePlugins;
    };
    QVector<Told> m_told;
    QSemaphore m_entered;
    QSemaphore m_release;
    std::atomic<int> m_result { 0 };
    std::atomic<bool> m_endsDemo { false }; // the scripted connection goes down
    std::atomic<int> m_left { 0 };
    QStringList m_used;
    bool m_refusesDevice = false;
    LibraryFolder m_library;
    QTemporaryDir m_data;
    QObject *m_plugin = nullptr; // lives as long as the process
    QScopedPointer<Session> m_session;
    QScopedPointer<TestLog> m_log;
};

void tst_Session::initTestCase()
{
    m_library.addModule("first", "refusing");
    m_library.addModule("page", "good");
    m_library.addModule("settings", "second");
    m_library.addFile("broken", "text.so", "text");
    HostPaths::setLibraryPath(m_library.path());
    Options options;
    options.demo = true;
    options.dataDirectory = m_data.path();
    options.language = "en";
    QVERIFY(SettingsFile::replace(settingsFile(), 3, 30));
    m_session.reset(new Session(options, false, sdkCalls()));
    QVERIFY(!m_session->prepare());
    QVERIFY(window());
    window()->show();
    m_plugin = Startup::GetPluginContainer()->GetPlugin("TEST-PAGE", 4098);
    QVERIFY(m_plugin);
}

// Disconnecting lasts until a test lets it go.
SdkCalls tst_Session::sdkCalls()
{
    SdkCalls calls;
    calls.setPeriodStart = [this](int weekday, int dayOfMonth) {
        m_told.append({ weekday, dayOfMonth, Startup::GetPluginContainer() == nullptr });
        return VELQ_StatisticsSrv_SetPeriodStart(weekday, dayOfMonth);
    };
    calls.disconnect = [this] {
        m_entered.release();
        m_release.acquire();
        ++m_left;
        return m_endsDemo ? VELQ_NetConnectSrv_Disconnect() : m_result.load();
    };
    calls.useDevice = [this](const char *device) {
        m_used.append(QString::fromUtf8(device));
        return m_refusesDevice ? 1 : VELQ_DevSrv_UseDevice(device);
    };
    return calls;
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

void tst_Session::theSavedPeriodStartIsToldFirst()
{
    QCOMPARE(m_told.size(), 1);
    QCOMPARE(m_told.constFirst().weekday, 3);
    QCOMPARE(m_told.constFirst().dayOfMonth, 31);
    QVERIFY(m_told.constFirst().beforePlugins);
}

void tst_Session::aNewPeriodStartReachesThePlugin()
{
    takeCalls();
    QVERIFY(SettingsFile::replace(settingsFile(), 6, 14));
    QTRY_COMPARE(m_told.size(), 2);
    QCOMPARE(m_told.constLast().weekday, 6);
    QCOMPARE(m_told.constLast().dayOfMonth, 15);
    QCOMPARE(takeCalls().count("Notify 837"), 1);
    QVERIFY(SettingsFile::write(settingsFile(), SettingsFile::text(5, 14)));
    QTRY_COMPARE(m_told.size(), 3); // a change that no watcher tells is seen with the next sample
}

void tst_Session::theNotifyServiceAnswersItsKindAlone()
{
    IPluginContainer *container = Startup::GetPluginContainer();
    QVERIFY(container->IsPluginAvailable(kNotifyService));
    QVERIFY(container->GetPlugin(kNotifyService, kNotifyKind));
    for (const int kind : { 0, 4098, kNotifyKind - 1, kNotifyKind + 1 })
        QVERIFY(!container->GetPlugin(kNotifyService, kind));
}

void tst_Session::otherMessagesDoNothing_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<unsigned int>("msg");
    QTest::addColumn<unsigned int>("wparam");
    QTest::addColumn<unsigned int>("lparam");
    QTest::newRow("unknown target") << "TEST-PAGE" << 514U << 0U << 0U;
    QTest::newRow("no target") << QString() << 514U << 0U << 0U;
    QTest::newRow("the service itself") << kNotifyService << 514U << 0U << 0U;
    QTest::newRow("message below") << kConnection << 513U << 0U << 0U;
    QTest::newRow("message above") << kConnection << 515U << 0U << 0U;
    QTest::newRow("first parameter") << kConnection << 514U << 1U << 0U;
    QTest::newRow("second parameter") << kConnection << 514U << 0U << 1U;
}

void tst_Session::otherMessagesDoNothing()
{
    QFETCH(QString, target);
    QFETCH(unsigned int, msg);
    QFETCH(unsigned int, wparam);
    QFETCH(unsigned int, lparam);
    const QString before = lastMessage();
    QVERIFY(sendMessage(target, msg, wparam, lparam) != 0);
    QCoreApplication::processEvents();
    QCOMPARE(lastMessage(), before);
    QVERIFY(!m_entered.tryAcquire(1, 50));
}

void tst_Session::aMessageEndsTheConnection()
{
    m_result = VELQ_DISCONNECT_NO_SERVICE;
    QCOMPARE(sendMessage(kConnection, 514, 0, 0), 0); // returns while the call is running
    QVERIFY(sendMessage(kConnection, 514, 0, 0) != 0);
    m_entered.acquire();
    QCOMPARE(lastMessage(), QString::fromUtf8("The connection is being ended…"));
    m_release.release();
    QTRY_COMPARE(lastMessage(),
                 QString("The connection cannot be ended: NetworkManager is not running."));
    QCOMPARE(m_left.load(), 1);
}

void tst_Session::theMenuEndsTheConnection()
{
    auto *entry = window()->findChild<QAction *>("Host_Disconnect");
    QTRY_VERIFY(entry->isEnabled()); // once a sample of the demonstration has come
    m_endsDemo = true;
    entry->trigger();
    m_entered.acquire();
    QVERIFY(!entry->isEnabled());
    m_release.release();
    const QString ended = QStringLiteral("The connection has been ended.");
    QTRY_COMPARE(lastMessage(), ended);
    m_endsDemo = false;
    const auto *status = window()->findChild<QLabel *>("Host_StatusConnection");
    QTRY_VERIFY(status->text().endsWith("Not connected"));
    QVERIFY(!entry->isEnabled());
    QCOMPARE(lastMessage(), ended);
}

void tst_Session::theMenuMakesTheConnectionAgain()
{
    auto *entry = window()->findChild<QAction *>("Host_Connect");
    QVERIFY(entry->isEnabled());
    entry->trigger(); // the demonstration's pause ends
    QCOMPARE(lastMessage(), QString::fromUtf8("Connecting…"));
    QVERIFY(!entry->isEnabled());
    const auto *status = window()->findChild<QLabel *>("Host_StatusConnection");
    QTRY_VERIFY(status->text().endsWith("Connected"));
    QVERIFY(!lastMessage().startsWith("Connecting"));
    QVERIFY(!entry->isEnabled());
}

void tst_Session::aDeviceIsChosenFromTheList()
{
    auto *menu = window()->findChild<QMenu *>("Host_Devices");
    QVERIFY(menu->isEnabled());
    emit menu->aboutToShow();
    const auto choices = [menu] {
        QStringList texts;
        for (const QAction *action : menu->actions()) {
            if (!action->isSeparator())
                texts.append(action->text() + (action->isChecked() ? "*" : ""));
        }
        return texts;
    };
    QCOMPARE(choices(), QStringList({ "&Automatic*", "demo0" }));
    menu->actions().constLast()->trigger();
    QCOMPARE(m_used.constLast(), QString("name:demo0"));
    emit menu->aboutToShow();
    QCOMPARE(choices(), QStringList({ "&Automatic", "demo0*" }));
    m_refusesDevice = true;
    menu->actions().constFirst()->trigger();
    QCOMPARE(m_used.constLast(), QString());
    QCOMPARE(lastMessage(),
             QStringLiteral("The device cannot be chosen now: another program counts."));
    m_refusesDevice = false;
    emit menu->aboutToShow();
    menu->actions().constFirst()->trigger();
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

void tst_Session::everyStartedPluginMayHaveSettings()
{
    auto *entry = window()->findChild<QAction *>("Host_SettingsEntry");
    QVERIFY(!entry->isVisible()); // none has a name
    for (const char *id : { "TEST-REFUSING", "TEST-PAGE", "TEST-SECOND" }) {
        QObject *plugin = Startup::GetPluginContainer()->GetPlugin(id, 4098);
        QVERIFY2(plugin, id);
        plugin->setProperty("moduleName", id);
    }
    chooseLanguage("fr");
    QVERIFY(entry->isVisible());
    entry->trigger();
    const auto *list = window()->findChild<QListWidget *>("Host_SettingsPages");
    QVERIFY(list);
    QCOMPARE(list->count(), 2);
    QCOMPARE(list->item(0)->text(), QString("TEST-PAGE"));
    QCOMPARE(list->item(1)->text(), QString("TEST-SECOND"));
    window()->findChild<QDialog *>("Host_Settings")->reject();
    chooseLanguage("de");
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
    const int left = m_left;
    QCOMPARE(sendMessage(kConnection, 514, 0, 0), 0);
    m_entered.acquire();
    std::thread later([this] {
        QThread::msleep(200); // the end has begun by then
        m_release.release();
    });
    m_session.reset();
    later.join();
    QCOMPARE(m_left.load(), left + 1); // it was waited for
    QCOMPARE(takeCalls(), QStringList("OnDestroy in the window"));
    QVERIFY(!Startup::GetPluginContainer());
    QCOMPARE(QApplication::topLevelWidgets(), QWidgetList());
}

QTEST_MAIN(tst_Session)
#include "tst_session.moc"
