#pragma once
// A program that uses the SDK, as a test has it: started, asked, ended or killed; see
// fault_client.cpp.

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>

//! Bytes, of the kernel's counters or of today's report.
struct Usage
{
    quint64 download = 0;
    quint64 upload = 0;

    [[nodiscard]] Usage operator+(const Usage &other) const
    {
        return { download + other.download, upload + other.upload };
    }
    [[nodiscard]] Usage operator-(const Usage &other) const
    {
        return { download - other.download, upload - other.upload };
    }
    [[nodiscard]] bool operator==(const Usage &other) const
    {
        return download == other.download && upload == other.upload;
    }
};

struct ClientOptions
{
    QString folder; //!< of the store
    QString interface; //!< empty: what carries the traffic
    bool busy = false; //!< commits all the time, not only every five seconds
    QStringList launcher = {}; //!< a command that is given the program
};

class FaultClient
{
public:
    FaultClient() = default;
    ~FaultClient();
    FaultClient(const FaultClient &) = delete;
    FaultClient &operator=(const FaultClient &) = delete;

    void start(const ClientOptions &options);
    //! Waits for its first report, which is already current. False when there is none.
    [[nodiscard]] bool waitUntilReady(Usage &first);
    //! The line that it answers \a command with.
    [[nodiscard]] QByteArray ask(const QByteArray &command);
    //! Today's report after a look that has begun after this call.
    [[nodiscard]] Usage look();
    //! Without any chance for it to do something.
    void kill();
    //! In order; false when it has crashed or does not end.
    [[nodiscard]] bool end();

private:
    QProcess m_process;
};
