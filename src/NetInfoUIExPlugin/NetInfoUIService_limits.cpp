// How far the usage limits are used: meters, warnings, periods.
#include "NetInfoUIService.h"

#include <host/CommonUtils.h>

#include "NetInfoLog.h"
#include "NetInfoSettingUIPlugin.h"
#include "NetInfoUIService_p.h"

using NetInfoRules::LimitState;
using NetInfoRules::LimitWarnings;

namespace {

//! Seconds of \a hours.
[[nodiscard]] long double secondsOf(unsigned int hours)
{
    return hours * 3600.0L;
}

} // namespace

QStringList CNetInfoUIService::storedSettings() const
{
    QStringList values;
    NetInfoSettingUIPlugin *const page = NetInfoSettingUIPlugin::GetInstance();
    for (int index = VLS_CHK_RECURRENCE; page && index <= VLS_START_MONTH_DATE; ++index)
        values << page->getVolumeLimitSettings(_VOLUME_LIMIT_SETTINGS_INDEX(index));
    return values;
}

void CNetInfoUIService::InitParam()
{
    m_limits->settings = NetInfoRules::limitSettings(storedSettings());
    InitDate();
    InitDataTimeVolLimit();
}

void CNetInfoUIService::InitDate()
{
    const QString text = NetInfoRules::limitSettings(storedSettings()).startDate;
    m_limits->settings.startDate = text;
    const QDate date = NetInfoRules::settingsDate(text);
    m_limits->startInFuture = date.isValid() && QDate::currentDate() < date;
    // A date never reads as a time, so the start is invalid; this is intended.
    m_live->periodStart = QTime::fromString(text, QLatin1String("hh:mm:ss"));
}

void CNetInfoUIService::InitDataTimeVolLimit()
{
    const NetInfoRules::LimitSettings stored = NetInfoRules::limitSettings(storedSettings());
    m_limits->settings.dataLimit = stored.dataLimit;
    m_limits->settings.timeLimit = stored.timeLimit;
    if (!m_page->source)
        return;
    m_limits->dataWarning = m_page->source->GetLimitWarning(QLatin1String("DATAVOLUMELIMIT"));
    m_limits->timeWarning = m_page->source->GetLimitWarning(QLatin1String("TIMEVOLUMELIMIT"));
}

bool CNetInfoUIService::OperationPersent(long double used)
{
    return NetInfoRules::dataPercentageReached(used, m_limits->settings.dataLimit,
                                               m_limits->dataWarning);
}

bool CNetInfoUIService::TimeOperationPersent(long double used, unsigned long long limit)
{
    return NetInfoRules::timePercentageReached(used, limit, m_limits->timeWarning);
}

int CNetInfoUIService::ShowDataColorPrompt(long double usedMB)
{
    if (!m_limits->dataMeter || !m_page->source)
        return NetInfoRules::LimitFine;
    const long double limit = m_limits->settings.dataLimit;
    LimitState state = NetInfoRules::LimitFine;
    if (m_limits->settings.dataEnabled) {
        m_limits->dataPercentageReached = OperationPersent(usedMB);
        state = NetInfoRules::limitState(limit - usedMB, m_limits->dataPercentageReached,
                                         m_limits->dataWarning);
    }
    const quint64 used = NetInfoRules::bytesOf(usedMB);
    m_limits->dataMeter->SetMeter(
        fluxText(used), m_page->source->GetProgressColor(NetInfoRules::limitColourName(state)),
        used, NetInfoRules::bytesOf(limit));
    return state;
}

int CNetInfoUIService::ShowTimeColorPrompt(long double usedSeconds)
{
    if (!m_limits->timeMeter || !m_page->source)
        return NetInfoRules::LimitFine;
    const unsigned int hours = m_limits->settings.timeLimit;
    LimitState state = NetInfoRules::LimitFine;
    if (m_limits->settings.timeEnabled) {
        // Seconds against hours: this mix is intended.
        m_limits->timePercentageReached = TimeOperationPersent(usedSeconds, hours);
        state = NetInfoRules::limitState(secondsOf(hours) - usedSeconds,
                                         m_limits->timePercentageReached, m_limits->timeWarning);
    }
    const QString text = NetInfoRules::hoursAndMinutes(NetInfoRules::wholeNumber(usedSeconds))
        + QLatin1Char(' ') + tr(QLatin1String("IDS_UNIT_HOURS"));
    m_limits->timeMeter->SetMeter(
        text, m_page->source->GetProgressColor(NetInfoRules::limitColourName(state)), usedSeconds,
        secondsOf(hours));
    return state;
}

void CNetInfoUIService::checkData(const NetInfoData &record)
{
    const quint64 bytes = record.ullUpData + record.ullDownData;
    const int state = ShowDataColorPrompt(NetInfoRules::megabytes(bytes));
    const LimitWarnings &enabled = m_limits->settings.enabled;
    LimitWarnings pending = m_limits->settings.pending;
    if (state == NetInfoRules::LimitNear && enabled.dataBefore && pending.dataBefore) {
        pending.dataBefore = false;
        warn(pending, "IDS_BOX_WARNBEFORE");
    } else if (state == NetInfoRules::LimitReached && enabled.dataAfter && pending.dataAfter) {
        pending.dataAfter = false;
        warn(pending, "IDS_BOX_WARNAFTER");
    }
}

