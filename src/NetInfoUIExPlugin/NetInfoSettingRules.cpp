#include "NetInfoSettingRules.h"

#include <QDate>
#include <QLocale>
#include <QStringList>

namespace {

// The spelling is the file's, small letters and missing ones included.
constexpr const char *kSettingKeys[] = {
    "chkRecurrence=",     "radioDaily=",        "radioWeekly=",       "radioMonthly=",
    "chkVolume=",         "chkTimeVolume=",     "SizeVolume=",        "SizeTimeVolume=",
    "chkWarnbefore=",     "chkWarnAfter=",      "ShowDataWarnAfter=", "ShowDataWarnBefor=",
    "ShowTimeWarnBefor=", "ShowTimeWarnAfter=", "startdate=",         "startweekdate=",
    "startmonthdate=",
};
static_assert(sizeof kSettingKeys / sizeof kSettingKeys[0] == NetInfoRules::kSettingCount,
              "one key a setting");

[[nodiscard]] QStringList linesOf(const QByteArray &content)
{
    QString text = QString::fromUtf8(content.constData(), int(content.size()));
    text.remove(QLatin1Char('\r'));
    QStringList lines = text.split(QLatin1Char('\n'));
    if (lines.last().isEmpty())
        lines.removeLast(); // the text is empty or ends in a line feed
    return lines;
}

//! The number that \a text begins with, in European digits; 0 without one.
[[nodiscard]] int leadingNumber(const QString &text)
{
    int number = 0;
    for (const QChar digit : text) {
        if (digit < QLatin1Char('0') || digit > QLatin1Char('9'))
            break;
        number = number * 10 + (digit.unicode() - '0');
    }
    return number;
}

} // namespace

namespace NetInfoRules {

QByteArray linesWithin(const QByteArray &content, int limit)
{
    if (content.size() <= limit)
        return content;
    const QByteArray head = content.left(limit);
    return head.left(head.lastIndexOf('\n') + 1);
}

bool isSettingText(const QByteArray &content, int limit)
{
    return content.size() <= limit && !content.contains('\0');
}

QString settingValue(const QString &line)
{
    return line.split(QLatin1Char('=')).value(1);
}

QList<QString> settingValues(const QByteArray &content)
{
    QList<QString> values;
    const QStringList lines = linesOf(content);
    for (int i = 1; i < lines.size(); ++i)
        values.append(settingValue(lines.at(i)));
    return values;
}

QByteArray settingFile(const QList<QString> &values)
{
    QString text = QLatin1String("[uselimit]");
    for (int i = 0; i < kSettingCount; ++i)
        text += QLatin1Char('\n') + QLatin1String(kSettingKeys[i]) + values.value(i);
    return text.toLocal8Bit();
}

QString settingDate(const QDate &date)
{
    return QLocale::c().toString(date, QLatin1String("dd-MM-yyyy"));
}

QDate dateOfSetting(const QString &text)
{
    const int day = leadingNumber(text.mid(0, 2));
    const int month = leadingNumber(text.mid(3, 2));
    return QDate(leadingNumber(text.mid(6, 4)), month, day);
}

int settingEntry(const QString &text, int count)
{
    bool isNumber = false;
    const int entry = text.toInt(&isNumber);
    return isNumber && entry >= 0 && entry < count ? entry : -1;
}

QByteArray firstSettingFile(const QByteArray &settingTemplate, const QDate &today)
{
    // These keys are not those of a saved file, and stay so: only the position counts.
    QStringList lines = linesOf(settingTemplate);
    lines.append(QLatin1String("startdate=") + settingDate(today));
    lines.append(QLatin1String("startday=0"));
    lines.append(QLatin1String("startweekdate=0"));
    return lines.join(QLatin1String("\n")).toLocal8Bit();
}

} // namespace NetInfoRules
