// Life cycle, texts and enabling rules of the settings page.
#include "NetInfoSettingUIPlugin_p.h"

#include <QAbstractItemView>

#include <host/Change.h>

#include <new>

#include "NetInfoLog.h"
#include "NetInfoSettingRules.h"

namespace {

constexpr char kSource[] = NETINFO_SETTING_PAGE_SOURCE;

constexpr const char *kWeekdayKeys[]
    = { "IDS_SUNDAY",   "IDS_MONDAY", "IDS_TUESDAY", "IDS_WEDNESAY",
        "IDS_THURSDAY", "IDS_FRIDAY", "IDS_SATURDAY" };
constexpr const char *kRadioKeys[] = { "IDS_RADIO_DAILY", "IDC_RADIO_WEEKLY", "IDS_RADIO_MONTHLY" };

enum Recurrence { Daily, Weekly, Monthly };

//! Sets the text of \a widget, which is null in a row that is switched off, and the tool tip, as
//! the fixed sizes cut long ones.
template <typename Widget>
void setTextAndTip(Widget *widget, const QString &text)
{
    if (!widget)
        return;
    widget->setText(text);
    widget->setToolTip(text);
}

void nameAs(QWidget *widget, const QString &name)
{
    if (widget)
        widget->setAccessibleName(name);
}

} // namespace

NetInfoSettingUIPlugin *NetInfoSettingUIPlugin::m_pInstance = nullptr;

NetInfoSettingUIPlugin *NetInfoSettingUIPlugin::GetInstance()
{
    if (!m_pInstance)
        m_pInstance = new (std::nothrow) NetInfoSettingUIPlugin;
    return m_pInstance;
}

void NetInfoSettingUIPlugin::ReleaseInstance()
{
    NetInfoSettingUIPlugin *const dying = m_pInstance;
    m_pInstance = nullptr; // first: what the host does as the page goes may lead here again
    delete dying;
}

NetInfoSettingUIPlugin::NetInfoSettingUIPlugin()
    : m_controls(new Controls)
{
}

NetInfoSettingUIPlugin::~NetInfoSettingUIPlugin()
{
    delete m_controls->page;
}

void NetInfoSettingUIPlugin::ShowNetInfoSettingDlg(QWidget *parent, QRect &rect)
{
    NETINFO_TRACE_LINE("Start: %s: %s: %s %d", kSource);
    if (!m_controls->page)
        InitNetInfoSetting();
    if (!m_controls->page)
        return;
    m_controls->page->setParent(parent);
    m_controls->page->setGeometry(rect);
    m_controls->page->show();
    NETINFO_TRACE_LINE("End  : %s: %s: %s %d", kSource);
}

bool NetInfoSettingUIPlugin::HideNetInfoSetting()
{
    if (m_controls->page)
        m_controls->page->hide();
    return true;
}

QWidget *NetInfoSettingUIPlugin::pageWidget() const
{
    return m_controls->page;
}

QString NetInfoSettingUIPlugin::tr(QString key)
{
    return Change::tr(QLatin1String("NetInfoUIExPlugin"), key);
}

QString NetInfoSettingUIPlugin::hintText()
{
    return QLatin1String("<font color='red'>") + tr(QLatin1String("IDS_STAT_MAX"))
        + QLatin1String("</font>");
}

void NetInfoSettingUIPlugin::SetLanguage()
{
    Controls &all = *m_controls;
    if (!all.page)
        return;
    for (LimitRow *row : { &all.data, &all.time }) {
        setTextAndTip(row->unit.data(), tr(QLatin1String(row->unitText)));
        setTextAndTip(row->checkBox.data(), tr(QLatin1String(row->checkBoxText)));
    }
    setTextAndTip(all.warnBefore.data(), tr(QLatin1String("IDS_CHK_BEFORE")));
    setTextAndTip(all.warnExceed.data(), tr(QLatin1String("IDS_CHK_AFTER")));
    setTextAndTip(all.hint.data(), hintText());
    setTextAndTip(all.dateLabel.data(), tr(QLatin1String("IDS_STA_STARTDATE")));
    setLanguageSetPeriod();
    nameControls();
}

void NetInfoSettingUIPlugin::setLanguageSetPeriod()
{
    Controls &all = *m_controls;
    NETINFO_REQUIRE_CONTROL(all.period && all.recurrence && all.limit && all.warnings, return );
    NETINFO_REQUIRE_CONTROL(all.isRecurringLabel && all.weekday, return );
    all.period->setTitle(tr(QLatin1String("IDS_GRP_SETPERIOD")));
    all.recurrence->setTitle(tr(QLatin1String("IDS_GRP_RECURRENCE")));
    all.limit->setTitle(tr(QLatin1String("IDS_GRP_SETLIMIT")));
    all.warnings->setTitle(tr(QLatin1String("IDS_GRP_SETWARNINGS")));
    setTextAndTip(all.isRecurringLabel.data(), tr(QLatin1String("IDS_CHK_SET")));
    for (int i = 0; i < 3; ++i)
        setTextAndTip(all.radioLabels[i].data(), tr(QLatin1String(kRadioKeys[i])));
    const int chosen = all.weekday->currentIndex();
    const bool blocked = all.weekday->blockSignals(true); // no choice by the user
    all.weekday->clear();
    for (const char *key : kWeekdayKeys)
        all.weekday->addItem(tr(QLatin1String(key)));
    all.weekday->setCurrentIndex(qMax(chosen, 0));
    all.weekday->setToolTip(all.weekday->currentText());
    QAbstractItemView *const list = all.weekday->view(); // wider than the box where a day needs it
    list->setMinimumWidth(list->sizeHintForColumn(0));
    all.weekday->blockSignals(blocked);
}

