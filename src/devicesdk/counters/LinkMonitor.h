#pragma once

#include "counters/LinkSource.h"
#include "counters/LinkTable.h"
#include "counters/MessageStream.h"

#include <memory>
#include <string>

namespace velq {

/*!
 * All links of the network namespace of the thread that makes it, by rtnetlink. States come from
 * one list of all links and from events, which also have the last counters of a link that goes;
 * the counters of the others are asked for each time. Lost events are made up for by a new list.
 */
class LinkMonitor : public LinkSource
{
public:
    //! \a root: see findLinkPlace().
    explicit LinkMonitor(std::string root = {});
    //! With something in the kernel's place.
    LinkMonitor(std::unique_ptr<MessageQueue> queue, LinkTable::FindPlace findPlace);

    LinkNews read() override;
    void noteDisconnect(int index) override;

private:
    [[nodiscard]] bool readEvents();
    void takeLoss();
    void noteEvent(const void *message, std::size_t size);
    //! These are false when the kernel did not answer.
    [[nodiscard]] bool readLinks();
    [[nodiscard]] bool listLinks();
    [[nodiscard]] MessageStream::Answer::Status readCounters();
    [[nodiscard]] bool lookUpRoutes();
    [[nodiscard]] MessageStream::Answer::Status askCounters();
    [[nodiscard]] MessageStream::Answer ask(nlmsghdr *request, const MessageStream::Visitor &visit);

    LinkTable m_table;
    MessageStream m_stream;
    std::vector<DefaultRoute> m_routes;
    bool m_routesChanged = true;
    bool m_countersRefused = false; // an old kernel: links are listed each time instead
};

} // namespace velq
