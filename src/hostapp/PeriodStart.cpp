#include "PeriodStart.h"

#include <QFile>
#include <QFileInfo>

static constexpr int kFirstValueLine = 1; // below the section line
static constexpr int kWeekdayIndex = 15;
static constexpr int kDayIndex = 16;
static constexpr qint64 kMaxBytes
    = 64 * 1024; // far above a settings file; a huge one costs no more

// The value is the text between the first "=" and the next one or the end.
static int numberAt(const QStringList &lines, int index, int last)
{
    bool isNumber = false;
    const QString value = lines.value(kFirstValueLine + index).section(QLatin1Char('='), 1, 1);
    const int number = value.trimmed().toInt(&isNumber);
    return isNumber && number >= 0 && number <= last ? number : 0;
}

PeriodStart readPeriodStart(const QStringList &lines)
{
    return { numberAt(lines, kWeekdayIndex, 6), numberAt(lines, kDayIndex, 30) + 1 };
}

PeriodStart readPeriodStartFile(const QString &path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) // a pipe would block
        return {};
    return readPeriodStart(QString::fromUtf8(file.read(kMaxBytes)).split(QLatin1Char('\n')));
}
