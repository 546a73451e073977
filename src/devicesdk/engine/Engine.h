#pragma once

#include "accounting/Accountant.h"
#include "calendar/LocalDays.h"
#include "counters/LinkSource.h"
#include "engine/CallbackList.h"
#include "engine/Clock.h"
#include "engine/Report.h"
#include "store/Ledger.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace velq {

//! Seconds between two commits. While there is little to write (see Changes::isUrgent()) a commit
//! may wait longer, which spares disk and battery. That is what a power cut can lose at most. A
//! killed process loses no byte.
constexpr int kCommitSeconds = 5;
constexpr int kLongestWaitSeconds = 60;
//! Between two looks at the system's time zone.
constexpr int kZoneSeconds = 30;
static_assert(kZoneSeconds % kCommitSeconds == 0, "it is looked at beside the commits");
//! How long hours are kept without another policy; days are kept for ever.
constexpr int kKeptDays = 2 * 365;
constexpr int kLeastKeptDays = 7;

/*! What an engine works with. */
struct EngineParts
{
    std::unique_ptr<LinkSource> source;
    //! What the buses say; may be empty, or answer null. Does not block.
    std::function<std::shared_ptr<const NetworkFacts>()> facts;
    StoreOptions store;
    std::string boot; //!< the kernel's boot id
    std::optional<std::int64_t> begunAt; //!< the last reset without a store; empty: now
    Clock clock;
};

/*!
 * The statistics service: samples a counter source, keeps live figures, books into the ledger,
 * answers reports and tells the callbacks. tick() belongs to one thread; the rest to any.
 */
class Engine
{
public:
    explicit Engine(EngineParts parts);

    //! Reads the source and books what flowed. Any thread.
    void sample();
    //! The counted link was disconnected: the live figures end now.
    void noteDisconnect();
    //! Connecting was asked for.
    void noteConnect();
    //! The interface that a connection would use: of the device that the user names, else of the
    //! one that is or was used last. Empty when there was none yet.
    [[nodiscard]] std::string interfaceToConnect();
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
    //! With everything in it that the looks until now have found.
    [[nodiscard]] Ledger &ledger();
    [[nodiscard]] LiveFigures live() const;
    //! Kinds as in velq.h. False for an unknown one or a store that cannot be read.
    [[nodiscard]] bool report(int kind, int type, Report &report);
    //! The sums of both types from the hour of \a key until now.
    [[nodiscard]] bool history(std::uint64_t key, Report &report);
    [[nodiscard]] bool reset(int type);
    //! Counts only the device with this key or interface name, also after a restart; empty: what
    //! carries the traffic. False when another process counts.
    [[nodiscard]] bool useDevice(const std::string &device);
    //! What useDevice() has stored.
    [[nodiscard]] std::string usedDevice();
    //! What the host or the environment names; comes before what is stored.
    void nameDevice(const std::string &device);
    [[nodiscard]] std::vector<PresentDevice> presentDevices() const;
    /*!
     * Takes the operator's figure over: the sum of \a type in the current \a kind of period becomes
     * \a download and \a upload. False for a kind without a period, or when another process counts.
     */
    [[nodiscard]] bool correct(int kind, int type, std::int64_t download, std::int64_t upload);
    [[nodiscard]] DaySpan periodOf(int kind) const;
    //! How long hours are kept; 0: for ever. A step of the clock may need those of some days.
    void setKeptDays(int days)
    {
        m_keptDays = days > 0 ? std::max(days, kLeastKeptDays) : 0;
    }
    //! Where the weekly and the monthly report begin; valid.
    void setPeriodStart(const PeriodStart &start)
    {
        m_periodStart = start;
    }

private:
    [[nodiscard]] bool periodReport(int kind, int type, Report &report);
    [[nodiscard]] Report liveReport(int type) const;
    [[nodiscard]] std::array<char, kEventSize> liveEvent() const;
    [[nodiscard]] std::int64_t now() const;
    [[nodiscard]] Moment moment() const;
    void sampleLocked();
    //! Books what waits since the latest booking.
    void settle();
    void settleLocked();
    void take(const LinkNews &news);
    //! Whether what was found until the latest look belongs to other rows than what is found now.
    [[nodiscard]] bool isElsewhere(const Moment &moment) const;
    //! After a look that was not finished: goes on from where the books end, if those are stored.
    [[nodiscard]] bool beginAnew();
    //! Goes on from marks of the store that this process did not know.
    void followStore(std::uint64_t takeovers);
    void commitIfDue();
    void thinOut();

    const Clock m_clock;
    mutable LocalDays m_localDays; // locks itself; used by the ledger
    std::mutex m_sampleMutex; // guards the source; taken before all others
    const std::unique_ptr<LinkSource> m_source;
    const std::function<std::shared_ptr<const NetworkFacts>()> m_facts;
    CallbackList m_callbacks;
    Ledger m_ledger;
    // The ticking thread's.
    std::int64_t m_ticks = 0;
    std::int64_t m_commitTick = 0; // of the latest commit
    Day m_thinnedOut = 0; // the day on which it was done last
    mutable std::mutex m_mutex; // guards the accountant; taken before the ledger's
    Accountant m_accountant;
    std::uint64_t m_takeovers = 0;
    int m_renewals = 0;
    std::optional<Moment> m_looked; // at the latest look
    std::atomic<bool> m_unfinished { false }; // a look, which was taken and is not in the books
    std::string m_named;
    std::atomic<int> m_keptDays { kKeptDays };
    std::atomic<PeriodStart> m_periodStart { PeriodStart {} };
};

} // namespace velq
