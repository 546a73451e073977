// The settings page's controls as the stored values have them, when it is built and on Cancel.

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QtTest>

#include "DateEdit.h"
#include "SettingPageTest.h"

class tst_SettingPageValues : public SettingPageTest
{
    Q_OBJECT
private slots:
    void onlyTrueLoadsAsOn_data();
    void onlyTrueLoadsAsOn();
    void oneRadioIsLoaded_data();
    void oneRadioIsLoaded();
    void recurrenceIsLoaded_data();
    void recurrenceIsLoaded();
    void theDateIsLoaded_data();
    void theDateIsLoaded();
    void anIndexIsLoadedWhenTheListHasIt_data();
    void anIndexIsLoadedWhenTheListHasIt();
    void sizesAreLoadedWhetherOnOrOff();
    void oneRowShowsNoStoredLimit_data();
    void oneRowShowsNoStoredLimit();
    void openingAgainLoadsNothing();
    void cancelRestoresEveryControl();
    void cancelRestoresTheStateOfEveryControl_data();
    void cancelRestoresTheStateOfEveryControl();
    void cancelWritesNothing();
    void aMissingControlStopsItsLoad_data();
    void aMissingControlStopsItsLoad();
    void loadsWithoutAPageAreLogged();
};

void tst_SettingPageValues::onlyTrueLoadsAsOn_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("on");
    QTest::newRow("true") << "true" << true;
    QTest::newRow("false") << "false" << false;
    for (const char *text : { "", "True", "TRUE", "1", "yes", "true ", " true" })
        QTest::addRow("'%s'", text) << QString::fromLatin1(text) << false;
}

void tst_SettingPageValues::onlyTrueLoadsAsOn()
{
    QFETCH(QString, text);
    QFETCH(bool, on);
    const QString other = on ? kOff : kOn; // in all the switches that are not looked at
    const struct
    {
        int index;
        const char *name;
    } boxes[] = { { VLS_CHK_RECURRENCE, "dateeditSetDate" },
                  { VLS_CHK_VOLUME, "checkBoxDataVolume" },
                  { VLS_CHK_TIME_VOLUME, "checkBoxTimeVolume" },
                  { VLS_CHK_WARN_BEFORE, "checkBoxWarnBefore" },
                  { VLS_CHK_WARN_AFTER, "checkBoxWarnExceed" } };
    for (const auto &box : boxes) {
        for (const auto &one : boxes)
            set(one.index, { other });
        set(box.index, { text });
        open();
        for (const auto &one : boxes) {
            const bool expected = one.index == box.index ? on : !on;
            QVERIFY2(at<QCheckBox>(one.name)->isChecked() == expected, one.name);
        }
        QCOMPARE(size("Data")->isEnabled(), check("DataVolume")->isChecked());
        QCOMPARE(size("Time")->isEnabled(), check("TimeVolume")->isChecked());
        CNetInfoUIService::Destroy();
    }
}

void tst_SettingPageValues::oneRadioIsLoaded_data()
{
    QTest::addColumn<QStringList>("stored");
    QTest::addColumn<QString>("radio");
    QTest::addColumn<QString>("enabled");
    QTest::newRow("all") << QStringList({ kOn, kOn, kOn }) << "daily"
                         << "radios";
    QTest::newRow("daily") << QStringList({ kOn, kOff, kOff }) << "daily"
                           << "radios";
    QTest::newRow("weekly and monthly") << QStringList({ kOff, kOn, kOn }) << "weekly"
                                        << "radios, weekday";
    QTest::newRow("monthly") << QStringList({ kOff, kOff, kOn }) << "monthly"
                             << "radios, day";
    QTest::newRow("none") << QStringList({ kOff, kOff, kOff }) << ""
                          << "radios";
    QTest::newRow("none that reads true") << QStringList({ "1", "TRUE", "yes" }) << ""
                                          << "radios";
}

