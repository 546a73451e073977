#include "counters/MessageQueue.h"

#include <libmnl/libmnl.h>
#include <linux/netlink.h>
#include <sys/socket.h>
#include <sys/time.h>

#include <cerrno>

namespace velq {

namespace {

constexpr std::size_t kBufferSize = 65536; // more than any link message with its extensions
constexpr int kQueueBytes = 2 << 20;
constexpr timeval kAnswerTimeout { 2, 0 }; // the kernel answers at once; never hang on it

} // namespace

KernelQueue::KernelQueue(unsigned groups)
    : m_groups(groups)
    , m_buffer(kBufferSize)
{
    open();
}

void KernelQueue::open()
{
    if (!m_socket)
        m_socket = mnl_socket_open2(NETLINK_ROUTE, SOCK_CLOEXEC);
    if (!m_socket)
        return;
    const int fd = mnl_socket_get_fd(m_socket);
    (void)setsockopt(fd, SOL_SOCKET, SO_RCVTIMEO, &kAnswerTimeout, sizeof kAnswerTimeout);
    // With a smaller queue events are only lost earlier, which is told and mended.
    if (setsockopt(fd, SOL_SOCKET, SO_RCVBUFFORCE, &kQueueBytes, sizeof kQueueBytes) != 0)
        (void)setsockopt(fd, SOL_SOCKET, SO_RCVBUF, &kQueueBytes, sizeof kQueueBytes);
    m_open = mnl_socket_bind(m_socket, m_groups, MNL_SOCKET_AUTOPID) == 0;
}

KernelQueue::~KernelQueue()
{
    if (m_socket)
        mnl_socket_close(m_socket);
}

unsigned KernelQueue::port() const
{
    return m_open ? mnl_socket_get_portid(m_socket) : 0;
}

bool KernelQueue::send(const nlmsghdr *request)
{
    return m_open && mnl_socket_sendto(m_socket, request, request->nlmsg_len) >= 0;
}

MessageQueue::Received KernelQueue::receive(bool wait)
{
    using Status = Received::Status;
    for (;;) {
        if (!m_open)
            open(); // nothing was listed yet, so no event is missing
        if (!m_open)
            return {};
        sockaddr_nl from {};
        socklen_t fromSize = sizeof from;
        const auto size
            = recvfrom(mnl_socket_get_fd(m_socket), m_buffer.data(), m_buffer.size(),
                       wait ? 0 : MSG_DONTWAIT, reinterpret_cast<sockaddr *>(&from), &fromSize);
        if (size > 0 && from.nl_pid == 0)
            return { Status::Bytes, m_buffer.data(), static_cast<std::size_t>(size) };
        if (size == 0)
            return {};
        if (size > 0 || errno == EINTR) // another process may write to us: that is no news
            continue;
        if (errno == EAGAIN)
            return { Status::Empty, nullptr, 0 };
        return { errno == ENOBUFS ? Status::Lost : Status::Failed, nullptr, 0 };
    }
}

} // namespace velq
