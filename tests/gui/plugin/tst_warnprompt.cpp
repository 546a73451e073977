// The dialog that warns of a usage limit, and its button Disconnect.

#include "WarnPrompt.h"

#include <QApplication>
#include <QBoxLayout>
#include <QtTest>

#include <host/INotifyService.h>

#include <functional>

#include "NetInfoSettingUILogic.h"
#include "PluginTest.h"

//! The host's notify service.
class FakeNotifyService : public QObject, public INotifyService
{
    Q_OBJECT
    Q_INTERFACES(INotifyService)
public:
    int NotifyMessage(const QString &target, unsigned int msg, unsigned int wparam,
                      unsigned int lparam) override
    {
        messages << QStringLiteral("%1 to %2: %3, %4").arg(msg).arg(target).arg(wparam).arg(lparam);
        if (duringMessage)
            duringMessage();
        return 0;
    }

    QStringList messages;
    std::function<void()> duringMessage;
};

class tst_WarnPrompt : public PluginTest
{
    Q_OBJECT
private slots:
    void theDialogIsTheHostsFrame();
    void thePartsHaveTheirNamesAndTexts();
    void bothButtonsAreStyledAlike();
    void thePartsStandInOrder();
    void anUnshownDialogCarriesItsTitle();
    void aSecondWarningReusesTheDialog();
    void theConnectionDecidesOnDisconnect_data();
    void theConnectionDecidesOnDisconnect();
    void theConnectionIsLookedAtEachTime();
    void theTraceOfAWarning();
    void theCheckBoxIsNeverVisible();
    void okCloses();
    void enterAndEscapeClose_data();
    void enterAndEscapeClose();
    void closingNeedsNoDialog();
    void disconnectAsksTheHost();
    void disconnectClosesWithoutTheService_data();
    void disconnectClosesWithoutTheService();
    void disconnectIsDisabledDuringTheMessage();
    void theHostMayDestroyDuringTheMessage_data();
    void theHostMayDestroyDuringTheMessage();
    void aLaterWarningIsInTheLanguageOfTheDay();
    void theDialogComesBackAfterItsParentDied();
    void aDialogWithoutParentGoesWithThePrompt();
    void theControllersPromptBelongsToTheNormalPage();
    void thePromptGoesBeforeTheNormalPage();
    void theSlotsSignaturesAreFixed();

private:
    [[nodiscard]] static QDialog *dialog();
    [[nodiscard]] static QLabel *label();
    //! The dialog's button with \a text; null without one.
    [[nodiscard]] static QPushButton *button(const char *text);
    static void press(const char *text);
    //! Lets the controller warn that the data limit is reached.
    void warnOfTheDataLimit();
};

QDialog *tst_WarnPrompt::dialog()
{
    return qobject_cast<QDialog *>(widget("WarnDlg_ExtendedDlg"));
}

QLabel *tst_WarnPrompt::label()
{
    return qobject_cast<QLabel *>(widget("WarnDlg_LabelWarn"));
}

QPushButton *tst_WarnPrompt::button(const char *text)
{
    const auto buttons = dialog()->findChildren<QPushButton *>();
    for (QPushButton *one : buttons) {
        if (one->text() == QLatin1String(text))
            return one;
    }
    return nullptr;
}

void tst_WarnPrompt::press(const char *text)
{
    QPushButton *const one = button(text);
    QVERIFY(one);
    QVERIFY(one->isVisible());
    QTest::mouseClick(one, Qt::LeftButton);
}

void tst_WarnPrompt::warnOfTheDataLimit()
{
    set(VLS_CHK_VOLUME, { QStringLiteral("true") });
    fakeSdk().reports[4].upload = 2000ull << 20;
    fakeSdk().connections = 1;
    start();
    show();
    QVERIFY(dialog());
    QVERIFY(dialog()->isVisible());
}

