// What OK on the settings page stores, says, tells and writes.

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QtTest>

#include "DateEdit.h"
#include "SettingPageTest.h"
#include "SkProgressBar.h"

class tst_SettingPageSave : public SettingPageTest
{
    Q_OBJECT
private slots:
    void theFileHoldsWhatWasEntered();
    void anUntouchedPageIsWrittenAsLoaded();
    void theRadiosAreSaved_data();
    void theRadiosAreSaved();
    void recurrenceIsNotSaved();
    void theFlagsOfWarningsAreNotTouched();
    void theSwitchesAreSaved_data();
    void theSwitchesAreSaved();
    void aChosenStartIsSaved_data();
    void aChosenStartIsSaved();
    void aDayOutsideTheListIsNotWrittenBack();
    void aChoiceSurvivesSaving();
    void aCancelledChoiceIsOverwrittenByWhatIsLoaded();
    void aChoiceSurvivesACancelThatLoadsNoOther();
    void oneRowIsSavedAlone_data();
    void oneRowIsSavedAlone();
    void noRowIsSavedToo();
    void theSignalCarriesTheFiguresAsTyped_data();
    void theSignalCarriesTheFiguresAsTyped();
    void theSignalComesBeforeTheFile();
    void theMeterFollowsTheSavedLimit();
    void theStepsMayBeRunAlone();
};

void tst_SettingPageSave::theFileHoldsWhatWasEntered()
{
    set(VLS_CHK_RECURRENCE, { kOff });
    open();
    chooseDate(4);
    press("dateeditSetDate");
    press("radioWeekly");
    QTest::keyClick(weekday(), Qt::Key_End);
    press("radioMonthly");
    QTest::keyClick(day(), Qt::Key_End);
    press("checkBoxDataVolume");
    type("Data", QStringLiteral("2048"));
    press("checkBoxTimeVolume");
    type("Time", QStringLiteral("36"));
    press("checkBoxWarnExceed");
    QVERIFY(ok());
    QVERIFY(!CNetInfoUIService::instance()->IsActiveSetting());
    QVERIFY(!page()->parentWidget());
    QCOMPARE(file(),
             QByteArray("[uselimit]\nchkRecurrence=false\nradioDaily=false\nradioWeekly=false\n"
                        "radioMonthly=true\nchkVolume=true\nchkTimeVolume=true\n"
                        "SizeVolume=2048\nSizeTimeVolume=36\nchkWarnbefore=true\n"
                        "chkWarnAfter=false\nShowDataWarnAfter=true\nShowDataWarnBefor=true\n"
                        "ShowTimeWarnBefor=true\nShowTimeWarnAfter=true\nstartdate=25-11-2026\n"
                        "startweekdate=6\nstartmonthdate=27"));
    QVERIFY(fakeHost().messages.isEmpty());
}

void tst_SettingPageSave::anUntouchedPageIsWrittenAsLoaded()
{
    set(VLS_START_WEEK_DATE, { QStringLiteral("3"), QStringLiteral("9") });
    const QStringList before = settings();
    open();
    QVERIFY(ok());
    QCOMPARE(settings(), before);
    QCOMPARE(file(), fileOf(before));
}

void tst_SettingPageSave::theRadiosAreSaved_data()
{
    QTest::addColumn<QString>("radio");
    QTest::addColumn<QStringList>("radios");
    QTest::newRow("daily") << "radioDaily" << QStringList({ kOn, kOff, kOff });
    QTest::newRow("weekly") << "radioWeekly" << QStringList({ kOff, kOn, kOff });
    QTest::newRow("monthly") << "radioMonthly" << QStringList({ kOff, kOff, kOn });
    QTest::newRow("none") << QString() << QStringList({ kOff, kOff, kOff });
}

void tst_SettingPageSave::theRadiosAreSaved()
{
    QFETCH(QString, radio);
    QFETCH(QStringList, radios);
    set(VLS_RADIO_DAILY, { QString(), QString(), QString() });
    open();
    if (!radio.isEmpty())
        press(radio.toLatin1().constData());
    press("dateeditSetDate"); // also while they are disabled
    QVERIFY(ok());
    QCOMPARE(QStringList(settings().mid(VLS_RADIO_DAILY, 3)), radios);
    QCOMPARE(file(), fileOf(settings()));
}

