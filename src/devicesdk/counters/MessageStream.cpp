#include "counters/MessageStream.h"

#include "counters/MessageParts.h"
#include "counters/MessageQueue.h"

#include <libmnl/libmnl.h>
#include <linux/netlink.h>

#include <cerrno>
#include <chrono>
#include <climits>
#include <cstring>
#include <utility>

namespace velq {

namespace {

using Status = MessageQueue::Received::Status;

// Bounds for a flood of events; what is left is read the next time.
constexpr std::chrono::seconds kAnswerTime { 2 };
constexpr int kMostDatagrams = 20000;

//! The errno at the start of a message that reports one; 0: none.
int errorOf(const nlmsghdr *message)
{
    int error = 0;
    if (mnl_nlmsg_get_payload_len(message) >= sizeof error)
        std::memcpy(&error, mnl_nlmsg_get_payload(message), sizeof error);
    return error < 0 && error > INT_MIN ? -error : 0;
}

} // namespace

MessageStream::MessageStream(std::unique_ptr<MessageQueue> queue, Visitor event)
    : m_queue(std::move(queue))
    , m_event(std::move(event))
{
}

MessageStream::~MessageStream() = default;

MessageStream::Answer MessageStream::ask(nlmsghdr *request, const Visitor &visit)
{
    request->nlmsg_seq = ++m_sequence;
    Answer answer { Answer::Status::Whole, 0 };
    const auto end = std::chrono::steady_clock::now() + kAnswerTime;
    if (!m_queue->send(request))
        return {};
    for (;;) {
        const auto received = m_queue->receive(true);
        if (received.status == Status::Bytes) {
            if (visitAll(received.data, received.size, &visit, answer))
                return answer;
        } else if (received.status == Status::Lost) {
            m_lost = true;
            answer.status = Answer::Status::Interrupted;
        } else {
            return {};
        }
        if (std::chrono::steady_clock::now() > end)
            return {};
    }
}

bool MessageStream::readEvents()
{
    Answer none;
    for (int i = 0; i < kMostDatagrams; ++i) {
        const auto received = m_queue->receive(false);
        if (received.status == Status::Empty)
            return true;
        if (received.status == Status::Failed)
            return false;
        if (received.status == Status::Lost)
            m_lost = true;
        else
            (void)visitAll(received.data, received.size, nullptr, none);
    }
    return true;
}

bool MessageStream::takeLoss()
{
    return std::exchange(m_lost, false);
}

bool MessageStream::visitAll(const char *data, std::size_t size, const Visitor *visit,
                             Answer &answer)
{
    if (size > INT_MAX)
        return false;
    const auto *message = reinterpret_cast<const nlmsghdr *>(data);
    int left = static_cast<int>(size);
    bool complete = false;
    while (left > 0 && wholeMessage(message, static_cast<std::size_t>(left))) {
        const auto rest = static_cast<std::size_t>(left);
        // An event bears the sequence number of whoever caused it, so the port decides.
        if (message->nlmsg_pid != m_queue->port())
            m_event(message, rest);
        else if (visit && message->nlmsg_seq == m_sequence) // else an answer that came too late
            complete = visitAnswer(message, rest, *visit, answer) || complete;
        message = mnl_nlmsg_next(message, &left);
    }
    return complete;
}

bool MessageStream::visitAnswer(const nlmsghdr *message, std::size_t left, const Visitor &visit,
                                Answer &answer) const
{
    const bool error = message->nlmsg_type == NLMSG_ERROR;
    if (message->nlmsg_flags & NLM_F_DUMP_INTR)
        answer.status = Answer::Status::Interrupted;
    if (error || message->nlmsg_type == NLMSG_DONE) {
        answer.error = errorOf(message);
        if (answer.error != 0)
            answer.status = Answer::Status::Refused;
        return true;
    }
    visit(message, left);
    return (message->nlmsg_flags & NLM_F_MULTI) == 0;
}

} // namespace velq
