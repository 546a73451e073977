// The operator page: its controls, their texts, and what is typed and clicked.

#include "NetInfoUIService.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QStyle>
#include <QtTest>

#include <host/ExtendLineEdit.h>

#include "NetInfoSettingUILogic.h"
#include "OperatorPageTest.h"
#include "SkProgressBar.h"

class tst_OperatorPage : public OperatorPageTest
{
    Q_OBJECT
private slots:
    void thePageHasThreeRows();
    void theRecurrenceGroupIsAGrid();
    void theCombosListDaysInOrder();
    void theDataGroupIsARow();
    void theButtonsHaveTheirLooks();
    void aRadioEnablesItsCombo_data();
    void aRadioEnablesItsCombo();
    void theSlotsChooseOnlyWhenTrue();
    void theSwitchEnablesTheSize();
    void onlyALimitCanBeTyped_data();
    void onlyALimitCanBeTyped();
    void missingControlsAreLogged();
    void screenReadersKnowEveryControl();
    void translatingIsNoChoice();
    void initTwiceConnectsOnce();
    void thePageComesBackAfterItsWindow();
    void thePageSurvivesTheNormalPage();
};

void tst_OperatorPage::thePageHasThreeRows()
{
    start();
    show();
    auto *const rows = qobject_cast<QVBoxLayout *>(content()->layout());
    QVERIFY(rows);
    QCOMPARE(rows->contentsMargins(), QMargins(0, 0, 0, 0));
    QLayout *const captionRow = rows->itemAt(0)->layout();
    QVERIFY(qobject_cast<QHBoxLayout *>(captionRow));
    auto *const caption = qobject_cast<QLabel *>(captionRow->itemAt(0)->widget());
    QVERIFY(caption);
    QVERIFY(caption->isVisible());
    QCOMPARE(caption->text(), QStringLiteral("IDS_STA_TOTALVOLUME"));
    QLayout *const meterRow = rows->itemAt(1)->layout();
    QVERIFY(qobject_cast<QHBoxLayout *>(meterRow));
    QWidget *const meter = widget("NetInfoUIPlugin_ProgressDatavolume");
    QCOMPARE(meterRow->itemAt(0)->widget(), meter);
    QVERIFY(meter->isVisible());
    QCOMPARE(meter->size(), QSize(228, 20));
    QCOMPARE(int(m_window->findChildren<SkProgressBar *>(meter->objectName()).size()), 1);
    auto *const columns = qobject_cast<QHBoxLayout *>(rows->itemAt(2)->widget()->layout());
    QVERIFY(columns);
    QCOMPARE(columns->contentsMargins(), QMargins(0, 0, 0, 0));
    QCOMPARE(columns->count(), 3);
    QLayout *const left = columns->itemAt(0)->layout();
    QCOMPARE(left->itemAt(0)->widget(), widget("NetInfoSettingDlg_GroupBoxRecurrence"));
    QLayout *const right = columns->itemAt(1)->layout();
    QCOMPARE(right->itemAt(0)->widget(), widget("NetInfoSettingDlg_groupBoxSetLimit"));
    QLayout *const buttons = right->itemAt(1)->layout();
    QCOMPARE(buttons->itemAt(0)->widget(), widget("NetInfoSettingDlg_savesettingbutton"));
    QCOMPARE(buttons->itemAt(1)->widget(), widget("NetInfoSettingDlg_clearhistorybutton"));
    QVERIFY(columns->itemAt(2)->spacerItem());
}

