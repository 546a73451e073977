#pragma once
// The plug-in's settings file as far as the host reads it, written in the ways that files change.

#include <QByteArray>
#include <QFile>
#include <QString>

#include <cstdio>

namespace SettingsFile {

//! The whole text for a weekday index (0 Monday) and a day index (0 the first).
inline QByteArray text(int weekday, int day)
{
    QByteArray lines("[DataUsageLimit]\n");
    for (int i = 0; i < 15; ++i)
        lines += "Key=false\n";
    return lines + "Weekly=" + QByteArray::number(weekday) + "\nMonthly=" + QByteArray::number(day)
        + '\n';
}

[[nodiscard]] inline bool write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

//! Puts a new file in the place of the one at \a path in one step, as the plug-in does.
[[nodiscard]] inline bool replace(const QString &path, int weekday, int day)
{
    const QString other = path + QStringLiteral(".new");
    return write(other, text(weekday, day))
        && std::rename(QFile::encodeName(other).constData(), QFile::encodeName(path).constData())
        == 0;
}

} // namespace SettingsFile
