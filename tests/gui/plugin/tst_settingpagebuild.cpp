// The settings page as it is built: names, layouts, sizes, validators, lists, slots.

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMetaMethod>
#include <QRadioButton>
#include <QtTest>
#include <QValidator>

#include "DateEdit.h"
#include "NetInfoUILogic.h"
#include "SettingPageTest.h"

namespace {

class BareDateEdit : public DateEdit
{
public:
    using DateEdit::keyPressEvent;
    using DateEdit::keyReleaseEvent;
};

//! Takes the keys that a child leaves.
class KeyTaker : public QWidget
{
public:
    QStringList keys;

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        keys << QStringLiteral("press %1").arg(event->key());
    }
    void keyReleaseEvent(QKeyEvent *event) override
    {
        keys << QStringLiteral("release %1").arg(event->key());
    }
};

//! What stands at \a row and \a column.
template <typename Grid>
QWidget *widgetAt(Grid *grid, int row, int column)
{
    QLayoutItem *const item = grid->itemAtPosition(row, column);
    return item ? item->widget() : nullptr;
}

} // namespace

class tst_SettingPageBuild : public SettingPageTest
{
    Q_OBJECT
private slots:
    void thePageIsBuiltWhenItIsShown();
    void everyPartHasItsName_data();
    void everyPartHasItsName();
    void theGroupsHaveTheirSizes();
    void theGroupsFollowOneAnother();
    void theStartDateHasItsPlace();
    void theRecurrenceHasItsGrid();
    void theListsHaveTheirEntries();
    void aLimitHasItsRow_data();
    void aLimitHasItsRow();
    void aSizeTakesDigitsAlone_data();
    void aSizeTakesDigitsAlone();
    void aSwitchedOffRowIsNotThere_data();
    void aSwitchedOffRowIsNotThere();
    void theWarningsHaveTheirGrid();
    void theMetaObjectHasTheSlotsInOrder();
    void theDateTakesNoKeys_data();
    void theDateTakesNoKeys();
    void aDateWithoutAKeyIsHarmless();
    void theDateIsChosenInTheCalendar();
    void buildingTwiceChangesNothing();
    void buildersWithoutAPageAreLogged();
};

void tst_SettingPageBuild::thePageIsBuiltWhenItIsShown()
{
    CNetInfoUIService *const service = start();
    QVERIFY(!page());
    NetInfoSettingUIPlugin *const settings = NetInfoSettingUIPlugin::GetInstance();
    QCOMPARE(NetInfoSettingUIPlugin::GetInstance(), settings);
    m_window->show();
    QRect rect(3, 4, 420, 360);
    QVERIFY(service->ShowSettingDialog(m_window.data(), rect));
    QVERIFY(service->IsActiveSetting());
    QWidget *const first = page();
    QVERIFY(first->isVisible());
    QCOMPARE(first->parentWidget(), m_window.data());
    QCOMPARE(first->geometry(), rect);
    QVERIFY(service->HideSetting());
    QVERIFY(first->isHidden());
    QRect other(0, 0, 430, 370);
    QVERIFY(service->ShowSettingDialog(m_window.data(), other));
    QCOMPARE(page(), first);
    QVERIFY(first->isVisible());
    QCOMPARE(first->geometry(), other);
}

void tst_SettingPageBuild::everyPartHasItsName_data()
{
    QTest::addColumn<QString>("kind");
    const auto add = [](const char *kind, const QStringList &names) {
        for (const QString &name : names)
            QTest::newRow(qPrintable(name)) << QString::fromLatin1(kind);
    };
    add("QGroupBox",
        { "GroupBoxSetPeriod", "GroupBoxRecurrence", "GroupBoxSetWarn", "groupBoxSetLimit" });
    add("QWidget", { "WidgetNetInfoSetting", "WidgetSetDate" });
    add("DateEdit", { "dateedit" });
    add("QCheckBox",
        { "dateeditSetDate", "checkBoxDataVolume", "checkBoxTimeVolume", "checkBoxWarnBefore",
          "checkBoxWarnExceed" });
    add("QRadioButton", { "radioDaily", "radioWeekly", "radioMonthly" });
    add("QComboBox", { "comboBoxWeekly", "comboBoxMonthly" });
    add("QLabel", { "labelMonthly" });
    add("ExtendLineEdit", { "lineEditDataVolume", "lineEditTimeVolume" });
    add("QVBoxLayout", { "layoutNetInfoMain", "vlayoutSetDate" });
    add("QGridLayout",
        { "gridlayoutSetPeriod", "gridlayoutSetDate", "gridlayoutRecurence", "gridlayoutWarn" });
    add("QFormLayout", { "FormLayoutSetLimit" });
    add("QHBoxLayout", { "hlayoutDataVolume", "layoutTimeVolume" });
}

