// The settings page in windows that come and go, and beside the operator page.

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPointer>
#include <QRadioButton>
#include <QtTest>

#include "DateEdit.h"
#include "SettingPageTest.h"

class tst_SettingPageLife : public SettingPageTest
{
    Q_OBJECT
private slots:
    void thePageMovesToAnotherWindow();
    void okAndCancelTakeThePageOut_data();
    void okAndCancelTakeThePageOut();
    void openingTwiceIsOnePage();
    void thePageIsBuiltAgainWhenItDied();
    void aPageThatDiedLeavesNoChoice();
    void aRebuiltPageHasTheRowsOfTheConfiguration();
    void theHostMayCallWithoutAPage();
    void theHostMayDestroyDuringAMessage_data();
    void theHostMayDestroyDuringAMessage();
    void theHostMayCloseTheWindowDuringAMessage();
    void aReceiverMayDestroyThePlugin();
    void releasingDeletesThePage();
    void releasingMayLeadToItself();
    void destroyingReleasesThePage();
    void aSecondInitConnectsNothingTwice();
    void theOperatorPageLoadsWhatTheSettingsPageSaved();
    void theSettingsPageShowsWhatTheOperatorPageSavedAfterCancel();
    void theOperatorPagesDaysAreKeptByTheSettingsPage();
    void theLastSaveWins();
    void entryAndExitAreLogged();

private:
    //! The operator page's part "NetInfoSettingDlg_" and \a name.
    template <typename Part>
    [[nodiscard]] static Part *operatorPart(const char *name)
    {
        return widget("NetInfoSettingDlg_MainWidget")
            ->findChild<Part *>(QLatin1String("NetInfoSettingDlg_") + QLatin1String(name));
    }
    static void pressOnOperatorPage(const char *name);
};

void tst_SettingPageLife::pressOnOperatorPage(const char *name)
{
    QWidget *const control = operatorPart<QWidget>(name);
    QVERIFY2(control && control->isEnabled(), name);
    QTest::mouseClick(control, Qt::LeftButton, Qt::NoModifier, QPoint(8, control->height() / 2));
}

void tst_SettingPageLife::thePageMovesToAnotherWindow()
{
    open();
    QWidget *const first = page();
    press("radioDaily");
    QWidget other;
    other.resize(500, 400);
    other.show();
    openAgain(&other);
    QCOMPARE(page(), first);
    QCOMPARE(first->parentWidget(), &other);
    QVERIFY(first->isVisible());
    QCOMPARE(checkedRadios(), QStringList("daily"));
    press("radioWeekly");
    QVERIFY(ok());
    QCOMPARE(setting(VLS_RADIO_WEEKLY), kOn);
    openAgain(&other);
    openAgain();
    QCOMPARE(first->parentWidget(), m_window.data());
}

void tst_SettingPageLife::okAndCancelTakeThePageOut_data()
{
    QTest::addColumn<bool>("byOk");
    QTest::newRow("OK") << true;
    QTest::newRow("Cancel") << false;
}

void tst_SettingPageLife::okAndCancelTakeThePageOut()
{
    QFETCH(bool, byOk);
    CNetInfoUIService *const service = open();
    const QPointer<QWidget> first = page();
    for (int i = 0; i < 3; ++i) {
        QVERIFY(service->IsActiveSetting());
        if (byOk)
            QVERIFY(ok());
        else
            cancel();
        QVERIFY(!service->IsActiveSetting());
        QVERIFY(!first->parentWidget());
        QVERIFY(first->isHidden());
        openAgain();
        QCOMPARE(page(), first.data());
        QVERIFY(first->isVisible());
    }
    if (byOk)
        QVERIFY(ok());
    else
        cancel();
    m_window.reset(new QWidget); // the window's end is not the page's any more
    QVERIFY(first);
    m_window->show();
    openAgain();
    QVERIFY(first->isVisible());
}

