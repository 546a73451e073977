#pragma once

#include <cstddef>
#include <functional>
#include <memory>

struct nlmsghdr;

namespace velq {

class MessageQueue;

/*! Requests and their answers on a queue that carries events as well. */
class MessageStream
{
public:
    //! Called for each message with the bytes from it to the end of what was received.
    using Visitor = std::function<void(const void *message, std::size_t size)>;

    struct Answer
    {
        enum class Status {
            Whole,
            Interrupted, //!< what it lists changed meanwhile, or events were lost
            Refused, //!< the kernel does not do it
            Failed
        };
        Status status = Status::Failed;
        int error = 0; //!< the kernel's errno when it refused
    };

    //! \a event is called for every message that answers none of our requests.
    MessageStream(std::unique_ptr<MessageQueue> queue, Visitor event);
    ~MessageStream();

    //! Sends \a request and visits its answer, and the events between, in their order.
    [[nodiscard]] Answer ask(nlmsghdr *request, const Visitor &visit);
    //! Visits the events that wait, without blocking. False when the queue failed.
    [[nodiscard]] bool readEvents();
    //! Whether events were lost since the last call.
    [[nodiscard]] bool takeLoss();

private:
    //! Visits one datagram; true when the answer is complete.
    bool visitAll(const char *data, std::size_t size, const Visitor *visit, Answer &answer);
    //! True when the answer ends with this message.
    bool visitAnswer(const nlmsghdr *message, std::size_t left, const Visitor &visit,
                     Answer &answer) const;

    const std::unique_ptr<MessageQueue> m_queue;
    const Visitor m_event;
    unsigned m_sequence = 0;
    bool m_lost = false;
};

} // namespace velq
