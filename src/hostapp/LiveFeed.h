#pragma once

#include <host/velq_extension.h>

#include <QObject>
#include <QString>

#include <optional>

//! The live figures of one moment, read together inside the SDK's callback. Bytes and seconds.
struct LiveSample
{
    bool connected = false;
    QString interfaceName; //!< empty while there is none
    quint64 upload = 0;
    quint64 download = 0;
    quint32 uploadSpeed = 0;
    quint32 downloadSpeed = 0;
    qint64 seconds = 0; //!< since the connection came up
    std::optional<VELQ_Counters> counters; //!< the kernel's, while an interface is counted

    //! Whether the live figures are what the kernel's counters say. False without counters.
    [[nodiscard]] bool agrees() const;
};

//! Turns the SDK's statistics events into a signal on the GUI thread. One object per process.
class LiveFeed : public QObject
{
    Q_OBJECT
public:
    explicit LiveFeed(QObject *parent = nullptr);
    ~LiveFeed() override;
    //! Starts the events. False when the SDK refuses.
    bool start();
    //! The name of the counted interface; empty while there is none.
    [[nodiscard]] static QString interfaceName();
    //! What is wrong with the store, in English; empty while all is well.
    [[nodiscard]] static QString storeProblem();

signals:
    //! Once a second, queued from the SDK's thread.
    void sampled(const LiveSample &sample);

private:
    static int onEvent(int event, void *data);
    bool m_started = false;
};