void tst_SettingPageValues::oneRadioIsLoaded()
{
    QFETCH(QStringList, stored);
    QFETCH(QString, radio);
    const QStringList expected = radio.isEmpty() ? QStringList() : QStringList(radio);
    open(); // with the monthly one
    for (const char *name : { "radioDaily", "radioWeekly", "radioMonthly" }) {
        press(name);
        set(VLS_RADIO_DAILY, stored);
        cancel();
        QCOMPARE(checkedRadios(), expected);
        QTEST(enabledParts(), "enabled");
        openAgain();
    }
    press("radioDaily"); // the buttons are a group as before
    press("radioMonthly");
    QCOMPARE(checkedRadios(), QStringList("monthly"));
}

void tst_SettingPageValues::recurrenceIsLoaded_data()
{
    QTest::addColumn<int>("stored");
    QTest::addColumn<QString>("radio");
    QTest::newRow("daily") << int(VLS_RADIO_DAILY) << "daily";
    QTest::newRow("weekly") << int(VLS_RADIO_WEEKLY) << "weekly";
    QTest::newRow("monthly") << int(VLS_RADIO_MONTHLY) << "monthly";
}

void tst_SettingPageValues::recurrenceIsLoaded()
{
    QFETCH(int, stored);
    QFETCH(QString, radio);
    set(VLS_CHK_RECURRENCE, { kOff, kOff, kOff, kOff });
    set(stored, { kOn });
    open();
    QVERIFY(!recurrence()->isChecked());
    QCOMPARE(checkedRadios(), QStringList(radio)); // chosen, and of no use for now
    QCOMPARE(enabledParts(), QStringLiteral("date"));
}

void tst_SettingPageValues::theDateIsLoaded_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QDate>("date"); // it was 7 March 2024 before
    QTest::newRow("a date") << "05-04-2025" << QDate(2025, 4, 5);
    QTest::newRow("other separators") << "05.04.2025" << QDate(2025, 4, 5);
    QTest::newRow("a leap day") << "29-02-2024" << QDate(2024, 2, 29);
    for (const char *text :
         { "", "31-02-2024", "29-02-2023", "00-01-2024", "01-13-2024", "x", "1-2-2024" })
        QTest::addRow("'%s'", text) << QString::fromLatin1(text) << QDate(2024, 3, 7);
}

void tst_SettingPageValues::theDateIsLoaded()
{
    QFETCH(QString, text);
    set(VLS_START_DATE, { QStringLiteral("07-03-2024") });
    open();
    QCOMPARE(date()->date(), QDate(2024, 3, 7));
    set(VLS_START_DATE, { text });
    cancel();
    QTEST(date()->date(), "date");
}

void tst_SettingPageValues::anIndexIsLoadedWhenTheListHasIt_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("weekdayIndex"); // both were 2 before
    QTest::addColumn<int>("dayIndex");
    QTest::newRow("the first") << "0" << 0 << 0;
    QTest::newRow("the last weekday") << "6" << 6 << 6;
    QTest::newRow("after the last weekday") << "7" << 2 << 7;
    QTest::newRow("the last day") << "27" << 2 << 27;
    QTest::newRow("after the last day") << "28" << 2 << 2;
    QTest::newRow("the operator page's last day") << "30" << 2 << 2;
    for (const char *text : { "", "-1", "abc", "1.5", "2147483648", "99999999999", "0x1" })
        QTest::addRow("'%s'", text) << QString::fromLatin1(text) << 2 << 2;
}

void tst_SettingPageValues::anIndexIsLoadedWhenTheListHasIt()
{
    QFETCH(QString, text);
    const QString two = QStringLiteral("2");
    set(VLS_START_WEEK_DATE, { two, two });
    open();
    QCOMPARE(weekday()->currentIndex(), 2);
    QCOMPARE(day()->currentIndex(), 2);
    set(VLS_START_WEEK_DATE, { text, text });
    cancel();
    QTEST(weekday()->currentIndex(), "weekdayIndex");
    QTEST(day()->currentIndex(), "dayIndex");
}

void tst_SettingPageValues::sizesAreLoadedWhetherOnOrOff()
{
    const QString data = QStringLiteral("77");
    const QString time = QStringLiteral("odd"); // a file by hand; shown as it stands
    for (const QString &on : { kOn, kOff }) {
        set(VLS_CHK_VOLUME, { on, on, data, time });
        open();
        QCOMPARE(size("Data")->text(), data);
        QCOMPARE(size("Time")->text(), time);
        CNetInfoUIService::Destroy();
    }
}

