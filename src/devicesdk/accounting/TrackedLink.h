#pragma once

#include "accounting/Booking.h"
#include "counters/LinkSource.h"

#include <cstdint>
#include <optional>

namespace velq {

/*! A link that is there, and how far it is in the books. */
class TrackedLink
{
public:
    //! \a nowNs: when it was seen first. \a base: its counters when it was made, if that was seen.
    TrackedLink(const Link &link, const std::optional<LinkCounters> &base, std::int64_t nowNs);

    //! Forgets what the look before had found.
    void beginLook();
    void change(const Link &link);
    /*!
     * Takes counters over. Those of an event may be older than what is known already; only a look
     * at the counters themselves tells that one fell, and that is a new start.
     */
    void count(const LinkCounters &counters, bool fromEvent);
    //! Continues where \a from ends: what has flowed since is returned by takeRecovered().
    void resume(const LinkMark &from);
    //! The books are another's until now: all is to be told anew, as if it was seen first.
    void forgetBooks();
    //! This device was in the books before, so all that the link has counted is new to them.
    void claimAll();

    //! What flowed since the booking before, to be booked. While \a toBook is false it is kept
    //! back: a link that is counted within a minute of its making is counted from there, and one
    //! whose device turns out to be in the books from where those end.
    [[nodiscard]] LinkCounters takeDelta(bool toBook, std::int64_t nowNs);
    //! What flowed while nobody counted; zero but once.
    [[nodiscard]] LinkCounters takeRecovered();

    [[nodiscard]] const Link &link() const
    {
        return m_link;
    }
    //! The latest counters; nothing until there were some.
    [[nodiscard]] const std::optional<LinkCounters> &last() const
    {
        return m_last;
    }
    //! What flowed since the look before.
    [[nodiscard]] const LinkCounters &delta() const
    {
        return m_delta;
    }
    //! A counter fell at this look.
    [[nodiscard]] bool fell() const
    {
        return m_fell;
    }
    //! It was down at some moment since the look before.
    [[nodiscard]] bool sawDown() const
    {
        return m_sawDown;
    }
    //! Whether it was here before anybody looked.
    [[nodiscard]] bool wasHere() const
    {
        return m_wasHere;
    }

    // Kept by the accountant.
    DeviceNote note;
    bool noteTold = false; //!< handed out as it is
    bool markAsked = false; //!< whether the store knows this very link has been looked up
    bool gone = false; //!< deleted; this is its last booking
    bool roaming = false;
    bool timed = false; //!< counted and up at the latest look
    std::optional<std::int64_t> countedNs; //!< when it was counted last
    std::optional<std::int64_t> fallToldNs; //!< when it was told that a counter fell
    std::optional<LinkMark> mark; //!< the latest one that was handed out

private:
    Link m_link;
    std::optional<LinkCounters> m_last;
    LinkCounters m_delta; // of the latest look
    LinkCounters m_unbooked; // of all looks since the latest booking
    LinkCounters m_kept; // of a young link that is not counted yet
    LinkCounters m_untold; // what it had counted before it was known, and was not booked
    LinkCounters m_recovered;
    std::int64_t m_firstNs;
    bool m_wasHere;
    bool m_told = false; // the books know all of it
    bool m_fell = false;
    bool m_sawDown = false;
};

} // namespace velq