void tst_WarnPrompt::theDialogIsTheHostsFrame()
{
    WarnPrompt prompt;
    prompt.ShowWarnDlg(m_window.data(), QStringLiteral("Nearly used"));
    QVERIFY(dialog());
    QVERIFY(dialog()->isVisible());
    QVERIFY(qobject_cast<ExtendDialog *>(dialog()));
    QCOMPARE(fakeHost().dialogTypes, QList<int>({ 1 }));
    QCOMPARE(fakeHost().dialogFlags,
             QList<Qt::WindowFlags>({ Qt::Dialog | Qt::WindowCloseButtonHint }));
    QCOMPARE(dialog()->parentWidget(), m_window.data());
    QCOMPARE(dialog()->windowTitle(), QStringLiteral("IDS_BOX_WARNTITLE"));
    QCOMPARE(dialog()->minimumSize(), QSize(430, 155));
    QCOMPARE(dialog()->maximumSize(), QSize(430, 155));
    QCOMPARE(dialog()->windowModality(), Qt::WindowModal);
    QCOMPARE(dialog()->windowType(), Qt::Dialog);
    QCOMPARE(fakeHost().placements,
             QStringList({ "centre WarnDlg_ExtendedDlg", "relative WarnDlg_ExtendedDlg" }));
    QCOMPARE(fakeHost().translationContexts, QStringList({ "NetInfoUIExPlugin" }));
}

void tst_WarnPrompt::thePartsHaveTheirNamesAndTexts()
{
    fakeSdk().connections = 1;
    WarnPrompt prompt;
    prompt.createWarnDlg(m_window.data());
    QVERIFY(label());
    QCOMPARE(label()->text(), QStringLiteral("IDS_BOX_WARNTITLE")); // until there is a warning
    QVERIFY(label()->wordWrap());
    auto *const box = qobject_cast<QCheckBox *>(widget("WarnDlg_CheckBox"));
    QVERIFY(box);
    QCOMPARE(box->text(), QStringLiteral("IDS_BOX_WARNBEFORE"));
    QWidget *const main = widget("WarnDlg_WidgetMain");
    QVERIFY(main);
    QCOMPARE(main->parentWidget(), static_cast<QWidget *>(dialog()));
    QVERIFY(dialog()->layout()->indexOf(main) >= 0);
    prompt.ShowWarnDlg(m_window.data(), QStringLiteral("Nearly used"));
    QCOMPARE(label()->text(), QStringLiteral("Nearly used"));
    for (QWidget *part : { main, static_cast<QWidget *>(label()) })
        QVERIFY(part->isVisible());
}

void tst_WarnPrompt::bothButtonsAreStyledAlike()
{
    WarnPrompt prompt;
    prompt.createWarnDlg(m_window.data());
    const auto buttons = dialog()->findChildren<QPushButton *>();
    QCOMPARE(int(buttons.size()), 2);
    QVERIFY(button("IDS_DISCONNECT_BUTTON"));
    QVERIFY(button("IDS_BOX_WARNIDOK"));
    for (QPushButton *one : buttons) {
        QCOMPARE(one->objectName(), QStringLiteral("NetInfoSettingDlg_savesettingbutton"));
        QCOMPARE(one->focusPolicy(), Qt::NoFocus);
        QCOMPARE(one->cursor().shape(), Qt::PointingHandCursor);
    }
}

void tst_WarnPrompt::thePartsStandInOrder()
{
    WarnPrompt prompt;
    prompt.createWarnDlg(m_window.data());
    auto *const rows = qobject_cast<QVBoxLayout *>(widget("WarnDlg_WidgetMain")->layout());
    QVERIFY(rows);
    QCOMPARE(rows->objectName(), QStringLiteral("WarnDlg_layoutMain"));
    QCOMPARE(rows->count(), 3);
    QCOMPARE(rows->itemAt(0)->widget(), static_cast<QWidget *>(label()));
    QCOMPARE(rows->itemAt(1)->widget(), widget("WarnDlg_CheckBox"));
    auto *const row = qobject_cast<QHBoxLayout *>(rows->itemAt(2)->layout());
    QVERIFY(row);
    QCOMPARE(rows->itemAt(2)->alignment(), Qt::Alignment(Qt::AlignRight));
    QCOMPARE(row->count(), 2);
    QCOMPARE(row->itemAt(0)->widget(), static_cast<QWidget *>(button("IDS_DISCONNECT_BUTTON")));
    QCOMPARE(row->itemAt(1)->widget(), static_cast<QWidget *>(button("IDS_BOX_WARNIDOK")));
}

void tst_WarnPrompt::anUnshownDialogCarriesItsTitle()
{
    WarnPrompt prompt;
    prompt.createWarnDlg(m_window.data());
    QVERIFY(!dialog()->isVisible());
    QCOMPARE(dialog()->windowTitle(), QStringLiteral("IDS_BOX_WARNTITLE"));
    QCOMPARE(fakeHost().placements, QStringList({ "centre WarnDlg_ExtendedDlg" }));
}

