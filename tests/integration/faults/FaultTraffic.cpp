#include "FaultTraffic.h"

#include <QDateTime>
#include <QThread>

#include <sched.h>
#include <sqlite3.h>

#include <algorithm>
#include <cstdio>

#include "Frames.h"

std::mt19937 faultRandom()
{
    bool isSet = false;
    auto seed = qEnvironmentVariable("NETINFO_SEED").toUInt(&isSet);
    if (!isSet)
        seed = std::random_device()();
    std::printf("NETINFO_SEED=%u repeats this run's random numbers\n", seed);
    return std::mt19937(seed);
}

QByteArray noonZone()
{
    constexpr int kNoon = 12;
    const int hour = QDateTime::currentDateTimeUtc().time().hour();
    return "<NOON>" + QByteArray::number(hour - kNoon);
}

Usage kernelUsage(const QByteArray &link)
{
    constexpr int kTries = 100;
    Usage last;
    for (int i = 0; i < kTries; ++i) {
        const KernelCounters counters = kernelCounters(link);
        const Usage now { counters.download, counters.upload };
        if (i > 0 && now == last)
            break;
        last = now;
        QThread::msleep(20);
    }
    return last;
}

bool isExact(const QByteArray &what, const Usage &kernel, const Usage &booked)
{
    const auto excess = [](quint64 one, quint64 other) { return one > other ? one - other : 0; };
    const quint64 lost
        = excess(kernel.download, booked.download) + excess(kernel.upload, booked.upload);
    const quint64 invented
        = excess(booked.download, kernel.download) + excess(booked.upload, kernel.upload);
    std::printf("%s: kernel %llu bytes, booked %llu, lost %llu, invented %llu\n", what.constData(),
                static_cast<unsigned long long>(kernel.download + kernel.upload),
                static_cast<unsigned long long>(booked.download + booked.upload),
                static_cast<unsigned long long>(lost), static_cast<unsigned long long>(invented));
    (void)std::fflush(stdout);
    return kernel == booked && !(kernel == Usage());
}

qint64 stored(const QString &folder, const char *sql)
{
    sqlite3 *database = nullptr;
    sqlite3_stmt *statement = nullptr;
    qint64 value = -1;
    const QByteArray path = folder.toUtf8() + "/velq.db";
    if (sqlite3_open_v2(path.constData(), &database, SQLITE_OPEN_READWRITE, nullptr) == SQLITE_OK
        && sqlite3_prepare_v2(database, sql, -1, &statement, nullptr) == SQLITE_OK
        && sqlite3_step(statement) == SQLITE_ROW)
        value = sqlite3_column_int64(statement, 0);
    sqlite3_finalize(statement);
    sqlite3_close(database);
    return value;
}

FaultTraffic::FaultTraffic(const QByteArray &link, int nameSpace)
    : m_thread([this, link, nameSpace] {
        if (nameSpace >= 0 && setns(nameSpace, CLONE_NEWNET) != 0)
            qFatal("the other namespace cannot be entered");
        constexpr int kShortest = 60;
        constexpr int kLongest = 1500;
        for (int size = kShortest; !m_stop; size = size < kLongest ? size + 1 : kShortest) {
            (void)sendFrames(link, 3, size);
            QThread::usleep(500);
        }
    })
{
}

FaultTraffic::~FaultTraffic()
{
    stop();
}

void FaultTraffic::stop()
{
    m_stop = true;
    if (m_thread.joinable())
        m_thread.join();
}
