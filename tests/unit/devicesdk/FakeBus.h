#pragma once
// A system bus with NetworkManager on it, and sockets that only look like one; in this process.

#include <QTemporaryDir>

#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <vector>

struct sd_bus;
struct sd_bus_message;

/*! A Unix socket that DBUS_SYSTEM_BUS_ADDRESS names, served by a thread, one client at a time. */
class FakeSocket
{
public:
    FakeSocket();
    virtual ~FakeSocket();
    FakeSocket(const FakeSocket &) = delete;
    FakeSocket &operator=(const FakeSocket &) = delete;

    //! Listens and serves, also after stop(). The most derived class stops in its destructor.
    void start();
    void stop();

protected:
    //! Talks to a client until it leaves or isStopped(). Closes \a file.
    virtual void serve(int file) = 0;
    [[nodiscard]] bool isStopped() const
    {
        return m_stopped;
    }

private:
    void run();

    QTemporaryDir m_folder;
    int m_listener = -1;
    std::atomic<bool> m_stopped { false };
    std::thread m_thread;
};

/*! Sends some bytes to whoever connects, and then nothing. */
class DumbSocket : public FakeSocket
{
public:
    DumbSocket(std::string greeting, bool closes);
    ~DumbSocket() override;

protected:
    void serve(int file) override;

private:
    const std::string m_greeting;
    const bool m_closes;
};

/*! The server's side of a bus: lets a client in and has each message answered. */
class ServedBus : public FakeSocket
{
protected:
    void serve(int file) override;
    //! As a handler of sd-bus: 1 when \a message needs nothing more. Not called for the greeting.
    virtual int answer(sd_bus_message *message) = 0;
    //! Between two messages, and at least every 20 ms.
    virtual void look(sd_bus *) { }
    //! Ends the connection, from answer() and look().
    void hangUp()
    {
        m_left = true;
    }

private:
    int greet(sd_bus_message *message);

    bool m_left = false;
};

constexpr unsigned kGone = 9999; //!< in place of a state: the device does not exist any more

struct FakeDevice
{
    std::string interface;
    std::string ipInterface;
    std::string modem {}; //!< the path of ModemManager's object
};

/*! The bus. Its public members are set before start(). */
class FakeBus : public ServedBus
{
public:
    FakeBus() = default;
    ~FakeBus() override;

    std::vector<FakeDevice> devices; //!< paths "/0", "/1"...
    //! One a look, the last one stays; the same for all devices and active connections.
    std::vector<unsigned> states;
    std::string port; //!< the network port of all modems
    std::map<std::string, std::string> errors; //!< method or property: the D-Bus error it gets
    std::set<std::string> silent; //!< methods and properties that get no answer
    std::string leavesAt; //!< the method at which the bus closes the connection

    //! Methods and properties in the order of their calls, with the device's path.
    [[nodiscard]] std::vector<std::string> calls() const;

protected:
    int answer(sd_bus_message *call) override;

private:
    int answerProperty(sd_bus_message *call, const std::string &name);
    int answerByIpInterface(sd_bus_message *call) const;
    int answerDevices(sd_bus_message *call) const;
    int answerMethod(sd_bus_message *call, const std::string &name) const;

    mutable std::mutex m_mutex;
    std::vector<std::string> m_calls;
    std::size_t m_looks = 0;
};