void tst_WarnPrompt::aSecondWarningReusesTheDialog()
{
    WarnPrompt prompt;
    prompt.ShowWarnDlg(m_window.data(), QStringLiteral("First"));
    const QPointer<QDialog> first = dialog();
    prompt.ShowWarnDlg(m_window.data(), QStringLiteral("Second"));
    QCOMPARE(label()->text(), QStringLiteral("Second"));
    press("IDS_BOX_WARNIDOK");
    QVERIFY(first);
    QVERIFY(!first->isVisible());
    prompt.ShowWarnDlg(m_window.data(), QStringLiteral("Third"));
    QCOMPARE(dialog(), first.data());
    QVERIFY(first->isVisible());
    QCOMPARE(label()->text(), QStringLiteral("Third"));
    QCOMPARE(int(fakeHost().dialogTypes.size()), 1);
    QCOMPARE(int(dialog()->findChildren<QPushButton *>().size()), 2);
    QStringList placements = QStringList({ "centre WarnDlg_ExtendedDlg" });
    for (int shown = 0; shown < 3; ++shown)
        placements << QStringLiteral("relative WarnDlg_ExtendedDlg");
    QCOMPARE(fakeHost().placements, placements);
}

void tst_WarnPrompt::theConnectionDecidesOnDisconnect_data()
{
    QTest::addColumn<int>("result");
    QTest::addColumn<int>("count");
    QTest::addColumn<bool>("offered");
    QTest::newRow("one connection") << 0 << 1 << true;
    QTest::newRow("several connections") << 0 << 7 << true;
    QTest::newRow("no connection") << 0 << 0 << false;
    QTest::newRow("a failing query") << 1 << 0 << false;
    QTest::newRow("a failing query that counts") << -1 << 3 << false;
}

void tst_WarnPrompt::theConnectionDecidesOnDisconnect()
{
    QFETCH(int, result);
    QFETCH(int, count);
    fakeSdk().connectionResult = result;
    fakeSdk().connections = count;
    WarnPrompt prompt;
    prompt.ShowWarnDlg(m_window.data(), QStringLiteral("Used"));
    QTEST(button("IDS_DISCONNECT_BUTTON")->isVisible(), "offered");
    QVERIFY(button("IDS_BOX_WARNIDOK")->isVisible());
    QVERIFY(fakeSdk().connectionArgumentsClear);
    QCOMPARE(fakeSdk().listsOut, 0); // handed back once after success, never after a failure
}

void tst_WarnPrompt::theConnectionIsLookedAtEachTime()
{
    WarnPrompt prompt;
    for (const int count : { 0, 2, 0, 1 }) {
        fakeSdk().connections = count;
        prompt.ShowWarnDlg(m_window.data(), QStringLiteral("Used"));
        QCOMPARE(button("IDS_DISCONNECT_BUTTON")->isVisible(), count != 0);
    }
    QCOMPARE(fakeSdk().listsOut, 0);
}

void tst_WarnPrompt::theTraceOfAWarning()
{
    const QString head = "<time> : " + kSource + " : ShowWarnDlg : ";
    WarnPrompt prompt;
    prompt.ShowWarnDlg(m_window.data(), QStringLiteral("Used"));
    QCOMPARE(m_log->takeLines(), QStringList({ head + "called", head + "Entered", head + "Exit" }));
    fakeSdk().connections = 1;
    prompt.ShowWarnDlg(m_window.data(), QStringLiteral("Used"));
    QCOMPARE(m_log->takeLines(),
             QStringList({ head + "called", head + "Entered",
                           head + "Get ConnectState as Connected", head + "Exit" }));
}

void tst_WarnPrompt::theCheckBoxIsNeverVisible()
{
    WarnPrompt prompt;
    for (const int count : { 0, 1, 1 }) {
        fakeSdk().connections = count;
        prompt.ShowWarnDlg(m_window.data(), QStringLiteral("Used"));
        QVERIFY(dialog()->isVisible());
        QVERIFY(!widget("WarnDlg_CheckBox")->isVisible());
        prompt.CloseDlg();
    }
}

void tst_WarnPrompt::okCloses()
{
    fakeSdk().connections = 1;
    FakeNotifyService service;
    fakeHost().plugin = &service;
    WarnPrompt prompt;
    prompt.ShowWarnDlg(m_window.data(), QStringLiteral("Used"));
    press("IDS_BOX_WARNIDOK");
    QVERIFY(!dialog()->isVisible());
    QVERIFY(fakeHost().askedPlugins.isEmpty());
    QVERIFY(service.messages.isEmpty());
}

