// What the settings page's controls enable and change in one another, by clicks and keys.

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QtTest>

#include "DateEdit.h"
#include "SettingPageTest.h"

class tst_SettingPageRules : public SettingPageTest
{
    Q_OBJECT
private slots:
    void recurrenceEnablesWhatItNeeds_data();
    void recurrenceEnablesWhatItNeeds();
    void recurrenceFollowsTheSpaceKey();
    void aRadioEnablesItsList_data();
    void aRadioEnablesItsList();
    void arrowsGoFromRadioToRadio();
    void offRadiosTakeNoClick();
    void theToolTipFollowsTheWeekday();
    void aRadioThatIsNotChosenDoesNothing();
    void aSlotMayRunWithoutAClick();
    void onlyAClickCounts();
    void aLimitEnablesItsSize_data();
    void aLimitEnablesItsSize();
    void noLimitMeansNoWarnings_data();
    void noLimitMeansNoWarnings();
    void warningsMayBeSetWithoutALimit();
    void aWarningFollowsItsSlot();
    void oneRowFollowsItsOwnSwitch_data();
    void oneRowFollowsItsOwnSwitch();
    void aMissingControlIsLogged_data();
    void aMissingControlIsLogged();
    void aDateIsReadByPosition_data();
    void aDateIsReadByPosition();
};

void tst_SettingPageRules::recurrenceEnablesWhatItNeeds_data()
{
    QTest::addColumn<int>("stored"); // index of the radio's setting; 0: none
    QTest::addColumn<QString>("enabled");
    QTest::newRow("daily") << int(VLS_RADIO_DAILY) << "radios";
    QTest::newRow("weekly") << int(VLS_RADIO_WEEKLY) << "radios, weekday";
    QTest::newRow("monthly") << int(VLS_RADIO_MONTHLY) << "radios, day";
    QTest::newRow("none") << 0 << "radios";
}

void tst_SettingPageRules::recurrenceEnablesWhatItNeeds()
{
    QFETCH(int, stored);
    QFETCH(QString, enabled);
    set(VLS_RADIO_DAILY, { kOff, kOff, kOff });
    if (stored)
        set(stored, { kOn });
    open();
    QVERIFY(recurrence()->isChecked());
    QCOMPARE(enabledParts(), enabled);
    const QStringList checked = checkedRadios();
    for (int turn = 0; turn < 2; ++turn) {
        press("dateeditSetDate");
        QVERIFY(!recurrence()->isChecked());
        QCOMPARE(enabledParts(), QStringLiteral("date"));
        QCOMPARE(checkedRadios(), checked);
        press("dateeditSetDate");
        QVERIFY(recurrence()->isChecked());
        QCOMPARE(enabledParts(), enabled);
        QCOMPARE(checkedRadios(), checked);
    }
}

void tst_SettingPageRules::recurrenceFollowsTheSpaceKey()
{
    open();
    QTest::keyClick(recurrence(), Qt::Key_Space);
    QCOMPARE(enabledParts(), QStringLiteral("date"));
    QTest::keyClick(recurrence(), Qt::Key_Space);
    QCOMPARE(enabledParts(), QStringLiteral("radios, day"));
}

void tst_SettingPageRules::aRadioEnablesItsList_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("then");
    QTest::addColumn<QString>("enabled");
    for (const char *first : { "Daily", "Weekly", "Monthly" }) {
        const auto add = [first](const char *then, const char *enabled) {
            QTest::addRow("%s, then %s", first, then)
                << QString::fromLatin1(first) << QString::fromLatin1(then)
                << QString::fromLatin1(enabled);
        };
        add("Daily", "radios");
        add("Weekly", "radios, weekday");
        add("Monthly", "radios, day");
    }
}

void tst_SettingPageRules::aRadioEnablesItsList()
{
    QFETCH(QString, first);
    QFETCH(QString, then);
    open();
    for (const bool byKeys : { false, true }) {
        press(("radio" + first.toLatin1()).constData());
        if (byKeys)
            QTest::keyClick(radio(then.toLatin1().constData()), Qt::Key_Space);
        else
            press(("radio" + then.toLatin1()).constData());
        QTEST(enabledParts(), "enabled");
        QCOMPARE(checkedRadios(), QStringList(then.toLower()));
    }
}