void tst_OperatorPage::theRecurrenceGroupIsAGrid()
{
    start();
    auto *const group = part<QGroupBox>("NetInfoSettingDlg_GroupBoxRecurrence");
    QVERIFY(group);
    QCOMPARE(group->title(), QStringLiteral("IDS_GRP_RECURRENCE"));
    QCOMPARE(group->minimumSize(), QSize(200, 115));
    QCOMPARE(group->maximumSize(), QSize(200, 115));
    auto *const grid = qobject_cast<QGridLayout *>(group->layout());
    QVERIFY(grid);
    QCOMPARE(grid->contentsMargins(), QMargins(0, 0, 0, 0));
    const struct
    {
        const char *name;
        const char *text;
        QComboBox *combo;
    } radios[] = {
        { "NetInfoSettingDlg_radioDaily", "IDS_RADIO_DAILY", nullptr },
        { "NetInfoSettingDlg_radioWeekly", "IDC_RADIO_WEEKLY", weekday() },
        { "NetInfoSettingDlg_radioMonthly", "IDS_RADIO_MONTHLY", day() },
    };
    for (int i = 0; i < 3; ++i) {
        auto *const radio = part<QRadioButton>(radios[i].name);
        QVERIFY2(radio, radios[i].name);
        QCOMPARE(radio->text(), QLatin1String(radios[i].text));
        QCOMPARE(grid->itemAtPosition(2 + i, 0)->widget(), static_cast<QWidget *>(radio));
        if (radios[i].combo)
            QCOMPARE(grid->itemAtPosition(2 + i, 1)->widget(),
                     static_cast<QWidget *>(radios[i].combo));
        else
            QVERIFY(!grid->itemAtPosition(2 + i, 1));
    }
}

void tst_OperatorPage::theCombosListDaysInOrder()
{
    start();
    const auto entries = [](const QComboBox *combo) {
        QStringList texts;
        for (int i = 0; i < combo->count(); ++i)
            texts << combo->itemText(i);
        return texts;
    };
    QCOMPARE(entries(weekday()),
             QStringList({ "IDS_MONDAY", "IDS_TUESDAY", "IDS_WEDNESAY", "IDS_THURSDAY",
                           "IDS_FRIDAY", "IDS_SATURDAY", "IDS_SUNDAY" }));
    QStringList days;
    for (int number = 1; number <= 31; ++number)
        days << QString::number(number);
    QCOMPARE(entries(day()), days);
    for (const QComboBox *combo : { weekday(), day() }) {
        QCOMPARE(combo->minimumWidth(), 65);
        QCOMPARE(combo->maximumWidth(), 65);
        QVERIFY(!combo->isEditable());
    }
}

void tst_OperatorPage::theDataGroupIsARow()
{
    start();
    auto *const group = part<QGroupBox>("NetInfoSettingDlg_groupBoxSetLimit");
    QVERIFY(group);
    QCOMPARE(group->title(), QStringLiteral("IDS_GRP_SETLIMIT"));
    QCOMPARE(group->minimumSize(), QSize(135, 60));
    QCOMPARE(group->maximumSize(), QSize(135, 60));
    QCOMPARE(group->layout()->contentsMargins(), QMargins(0, 0, 0, 0));
    QCOMPARE(group->layout()->spacing(), 35);
    auto *const row = qobject_cast<QHBoxLayout *>(group->layout()->itemAt(0)->layout());
    QVERIFY(row);
    QCOMPARE(row->objectName(), QStringLiteral("NetInfoSettingDlg_hlayoutDataVolume"));
    QCOMPARE(row->spacing(), 0);
    QCOMPARE(row->count(), 3);
    QCOMPARE(row->itemAt(0)->widget(), static_cast<QWidget *>(dataSwitch()));
    QCOMPARE(row->itemAt(1)->widget(), static_cast<QWidget *>(dataSize()));
    auto *const unit = qobject_cast<QLabel *>(row->itemAt(2)->widget());
    QVERIFY(unit);
    QCOMPARE(unit->text(), QStringLiteral("IDS_UNIT_DATA_VOLUME_MB"));
    QVERIFY(qobject_cast<ExtendLineEdit *>(dataSize()));
    QCOMPARE(dataSize()->maxLength(), 6);
}

