#pragma once
// The plug-in's trace: lines of fixed wording in the default debug log.
//
// A line carries the time, the source path and the function. Nothing of it is formatted while the
// log is off, because the time alone costs more than a whole row of figures.

#include <QtDebug>
#include <QTime>

#include "QtCompat.h"

//! The current time as it stands at the head of a line.
#define NETINFO_LOG_TIME qPrintable(QTime::currentTime().toString(QLatin1String("hh:mm:ss:zzz")))

//! A debug line in printf form; its arguments are not evaluated while the debug log is off.
#define NETINFO_DEBUG(...)                                                                         \
    do {                                                                                           \
        if (QtCompat::isDebugLogEnabled())                                                         \
            qDebug(__VA_ARGS__);                                                                   \
    } while (false)

//! A debug line with three placeholders: time, source path, function.
#define NETINFO_TRACE(format, path) NETINFO_DEBUG(format, NETINFO_LOG_TIME, path, __func__)

//! A debug line with four placeholders: time, source path, function, line.
#define NETINFO_TRACE_LINE(format, path)                                                           \
    NETINFO_DEBUG(format, NETINFO_LOG_TIME, path, __func__, __LINE__)

//! A debug line with two placeholders: source path, function.
#define NETINFO_TRACE_CALL(format, path) NETINFO_DEBUG(format, path, __func__)

//! The line for a needed object that is not there: time, source path, function, line.
#define NETINFO_TRACE_NULL(path) NETINFO_TRACE_LINE("Arg is NULL: %s: %s: %s %d", path)
