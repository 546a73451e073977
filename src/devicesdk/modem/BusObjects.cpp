#include "modem/BusObjects.h"

#include "counters/InterfaceName.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace velq {

namespace {

constexpr const char *kModemManager = "org.freedesktop.ModemManager1";
constexpr const char *kModemManagerPath = "/org/freedesktop/ModemManager1";
constexpr const char *kModem3gpp = "org.freedesktop.ModemManager1.Modem.Modem3gpp";
constexpr const char *kSim = "org.freedesktop.ModemManager1.Sim";
constexpr const char *kBearer = "org.freedesktop.ModemManager1.Bearer";
constexpr const char *kNetworkManager = "org.freedesktop.NetworkManager";
constexpr const char *kNetworkManagerPath = "/org/freedesktop/NetworkManager";
constexpr const char *kDevice = "org.freedesktop.NetworkManager.Device";
constexpr const char *kActive = "org.freedesktop.NetworkManager.Connection.Active";

constexpr std::uint64_t kRegistered = 8; // states of a modem; 9 and 10 are the steps between
constexpr std::uint64_t kConnected = 11;

struct Registration
{
    std::uint64_t number;
    bool roaming;
};

// The others are searching, denied, unknown or for emergencies only.
constexpr Registration kRegistrations[] = {
    { 1, false }, // home
    { 5, true },  { 6, false }, { 7, true }, // for short messages only
    { 9, false }, { 10, true }, // without calls
};

bool isObject(const std::string &path)
{
    return path.size() > 1; // "/" is the word for none
}

const PropertyMap &propertiesOf(const ObjectTree &tree, const std::string &path,
                                const char *interface)
{
    static const PropertyMap kNothing;
    const auto found = tree.find({ path, interface });
    return found == tree.end() ? kNothing : found->second;
}

std::vector<ObjectKey> modemManagerObjects(const ObjectTree &tree)
{
    std::vector<ObjectKey> keys = { { kModemManagerPath, kObjectManager } };
    for (const auto &path :
         listOf(propertiesOf(tree, kModemManagerPath, kObjectManager), kModems)) {
        keys.emplace_back(path, kModemInterface);
        keys.emplace_back(path, kModem3gpp);
        const PropertyMap &modem = propertiesOf(tree, path, kModemInterface);
        const std::string sim = textOf(modem, "Sim");
        if (isObject(sim))
            keys.emplace_back(sim, kSim);
        for (const auto &bearer : listOf(modem, "Bearers"))
            keys.emplace_back(bearer, kBearer);
    }
    return keys;
}

bool isConnectedBearer(const ObjectKey &key, const PropertyMap &properties)
{
    return key.second == kBearer && numberOf(properties, "Connected") != 0;
}

std::string primaryConnection(const ObjectTree &tree)
{
    return textOf(propertiesOf(tree, kNetworkManagerPath, kNetworkManager), "PrimaryConnection");
}

std::vector<ObjectKey> networkManagerObjects(const ObjectTree &tree)
{
    std::vector<ObjectKey> keys = { { kNetworkManagerPath, kNetworkManager } };
    const std::string primary = primaryConnection(tree);
    if (isObject(primary))
        keys.emplace_back(primary, kActive); // early: its answer is what matters most
    for (const auto &path :
         listOf(propertiesOf(tree, kNetworkManagerPath, kNetworkManager), "Devices"))
        keys.emplace_back(path, kDevice);
    return keys;
}

bool neverAges(const ObjectKey &, const PropertyMap &)
{
    return false;
}

std::string interfaceOf(const PropertyMap &properties, const char *name)
{
    const std::string interface = textOf(properties, name);
    return isInterfaceName(interface) ? interface : std::string();
}

std::uint32_t toUint32(std::uint64_t number)
{
    constexpr std::uint64_t kMost = std::numeric_limits<std::uint32_t>::max();
    return static_cast<std::uint32_t>(std::min(number, kMost));
}

void addRegistration(ModemFacts &facts, const PropertyMap &modem, const PropertyMap &network)
{
    const std::uint64_t number = numberOf(network, "RegistrationState");
    const auto *row = std::find_if(std::begin(kRegistrations), std::end(kRegistrations),
                                   [number](const Registration &r) { return r.number == number; });
    const bool isKnown = network.count("RegistrationState") > 0;
    const std::uint64_t state = numberOf(modem, "State");
    facts.registered
        = isKnown ? row != std::end(kRegistrations) : state >= kRegistered && state <= kConnected;
    facts.placed = row != std::end(kRegistrations);
    facts.roaming = facts.placed && row->roaming;
    facts.operatorName = textOf(network, "OperatorName");
}

void addBearer(ModemFacts &facts, const ObjectTree &tree, const std::vector<std::string> &bearers)
{
    for (const std::string &path : bearers) {
        const PropertyMap &bearer = propertiesOf(tree, path, kBearer);
        const std::string interface = interfaceOf(bearer, "Interface");
        if (numberOf(bearer, "Connected") == 0 || interface.empty())
            continue;
        facts.interface = interface;
        const auto stats = statsOf(bearer);
        facts.hasStats = stats.has_value();
        facts.bearerDownload = stats ? stats->download : 0;
        facts.bearerUpload = stats ? stats->upload : 0;
        facts.bearerSeconds = stats ? toUint32(stats->seconds) : 0;
        return;
    }
}

ModemFacts factsOf(const ObjectTree &tree, const std::string &path, const PropertyMap &modem)
{
    ModemFacts facts;
    facts.path = path;
    facts.equipmentId = textOf(modem, "EquipmentIdentifier");
    facts.deviceId = textOf(modem, "DeviceIdentifier");
    facts.model = textOf(modem, "Model");
    facts.netPorts = listOf(modem, "Ports");
    facts.connected = numberOf(modem, "State") == kConnected;
    const std::string simPath = textOf(modem, "Sim");
    const PropertyMap &sim = propertiesOf(tree, simPath, kSim);
    facts.simPending = isObject(simPath) && tree.count({ simPath, kSim }) == 0;
    facts.simId = textOf(sim, "SimIdentifier");
    facts.imsi = textOf(sim, "Imsi");
    addRegistration(facts, modem, propertiesOf(tree, path, kModem3gpp));
    if (facts.connected)
        addBearer(facts, tree, listOf(modem, "Bearers"));
    return facts;
}

} // namespace

