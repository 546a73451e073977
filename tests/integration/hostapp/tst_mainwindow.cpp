#include <LiveFeed.h>
#include <MainWindow.h>
#include <PluginStage.h>
#include <StatusLine.h>

#include <Languages.h>

#include <host/velq_extension.h>

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabBar>
#include <QtTest>

#include "TestLog.h"

Q_DECLARE_METATYPE(HostView)

class tst_MainWindow : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();
    void statisticsIsTheFirstView();
    void theTabsChooseTheView();
    void theKeyboardChoosesTheView_data();
    void theKeyboardChoosesTheView();
    void settingTheSameViewSaysNothing();
    void theLanguagesAreOffered();
    void everyTextIsFetchedAgain();
    void messagesAppearAndGo();
    void fileNamesAreNoMarkup();
    void theStatusFollowsTheSamples();
    void aDemonstrationIsNamed();
    void aStoreProblemAppearsAndGoes();
    void aLongProblemDoesNotWidenTheWindow();
    void everythingHasANameForReaders();
    void anEmptyStageIsExplained();
    void disconnectingIsOfferedWhileConnected();
    void choosingDisconnectIsAnnounced();
    void everyDisconnectResultIsSaid_data();
    void everyDisconnectResultIsSaid();
    void anOldDisconnectResultGoes();
    void disconnectingKeepsOtherMessages();
    void whatWasDismissedStaysAway();
    void aNoticeFollowsTheLanguage();
    void closingIsAnnounced();

private:
    template <typename Widget>
    [[nodiscard]] Widget *child(const char *name) const
    {
        return m_window->findChild<Widget *>(QLatin1String(name));
    }
    [[nodiscard]] QTabBar *tabs() const
    {
        return child<QTabBar>("Host_Views");
    }
    [[nodiscard]] QAction *disconnectEntry() const
    {
        return m_window->findChild<QAction *>("Host_Disconnect");
    }
    [[nodiscard]] QString messageText() const // empty while the bar is hidden
    {
        return child<QWidget>("Host_MessageBar")->isVisible()
            ? child<QLabel>("Host_MessageText")->text()
            : QString();
    }

    QScopedPointer<Languages> m_languages;
    QScopedPointer<MainWindow> m_window;
    QScopedPointer<TestLog> m_log;
};

void tst_MainWindow::initTestCase()
{
    m_languages.reset(new Languages(NETINFO_LANG_BUILT));
    qRegisterMetaType<HostView>();
}

void tst_MainWindow::init()
{
    m_languages->use("en");
    m_log.reset(new TestLog);
    m_window.reset(new MainWindow({ "en", "de", "ar" }));
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.data()));
}

void tst_MainWindow::cleanup()
{
    m_window.reset();
    const QStringList problems = m_log->takeProblems();
    m_log.reset();
    QCOMPARE(problems, QStringList());
    QCOMPARE(QApplication::topLevelWidgets(), QWidgetList());
}

void tst_MainWindow::statisticsIsTheFirstView()
{
    QVERIFY(m_window->view() == HostView::Statistics);
    QCOMPARE(tabs()->currentIndex(), 1);
    QCOMPARE(tabs()->tabText(0), QString("&Usage"));
    QCOMPARE(tabs()->tabText(1), QString("&Statistics"));
}

void tst_MainWindow::theTabsChooseTheView()
{
    QSignalSpy chosen(m_window.data(), &MainWindow::viewChosen);
    QTest::mouseClick(tabs(), Qt::LeftButton, Qt::KeyboardModifiers(), tabs()->tabRect(0).center());
    QVERIFY(m_window->view() == HostView::Usage);
    QVERIFY(m_window->stage()->view() == HostView::Usage);
    QCOMPARE(chosen.count(), 1);
}

