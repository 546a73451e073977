#include "modem/BusConnection.h"

#include <systemd/sd-bus.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace velq {

namespace {

constexpr const char *kNoAnswer = "timeout";
constexpr const char *kProperties = "org.freedesktop.DBus.Properties";

int keepReply(sd_bus_message *message, void *target, sd_bus_error *)
{
    *static_cast<sd_bus_message **>(target) = sd_bus_message_ref(message);
    return 0;
}

sd_bus_message *newCall(sd_bus *bus, const char *service, const std::string &path,
                        const char *interface, const char *method)
{
    sd_bus_message *message = nullptr;
    const bool made
        = sd_bus_message_new_method_call(bus, &message, service, path.c_str(), interface, method)
            >= 0
        && sd_bus_message_set_auto_start(message, 0) >= 0;
    return made ? message : sd_bus_message_unref(message);
}

//! \a message, or null, in which case it has been given back.
sd_bus_message *append(sd_bus_message *message, std::initializer_list<const char *> arguments,
                       char type)
{
    for (const char *argument : arguments) {
        if (message && sd_bus_message_append_basic(message, type, argument) < 0)
            message = sd_bus_message_unref(message);
    }
    return message;
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
    char type = 0;
    const char *contents = nullptr;
    if (!m_error.empty() || sd_bus_message_peek_type(m_message.get(), &type, &contents) <= 0
        || type != 'v')
        return false;
    const char *text = nullptr;
    const char *asked = std::strcmp(contents, "o") == 0 ? "o" : "s";
    if (sd_bus_message_read(m_message.get(), "v", asked, &text) <= 0)
        return false;
    value = text;
    return true;
}

bool BusReply::readVariant(std::uint32_t &value) const
{
    return m_error.empty() && sd_bus_message_read(m_message.get(), "v", "u", &value) > 0;
}

std::optional<PropertyMap> BusReply::readProperties() const
{
    return m_error.empty() ? velq::readProperties(m_message.get()) : std::nullopt;
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
                             std::initializer_list<const char *> arguments, char type)
{
    return send(append(newCall(m_bus, m_service, path, interface, method), arguments, type));
}

BusReply BusConnection::property(const std::string &path, const char *interface, const char *name)
{
    return call(path, kProperties, "Get", { interface, name });
}

BusReply BusConnection::properties(const char *service, const std::string &path,
                                   const char *interface)
{
    return send(append(newCall(m_bus, service, path, kProperties, "GetAll"), { interface }, 's'));
}

BusReply BusConnection::send(sd_bus_message *message)
{
    // Not sd_bus_call(): it waits without a bound of ours until the bus has let us in.
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