const ServiceRules &modemManagerRules()
{
    static const ServiceRules kRules
        = { kModemManager,       kModemManagerPath,
            kObjectManager,      { kModemInterface, kModem3gpp, kSim, kBearer },
            modemManagerObjects, isConnectedBearer };
    return kRules;
}

const ServiceRules &networkManagerRules()
{
    static const ServiceRules kRules
        = { kNetworkManager,       kNetworkManagerPath,
            kNetworkManager,       { kNetworkManager, kActive, kDevice, nullptr },
            networkManagerObjects, neverAges };
    return kRules;
}

std::vector<ModemFacts> modemFacts(const ObjectTree &tree)
{
    std::vector<ModemFacts> modems;
    for (const auto &path :
         listOf(propertiesOf(tree, kModemManagerPath, kObjectManager), kModems)) {
        const auto modem = tree.find({ path, kModemInterface });
        if (modem != tree.end())
            modems.push_back(factsOf(tree, path, modem->second));
    }
    return modems;
}

std::vector<ManagedDevice> deviceFacts(const ObjectTree &tree)
{
    std::vector<ManagedDevice> devices;
    for (const auto &path :
         listOf(propertiesOf(tree, kNetworkManagerPath, kNetworkManager), "Devices")) {
        const auto found = tree.find({ path, kDevice });
        if (found == tree.end())
            continue;
        ManagedDevice device;
        device.path = path;
        device.interface = textOf(found->second, "Interface");
        device.ipInterface = interfaceOf(found->second, "IpInterface");
        device.type = toUint32(numberOf(found->second, "DeviceType"));
        device.state = toUint32(numberOf(found->second, "State"));
        devices.push_back(std::move(device));
    }
    return devices;
}

std::string primaryInterface(const ObjectTree &tree)
{
    for (const auto &path :
         listOf(propertiesOf(tree, primaryConnection(tree), kActive), "Devices")) {
        const PropertyMap &device = propertiesOf(tree, path, kDevice);
        const std::string ipInterface = interfaceOf(device, "IpInterface");
        return ipInterface.empty() ? interfaceOf(device, "Interface") : ipInterface;
    }
    return {};
}

} // namespace velq
