#include "NetInfoTextRules.h"

#include <QLatin1Char>

namespace {

void appendTwoDigits(QString &text, int number)
{
    if (number <= 9) // negative numbers too: the form is fixed
        text += QLatin1Char('0');
    text += QString::number(number);
}

} // namespace

namespace NetInfoRules {

QString durationText(long long seconds)
{
    const int hours = int(seconds / 3600); // 32 bits by definition of the text
    const int rest = int(seconds % 3600);
    const int minutes = rest / 60;

    QString text;
    text.reserve(8);
    appendTwoDigits(text, hours);
    text += QLatin1Char(':');
    appendTwoDigits(text, minutes);
    text += QLatin1Char(':');
    appendTwoDigits(text, rest - minutes * 60);
    return text;
}

unsigned long long historyKey(int key)
{
    // The way through the text is intended: it turns a negative key into 0.
    return QString::number(key).toULongLong();
}

} // namespace NetInfoRules
