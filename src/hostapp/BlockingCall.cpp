#include "BlockingCall.h"

#include <QMetaObject>

#include <system_error>
#include <utility>

BlockingCall::BlockingCall(std::function<int()> call, int failure, QObject *parent)
    : QObject(parent)
    , m_call(std::move(call))
    , m_failure(failure)
{
}

BlockingCall::~BlockingCall()
{
    if (m_thread.joinable())
        m_thread.join();
}

bool BlockingCall::request()
{
    if (m_running)
        return false;
    m_running = true;
    emit started();
    run();
    return true;
}

// The object outlives the thread, and what it has queued goes with the object.
void BlockingCall::run()
{
    const auto answer = [this](int result) {
        QMetaObject::invokeMethod(
            this, [this, result] { finish(result); }, Qt::QueuedConnection);
    };
    try {
        m_thread = std::thread([this, answer] { answer(m_call()); });
    } catch (const std::system_error &) { // no more threads
        answer(m_failure);
    }
}

void BlockingCall::finish(int result)
{
    if (m_thread.joinable())
        m_thread.join(); // it has nothing left to do
    m_running = false;
    emit finished(result);
}
