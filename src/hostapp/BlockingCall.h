#pragma once

#include <QObject>

#include <functional>
#include <thread>

//! A call of the SDK that takes its time (connecting, disconnecting) without stopping the user: on
//! a thread of its own, one at a time. GUI thread.
class BlockingCall : public QObject
{
    Q_OBJECT
public:
    //! \a call blocks for a bounded time. \a failure is the result when there is no thread for it.
    BlockingCall(std::function<int()> call, int failure, QObject *parent = nullptr);
    //! Waits for a call that is running and drops its result.
    ~BlockingCall() override;
    //! Starts a call. False, and nothing happens, while one is running.
    [[nodiscard]] bool request();

signals:
    void started();
    //! Queued after started(), whatever came of it.
    void finished(int result);

private:
    void run();
    void finish(int result);

    const std::function<int()> m_call;
    const int m_failure;
    std::thread m_thread;
    bool m_running = false;
};