void tst_WarnPrompt::enterAndEscapeClose_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("Enter") << int(Qt::Key_Return);
    QTest::newRow("Escape") << int(Qt::Key_Escape);
}

void tst_WarnPrompt::enterAndEscapeClose()
{
    QFETCH(int, key);
    fakeSdk().connections = 1;
    WarnPrompt prompt;
    prompt.ShowWarnDlg(m_window.data(), QStringLiteral("Used"));
    QTest::keyClick(dialog(), Qt::Key(key));
    QVERIFY(!dialog()->isVisible());
    QCOMPARE(fakeHost().askedPlugins.size(), 0); // nothing was disconnected
}

void tst_WarnPrompt::closingNeedsNoDialog()
{
    WarnPrompt prompt;
    prompt.CloseDlg();
    prompt.onOkButtonClicked();
    prompt.onDisConnectButtonClicked();
    QVERIFY(!dialog());
    prompt.ShowWarnDlg(m_window.data(), QStringLiteral("Used"));
    prompt.CloseDlg();
    QVERIFY(!dialog()->isVisible());
    prompt.CloseDlg();
}

void tst_WarnPrompt::disconnectAsksTheHost()
{
    fakeSdk().connections = 1;
    FakeNotifyService service;
    fakeHost().plugin = &service;
    WarnPrompt prompt;
    prompt.ShowWarnDlg(m_window.data(), QStringLiteral("Used"));
    press("IDS_DISCONNECT_BUTTON");
    QCOMPARE(int(fakeHost().askedPlugins.size()), 1);
    QCOMPARE(fakeHost().askedPlugins.first().id,
             QStringLiteral("5B1E7C20-3D4A-4F6B-9C81-2A7D0E4F6B13"));
    QCOMPARE(fakeHost().askedPlugins.first().kind, 8209);
    QCOMPARE(service.messages,
             QStringList({ "514 to 3F6A2B91-C84D-4E07-A1F3-6D52E0B9C724: 0, 0" }));
    QVERIFY(!dialog()->isVisible());
}

void tst_WarnPrompt::disconnectClosesWithoutTheService_data()
{
    QTest::addColumn<bool>("container");
    QTest::addColumn<bool>("plugin");
    QTest::newRow("no container") << false << true;
    QTest::newRow("no such plug-in") << true << false;
    QTest::newRow("a plug-in without the interface") << true << true;
}

void tst_WarnPrompt::disconnectClosesWithoutTheService()
{
    QFETCH(bool, container);
    QFETCH(bool, plugin);
    QObject other;
    fakeHost().hasContainer = container;
    if (plugin)
        fakeHost().plugin = &other;
    fakeSdk().connections = 1;
    WarnPrompt prompt;
    prompt.ShowWarnDlg(m_window.data(), QStringLiteral("Used"));
    press("IDS_DISCONNECT_BUTTON");
    QVERIFY(!dialog()->isVisible());
    QVERIFY(button("IDS_DISCONNECT_BUTTON")->isEnabled());
    QCOMPARE(int(fakeHost().askedPlugins.size()), container ? 1 : 0);
}

void tst_WarnPrompt::disconnectIsDisabledDuringTheMessage()
{
    fakeSdk().connections = 1;
    FakeNotifyService service;
    fakeHost().plugin = &service;
    bool enabled = true;
    bool visible = false;
    service.duringMessage = [&] {
        enabled = button("IDS_DISCONNECT_BUTTON")->isEnabled();
        visible = dialog()->isVisible();
        if (service.messages.size() == 1) // a double click
            QTest::mouseClick(button("IDS_DISCONNECT_BUTTON"), Qt::LeftButton);
    };
    WarnPrompt prompt;
    prompt.ShowWarnDlg(m_window.data(), QStringLiteral("Used"));
    press("IDS_DISCONNECT_BUTTON");
    QVERIFY(!enabled);
    QVERIFY(visible);
    QCOMPARE(int(service.messages.size()), 1);
    QVERIFY(button("IDS_DISCONNECT_BUTTON")->isEnabled());
    QVERIFY(!dialog()->isVisible());
}

void tst_WarnPrompt::theHostMayDestroyDuringTheMessage_data()
{
    QTest::addColumn<bool>("plugin");
    QTest::addColumn<bool>("window");
    QTest::newRow("the plug-in") << true << false;
    QTest::newRow("the window") << false << true;
    QTest::newRow("both") << true << true;
}