void tst_SettingPageBuild::everyPartHasItsName()
{
    QFETCH(QString, kind);
    open();
    const QString name
        = QLatin1String("NetInfoSettingDlg_") + QLatin1String(QTest::currentDataTag());
    QObjectList found = page()->findChildren<QObject *>(name);
    if (page()->objectName() == name)
        found << page();
    QCOMPARE(int(found.size()), 1);
    QCOMPARE(QString::fromLatin1(found.first()->metaObject()->className()), kind);
    const QList<QObject *> all = page()->findChildren<QObject *>();
    int named = 1; // the page
    for (const QObject *one : all)
        named += one->objectName().startsWith(QLatin1String("NetInfoSettingDlg_"));
    QCOMPARE(named, 29);
}

void tst_SettingPageBuild::theGroupsHaveTheirSizes()
{
    open();
    const auto fixed = [](const char *name, int width, int height) {
        const QWidget *const group = at<QWidget>(name);
        QVERIFY2(group->minimumHeight() == height && group->maximumHeight() == height, name);
        if (width > 0)
            QVERIFY2(group->minimumWidth() == width && group->maximumWidth() == width, name);
        else
            QVERIFY2(group->maximumWidth() == QWIDGETSIZE_MAX, name);
    };
    fixed("GroupBoxSetPeriod", 0, 135);
    fixed("GroupBoxRecurrence", 170, 115);
    fixed("groupBoxSetLimit", 0, 65);
    fixed("GroupBoxSetWarn", 0, 80);
}

void tst_SettingPageBuild::theGroupsFollowOneAnother()
{
    open();
    const auto *const layout = qobject_cast<QVBoxLayout *>(page()->layout());
    QCOMPARE(layout, at<QVBoxLayout>("layoutNetInfoMain"));
    QCOMPARE(layout->count(), 4);
    QCOMPARE(layout->itemAt(0)->widget(), at<QWidget>("GroupBoxSetPeriod"));
    QCOMPARE(layout->itemAt(1)->widget(), at<QWidget>("groupBoxSetLimit"));
    QCOMPARE(layout->itemAt(2)->widget(), at<QWidget>("GroupBoxSetWarn"));
    const auto *const hint = qobject_cast<QLabel *>(layout->itemAt(3)->widget());
    QVERIFY(hint->wordWrap());
    QCOMPARE(hint->minimumHeight(), 50);
}

void tst_SettingPageBuild::theStartDateHasItsPlace()
{
    open();
    auto *const grid = at<QGridLayout>("gridlayoutSetDate");
    QCOMPARE(at<QWidget>("WidgetSetDate")->layout(), grid);
    QCOMPARE(grid->count(), 2);
    QCOMPARE(grid->horizontalSpacing(), 10);
    auto *const label = qobject_cast<QLabel *>(widgetAt(grid, 1, 1));
    QCOMPARE(label->text(), QStringLiteral("IDS_STA_STARTDATE"));
    QCOMPARE(label->buddy(), date());
    QCOMPARE(widgetAt(grid, 1, 2), date());
    QCOMPARE(date()->displayFormat(), QStringLiteral("dd-MM-yyyy"));
    QVERIFY(date()->calendarPopup());

    auto *const column = at<QVBoxLayout>("vlayoutSetDate");
    QCOMPARE(column->count(), 2);
    QCOMPARE(column->itemAt(0)->widget(), at<QWidget>("WidgetSetDate"));
    QVERIFY(column->itemAt(1)->spacerItem());
    QVERIFY(column->itemAt(1)->expandingDirections() & Qt::Vertical);

    auto *const period = at<QGridLayout>("gridlayoutSetPeriod");
    QCOMPARE(at<QWidget>("GroupBoxSetPeriod")->layout(), period);
    QCOMPARE(period->count(), 2);
    QCOMPARE(period->itemAtPosition(1, 1)->layout(), column);
    QCOMPARE(widgetAt(period, 1, 2), at<QWidget>("GroupBoxRecurrence"));
}

