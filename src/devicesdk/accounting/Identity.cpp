#include "accounting/Identity.h"

#include <cstring>

namespace velq {

namespace {

std::string equipmentOf(const ModemFacts &modem)
{
    return modem.equipmentId.empty() ? modem.deviceId : modem.equipmentId;
}

std::string labelOf(const ModemFacts &modem)
{
    if (modem.operatorName.empty() || modem.model.empty())
        return modem.model + modem.operatorName;
    return modem.model + " (" + modem.operatorName + ")";
}

std::string keyOf(const ModemFacts &modem)
{
    const std::string equipment = equipmentOf(modem);
    if (!modem.simId.empty())
        return "sim:" + modem.simId + "/" + equipment;
    return equipment.empty() ? std::string() : "modem:" + equipment;
}

} // namespace

DeviceNote identify(const Link &link, const NetworkFacts &facts)
{
    DeviceNote note;
    note.interface = link.name;
    note.label = link.name;
    note.type = link.wireless ? 1 : 0;
    const ModemFacts *const modem = modemOfInterface(facts, link.name);
    if (modem && !modem->simPending) {
        note.key = keyOf(*modem);
        if (const std::string label = labelOf(*modem); !label.empty())
            note.label = label;
    }
    if (note.key.empty() && !link.hardwareAddress.empty())
        note.key = "hw:" + link.hardwareAddress;
    if (note.key.empty())
        note.key = "name:" + link.name;
    return note;
}

bool isDeviceKey(const std::string &text)
{
    for (const char *kind : { "sim:", "modem:", "hw:", "name:" }) {
        const std::size_t size = std::strlen(kind);
        if (text.compare(0, size, kind) == 0)
            return text.size() > size;
    }
    return false;
}

bool isStableKey(const std::string &key)
{
    return key.compare(0, 5, "name:") != 0;
}

} // namespace velq