void tst_SettingPageLife::openingTwiceIsOnePage()
{
    open();
    QWidget *const first = page();
    press("radioDaily");
    openAgain();
    QCOMPARE(page(), first);
    QVERIFY(first->isVisible());
    QCOMPARE(checkedRadios(), QStringList("daily"));
    QCOMPARE(int(m_window->findChildren<DateEdit *>().size()), 1);
}

void tst_SettingPageLife::thePageIsBuiltAgainWhenItDied()
{
    CNetInfoUIService *const service = open();
    for (int i = 0; i < 3; ++i) {
        m_window.reset(new QWidget);
        QVERIFY(!page());
        QVERIFY(service->HideSetting());
        QCOMPARE(service->Notify(320, 0, 0), 0);
        m_window->show();
        openAgain();
        QVERIFY(page()->isVisible());
        QCOMPARE(weekday()->count(), 7);
        QCOMPARE(day()->count(), 28);
        QCOMPARE(enabledParts(), QStringLiteral("radios, day"));
        press("radioWeekly");
        press("radioMonthly");
        QTest::keyClick(day(), Qt::Key_Down);
        QVERIFY(ok());
        QCOMPARE(setting(VLS_START_MONTH_DATE), QString::number(i + 1));
        openAgain();
    }
}

void tst_SettingPageLife::aPageThatDiedLeavesNoChoice()
{
    set(VLS_CHK_RECURRENCE, { kOff, kOff, kOn, kOff });
    open();
    const QStringList before = settings();
    chooseDate(1);
    press("dateeditSetDate");
    QTest::keyClick(weekday(), Qt::Key_Down);
    press("radioMonthly");
    QTest::keyClick(day(), Qt::Key_Down);
    m_window.reset(new QWidget);
    m_window->show();
    openAgain();
    QCOMPARE(date()->date(), QDate(2026, 11, 21));
    QCOMPARE(weekday()->currentIndex(), 0);
    QCOMPARE(day()->currentIndex(), 0);
    QVERIFY(ok());
    QCOMPARE(settings(), before);
}

void tst_SettingPageLife::aRebuiltPageHasTheRowsOfTheConfiguration()
{
    open({ QStringLiteral("TIMEVOLUMELIMIT") });
    QVERIFY(!size("Time"));
    CNetInfoUIService::Destroy();
    open({ QStringLiteral("DATAVOLUMELIMIT") });
    QVERIFY(size("Time"));
    QVERIFY(!size("Data"));
}

void tst_SettingPageLife::theHostMayCallWithoutAPage()
{
    CNetInfoUIService *const service = open();
    m_window.reset(new QWidget);
    const QStringList before = settings();
    QVERIFY(!ok()); // nothing was saved
    QVERIFY(service->IsActiveSetting());
    cancel();
    QVERIFY(!service->IsActiveSetting());
    QCOMPARE(settings(), before);
    QVERIFY(fakeHost().messages.isEmpty());
    QVERIFY(!page());
}

void tst_SettingPageLife::theHostMayDestroyDuringAMessage_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("Data") << "Data";
    QTest::newRow("Time") << "Time";
}

void tst_SettingPageLife::theHostMayDestroyDuringAMessage()
{
    QFETCH(QString, name);
    set(VLS_CHK_VOLUME, { kOn, kOn });
    open();
    const QPointer<QWidget> first = page();
    type(name.toLatin1().constData(), QString());
    fakeHost().duringMessage = [] { CNetInfoUIService::Destroy(); };
    QVERIFY(!ok());
    QVERIFY(!first);
    QCOMPARE(int(fakeHost().messages.size()), 1);
}

void tst_SettingPageLife::theHostMayCloseTheWindowDuringAMessage()
{
    set(VLS_CHK_VOLUME, { kOn });
    open();
    type("Data", QString());
    fakeHost().duringMessage = [this] { m_window.reset(new QWidget); };
    QVERIFY(!ok());
    QVERIFY(!page());
    m_window->show();
    openAgain();
    QCOMPARE(size("Data")->text(), QStringLiteral("1024"));
    QVERIFY(ok());
}

