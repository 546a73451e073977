#pragma once

#include "counters/LinkPlace.h"
#include "counters/LinkSource.h"

#include <functional>
#include <vector>

namespace velq {

struct LinkMessage;
struct StatsMessage;

/*!
 * All links as the kernel's messages tell of them, in the order of its queue. An answer that stands
 * behind an event may be the older of the two, so between beginAnswer() and the answer's end the
 * events are believed.
 */
class LinkTable
{
public:
    using FindPlace = std::function<LinkPlace(const std::string &name, int index)>;

    explicit LinkTable(FindPlace findPlace);

    //! A request is sent.
    void beginAnswer();
    //! A link event, and a link in the answer to the question for all of them.
    void applyEvent(const LinkMessage &message);
    void applyAnswer(const LinkMessage &message);
    //! The counters in the answer to the question for those of all links. After a loss they may be
    //! those of another link and are not taken.
    void applyStats(const StatsMessage &message);
    //! The answer has listed all links.
    void endAnswer();
    //! Events were lost: all links have to be asked for again.
    void noteLoss();
    //! See LinkSource.
    void noteDisconnect(int index);
    //! The link has got an address that reaches beyond it.
    void noteConnect(int index);

    //! Whether all links were listed, ever, and since events were lost.
    [[nodiscard]] bool wasComplete() const
    {
        return m_wasComplete;
    }
    [[nodiscard]] bool isComplete() const
    {
        return m_complete;
    }
    //! Whether an event told of a link since the latest beginAnswer(), so that its counters in the
    //! answer were not taken.
    [[nodiscard]] bool hasNewer() const;
    [[nodiscard]] std::vector<LinkStep> takeSteps();

private:
    struct Known
    {
        Link link;
        LinkCounters counters;
        bool kernelUp = false; // link.up is false, too, while it is disconnected on request
        bool disconnected = false;
        bool listed = false; // by the answer that is being read
        bool newer = false; // an event has told more than that answer can
    };
    using Iterator = std::vector<Known>::iterator;

    [[nodiscard]] Iterator find(int index);
    void appear(Iterator at, const LinkMessage &message, bool fromEvent);
    void change(Known &known, const LinkMessage &message, bool fromEvent);
    void changeFlags(Known &known, const LinkMessage &message);
    void removeDeleted(Iterator at, const LinkMessage &message);
    Iterator remove(Iterator at);
    void endDisconnect(Known &known);
    [[nodiscard]] bool isAnotherLink(const Known &known, const LinkMessage &message) const;
    LinkStep &addStep(LinkStep::Kind kind, const Known &known, bool fromEvent);

    const FindPlace m_findPlace;
    std::vector<Known> m_links; // by index
    std::vector<int> m_deleted; // while an answer is read
    std::vector<LinkStep> m_steps;
    bool m_complete = false;
    bool m_wasComplete = false;
};

} // namespace velq
