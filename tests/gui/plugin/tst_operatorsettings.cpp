// The operator page: loading and saving the settings, and its messages.

#include "NetInfoUIService.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QScrollArea>
#include <QTemporaryDir>
#include <QtTest>

#include "NetInfoSettingUILogic.h"
#include "OperatorPageTest.h"
#include "SkProgressBar.h"

class tst_OperatorSettings : public OperatorPageTest
{
    Q_OBJECT
private slots:
    void init();
    void onlyTrueLoadsAsOn_data();
    void onlyTrueLoadsAsOn();
    void oneRadioIsLoaded_data();
    void oneRadioIsLoaded();
    void anIndexIsLoadedWhenTheListHasIt_data();
    void anIndexIsLoadedWhenTheListHasIt();
    void showLoadsAgain();
    void theControlsAreSaved_data();
    void theControlsAreSaved();
    void nothingElseIsSaved();
    void aChosenDayIsSaved();
    void daysNotChosenStayAsStored_data();
    void daysNotChosenStayAsStored();
    void loadingIsNoChoice();
    void aRebuiltPageHasNoChoice();
    void theSizeIsSavedWhenSwitchedOff();
    void anEmptySizeIsRefused();
    void anEmptySizeIsSavedWhenSwitchedOff();
    void theFileHoldsWhatWasSaved();
    void aSaveIsConfirmed();
    void theMeterShowsTheNewLimitAtOnce();
    void theHostMayDestroyDuringAMessage_data();
    void theHostMayDestroyDuringAMessage();
    void clearHistoryAsksFirst_data();
    void clearHistoryAsksFirst();
    void savingNeedsNoPage();

private:
    [[nodiscard]] QString userFile() const;
    [[nodiscard]] static QStringList settings();
    static void save();

    QScopedPointer<QTemporaryDir> m_user;
};

void tst_OperatorSettings::init()
{
    PluginTest::init();
    m_user.reset(new QTemporaryDir);
    fakeHost().userDataDirectory = m_user->path() + QLatin1Char('/');
}

QString tst_OperatorSettings::userFile() const
{
    return m_user->filePath(QStringLiteral("DataUsageLimit.ini"));
}

QStringList tst_OperatorSettings::settings()
{
    QStringList values;
    for (int index = 0; index < 17; ++index)
        values << setting(index);
    return values;
}

void tst_OperatorSettings::save()
{
    press("NetInfoSettingDlg_savesettingbutton");
}

void tst_OperatorSettings::onlyTrueLoadsAsOn_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("on");
    QTest::newRow("true") << "true" << true;
    QTest::newRow("false") << "false" << false;
    for (const char *text : { "", "True", "TRUE", "1", "yes", "true ", " true", "truetrue" })
        QTest::addRow("'%s'", text) << QString::fromLatin1(text) << false;
}

void tst_OperatorSettings::onlyTrueLoadsAsOn()
{
    QFETCH(QString, text);
    QFETCH(bool, on);
    const QStringList names = { "daily", "weekly", "monthly" };
    for (int i = 0; i < 3; ++i) {
        QStringList radios(QStringList() << QString() << QString() << QString());
        radios[i] = text;
        set(VLS_RADIO_DAILY, radios);
        set(VLS_CHK_VOLUME, { text });
        start();
        show();
        QCOMPARE(checkedRadios(), on ? QStringList(names.at(i)) : QStringList());
        QCOMPARE(weekday()->isEnabled(), on && i == 1);
        QCOMPARE(day()->isEnabled(), on && i == 2);
        QCOMPARE(dataSwitch()->isChecked(), on);
        QCOMPARE(dataSize()->isEnabled(), on);
        QCOMPARE(dataSize()->text(), QStringLiteral("1024")); // shown whether on or off
    }
}

void tst_OperatorSettings::oneRadioIsLoaded_data()
{
    QTest::addColumn<QStringList>("stored");
    QTest::addColumn<QString>("radio");
    const QString on = QStringLiteral("true");
    const QString off = QStringLiteral("false");
    QTest::newRow("all") << QStringList({ on, on, on }) << "daily";
    QTest::newRow("daily and monthly") << QStringList({ on, off, on }) << "daily";
    QTest::newRow("weekly and monthly") << QStringList({ off, on, on }) << "weekly";
    QTest::newRow("none") << QStringList({ off, off, off }) << QString();
}

