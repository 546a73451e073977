// Messages of any types and any contents to every reader of the bus: what is read keeps its bounds,
// and what it becomes makes sense.

#include "modem/BusObjects.h"

#include "BusMessages.h"
#include "counters/InterfaceName.h"
#include "FuzzBytes.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iterator>

using namespace velq;

namespace {

constexpr int kDepth = 6;

void require(bool condition)
{
    if (!condition)
        std::abort();
}

constexpr const char *kTexts[] = {
    "",
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
    "rx-bytes",
    "tx-bytes",
    "duration",
    "wwan0",
    "no interface",
    "modems",
    "org.freedesktop.ModemManager1.Modem",
    "\xc3\xa4",
};
constexpr const char *kPaths[] = {
    "/",
    "/a",
    "/org/freedesktop/ModemManager1",
    "/org/freedesktop/ModemManager1/Modem/0",
};
// What the services send, and other things of the same kinds.
constexpr const char *kTypes[] = {
    "v",  "s",  "o",     "u",     "i",    "t",  "b",     "x",   "y", "d",
    "ao", "as", "a(su)", "a{sv}", "(su)", "av", "a{uu}", "aao", "g",
};
constexpr const char *kMessages[] = {
    "a{sv}", "sa{sv}as", "a{oa{sa{sv}}}", "oa{sa{sv}}", "oas", "sss", "s", "a{ss}",
    "v",     "",         "(sa{sv})",
};

bool appendOne(sd_bus_message *message, const std::string &type, FuzzBytes &bytes, int depth);

//! Of types one after another.
bool appendAll(sd_bus_message *message, const std::string &types, FuzzBytes &bytes, int depth)
{
    std::size_t begin = 0;
    while (begin < types.size()) {
        std::size_t end = begin;
        while (types[end] == 'a')
            ++end;
        int open = 0;
        do {
            open += types[end] == '(' || types[end] == '{';
            open -= types[end] == ')' || types[end] == '}';
            ++end;
        } while (open > 0);
        if (!appendOne(message, types.substr(begin, end - begin), bytes, depth))
            return false;
        begin = end;
    }
    return true;
}

bool appendVariant(sd_bus_message *message, FuzzBytes &bytes, int depth)
{
    const std::string type = depth > 0 ? kTypes[bytes.next(std::size(kTypes))] : "u";
    return sd_bus_message_open_container(message, 'v', type.c_str()) >= 0
        && appendOne(message, type, bytes, depth - 1)
        && sd_bus_message_close_container(message) >= 0;
}

bool appendArray(sd_bus_message *message, const std::string &element, FuzzBytes &bytes, int depth)
{
    if (sd_bus_message_open_container(message, 'a', element.c_str()) < 0)
        return false;
    for (unsigned count = bytes.next(6); count > 0 && !bytes.areUsed(); --count) {
        if (!appendOne(message, element, bytes, depth))
            return false;
    }
    return sd_bus_message_close_container(message) >= 0;
}

bool appendBasic(sd_bus_message *message, char type, FuzzBytes &bytes)
{
    const char *text = kTexts[bytes.next(std::size(kTexts))];
    const std::string longText(bytes.next(8) == 7 ? 300 : 0, 'x');
    if (type == 's')
        return sd_bus_message_append_basic(message, type,
                                           longText.empty() ? text : longText.c_str())
            >= 0;
    if (type == 'o')
        return sd_bus_message_append_basic(message, type, kPaths[bytes.next(std::size(kPaths))])
            >= 0;
    if (type == 'g')
        return sd_bus_message_append_basic(message, type, "a{sv}") >= 0;
    std::uint64_t number = 0; // the first bytes of it, for the smaller kinds
    for (int i = 0; i < 8; ++i)
        number = number << 8 | bytes.next();
    if (type == 'b')
        number = number & 1;
    return sd_bus_message_append_basic(message, type, &number) >= 0;
}

bool appendOne(sd_bus_message *message, const std::string &type, FuzzBytes &bytes, int depth)
{
    const std::string inner = type.size() > 2 ? type.substr(1, type.size() - 2) : "";
    switch (type[0]) {
    case 'v':
        return appendVariant(message, bytes, depth);
    case 'a':
        return appendArray(message, type.substr(1), bytes, depth);
    case '(':
    case '{':
        return sd_bus_message_open_container(message, type[0] == '(' ? 'r' : 'e', inner.c_str())
            >= 0
            && appendAll(message, inner, bytes, depth)
            && sd_bus_message_close_container(message) >= 0;
    default:
        return appendBasic(message, type[0], bytes);
    }
}

void requireBounds(const std::string &text)
{
    require(text.size() <= kTextLimit);
}

void requireBounds(const std::vector<std::string> &list)
{
    require(list.size() <= kListLimit);
    for (const std::string &text : list)
        require(!text.empty() && text.size() <= kTextLimit);
}

void requireBounds(const PropertyMap &properties)
{
    for (const auto &[name, value] : properties) {
        require(std::find(std::begin(kTexts), std::end(kTexts), name) != std::end(kTexts));
        requireBounds(textOf(properties, name.c_str()));
        requireBounds(listOf(properties, name.c_str()));
        if (value.index() != 1)
            require(numberOf(properties, name.c_str()) == 0);
    }
}

//! Reads \a message with every reader; what was read as properties is left in \a properties.
void readAll(sd_bus_message *message, PropertyMap &properties)
{
    const auto again = [message] { require(sd_bus_message_rewind(message, 1) >= 0); };
    const bool isMap = std::strcmp(sd_bus_message_get_signature(message, 1), "a{sv}") == 0;
    const auto map = readProperties(message);
    require(map.has_value() == isMap); // nothing that is well formed is refused
    again();
    const auto change = readChange(message);
    again();
    requireBounds(readManaged(message, kModemInterface).value_or(std::vector<std::string>()));
    again();
    requireBounds(readAdded(message, kModemInterface).value_or(""));
    again();
    requireBounds(readRemoved(message, kModemInterface).value_or(""));
    again();
    requireBounds(readOwnerChange(message).value_or(OwnerChange()).owner);
    again();
    requireBounds(readName(message).value_or(""));
    properties = map ? *map : change ? change->values : PropertyMap();
    requireBounds(properties);
}

void requireSense(const ModemFacts &modem)
{
    require(!modem.roaming || modem.registered);
    require(modem.interface.empty() || (modem.connected && isInterfaceName(modem.interface)));
    require(!modem.hasStats || !modem.interface.empty());
    require(modem.hasStats || modem.bearerDownload + modem.bearerUpload + modem.bearerSeconds == 0);
}

//! Puts the same properties everywhere: what one object may say, every other may say.
void requireSenseOf(const PropertyMap &properties)
{
    const ServiceRules &modems = modemManagerRules();
    const ServiceRules &network = networkManagerRules();
    ObjectTree tree;
    PropertyMap root = properties;
    root[kModems] = std::vector<std::string> { "/a", "/org/freedesktop/ModemManager1/Modem/0" };
    tree[{ modems.rootPath, modems.rootInterface }] = root;
    tree[{ network.rootPath, network.rootInterface }] = properties;
    for (int round = 0; round < 3; ++round) {
        for (const ServiceRules *rules : { &modems, &network }) {
            for (const ObjectKey &key : rules->objects(tree))
                tree.try_emplace(key, properties);
        }
    }
    require(modemFacts(tree).size() == 2);
    NetworkFacts facts;
    facts.modems = modemFacts(tree);
    for (const ModemFacts &modem : facts.modems)
        requireSense(modem);
    require((connectedModem(facts) == nullptr) == !facts.modems.front().connected);
    facts.devices = deviceFacts(tree);
    require(facts.devices.size() <= kListLimit);
    for (const ManagedDevice &device : facts.devices)
        require(device.ipInterface.empty() || isInterfaceName(device.ipInterface));
    const std::string primary = primaryInterface(tree);
    require(primary.empty() || isInterfaceName(primary));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzBytes bytes(data, size);
    const BusMessage message = newBusMessage();
    // A tree that is too deep for a message, or otherwise refused by the writer, is not sent.
    if (!appendAll(message.get(), kMessages[bytes.next(std::size(kMessages))], bytes, kDepth))
        return 0;
    finish(message.get());
    PropertyMap properties;
    readAll(message.get(), properties);
    requireSenseOf(properties);
    return 0;
}