void tst_WarnPrompt::theHostMayDestroyDuringTheMessage()
{
    QFETCH(bool, plugin);
    QFETCH(bool, window);
    warnOfTheDataLimit();
    FakeNotifyService service;
    fakeHost().plugin = &service;
    service.duringMessage = [&] {
        if (plugin)
            CNetInfoUIService::Destroy();
        if (window)
            m_window.reset();
    };
    press("IDS_DISCONNECT_BUTTON");
    QCOMPARE(int(service.messages.size()), 1);
    QVERIFY(!dialog());
}

void tst_WarnPrompt::aLaterWarningIsInTheLanguageOfTheDay()
{
    fakeSdk().connections = 1;
    WarnPrompt prompt;
    prompt.ShowWarnDlg(m_window.data(), QStringLiteral("Used"));
    fakeHost().language = QStringLiteral(".de");
    prompt.ShowWarnDlg(m_window.data(), QStringLiteral("Verbraucht"));
    QCOMPARE(dialog()->windowTitle(), QStringLiteral("IDS_BOX_WARNTITLE.de"));
    QVERIFY(button("IDS_DISCONNECT_BUTTON.de"));
    QVERIFY(button("IDS_BOX_WARNIDOK.de"));
    QCOMPARE(label()->text(), QStringLiteral("Verbraucht")); // the caller's, not translated again
    QCOMPARE(prompt.tr(QStringLiteral("IDS_YES")), QStringLiteral("IDS_YES.de"));
}

void tst_WarnPrompt::theDialogComesBackAfterItsParentDied()
{
    fakeSdk().connections = 1;
    WarnPrompt prompt;
    prompt.ShowWarnDlg(m_window.data(), QStringLiteral("First"));
    m_window.reset(new QWidget);
    QVERIFY(!dialog());
    prompt.CloseDlg();
    prompt.ShowWarnDlg(m_window.data(), QStringLiteral("Second"));
    QVERIFY(dialog()->isVisible());
    QCOMPARE(dialog()->parentWidget(), m_window.data());
    QCOMPARE(label()->text(), QStringLiteral("Second"));
    press("IDS_DISCONNECT_BUTTON");
    QVERIFY(!dialog()->isVisible());
}

void tst_WarnPrompt::aDialogWithoutParentGoesWithThePrompt()
{
    {
        WarnPrompt prompt;
        prompt.ShowWarnDlg(nullptr, QStringLiteral("Used"));
        QVERIFY(dialog()->isVisible());
        m_window.reset();
        QCOMPARE(QApplication::topLevelWidgets(), QWidgetList({ dialog() }));
    }
    QCOMPARE(QApplication::topLevelWidgets(), QWidgetList());
    m_window.reset(new QWidget);
    {
        WarnPrompt prompt;
        prompt.ShowWarnDlg(m_window.data(), QStringLiteral("Used"));
        QVERIFY(dialog());
    }
    QVERIFY(m_window->children().isEmpty());
}

void tst_WarnPrompt::theControllersPromptBelongsToTheNormalPage()
{
    warnOfTheDataLimit();
    QCOMPARE(dialog()->parentWidget(), widget("NetInfoUIPlugin_WidgetParent"));
    QCOMPARE(label()->text(), QStringLiteral("IDS_BOX_WARNAFTER"));
    QVERIFY(!widget("NetInfoUIPlugin_WidgetParent")->isVisible());
    QCOMPARE(dialog()->windowHandle()->transientParent(), m_window->windowHandle());
}

void tst_WarnPrompt::thePromptGoesBeforeTheNormalPage()
{
    warnOfTheDataLimit();
    QObject *const page = widget("NetInfoUIPlugin_WidgetParent");
    QStringList gone;
    for (QObject *one : { page, static_cast<QObject *>(dialog()) })
        connect(one, &QObject::destroyed, this, [&gone, one] { gone << one->objectName(); });
    CNetInfoUIService::Destroy();
    QCOMPARE(gone, QStringList({ "WarnDlg_ExtendedDlg", "NetInfoUIPlugin_WidgetParent" }));
}

void tst_WarnPrompt::theSlotsSignaturesAreFixed()
{
    const QMetaObject &meta = WarnPrompt::staticMetaObject;
    QVERIFY(meta.indexOfSlot("onOkButtonClicked()") >= 0);
    QVERIFY(meta.indexOfSlot("onDisConnectButtonClicked()") >= 0);
}

QTEST_MAIN(tst_WarnPrompt)
#include "tst_warnprompt.moc"