void tst_SettingPageRules::arrowsGoFromRadioToRadio()
{
    open();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.data()));
    radio("Monthly")->setFocus();
    QTest::keyClick(radio("Monthly"), Qt::Key_Up);
    QCOMPARE(checkedRadios(), QStringList("weekly"));
    QCOMPARE(enabledParts(), QStringLiteral("radios, weekday"));
    QTest::keyClick(radio("Weekly"), Qt::Key_Up);
    QCOMPARE(checkedRadios(), QStringList("daily"));
    QCOMPARE(enabledParts(), QStringLiteral("radios"));
}

void tst_SettingPageRules::offRadiosTakeNoClick()
{
    open();
    press("dateeditSetDate");
    for (const char *name : { "radioDaily", "radioWeekly", "comboBoxWeekly", "comboBoxMonthly" })
        pressDisabled(name);
    QCOMPARE(checkedRadios(), QStringList("monthly"));
    QCOMPARE(enabledParts(), QStringLiteral("date"));
    press("dateeditSetDate");
    pressDisabled("dateedit");
}

void tst_SettingPageRules::theToolTipFollowsTheWeekday()
{
    open();
    press("radioWeekly");
    QTest::keyClick(weekday(), Qt::Key_Down);
    QCOMPARE(weekday()->toolTip(), QStringLiteral("IDS_MONDAY"));
}

void tst_SettingPageRules::aRadioThatIsNotChosenDoesNothing()
{
    open();
    press("radioDaily");
    NetInfoSettingUIPlugin *const settings = NetInfoSettingUIPlugin::GetInstance();
    settings->onDailyRadioBtnSelect(false);
    settings->onWeeklyRadioBtnSelect(false);
    settings->onMonthlyRadioBtnSelect(false);
    QCOMPARE(checkedRadios(), QStringList("daily"));
    QCOMPARE(enabledParts(), QStringLiteral("radios"));
}

void tst_SettingPageRules::aSlotMayRunWithoutAClick()
{
    open();
    NetInfoSettingUIPlugin *const settings = NetInfoSettingUIPlugin::GetInstance();
    settings->onSetRecurrenceSelect(false);
    QVERIFY(!recurrence()->isChecked());
    QCOMPARE(enabledParts(), QStringLiteral("date"));
    settings->onWeeklyRadioBtnSelect(true); // enables all radio buttons by itself
    QCOMPARE(checkedRadios(), QStringList("weekly"));
    QCOMPARE(enabledParts(), QStringLiteral("date, radios, weekday"));
    settings->onSetRecurrenceSelect(false);
    settings->onDailyRadioBtnSelect(true);
    QCOMPARE(checkedRadios(), QStringList("daily"));
    QCOMPARE(enabledParts(), QStringLiteral("date, radios"));
    settings->onSetRecurrenceSelect(false);
    settings->onMonthlyRadioBtnSelect(true);
    QCOMPARE(checkedRadios(), QStringList("monthly"));
    QCOMPARE(enabledParts(), QStringLiteral("date, radios, day"));
    settings->onSetRecurrenceSelect(true);
    QVERIFY(!recurrence()->isChecked());
    QCOMPARE(enabledParts(), QStringLiteral("radios, day"));
}

void tst_SettingPageRules::onlyAClickCounts()
{
    open();
    recurrence()->setChecked(false);
    radio("Weekly")->setChecked(true);
    radio("Daily")->setChecked(true);
    QCOMPARE(enabledParts(), QStringLiteral("radios, day"));
    radio("Monthly")->setChecked(true);
    at<QWidget>("comboBoxMonthly")->setEnabled(false);
    radio("Daily")->setChecked(true);
    radio("Monthly")->setChecked(true);
    QCOMPARE(enabledParts(), QStringLiteral("radios"));
    check("DataVolume")->setChecked(true);
    check("TimeVolume")->setChecked(true);
    QVERIFY(!size("Data")->isEnabled());
    QVERIFY(!size("Time")->isEnabled());
}

void tst_SettingPageRules::aLimitEnablesItsSize_data()
{
    QTest::addColumn<QString>("other");
    QTest::newRow("Data") << "Time";
    QTest::newRow("Time") << "Data";
}

