#include "FakeServices.h"

#include <systemd/sd-bus.h>

#include <cstring>

namespace {

constexpr const char *kBus = "org.freedesktop.DBus";
constexpr const char *kBusPath = "/org/freedesktop/DBus";
constexpr const char *kProperties = "org.freedesktop.DBus.Properties";
constexpr const char *kManager = "org.freedesktop.DBus.ObjectManager";
constexpr const char *kModemManagerPath = "/org/freedesktop/ModemManager1";

int appendProperties(sd_bus_message *message, const FakeProperties &properties)
{
    int code = sd_bus_message_open_container(message, 'a', "{sv}");
    for (const auto &[name, value] : properties) {
        if (code >= 0)
            code = sd_bus_message_open_container(message, 'e', "sv");
        if (code >= 0)
            code = sd_bus_message_append(message, "s", name.c_str());
        if (code >= 0)
            code = value(message);
        if (code >= 0)
            code = sd_bus_message_close_container(message);
    }
    return code >= 0 ? sd_bus_message_close_container(message) : code;
}

int appendObject(sd_bus_message *message, const FakeObject &object)
{
    int code = sd_bus_message_open_container(message, 'a', "{sa{sv}}");
    for (const auto &[interface, properties] : object) {
        if (code >= 0)
            code = sd_bus_message_open_container(message, 'e', "sa{sv}");
        if (code >= 0)
            code = sd_bus_message_append(message, "s", interface.c_str());
        if (code >= 0)
            code = appendProperties(message, properties);
        if (code >= 0)
            code = sd_bus_message_close_container(message);
    }
    return code >= 0 ? sd_bus_message_close_container(message) : code;
}

int appendNames(sd_bus_message *message, const std::vector<std::string> &names)
{
    int code = sd_bus_message_open_container(message, 'a', "s");
    for (const std::string &name : names)
        code = code >= 0 ? sd_bus_message_append(message, "s", name.c_str()) : code;
    return code >= 0 ? sd_bus_message_close_container(message) : code;
}

template <typename Append>
void sendSignal(sd_bus *bus, const std::string &sender, const std::string &path,
                const char *interface, const char *member, Append append)
{
    sd_bus_message *message = nullptr;
    if (sd_bus_message_new_signal(bus, &message, path.c_str(), interface, member) >= 0
        && sd_bus_message_set_sender(message, sender.c_str()) >= 0 && append(message) >= 0)
        (void)sd_bus_send(bus, message, nullptr);
    (void)sd_bus_message_unref(message);
}

template <typename Append>
int sendReply(sd_bus_message *call, Append append)
{
    sd_bus_message *reply = nullptr;
    int code = sd_bus_message_new_method_return(call, &reply);
    if (code >= 0)
        code = append(reply);
    if (code >= 0)
        code = sd_bus_send(nullptr, reply, nullptr);
    (void)sd_bus_message_unref(reply);
    return code < 0 ? code : 1;
}

template <typename Value>
std::vector<std::string> namesOf(const std::map<std::string, Value> &values)
{
    std::vector<std::string> names;
    for (const auto &entry : values)
        names.push_back(entry.first);
    return names;
}

} // namespace

FakeValue fakeText(const std::string &text, char type)
{
    return [text, type](sd_bus_message *message) {
        const char contents[] = { type, '\0' };
        return sd_bus_message_append(message, "v", contents, text.c_str());
    };
}

FakeValue fakeNumber(std::uint64_t number, char type)
{
    return [number, type](sd_bus_message *message) {
        const char contents[] = { type, '\0' };
        return type == 't' ? sd_bus_message_append(message, "v", contents, number)
                           : sd_bus_message_append(message, "v", contents, unsigned(number));
    };
}

FakeValue fakePaths(const std::vector<std::string> &paths)
{
    return [paths](sd_bus_message *message) {
        int code = sd_bus_message_open_container(message, 'v', "ao");
        if (code >= 0)
            code = sd_bus_message_open_container(message, 'a', "o");
        for (const std::string &path : paths)
            code = code >= 0 ? sd_bus_message_append(message, "o", path.c_str()) : code;
        if (code >= 0)
            code = sd_bus_message_close_container(message);
        return code >= 0 ? sd_bus_message_close_container(message) : code;
    };
}