void CNetInfoUIService::checkTime(const NetInfoData &record)
{
    const int state = ShowTimeColorPrompt(quint64(record.llTime));
    const LimitWarnings &enabled = m_limits->settings.enabled;
    LimitWarnings pending = m_limits->settings.pending;
    if (state == NetInfoRules::LimitNear && enabled.timeBefore && pending.timeBefore) {
        pending.timeBefore = false;
        warn(pending, "IDS_BOX_TIMEWARNBEFORE");
    } else if (state == NetInfoRules::LimitReached && enabled.timeAfter && pending.timeAfter) {
        pending.timeAfter = false;
        warn(pending, "IDS_BOX_TIMEWARNAFTER");
    }
}

void CNetInfoUIService::warn(const LimitWarnings &stillPending, const char *text)
{
    keepPending(stillPending); // first, so that a restart does not warn again
    if (m_limits->prompt)
        m_limits->prompt->ShowWarnDlg(m_page->mainWidget, tr(QLatin1String(text)));
}

void CNetInfoUIService::keepPending(const LimitWarnings &pending)
{
    LimitWarnings &known = m_limits->settings.pending;
    if (pending == known || !m_limits->store)
        return;
    const auto keep = [this](int index, bool before, bool now) {
        if (before != now)
            m_limits->store->updateUseLimitSetting(index, NetInfoRules::switchText(now));
    };
    keep(VLS_SHOW_DATA_WARN_AFTER, known.dataAfter, pending.dataAfter);
    keep(VLS_SHOW_DATA_WARN_BEFORE, known.dataBefore, pending.dataBefore);
    keep(VLS_SHOW_TIME_WARN_BEFORE, known.timeBefore, pending.timeBefore);
    keep(VLS_SHOW_TIME_WARN_AFTER, known.timeAfter, pending.timeAfter);
    known = pending;
    m_limits->store->saveUseLimitSetting();
}

void CNetInfoUIService::ShowDailyDataVolumeLimit()
{
    checkData(m_live->stored[NET_INFO_DAILY]);
}

void CNetInfoUIService::ShowWeeklyDataVolumeLimit()
{
    checkData(m_live->stored[NET_INFO_WEEKLY]);
}

void CNetInfoUIService::ShowMonthlyDataVolumeLimit()
{
    checkData(m_live->stored[NET_INFO_MONTHLY]);
}

void CNetInfoUIService::ShowSpecHistroyDataVolumeLimit()
{
    checkData(m_live->history);
}

void CNetInfoUIService::ShowDailyTimeVolumeLimit()
{
    checkTime(m_live->stored[NET_INFO_DAILY]);
}

void CNetInfoUIService::ShowWeeklyTimeVolumeLimit()
{
    checkTime(m_live->stored[NET_INFO_WEEKLY]);
}

void CNetInfoUIService::ShowMonthlyTimeVolumeLimit()
{
    checkTime(m_live->stored[NET_INFO_MONTHLY]);
}

void CNetInfoUIService::ShowSpecHistroyTimeVolumeLimit()
{
    checkTime(m_live->history);
}

void CNetInfoUIService::ShowDaily()
{
    ShowDailyDataVolumeLimit();
    ShowDailyTimeVolumeLimit();
}

void CNetInfoUIService::ShowWeekly()
{
    ShowWeeklyDataVolumeLimit();
    ShowWeeklyTimeVolumeLimit();
}

void CNetInfoUIService::ShowMonthly()
{
    ShowMonthlyDataVolumeLimit();
    ShowMonthlyTimeVolumeLimit();
}

void CNetInfoUIService::ShowSpecHistroy()
{
    ShowSpecHistroyDataVolumeLimit();
    ShowSpecHistroyTimeVolumeLimit();
}

void CNetInfoUIService::UpdateTreeItems()
{
    const NetInfoRules::LimitSettings &settings = m_limits->settings;
    if (!settings.specificPeriod)
        ShowSpecHistroy();
    else if (settings.daily)
        ShowDaily();
    else if (settings.weekly)
        ShowWeekly();
    else
        ShowMonthly();
}

void CNetInfoUIService::UpdateNewPeriodTipInfo()
{
    const NetInfoRules::LimitSettings &settings = m_limits->settings;
    if (!settings.specificPeriod)
        return;
    const _enNetInfoType type = settings.daily ? NET_INFO_DAILY
        : settings.weekly                      ? NET_INFO_WEEKLY
                                               : NET_INFO_MONTHLY;
    const NetInfoData &now = m_live->stored[type];
    if (m_limits->hasPrevious[type]) // the first report is never a new period
        UpdatePeriodFields(now, m_limits->previous[type]);
    m_limits->previous[type] = now;
    m_limits->hasPrevious[type] = true;
}

void CNetInfoUIService::UpdatePeriodFields(NetInfoData first, NetInfoData second)
{
    if (NetInfoRules::isNewPeriod(first.llTime, second.llTime))
        keepPending(NetInfoRules::rearmed(m_limits->settings.pending, m_limits->settings.enabled));
}

void CNetInfoUIService::onNetInfoSettingsChanged(int, int, bool, bool)
{
    InitParam();
    updateStoredStatistics();
}
