#include "modem/NetworkFacts.h"

#include <algorithm>

namespace velq {

namespace {

template <typename Test>
const ModemFacts *firstModem(const NetworkFacts &facts, Test test)
{
    const auto found = std::find_if(facts.modems.begin(), facts.modems.end(), test);
    return found == facts.modems.end() ? nullptr : &*found;
}

} // namespace

const ModemFacts *connectedModem(const NetworkFacts &facts)
{
    const ModemFacts *complete = firstModem(
        facts, [](const ModemFacts &modem) { return modem.connected && !modem.interface.empty(); });
    return complete ? complete
                    : firstModem(facts, [](const ModemFacts &modem) { return modem.connected; });
}

const ModemFacts *modemOfInterface(const NetworkFacts &facts, const std::string &interface)
{
    if (interface.empty())
        return nullptr;
    const ModemFacts *byBearer = firstModem(
        facts, [&interface](const ModemFacts &modem) { return modem.interface == interface; });
    return byBearer ? byBearer : firstModem(facts, [&interface](const ModemFacts &modem) {
        const auto &ports = modem.netPorts;
        return std::find(ports.begin(), ports.end(), interface) != ports.end();
    });
}

} // namespace velq
