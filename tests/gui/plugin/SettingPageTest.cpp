#include "SettingPageTest.h"

#include <QCalendarWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QRadioButton>
#include <QTableView>
#include <QTest>

#include "DateEdit.h"

namespace {

constexpr const char *kRadios[] = { "radioDaily", "radioWeekly", "radioMonthly" };

void click(QWidget *control)
{
    QTest::mouseClick(control, Qt::LeftButton, Qt::NoModifier, QPoint(8, control->height() / 2));
}

} // namespace

const QString SettingPageTest::kOn = QStringLiteral("true");
const QString SettingPageTest::kOff = QStringLiteral("false");
const QString SettingPageTest::kPageSource
    = QStringLiteral("../../src/NetInfoUIExPlugin/NetInfoSettingUIPlugin.cpp");

void SettingPageTest::init()
{
    PluginTest::init();
    m_heard.clear();
    m_user.reset(new QTemporaryDir);
    fakeHost().userDataDirectory = m_user->path() + QLatin1Char('/');
    set(VLS_START_DATE, { QStringLiteral("21-11-2026") });
}

CNetInfoUIService *SettingPageTest::open(const QStringList &off)
{
    CNetInfoUIService *const service = start(off);
    m_window->show();
    openAgain();
    return service;
}

void SettingPageTest::openAgain(QWidget *parent)
{
    QRect rect(10, 20, 420, 360);
    CNetInfoUIService::instance()->ShowSettingDialog(parent ? parent : m_window.data(), rect);
    m_log->takeLines();
}

bool SettingPageTest::ok()
{
    return CNetInfoUIService::instance()->OnClickSettingOkButton();
}

void SettingPageTest::cancel()
{
    if (!CNetInfoUIService::instance()->OnClickSettingCancelButton())
        qFatal("Cancel failed");
}

void SettingPageTest::listen()
{
    connect(NetInfoSettingUIPlugin::GetInstance(), &NetInfoSettingUIPlugin::netInfoSettingsChanged,
            this, [this](int data, int time, bool before, bool exceeds) {
                m_heard << HeardSignal { { data, time, before, exceeds }, file() };
            });
}

QWidget *SettingPageTest::page()
{
    return NetInfoSettingUIPlugin::GetInstance()->pageWidget();
}

QCheckBox *SettingPageTest::recurrence()
{
    return at<QCheckBox>("dateeditSetDate");
}

DateEdit *SettingPageTest::date()
{
    return at<DateEdit>("dateedit");
}

QRadioButton *SettingPageTest::radio(const char *name)
{
    return at<QRadioButton>((QByteArray("radio") + name).constData());
}

QComboBox *SettingPageTest::weekday()
{
    return at<QComboBox>("comboBoxWeekly");
}

QComboBox *SettingPageTest::day()
{
    return at<QComboBox>("comboBoxMonthly");
}

QCheckBox *SettingPageTest::check(const char *name)
{
    return at<QCheckBox>((QByteArray("checkBox") + name).constData());
}

QLineEdit *SettingPageTest::size(const char *name)
{
    return at<QLineEdit>((QByteArray("lineEdit") + name + "Volume").constData());
}

void SettingPageTest::press(const char *name)
{
    QWidget *const control = at<QWidget>(name);
    QVERIFY2(control && control->isEnabled(), name);
    click(control);
}

void SettingPageTest::pressDisabled(const char *name)
{
    QWidget *const control = at<QWidget>(name);
    QVERIFY2(control && !control->isEnabled(), name);
    click(control);
}

void SettingPageTest::type(const char *name, const QString &text)
{
    QVERIFY2(size(name)->isEnabled(), name);
    size(name)->clear();
    QTest::keyClicks(size(name), text);
}

void SettingPageTest::chooseDate(int days)
{
    QVERIFY(date()->isEnabled());
    const QDate chosen = date()->date().addDays(days);
    QTest::mouseClick(date(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(date()->width() - 6, date()->height() / 2));
    auto *const view = date()->calendarWidget()->findChild<QTableView *>();
    QVERIFY(view->isVisible());
    for (int i = 0; i < days; ++i)
        QTest::keyClick(view, Qt::Key_Right);
    QTest::keyClick(view, Qt::Key_Return);
    QTRY_VERIFY(!view->isVisible());
    QCOMPARE(date()->date(), chosen);
}

QStringList SettingPageTest::checkedRadios()
{
    QStringList checked;
    for (const char *name : { "Daily", "Weekly", "Monthly" }) {
        if (radio(name)->isChecked())
            checked << QString::fromLatin1(name).toLower();
    }
    return checked;
}

QString SettingPageTest::enabledParts()
{
    QStringList parts;
    if (date()->isEnabled())
        parts << QStringLiteral("date");
    int radios = 0;
    for (const char *name : kRadios)
        radios += at<QWidget>(name)->isEnabled();
    if (radios > 0)
        parts << (radios == 3 ? QStringLiteral("radios") : QStringLiteral("some radios"));
    if (weekday()->isEnabled())
        parts << QStringLiteral("weekday");
    if (day()->isEnabled())
        parts << QStringLiteral("day");
    return parts.join(QLatin1String(", "));
}

QStringList SettingPageTest::settings()
{
    QStringList values;
    for (int index = VLS_CHK_RECURRENCE; index <= VLS_START_MONTH_DATE; ++index)
        values << setting(index);
    return values;
}

QByteArray SettingPageTest::fileOf(const QStringList &values)
{
    const char *const keys[]
        = { "chkRecurrence",     "radioDaily",        "radioWeekly",       "radioMonthly",
            "chkVolume",         "chkTimeVolume",     "SizeVolume",        "SizeTimeVolume",
            "chkWarnbefore",     "chkWarnAfter",      "ShowDataWarnAfter", "ShowDataWarnBefor",
            "ShowTimeWarnBefor", "ShowTimeWarnAfter", "startdate",         "startweekdate",
            "startmonthdate" };
    QByteArray text = "[uselimit]";
    for (int index = 0; index < 17; ++index)
        text += QByteArray("\n") + keys[index] + '=' + values.at(index).toLatin1();
    return text;
}

QByteArray SettingPageTest::file() const
{
    QFile file(userFile());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString SettingPageTest::userFile() const
{
    return m_user->filePath(QStringLiteral("DataUsageLimit.ini"));
}
