#pragma once

#include "accounting/Booking.h"
#include "accounting/LiveConnection.h"
#include "accounting/Recovery.h"
#include "accounting/TrackedLink.h"
#include "accounting/Uplinks.h"

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace velq {

/*! A device that is there now. */
struct PresentDevice
{
    DeviceNote note;
    bool up = false;
    bool counted = false;
    bool chosen = false;
    bool roaming = false;
    std::optional<LinkCounters> modemFigures; //!< what the modem says of its connection
};

/*!
 * Turns what the kernel and the buses say into bookings. Within one life of a link every
 * difference of its counters is real traffic and is booked once; a life ends when the link is
 * deleted, a fallen counter is a new start. Counted are the links that carry what leaves the
 * computer (see Uplinks.h), or only the one that the user names. One thread at a time.
 */
class Accountant
{
public:
    //! \a boot: the kernel's boot id. \a stored: the marks of the store.
    Accountant(std::string boot, std::vector<LinkMark> stored);

    //! Counts only the device with this key or interface name; empty: what carries the traffic.
    void use(const std::string &device);
    //! Another process has counted until now; \a stored is where it has ended.
    void goOnFrom(std::vector<LinkMark> stored);
    //! What \a stored says was not known until now; what was booked since the start is beyond it.
    void learn(std::vector<LinkMark> stored);
    //! The store is a new one: what it should know of the links is told again.
    void tellAgain();
    /*!
     * Takes a look at \a nowNs of the boot clock. Without \a book, amounts and time wait for
     * settle() unless something besides them has changed.
     */
    [[nodiscard]] BookingBatch advance(const LinkNews &news,
                                       const std::shared_ptr<const NetworkFacts> &facts,
                                       std::int64_t nowNs, bool book = true);
    //! What waits since the latest booking, as of the latest look.
    [[nodiscard]] BookingBatch settle();
    //! Lets the live figures of \a type begin anew at the latest look.
    void restart(int type)
    {
        m_live.restart(type);
    }

    [[nodiscard]] const LiveFigures &live() const
    {
        return m_live.figures();
    }
    //! The link that the live figures follow; 0 without one.
    [[nodiscard]] int chosenIndex() const
    {
        return m_chosen;
    }
    [[nodiscard]] std::vector<PresentDevice> present() const;

private:
    using Tracked = std::vector<TrackedLink>;

    [[nodiscard]] TrackedLink *find(int index);
    void take(const LinkStep &step, std::int64_t nowNs);
    void appear(const LinkStep &step, std::int64_t nowNs);
    void leave(int index);
    //! Whether there was anything to be decided anew.
    bool decide(const std::shared_ptr<const NetworkFacts> &facts, BookingBatch &batch);
    void identifyOne(TrackedLink &tracked, const NetworkFacts &facts);
    void resume(TrackedLink &tracked);
    void claim(TrackedLink &tracked, BookingBatch &batch);
    //! Another link of its device has its bytes as well.
    [[nodiscard]] bool isBeside(const TrackedLink &tracked) const;
    void settleUnclaimed(BookingBatch &batch);
    //! The links that count now, the chosen one first.
    [[nodiscard]] std::vector<int> countedLinks(const NetworkFacts &facts) const;
    void bookAll(std::int64_t nowNs, BookingBatch &batch);
    void book(TrackedLink &tracked, bool countedNow, std::int64_t nowNs, BookingBatch &batch);
    void bookTime(TrackedLink &tracked, bool countedNow, std::int64_t nowNs, Amounts &amounts);
    void putMark(TrackedLink &tracked, BookingBatch &batch);
    void dropMark(TrackedLink &tracked, BookingBatch &batch);
    void follow(std::int64_t nowNs);
    //! Whether it is what the user names.
    [[nodiscard]] bool isUsed(const TrackedLink &tracked) const;
    [[nodiscard]] bool isCounted(int index) const;
    [[nodiscard]] LinkId idOf(const Link &link) const;

    const std::string m_boot;
    Recovery m_recovery;
    std::string m_used;
    Tracked m_links;
    Tracked m_gone; // since the look before
    std::vector<DefaultRoute> m_routes;
    std::shared_ptr<const NetworkFacts> m_facts;
    bool m_changed = true; // something that decides what is counted
    bool m_first = true; // no look yet
    std::vector<int> m_counted; // as countedLinks()
    int m_chosen = 0;
    bool m_hasGrace = true; // whether links count on for a while
    std::int64_t m_lookNs = 0; // the latest look
    std::int64_t m_lastNs = 0; // the latest booking
    std::array<bool, kConnectTypes> m_anyTimed {}; // at this look
    LiveConnection m_live;
};

} // namespace velq
