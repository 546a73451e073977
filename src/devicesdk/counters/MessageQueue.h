#pragma once

#include <cstddef>
#include <vector>

struct mnl_socket;
struct nlmsghdr;

namespace velq {

/*!
 * A routing netlink socket that gets answers and events through one queue, so that they stand in
 * the order in which the kernel wrote them.
 */
class MessageQueue
{
public:
    struct Received
    {
        enum class Status {
            Bytes,
            Empty, //!< nothing came, in time if waited for
            Lost, //!< events were lost because the queue was full; what it holds comes next
            Failed
        };
        Status status = Status::Failed;
        const char *data = nullptr; //!< messages one after the other, until the next call
        std::size_t size = 0;
    };

    virtual ~MessageQueue() = default;
    //! The number of this end, which the messages that answer it bear; 0: not open.
    [[nodiscard]] virtual unsigned port() const = 0;
    //! False when the request could not be sent.
    [[nodiscard]] virtual bool send(const nlmsghdr *request) = 0;
    //! The next bytes from the kernel; waits two seconds for them if \a wait.
    [[nodiscard]] virtual Received receive(bool wait) = 0;
};

/*! The queue of the kernel, in the network namespace of the thread that makes it. */
class KernelQueue : public MessageQueue
{
public:
    //! Joins \a groups (RTMGRP bits). Without resources for it, receive() tries again.
    explicit KernelQueue(unsigned groups);
    ~KernelQueue() override;
    KernelQueue(const KernelQueue &) = delete;
    KernelQueue &operator=(const KernelQueue &) = delete;

    unsigned port() const override;
    bool send(const nlmsghdr *request) override;
    Received receive(bool wait) override;

private:
    void open();

    const unsigned m_groups;
    mnl_socket *m_socket = nullptr;
    bool m_open = false;
    std::vector<char> m_buffer; // operator new aligns it more than netlink needs
};

} // namespace velq