void tst_OperatorSettings::oneRadioIsLoaded()
{
    QFETCH(QStringList, stored);
    QFETCH(QString, radio);
    CNetInfoUIService *const service = start(); // with the monthly one
    show();
    set(VLS_RADIO_DAILY, stored);
    service->initNRLNetInfoSettings();
    QCOMPARE(checkedRadios(), radio.isEmpty() ? QStringList() : QStringList(radio));
    QCOMPARE(weekday()->isEnabled(), radio == QLatin1String("weekly"));
    QVERIFY(!day()->isEnabled());
    press("NetInfoSettingDlg_radioDaily"); // the buttons are a group as before
    press("NetInfoSettingDlg_radioMonthly");
    QCOMPARE(checkedRadios(), QStringList("monthly"));
}

void tst_OperatorSettings::anIndexIsLoadedWhenTheListHasIt_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("weekdayIndex"); // both were 2 before
    QTest::addColumn<int>("dayIndex");
    QTest::newRow("the first") << "0" << 0 << 0;
    QTest::newRow("the last weekday") << "6" << 6 << 6;
    QTest::newRow("after the last weekday") << "7" << 2 << 7;
    QTest::newRow("the last day") << "30" << 2 << 30;
    QTest::newRow("after the last day") << "31" << 2 << 2;
    for (const char *text : { "", "-1", "abc", "1.5", "2147483648", "99999999999", "0x1" })
        QTest::addRow("'%s'", text) << QString::fromLatin1(text) << 2 << 2;
}

void tst_OperatorSettings::anIndexIsLoadedWhenTheListHasIt()
{
    QFETCH(QString, text);
    const QString two = QStringLiteral("2");
    set(VLS_START_WEEK_DATE, { two, two });
    CNetInfoUIService *const service = start();
    show();
    QCOMPARE(weekday()->currentIndex(), 2);
    QCOMPARE(day()->currentIndex(), 2);
    set(VLS_START_WEEK_DATE, { text, text });
    service->initNRLNetInfoSettings();
    QTEST(weekday()->currentIndex(), "weekdayIndex");
    QTEST(day()->currentIndex(), "dayIndex");
}

void tst_OperatorSettings::showLoadsAgain()
{
    start();
    QCOMPARE(checkedRadios(), QStringList("monthly")); // by Init
    show();
    QCOMPARE(checkedRadios(), QStringList("monthly"));
    const QString on = QStringLiteral("true");
    const QString off = QStringLiteral("false");
    set(VLS_RADIO_DAILY, { off, on, off, on, off, QStringLiteral("77") });
    show();
    QCOMPARE(checkedRadios(), QStringList("weekly"));
    QVERIFY(dataSwitch()->isChecked());
    QCOMPARE(dataSize()->text(), QStringLiteral("77"));
}

void tst_OperatorSettings::theControlsAreSaved_data()
{
    QTest::addColumn<QString>("radio");
    QTest::addColumn<QStringList>("radios");
    const QString on = QStringLiteral("true");
    const QString off = QStringLiteral("false");
    QTest::newRow("daily") << "Daily" << QStringList({ on, off, off });
    QTest::newRow("weekly") << "Weekly" << QStringList({ off, on, off });
    QTest::newRow("monthly") << "Monthly" << QStringList({ off, off, on });
    QTest::newRow("none") << QString() << QStringList({ off, off, off });
}

