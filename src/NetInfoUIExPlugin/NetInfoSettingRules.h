#pragma once
// The lines of the usage-limit settings file as values, and back. The file is positional: what
// stands before a line's "=" is not looked at.

#include <QByteArray>
#include <QList>
#include <QString>

QT_BEGIN_NAMESPACE
class QDate;
QT_END_NAMESPACE

namespace NetInfoRules {

//! Settings in a complete file.
constexpr int kSettingCount = 17;

//! The most of a settings file that is read, in bytes; a complete one has about 350.
constexpr int kSettingFileLimit = 65536;

//! \a content itself, or of a longer one than \a limit bytes the lines that end within them.
[[nodiscard]] QByteArray linesWithin(const QByteArray &content, int limit);

//! Whether \a content can be a settings file: not longer than \a limit and without zero bytes.
[[nodiscard]] bool isSettingText(const QByteArray &content, int limit);

//! The text between the first "=" of \a line and the next or the end; empty without "=".
[[nodiscard]] QString settingValue(const QString &line);

//! The values of all lines of \a content but the first, which is the section line whatever it
//! holds.
[[nodiscard]] QList<QString> settingValues(const QByteArray &content);

//! A complete settings file of the first seventeen \a values; missing ones are empty.
[[nodiscard]] QByteArray settingFile(const QList<QString> &values);

//! \a date as the file has it, "dd-MM-yyyy" in European digits whatever the user's are.
[[nodiscard]] QString settingDate(const QDate &date);

//! The date of a "dd-MM-yyyy" by position: separators are not checked and what is no digit ends a
//! number. Invalid when there is no such day.
[[nodiscard]] QDate dateOfSetting(const QString &text);

//! The entry that \a text numbers in a list of \a count, from 0; -1 when it is none of them.
[[nodiscard]] int settingEntry(const QString &text, int count);

//! The first settings file of a user: the lines of \a settingTemplate, then a period that starts on
//! \a today, weekday 0 and day of month 0.
[[nodiscard]] QByteArray firstSettingFile(const QByteArray &settingTemplate, const QDate &today);

} // namespace NetInfoRules