//! What a screen reader says of controls whose text is a label beside them.
void NetInfoSettingUIPlugin::nameControls()
{
    const Controls &all = *m_controls;
    nameAs(all.date.data(), tr(QLatin1String("IDS_STA_STARTDATE")));
    nameAs(all.isRecurring.data(), tr(QLatin1String("IDS_CHK_SET")));
    for (int i = 0; i < 3; ++i)
        nameAs(all.radios[i].data(), tr(QLatin1String(kRadioKeys[i])));
    nameAs(all.weekday.data(), tr(QLatin1String(kRadioKeys[Weekly])));
    nameAs(all.day.data(), tr(QLatin1String(kRadioKeys[Monthly])));
    for (const LimitRow *row : { &all.data, &all.time })
        nameAs(row->size.data(),
               tr(QLatin1String(row->checkBoxText)) + QLatin1Char(' ')
                   + tr(QLatin1String(row->unitText)));
}

bool NetInfoSettingUIPlugin::hasRecurrence() const
{
    const Controls &all = *m_controls;
    return all.radios[Daily] && all.radios[Weekly] && all.radios[Monthly] && all.weekday && all.day;
}

void NetInfoSettingUIPlugin::onSetRecurrenceSelect(bool isChecked)
{
    const Controls &all = *m_controls;
    NETINFO_REQUIRE_CONTROL(all.date && all.isRecurring && hasRecurrence(), return );
    all.date->setEnabled(!isChecked);
    for (const auto &radio : all.radios)
        radio->setEnabled(isChecked);
    if (!isChecked) {
        all.isRecurring->setChecked(false);
        all.weekday->setEnabled(false);
        all.day->setEnabled(false);
    } else if (all.radios[Daily]->isChecked()) {
        onDailyRadioBtnSelect(true);
    } else if (all.radios[Weekly]->isChecked()) {
        onWeeklyRadioBtnSelect(true);
    } else if (all.radios[Monthly]->isChecked()) {
        onMonthlyRadioBtnSelect(true);
    }
}

void NetInfoSettingUIPlugin::selectRecurrence(int recurrence)
{
    const Controls &all = *m_controls;
    all.radios[recurrence]->setChecked(true);
    for (const auto &radio : all.radios)
        radio->setEnabled(true);
    all.weekday->setEnabled(recurrence == Weekly);
    all.day->setEnabled(recurrence == Monthly);
}

void NetInfoSettingUIPlugin::onDailyRadioBtnSelect(bool isSelected)
{
    NETINFO_REQUIRE_CONTROL(hasRecurrence(), return );
    if (isSelected)
        selectRecurrence(Daily);
}

void NetInfoSettingUIPlugin::onWeeklyRadioBtnSelect(bool isSelected)
{
    NETINFO_REQUIRE_CONTROL(hasRecurrence(), return );
    if (isSelected)
        selectRecurrence(Weekly);
}

void NetInfoSettingUIPlugin::onMonthlyRadioBtnSelect(bool isSelected)
{
    NETINFO_REQUIRE_CONTROL(hasRecurrence(), return );
    if (isSelected)
        selectRecurrence(Monthly);
}

void NetInfoSettingUIPlugin::onWeeklyIndexChange(int index)
{
    m_controls->pendingWeekday = QString::number(index, 10);
    if (m_controls->weekday)
        m_controls->weekday->setToolTip(m_controls->weekday->currentText());
}

void NetInfoSettingUIPlugin::onMonthlyIndexChange(int index)
{
    m_controls->pendingDay = QString::number(index, 10);
}

void NetInfoSettingUIPlugin::onDateChangeEvent(QDate date)
{
    m_controls->pendingDate = NetInfoRules::settingDate(date);
}

//! False when a control is missing, as in a page with one row, whose size still follows its switch.
bool NetInfoSettingUIPlugin::selectVolume(const LimitRow &row, const LimitRow &other,
                                          bool isChecked)
{
    const Controls &all = *m_controls;
    if (row.size)
        row.size->setEnabled(isChecked);
    if (!row.size || !other.checkBox || !all.warnBefore || !all.warnExceed)
        return false;
    if (!isChecked && !other.checkBox->isChecked()) {
        all.warnBefore->setChecked(false); // no limit, no warnings
        all.warnExceed->setChecked(false);
    }
    return true;
}

void NetInfoSettingUIPlugin::onDataVolumeSelect(bool isChecked)
{
    NETINFO_REQUIRE_CONTROL(selectVolume(m_controls->data, m_controls->time, isChecked), return );
}

void NetInfoSettingUIPlugin::onTimeVolumeSelect(bool isChecked)
{
    NETINFO_REQUIRE_CONTROL(selectVolume(m_controls->time, m_controls->data, isChecked), return );
}

void NetInfoSettingUIPlugin::onWarnBeforeSelect(bool isChecked)
{
    NETINFO_REQUIRE_CONTROL(m_controls->warnBefore, return );
    m_controls->warnBefore->setChecked(isChecked);
}

void NetInfoSettingUIPlugin::onWarnExceedSelect(bool isChecked)
{
    NETINFO_REQUIRE_CONTROL(m_controls->warnExceed, return );
    m_controls->warnExceed->setChecked(isChecked);
}