void tst_OperatorSettings::theControlsAreSaved()
{
    QFETCH(QString, radio);
    QFETCH(QStringList, radios);
    set(VLS_RADIO_DAILY, { QString(), QString(), QString() });
    start();
    show();
    if (!radio.isEmpty())
        press(("NetInfoSettingDlg_radio" + radio.toLatin1()).constData());
    save();
    QCOMPARE(settings().mid(VLS_RADIO_DAILY, 3), radios);
    press("NetInfoSettingDlg_checkBoxDataVolume");
    dataSize()->clear();
    QTest::keyClicks(dataSize(), QStringLiteral("250"));
    save();
    QCOMPARE(settings().mid(VLS_RADIO_DAILY, 3), radios);
    QCOMPARE(setting(VLS_CHK_VOLUME), QStringLiteral("true"));
    QCOMPARE(setting(VLS_SIZE_VOLUME), QStringLiteral("250"));
    press("NetInfoSettingDlg_checkBoxDataVolume");
    save();
    QCOMPARE(setting(VLS_CHK_VOLUME), QStringLiteral("false"));
    QCOMPARE(setting(VLS_SIZE_VOLUME), QStringLiteral("250"));
}

void tst_OperatorSettings::nothingElseIsSaved()
{
    QStringList odd;
    for (int index = 0; index < 17; ++index)
        odd << QStringLiteral("odd %1").arg(index);
    set(VLS_CHK_RECURRENCE, odd);
    start();
    show();
    save();
    QStringList expected = odd;
    expected[VLS_RADIO_DAILY] = expected[VLS_RADIO_WEEKLY] = expected[VLS_RADIO_MONTHLY]
        = expected[VLS_CHK_VOLUME] = QStringLiteral("false");
    expected[VLS_SIZE_VOLUME] = QStringLiteral("odd 6"); // shown and saved as it stands
    QCOMPARE(settings(), expected);
}

void tst_OperatorSettings::aChosenDayIsSaved()
{
    start();
    show();
    press("NetInfoSettingDlg_radioWeekly");
    QTest::keyClick(weekday(), Qt::Key_End);
    save();
    QCOMPARE(setting(VLS_START_WEEK_DATE), QStringLiteral("6"));
    QCOMPARE(setting(VLS_START_MONTH_DATE), QStringLiteral("0"));
    press("NetInfoSettingDlg_radioMonthly");
    QTest::keyClick(day(), Qt::Key_End);
    save();
    QCOMPARE(setting(VLS_START_WEEK_DATE), QStringLiteral("6"));
    QCOMPARE(setting(VLS_START_MONTH_DATE), QStringLiteral("30"));
    QTest::keyClick(day(), Qt::Key_Home);
    save();
    QCOMPARE(setting(VLS_START_MONTH_DATE), QStringLiteral("0"));
}

void tst_OperatorSettings::daysNotChosenStayAsStored_data()
{
    QTest::addColumn<QString>("stored");
    for (const char *text : { "", "0", "3", "03", " 3", "+3", "7", "31", "-1", "abc" })
        QTest::addRow("'%s'", text) << QString::fromLatin1(text);
}

void tst_OperatorSettings::daysNotChosenStayAsStored()
{
    QFETCH(QString, stored);
    for (const char *before : { "0", "5" }) { // what the page showed first
        const QString shown = QLatin1String(before);
        set(VLS_START_WEEK_DATE, { shown, shown });
        CNetInfoUIService *const service = start();
        show();
        set(VLS_START_WEEK_DATE, { stored, stored });
        service->initNRLNetInfoSettings();
        save();
        QCOMPARE(setting(VLS_START_WEEK_DATE), stored);
        QCOMPARE(setting(VLS_START_MONTH_DATE), stored);
        CNetInfoUIService::Destroy();
    }
}

void tst_OperatorSettings::loadingIsNoChoice()
{
    set(VLS_START_WEEK_DATE, { QStringLiteral("3"), QStringLiteral("20") });
    start();
    show();
    set(VLS_START_WEEK_DATE, { QStringLiteral("5"), QStringLiteral("9") }); // by another page
    save();
    QCOMPARE(setting(VLS_START_WEEK_DATE), QStringLiteral("5"));
    QCOMPARE(setting(VLS_START_MONTH_DATE), QStringLiteral("9"));
}

void tst_OperatorSettings::aRebuiltPageHasNoChoice()
{
    const QString none = QStringLiteral("abc");
    for (const QString &stored : { QStringLiteral("0"), none }) {
        set(VLS_START_WEEK_DATE, { stored, stored });
        CNetInfoUIService *const service = start();
        show();
        weekday()->setCurrentIndex(3);
        day()->setCurrentIndex(3);
        m_window.reset(new QWidget); // before the choice was saved
        QVERIFY(service->Init());
        show();
        QCOMPARE(weekday()->currentIndex(), 0);
        save();
        QCOMPARE(setting(VLS_START_WEEK_DATE), stored);
        QCOMPARE(setting(VLS_START_MONTH_DATE), stored);
        CNetInfoUIService::Destroy();
    }
}