void tst_OperatorPage::theButtonsHaveTheirLooks()
{
    start();
    const struct
    {
        const char *name;
        const char *text;
    } buttons[] = { { "NetInfoSettingDlg_savesettingbutton", "IDS_SAVESETTING" },
                    { "NetInfoSettingDlg_clearhistorybutton", "IDS_CLEAR_BUTTON" } };
    for (const auto &one : buttons) {
        auto *const button = part<QPushButton>(one.name);
        QVERIFY2(button, one.name);
        QCOMPARE(button->text(), QLatin1String(one.text));
        QCOMPARE(button->focusPolicy(), Qt::NoFocus);
        QCOMPARE(button->cursor().shape(), Qt::PointingHandCursor);
    }
}

void tst_OperatorPage::aRadioEnablesItsCombo_data()
{
    QTest::addColumn<QString>("radio");
    QTest::addColumn<bool>("weekdayEnabled");
    QTest::addColumn<bool>("dayEnabled");
    QTest::newRow("daily") << "Daily" << false << false;
    QTest::newRow("weekly") << "Weekly" << true << false;
    QTest::newRow("monthly") << "Monthly" << false << true;
}

void tst_OperatorPage::aRadioEnablesItsCombo()
{
    QFETCH(QString, radio);
    const QByteArray name = "NetInfoSettingDlg_radio" + radio.toLatin1();
    for (const char *first : { "Daily", "Weekly", "Monthly" }) {
        start();
        show();
        press((QByteArray("NetInfoSettingDlg_radio") + first).constData());
        press(name.constData());
        QCOMPARE(checkedRadios(), QStringList(radio.toLower()));
        QTEST(weekday()->isEnabled(), "weekdayEnabled");
        QTEST(day()->isEnabled(), "dayEnabled");
        for (const char *all : { "NetInfoSettingDlg_radioDaily", "NetInfoSettingDlg_radioWeekly",
                                 "NetInfoSettingDlg_radioMonthly" })
            QVERIFY(widget(all)->isEnabled());
    }
}

void tst_OperatorPage::theSlotsChooseOnlyWhenTrue()
{
    CNetInfoUIService *const service = start();
    show();
    service->onWeeklyRadioBtnSelect(true);
    service->onDailyRadioBtnSelect(false);
    service->onMonthlyRadioBtnSelect(false);
    QCOMPARE(checkedRadios(), QStringList("weekly"));
    QVERIFY(weekday()->isEnabled());
    QVERIFY(!day()->isEnabled());
    service->onMonthlyRadioBtnSelect(true);
    QCOMPARE(checkedRadios(), QStringList("monthly"));
    service->onDailyRadioBtnSelect(true);
    service->onWeeklyRadioBtnSelect(false);
    QCOMPARE(checkedRadios(), QStringList("daily"));
    QVERIFY(!weekday()->isEnabled());
    QVERIFY(!day()->isEnabled());
}

void tst_OperatorPage::theSwitchEnablesTheSize()
{
    CNetInfoUIService *const service = start();
    show();
    QVERIFY(!dataSize()->isEnabled());
    press("NetInfoSettingDlg_checkBoxDataVolume");
    QVERIFY(dataSwitch()->isChecked());
    QVERIFY(dataSize()->isEnabled());
    press("NetInfoSettingDlg_checkBoxDataVolume");
    QVERIFY(!dataSwitch()->isChecked());
    QVERIFY(!dataSize()->isEnabled());
    service->onDataVolumeSelect(true);
    QVERIFY(dataSize()->isEnabled());
    service->onDataVolumeSelect(false);
    QVERIFY(!dataSize()->isEnabled());
}

void tst_OperatorPage::onlyALimitCanBeTyped_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("text");
    QTest::newRow("250") << "250"
                         << "250";
    QTest::newRow("1") << "1"
                       << "1";
    QTest::newRow("six digits") << "999999"
                                << "999999";
    QTest::newRow("seven digits") << "1234567"
                                  << "123456";
    QTest::newRow("0") << "0" << QString();
    QTest::newRow("007") << "007"
                         << "7";
    QTest::newRow("zeros after the first digit") << "100"
                                                 << "100";
    QTest::newRow("letters") << "abc" << QString();
    QTest::newRow("digits among letters") << "a1b2c"
                                          << "12";
    QTest::newRow("a sign") << "-5"
                            << "5";
    QTest::newRow("a fraction") << "1.5"
                                << "15";
    QTest::newRow("a blank") << " 7 "
                             << "7";
}