void tst_SettingPageLife::aReceiverMayDestroyThePlugin()
{
    open();
    press("radioDaily");
    connect(NetInfoSettingUIPlugin::GetInstance(), &NetInfoSettingUIPlugin::netInfoSettingsChanged,
            this, [] { CNetInfoUIService::Destroy(); });
    QVERIFY(ok());
    QCOMPARE(file(), fileOf(settings())); // and what was entered is not lost
    QCOMPARE(setting(VLS_RADIO_DAILY), kOn);
}

void tst_SettingPageLife::releasingDeletesThePage()
{
    NetInfoSettingUIPlugin::ReleaseInstance(); // none
    start();
    CNetInfoUIService::instance()->setSettingsPage(nullptr);
    const QPointer<NetInfoSettingUIPlugin> settings = NetInfoSettingUIPlugin::GetInstance();
    QRect rect(0, 0, 420, 360);
    settings->ShowNetInfoSettingDlg(m_window.data(), rect);
    const QPointer<QWidget> first = settings->pageWidget();
    NetInfoSettingUIPlugin::ReleaseInstance();
    QVERIFY(!settings);
    QVERIFY(!first);
    NetInfoSettingUIPlugin::ReleaseInstance();
    const QPointer<NetInfoSettingUIPlugin> next = NetInfoSettingUIPlugin::GetInstance();
    QVERIFY(next);
    QVERIFY(!next->pageWidget());
    next->InitNetInfoSetting(); // without a parent
    QVERIFY(next->pageWidget());
    QVERIFY(!next->pageWidget()->parentWidget());
    QVERIFY(next->pageWidget()->isHidden());
    NetInfoSettingUIPlugin::ReleaseInstance();
    QVERIFY(!next);
}

void tst_SettingPageLife::releasingMayLeadToItself()
{
    open();
    CNetInfoUIService::instance()->setSettingsPage(nullptr);
    int calls = 0;
    connect(page(), &QObject::destroyed, this, [&calls] {
        ++calls;
        NetInfoSettingUIPlugin::ReleaseInstance();
    });
    NetInfoSettingUIPlugin::ReleaseInstance();
    QCOMPARE(calls, 1);
}

void tst_SettingPageLife::destroyingReleasesThePage()
{
    for (const bool detached : { false, true }) {
        open();
        if (detached)
            cancel();
        const QPointer<NetInfoSettingUIPlugin> settings = NetInfoSettingUIPlugin::GetInstance();
        const QPointer<QWidget> first = page();
        CNetInfoUIService::Destroy();
        QVERIFY(!settings);
        QVERIFY(!first);
        QCOMPARE(QApplication::topLevelWidgets(), QWidgetList({ m_window.data() }));
    }
}

void tst_SettingPageLife::aSecondInitConnectsNothingTwice()
{
    CNetInfoUIService *const service = open();
    QWidget *const first = page();
    QVERIFY(service->Init());
    QCOMPARE(page(), first);
    fakeSdk().calls.clear();
    QVERIFY(ok());
    const size_t once = fakeSdk().calls.size();
    QVERIFY(once > 0);
    CNetInfoUIService::Destroy();
    open();
    fakeSdk().calls.clear();
    QVERIFY(ok());
    QCOMPARE(fakeSdk().calls.size(), once);
}

void tst_SettingPageLife::theOperatorPageLoadsWhatTheSettingsPageSaved()
{
    set(VLS_CHK_VOLUME, { kOn });
    open();
    show();
    openAgain();
    press("radioDaily");
    type("Data", QStringLiteral("333"));
    QVERIFY(ok());
    QCOMPARE(operatorPart<QLineEdit>("lineEditDataVolume")->text(), QStringLiteral("1024"));
    show();
    QVERIFY(operatorPart<QRadioButton>("radioDaily")->isChecked());
    QCOMPARE(operatorPart<QLineEdit>("lineEditDataVolume")->text(), QStringLiteral("333"));
}

