#include "modem/BusReplies.h"

#include "counters/InterfaceName.h"

#include <systemd/sd-bus.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>

namespace velq {

namespace {

constexpr std::uint32_t kNetPort = 2; // ModemManager's number for the kind of port

constexpr const char *kWanted[] = {
    "Bearers",
    "Connected",
    "DeviceIdentifier",
    "DeviceType",
    "Devices",
    "EquipmentIdentifier",
    "Imsi",
    "Interface",
    "IpInterface",
    "Model",
    "OperatorName",
    "Ports",
    "PrimaryConnection",
    "RegistrationState",
    "Sim",
    "SimIdentifier",
    "State",
    "Stats",
};

bool isWanted(const char *name)
{
    return std::any_of(std::begin(kWanted), std::end(kWanted),
                       [name](const char *wanted) { return std::strcmp(name, wanted) == 0; });
}

bool enter(sd_bus_message *message, char type, const char *contents)
{
    return sd_bus_message_enter_container(message, type, contents) > 0;
}

bool leave(sd_bus_message *message)
{
    return sd_bus_message_exit_container(message) >= 0;
}

//! Calls \a readEntry for each entry of an array; false when one cannot be read.
template <typename Entry>
bool readArray(sd_bus_message *message, const char *contents, Entry readEntry)
{
    if (!enter(message, 'a', contents))
        return false;
    for (;;) {
        const int end = sd_bus_message_at_end(message, 0);
        if (end != 0)
            return end > 0 && leave(message);
        if (!readEntry())
            return false;
    }
}

//! Calls \a readPair for each entry of a dictionary, inside the entry.
template <typename Pair>
bool readDictionary(sd_bus_message *message, const char *contents, Pair readPair)
{
    const std::string entry = std::string("{") + contents + "}";
    return readArray(message, entry.c_str(),
                     [&] { return enter(message, 'e', contents) && readPair() && leave(message); });
}

bool readBasic(sd_bus_message *message, char type, const char *&text)
{
    return sd_bus_message_read_basic(message, type, &text) > 0;
}

bool readText(sd_bus_message *message, char type, std::string &value)
{
    const char *text = nullptr;
    if (!readBasic(message, type, text))
        return false;
    value = std::strlen(text) <= kTextLimit ? text : "";
    return true;
}

template <typename T>
bool readNumber(sd_bus_message *message, char type, std::uint64_t &number)
{
    T value {};
    if (sd_bus_message_read_basic(message, type, &value) <= 0)
        return false;
    number = value > T {} ? static_cast<std::uint64_t>(value) : 0;
    return true;
}

bool readAnyNumber(sd_bus_message *message, char type, std::uint64_t &number)
{
    switch (type) {
    case 'b':
    case 'i':
        return readNumber<std::int32_t>(message, type, number);
    case 'u':
        return readNumber<std::uint32_t>(message, type, number);
    case 't':
        return readNumber<std::uint64_t>(message, type, number);
    default:
        return readNumber<std::int64_t>(message, type, number);
    }
}

bool readPaths(sd_bus_message *message, std::vector<std::string> &paths)
{
    return readArray(message, "o", [&] {
        std::string path;
        if (!readText(message, 'o', path))
            return false;
        if (!path.empty() && paths.size() < kListLimit)
            paths.push_back(std::move(path));
        return true;
    });
}

bool readNetPorts(sd_bus_message *message, std::vector<std::string> &names)
{
    return readArray(message, "(su)", [&] {
        std::string name;
        std::uint32_t kind = 0;
        if (!enter(message, 'r', "su") || !readText(message, 's', name)
            || sd_bus_message_read_basic(message, 'u', &kind) <= 0)
            return false;
        if (kind == kNetPort && isInterfaceName(name) && names.size() < kListLimit)
            names.push_back(std::move(name));
        return leave(message);
    });
}

bool readStats(sd_bus_message *message, PropertyValue &value);

//! Inside a variant. \a type is what it holds.
bool readContents(sd_bus_message *message, const std::string &type, PropertyValue &value)
{
    if (type == "s" || type == "o")
        return readText(message, type[0], value.emplace<std::string>());
    if (type.size() == 1 && std::strchr("bitux", type[0]))
        return readAnyNumber(message, type[0], value.emplace<std::uint64_t>());
    if (type == "ao")
        return readPaths(message, value.emplace<std::vector<std::string>>());
    if (type == "a(su)")
        return readNetPorts(message, value.emplace<std::vector<std::string>>());
    if (type == "a{sv}")
        return readStats(message, value);
    return sd_bus_message_skip(message, type.c_str()) >= 0;
}

bool readVariant(sd_bus_message *message, PropertyValue &value)
{
    char type = 0;
    const char *contents = nullptr;
    if (sd_bus_message_peek_type(message, &type, &contents) <= 0 || type != 'v')
        return false;
    const std::string held = contents; // what it points to goes when the variant is entered
    return enter(message, 'v', held.c_str()) && readContents(message, held, value)
        && leave(message);
}

bool readStats(sd_bus_message *message, PropertyValue &value)
{
    PropertyMap figures;
    const bool read = readDictionary(message, "sv", [&] {
        const char *name = nullptr;
        if (!readBasic(message, 's', name))
            return false;
        for (const char *known : { "rx-bytes", "tx-bytes", "duration" }) {
            char type = 0;
            const char *held = nullptr;
            // Not readVariant() for all: a dictionary in a dictionary would have no end.
            if (std::strcmp(name, known) == 0 && sd_bus_message_peek_type(message, &type, &held) > 0
                && type == 'v' && std::strlen(held) == 1)
                return readVariant(message, figures[known]);
        }
        return sd_bus_message_skip(message, "v") >= 0;
    });
    if (read && !figures.empty())
        value = TrafficStats { numberOf(figures, "rx-bytes"), numberOf(figures, "tx-bytes"),
                               numberOf(figures, "duration") };
    return read;
}

bool readMap(sd_bus_message *message, PropertyMap &properties)
{
    return readDictionary(message, "sv", [&] {
        const char *name = nullptr;
        if (!readBasic(message, 's', name))
            return false;
        if (!isWanted(name))
            return sd_bus_message_skip(message, "v") >= 0;
        PropertyValue value;
        const std::string key = name;
        const bool read = readVariant(message, value);
        properties[key] = std::move(value);
        return read;
    });
}

//! a{sa{sv}}: whether \a interface is one of them.
bool readInterfaces(sd_bus_message *message, const std::string &interface, bool &found)
{
    return readDictionary(message, "sa{sv}", [&] {
        const char *name = nullptr;
        if (!readBasic(message, 's', name))
            return false;
        found = found || interface == name;
        return sd_bus_message_skip(message, "a{sv}") >= 0;
    });
}

template <typename T>
T valueOf(const PropertyMap &properties, const char *name)
{
    const auto found = properties.find(name);
    const T *value = found == properties.end() ? nullptr : std::get_if<T>(&found->second);
    return value ? *value : T {};
}

} // namespace

std::uint64_t numberOf(const PropertyMap &properties, const char *name)
{
    return valueOf<std::uint64_t>(properties, name);
}

std::string textOf(const PropertyMap &properties, const char *name)
{
    return valueOf<std::string>(properties, name);
}

std::vector<std::string> listOf(const PropertyMap &properties, const char *name)
{
    return valueOf<std::vector<std::string>>(properties, name);
}

std::optional<TrafficStats> statsOf(const PropertyMap &properties)
{
    const auto found = properties.find("Stats");
    if (found == properties.end() || !std::holds_alternative<TrafficStats>(found->second))
        return std::nullopt;
    return std::get<TrafficStats>(found->second);
}

std::optional<PropertyMap> readProperties(sd_bus_message *message)
{
    PropertyMap properties;
    return readMap(message, properties) ? std::optional(std::move(properties)) : std::nullopt;
}

std::optional<PropertyChange> readChange(sd_bus_message *message)
{
    PropertyChange change;
    const bool read = readText(message, 's', change.interface) && readMap(message, change.values)
        && readArray(message, "s", [&] {
                          const char *name = nullptr;
                          const bool good = readBasic(message, 's', name);
                          change.incomplete = change.incomplete || (good && isWanted(name));
                          return good;
                      });
    return read ? std::optional(std::move(change)) : std::nullopt;
}

std::optional<std::vector<std::string>> readManaged(sd_bus_message *message,
                                                    const std::string &interface)
{
    std::vector<std::string> paths;
    const bool read = readDictionary(message, "oa{sa{sv}}", [&] {
        std::string path;
        bool found = false;
        if (!readText(message, 'o', path) || !readInterfaces(message, interface, found))
            return false;
        if (found && !path.empty() && paths.size() < kListLimit)
            paths.push_back(std::move(path));
        return true;
    });
    return read ? std::optional(std::move(paths)) : std::nullopt;
}

std::optional<std::string> readAdded(sd_bus_message *message, const std::string &interface)
{
    std::string path;
    bool found = false;
    const bool read = readText(message, 'o', path) && readInterfaces(message, interface, found);
    return read && found && !path.empty() ? std::optional(std::move(path)) : std::nullopt;
}

std::optional<std::string> readRemoved(sd_bus_message *message, const std::string &interface)
{
    std::string path;
    bool found = false;
    const bool read = readText(message, 'o', path) && readArray(message, "s", [&] {
                          const char *name = nullptr;
                          const bool good = readBasic(message, 's', name);
                          found = found || (good && interface == name);
                          return good;
                      });
    return read && found && !path.empty() ? std::optional(std::move(path)) : std::nullopt;
}

std::optional<OwnerChange> readOwnerChange(sd_bus_message *message)
{
    OwnerChange change;
    std::string before;
    const bool read = readText(message, 's', change.name) && readText(message, 's', before)
        && readText(message, 's', change.owner);
    return read ? std::optional(std::move(change)) : std::nullopt;
}

std::optional<std::string> readName(sd_bus_message *message)
{
    std::string name;
    return readText(message, 's', name) ? std::optional(std::move(name)) : std::nullopt;
}

} // namespace velq