void tst_OperatorSettings::theSizeIsSavedWhenSwitchedOff()
{
    set(VLS_CHK_VOLUME, { QStringLiteral("true"), QStringLiteral("false"), QStringLiteral("77") });
    start();
    show();
    QTest::keyClicks(dataSize(), QStringLiteral("8"));
    press("NetInfoSettingDlg_checkBoxDataVolume");
    save();
    QCOMPARE(setting(VLS_CHK_VOLUME), QStringLiteral("false"));
    QCOMPARE(setting(VLS_SIZE_VOLUME), QStringLiteral("778"));
}

void tst_OperatorSettings::anEmptySizeIsRefused()
{
    const QString on = QStringLiteral("true");
    start();
    show();
    press("NetInfoSettingDlg_radioDaily");
    press("NetInfoSettingDlg_checkBoxDataVolume");
    dataSize()->clear();
    const QStringList before = settings();
    save();
    QCOMPARE(int(fakeHost().messages.size()), 1);
    const FakeMessage &message = fakeHost().messages.first();
    QCOMPARE(message.icon, QMessageBox::Information);
    QCOMPARE(message.parent.data(), static_cast<QWidget *>(page()));
    QCOMPARE(message.title, QStringLiteral("IDS_PROPMT"));
    QCOMPARE(message.text, QStringLiteral("IDS_SAVE_FAILED"));
    QCOMPARE(message.buttons, QStringList({ "IDS_OK", QString(), QString() }));
    QCOMPARE(settings(), before);
    QVERIFY(!QFile::exists(userFile()));
    QCOMPARE(checkedRadios(), QStringList("daily")); // what the user entered is still there
    QVERIFY(dataSwitch()->isChecked());
}

void tst_OperatorSettings::anEmptySizeIsSavedWhenSwitchedOff()
{
    start();
    show();
    dataSize()->clear();
    save();
    QCOMPARE(fakeHost().messages.first().text, QStringLiteral("IDS_CHANGED_SAVE"));
    QCOMPARE(setting(VLS_SIZE_VOLUME), QString());
    QVERIFY(QFile::exists(userFile()));
}

void tst_OperatorSettings::theFileHoldsWhatWasSaved()
{
    set(VLS_START_DATE, { QStringLiteral("21-11-2026") });
    start();
    show();
    press("NetInfoSettingDlg_radioWeekly");
    QTest::keyClick(weekday(), Qt::Key_Down);
    press("NetInfoSettingDlg_checkBoxDataVolume");
    dataSize()->clear();
    QTest::keyClicks(dataSize(), QStringLiteral("250"));
    save();
    QFile file(userFile());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(),
             QByteArray("[uselimit]\nchkRecurrence=true\nradioDaily=false\nradioWeekly=true\n"
                        "radioMonthly=false\nchkVolume=true\nchkTimeVolume=false\n"
                        "SizeVolume=250\nSizeTimeVolume=100\nchkWarnbefore=true\n"
                        "chkWarnAfter=true\nShowDataWarnAfter=true\nShowDataWarnBefor=true\n"
                        "ShowTimeWarnBefor=true\nShowTimeWarnAfter=true\nstartdate=21-11-2026\n"
                        "startweekdate=1\nstartmonthdate=0"));
}

void tst_OperatorSettings::aSaveIsConfirmed()
{
    start();
    show();
    fakeHost().language = QStringLiteral(".de");
    save();
    QCOMPARE(int(fakeHost().messages.size()), 1);
    const FakeMessage &message = fakeHost().messages.first();
    QCOMPARE(message.icon, QMessageBox::Information);
    QCOMPARE(message.parent.data(), static_cast<QWidget *>(page()));
    QCOMPARE(message.title, QStringLiteral("IDS_PROPMT.de"));
    QCOMPARE(message.text, QStringLiteral("IDS_CHANGED_SAVE.de"));
    QCOMPARE(message.buttons, QStringList({ "IDS_OK.de", QString(), QString() }));
}

