#pragma once

#include <QStringList>

//! From when the weekly and monthly sums run.
struct PeriodStart
{
    int weekday = 0; //!< 0 Monday to 6 Sunday
    int dayOfMonth = 1; //!< 1 to 31

    [[nodiscard]] bool operator==(const PeriodStart &other) const
    {
        return weekday == other.weekday && dayOfMonth == other.dayOfMonth;
    }
};

//! What the \a lines of the plug-in's settings file say: a section line, then values by position. A
//! value that is missing or cannot be keeps Monday or the first.
[[nodiscard]] PeriodStart readPeriodStart(const QStringList &lines);

//! The same of the file at \a path; the default when there is no such file.
[[nodiscard]] PeriodStart readPeriodStartFile(const QString &path);
