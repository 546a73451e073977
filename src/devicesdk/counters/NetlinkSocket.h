#pragma once

#include <cstddef>
#include <functional>
#include <vector>

struct mnl_socket;
struct nlmsghdr;

namespace velq {

/*! A routing netlink socket in the network namespace of the thread that opens it. */
class NetlinkSocket
{
public:
    //! Called for each message with the bytes from it to the end of what was received.
    using Visitor = std::function<void(const void *message, std::size_t size)>;

    NetlinkSocket() = default;
    ~NetlinkSocket();
    NetlinkSocket(const NetlinkSocket &) = delete;
    NetlinkSocket &operator=(const NetlinkSocket &) = delete;

    //! Opens the socket and joins \a groups (RTMGRP bits; 0: none). False when it cannot.
    [[nodiscard]] bool open(unsigned groups);
    //! Sends \a request and visits the answer. 0, or the errno of the kernel or of the socket.
    [[nodiscard]] int ask(nlmsghdr *request, const Visitor &visit);
    //! Visits the events that wait, without blocking. False when some were lost.
    [[nodiscard]] bool drain(const Visitor &visit);

private:
    //! Visits one datagram; true when the answer to \a sequence is complete.
    bool visitAnswer(std::size_t size, unsigned sequence, const Visitor &visit, int &error);

    mnl_socket *m_socket = nullptr;
    unsigned m_sequence = 0;
    std::vector<char> m_buffer; // operator new aligns it more than netlink needs
};

} // namespace velq
