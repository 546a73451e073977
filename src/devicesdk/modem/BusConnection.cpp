#include "modem/BusConnection.h"

#include <systemd/sd-bus.h>

#include <algorithm>
#include <cerrno>

namespace velq {

namespace {

constexpr const char *kNoAnswer = "timeout";

int keepReply(sd_bus_message *message, void *target, sd_bus_error *)
{
    *static_cast<sd_bus_message **>(target) = sd_bus_message_ref(message);
    return 0;
}

} // namespace

BusReply::BusReply(sd_bus_message *message)
    : m_message(message)
{
    const sd_bus_error *error = message ? sd_bus_message_get_error(message) : nullptr;
    if (error)
        m_error = error->name ? error->name : "";
    else
        m_error = message ? "" : kNoAnswer;
}

void BusReply::Unref::operator()(sd_bus_message *message) const
{
    (void)sd_bus_message_unref(message);
}

bool BusReply::read(std::string &value) const
{
    const char *text = nullptr;
    if (!m_error.empty() || sd_bus_message_read(m_message.get(), "o", &text) <= 0)
        return false;
    value = text;
    return true;
}

bool BusReply::read(std::vector<std::string> &paths) const
{
    if (!m_error.empty() || sd_bus_message_enter_container(m_message.get(), 'a', "o") <= 0)
        return false;
    std::vector<std::string> found;
    const char *path = nullptr;
    while (sd_bus_message_read(m_message.get(), "o", &path) > 0)
        found.emplace_back(path);
    paths.swap(found);
    return true;
}

bool BusReply::readVariant(std::string &value) const
{
    const char *text = nullptr;
    if (!m_error.empty() || sd_bus_message_read(m_message.get(), "v", "s", &text) <= 0)
        return false;
    value = text;
    return true;
}

bool BusReply::readVariant(std::uint32_t &value) const
{
    return m_error.empty() && sd_bus_message_read(m_message.get(), "v", "u", &value) > 0;
}

BusConnection::BusConnection(const char *service, std::chrono::milliseconds time)
    : m_service(service)
    , m_end(std::chrono::steady_clock::now() + time)
{
}

BusConnection::~BusConnection()
{
    (void)sd_bus_close_unref(m_bus); // no flush: that would wait for ever for a bus that hangs
}

int BusConnection::open()
{
    return -std::min(0, sd_bus_open_system(&m_bus));
}

std::chrono::microseconds BusConnection::timeLeft() const
{
    const auto left = m_end - std::chrono::steady_clock::now();
    return std::max(std::chrono::microseconds(0),
                    std::chrono::duration_cast<std::chrono::microseconds>(left));
}

BusReply BusConnection::call(const std::string &path, const char *interface, const char *method,
                             std::initializer_list<const char *> arguments)
{
    // Not sd_bus_call(): it waits without a bound of ours until the bus has let us in.
    sd_bus_message *message = newCall(path, interface, method, arguments);
    sd_bus_message *reply = nullptr;
    sd_bus_slot *slot = nullptr;
    const auto time = static_cast<std::uint64_t>(timeLeft().count());
    if (message && time > 0
        && sd_bus_call_async(m_bus, &slot, message, keepReply, &reply, time) >= 0)
        (void)process(reply);
    (void)sd_bus_slot_unref(slot);
    (void)sd_bus_message_unref(message);
    return BusReply(reply);
}

BusReply BusConnection::property(const std::string &path, const char *interface, const char *name)
{
    return call(path, "org.freedesktop.DBus.Properties", "Get", { interface, name });
}

sd_bus_message *BusConnection::newCall(const std::string &path, const char *interface,
                                       const char *method,
                                       std::initializer_list<const char *> arguments)
{
    sd_bus_message *message = nullptr;
    int code = sd_bus_message_new_method_call(m_bus, &message, m_service, path.c_str(), interface,
                                              method);
    if (code >= 0)
        code = sd_bus_message_set_auto_start(message, 0);
    for (const char *argument : arguments) {
        if (code >= 0)
            code = sd_bus_message_append_basic(message, 's', argument);
    }
    return code >= 0 ? message : sd_bus_message_unref(message);
}

bool BusConnection::process(sd_bus_message *const &reply)
{
    while (!reply) {
        const int worked = sd_bus_process(m_bus, nullptr);
        if (worked < 0)
            return false;
        const auto left = static_cast<std::uint64_t>(timeLeft().count());
        if (left == 0)
            return false;
        const int waited = worked > 0 ? 0 : sd_bus_wait(m_bus, left);
        if (waited < 0 && waited != -EINTR)
            return false;
    }
    return true;
}

} // namespace velq
