#include "engine/CallbackList.h"

#include <algorithm>

namespace velq {

bool CallbackList::contains(Callback callback) const
{
    return std::find(m_callbacks.begin(), m_callbacks.end(), callback) != m_callbacks.end();
}

void CallbackList::add(Callback callback)
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    if (!contains(callback))
        m_callbacks.push_back(callback);
}

bool CallbackList::remove(Callback callback)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    const auto it = std::find(m_callbacks.begin(), m_callbacks.end(), callback);
    if (it == m_callbacks.end())
        return false;
    m_callbacks.erase(it);
    if (m_runner == std::this_thread::get_id())
        return true;
    const std::uint64_t run = m_runs;
    m_returned.wait(lock, [&] { return m_running != callback || m_runs != run; });
    return true;
}

bool CallbackList::isRunningHere()
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    return m_runner == std::this_thread::get_id();
}

void CallbackList::notify(int event, void *data)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    const std::vector<Callback> callbacks = m_callbacks;
    for (const Callback callback : callbacks) {
        if (!contains(callback)) // removed by an earlier one, or meanwhile
            continue;
        m_running = callback;
        m_runner = std::this_thread::get_id();
        ++m_runs;
        lock.unlock();
        try {
            (void)callback(event, data);
        } catch (...) { // a callback of C++ code; there is nobody to tell
        }
        lock.lock();
        m_running = nullptr;
        m_runner = {};
        m_returned.notify_all();
    }
}

} // namespace velq
