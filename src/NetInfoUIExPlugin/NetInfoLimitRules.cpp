#include "NetInfoLimitRules.h"

#include <cmath>
#include <limits>

#include "NetInfoSettingUILogic.h"

namespace NetInfoRules {

namespace {

constexpr int kBytesPerMegabyteExponent = 20; // a power of two

} // namespace

LimitWarning limitWarning(const QVector<NetInfoLimitCfg> &items, const QString &name)
{
    LimitWarning warning;
    for (const NetInfoLimitCfg &item : items) {
        if (item.name == name) {
            warning.percentage = item.value.toInt();
            warning.remainder = item.value1.toInt();
        }
    }
    return warning;
}

bool dataPercentageReached(long double used, unsigned int limit, const LimitWarning &warning)
{
    return limit != 0 && timePercentageReached(used, limit, warning);
}

bool timePercentageReached(long double used, quint64 limit, const LimitWarning &warning)
{
    if (warning.percentage == 0 || warning.remainder != 0)
        return false;
    if (limit == 0)
        return used > 0; // what an infinite quotient says, and none of nothing
    return used / limit >= warning.percentage / 100.0L;
}

LimitState limitState(long double remaining, bool percentageReached, const LimitWarning &warning)
{
    if (remaining <= 0)
        return LimitReached;
    const bool remainderReached = warning.remainder != 0 && warning.remainder >= remaining;
    return percentageReached || remainderReached ? LimitNear : LimitFine;
}

QString limitColourName(LimitState state)
{
    switch (state) {
    case LimitReached:
        return QLatin1String("ReachedWarningColor");
    case LimitNear:
        return QLatin1String("BeforeWarningColor");
    case LimitFine:
        break;
    }
    return QLatin1String("NoWarningColor");
}

long double megabytes(quint64 bytes)
{
    return std::ldexp(static_cast<long double>(bytes), -kBytesPerMegabyteExponent);
}

quint64 wholeNumber(long double value)
{
    constexpr int bits = std::numeric_limits<quint64>::digits;
    if (!(value > 0))
        return 0;
    if (value >= std::ldexp(1.0L, bits))
        return std::numeric_limits<quint64>::max();
    return static_cast<quint64>(value);
}

quint64 bytesOf(long double megabytes)
{
    return wholeNumber(std::ldexp(megabytes, kBytesPerMegabyteExponent));
}

QString hoursAndMinutes(quint64 seconds)
{
    const quint64 minutes = seconds / 60;
    return QString::number(minutes / 60) + QLatin1Char(':')
        + QString::number(minutes % 60).rightJustified(2, QLatin1Char('0'));
}

bool isNewPeriod(qint64 now, qint64 before)
{
    return quint64(now) < quint64(before);
}

QRectF meterFill(const QRect &area, long double value, long double maximum)
{
    if (!(maximum > 0) || !(value > 0))
        return QRectF();
    // Crosswise on purpose: the height is what grows with the value, and becomes the width. A
    // painter needs no more than the widest widget.
    constexpr long double widest = 1 << 24;
    const long double width = std::fmin(area.height() * (value / maximum), widest);
    return QRectF(0, 0, static_cast<qreal>(width), area.width());
}

bool LimitWarnings::operator==(const LimitWarnings &other) const
{
    return dataBefore == other.dataBefore && dataAfter == other.dataAfter
        && timeBefore == other.timeBefore && timeAfter == other.timeAfter;
}

LimitWarnings rearmed(LimitWarnings pending, const LimitWarnings &enabled)
{
    if (enabled.dataBefore && enabled.timeBefore)
        pending.dataBefore = pending.timeBefore = true;
    if (enabled.dataAfter && enabled.timeAfter)
        pending.dataAfter = pending.timeAfter = true;
    return pending;
}

LimitSettings limitSettings(const QStringList &values)
{
    const auto isOn = [&values](int index) { return values.value(index) != switchText(false); };
    const auto isTrue = [&values](int index) { return values.value(index) == switchText(true); };
    LimitSettings settings;
    settings.specificPeriod = isOn(VLS_CHK_RECURRENCE);
    settings.daily = isOn(VLS_RADIO_DAILY);
    settings.weekly = isOn(VLS_RADIO_WEEKLY);
    settings.dataEnabled = isOn(VLS_CHK_VOLUME);
    settings.timeEnabled = isOn(VLS_CHK_TIME_VOLUME);
    settings.dataLimit = values.value(VLS_SIZE_VOLUME).toUInt();
    settings.timeLimit = values.value(VLS_SIZE_TIME_VOLUME).toUInt();
    settings.weekday = values.value(VLS_START_WEEK_DATE).toInt();
    settings.day = values.value(VLS_START_MONTH_DATE).toInt();
    settings.startDate = values.value(VLS_START_DATE);
    const bool before = isTrue(VLS_CHK_WARN_BEFORE);
    const bool after = isTrue(VLS_CHK_WARN_AFTER);
    settings.enabled.dataBefore = settings.enabled.timeBefore = before;
    settings.enabled.dataAfter = settings.enabled.timeAfter = after;
    settings.pending.dataBefore = isOn(VLS_SHOW_DATA_WARN_BEFORE);
    settings.pending.dataAfter = isOn(VLS_SHOW_DATA_WARN_AFTER);
    settings.pending.timeBefore = isOn(VLS_SHOW_TIME_WARN_BEFORE);
    settings.pending.timeAfter = isOn(VLS_SHOW_TIME_WARN_AFTER);
    return settings;
}

QDate settingsDate(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char('-'));
    if (parts.size() != 3)
        return QDate();
    return QDate(parts.at(2).toInt(), parts.at(1).toInt(), parts.at(0).toInt());
}

QString switchText(bool on)
{
    return QLatin1String(on ? "true" : "false");
}

} // namespace NetInfoRules
