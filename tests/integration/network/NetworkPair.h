#pragma once
// Two network namespaces of the test's own with a veth pair between them.

#include <QByteArray>
#include <QString>

#include <functional>

/*!
 * The process's main thread moves into a namespace of its own, "here"; a second one, "there", is
 * entered by threads for the time of a call. Both end with the process.
 */
class NetworkPair
{
public:
    NetworkPair() = default;
    ~NetworkPair();
    NetworkPair(const NetworkPair &) = delete;
    NetworkPair &operator=(const NetworkPair &) = delete;

    //! Makes the namespaces; before the process has other threads. Empty, or why it cannot.
    [[nodiscard]] QByteArray enter();
    //! Makes "va" here (10.81.0.1) with its peer "vb" there (10.81.0.2), both up. False on failure.
    [[nodiscard]] bool makeLink() const;
    //! Runs "ip" with \a arguments here, or there.
    [[nodiscard]] bool ipHere(const QString &arguments) const;
    [[nodiscard]] bool ipThere(const QString &arguments) const;
    //! The handle of the other namespace.
    [[nodiscard]] int there() const
    {
        return m_there;
    }
    //! Runs \a body on a thread there; its result, or false when that is not possible.
    [[nodiscard]] bool runThere(const std::function<bool()> &body) const;
    //! Sends \a bytes over TCP, from here to there or back. False when not all of them arrived.
    [[nodiscard]] bool upload(qint64 bytes) const;
    [[nodiscard]] bool download(qint64 bytes) const;

private:
    [[nodiscard]] bool transfer(bool fromHere, qint64 bytes) const;

    int m_there = -1;
};