void tst_SettingPageRules::aLimitEnablesItsSize()
{
    QFETCH(QString, other);
    open();
    const char *const name = QTest::currentDataTag();
    const QByteArray otherName = other.toLatin1();
    const QByteArray box = QByteArray("checkBox") + name + "Volume";
    for (const bool byKeys : { false, true }) {
        for (const bool on : { true, false }) {
            if (byKeys)
                QTest::keyClick(at<QCheckBox>(box.constData()), Qt::Key_Space);
            else
                press(box.constData());
            QCOMPARE(at<QCheckBox>(box.constData())->isChecked(), on);
            QCOMPARE(size(name)->isEnabled(), on);
            QVERIFY(!size(otherName.constData())->isEnabled());
        }
    }
    NetInfoSettingUIPlugin *const settings = NetInfoSettingUIPlugin::GetInstance();
    const auto select = [&](bool on) {
        if (other == QLatin1String("Time"))
            settings->onDataVolumeSelect(on);
        else
            settings->onTimeVolumeSelect(on);
    };
    select(true); // the size alone, not the switch
    QVERIFY(size(name)->isEnabled());
    QVERIFY(!at<QCheckBox>(box.constData())->isChecked());
    select(false);
    QVERIFY(!size(name)->isEnabled());
}

void tst_SettingPageRules::noLimitMeansNoWarnings_data()
{
    QTest::addColumn<bool>("data");
    QTest::addColumn<bool>("time");
    QTest::addColumn<QString>("pressed");
    QTest::addColumn<bool>("warnings"); // still on
    QTest::newRow("data off, time off") << true << false << "checkBoxDataVolume" << false;
    QTest::newRow("data off, time on") << true << true << "checkBoxDataVolume" << true;
    QTest::newRow("data on, time off") << false << false << "checkBoxDataVolume" << true;
    QTest::newRow("time off, data off") << false << true << "checkBoxTimeVolume" << false;
    QTest::newRow("time off, data on") << true << true << "checkBoxTimeVolume" << true;
    QTest::newRow("time on, data off") << false << false << "checkBoxTimeVolume" << true;
}

void tst_SettingPageRules::noLimitMeansNoWarnings()
{
    QFETCH(bool, data);
    QFETCH(bool, time);
    QFETCH(QString, pressed);
    QFETCH(bool, warnings);
    set(VLS_CHK_VOLUME, { data ? kOn : kOff, time ? kOn : kOff });
    open();
    QVERIFY(check("WarnBefore")->isChecked());
    QVERIFY(check("WarnExceed")->isChecked());
    press(pressed.toLatin1().constData());
    QCOMPARE(check("WarnBefore")->isChecked(), warnings);
    QCOMPARE(check("WarnExceed")->isChecked(), warnings);
    press(pressed.toLatin1().constData()); // and what went off stays so
    if (!warnings) {
        QVERIFY(!check("WarnBefore")->isChecked());
        QVERIFY(!check("WarnExceed")->isChecked());
    }
}

void tst_SettingPageRules::warningsMayBeSetWithoutALimit()
{
    open();
    for (const char *name : { "WarnBefore", "WarnExceed" }) {
        const QByteArray box = QByteArray("checkBox") + name;
        press(box.constData());
        QVERIFY2(!check(name)->isChecked(), name);
        QTest::keyClick(check(name), Qt::Key_Space);
        QVERIFY2(check(name)->isChecked(), name);
    }
    press("checkBoxWarnBefore");
    QVERIFY(check("WarnExceed")->isChecked()); // each for itself
}

void tst_SettingPageRules::aWarningFollowsItsSlot()
{
    open();
    NetInfoSettingUIPlugin *const settings = NetInfoSettingUIPlugin::GetInstance();
    settings->onWarnBeforeSelect(false);
    QVERIFY(!check("WarnBefore")->isChecked());
    QVERIFY(check("WarnExceed")->isChecked());
    settings->onWarnExceedSelect(false);
    settings->onWarnBeforeSelect(true);
    QVERIFY(check("WarnBefore")->isChecked());
    QVERIFY(!check("WarnExceed")->isChecked());
    settings->onWarnExceedSelect(true);
    QVERIFY(check("WarnExceed")->isChecked());
    for (const char *name : { "WarnBefore", "WarnExceed" }) {
        emit check(name)->clicked(false); // as its own click does
        QVERIFY2(!check(name)->isChecked(), name);
    }
}

void tst_SettingPageRules::oneRowFollowsItsOwnSwitch_data()
{
    QTest::addColumn<QString>("off");
    QTest::newRow("Data") << "TIMEVOLUMELIMIT";
    QTest::newRow("Time") << "DATAVOLUMELIMIT";
}

