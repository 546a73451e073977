#include "PeriodStartWatch.h"

#include <utility>

static QString fileIn(const QString &folder)
{
    return folder.isEmpty() ? QString() : folder + QLatin1String("DataUsageLimit.ini");
}

// The folder is watched, because the file is replaced by another of its name. Whatever escapes the
// watcher (a change inside the file, a new folder) is found by the next check().
PeriodStartWatch::PeriodStartWatch(const QString &folder, Tell tell, QObject *parent)
    : QObject(parent)
    , m_file(fileIn(folder))
    , m_tell(std::move(tell))
{
    if (!folder.isEmpty())
        m_watcher.addPath(folder);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &PeriodStartWatch::check);
}

void PeriodStartWatch::check()
{
    const PeriodStart start = readPeriodStartFile(m_file);
    if (m_told == start || m_tell(start.weekday, start.dayOfMonth) != 0)
        return;
    m_told = start;
    emit changed();
}
