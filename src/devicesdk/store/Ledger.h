#pragma once

#include "accounting/Booking.h"
#include "store/DaySums.h"
#include "store/RecentBook.h"
#include "store/Store.h"

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace velq {

/*! When something is booked, by both clocks. */
struct Moment
{
    std::int64_t wallSeconds = 0; //!< since 1970-01-01 UTC
    std::int64_t bootSeconds = 0; //!< since the system started, sleep included
};

struct LedgerOptions
{
    StoreOptions store;
    std::string boot; //!< the kernel's boot id
    RecentBook::DayOf dayOf; //!< the local day of a second
    std::int64_t begunAt = 0; //!< the last reset while there is no readable store
};

/*!
 * What has been used: the store and what is not in it yet. Amounts are booked in memory and written
 * by commit(); every answer is stored plus pending, so it is always current, and a store that fails
 * loses nothing. Any thread.
 */
class Ledger
{
public:
    explicit Ledger(LedgerOptions options);

    /*!
     * Adds what one look found. Never waits for the disk. Given \a takeovers, of before the look,
     * nothing is added if this process has begun to count since: marks() has it all then.
     */
    void book(const BookingBatch &batch, const Moment &moment,
              const std::optional<std::uint64_t> &takeovers = {});
    //! Adds a past to a new ledger.
    void seed(const HourAmounts &past);
    //! Whether commit() should not wait: there is much to write, or a store to be opened or mended.
    [[nodiscard]] bool isUrgent();
    //! Writes what is pending; opens or mends the store first where that is needed.
    void commit();
    //! The sum of a connect type over local days. Never waits for the disk.
    [[nodiscard]] Amounts totals(int type, const DaySpan &span);
    [[nodiscard]] Amounts totalsOfUse(int use, const DaySpan &span);
    //! The sum of all types since \a second, which begins an hour. False when it cannot be read.
    [[nodiscard]] bool totalsSince(std::int64_t second, Amounts &amounts);
    /*!
     * Clears \a type. A store that cannot be written gets the reset as its next change. False when
     * another process owns the store.
     */
    [[nodiscard]] bool reset(int type, const Moment &moment);
    [[nodiscard]] std::int64_t lastReset(int type);
    [[nodiscard]] std::string problem();

    //! Rows of hours and of days, stored and pending. False when they cannot be read.
    [[nodiscard]] bool hours(const Span &span, HourAmounts &hours);
    [[nodiscard]] bool days(const DaySpan &span, DayAmounts &days);
    [[nodiscard]] bool devices(std::vector<StoredDevice> &devices);
    //! The latest \a count, the oldest first.
    [[nodiscard]] bool reasons(int count, std::vector<Reason> &reasons);
    //! The marks that are stored: where counting has to go on.
    [[nodiscard]] std::vector<LinkMark> marks();
    //! Empty where nothing is set.
    [[nodiscard]] std::string setting(const std::string &name);
    //! False when another process owns the store.
    [[nodiscard]] bool setSetting(const std::string &name, const std::string &value);
    /*!
     * Lets hours that are older than \a days be thinned out to days with the next commit. A clock
     * that is years ahead has to be so for some days before it takes any.
     */
    void thinOut(int days, std::int64_t now);
    [[nodiscard]] std::string backUp(const std::string &path);

    //! Grows when this process becomes the one that counts: marks() is what it has to go on from.
    [[nodiscard]] std::uint64_t takeovers();
    [[nodiscard]] bool isShared();
    //! Grows when a new store takes the place of another, whose devices and marks it lacks.
    [[nodiscard]] int renewals();
    //! Once, the marks of a store that could not be read until now: still to be gone on from,
    //! beside what was booked since. They are there for a look before the store gets others.
    [[nodiscard]] std::vector<LinkMark> takeLateMarks();

    //! Writes what is pending and closes the store. Later amounts stay in memory.
    void close();
    //! See Store::abandon().
    void abandon();

private:
    void commitLocked();
    //! Whether the store can be read for the first time, and holds marks that were not known.
    [[nodiscard]] bool isLate();
    void loadLocked();
    void tellNewStore(const std::map<std::string, std::string> &stored);
    void noteSetAsides();
    void addLocked(const HourKey &key, const Amounts &amounts);
    void bookLocked(const Booking &booking, const Moment &moment);
    void bookAt(std::int64_t second, const Booking &booking, const Moment &moment);
    void redate(const Moment &moment);
    [[nodiscard]] std::int64_t hoursFrom() const;
    [[nodiscard]] bool readHours(const Span &span, HourAmounts &hours);

    const LedgerOptions m_options;
    std::mutex m_storeMutex; // taken before m_pendingMutex
    Store m_store;
    std::uint64_t m_loadedVersion = 0;
    int m_toldSetAsides = 0;
    bool m_closed = false;
    bool m_marksKnown = false; // the store could be read

    std::mutex m_pendingMutex; // never held while the disk is waited for
    Changes m_pending;
    DaySums m_days; // stored and pending
    RecentBook m_recent;
    std::array<std::int64_t, kConnectTypes> m_resets {};
    std::map<std::string, std::string> m_settings; // stored and pending
    bool m_written = false; // the latest commit
    bool m_shared = false; // another process counts: booking would count twice
    std::uint64_t m_takeovers = 0;
    int m_begun = 0; // the store's, at the latest reading
    int m_renewals = 0;
    std::vector<LinkMark> m_lateMarks;
};

} // namespace velq