void tst_SettingPageLife::theSettingsPageShowsWhatTheOperatorPageSavedAfterCancel()
{
    set(VLS_CHK_VOLUME, { kOn });
    open();
    QVERIFY(ok());
    show();
    pressOnOperatorPage("radioDaily");
    operatorPart<QLineEdit>("lineEditDataVolume")->clear();
    QTest::keyClicks(operatorPart<QLineEdit>("lineEditDataVolume"), QStringLiteral("444"));
    pressOnOperatorPage("savesettingbutton");
    QCOMPARE(setting(VLS_SIZE_VOLUME), QStringLiteral("444"));
    openAgain(); // reads nothing
    QCOMPARE(checkedRadios(), QStringList("monthly"));
    QCOMPARE(size("Data")->text(), QStringLiteral("1024"));
    cancel();
    openAgain();
    QCOMPARE(checkedRadios(), QStringList("daily"));
    QCOMPARE(size("Data")->text(), QStringLiteral("444"));
    QVERIFY(ok());
    QCOMPARE(file(), fileOf(settings()));
    QCOMPARE(setting(VLS_SIZE_VOLUME), QStringLiteral("444"));
}

void tst_SettingPageLife::theOperatorPagesDaysAreKeptByTheSettingsPage()
{
    open();
    QVERIFY(ok());
    show();
    QTest::keyClick(operatorPart<QComboBox>("comboBoxMonthly"), Qt::Key_End);
    pressOnOperatorPage("savesettingbutton");
    QCOMPARE(setting(VLS_START_MONTH_DATE), QStringLiteral("30"));
    openAgain();
    cancel(); // its list ends before
    openAgain();
    QCOMPARE(day()->currentIndex(), 0);
    QVERIFY(ok());
    QCOMPARE(setting(VLS_START_MONTH_DATE), QStringLiteral("30"));
}

void tst_SettingPageLife::theLastSaveWins()
{
    set(VLS_CHK_VOLUME, { kOn });
    open();
    show();
    type("Data", QStringLiteral("5"));
    pressOnOperatorPage("radioWeekly");
    pressOnOperatorPage("savesettingbutton");
    QCOMPARE(settings().mid(VLS_RADIO_DAILY, 3), QStringList({ kOff, kOn, kOff }));
    QVERIFY(ok()); // opened before that save
    QCOMPARE(settings().mid(VLS_RADIO_DAILY, 3), QStringList({ kOff, kOff, kOn }));
    QCOMPARE(setting(VLS_SIZE_VOLUME), QStringLiteral("5"));
    QCOMPARE(file(), fileOf(settings()));
}

void tst_SettingPageLife::entryAndExitAreLogged()
{
    CNetInfoUIService *const service = start();
    QRect rect(0, 0, 420, 360);
    m_window->show();
    const auto expect = [this](const QStringList &names) {
        const QStringList lines = m_log->takeLines();
        for (const QString &name : names) {
            for (const char *word : { "Start", "End  " }) {
                const QString line = QStringLiteral("%1: <time>: %2: %3 ")
                                         .arg(QLatin1String(word), kPageSource, name);
                QVERIFY2(!lines.filter(line).isEmpty(), qPrintable(line));
            }
        }
        QCOMPARE(int(lines.filter(QStringLiteral("Arg is NULL")).size()), 0);
    };
    m_log->takeLines();
    service->ShowSettingDialog(m_window.data(), rect);
    expect({ "ShowNetInfoSettingDlg", "InitNetInfoSetting", "applySettings" });
    service->Notify(320, 0, 0);
    QVERIFY(ok());
    expect({ "SaveNetInfoSettings" });
}

QTEST_MAIN(tst_SettingPageLife)
#include "tst_settingpagelife.moc"