void tst_OperatorPage::onlyALimitCanBeTyped()
{
    QFETCH(QString, typed);
    set(VLS_CHK_VOLUME, { QStringLiteral("true"), QStringLiteral("false"), QString() });
    start();
    show();
    QVERIFY(dataSize()->isEnabled());
    QTest::keyClicks(dataSize(), typed);
    QTEST(dataSize()->text(), "text");
    QCOMPARE(dataSize()->hasAcceptableInput(), !dataSize()->text().isEmpty());
}

void tst_OperatorPage::missingControlsAreLogged()
{
    CNetInfoUIService *const service = start();
    show();
    m_window.reset(new QWidget);
    m_log->takeLines();
    service->onDailyRadioBtnSelect(true);
    service->onWeeklyRadioBtnSelect(true);
    service->onMonthlyRadioBtnSelect(true);
    service->onDataVolumeSelect(true);
    service->initNRLNetInfoSettings();
    service->createNRLMainWidget();
    const QStringList lines = m_log->takeLines();
    const char *const names[]
        = { "onDailyRadioBtnSelect", "onWeeklyRadioBtnSelect", "onMonthlyRadioBtnSelect",
            "onDataVolumeSelect",    "initNRLNetInfoSettings", "createNRLMainWidget" };
    QCOMPARE(lines.size(), 6);
    for (int i = 0; i < 6; ++i) {
        const QRegularExpression line("^Arg is NULL: <time>: " + QRegularExpression::escape(kSource)
                                      + ": " + QLatin1String(names[i]) + " \\d+$");
        QVERIFY2(line.match(lines.at(i)).hasMatch(), qPrintable(lines.at(i)));
    }
    service->onWeeklyIndexChange(3); // touch no control
    service->onMonthlyIndexChange(3);
    service->setNorellLanguage();
}

void tst_OperatorPage::screenReadersKnowEveryControl()
{
    CNetInfoUIService *const service = start();
    show();
    for (const char *language : { "", ".de" }) {
        fakeHost().language = QLatin1String(language);
        service->Notify(320, 0, 0);
        const QString suffix = fakeHost().language;
        QCOMPARE(weekday()->accessibleName(), "IDC_RADIO_WEEKLY" + suffix);
        QCOMPARE(day()->accessibleName(), "IDS_RADIO_MONTHLY" + suffix);
        QCOMPARE(dataSwitch()->accessibleName(), "IDS_GRP_SETLIMIT" + suffix);
        QCOMPARE(dataSize()->accessibleName(),
                 "IDS_GRP_SETLIMIT" + suffix + " IDS_UNIT_DATA_VOLUME_MB" + suffix);
        QCOMPARE(widget("NetInfoUIPlugin_ProgressDatavolume")->accessibleName(),
                 "IDS_STA_TOTALVOLUME" + suffix);
        QCOMPARE(weekday()->toolTip(), "IDS_MONDAY" + suffix); // cut at 65 pixels
        weekday()->setCurrentIndex(2);
        QCOMPARE(weekday()->toolTip(), "IDS_WEDNESAY" + suffix);
        weekday()->setCurrentIndex(0);
        QVERIFY(weekday()->view()->minimumWidth() >= weekday()->view()->sizeHintForColumn(0));
        QVERIFY(weekday()->view()->minimumWidth() > 65);
    }
}

