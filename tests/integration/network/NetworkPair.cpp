#include "NetworkPair.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <sched.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QFile>
#include <QStringList>

#include <array>
#include <cerrno>
#include <cstring>
#include <thread>
#include <vector>

extern char **environ; // NOLINT: the C library's

namespace {

constexpr int kPort = 5001;

template <typename Body>
bool onThreadIn(int nameSpace, Body body)
{
    bool result = false;
    std::thread thread([&] { result = setns(nameSpace, CLONE_NEWNET) == 0 && body(); });
    thread.join();
    return result;
}

//! The child inherits the namespace of the calling thread.
bool runIp(const QString &arguments)
{
    QList<QByteArray> words { "ip" };
    for (const QString &word : arguments.split(' '))
        words.append(word.toUtf8());
    std::vector<char *> pointers;
    for (QByteArray &word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    pid_t child = 0;
    int status = -1;
    return posix_spawnp(&child, "ip", nullptr, nullptr, pointers.data(), environ) == 0
        && waitpid(child, &status, 0) == child && status == 0;
}

bool writeFile(const char *path, const QByteArray &text)
{
    QFile file(QString::fromLatin1(path));
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)
        && file.write(text) == text.size();
}

//! Without root: a user namespace in which this user is root.
bool becomeRootOfUserNamespace()
{
    const QByteArray user = QByteArray::number(getuid());
    const QByteArray group = QByteArray::number(getgid());
    return unshare(CLONE_NEWUSER) == 0 && writeFile("/proc/self/setgroups", "deny")
        && writeFile("/proc/self/uid_map", "0 " + user + " 1")
        && writeFile("/proc/self/gid_map", "0 " + group + " 1");
}

sockaddr_in addressOf(const char *text)
{
    sockaddr_in address {};
    address.sin_family = AF_INET;
    address.sin_port = htons(kPort);
    (void)inet_pton(AF_INET, text, &address.sin_addr);
    return address;
}

int makeSocket()
{
    const int file = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const int on = 1;
    const timeval timeout { 10, 0 };
    (void)setsockopt(file, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    (void)setsockopt(file, SOL_SOCKET, SO_RCVTIMEO, &timeout, sizeof timeout);
    (void)setsockopt(file, SOL_SOCKET, SO_SNDTIMEO, &timeout, sizeof timeout);
    return file;
}

int makeListener(const char *text)
{
    const int file = makeSocket();
    const sockaddr_in address = addressOf(text);
    if (bind(file, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0
        && listen(file, 1) == 0)
        return file;
    (void)close(file);
    return -1;
}

bool sendTo(const char *text, qint64 bytes)
{
    const int file = makeSocket();
    const sockaddr_in address = addressOf(text);
    const std::array<char, 65536> block {};
    qint64 left = bytes;
    if (connect(file, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0) {
        while (left > 0) {
            const auto part = std::size_t(qMin<qint64>(left, qint64(block.size())));
            const auto sent = send(file, block.data(), part, MSG_NOSIGNAL);
            if (sent <= 0)
                break;
            left -= sent;
        }
    }
    (void)close(file);
    return left == 0;
}

qint64 receiveFrom(int listener)
{
    const int file = accept(listener, nullptr, nullptr);
    std::array<char, 65536> block {};
    qint64 received = 0;
    for (;;) {
        const auto part = recv(file, block.data(), block.size(), 0);
        if (part <= 0)
            break;
        received += part;
    }
    (void)close(file);
    return received;
}

} // namespace

NetworkPair::~NetworkPair()
{
    if (m_there >= 0)
        (void)close(m_there);
}

QByteArray NetworkPair::enter()
{
    if (unshare(CLONE_NEWNET) != 0 && (!becomeRootOfUserNamespace() || unshare(CLONE_NEWNET) != 0))
        return QByteArray("network namespaces are not allowed here: ")
            + QByteArray(std::strerror(errno));
    std::thread([this] {
        if (unshare(CLONE_NEWNET) == 0)
            m_there = open("/proc/thread-self/ns/net", O_RDONLY | O_CLOEXEC);
    }).join();
    if (m_there < 0)
        return "a second network namespace is not allowed here";
    if (!ipHere("link set lo up"))
        return "the ip command is missing or may not set up interfaces";
    return {};
}

bool NetworkPair::makeLink() const
{
    // The peer is made here and handed over by the handle of a file, which "ip" takes as a path.
    const QString there = QStringLiteral("/proc/%1/fd/%2").arg(getpid()).arg(m_there);
    return ipHere("link add va type veth peer name vb") && ipHere("link set vb netns " + there)
        && ipHere("addr add 10.81.0.1/24 dev va") && ipThere("addr add 10.81.0.2/24 dev vb")
        && ipThere("link set vb up") && ipHere("link set va up");
}

bool NetworkPair::ipHere(const QString &arguments) const
{
    return runIp(arguments);
}

bool NetworkPair::ipThere(const QString &arguments) const
{
    return onThreadIn(m_there, [&] { return runIp(arguments); });
}

bool NetworkPair::runThere(const std::function<bool()> &body) const
{
    return onThreadIn(m_there, body);
}

bool NetworkPair::upload(qint64 bytes) const
{
    return transfer(true, bytes);
}

bool NetworkPair::download(qint64 bytes) const
{
    return transfer(false, bytes);
}

bool NetworkPair::transfer(bool fromHere, qint64 bytes) const
{
    const char *target = fromHere ? "10.81.0.2" : "10.81.0.1";
    int listener = -1;
    const auto listenThere = [&] { return (listener = makeListener(target)) >= 0; };
    if (!(fromHere ? onThreadIn(m_there, listenThere) : listenThere()))
        return false;
    qint64 received = 0;
    std::thread receiver([&] { received = receiveFrom(listener); }); // a socket keeps its namespace
    const auto send = [&] { return sendTo(target, bytes); };
    const bool sent = fromHere ? send() : onThreadIn(m_there, send);
    receiver.join();
    (void)close(listener);
    return sent && received == bytes;
}