void tst_SettingPageValues::oneRowShowsNoStoredLimit_data()
{
    QTest::addColumn<QString>("off");
    QTest::newRow("Data") << "TIMEVOLUMELIMIT";
    QTest::newRow("Time") << "DATAVOLUMELIMIT";
}

void tst_SettingPageValues::oneRowShowsNoStoredLimit()
{
    QFETCH(QString, off);
    const char *const name = QTest::currentDataTag();
    set(VLS_CHK_VOLUME, { kOn, kOn });
    open({ off });
    const QByteArray box = QByteArray(name) + "Volume";
    QVERIFY(!check(box.constData())->isChecked());
    QCOMPARE(size(name)->text(), QString());
    QVERIFY(check("WarnBefore")->isChecked()); // the rest is loaded
    m_log->takeLines();
    cancel();
    const QStringList lines = m_log->takeLines();
    const QString null = QStringLiteral("Arg is NULL: <time>: %1: applyLimitSettings ");
    QCOMPARE(int(lines.filter(null.arg(kPageSource)).size()), 1);
}

void tst_SettingPageValues::openingAgainLoadsNothing()
{
    CNetInfoUIService *const service = open();
    press("radioWeekly");
    press("checkBoxDataVolume");
    type("Data", QStringLiteral("55"));
    service->HideSetting();
    set(VLS_CHK_RECURRENCE, { kOff, kOn });
    openAgain();
    QCOMPARE(checkedRadios(), QStringList("weekly"));
    QCOMPARE(size("Data")->text(), QStringLiteral("55"));
    QVERIFY(recurrence()->isChecked());
}

void tst_SettingPageValues::cancelRestoresEveryControl()
{
    set(VLS_CHK_RECURRENCE, { kOff, kOff, kOn, kOff, kOn, kOn });
    set(VLS_START_WEEK_DATE, { QStringLiteral("2"), QStringLiteral("3") });
    CNetInfoUIService *const service = open();
    chooseDate(2);
    press("dateeditSetDate");
    QTest::keyClick(weekday(), Qt::Key_Down);
    press("radioMonthly");
    QTest::keyClick(day(), Qt::Key_Down);
    type("Data", QStringLiteral("55"));
    type("Time", QStringLiteral("66"));
    press("checkBoxWarnBefore");
    press("checkBoxTimeVolume");
    const QStringList before = settings();
    cancel();
    QVERIFY(!service->IsActiveSetting());
    QCOMPARE(settings(), before);
    openAgain();
    QCOMPARE(date()->date(), QDate(2026, 11, 21));
    QVERIFY(!recurrence()->isChecked());
    QCOMPARE(enabledParts(), QStringLiteral("date"));
    QCOMPARE(checkedRadios(), QStringList("weekly"));
    QCOMPARE(weekday()->currentIndex(), 2);
    QCOMPARE(day()->currentIndex(), 3);
    QVERIFY(check("DataVolume")->isChecked());
    QVERIFY(check("TimeVolume")->isChecked());
    QCOMPARE(size("Data")->text(), QStringLiteral("1024"));
    QCOMPARE(size("Time")->text(), QStringLiteral("100"));
    QVERIFY(size("Data")->isEnabled());
    QVERIFY(size("Time")->isEnabled());
    QVERIFY(check("WarnBefore")->isChecked());
    QVERIFY(check("WarnExceed")->isChecked());
}

void tst_SettingPageValues::cancelRestoresTheStateOfEveryControl_data()
{
    QTest::addColumn<QString>("pressed");
    QTest::addColumn<QString>("recurring");
    for (const char *name : { "dateeditSetDate", "radioDaily", "radioWeekly", "checkBoxDataVolume",
                              "checkBoxTimeVolume", "checkBoxWarnBefore", "checkBoxWarnExceed" })
        QTest::addRow("%s", name) << QString::fromLatin1(name) << kOn;
    QTest::addRow("recurrence off") << QStringLiteral("dateeditSetDate") << kOff;
}