void tst_SettingPageSave::recurrenceIsNotSaved()
{
    for (const QString &stored : { kOn, kOff, QStringLiteral("odd") }) {
        set(VLS_CHK_RECURRENCE, { stored });
        open();
        const bool loaded = recurrence()->isChecked();
        for (int i = 0; i < 2; ++i) {
            press("dateeditSetDate");
            QVERIFY(ok());
            QCOMPARE(setting(VLS_CHK_RECURRENCE), stored);
            QVERIFY(file().contains("\nchkRecurrence=" + stored.toLatin1() + '\n'));
            openAgain();
        }
        QCOMPARE(recurrence()->isChecked(), loaded);
        CNetInfoUIService::Destroy();
    }
}

void tst_SettingPageSave::theFlagsOfWarningsAreNotTouched()
{
    const QStringList flags = { kOff, QStringLiteral("odd"), QString(), kOn };
    open();
    set(VLS_SHOW_DATA_WARN_AFTER, flags);
    press("checkBoxDataVolume");
    type("Data", QStringLiteral("5"));
    QVERIFY(ok());
    QCOMPARE(settings().mid(VLS_SHOW_DATA_WARN_AFTER, 4), flags);
    QCOMPARE(file(), fileOf(settings()));
}

void tst_SettingPageSave::theSwitchesAreSaved_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("checkBoxDataVolume") << int(VLS_CHK_VOLUME);
    QTest::newRow("checkBoxTimeVolume") << int(VLS_CHK_TIME_VOLUME);
    QTest::newRow("checkBoxWarnBefore") << int(VLS_CHK_WARN_BEFORE);
    QTest::newRow("checkBoxWarnExceed") << int(VLS_CHK_WARN_AFTER);
}

void tst_SettingPageSave::theSwitchesAreSaved()
{
    QFETCH(int, index);
    set(VLS_CHK_VOLUME, { kOn, kOn });
    open();
    const QStringList before = settings();
    for (const QString &value : { kOff, kOn }) {
        press(QTest::currentDataTag());
        QVERIFY(ok());
        QStringList expected = before;
        expected[index] = value;
        QCOMPARE(settings(), expected); // the sizes are kept, whether on or off
        QCOMPARE(file(), fileOf(expected));
        openAgain();
    }
}

void tst_SettingPageSave::aChosenStartIsSaved_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("value");
    QTest::newRow("date") << int(VLS_START_DATE) << "22-11-2026";
    QTest::newRow("weekday") << int(VLS_START_WEEK_DATE) << "5";
    QTest::newRow("day") << int(VLS_START_MONTH_DATE) << "8";
}

void tst_SettingPageSave::aChosenStartIsSaved()
{
    QFETCH(int, index);
    QFETCH(QString, value);
    set(VLS_CHK_RECURRENCE,
        { index == VLS_START_DATE ? kOff : kOn, kOff, index == VLS_START_WEEK_DATE ? kOn : kOff,
          index == VLS_START_MONTH_DATE ? kOn : kOff });
    set(VLS_START_WEEK_DATE, { QStringLiteral("4"), QStringLiteral("7") });
    QStringList expected = settings();
    expected[index] = value;
    open();
    if (index == VLS_START_DATE)
        chooseDate(1);
    else
        QTest::keyClick(index == VLS_START_WEEK_DATE ? weekday() : day(), Qt::Key_Down);
    QVERIFY(settings() != expected); // nothing is stored before OK
    QVERIFY(ok());
    QCOMPARE(settings(), expected);
    QCOMPARE(file(), fileOf(expected));
}

void tst_SettingPageSave::aDayOutsideTheListIsNotWrittenBack()
{
    for (const char *text : { "", "-1", "7x", "31", "99999999999" }) {
        const QString odd = QLatin1String(text);
        set(VLS_START_DATE, { odd, odd, odd });
        CNetInfoUIService *const service = open();
        QVERIFY(ok());
        openAgain();
        service->Notify(320, 0, 0);
        cancel();
        openAgain();
        QVERIFY(ok());
        QCOMPARE(settings().mid(VLS_START_DATE), QStringList({ odd, odd, odd }));
        CNetInfoUIService::Destroy();
    }
}

