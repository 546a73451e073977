#pragma once

#include <QObject>

#include <functional>
#include <thread>

//! Ends the connection without stopping the user: the SDK's blocking call runs on a thread of its
//! own, one at a time. GUI thread.
class Disconnector : public QObject
{
    Q_OBJECT
public:
    //! \a disconnect blocks for a bounded time and answers a VELQ_DISCONNECT_ value.
    explicit Disconnector(std::function<int()> disconnect, QObject *parent = nullptr);
    //! Waits for a call that is running and drops its result.
    ~Disconnector() override;
    //! Starts a call. False, and nothing happens, while one is running.
    [[nodiscard]] bool request();

signals:
    void started();
    //! Queued after started(), whatever came of it.
    void finished(int result);

private:
    void run();
    void finish(int result);

    const std::function<int()> m_disconnect;
    std::thread m_thread;
    bool m_running = false;
};
