// Values between the settings store and the page's controls.
#include "NetInfoSettingUIPlugin_p.h"

#include <QMessageBox>

#include <host/CommonUtils.h>

#include "NetInfoLimitRules.h"
#include "NetInfoLog.h"
#include "NetInfoSettingRules.h"

using NetInfoRules::switchText;

namespace {

constexpr char kSource[] = NETINFO_SETTING_PAGE_SOURCE;

constexpr _VOLUME_LIMIT_SETTINGS_INDEX kRadioIndices[]
    = { VLS_RADIO_DAILY, VLS_RADIO_WEEKLY, VLS_RADIO_MONTHLY };

[[nodiscard]] QString checkedText(const QAbstractButton *button)
{
    return switchText(button && button->isChecked());
}

//! Shows the entry that \a text numbers; none of the list leaves \a combo as it is.
void chooseEntry(QComboBox *combo, const QString &text)
{
    const int entry = NetInfoRules::settingEntry(text, combo->count());
    if (entry >= 0)
        combo->setCurrentIndex(entry);
}

} // namespace

NetInfoSettingUILogic *NetInfoSettingUIPlugin::store()
{
    if (!m_store) {
        m_store = NetInfoSettingUILogic::GetInstance();
        if (m_store)
            m_store->GetUseLimitSetting();
    }
    return m_store;
}

QString NetInfoSettingUIPlugin::getVolumeLimitSettings(_VOLUME_LIMIT_SETTINGS_INDEX index)
{
    return store() ? m_store->value(index) : QString();
}

bool NetInfoSettingUIPlugin::isTrue(_VOLUME_LIMIT_SETTINGS_INDEX index)
{
    return getVolumeLimitSettings(index) == switchText(true);
}

QDate NetInfoSettingUIPlugin::DateFromString(QString &text)
{
    return NetInfoRules::dateOfSetting(text);
}

void NetInfoSettingUIPlugin::applySettings()
{
    NETINFO_TRACE_LINE("Start: %s: %s: %s %d", kSource);
    const Controls &all = *m_controls;
    NETINFO_REQUIRE_CONTROL(all.date && store() && all.weekday && all.day, return );
    QString date = getVolumeLimitSettings(VLS_START_DATE);
    all.date->setDate(DateFromString(date));
    chooseEntry(all.weekday, getVolumeLimitSettings(VLS_START_WEEK_DATE));
    chooseEntry(all.day, getVolumeLimitSettings(VLS_START_MONTH_DATE));
    applyRecurrence();
    applyLimitSettings();
    applyWarningSettings();
    NETINFO_TRACE_LINE("End  : %s: %s: %s %d", kSource);
}

void NetInfoSettingUIPlugin::applyRecurrence()
{
    const Controls &all = *m_controls;
    NETINFO_REQUIRE_CONTROL(all.isRecurring, return );
    for (const auto &radio : all.radios) {
        NETINFO_REQUIRE_CONTROL(radio, return );
        radio->setAutoExclusive(false); // else one would stay checked
        radio->setChecked(false);
        radio->setAutoExclusive(true);
    }
    all.weekday->setEnabled(false);
    all.day->setEnabled(false);
    if (isTrue(VLS_RADIO_DAILY))
        onDailyRadioBtnSelect(true);
    else if (isTrue(VLS_RADIO_WEEKLY))
        onWeeklyRadioBtnSelect(true);
    else if (isTrue(VLS_RADIO_MONTHLY))
        onMonthlyRadioBtnSelect(true);
    all.isRecurring->setChecked(isTrue(VLS_CHK_RECURRENCE));
    onSetRecurrenceSelect(all.isRecurring->isChecked());
}

void NetInfoSettingUIPlugin::applyLimitSettings()
{
    const Controls &all = *m_controls;
    NETINFO_REQUIRE_CONTROL(all.data.checkBox && all.data.size, return );
    NETINFO_REQUIRE_CONTROL(all.time.checkBox && all.time.size, return );
    applyLimitRow(all.data);
    applyLimitRow(all.time);
}

