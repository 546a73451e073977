#include "counters/NetlinkSocket.h"

#include "counters/MessageParts.h"

#include <libmnl/libmnl.h>
#include <linux/netlink.h>
#include <sys/socket.h>
#include <sys/time.h>

#include <cerrno>
#include <climits>
#include <cstring>

namespace velq {

namespace {

constexpr std::size_t kBufferSize = 65536; // more than any link message with its extensions
constexpr int kEventQueueBytes = 1 << 20;
constexpr timeval kAnswerTimeout { 2, 0 }; // the kernel answers at once; never hang on it

} // namespace

NetlinkSocket::~NetlinkSocket()
{
    if (m_socket)
        mnl_socket_close(m_socket);
}

bool NetlinkSocket::open(unsigned groups)
{
    m_socket = mnl_socket_open2(NETLINK_ROUTE, SOCK_CLOEXEC);
    if (!m_socket)
        return false;
    const int fd = mnl_socket_get_fd(m_socket);
    // Failing to set these is harmless: the defaults only lose events earlier, and drain() tells.
    (void)setsockopt(fd, SOL_SOCKET, SO_RCVTIMEO, &kAnswerTimeout, sizeof kAnswerTimeout);
    if (groups)
        (void)setsockopt(fd, SOL_SOCKET, SO_RCVBUF, &kEventQueueBytes, sizeof kEventQueueBytes);
    m_buffer.resize(kBufferSize);
    return mnl_socket_bind(m_socket, groups, MNL_SOCKET_AUTOPID) == 0;
}

int NetlinkSocket::ask(nlmsghdr *request, const Visitor &visit)
{
    if (!m_socket)
        return ENOTCONN;
    request->nlmsg_seq = ++m_sequence;
    if (mnl_socket_sendto(m_socket, request, request->nlmsg_len) < 0)
        return errno;
    int error = 0;
    for (;;) {
        const auto received = mnl_socket_recvfrom(m_socket, m_buffer.data(), m_buffer.size());
        if (received < 0 && errno == EINTR)
            continue;
        if (received <= 0)
            return received < 0 ? errno : EIO;
        if (visitAnswer(static_cast<std::size_t>(received), m_sequence, visit, error))
            return error;
    }
}

bool NetlinkSocket::visitAnswer(std::size_t size, unsigned sequence, const Visitor &visit,
                                int &error)
{
    const auto *message = reinterpret_cast<const nlmsghdr *>(m_buffer.data());
    int left = static_cast<int>(size);
    while (left > 0 && wholeMessage(message, static_cast<std::size_t>(left))) {
        const bool ours = message->nlmsg_seq == sequence; // an answer that came too late is skipped
        if (ours && message->nlmsg_type == NLMSG_DONE)
            return true;
        if (ours && message->nlmsg_type == NLMSG_ERROR) {
            nlmsgerr report {};
            const auto length = mnl_nlmsg_get_payload_len(message);
            std::memcpy(&report, mnl_nlmsg_get_payload(message),
                        length < sizeof report ? length : sizeof report);
            error = -report.error;
            return true;
        }
        if (ours) {
            visit(message, static_cast<std::size_t>(left));
            if (!(message->nlmsg_flags & NLM_F_MULTI))
                return true;
        }
        message = mnl_nlmsg_next(message, &left);
    }
    return false;
}

bool NetlinkSocket::drain(const Visitor &visit)
{
    if (!m_socket)
        return false;
    bool complete = true;
    for (;;) {
        const auto received
            = recv(mnl_socket_get_fd(m_socket), m_buffer.data(), m_buffer.size(), MSG_DONTWAIT);
        if (received < 0 && errno == ENOBUFS) {
            complete = false; // the queue overflowed; what it still holds follows
            continue;
        }
        if (received < 0 && errno == EINTR)
            continue;
        if (received <= 0)
            return complete;
        const auto *message = reinterpret_cast<const nlmsghdr *>(m_buffer.data());
        int left = static_cast<int>(received);
        while (left > 0 && wholeMessage(message, static_cast<std::size_t>(left))) {
            visit(message, static_cast<std::size_t>(left));
            message = mnl_nlmsg_next(message, &left);
        }
    }
}

} // namespace velq
