#pragma once

#include "PeriodStart.h"

#include <QFileSystemWatcher>
#include <QObject>

#include <functional>
#include <optional>

//! Tells the SDK the period start that the plug-in has saved, and again whenever that changes.
class PeriodStartWatch : public QObject
{
    Q_OBJECT
public:
    //! Takes weekday and day of month; 0 when they were taken.
    using Tell = std::function<int(int, int)>;
    //! \a folder holds the settings file and ends with a separator; empty: there is none.
    PeriodStartWatch(const QString &folder, Tell tell, QObject *parent = nullptr);

    //! Reads the file and tells what is new, or was refused before. Cheap.
    void check();

signals:
    //! A new start was told and taken.
    void changed();

private:
    const QString m_file;
    const Tell m_tell;
    std::optional<PeriodStart> m_told;
    QFileSystemWatcher m_watcher;
};