void tst_OperatorPage::translatingIsNoChoice()
{
    set(VLS_START_WEEK_DATE, { QStringLiteral("4"), QStringLiteral("29") });
    CNetInfoUIService *const service = start();
    show();
    const QSignalSpy weekdays(weekday(), SIGNAL(currentIndexChanged(int)));
    const QSignalSpy days(day(), SIGNAL(currentIndexChanged(int)));
    fakeHost().language = QStringLiteral(".de");
    service->Notify(320, 0, 0);
    QCOMPARE(int(weekdays.size() + days.size()), 0);
    QCOMPARE(weekday()->currentText(), QStringLiteral("IDS_FRIDAY.de"));
    QCOMPARE(day()->currentText(), QStringLiteral("30"));
    QCOMPARE(weekday()->count(), 7);
    QCOMPARE(day()->count(), 31);
    QStringList texts;
    const auto labels = content()->findChildren<QLabel *>();
    const auto buttons = content()->findChildren<QAbstractButton *>();
    const auto groups = content()->findChildren<QGroupBox *>();
    for (const QLabel *one : labels)
        texts << one->text();
    for (const QAbstractButton *one : buttons)
        texts << one->text();
    for (const QGroupBox *one : groups)
        texts << one->title();
    for (int i = 0; i < 7; ++i)
        texts << weekday()->itemText(i);
    texts.removeAll(QString()); // the check box has none
    QCOMPARE(int(texts.size()), 16); // 2 labels, 5 buttons, 2 titles, 7 days
    for (const QString &text : std::as_const(texts))
        QVERIFY2(text.endsWith(QLatin1String(".de")), qPrintable(text));
}

void tst_OperatorPage::initTwiceConnectsOnce()
{
    CNetInfoUIService *const service = start();
    QVERIFY(service->Init());
    show();
    QCOMPARE(int(content()->findChildren<QPushButton *>().size()), 2);
    QCOMPARE(int(content()->findChildren<QGroupBox *>().size()), 2);
    press("NetInfoSettingDlg_savesettingbutton");
    QCOMPARE(int(fakeHost().messages.size()), 1);
    press("NetInfoSettingDlg_clearhistorybutton");
    QCOMPARE(int(fakeHost().messages.size()), 2);
}

void tst_OperatorPage::thePageComesBackAfterItsWindow()
{
    CNetInfoUIService *const service = start();
    show();
    const QPointer<QStyle> style = page()->style();
    QVERIFY(style);
    m_window.reset(new QWidget);
    QVERIFY(!widget("NetInfoSettingDlg_MainWidget"));
    QVERIFY(!style); // the page's own
    QVERIFY(service->Init());
    show();
    QCOMPARE(checkedRadios(), QStringList("monthly"));
    press("NetInfoSettingDlg_radioWeekly");
    QVERIFY(weekday()->isEnabled());
    QCOMPARE(
        int(m_window->findChildren<SkProgressBar *>("NetInfoUIPlugin_ProgressDatavolume").size()),
        1);
    QVERIFY(widget("NetInfoUIPlugin_ProgressDatavolume")->isVisible());
    press("NetInfoSettingDlg_savesettingbutton");
    QCOMPARE(int(fakeHost().messages.size()), 1);
    QCOMPARE(setting(VLS_RADIO_WEEKLY), QStringLiteral("true"));
}

void tst_OperatorPage::thePageSurvivesTheNormalPage()
{
    CNetInfoUIService *const service = start();
    show();
    delete widget("NetInfoUIPlugin_WidgetParent");
    press("NetInfoSettingDlg_savesettingbutton");
    QCOMPARE(int(fakeHost().messages.size()), 1);
    QVERIFY(service->Init());
    show();
    service->Notify(320, 0, 0);
    QVERIFY(widget("NetInfoUIPlugin_WidgetVolumeLimit"));
    service->addDataVolumeWidget(); // is there
    for (const char *name : { "NetInfoUIPlugin_LabelDataVolume", "NetInfoUIPlugin_LabelTimeVolume",
                              "NetInfoUIPlugin_ProgressDatavolume" })
        QCOMPARE(int(m_window->findChildren<QWidget *>(QLatin1String(name)).size()), 1);
    QVERIFY(content()->isAncestorOf(widget("NetInfoUIPlugin_ProgressDatavolume")));
}

QTEST_MAIN(tst_OperatorPage)
#include "tst_operatorpage.moc"
