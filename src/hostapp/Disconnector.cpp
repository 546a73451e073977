#include "Disconnector.h"

#include <host/velq_extension.h>

#include <QMetaObject>

#include <system_error>
#include <utility>

Disconnector::Disconnector(std::function<int()> disconnect, QObject *parent)
    : QObject(parent)
    , m_disconnect(std::move(disconnect))
{
}

Disconnector::~Disconnector()
{
    if (m_thread.joinable())
        m_thread.join();
}

bool Disconnector::request()
{
    if (m_running)
        return false;
    m_running = true;
    emit started();
    run();
    return true;
}

// The object outlives the thread, and what it has queued goes with the object.
void Disconnector::run()
{
    const auto answer = [this](int result) {
        QMetaObject::invokeMethod(
            this, [this, result] { finish(result); }, Qt::QueuedConnection);
    };
    try {
        m_thread = std::thread([this, answer] { answer(m_disconnect()); });
    } catch (const std::system_error &) { // no more threads
        answer(VELQ_DISCONNECT_FAILED);
    }
}

void Disconnector::finish(int result)
{
    if (m_thread.joinable())
        m_thread.join(); // it has nothing left to do
    m_running = false;
    emit finished(result);
}