void tst_SettingPageSave::aChoiceSurvivesSaving()
{
    set(VLS_RADIO_WEEKLY, { kOn, kOff });
    open();
    QTest::keyClick(weekday(), Qt::Key_Down);
    QVERIFY(ok());
    QCOMPARE(setting(VLS_START_WEEK_DATE), QStringLiteral("1"));
    set(VLS_START_WEEK_DATE, { QStringLiteral("4") }); // by the operator page
    openAgain();
    QCOMPARE(weekday()->currentIndex(), 1); // what the page shows is what it saves
    QVERIFY(ok());
    QCOMPARE(setting(VLS_START_WEEK_DATE), QStringLiteral("1"));
}

void tst_SettingPageSave::aCancelledChoiceIsOverwrittenByWhatIsLoaded()
{
    set(VLS_CHK_RECURRENCE, { kOff, kOff, kOn, kOff });
    open();
    const QStringList before = settings();
    chooseDate(1);
    press("dateeditSetDate");
    QTest::keyClick(weekday(), Qt::Key_Down);
    press("radioMonthly");
    QTest::keyClick(day(), Qt::Key_Down);
    cancel();
    openAgain();
    QVERIFY(ok());
    QCOMPARE(settings(), before);
}

void tst_SettingPageSave::aChoiceSurvivesACancelThatLoadsNoOther()
{
    set(VLS_CHK_RECURRENCE, { kOff, kOff, kOn, kOff });
    set(VLS_START_DATE, { QString(), QString(), QString() });
    open();
    date()->setDate(QDate(2026, 11, 21));
    chooseDate(1);
    press("dateeditSetDate");
    QTest::keyClick(weekday(), Qt::Key_Down);
    press("radioMonthly");
    QTest::keyClick(day(), Qt::Key_Down);
    cancel();
    QCOMPARE(settings().mid(VLS_START_DATE), QStringList({ QString(), QString(), QString() }));
    openAgain();
    QVERIFY(ok());
    QCOMPARE(settings().mid(VLS_START_DATE), QStringList({ "22-11-2026", "1", "1" }));
}

void tst_SettingPageSave::oneRowIsSavedAlone_data()
{
    QTest::addColumn<QString>("off");
    QTest::addColumn<int>("switchIndex");
    QTest::addColumn<int>("sizeIndex");
    QTest::newRow("Data") << "TIMEVOLUMELIMIT" << int(VLS_CHK_VOLUME) << int(VLS_SIZE_VOLUME);
    QTest::newRow("Time") << "DATAVOLUMELIMIT" << int(VLS_CHK_TIME_VOLUME)
                          << int(VLS_SIZE_TIME_VOLUME);
}

void tst_SettingPageSave::oneRowIsSavedAlone()
{
    QFETCH(QString, off);
    QFETCH(int, switchIndex);
    QFETCH(int, sizeIndex);
    const char *const name = QTest::currentDataTag();
    open({ off });
    listen();
    QVERIFY(!ok()); // it shows no stored size
    QCOMPARE(int(fakeHost().messages.size()), 1);
    QStringList expected = settings();
    press((QByteArray("checkBox") + name + "Volume").constData());
    type(name, QStringLiteral("12"));
    QVERIFY(ok());
    expected[switchIndex] = kOn;
    expected[sizeIndex] = QStringLiteral("12");
    QCOMPARE(settings(), expected);
    QCOMPARE(file(), fileOf(expected));
    const bool isData = sizeIndex == VLS_SIZE_VOLUME;
    QCOMPARE(m_heard.first().arguments,
             QVariantList({ isData ? 12 : 0, isData ? 0 : 12, true, true }));
}

void tst_SettingPageSave::noRowIsSavedToo()
{
    open({ QStringLiteral("DATAVOLUMELIMIT"), QStringLiteral("TIMEVOLUMELIMIT") });
    listen();
    press("radioDaily");
    QStringList expected = settings();
    expected[VLS_RADIO_DAILY] = kOn;
    expected[VLS_RADIO_MONTHLY] = kOff;
    QVERIFY(ok());
    QCOMPARE(file(), fileOf(expected));
    QCOMPARE(m_heard.first().arguments, QVariantList({ 0, 0, true, true }));
}

