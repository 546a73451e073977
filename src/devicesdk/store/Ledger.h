#pragma once

#include "store/Store.h"

#include <memory>
#include <mutex>

namespace velq {

/*!
 * What has been used: the store and what is not in it yet. Amounts are booked in memory and written
 * by commit(); every answer is stored plus pending, so it is always current, and a store that fails
 * loses nothing. Any thread.
 */
class Ledger
{
public:
    //! \a begunAt: what a ledger without a readable store answers as its last reset.
    Ledger(StoreOptions options, std::int64_t begunAt);

    //! Adds \a totals to the bucket of \a second. Never waits for the disk.
    void book(int type, std::int64_t second, const Totals &totals);
    //! Adds a past to a new ledger.
    void seed(const Changes &past);
    //! Writes what is pending; opens or mends the store first where that is needed.
    void commit();
    //! The sum of \a type in \a span. False when the store cannot be read at this moment.
    [[nodiscard]] bool totals(int type, const Span &span, Totals &totals);
    /*!
     * Clears \a type and remembers \a second. A store that cannot be written gets the reset as its
     * next change. False when another process owns the store.
     */
    [[nodiscard]] bool reset(int type, std::int64_t second);
    [[nodiscard]] std::int64_t lastReset(int type);
    [[nodiscard]] std::string problem();
    //! Writes what is pending and closes the store. Later amounts stay in memory.
    void close();
    //! See Store::abandon().
    void abandon();

private:
    void commitLocked();

    const std::int64_t m_begunAt;
    std::mutex m_storeMutex; // taken before m_pendingMutex
    Store m_store;
    bool m_closed = false;
    std::mutex m_pendingMutex; // never held while the disk is waited for
    Changes m_pending;
    bool m_shared = false; // another process counts: booking would count twice
};

} // namespace velq