void tst_SettingPageRules::oneRowFollowsItsOwnSwitch()
{
    QFETCH(QString, off);
    const char *const name = QTest::currentDataTag();
    open({ off });
    const QByteArray box = QByteArray("checkBox") + name + "Volume";
    press("checkBoxWarnBefore");
    press("checkBoxWarnExceed");
    const bool before = check("WarnBefore")->isChecked();
    for (const bool on : { true, false }) {
        m_log->takeLines();
        press(box.constData());
        QCOMPARE(size(name)->isEnabled(), on);
        QCOMPARE(check("WarnBefore")->isChecked(), before);
        QCOMPARE(check("WarnExceed")->isChecked(), before);
        const QString line = QStringLiteral("Arg is NULL: <time>: %1: on%2VolumeSelect ")
                                 .arg(kPageSource, QLatin1String(name));
        QCOMPARE(int(m_log->takeLines().filter(line).size()), 1);
    }
}

void tst_SettingPageRules::aMissingControlIsLogged_data()
{
    QTest::addColumn<QStringList>("loggers");
    const QStringList radios = { "onSetRecurrenceSelect", "onDailyRadioBtnSelect",
                                 "onWeeklyRadioBtnSelect", "onMonthlyRadioBtnSelect" };
    const QStringList limits = { "onDataVolumeSelect", "onTimeVolumeSelect" };
    for (const char *name :
         { "radioDaily", "radioWeekly", "radioMonthly", "comboBoxWeekly", "comboBoxMonthly" })
        QTest::newRow(name) << radios;
    QTest::newRow("dateedit") << QStringList("onSetRecurrenceSelect");
    QTest::newRow("dateeditSetDate") << QStringList("onSetRecurrenceSelect");
    QTest::newRow("checkBoxWarnBefore") << limits + QStringList("onWarnBeforeSelect");
    QTest::newRow("checkBoxWarnExceed") << limits + QStringList("onWarnExceedSelect");
    QTest::newRow("checkBoxDataVolume") << QStringList("onTimeVolumeSelect");
    QTest::newRow("checkBoxTimeVolume") << QStringList("onDataVolumeSelect");
    QTest::newRow("lineEditDataVolume") << QStringList("onDataVolumeSelect");
    QTest::newRow("lineEditTimeVolume") << QStringList("onTimeVolumeSelect");
}

void tst_SettingPageRules::aMissingControlIsLogged()
{
    QFETCH(QStringList, loggers);
    open();
    delete at<QWidget>(QTest::currentDataTag());
    NetInfoSettingUIPlugin *const settings = NetInfoSettingUIPlugin::GetInstance();
    for (const char *name :
         { "onSetRecurrenceSelect", "onDailyRadioBtnSelect", "onWeeklyRadioBtnSelect",
           "onMonthlyRadioBtnSelect", "onDataVolumeSelect", "onTimeVolumeSelect",
           "onWarnBeforeSelect", "onWarnExceedSelect" }) {
        m_log->takeLines();
        QVERIFY(QMetaObject::invokeMethod(settings, name, Q_ARG(bool, true)));
        const QString line
            = QStringLiteral("Arg is NULL: <time>: %1: %2 ").arg(kPageSource, QLatin1String(name));
        QCOMPARE(int(m_log->takeLines().filter(line).size()),
                 loggers.contains(QLatin1String(name)) ? 1 : 0);
    }
    settings->SetLanguage(); // and the rest of the page goes on
    settings->CancelNetInfoSetting();
    settings->SaveNetInfoSettings();
}

void tst_SettingPageRules::aDateIsReadByPosition_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QDate>("date");
    QTest::newRow("a date") << "05-03-2024" << QDate(2024, 3, 5);
    QTest::newRow("other separators") << "05/03x2024" << QDate(2024, 3, 5);
    QTest::newRow("no such day") << "31-02-2024" << QDate();
    QTest::newRow("empty") << "" << QDate();
    QTest::newRow("null") << QString() << QDate();
}

void tst_SettingPageRules::aDateIsReadByPosition()
{
    QFETCH(QString, text);
    start();
    QTEST(NetInfoSettingUIPlugin::GetInstance()->DateFromString(text), "date");
}

QTEST_MAIN(tst_SettingPageRules)
#include "tst_settingpagerules.moc"
