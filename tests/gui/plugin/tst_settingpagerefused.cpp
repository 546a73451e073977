// OK on a settings page that misses something: the message, and what is stored nevertheless.

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QtTest>

#include "DateEdit.h"
#include "SettingPageTest.h"

class tst_SettingPageRefused : public SettingPageTest
{
    Q_OBJECT
private slots:
    void anEmptySizeIsRefused_data();
    void anEmptySizeIsRefused();
    void aRefusedSaveKeepsWhatItStored();
    void theTimeIsRefusedAfterTheDataIsStored();
    void savingNeedsTheWarnings_data();
    void savingNeedsTheWarnings();
    void savingWithoutAPageFails();
    void aMissingRadioCountsAsOff();
    void aMissingSizeCountsAsEmpty();
    void aFolderThatIsMissingFailsTheSave();
};

void tst_SettingPageRefused::anEmptySizeIsRefused_data()
{
    QTest::addColumn<bool>("on");
    QTest::addColumn<QString>("key");
    QTest::newRow("Data") << true << "IDS_INPUT_DATA_VOLUME";
    QTest::newRow("Data, switched off") << false << "IDS_INPUT_DATA_VOLUME";
    QTest::newRow("Time") << true << "IDS_INPUT_TIME_VOLUME_LIMIT";
    QTest::newRow("Time, switched off") << false << "IDS_INPUT_TIME_VOLUME_LIMIT";
}

void tst_SettingPageRefused::anEmptySizeIsRefused()
{
    QFETCH(bool, on);
    QFETCH(QString, key);
    const QByteArray name = QByteArray(QTest::currentDataTag()).left(4);
    set(VLS_CHK_VOLUME, { kOn, kOn });
    CNetInfoUIService *const service = open();
    listen();
    const QStringList before = settings();
    const QByteArray fileBefore = file();
    type(name.constData(), QString());
    if (!on)
        press(("checkBox" + name + "Volume").constData());
    fakeHost().language = QStringLiteral(".de");
    QVERIFY(!ok());
    QVERIFY(service->IsActiveSetting());
    QCOMPARE(page()->parentWidget(), m_window.data());
    QVERIFY(page()->isVisible());
    QCOMPARE(int(fakeHost().messages.size()), 1);
    const FakeMessage &message = fakeHost().messages.first();
    QCOMPARE(message.icon, QMessageBox::Information);
    QVERIFY(!message.parent);
    QCOMPARE(message.title, QStringLiteral("IDS_PROPMT.de"));
    QCOMPARE(message.text, key + QStringLiteral(".de"));
    QCOMPARE(message.buttons, QStringList({ "IDS_OK", QString(), QString() }));
    QCOMPARE(message.flags, Qt::WindowFlags(Qt::WindowStaysOnTopHint));
    QVERIFY(!message.wantsDialog);
    QCOMPARE(file(), fileBefore);
    QVERIFY(m_heard.isEmpty());
    if (name == "Data")
        QCOMPARE(settings(), before);
    if (!on)
        press(("checkBox" + name + "Volume").constData());
    type(name.constData(), QStringLiteral("7"));
    QVERIFY(ok());
    QCOMPARE(setting(name == "Data" ? VLS_SIZE_VOLUME : VLS_SIZE_TIME_VOLUME), QStringLiteral("7"));
}