FakeValue fakePorts(const std::vector<std::pair<std::string, unsigned>> &ports)
{
    return [ports](sd_bus_message *message) {
        int code = sd_bus_message_open_container(message, 'v', "a(su)");
        if (code >= 0)
            code = sd_bus_message_open_container(message, 'a', "(su)");
        for (const auto &[name, kind] : ports)
            code = code >= 0 ? sd_bus_message_append(message, "(su)", name.c_str(), kind) : code;
        if (code >= 0)
            code = sd_bus_message_close_container(message);
        return code >= 0 ? sd_bus_message_close_container(message) : code;
    };
}

FakeValue fakeStats(std::uint64_t received, std::uint64_t sent, unsigned seconds)
{
    return [=](sd_bus_message *message) {
        return sd_bus_message_append(message, "v", "a{sv}", 4, "rx-bytes", "t", received,
                                     "tx-bytes", "t", sent, "duration", "u", seconds, "attempts",
                                     "u", 1U);
    };
}

FakeServices::~FakeServices()
{
    stop();
}

void FakeServices::post(const Job &job)
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    m_jobs.push_back(job);
}

void FakeServices::look(sd_bus *bus)
{
    for (;;) {
        Job job;
        {
            const std::lock_guard<std::mutex> guard(m_mutex);
            if (m_jobs.empty())
                return;
            job = m_jobs.front();
            m_jobs.pop_front();
        }
        job(bus);
    }
}

void FakeServices::appear(const std::string &service)
{
    std::string owner;
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        owner = ":1." + std::to_string(++m_names);
        m_owners[service] = owner;
    }
    post([=](sd_bus *bus) {
        sendSignal(bus, kBus, kBusPath, kBus, "NameOwnerChanged", [&](sd_bus_message *message) {
            return sd_bus_message_append(message, "sss", service.c_str(), "", owner.c_str());
        });
    });
}

void FakeServices::vanish(const std::string &service)
{
    std::string owner;
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        owner = m_owners[service];
        m_owners.erase(service);
    }
    post([=](sd_bus *bus) {
        sendSignal(bus, kBus, kBusPath, kBus, "NameOwnerChanged", [&](sd_bus_message *message) {
            return sd_bus_message_append(message, "sss", service.c_str(), owner.c_str(), "");
        });
    });
}

void FakeServices::setManner(Manner manner)
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    m_manner = manner;
}

void FakeServices::setObject(const std::string &path, const FakeObject &object)
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    m_objects[path] = object;
}

void FakeServices::addObject(const std::string &path, const FakeObject &object)
{
    setObject(path, object);
    post([=](sd_bus *bus) {
        sendSignal(bus, ownerOf(path), kModemManagerPath, kManager, "InterfacesAdded",
                   [&](sd_bus_message *message) {
                       const int code = sd_bus_message_append(message, "o", path.c_str());
                       return code < 0 ? code : appendObject(message, object);
                   });
    });
}

void FakeServices::removeObject(const std::string &path)
{
    FakeObject object;
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        object = m_objects[path];
        m_objects.erase(path);
    }
    post([=](sd_bus *bus) {
        sendSignal(bus, ownerOf(path), kModemManagerPath, kManager, "InterfacesRemoved",
                   [&](sd_bus_message *message) {
                       const int code = sd_bus_message_append(message, "o", path.c_str());
                       return code < 0 ? code : appendNames(message, namesOf(object));
                   });
    });
}

void FakeServices::changeSilently(const std::string &path, const std::string &interface,
                                  const FakeProperties &values)
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    for (const auto &[name, value] : values)
        m_objects[path][interface][name] = value;
}

void FakeServices::change(const std::string &path, const std::string &interface,
                          const FakeProperties &values, bool tellsValues)
{
    changeSilently(path, interface, values);
    postChange(ownerOf(path), path, interface, values, tellsValues);
}

void FakeServices::forge(const std::string &path, const std::string &interface,
                         const FakeProperties &values)
{
    postChange(":1.999", path, interface, values, true);
}

void FakeServices::postChange(const std::string &sender, const std::string &path,
                              const std::string &interface, const FakeProperties &values,
                              bool tellsValues)
{
    const FakeProperties told = tellsValues ? values : FakeProperties();
    const auto untold = tellsValues ? std::vector<std::string>() : namesOf(values);
    post([=](sd_bus *bus) {
        sendSignal(bus, sender, path, kProperties, "PropertiesChanged",
                   [&](sd_bus_message *message) {
                       int code = sd_bus_message_append(message, "s", interface.c_str());
                       if (code >= 0)
                           code = appendProperties(message, told);
                       return code < 0 ? code : appendNames(message, untold);
                   });
    });
}

