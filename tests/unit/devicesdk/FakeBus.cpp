#include "FakeBus.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <systemd/sd-bus.h>
#include <unistd.h>

#include <algorithm>
#include <utility>

namespace {

constexpr int kLookMs = 20;

bool isReadable(int file)
{
    pollfd poller { file, POLLIN, 0 };
    return poll(&poller, 1, kLookMs) > 0;
}

} // namespace

FakeSocket::FakeSocket() = default;

FakeSocket::~FakeSocket()
{
    stop();
}

void FakeSocket::start()
{
    const QByteArray path = m_folder.filePath("bus").toUtf8();
    sockaddr_un address {};
    address.sun_family = AF_UNIX;
    if (path.size() >= int(sizeof address.sun_path))
        qFatal("the temporary folder's name is too long for a socket");
    std::copy(path.begin(), path.end(), address.sun_path);
    (void)unlink(path.constData()); // of a start before
    m_stopped = false;
    m_listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (bind(m_listener, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0
        || listen(m_listener, 4) != 0)
        qFatal("cannot listen");
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=" + path);
    m_thread = std::thread([this] { run(); });
}

void FakeSocket::stop()
{
    m_stopped = true;
    if (m_thread.joinable())
        m_thread.join();
    if (m_listener >= 0)
        (void)close(m_listener);
    m_listener = -1;
}

void FakeSocket::run()
{
    while (!m_stopped) {
        if (isReadable(m_listener))
            serve(accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    }
}

DumbSocket::DumbSocket(std::string greeting, bool closes)
    : m_greeting(std::move(greeting))
    , m_closes(closes)
{
    start();
}

DumbSocket::~DumbSocket()
{
    stop();
}

void DumbSocket::serve(int file)
{
    (void)send(file, m_greeting.data(), m_greeting.size(), MSG_NOSIGNAL);
    while (!m_closes && !isStopped())
        (void)poll(nullptr, 0, kLookMs);
    (void)close(file);
}

int ServedBus::greet(sd_bus_message *message)
{
    if (sd_bus_message_is_method_call(message, "org.freedesktop.DBus", "Hello"))
        return sd_bus_reply_method_return(message, "s", ":1.1");
    return answer(message);
}

void ServedBus::serve(int file)
{
    sd_bus *bus = nullptr;
    sd_id128_t id {};
    m_left = false;
    bool open = sd_id128_randomize(&id) >= 0 && sd_bus_new(&bus) >= 0
        && sd_bus_set_fd(bus, file, file) >= 0 && sd_bus_set_server(bus, 1, id) >= 0
        && sd_bus_add_filter(
               bus, nullptr,
               [](sd_bus_message *message, void *self, sd_bus_error *) {
                   return static_cast<ServedBus *>(self)->greet(message);
               },
               this)
            >= 0
        && sd_bus_start(bus) >= 0;
    while (open && !isStopped() && !m_left) {
        const int worked = sd_bus_process(bus, nullptr);
        open = worked >= 0 && sd_bus_is_open(bus) > 0;
        if (open)
            look(bus);
        if (open && worked == 0)
            (void)sd_bus_wait(bus, std::uint64_t(kLookMs) * 1000);
    }
    (void)sd_bus_close_unref(bus);
}

FakeBus::~FakeBus()
{
    stop();
}

std::vector<std::string> FakeBus::calls() const
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    return m_calls;
}

int FakeBus::answer(sd_bus_message *call)
{
    std::string name = sd_bus_message_get_member(call);
    const bool isProperty = name == "Get";
    const char *interface = nullptr;
    const char *property = nullptr;
    if (isProperty && sd_bus_message_read(call, "ss", &interface, &property) > 0)
        name = property;
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        const std::string path = sd_bus_message_get_path(call);
        m_calls.push_back(path.size() == 2 ? name + ' ' + path : name);
    }
    if (name == leavesAt)
        hangUp();
    if (name == leavesAt || silent.count(name) > 0 || sd_bus_message_get_auto_start(call) > 0)
        return 1;
    const auto error = errors.find(name);
    if (error != errors.end())
        return sd_bus_reply_method_errorf(call, error->second.c_str(), "refused by the test");
    return isProperty ? answerProperty(call, name) : answerMethod(call, name);
}

int FakeBus::answerMethod(sd_bus_message *call, const std::string &name) const
{
    if (name == "GetDeviceByIpIface")
        return answerByIpInterface(call);
    if (name == "GetDevices")
        return answerDevices(call);
    if (name == "ActivateConnection")
        return sd_bus_reply_method_return(call, "o", "/active");
    if (name == "GetAll")
        return sd_bus_reply_method_return(call, "a{sv}", 1, "Ports", "a(su)", 1, port.c_str(), 2U);
    return sd_bus_reply_method_return(call, "");
}

int FakeBus::answerProperty(sd_bus_message *call, const std::string &name)
{
    if (name == "State") {
        const unsigned state = states[std::min(m_looks++, states.size() - 1)];
        return state == kGone
            ? sd_bus_reply_method_errorf(call, SD_BUS_ERROR_UNKNOWN_OBJECT, "gone")
            : sd_bus_reply_method_return(call, "v", "u", state);
    }
    if (name == "ActiveConnection")
        return sd_bus_reply_method_return(call, "v", "o", "/active");
    const auto number = static_cast<std::size_t>(sd_bus_message_get_path(call)[1] - '0');
    const FakeDevice &device = devices.at(number);
    return sd_bus_reply_method_return(
        call, "v", "s", name == "Udi" ? device.modem.c_str() : device.interface.c_str());
}

int FakeBus::answerByIpInterface(sd_bus_message *call) const
{
    const char *wanted = "";
    (void)sd_bus_message_read(call, "s", &wanted);
    for (std::size_t i = 0; i < devices.size(); ++i) {
        if (devices[i].ipInterface == wanted)
            return sd_bus_reply_method_return(call, "o", ("/" + std::to_string(i)).c_str());
    }
    return sd_bus_reply_method_errorf(call, "org.freedesktop.NetworkManager.UnknownDevice", "none");
}

int FakeBus::answerDevices(sd_bus_message *call) const
{
    sd_bus_message *reply = nullptr;
    int code = sd_bus_message_new_method_return(call, &reply);
    if (code >= 0)
        code = sd_bus_message_open_container(reply, 'a', "o");
    for (std::size_t i = 0; i < devices.size() && code >= 0; ++i)
        code = sd_bus_message_append(reply, "o", ("/" + std::to_string(i)).c_str());
    if (code >= 0)
        code = sd_bus_message_close_container(reply);
    if (code >= 0)
        code = sd_bus_send(nullptr, reply, nullptr);
    (void)sd_bus_message_unref(reply);
    return code;
}
