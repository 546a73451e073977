#include "TrafficPeer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sched.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

constexpr char kOwnAddress[] = "10.77.0.1";
constexpr char kPeerAddress[] = "10.77.0.2";
constexpr unsigned short kPort = 5000;

sockaddr_in addressOf(const char *text)
{
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(kPort);
    inet_pton(AF_INET, text, &address.sin_addr);
    return address;
}

bool run(const std::string &command)
{
    return std::system((command + " 2>/dev/null").c_str()) == 0;
}

bool sendBytes(int socket, size_t bytes)
{
    const std::vector<char> block(65536, 'x');
    while (bytes > 0) {
        const ssize_t sent
            = send(socket, block.data(), std::min(bytes, block.size()), MSG_NOSIGNAL);
        if (sent <= 0)
            return false;
        bytes -= size_t(sent);
    }
    return shutdown(socket, SHUT_WR) == 0;
}

size_t receiveAll(int socket)
{
    std::vector<char> block(65536);
    size_t received = 0;
    for (;;) {
        const ssize_t part = recv(socket, block.data(), block.size(), 0);
        if (part <= 0)
            return received;
        received += size_t(part);
    }
}

//! The peer's process: waits for its end of the pair, then serves one connection after another.
[[noreturn]] void serve(int fromParent, int ready)
{
    char byte = 0;
    if (unshare(CLONE_NEWNET) != 0 || write(ready, &byte, 1) != 1 || read(fromParent, &byte, 1) != 1
        || !run("ip link set lo up")
        || !run(std::string("ip addr add ") + kPeerAddress + "/24 dev peer0")
        || !run("ip link set peer0 up"))
        _exit(1);
    const int listener = socket(AF_INET, SOCK_STREAM, 0);
    const sockaddr_in address = addressOf(kPeerAddress);
    if (bind(listener, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0
        || listen(listener, 1) != 0 || write(ready, &byte, 1) != 1)
        _exit(1);
    for (;;) {
        const int connection = accept(listener, nullptr, nullptr);
        if (connection < 0)
            _exit(1);
        sendBytes(connection, receiveAll(connection));
        close(connection);
    }
}

} // namespace

TrafficPeer::~TrafficPeer()
{
    if (m_pid > 0) {
        kill(m_pid, SIGKILL);
        waitpid(m_pid, nullptr, 0);
    }
    if (m_toPeer >= 0)
        close(m_toPeer);
}

bool TrafficPeer::fail(const char *why)
{
    m_reason = QString::fromLatin1(why);
    return false;
}

QString TrafficPeer::reason() const
{
    return m_reason;
}

bool TrafficPeer::start()
{
    if (!run("ip -V >/dev/null"))
        return fail("the command ip is missing");
    if (unshare(CLONE_NEWNET) != 0)
        return fail("network namespaces are not allowed here");
    int toPeer[2];
    int fromPeer[2];
    if (pipe(toPeer) != 0 || pipe(fromPeer) != 0)
        return fail("no pipes");
    m_pid = fork();
    if (m_pid == 0) {
        close(toPeer[1]);
        close(fromPeer[0]);
        serve(toPeer[0], fromPeer[1]);
    }
    close(toPeer[0]);
    close(fromPeer[1]);
    m_toPeer = toPeer[1];
    char byte = 0;
    bool ready = read(fromPeer[0], &byte, 1) == 1
        && run("ip link add wwan0 type veth peer name peer0 netns " + std::to_string(m_pid))
        && run(std::string("ip addr add ") + kOwnAddress + "/24 dev wwan0")
        && run("ip link set wwan0 up");
    ready = ready && write(m_toPeer, &byte, 1) == 1 && read(fromPeer[0], &byte, 1) == 1;
    close(fromPeer[0]);
    return ready ? true : fail("a veth pair between namespaces is not allowed here");
}

bool TrafficPeer::exchange(size_t bytes)
{
    const int connection = socket(AF_INET, SOCK_STREAM, 0);
    const sockaddr_in address = addressOf(kPeerAddress);
    const bool done
        = ::connect(connection, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0
        && sendBytes(connection, bytes) && receiveAll(connection) == bytes;
    close(connection);
    return done;
}