void FakeServices::disconnectClient()
{
    post([this](sd_bus *) { hangUp(); });
}

int FakeServices::callCount() const
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    return m_calls;
}

int FakeServices::clientCount() const
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    return m_clients;
}

bool FakeServices::wasAskedToStartSomething() const
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    return m_startsSomething;
}

std::string FakeServices::ownerOf(const std::string &path) const
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    const bool isModems = path.rfind(kModemManagerPath, 0) == 0;
    const auto owner = m_owners.find(isModems ? kModemManager : kNetworkManager);
    return owner == m_owners.end() ? ":1.998" : owner->second;
}

int FakeServices::answer(sd_bus_message *message)
{
    const char *destination = sd_bus_message_get_destination(message);
    if (destination && std::strcmp(destination, kBus) == 0)
        return answerForBus(message);
    const std::string path = sd_bus_message_get_path(message);
    const std::string owner = ownerOf(path);
    const std::lock_guard<std::mutex> guard(m_mutex);
    // Only a call to a well-known name can start a service.
    m_startsSomething = m_startsSomething || !destination || destination[0] != ':';
    ++m_calls;
    if (!destination || owner != destination)
        return sd_bus_reply_method_errorf(message, SD_BUS_ERROR_SERVICE_UNKNOWN, "no such name");
    return answerForService(message);
}

int FakeServices::answerForBus(sd_bus_message *message)
{
    if (!sd_bus_message_is_method_call(message, kBus, "GetNameOwner"))
        return sd_bus_reply_method_return(message, ""); // AddMatch
    const char *name = "";
    (void)sd_bus_message_read(message, "s", &name);
    const std::lock_guard<std::mutex> guard(m_mutex);
    m_clients += std::strcmp(name, kModemManager) == 0 ? 1 : 0;
    const auto owner = m_owners.find(name);
    return owner == m_owners.end()
        ? sd_bus_reply_method_errorf(message, SD_BUS_ERROR_NAME_HAS_NO_OWNER, "no owner")
        : sd_bus_reply_method_return(message, "s", owner->second.c_str());
}

int FakeServices::answerForService(sd_bus_message *message)
{
    if (m_manner == Manner::Silent)
        return 1;
    if (m_manner == Manner::Nonsense)
        return sd_bus_reply_method_return(message, "a{us}i", 2, 7U, "State", 8U, "11", -3);
    if (m_manner == Manner::Refusing)
        return sd_bus_reply_method_errorf(message, SD_BUS_ERROR_ACCESS_DENIED, "not for you");
    return sd_bus_message_is_method_call(message, kManager, "GetManagedObjects")
        ? answerManaged(message)
        : answerAll(message);
}

int FakeServices::answerAll(sd_bus_message *message) const
{
    const char *interface = "";
    (void)sd_bus_message_read(message, "s", &interface);
    const auto object = m_objects.find(sd_bus_message_get_path(message));
    if (object == m_objects.end())
        return sd_bus_reply_method_errorf(message, SD_BUS_ERROR_UNKNOWN_OBJECT, "no object");
    const auto properties = object->second.find(interface);
    if (properties == object->second.end())
        return sd_bus_reply_method_errorf(message, SD_BUS_ERROR_UNKNOWN_INTERFACE, "no interface");
    return sendReply(message, [&](sd_bus_message *reply) {
        return appendProperties(reply, properties->second);
    });
}

int FakeServices::answerManaged(sd_bus_message *message) const
{
    return sendReply(message, [&](sd_bus_message *reply) {
        int code = sd_bus_message_open_container(reply, 'a', "{oa{sa{sv}}}");
        for (const auto &[path, object] : m_objects) {
            if (path.rfind(std::string(kModemManagerPath) + "/Modem/", 0) != 0 || code < 0)
                continue;
            code = sd_bus_message_open_container(reply, 'e', "oa{sa{sv}}");
            if (code >= 0)
                code = sd_bus_message_append(reply, "o", path.c_str());
            if (code >= 0)
                code = appendObject(reply, object);
            if (code >= 0)
                code = sd_bus_message_close_container(reply);
        }
        return code >= 0 ? sd_bus_message_close_container(reply) : code;
    });
}
