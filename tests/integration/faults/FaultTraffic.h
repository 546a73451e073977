#pragma once
// Frames in both directions of a link, and what the kernel and the SDK say of them.

#include <QByteArray>

#include <atomic>
#include <random>
#include <thread>

#include "FaultClient.h"

//! A test's random numbers; the seed is printed, and NETINFO_SEED repeats it.
[[nodiscard]] std::mt19937 faultRandom();

//! A time zone in which it is about noon now, so that no test crosses midnight.
[[nodiscard]] QByteArray noonZone();

//! The kernel's counters of \a link once they stand still; in the calling thread's namespace.
[[nodiscard]] Usage kernelUsage(const QByteArray &link);

//! Prints \a what with both sums and what is lost and invented; whether they are equal.
[[nodiscard]] bool isExact(const QByteArray &what, const Usage &kernel, const Usage &booked);

//! Answers the first number that \a sql finds in the store of \a folder; -1 on failure.
[[nodiscard]] qint64 stored(const QString &folder, const char *sql);

/*! Sends frames of all sizes through a link until it is stopped; goes on while the link is down. */
class FaultTraffic
{
public:
    //! \a nameSpace: the handle of the link's namespace; -1: the calling thread's.
    explicit FaultTraffic(const QByteArray &link, int nameSpace = -1);
    ~FaultTraffic();
    FaultTraffic(const FaultTraffic &) = delete;
    FaultTraffic &operator=(const FaultTraffic &) = delete;
    void stop();

private:
    std::atomic<bool> m_stop { false };
    std::thread m_thread;
};
