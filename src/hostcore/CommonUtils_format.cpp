#include "UnitRules.h"

#include <host/Change.h>
#include <host/CommonUtils.h>

#include <QLocale>

// Called about a dozen times a second: no regular expressions, no sorting, no copies of the table.

static QString decimalText(const UnitRules::Scaled &amount)
{
    const QLocale locale; // the user's, unless the application has set another default
    QString text = locale.toString(qulonglong(amount.whole));
    text += locale.decimalPoint();
    if (amount.hundredths < 10)
        text += locale.zeroDigit();
    text += locale.toString(amount.hundredths);
    return text;
}

QString CommonUtils::SpeedFluxToString(QVector<TagUnits> units, unsigned long long value,
                                       QString module)
{
    const TagUnits *unit = UnitRules::unitFor(units, value);
    if (!unit)
        return decimalText(UnitRules::scale(value, 1)); // no table, no unit: the bare number
    QString text = decimalText(UnitRules::scale(value, UnitRules::factorOf(*unit)));
    text += QLatin1Char(' ');
    text += Change::tr(module, unit->langResID);
    return text;
}

QString CommonUtils::SpeedUnitToString(QVector<TagUnits> units, QString module)
{
    return units.isEmpty() ? QString() : Change::tr(module, units.constFirst().langResID);
}
