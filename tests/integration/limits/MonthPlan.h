#pragma once
// What flows in the scripted months: from 8 to 16 o'clock local time the connection is up, and each
// quarter hour carries the same.

#include <QDateTime>

namespace MonthPlan {

constexpr qint64 kStep = 900; // seconds
constexpr quint64 kMegabyte = 1024 * 1024;
constexpr quint64 kDownload = 4 * kMegabyte; // of a step
constexpr quint64 kUpload = 1 * kMegabyte;

//! Whether the step that ends at \a now carries something.
[[nodiscard]] inline bool isConnected(const QDateTime &now)
{
    return now.time() > QTime(8, 0) && now.time() <= QTime(16, 0);
}

} // namespace MonthPlan