void tst_SettingPageBuild::theRecurrenceHasItsGrid()
{
    open();
    auto *const grid = at<QGridLayout>("gridlayoutRecurence");
    QCOMPARE(at<QWidget>("GroupBoxRecurrence")->layout(), grid);
    QCOMPARE(grid->horizontalSpacing(), 0);
    QCOMPARE(grid->count(), 10);
    QCOMPARE(widgetAt(grid, 1, 1), recurrence());
    const char *const radios[] = { "Daily", "Weekly", "Monthly" };
    const char *const keys[]
        = { "IDS_CHK_SET", "IDS_RADIO_DAILY", "IDC_RADIO_WEEKLY", "IDS_RADIO_MONTHLY" };
    for (int i = 0; i < 4; ++i) {
        const auto *const label = qobject_cast<QLabel *>(widgetAt(grid, i + 1, i == 0 ? 2 : 3));
        QVERIFY2(label, keys[i]);
        QCOMPARE(label->text(), QLatin1String(keys[i]));
        if (i > 0)
            QCOMPARE(widgetAt(grid, i + 1, 2), radio(radios[i - 1]));
    }
    QCOMPARE(widgetAt(grid, 4, 3), at<QLabel>("labelMonthly"));
    QCOMPARE(widgetAt(grid, 3, 5), weekday());
    QCOMPARE(widgetAt(grid, 4, 5), day());
    for (int row = 0; row < grid->rowCount(); ++row)
        QVERIFY(!widgetAt(grid, row, 0) && (row < 3 || !widgetAt(grid, row, 4)));
    QVERIFY(recurrence()->text().isEmpty()); // a label beside each has its text
    for (const char *name : radios)
        QVERIFY2(radio(name)->text().isEmpty(), name);
}

void tst_SettingPageBuild::theListsHaveTheirEntries()
{
    open();
    QStringList days;
    for (int i = 0; i < weekday()->count(); ++i)
        days << weekday()->itemText(i);
    QCOMPARE(days,
             QStringList({ "IDS_SUNDAY", "IDS_MONDAY", "IDS_TUESDAY", "IDS_WEDNESAY",
                           "IDS_THURSDAY", "IDS_FRIDAY", "IDS_SATURDAY" }));
    QCOMPARE(day()->count(), 28);
    for (int i = 0; i < 28; ++i)
        QCOMPARE(day()->itemText(i), QString::number(i + 1));
}

void tst_SettingPageBuild::aLimitHasItsRow_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("layoutName");
    QTest::addColumn<QString>("checkKey");
    QTest::addColumn<QString>("unitKey");
    QTest::addColumn<int>("digits");
    QTest::newRow("Data") << 0 << "hlayoutDataVolume"
                          << "IDS_CHK_VOLUME"
                          << "IDS_UNIT_DATA_VOLUME_MB" << 6;
    QTest::newRow("Time") << 1 << "layoutTimeVolume"
                          << "IDS_VOLUME_LIMIT"
                          << "IDS_UNIT_HOURS" << 5;
}

void tst_SettingPageBuild::aLimitHasItsRow()
{
    QFETCH(int, row);
    QFETCH(QString, layoutName);
    open();
    const char *const name = QTest::currentDataTag();
    QCheckBox *const box = check((QByteArray(name) + "Volume").constData());
    auto *const form = at<QFormLayout>("FormLayoutSetLimit");
    QCOMPARE(at<QWidget>("groupBoxSetLimit")->layout(), form);
    QCOMPARE(form->rowCount(), 2);
    QCOMPARE(form->horizontalSpacing(), 100);
    QCOMPARE(int(form->formAlignment()), int(Qt::AlignVCenter));
    QCOMPARE(form->itemAt(row, QFormLayout::LabelRole)->widget(), box);
    QTEST(box->text(), "checkKey");
    QVERIFY(!box->isTristate());
    const QLayout *const pair = form->itemAt(row, QFormLayout::FieldRole)->layout();
    QCOMPARE(pair, at<QHBoxLayout>(layoutName.toLatin1().constData()));
    QCOMPARE(pair->spacing(), 0);
    QCOMPARE(pair->count(), 2);
    QCOMPARE(pair->itemAt(0)->widget(), size(name));
    QTEST(size(name)->maxLength(), "digits");
    QCOMPARE(size(name)->maximumWidth(), 110);
    const auto *const unit = qobject_cast<QLabel *>(pair->itemAt(1)->widget());
    QTEST(unit->text(), "unitKey");
    QCOMPARE(unit->minimumWidth(), 60);
}

