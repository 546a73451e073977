#pragma once

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <thread>
#include <vector>

namespace velq {

/*! The registered callbacks. They run on one thread, outside every lock. */
class CallbackList
{
public:
    using Callback = int (*)(int event, void *data);

    //! Adding one that is there already changes nothing.
    void add(Callback callback);
    /*!
     * False when it is not there. Afterwards it is not running and does not start; a running call
     * is waited for, unless the caller is that call.
     */
    [[nodiscard]] bool remove(Callback callback);
    //! Whether the caller is a callback that runs at the moment.
    [[nodiscard]] bool isRunningHere();
    //! Calls every callback that is still there when its turn comes. From one thread at a time.
    void notify(int event, void *data);

private:
    [[nodiscard]] bool contains(Callback callback) const;

    std::mutex m_mutex;
    std::condition_variable m_returned;
    std::vector<Callback> m_callbacks;
    Callback m_running = nullptr;
    std::uint64_t m_runs = 0; // grows with each call, so that a wait ends with the call it is for
    std::thread::id m_runner;
};

} // namespace velq