void tst_OperatorSettings::theMeterShowsTheNewLimitAtOnce()
{
    set(VLS_CHK_VOLUME, { QStringLiteral("true") });
    fakeSdk().reports[4].upload = 100ull << 20; // this month
    fakeSdk().reports[1].upload = 60ull << 20; // today
    start();
    show();
    const auto *const meter = part<SkProgressBar>("NetInfoUIPlugin_ProgressDatavolume");
    QCOMPARE(meter->meterMaximum(), 1024.0L * (1 << 20));
    QCOMPARE(meter->meterValue(), 100.0L * (1 << 20));
    press("NetInfoSettingDlg_radioDaily");
    dataSize()->clear();
    QTest::keyClicks(dataSize(), QStringLiteral("250"));
    QCOMPARE(meter->meterMaximum(), 1024.0L * (1 << 20)); // typing alone changes nothing
    bool written = false;
    long double maximum = 0;
    fakeHost().duringMessage = [&] {
        written = QFile::exists(userFile());
        maximum = meter->meterMaximum();
    };
    save();
    QVERIFY(written); // all is done before the message is open
    QCOMPARE(maximum, 250.0L * (1 << 20));
    QCOMPARE(meter->meterValue(), 60.0L * (1 << 20));
}

void tst_OperatorSettings::theHostMayDestroyDuringAMessage_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("message");
    const QString button = QStringLiteral("NetInfoSettingDlg_savesettingbutton");
    QTest::newRow("saved") << button << "IDS_CHANGED_SAVE";
    QTest::newRow("not saved") << button << "IDS_SAVE_FAILED";
    QTest::newRow("clear history") << "NetInfoSettingDlg_clearhistorybutton"
                                   << "IDS_RESET_QUERY";
}

void tst_OperatorSettings::theHostMayDestroyDuringAMessage()
{
    QFETCH(QString, button);
    QFETCH(QString, message);
    for (const bool window : { false, true }) {
        start();
        show();
        if (message == QLatin1String("IDS_SAVE_FAILED")) {
            press("NetInfoSettingDlg_checkBoxDataVolume");
            dataSize()->clear();
        }
        fakeHost().messageAnswer = 1024;
        fakeHost().duringMessage = [&] {
            if (window)
                m_window.reset(new QWidget);
            else
                CNetInfoUIService::Destroy();
        };
        press(button.toLatin1().constData());
        QCOMPARE(fakeHost().messages.takeLast().text, message);
        QVERIFY(!page());
        CNetInfoUIService::Destroy();
    }
}

void tst_OperatorSettings::clearHistoryAsksFirst_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<int>("resets");
    QTest::newRow("yes") << 1024 << 1;
    QTest::newRow("no") << 0 << 0;
}

void tst_OperatorSettings::clearHistoryAsksFirst()
{
    QFETCH(int, answer);
    fakeHost().messageAnswer = answer;
    start();
    show();
    press("NetInfoSettingDlg_clearhistorybutton");
    QCOMPARE(int(fakeHost().messages.size()), 1);
    QCOMPARE(fakeHost().messages.first().text, QStringLiteral("IDS_RESET_QUERY"));
    QTEST(int(fakeSdk().resets.size()), "resets");
    QVERIFY(!QFile::exists(userFile()));
}

void tst_OperatorSettings::savingNeedsNoPage()
{
    CNetInfoUIService *const service = start();
    show();
    set(VLS_RADIO_DAILY, { QStringLiteral("true"), QStringLiteral("true") });
    m_window.reset(new QWidget);
    service->onSaveNetInfoSettings(); // what is missing counts as off
    const QString off = QStringLiteral("false");
    QCOMPARE(settings().mid(VLS_RADIO_DAILY, 4), QStringList({ off, off, off, off }));
    QCOMPARE(int(fakeHost().messages.size()), 1);
    QVERIFY(!fakeHost().messages.first().parent);
}

QTEST_MAIN(tst_OperatorSettings)
#include "tst_operatorsettings.moc"
