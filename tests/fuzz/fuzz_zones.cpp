// Rules and compiled files of time zones: whatever they hold, they are refused or make tables that
// can be written and read again. cctz itself is left out, because it keeps every zone for ever.

#include "calendar/ZoneRule.h"
#include "calendar/ZoneTables.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string bytes(reinterpret_cast<const char *>(data), size);
    if (const auto rule = velq::parseZoneRule(bytes))
        (void)velq::changesOf(*rule);
    const auto tables = velq::readZoneTables(bytes);
    if (!tables)
        return 0;
    (void)tables->lastChange();
    if (const auto rule = velq::parseZoneRule(tables->rule))
        (void)velq::changesOf(*rule);
    const auto again = velq::readZoneTables(velq::zoneBytes(*tables));
    if (!again || again->instants != tables->instants || again->types != tables->types
        || again->rule != tables->rule)
        std::abort();
    return 0;
}
