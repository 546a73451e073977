#include "store/Ledger.h"

#include <iterator>
#include <utility>

namespace velq {

Ledger::Ledger(StoreOptions options, std::int64_t begunAt)
    : m_begunAt(begunAt)
    , m_store(std::move(options))
{
    m_store.open();
    m_shared = m_store.state() == StoreState::Shared;
}

void Ledger::book(int type, std::int64_t second, const Totals &totals)
{
    const std::lock_guard<std::mutex> guard(m_pendingMutex);
    if (!m_shared && !totals.isZero())
        m_pending.buckets[{ bucketStart(second), type }].add(totals);
}

void Ledger::seed(const Changes &past)
{
    {
        const std::lock_guard<std::mutex> guard(m_pendingMutex);
        m_pending = past;
    }
    commit();
}

void Ledger::commit()
{
    const std::lock_guard<std::mutex> guard(m_storeMutex);
    if (!m_closed)
        commitLocked();
}

void Ledger::commitLocked()
{
    // Taken out, not copied: what is booked meanwhile gathers beside it. Readers wait for the store
    // and so never see the moment in which it is nowhere.
    Changes changes;
    {
        const std::lock_guard<std::mutex> guard(m_pendingMutex);
        std::swap(changes, m_pending);
    }
    bool written = false;
    try {
        written = m_store.commit(changes);
    } catch (...) { // no memory for an error's words; the amounts go back below
    }
    const std::lock_guard<std::mutex> guard(m_pendingMutex);
    m_shared = m_store.state() == StoreState::Shared;
    if (written || m_shared)
        return;
    for (const auto &[key, totals] : m_pending.buckets)
        changes.buckets[key].add(totals);
    std::swap(changes, m_pending);
}

bool Ledger::totals(int type, const Span &span, Totals &totals)
{
    const std::lock_guard<std::mutex> storeGuard(m_storeMutex);
    bool pendingReset = false;
    {
        const std::lock_guard<std::mutex> guard(m_pendingMutex);
        pendingReset = bool(m_pending.resets[static_cast<std::size_t>(type)]);
    }
    // Commits and resets wait for the store's lock, so the two halves below belong together.
    Totals all;
    if (!pendingReset && !m_store.sum(type, span, all))
        return false;
    const std::lock_guard<std::mutex> guard(m_pendingMutex);
    all.add(sum(m_pending.buckets, type, span));
    totals = all;
    return true;
}

bool Ledger::reset(int type, std::int64_t second)
{
    const std::lock_guard<std::mutex> storeGuard(m_storeMutex);
    {
        const std::lock_guard<std::mutex> guard(m_pendingMutex);
        if (m_shared || m_closed)
            return false;
        auto &buckets = m_pending.buckets;
        for (auto it = buckets.begin(); it != buckets.end();)
            it = it->first.second == type ? buckets.erase(it) : std::next(it);
        m_pending.resets[static_cast<std::size_t>(type)] = second;
    }
    commitLocked();
    return true;
}

std::int64_t Ledger::lastReset(int type)
{
    const std::lock_guard<std::mutex> storeGuard(m_storeMutex);
    {
        const std::lock_guard<std::mutex> guard(m_pendingMutex);
        if (const auto &pending = m_pending.resets[static_cast<std::size_t>(type)])
            return *pending;
    }
    std::int64_t at = m_begunAt;
    (void)m_store.lastReset(type, at);
    return at;
}

std::string Ledger::problem()
{
    const std::lock_guard<std::mutex> guard(m_storeMutex);
    return m_store.problem();
}

void Ledger::close()
{
    const std::lock_guard<std::mutex> guard(m_storeMutex);
    if (m_closed)
        return;
    if (!m_store.isRemoved()) // what somebody has deleted does not come back for a farewell
        commitLocked();
    m_closed = true;
    m_store.close();
}

void Ledger::abandon()
{
    m_store.abandon(); // the only thread of a forked child; the locks may never be free again
}

} // namespace velq