void tst_SettingPageSave::theSignalCarriesTheFiguresAsTyped_data()
{
    QTest::addColumn<QString>("data");
    QTest::addColumn<QString>("time");
    QTest::addColumn<bool>("before");
    QTest::addColumn<bool>("exceeds");
    QTest::addColumn<QVariantList>("arguments");
    QTest::newRow("both") << "999999"
                          << "99999" << true << true << QVariantList({ 999999, 99999, true, true });
    QTest::newRow("before alone") << "5"
                                  << "6" << true << false << QVariantList({ 5, 6, true, false });
    QTest::newRow("exceeds alone") << "5"
                                   << "6" << false << true << QVariantList({ 5, 6, false, true });
    QTest::newRow("no numbers") << "odd"
                                << "1x" << false << false << QVariantList({ 0, 0, false, false });
}

void tst_SettingPageSave::theSignalCarriesTheFiguresAsTyped()
{
    QFETCH(QString, data);
    QFETCH(QString, time);
    QFETCH(bool, before);
    QFETCH(bool, exceeds);
    for (const QString &on : { kOff, kOn }) { // also of limits that are off
        set(VLS_CHK_VOLUME, { on, on, data, time, before ? kOn : kOff, exceeds ? kOn : kOff });
        m_heard.clear();
        open();
        listen();
        QVERIFY(ok());
        QCOMPARE(int(m_heard.size()), 1);
        QTEST(m_heard.first().arguments, "arguments");
        QCOMPARE(settings().mid(VLS_CHK_VOLUME, 4), QStringList({ on, on, data, time }));
        CNetInfoUIService::Destroy();
    }
}

void tst_SettingPageSave::theSignalComesBeforeTheFile()
{
    open();
    const QByteArray before = file();
    listen();
    press("radioDaily");
    QVERIFY(ok());
    QCOMPARE(int(m_heard.size()), 1);
    QCOMPARE(m_heard.first().file, before);
    QVERIFY(file() != before);
}

void tst_SettingPageSave::theMeterFollowsTheSavedLimit()
{
    set(VLS_CHK_VOLUME, { kOn });
    open();
    show();
    const auto *const meter = part<SkProgressBar>("NetInfoUIPlugin_ProgressDatavolume");
    QCOMPARE(meter->meterMaximum(), 1024.0L * (1 << 20));
    type("Data", QStringLiteral("250"));
    QCOMPARE(meter->meterMaximum(), 1024.0L * (1 << 20));
    QVERIFY(ok());
    QCOMPARE(meter->meterMaximum(), 250.0L * (1 << 20));
}

void tst_SettingPageSave::theStepsMayBeRunAlone()
{
    set(VLS_CHK_VOLUME, { kOn, kOn });
    open();
    NetInfoSettingUIPlugin *const settings = NetInfoSettingUIPlugin::GetInstance();
    const QByteArray fileBefore = file();
    type("Data", QStringLiteral("3"));
    press("checkBoxWarnBefore");
    bool stored = false;
    QVERIFY(QMetaObject::invokeMethod(settings, "saveLimit", Q_RETURN_ARG(bool, stored)));
    QVERIFY(stored);
    QCOMPARE(setting(VLS_SIZE_VOLUME), QStringLiteral("3"));
    QCOMPARE(setting(VLS_CHK_WARN_BEFORE), kOn);
    QVERIFY(QMetaObject::invokeMethod(settings, "saveWarning"));
    QCOMPARE(setting(VLS_CHK_WARN_BEFORE), kOff);
    QCOMPARE(setting(VLS_CHK_WARN_AFTER), kOn);
    delete check("WarnExceed");
    settings->saveWarning();
    QCOMPARE(setting(VLS_CHK_WARN_AFTER), kOff);
    type("Data", QString());
    QVERIFY(!settings->saveLimit());
    QCOMPARE(file(), fileBefore);
    QCOMPARE(settings->getVolumeLimitSettings(VLS_SIZE_VOLUME), QStringLiteral("3"));
}

QTEST_MAIN(tst_SettingPageSave)
#include "tst_settingpagesave.moc"