void tst_SettingPageRefused::aRefusedSaveKeepsWhatItStored()
{
    set(VLS_CHK_RECURRENCE, { kOff, kOff, kOff, kOn, kOn });
    open();
    const QByteArray fileBefore = file();
    chooseDate(1);
    press("dateeditSetDate");
    QTest::keyClick(day(), Qt::Key_Down);
    press("radioWeekly");
    QTest::keyClick(weekday(), Qt::Key_Down);
    press("checkBoxWarnBefore");
    type("Data", QString());
    const QStringList before = settings();
    QVERIFY(!ok());
    QStringList expected = before;
    expected[VLS_RADIO_WEEKLY] = kOn;
    expected[VLS_RADIO_MONTHLY] = kOff;
    expected[VLS_START_DATE] = QStringLiteral("22-11-2026");
    expected[VLS_START_WEEK_DATE] = expected[VLS_START_MONTH_DATE] = QStringLiteral("1");
    QCOMPARE(settings(), expected); // and no warning switch
    QCOMPARE(file(), fileBefore);
    cancel(); // shows these
    QCOMPARE(checkedRadios(), QStringList("weekly"));
    QCOMPARE(weekday()->currentIndex(), 1);
    QCOMPARE(day()->currentIndex(), 1);
    QCOMPARE(date()->date(), QDate(2026, 11, 22));
    QCOMPARE(size("Data")->text(), QStringLiteral("1024"));
    QVERIFY(check("WarnBefore")->isChecked());
    openAgain();
    QVERIFY(ok()); // and the next save writes them
    QCOMPARE(file(), fileOf(expected));
}

void tst_SettingPageRefused::theTimeIsRefusedAfterTheDataIsStored()
{
    set(VLS_CHK_VOLUME, { kOff, kOn });
    open();
    press("checkBoxDataVolume");
    type("Data", QStringLiteral("55"));
    type("Time", QString());
    press("checkBoxWarnBefore");
    QStringList expected = settings();
    expected[VLS_CHK_VOLUME] = kOn;
    expected[VLS_SIZE_VOLUME] = QStringLiteral("55");
    QVERIFY(!ok());
    QCOMPARE(settings(), expected);
    type("Data", QString()); // the first of two
    fakeHost().messages.clear();
    QVERIFY(!ok());
    QCOMPARE(int(fakeHost().messages.size()), 1);
    QCOMPARE(fakeHost().messages.first().text, QStringLiteral("IDS_INPUT_DATA_VOLUME"));
}

void tst_SettingPageRefused::savingNeedsTheWarnings_data()
{
    QTest::addColumn<bool>("unused");
    QTest::newRow("checkBoxWarnBefore") << true;
    QTest::newRow("checkBoxWarnExceed") << true;
}

void tst_SettingPageRefused::savingNeedsTheWarnings()
{
    open();
    listen();
    press("radioDaily");
    delete at<QWidget>(QTest::currentDataTag());
    const QStringList before = settings();
    const QByteArray fileBefore = file();
    m_log->takeLines();
    QVERIFY(!ok());
    const QString line = QStringLiteral("Arg is NULL: <time>: %1: SaveNetInfoSettings ");
    QCOMPARE(int(m_log->takeLines().filter(line.arg(kPageSource)).size()), 1);
    QCOMPARE(settings(), before);
    QCOMPARE(file(), fileBefore);
    QVERIFY(m_heard.isEmpty());
}

void tst_SettingPageRefused::savingWithoutAPageFails()
{
    start();
    const QStringList before = settings();
    QVERIFY(!ok());
    QCOMPARE(settings(), before);
    QVERIFY(fakeHost().messages.isEmpty());
}

void tst_SettingPageRefused::aMissingRadioCountsAsOff()
{
    open();
    delete at<QWidget>("radioMonthly");
    QVERIFY(ok());
    QCOMPARE(settings().mid(VLS_RADIO_DAILY, 3), QStringList({ kOff, kOff, kOff }));
}

void tst_SettingPageRefused::aMissingSizeCountsAsEmpty()
{
    open();
    delete size("Data");
    QVERIFY(!ok());
    QCOMPARE(fakeHost().messages.first().text, QStringLiteral("IDS_INPUT_DATA_VOLUME"));
    delete check("DataVolume"); // and without its check box the row is none
    QVERIFY(ok());
}

void tst_SettingPageRefused::aFolderThatIsMissingFailsTheSave()
{
    CNetInfoUIService *const service = open();
    listen();
    press("radioDaily");
    fakeHost().userDataDirectory.clear();
    QVERIFY(!ok());
    QVERIFY(service->IsActiveSetting());
    QCOMPARE(setting(VLS_RADIO_DAILY), kOn);
    QCOMPARE(int(m_heard.size()), 1);
}

QTEST_MAIN(tst_SettingPageRefused)
#include "tst_settingpagerefused.moc"