void tst_SettingPageBuild::aSizeTakesDigitsAlone_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("data");
    QTest::addColumn<QString>("time");
    QTest::newRow("digits") << "1050"
                            << "1050"
                            << "1050";
    QTest::newRow("more than fit") << "123456789"
                                   << "123456"
                                   << "12345";
    QTest::newRow("a zero first") << "0012"
                                  << "12"
                                  << "12";
    QTest::newRow("zero alone") << "0" << QString() << QString();
    QTest::newRow("signs, letters, blanks") << "-1+a2 3.,$"
                                            << "123"
                                            << "123";
}

void tst_SettingPageBuild::aSizeTakesDigitsAlone()
{
    QFETCH(QString, typed);
    set(VLS_CHK_VOLUME, { kOn, kOn });
    open();
    type("Data", typed);
    type("Time", typed);
    QTEST(size("Data")->text(), "data");
    QTEST(size("Time")->text(), "time");
    int position = 0;
    QString whole = QStringLiteral("1x");
    QCOMPARE(size("Data")->validator()->validate(whole, position), QValidator::Invalid);
    whole = QString(1, QChar(0x0661)); // an Arabic digit
    QCOMPARE(size("Data")->validator()->validate(whole, position), QValidator::Invalid);
    whole = QStringLiteral("90");
    QCOMPARE(size("Time")->validator()->validate(whole, position), QValidator::Acceptable);
}

void tst_SettingPageBuild::aSwitchedOffRowIsNotThere_data()
{
    QTest::addColumn<QStringList>("off");
    QTest::addColumn<bool>("data");
    QTest::addColumn<bool>("time");
    const QString data = QStringLiteral("DATAVOLUMELIMIT");
    const QString time = QStringLiteral("TIMEVOLUMELIMIT");
    QTest::newRow("both on") << QStringList() << true << true;
    QTest::newRow("no data") << QStringList(data) << false << true;
    QTest::newRow("no time") << QStringList(time) << true << false;
    QTest::newRow("both off") << QStringList({ data, time }) << false << false;
}

void tst_SettingPageBuild::aSwitchedOffRowIsNotThere()
{
    QFETCH(QStringList, off);
    QFETCH(bool, data);
    QFETCH(bool, time);
    open(off);
    QCOMPARE(check("DataVolume") != nullptr, data);
    QCOMPARE(size("Data") != nullptr, data);
    QCOMPARE(at<QLayout>("hlayoutDataVolume") != nullptr, data);
    QCOMPARE(check("TimeVolume") != nullptr, time);
    QCOMPARE(size("Time") != nullptr, time);
    QCOMPARE(at<QLayout>("layoutTimeVolume") != nullptr, time);
    QCOMPARE(at<QFormLayout>("FormLayoutSetLimit")->rowCount(), int(data) + int(time));
    QCOMPARE(int(at<QWidget>("groupBoxSetLimit")->findChildren<QLabel *>().size()),
             int(data) + int(time));
    QVERIFY(check("WarnBefore") && check("WarnExceed"));
}

void tst_SettingPageBuild::theWarningsHaveTheirGrid()
{
    open();
    auto *const grid = at<QGridLayout>("gridlayoutWarn");
    QCOMPARE(at<QWidget>("GroupBoxSetWarn")->layout(), grid);
    QCOMPARE(grid->count(), 2);
    QCOMPARE(widgetAt(grid, 1, 1), check("WarnBefore"));
    QCOMPARE(widgetAt(grid, 2, 1), check("WarnExceed"));
    QCOMPARE(check("WarnBefore")->text(), QStringLiteral("IDS_CHK_BEFORE"));
    QCOMPARE(check("WarnExceed")->text(), QStringLiteral("IDS_CHK_AFTER"));
}

