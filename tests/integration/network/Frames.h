#pragma once
// Ethernet frames of known size, and a link whose other end is a program.

#include <QByteArray>
#include <QString>

#include <atomic>
#include <thread>

//! Counters that the kernel's own table of links shows in the calling thread's namespace.
struct KernelCounters
{
    quint64 download = 0;
    quint64 upload = 0;
    bool found = false;
};
[[nodiscard]] KernelCounters kernelCounters(const QByteArray &name);

//! Stops the messages that a link would send by itself, in the calling thread's namespace.
[[nodiscard]] bool silenceNewLinks();

//! Sends \a count frames of \a size bytes through \a link, in the calling thread's namespace. The
//! link counts each with this size. False when one was refused.
[[nodiscard]] bool sendFrames(const QByteArray &link, int count, int size);

//! An Ethernet link that receives what this program writes. It goes when it is closed.
class Tap
{
public:
    explicit Tap(const QByteArray &name, bool isEthernet = true);
    ~Tap();
    Tap(const Tap &) = delete;
    Tap &operator=(const Tap &) = delete;

    [[nodiscard]] bool isOpen() const
    {
        return m_file >= 0;
    }
    void close();
    //! Writes a frame; the bytes that the link took, 0 when it is down or gone.
    quint64 write(int size);
    //! Writes frames from a thread until it is stopped, which returns the bytes that were taken.
    void startFlood();
    [[nodiscard]] quint64 stopFlood();

private:
    int m_file = -1;
    std::thread m_thread;
    std::atomic<bool> m_stop { false };
    quint64 m_taken = 0; // of the flood
};