void tst_MainWindow::theKeyboardChoosesTheView_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifier");
    QTest::newRow("arrow") << int(Qt::Key_Left) << int(Qt::NoModifier);
    QTest::newRow("mnemonic") << int(Qt::Key_U) << int(Qt::AltModifier);
    QTest::newRow("shortcut") << int(Qt::Key_1) << int(Qt::ControlModifier);
}

void tst_MainWindow::theKeyboardChoosesTheView()
{
    QFETCH(int, key);
    QFETCH(int, modifier);
    m_window->activateWindow();
    tabs()->setFocus();
    QTRY_VERIFY(tabs()->hasFocus());
    QTest::keyClick(tabs(), Qt::Key(key), Qt::KeyboardModifiers(modifier));
    QTRY_VERIFY(m_window->view() == HostView::Usage);
    QCOMPARE(tabs()->currentIndex(), 0);
}

void tst_MainWindow::settingTheSameViewSaysNothing()
{
    QSignalSpy chosen(m_window.data(), &MainWindow::viewChosen);
    m_window->setView(HostView::Statistics);
    QCOMPARE(chosen.count(), 0);
    m_window->setView(HostView::Usage);
    QCOMPARE(chosen.count(), 1);
    QCOMPARE(tabs()->currentIndex(), 0);
}

void tst_MainWindow::theLanguagesAreOffered()
{
    QCOMPARE(m_window->menuBar()->actions().size(), 4); // file, view, device, language
    const QList<QAction *> languages = child<QMenu>("Host_Languages")->actions();
    QCOMPARE(languages.size(), 3);
    QCOMPARE(languages.at(1)->text(), QString("Deutsch"));
    QVERIFY(languages.at(0)->isChecked());
    QSignalSpy chosen(m_window.data(), &MainWindow::languageChosen);
    languages.at(1)->trigger();
    QCOMPARE(chosen.count(), 1);
    QCOMPARE(chosen.at(0).at(0).toString(), QString("de"));
}

void tst_MainWindow::everyTextIsFetchedAgain()
{
    QVERIFY(m_languages->use("de"));
    m_window->retranslate("de");
    QCOMPARE(tabs()->tabText(0), QString("&Verbrauch"));
    QCOMPARE(m_window->menuBar()->actions().at(0)->text(), QString("&Datei"));
    QCOMPARE(child<QLabel>("Host_StatusConnection")->text(), QString("Nicht verbunden"));
    QCOMPARE(child<QPushButton>("Host_MessageDismiss")->text(), QString::fromUtf8("S&chließen"));
    QVERIFY(child<QMenu>("Host_Languages")->actions().at(1)->isChecked());
    QVERIFY(m_window->view() == HostView::Statistics);
}

void tst_MainWindow::messagesAppearAndGo()
{
    auto *bar = child<QWidget>("Host_MessageBar");
    QVERIFY(!bar->isVisible());
    m_window->setMessages({ "first", "second" });
    QVERIFY(bar->isVisible());
    QCOMPARE(child<QLabel>("Host_MessageText")->text(), QString("first\nsecond"));
    QVERIFY(!QApplication::activeModalWidget());
    QTest::mouseClick(child<QPushButton>("Host_MessageDismiss"), Qt::LeftButton);
    QVERIFY(!bar->isVisible());
    m_window->setMessages({ "third" });
    QVERIFY(bar->isVisible());
    m_window->setMessages({});
    QVERIFY(!bar->isVisible());
}

void tst_MainWindow::fileNamesAreNoMarkup()
{
    m_window->setMessages({ "<b>x</b>" });
    QCOMPARE(child<QLabel>("Host_MessageText")->textFormat(), Qt::PlainText);
}

