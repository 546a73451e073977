#pragma once
// The other end of a veth pair, in a network namespace of its own: a process that receives over TCP
// until the sender is done, then sends the same amount back.

#include <QString>

#include <sys/types.h>

class TrafficPeer
{
public:
    TrafficPeer() = default;
    ~TrafficPeer();
    TrafficPeer(const TrafficPeer &) = delete;
    TrafficPeer &operator=(const TrafficPeer &) = delete;

    //! Moves this process into a new network namespace, starts the peer and connects both by the
    //! veth pair "wwan0" - "peer0". Call it before any thread is started. False where that is not
    //! allowed; reason() says why.
    [[nodiscard]] bool start();
    [[nodiscard]] QString reason() const;
    //! Sends \a bytes to the peer and receives as many; false when the connection fails.
    [[nodiscard]] bool exchange(size_t bytes);

private:
    [[nodiscard]] bool fail(const char *why);

    QString m_reason;
    pid_t m_pid = -1;
    int m_toPeer = -1;
};
