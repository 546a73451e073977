#pragma once

#include "calendar/Period.h"
#include "counters/CounterSource.h"
#include "engine/CallbackList.h"
#include "engine/Clock.h"
#include "engine/ConnectionTracker.h"
#include "engine/Report.h"
#include "store/Ledger.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>

namespace velq {

//! Seconds between two commits: what a killed process or a power cut can lose at most.
constexpr int kCommitSeconds = 5;

/*!
 * The statistics service: samples a counter source, keeps live figures, books into the ledger,
 * answers reports and tells the callbacks. tick() belongs to one thread; the rest to any.
 */
class Engine
{
public:
    Engine(std::unique_ptr<CounterSource> source, StoreOptions store, Clock clock);

    //! Reads the source and books what flowed. Any thread.
    void sample();
    //! The counted link was disconnected: the live figures end now.
    void noteDisconnect();
    //! One second's work: sample, commit every few seconds, call the callbacks.
    void tick();
    //! Commits and closes the store. Answers go on from memory.
    void close();
    //! In a forked child: lets go of what belongs to the parent.
    void abandon();

    [[nodiscard]] CallbackList &callbacks()
    {
        return m_callbacks;
    }
    [[nodiscard]] Ledger &ledger()
    {
        return m_ledger;
    }
    [[nodiscard]] LiveFigures live() const;
    //! Kinds as in velq.h. False for an unknown one or a store that cannot be read.
    [[nodiscard]] bool report(int kind, int type, Report &report);
    //! The sums of both types from the hour of \a key until now.
    [[nodiscard]] bool history(std::uint64_t key, Report &report);
    [[nodiscard]] bool reset(int type);
    //! Where the weekly and the monthly report begin; valid.
    void setPeriodStart(const PeriodStart &start)
    {
        m_periodStart = start;
    }

private:
    [[nodiscard]] bool periodReport(int kind, int type, Report &report);
    [[nodiscard]] Report liveReport(int type) const;
    [[nodiscard]] std::int64_t now() const;
    void sampleLocked();
    void book(const Booking &booking);

    const Clock m_clock;
    std::mutex m_sampleMutex; // guards the source; taken before all others
    const std::unique_ptr<CounterSource> m_source;
    CallbackList m_callbacks;
    Ledger m_ledger;
    int m_ticksToCommit = kCommitSeconds; // the ticking thread's
    mutable std::mutex m_mutex; // guards the tracker; taken before the ledger's
    ConnectionTracker m_tracker;
    std::atomic<PeriodStart> m_periodStart { PeriodStart {} };
};

} // namespace velq