void tst_MainWindow::theStatusFollowsTheSamples()
{
    QCOMPARE(child<QLabel>("Host_StatusInterface")->text(), QString("No interface"));
    QCOMPARE(child<QLabel>("Host_StatusConnection")->text(), QString("Not connected"));
    LiveSample sample;
    sample.interfaceName = "wwan0";
    sample.connected = true;
    m_window->statusLine()->setSample(sample);
    QCOMPARE(child<QLabel>("Host_StatusInterface")->text(), QString("wwan0"));
    QCOMPARE(child<QLabel>("Host_StatusConnection")->text(), QString("Connected"));
    sample.connected = false;
    m_window->statusLine()->setSample(sample);
    QCOMPARE(child<QLabel>("Host_StatusConnection")->text(), QString("Not connected"));
}

void tst_MainWindow::aDemonstrationIsNamed()
{
    m_window->statusLine()->setDemo(true);
    QCOMPARE(child<QLabel>("Host_StatusConnection")->text(),
             QString::fromUtf8("Demonstration · Not connected"));
}

void tst_MainWindow::aStoreProblemAppearsAndGoes()
{
    auto *label = child<QLabel>("Host_StatusStore");
    QVERIFY(!label->isVisible());
    m_window->statusLine()->setStoreProblem("The disk is full.");
    QVERIFY(label->isVisible());
    QCOMPARE(label->text(), QString("The disk is full."));
    m_window->statusLine()->setStoreProblem(QString());
    QVERIFY(!label->isVisible());
}

void tst_MainWindow::aLongProblemDoesNotWidenTheWindow()
{
    const int width = m_window->width();
    m_window->statusLine()->setStoreProblem(QString(2000, 'x'));
    m_window->setMessages({ QString("a message of many words ").repeated(100) });
    QCoreApplication::processEvents();
    QCOMPARE(m_window->width(), width);
    QVERIFY(m_window->minimumSizeHint().width() < width);
}

void tst_MainWindow::everythingHasANameForReaders()
{
    for (const char *name : { "Host_Views", "Host_Stage", "Host_MessageBar", "Host_StatusInterface",
                              "Host_StatusConnection", "Host_StatusStore" }) {
        const auto *widget = child<QWidget>(name);
        QVERIFY2(widget, name);
        QVERIFY2(!widget->accessibleName().isEmpty(), name);
        QVERIFY2(!widget->accessibleName().startsWith("HOST_"), name);
    }
}

void tst_MainWindow::anEmptyStageIsExplained()
{
    auto *label = child<QLabel>("Host_EmptyStage");
    QVERIFY(!label->isVisible());
    m_window->showEmptyStage();
    QVERIFY(label->isVisible());
    QVERIFY(!m_window->stage()->isVisible());
    QVERIFY(label->text().startsWith("No plug-in"));
}

void tst_MainWindow::disconnectingIsOfferedWhileConnected()
{
    QVERIFY(m_window->menuBar()->actions().at(0)->menu()->actions().contains(disconnectEntry()));
    QCOMPARE(disconnectEntry()->text(), QString("&Disconnect"));
    QVERIFY(!disconnectEntry()->isEnabled());
    m_window->setConnected(true);
    QVERIFY(disconnectEntry()->isEnabled());
    m_window->showDisconnecting();
    QVERIFY(!disconnectEntry()->isEnabled());
    m_window->showDisconnected(VELQ_DISCONNECT_REFUSED);
    QVERIFY(disconnectEntry()->isEnabled());
    m_window->showDisconnecting();
    m_window->setConnected(false);
    m_window->showDisconnected(VELQ_DISCONNECT_DONE);
    QVERIFY(!disconnectEntry()->isEnabled());
}

void tst_MainWindow::choosingDisconnectIsAnnounced()
{
    QSignalSpy chosen(m_window.data(), &MainWindow::disconnectChosen);
    m_window->setConnected(true);
    disconnectEntry()->trigger();
    QCOMPARE(chosen.count(), 1);
    QCOMPARE(messageText(), QString()); // saying something is up to whoever does it
}

