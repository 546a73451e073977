#include <ConnectNotice.h>
#include <DeviceMenu.h>
#include <MainWindow.h>

#include <Languages.h>

#include <host/velq_extension.h>

#include <QAction>
#include <QLabel>
#include <QSignalSpy>
#include <QtTest>

#include "TestLog.h"

//! The list of devices, and what the window says of connecting.
class tst_DeviceMenu : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();
    void withoutDevicesThereIsTheAutomaticChoice();
    void theUsedDeviceIsChecked();
    void aDeviceThatIsNotThereSaysSo();
    void aUsedNameIsItsDevice();
    void aUsedNameThatNobodyKnowsIsShown();
    void aChoiceIsTold();
    void eachShowingReadsAnew();
    void ampersandsAreNoMnemonics();
    void deviceTexts_data();
    void deviceTexts();
    void connectingIsOfferedWhileNothingIsConnected();
    void aConnectFailureIsSaidUntilConnected();
    void noticesOfConnecting_data();
    void noticesOfConnecting();

private:
    [[nodiscard]] QStringList shown(DeviceMenu &menu) const;
    [[nodiscard]] static QString noticeOf(MainWindow &window);

    Languages m_languages { QStringLiteral(NETINFO_LANG_BUILT) };
    QScopedPointer<TestLog> m_log;
    HostDevices m_devices;
};

void tst_DeviceMenu::initTestCase()
{
    QVERIFY(m_languages.use(QStringLiteral("en")));
}

void tst_DeviceMenu::init()
{
    m_log.reset(new TestLog);
    m_devices = {};
    m_devices.list = { { "sim:1/2", "Stick (Operator), wwan0", true, true, "wwan0" },
                       { "hw:02", "eth0", true, false, "eth0" },
                       { "name:usb0", "usb0", false, false, "usb0" } };
}

void tst_DeviceMenu::cleanup()
{
    const QStringList problems = m_log->takeProblems();
    m_log.reset();
    QCOMPARE(problems, QStringList());
}

//! Each entry's text, with a star where it is checked.
QStringList tst_DeviceMenu::shown(DeviceMenu &menu) const
{
    menu.setReader([this] { return m_devices; });
    emit menu.aboutToShow();
    QStringList texts;
    for (const QAction *action : menu.actions()) {
        if (!action->isSeparator())
            texts.append(action->text() + (action->isChecked() ? "*" : ""));
    }
    return texts;
}

void tst_DeviceMenu::withoutDevicesThereIsTheAutomaticChoice()
{
    DeviceMenu menu;
    m_devices = {};
    QCOMPARE(shown(menu), QStringList({ "&Automatic*" }));
}

void tst_DeviceMenu::theUsedDeviceIsChecked()
{
    DeviceMenu menu;
    QCOMPARE(shown(menu).value(0), QStringLiteral("&Automatic*"));
    m_devices.used = "hw:02";
    QCOMPARE(
        shown(menu),
        QStringList({ "&Automatic", "Stick (Operator), wwan0", "eth0*", "usb0 (not present)" }));
}

void tst_DeviceMenu::aDeviceThatIsNotThereSaysSo()
{
    DeviceMenu menu;
    QCOMPARE(shown(menu).value(3), QStringLiteral("usb0 (not present)"));
    m_devices.used = "name:usb0";
    QCOMPARE(shown(menu).value(3), QStringLiteral("usb0 (not present)*"));
}

//! "velqctl use wwan0" remembers the name; the present device is before one that had it once.
void tst_DeviceMenu::aUsedNameIsItsDevice()
{
    DeviceMenu menu;
    m_devices.list.append({ "hw:03", "Old stick, wwan0", false, false, "wwan0" });
    m_devices.used = "wwan0";
    QCOMPARE(shown(menu),
             QStringList({ "&Automatic", "Stick (Operator), wwan0*", "eth0", "usb0 (not present)",
                           "Old stick, wwan0 (not present)" }));
    m_devices.used = "usb0";
    QCOMPARE(shown(menu).value(3), QStringLiteral("usb0 (not present)*"));
    QCOMPARE(shown(menu).size(), 5);
}

void tst_DeviceMenu::aUsedNameThatNobodyKnowsIsShown()
{
    DeviceMenu menu;
    m_devices.used = "wwan7";
    QCOMPARE(shown(menu).size(), 5);
    QCOMPARE(shown(menu).value(4), QStringLiteral("wwan7 (not present)*"));
}

void tst_DeviceMenu::aChoiceIsTold()
{
    DeviceMenu menu;
    QCOMPARE(shown(menu).size(), 4);
    QSignalSpy chosen(&menu, &DeviceMenu::deviceChosen);
    menu.actions().at(2)->trigger(); // after the automatic choice and the line
    menu.actions().at(0)->trigger();
    QCOMPARE(chosen.size(), 2);
    QCOMPARE(chosen.at(0).at(0).toString(), QStringLiteral("sim:1/2"));
    QCOMPARE(chosen.at(1).at(0).toString(), QString());
}