void tst_SettingPageValues::cancelRestoresTheStateOfEveryControl()
{
    QFETCH(QString, pressed);
    QFETCH(QString, recurring);
    set(VLS_CHK_RECURRENCE, { recurring });
    open();
    const auto state = [] {
        QStringList all;
        const QList<QWidget *> widgets = page()->findChildren<QWidget *>();
        for (const QWidget *one : widgets) {
            const auto *const button = qobject_cast<const QAbstractButton *>(one);
            all << QStringLiteral("%1 %2 %3")
                       .arg(one->objectName())
                       .arg(one->isEnabled())
                       .arg(button && button->isChecked());
        }
        return all;
    };
    const QStringList before = state();
    press(pressed.toLatin1().constData());
    QVERIFY(state() != before);
    cancel();
    QCOMPARE(state(), before);
}

void tst_SettingPageValues::cancelWritesNothing()
{
    open();
    const QByteArray before = file();
    QSignalSpy changed(NetInfoSettingUIPlugin::GetInstance(),
                       SIGNAL(netInfoSettingsChanged(int, int, bool, bool)));
    press("radioDaily");
    cancel();
    QCOMPARE(file(), before);
    QCOMPARE(int(changed.count()), 0);
    QVERIFY(fakeHost().messages.isEmpty());
}

void tst_SettingPageValues::aMissingControlStopsItsLoad_data()
{
    QTest::addColumn<QString>("logger");
    QTest::newRow("dateedit") << "applySettings";
    QTest::newRow("comboBoxWeekly") << "applySettings";
    QTest::newRow("comboBoxMonthly") << "applySettings";
    QTest::newRow("dateeditSetDate") << "applyRecurrence";
    QTest::newRow("radioDaily") << "applyRecurrence";
    QTest::newRow("radioWeekly") << "applyRecurrence";
    QTest::newRow("radioMonthly") << "applyRecurrence";
    QTest::newRow("checkBoxDataVolume") << "applyLimitSettings";
    QTest::newRow("lineEditDataVolume") << "applyLimitSettings";
    QTest::newRow("checkBoxTimeVolume") << "applyLimitSettings";
    QTest::newRow("lineEditTimeVolume") << "applyLimitSettings";
    QTest::newRow("checkBoxWarnBefore") << "applyWarningSettings";
    QTest::newRow("checkBoxWarnExceed") << "applyWarningSettings";
}

void tst_SettingPageValues::aMissingControlStopsItsLoad()
{
    QFETCH(QString, logger);
    open();
    delete at<QWidget>(QTest::currentDataTag());
    set(VLS_CHK_VOLUME, { kOn, kOn, QStringLiteral("8"), QStringLiteral("9"), kOff, kOff });
    m_log->takeLines();
    cancel();
    const QStringList lines = m_log->takeLines().filter(QStringLiteral("Arg is NULL"));
    QCOMPARE(int(lines.size()), 1);
    QVERIFY2(lines.first().contains(QLatin1Char(' ') + logger + QLatin1Char(' ')),
             qPrintable(lines.first()));
    const bool limits = logger == QLatin1String("applyRecurrence")
        || logger == QLatin1String("applyWarningSettings");
    if (size("Data"))
        QCOMPARE(size("Data")->text(), QLatin1String(limits ? "8" : "1024"));
    if (size("Time"))
        QCOMPARE(size("Time")->text(), QLatin1String(limits ? "9" : "100"));
    const bool warnings = logger == QLatin1String("applyRecurrence")
        || logger == QLatin1String("applyLimitSettings");
    for (const char *name : { "WarnBefore", "WarnExceed" }) {
        if (check(name))
            QVERIFY2(check(name)->isChecked() != warnings, name);
    }
}

void tst_SettingPageValues::loadsWithoutAPageAreLogged()
{
    start();
    NetInfoSettingUIPlugin *const settings = NetInfoSettingUIPlugin::GetInstance();
    for (const char *name : { "applySettings", "applyLimitSettings", "applyWarningSettings" }) {
        m_log->takeLines();
        QVERIFY(QMetaObject::invokeMethod(settings, name));
        const QString line
            = QStringLiteral("Arg is NULL: <time>: %1: %2 ").arg(kPageSource, QLatin1String(name));
        QCOMPARE(int(m_log->takeLines().filter(line).size()), 1);
    }
    QVERIFY(CNetInfoUIService::instance()->OnClickSettingCancelButton());
}

QTEST_MAIN(tst_SettingPageValues)
#include "tst_settingpagevalues.moc"