void tst_MainWindow::everyDisconnectResultIsSaid_data()
{
    QTest::addColumn<int>("result");
    QTest::addColumn<QString>("text");
    QTest::newRow("done") << int(VELQ_DISCONNECT_DONE) << "The connection has been ended.";
    QTest::newRow("no connection")
        << int(VELQ_DISCONNECT_NO_CONNECTION) << "There is no connection to end.";
    QTest::newRow("no service") << int(VELQ_DISCONNECT_NO_SERVICE)
                                << "The connection cannot be ended: NetworkManager is not running.";
    QTest::newRow("not managed")
        << int(VELQ_DISCONNECT_NOT_MANAGED)
        << "The connection cannot be ended: NetworkManager does not manage it.";
    QTest::newRow("refused") << int(VELQ_DISCONNECT_REFUSED)
                             << "The connection cannot be ended: you are not permitted to.";
    const QString failed = QStringLiteral("The connection could not be ended: NetworkManager "
                                          "reported an error or did not answer.");
    QTest::newRow("failed") << int(VELQ_DISCONNECT_FAILED) << failed;
    QTest::newRow("unknown") << 4711 << failed;
}

void tst_MainWindow::everyDisconnectResultIsSaid()
{
    QFETCH(int, result);
    m_window->setConnected(true);
    m_window->showDisconnecting();
    QCOMPARE(messageText(), QString::fromUtf8("The connection is being ended…"));
    m_window->showDisconnected(result);
    QTEST(messageText(), "text");
    QVERIFY(!QApplication::activeModalWidget());
}

void tst_MainWindow::anOldDisconnectResultGoes()
{
    m_window->setConnected(true);
    m_window->showDisconnected(VELQ_DISCONNECT_DONE);
    m_window->setConnected(true); // the next sample is still of the connection as it was
    m_window->setConnected(false);
    QCOMPARE(messageText(), QString("The connection has been ended."));
    m_window->setConnected(true);
    QCOMPARE(messageText(), QString());
    m_window->showDisconnected(VELQ_DISCONNECT_REFUSED);
    m_window->setConnected(true);
    QVERIFY(!messageText().isEmpty());
    m_window->setConnected(false);
    QCOMPARE(messageText(), QString());
    m_window->showDisconnecting();
    m_window->setConnected(true);
    QVERIFY(!messageText().isEmpty()); // until there is a result
}

void tst_MainWindow::disconnectingKeepsOtherMessages()
{
    m_window->setMessages({ "first" });
    m_window->setConnected(true);
    m_window->showDisconnected(VELQ_DISCONNECT_DONE);
    QCOMPARE(messageText(), QString("first\nThe connection has been ended."));
    m_window->setConnected(false);
    m_window->setConnected(true);
    QCOMPARE(messageText(), QString("first"));
}

void tst_MainWindow::whatWasDismissedStaysAway()
{
    m_window->setMessages({ "first" });
    m_window->showDisconnected(VELQ_DISCONNECT_DONE);
    QTest::mouseClick(child<QPushButton>("Host_MessageDismiss"), Qt::LeftButton);
    QCOMPARE(messageText(), QString());
    m_window->retranslate("en");
    QCOMPARE(messageText(), QString());
    m_window->showDisconnected(VELQ_DISCONNECT_NO_CONNECTION);
    QCOMPARE(messageText(), QString("There is no connection to end."));
}

void tst_MainWindow::aNoticeFollowsTheLanguage()
{
    m_window->showDisconnected(VELQ_DISCONNECT_NO_SERVICE);
    QVERIFY(m_languages->use("de"));
    m_window->retranslate("de");
    QCOMPARE(messageText(),
             QString("Die Verbindung kann nicht getrennt werden: NetworkManager läuft nicht."));
    QCOMPARE(disconnectEntry()->text(), QString("&Trennen"));
}

void tst_MainWindow::closingIsAnnounced()
{
    QSignalSpy closing(m_window.data(), &MainWindow::closing);
    m_window->close();
    QCOMPARE(closing.count(), 1);
}

QTEST_MAIN(tst_MainWindow)
#include "tst_mainwindow.moc"