void tst_DeviceMenu::eachShowingReadsAnew()
{
    DeviceMenu menu;
    QCOMPARE(shown(menu).size(), 4);
    m_devices.list.removeLast();
    QCOMPARE(shown(menu).size(), 3);
}

void tst_DeviceMenu::ampersandsAreNoMnemonics()
{
    DeviceMenu menu;
    m_devices.list = { { "hw:1", "A&B", true, false, "eth0" } };
    QCOMPARE(shown(menu).value(1), QStringLiteral("A&&B"));
}

void tst_DeviceMenu::deviceTexts_data()
{
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("interfaceName");
    QTest::addColumn<QString>("expected");
    QTest::newRow("both") << "Stick"
                          << "wwan0"
                          << "Stick, wwan0";
    QTest::newRow("the name alone") << "eth0"
                                    << "eth0"
                                    << "eth0";
    QTest::newRow("no label") << ""
                              << "eth0"
                              << "eth0";
    QTest::newRow("no interface") << "Stick"
                                  << ""
                                  << "Stick";
}

void tst_DeviceMenu::deviceTexts()
{
    QFETCH(QString, label);
    QFETCH(QString, interfaceName);
    QTEST(deviceText(label, interfaceName), "expected");
}

QString tst_DeviceMenu::noticeOf(MainWindow &window)
{
    const auto *text = window.findChild<QLabel *>("Host_MessageText");
    return text && !text->parentWidget()->isHidden() ? text->text() : QString();
}

void tst_DeviceMenu::connectingIsOfferedWhileNothingIsConnected()
{
    MainWindow window({ "en" });
    auto *connectAction = window.findChild<QAction *>("Host_Connect");
    auto *disconnectAction = window.findChild<QAction *>("Host_Disconnect");
    QVERIFY(connectAction && disconnectAction);
    QVERIFY(connectAction->isEnabled() && !disconnectAction->isEnabled());
    window.showConnecting();
    QVERIFY(!connectAction->isEnabled() && !disconnectAction->isEnabled());
    QCOMPARE(noticeOf(window), QStringLiteral("Connecting…"));
    window.showConnected(VELQ_CONNECT_DONE);
    window.setConnected(true);
    QCOMPARE(noticeOf(window), QString());
    QVERIFY(!connectAction->isEnabled() && disconnectAction->isEnabled());
    QSignalSpy chosen(&window, &MainWindow::connectChosen);
    window.setConnected(false);
    connectAction->trigger();
    QCOMPARE(chosen.size(), 1);
}

void tst_DeviceMenu::aConnectFailureIsSaidUntilConnected()
{
    MainWindow window({ "en" });
    window.showConnecting();
    window.showConnected(VELQ_CONNECT_NO_PROFILE);
    QCOMPARE(
        noticeOf(window),
        QStringLiteral("The connection cannot be made: NetworkManager has no connection set up "
                       "for the device."));
    window.setConnected(true);
    QCOMPARE(noticeOf(window), QString());
    window.showConnecting();
    window.showConnected(VELQ_CONNECT_FAILED); // connected all the same: nothing to say
    QCOMPARE(noticeOf(window), QString());
}

void tst_DeviceMenu::noticesOfConnecting_data()
{
    QTest::addColumn<int>("result");
    QTest::addColumn<QString>("key");
    QTest::newRow("done") << int(VELQ_CONNECT_DONE) << QString();
    QTest::newRow("failed") << int(VELQ_CONNECT_FAILED) << "HOST_CONNECT_FAILED";
    QTest::newRow("no device") << int(VELQ_CONNECT_NO_DEVICE) << "HOST_CONNECT_NO_DEVICE";
    QTest::newRow("no service") << int(VELQ_CONNECT_NO_SERVICE) << "HOST_CONNECT_NO_SERVICE";
    QTest::newRow("not managed") << int(VELQ_CONNECT_NOT_MANAGED) << "HOST_CONNECT_NOT_MANAGED";
    QTest::newRow("refused") << int(VELQ_CONNECT_REFUSED) << "HOST_CONNECT_REFUSED";
    QTest::newRow("no profile") << int(VELQ_CONNECT_NO_PROFILE) << "HOST_CONNECT_NO_PROFILE";
    QTest::newRow("unknown") << 77 << "HOST_CONNECT_FAILED";
}

void tst_DeviceMenu::noticesOfConnecting()
{
    QFETCH(int, result);
    QTEST(QString::fromLatin1(connectNotice(result).key), "key");
}

QTEST_MAIN(tst_DeviceMenu)
#include "tst_devicemenu.moc"