void tst_SettingPageBuild::theMetaObjectHasTheSlotsInOrder()
{
    const QMetaObject &meta = NetInfoSettingUIPlugin::staticMetaObject;
    QCOMPARE(meta.superClass(), &QObject::staticMetaObject);
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        QCOMPARE(method.methodType(),
                 i == meta.methodOffset() ? QMetaMethod::Signal : QMetaMethod::Slot);
        methods << QLatin1String(method.typeName()) + QLatin1Char(' ')
                + QString::fromLatin1(method.methodSignature());
    }
    const QStringList expected = { "void netInfoSettingsChanged(int,int,bool,bool)",
                                   "void initRecurrence()",
                                   "void initSetLimit()",
                                   "void initDataVolume()",
                                   "void initTimeVolume()",
                                   "void initWarnings()",
                                   "void setLanguageSetPeriod()",
                                   "QDate DateFromString(QString&)",
                                   "void applySettings()",
                                   "void applyLimitSettings()",
                                   "void applyWarningSettings()",
                                   "bool saveLimit()",
                                   "void saveWarning()",
                                   "void onSetRecurrenceSelect(bool)",
                                   "void onDailyRadioBtnSelect(bool)",
                                   "void onWeeklyRadioBtnSelect(bool)",
                                   "void onMonthlyRadioBtnSelect(bool)",
                                   "void onWeeklyIndexChange(int)",
                                   "void onMonthlyIndexChange(int)",
                                   "void onDataVolumeSelect(bool)",
                                   "void onTimeVolumeSelect(bool)",
                                   "void onWarnBeforeSelect(bool)",
                                   "void onWarnExceedSelect(bool)",
                                   "void onDateChangeEvent(QDate)" };
    QCOMPARE(methods, expected);
    QCOMPARE(meta.method(meta.methodOffset()).parameterNames(),
             QList<QByteArray>({ "dataVolume", "timeVolume", "warnBefore", "warnExceeds" }));
}

void tst_SettingPageBuild::theDateTakesNoKeys_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("up") << int(Qt::Key_Up);
    QTest::newRow("down") << int(Qt::Key_Down);
    QTest::newRow("page up") << int(Qt::Key_PageUp);
    QTest::newRow("digit") << int(Qt::Key_3);
    QTest::newRow("delete") << int(Qt::Key_Delete);
    QTest::newRow("backspace") << int(Qt::Key_Backspace);
    QTest::newRow("return") << int(Qt::Key_Return);
    QTest::newRow("escape") << int(Qt::Key_Escape);
}

void tst_SettingPageBuild::theDateTakesNoKeys()
{
    QFETCH(int, key);
    KeyTaker parent;
    auto *const edit = new DateEdit(&parent);
    edit->setDate(QDate(2026, 11, 21));
    parent.show();
    QTest::keyClick(edit, Qt::Key(key));
    QCOMPARE(edit->date(), QDate(2026, 11, 21));
    QCOMPARE(parent.keys,
             QStringList({ QStringLiteral("press %1").arg(key),
                           QStringLiteral("release %1").arg(key) })); // the dialog's to use
}

void tst_SettingPageBuild::aDateWithoutAKeyIsHarmless()
{
    BareDateEdit edit;
    edit.keyPressEvent(nullptr);
    edit.keyReleaseEvent(nullptr);
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Up, Qt::NoModifier);
    QVERIFY(press.isAccepted());
    edit.keyPressEvent(&press);
    QVERIFY(!press.isAccepted());
}

void tst_SettingPageBuild::theDateIsChosenInTheCalendar()
{
    set(VLS_CHK_RECURRENCE, { kOff });
    open();
    chooseDate(3);
    QCOMPARE(date()->date(), QDate(2026, 11, 24));
}

void tst_SettingPageBuild::buildingTwiceChangesNothing()
{
    open();
    const QObjectList before = page()->findChildren<QObject *>();
    NetInfoSettingUIPlugin *const settings = NetInfoSettingUIPlugin::GetInstance();
    settings->InitNetInfoSetting();
    settings->initRecurrence();
    settings->initSetLimit();
    settings->initDataVolume();
    settings->initTimeVolume();
    settings->initWarnings();
    QCOMPARE(page()->findChildren<QObject *>(), before);
    QCOMPARE(weekday()->count(), 7);
    QCOMPARE(day()->count(), 28);
}

void tst_SettingPageBuild::buildersWithoutAPageAreLogged()
{
    start();
    NetInfoSettingUIPlugin *const settings = NetInfoSettingUIPlugin::GetInstance();
    for (const char *name : { "initRecurrence", "initSetLimit", "initDataVolume", "initTimeVolume",
                              "initWarnings", "setLanguageSetPeriod" }) {
        m_log->takeLines();
        QVERIFY(QMetaObject::invokeMethod(settings, name));
        const QStringList lines = m_log->takeLines();
        QCOMPARE(int(lines.size()), 1);
        const QString start = QStringLiteral("Arg is NULL: <time>: %1: %2 ").arg(kPageSource, name);
        QVERIFY2(lines.first().startsWith(start), qPrintable(lines.first()));
        QVERIFY2(lines.first().mid(start.size()).toInt() > 0, qPrintable(lines.first()));
    }
    settings->SetLanguage();
    settings->HideNetInfoSetting();
    QVERIFY(!page());
}

QTEST_MAIN(tst_SettingPageBuild)
#include "tst_settingpagebuild.moc"
