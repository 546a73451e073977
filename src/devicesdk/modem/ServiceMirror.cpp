#include "modem/ServiceMirror.h"

#include <algorithm>
#include <set>
#include <utility>

namespace velq {

namespace {

constexpr const char *kProperties = "org.freedesktop.DBus.Properties";
constexpr const char *kBusName = "org.freedesktop.DBus";
constexpr const char *kBusPath = "/org/freedesktop/DBus";
constexpr std::size_t kMostOutstanding = 32; // a bus permits 128 for all of a process
constexpr unsigned kMostDoublings = 8;
constexpr BusClock::time_point kNever = BusClock::time_point::max();

std::uint64_t microseconds(std::chrono::milliseconds time)
{
    return static_cast<std::uint64_t>(std::chrono::microseconds(time).count());
}

std::string textOrEmpty(const char *text)
{
    return text ? text : "";
}

} // namespace

ServiceMirror::ServiceMirror(const ServiceRules &rules, const MirrorTimes &times)
    : m_rules(rules)
    , m_times(times)
{
}

ServiceMirror::~ServiceMirror()
{
    dropAll();
}

template <void (ServiceMirror::*Handler)(sd_bus_message *)>
int ServiceMirror::dispatch(sd_bus_message *message, void *self, sd_bus_error *) noexcept
{
    auto *mirror = static_cast<ServiceMirror *>(self);
    try {
        (mirror->*Handler)(message);
    } catch (...) { // out of memory: nothing may pass through the C code that called
        mirror->m_failed = true;
    }
    return 0;
}

int ServiceMirror::dispatchAnswer(sd_bus_message *message, void *data, sd_bus_error *) noexcept
{
    auto *call = static_cast<Call *>(data);
    ServiceMirror *mirror = call->mirror;
    try {
        mirror->onAnswer(*call, message);
    } catch (...) {
        mirror->m_failed = true;
    }
    return 0;
}

bool ServiceMirror::attach(sd_bus *bus)
{
    m_bus = bus;
    const std::string ownerRule = std::string("type='signal',sender='") + kBusName
        + "',member='NameOwnerChanged',arg0='" + m_rules.name + "'";
    return listen(ownerRule, dispatch<&ServiceMirror::onOwnerChange>) && listenToService()
        && askForOwner();
}

bool ServiceMirror::listen(const std::string &rule, sd_bus_message_handler_t handler)
{
    return sd_bus_add_match_async(m_bus, nullptr, rule.c_str(), handler, nullptr, this) >= 0;
}

bool ServiceMirror::listenToService()
{
    const std::string fromService
        = std::string("type='signal',sender='") + m_rules.name + "',interface='";
    for (const char *interface : m_rules.interfaces) {
        if (!interface)
            break;
        const std::string changes = "',member='PropertiesChanged',arg0='";
        if (!listen(fromService + kProperties + changes + interface + "'",
                    dispatch<&ServiceMirror::onPropertiesChanged>))
            return false;
    }
    return m_rules.rootInterface != std::string(kObjectManager)
        || listen(fromService + kObjectManager + "',path='" + m_rules.rootPath + "'",
                  dispatch<&ServiceMirror::onObjectsChanged>);
}

bool ServiceMirror::askForOwner()
{
    sd_bus_message *message = nullptr;
    const bool sent = sd_bus_message_new_method_call(m_bus, &message, kBusName, kBusPath, kBusName,
                                                     "GetNameOwner")
            >= 0
        && sd_bus_message_append_basic(message, 's', m_rules.name) >= 0
        && sd_bus_call_async(m_bus, nullptr, message, dispatch<&ServiceMirror::onOwner>, this,
                             microseconds(m_times.call))
            >= 0;
    (void)sd_bus_message_unref(message);
    return sent;
}

void ServiceMirror::onOwnerChange(sd_bus_message *message)
{
    const auto change = readOwnerChange(message);
    if (change && change->name == m_rules.name)
        setOwner(change->owner);
}

void ServiceMirror::onOwner(sd_bus_message *message)
{
    const auto owner = readName(message);
    if (owner && !sd_bus_message_is_method_error(message, nullptr))
        setOwner(*owner);
    else // it has no owner, or there is no sense in this bus
        m_failed = !sd_bus_message_is_method_error(message, SD_BUS_ERROR_NAME_HAS_NO_OWNER);
}

void ServiceMirror::setOwner(const std::string &owner)
{
    if (owner == m_owner)
        return;
    dropAll();
    m_owner = owner;
    m_changed = true;
    if (!m_owner.empty())
        update();
}

void ServiceMirror::dropAll()
{
    while (!m_calls.empty())
        forget(m_calls.begin());
}

void ServiceMirror::forget(std::map<ObjectKey, Call>::iterator call)
{
    if (call->second.slot) {
        (void)sd_bus_slot_unref(call->second.slot); // its answer is not delivered any more
        --m_outstanding;
    }
    m_changed = m_objects.erase(call->first) > 0 || m_changed;
    m_calls.erase(call);
}

bool ServiceMirror::isFromService(sd_bus_message *message) const
{
    return !m_owner.empty() && textOrEmpty(sd_bus_message_get_sender(message)) == m_owner;
}

void ServiceMirror::onPropertiesChanged(sd_bus_message *message)
{
    const auto change = isFromService(message) ? readChange(message) : std::nullopt;
    if (!change)
        return;
    const ObjectKey key(textOrEmpty(sd_bus_message_get_path(message)), change->interface);
    merge(key, change->values);
    if (change->incomplete)
        askAgain(key);
    update();
}

void ServiceMirror::merge(const ObjectKey &key, const PropertyMap &values)
{
    const auto object = m_objects.find(key);
    if (object == m_objects.end())
        return; // the answer that is still to come says the same, or something newer
    for (const auto &[name, value] : values) {
        const auto old = object->second.find(name);
        if (old != object->second.end() && old->second == value)
            continue;
        object->second[name] = value;
        m_changed = true;
    }
}

void ServiceMirror::askAgain(const ObjectKey &key)
{
    const auto call = m_calls.find(key);
    if (call != m_calls.end())
        call->second.askAt = std::min(call->second.askAt, BusClock::now());
}

void ServiceMirror::onObjectsChanged(sd_bus_message *message)
{
    const auto root = m_objects.find({ m_rules.rootPath, m_rules.rootInterface });
    if (!isFromService(message) || root == m_objects.end())
        return;
    std::vector<std::string> paths = listOf(root->second, kModems);
    if (sd_bus_message_is_signal(message, kObjectManager, "InterfacesAdded")) {
        const auto path = readAdded(message, kModemInterface);
        if (!path || paths.size() >= kListLimit
            || std::find(paths.begin(), paths.end(), *path) != paths.end())
            return;
        paths.push_back(*path);
    } else {
        const auto path = readRemoved(message, kModemInterface);
        const auto gone = path ? std::find(paths.begin(), paths.end(), *path) : paths.end();
        if (gone == paths.end())
            return;
        paths.erase(gone);
    }
    merge(root->first, { { kModems, std::move(paths) } });
    update();
}

void ServiceMirror::update()
{
    const std::vector<ObjectKey> wanted = m_rules.objects(m_objects);
    const std::set<ObjectKey> keys(wanted.begin(), wanted.end());
    for (auto call = m_calls.begin(); call != m_calls.end();) {
        const auto here = call++;
        if (keys.count(here->first) == 0)
            forget(here);
    }
    for (const ObjectKey &key : keys) {
        const auto [call, isNew] = m_calls.try_emplace(key);
        if (isNew) {
            call->second.mirror = this;
            call->second.key = &call->first;
            call->second.askAt = BusClock::now();
        } else if (call->second.askAt == kNever && isAging(key)) {
            call->second.askAt = BusClock::now() + m_times.refresh;
        }
    }
}

bool ServiceMirror::isAging(const ObjectKey &key) const
{
    const auto object = m_objects.find(key);
    return object != m_objects.end() && m_rules.isAging(key, object->second);
}

void ServiceMirror::work()
{
    for (auto &entry : m_calls) {
        Call &call = entry.second;
        if (m_outstanding < kMostOutstanding && !call.slot && call.askAt <= BusClock::now())
            ask(call);
    }
}

BusClock::time_point ServiceMirror::nextWork() const
{
    BusClock::time_point next = kNever;
    for (const auto &entry : m_calls) {
        if (!entry.second.slot)
            next = std::min(next, entry.second.askAt);
    }
    return m_outstanding < kMostOutstanding ? next : kNever; // an answer makes room
}

void ServiceMirror::ask(Call &call)
{
    const auto &[path, interface] = *call.key;
    const bool isList = interface == kObjectManager;
    sd_bus_message *message = nullptr;
    const bool sent = sd_bus_message_new_method_call(m_bus, &message, m_owner.c_str(), path.c_str(),
                                                     isList ? kObjectManager : kProperties,
                                                     isList ? "GetManagedObjects" : "GetAll")
            >= 0
        && (isList || sd_bus_message_append_basic(message, 's', interface.c_str()) >= 0)
        && sd_bus_call_async(m_bus, &call.slot, message, dispatchAnswer, &call,
                             microseconds(m_times.call))
            >= 0;
    (void)sd_bus_message_unref(message);
    if (sent)
        ++m_outstanding;
    call.askAt = sent ? kNever : BusClock::now() + m_times.lastRetry; // such as for a wrong path
}

void ServiceMirror::onAnswer(Call &call, sd_bus_message *message)
{
    call.slot = sd_bus_slot_unref(call.slot);
    --m_outstanding;
    std::optional<PropertyMap> values;
    if (sd_bus_message_is_method_error(message, nullptr)) {
        // asked again below
    } else if (call.key->second != kObjectManager) {
        values = readProperties(message);
    } else if (auto paths = readManaged(message, kModemInterface)) {
        values = PropertyMap { { kModems, std::move(*paths) } };
    }
    if (!values) {
        const unsigned doublings = std::min(call.failures++, kMostDoublings);
        call.askAt
            = BusClock::now() + std::min(m_times.lastRetry, m_times.firstRetry * (1U << doublings));
        return;
    }
    call.failures = 0;
    const auto old = m_objects.find(*call.key);
    if (old == m_objects.end() || old->second != *values) {
        m_objects[*call.key] = std::move(*values);
        m_changed = true;
    }
    update(); // also when the answer is the same: figures that age are asked for again
}

bool ServiceMirror::takeChanged()
{
    return std::exchange(m_changed, false);
}

} // namespace velq