void NetInfoSettingUIPlugin::applyLimitRow(const LimitRow &row)
{
    row.size->setText(getVolumeLimitSettings(row.sizeIndex));
    row.checkBox->setChecked(isTrue(row.switchIndex));
    row.size->setEnabled(row.checkBox->isChecked());
}

void NetInfoSettingUIPlugin::applyWarningSettings()
{
    const Controls &all = *m_controls;
    NETINFO_REQUIRE_CONTROL(store() && all.warnBefore && all.warnExceed, return );
    all.warnBefore->setChecked(isTrue(VLS_CHK_WARN_BEFORE));
    all.warnExceed->setChecked(isTrue(VLS_CHK_WARN_AFTER));
}

bool NetInfoSettingUIPlugin::saveLimit()
{
    NETINFO_REQUIRE_CONTROL(store(), return false);
    return saveLimitRow(m_controls->data) && saveLimitRow(m_controls->time);
}

bool NetInfoSettingUIPlugin::saveLimitRow(const LimitRow &row)
{
    if (!row.checkBox)
        return true;
    const QString size = sizeText(row);
    if (size.isEmpty()) { // whether or not the limit is on
        CommonUtils::ShowMessage(QMessageBox::Information, nullptr, tr(QLatin1String("IDS_PROPMT")),
                                 tr(QLatin1String(row.missingText)), QLatin1String("IDS_OK"),
                                 QString(), QString(), Qt::WindowStaysOnTopHint);
        return false; // the message's event loop may have deleted the page
    }
    m_store->updateUseLimitSetting(row.switchIndex, checkedText(row.checkBox));
    m_store->updateUseLimitSetting(row.sizeIndex, size);
    return true;
}

QString NetInfoSettingUIPlugin::sizeText(const LimitRow &row) const
{
    return row.size ? row.size->text() : QString();
}

void NetInfoSettingUIPlugin::saveWarning()
{
    NETINFO_REQUIRE_CONTROL(m_store, return );
    m_store->updateUseLimitSetting(VLS_CHK_WARN_BEFORE, checkedText(m_controls->warnBefore));
    m_store->updateUseLimitSetting(VLS_CHK_WARN_AFTER, checkedText(m_controls->warnExceed));
}

void NetInfoSettingUIPlugin::savePeriod()
{
    const Controls &all = *m_controls;
    for (int i = 0; i < 3; ++i)
        m_store->updateUseLimitSetting(kRadioIndices[i], checkedText(all.radios[i]));
    if (!all.pendingDate.isEmpty())
        m_store->updateUseLimitSetting(VLS_START_DATE, all.pendingDate);
    if (!all.pendingWeekday.isEmpty())
        m_store->updateUseLimitSetting(VLS_START_WEEK_DATE, all.pendingWeekday);
    if (!all.pendingDay.isEmpty())
        m_store->updateUseLimitSetting(VLS_START_MONTH_DATE, all.pendingDay);
}

bool NetInfoSettingUIPlugin::SaveNetInfoSettings()
{
    NETINFO_TRACE_LINE("Start: %s: %s: %s %d", kSource);
    const Controls &all = *m_controls;
    NetInfoSettingUILogic *const settings = store(); // outlives a page that a receiver destroys
    NETINFO_REQUIRE_CONTROL(settings && all.warnBefore && all.warnExceed, return false);
    savePeriod();
    if (!saveLimit())
        return false;
    saveWarning();
    // As typed, also of a limit that is off; the receivers read the switches from the store.
    emit netInfoSettingsChanged(sizeText(all.data).toInt(), sizeText(all.time).toInt(),
                                all.warnBefore->isChecked(), all.warnExceed->isChecked());
    const bool saved = settings->saveUseLimitSetting();
    NETINFO_TRACE_LINE("End  : %s: %s: %s %d", kSource);
    return saved;
}

void NetInfoSettingUIPlugin::CancelNetInfoSetting()
{
    applySettings();
}
