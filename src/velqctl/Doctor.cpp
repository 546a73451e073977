#include "Doctor.h"

#include "Amount.h"
#include "Dates.h"
#include "Json.h"
#include "Table.h"

#include <algorithm>

namespace velqctl {

namespace {

Check storeCheck(const DoctorFacts &facts)
{
    const std::string &path = facts.store.path;
    if (path.empty())
        return { "store", Level::Warning, "in memory only; nothing is kept" };
    if (!facts.directoryIsThere)
        return { "store", Level::Error,
                 facts.directory
                     + " is no directory and cannot be made; choose another with --data-dir" };
    if (!facts.directoryWritable || (facts.fileIsThere && !facts.fileWritable))
        return { "store", Level::Error,
                 path + " cannot be written by this user; correct its permissions" };
    if (!facts.fileIsThere)
        return { "store", Level::Error, path + " could not be made" };
    return { "store", Level::Ok, path };
}

Check spaceCheck(const DoctorFacts &facts)
{
    constexpr unsigned long long kEnough = 10000000;
    const std::string text = amountText(facts.freeBytes) + " free on the store's disk";
    if (facts.freeBytes < kEnough)
        return { "space", Level::Warning, text + "; figures wait in memory when it is full" };
    return { "space", Level::Ok, text };
}

Check problemCheck(const DoctorFacts &facts)
{
    if (facts.store.counting && !facts.store.problem.empty())
        return { "problem", Level::Error, facts.store.problem };
    return { "problem", Level::Ok, "the store has none" };
}

Check setAsideCheck(const DoctorFacts &facts)
{
    if (facts.setAside.empty())
        return { "damaged", Level::Ok, "no store was set aside" };
    return { "damaged", Level::Warning,
             std::to_string(facts.setAside.size()) + " damaged before and kept, the latest is "
                 + *std::max_element(facts.setAside.begin(), facts.setAside.end()) };
}

Check countingCheck(const DoctorFacts &facts)
{
    return { "counting", Level::Ok,
             facts.store.counting ? "this process counts now, no other one does"
                                  : "another process counts; this one reads" };
}

Check interfaceCheck(const DoctorFacts &facts)
{
    if (facts.interface.empty() && !facts.used.empty() && !facts.usedIsPresent)
        return { "interface", Level::Warning, "none is counted: the used device is not here" };
    if (facts.interface.empty())
        return {
            "interface", Level::Warning,
            "none is counted: there is no default route; connect, or name one with --interface"
        };
    if (!facts.connected)
        return { "interface", Level::Warning, facts.interface + " is counted, but not connected" };
    return { "interface", Level::Ok, facts.interface + " is counted and connected" };
}

Check countersCheck(const DoctorFacts &facts)
{
    if (facts.connected && !facts.counters)
        return { "counters", Level::Error, "the kernel's counters cannot be read" };
    return { "counters", Level::Ok,
             facts.connected ? "the kernel's counters can be read" : "nothing to read now" };
}

Check deviceCheck(const DoctorFacts &facts)
{
    if (facts.used.empty())
        return { "device", Level::Ok, "automatic: what carries the traffic" };
    if (!facts.usedIsPresent)
        return { "device", Level::Warning,
                 facts.used
                     + " is to be counted but not here; \"velqctl use --automatic\" ends that" };
    return { "device", Level::Ok, facts.used + " is here" };
}

Check zoneCheck(const DoctorFacts &facts)
{
    if (facts.zone.empty())
        return { "zone", Level::Warning, "no time zone is set; days are those of UTC" };
    if (!facts.zoneIsKnown)
        return { "zone", Level::Warning,
                 facts.zone + " is not found; install tzdata, or days are those of UTC" };
    return { "zone", Level::Ok, facts.zone };
}

Check clockCheck(const DoctorFacts &facts)
{
    constexpr long long kYear2024 = 1704067200;
    if (facts.now < kYear2024)
        return { "clock", Level::Warning,
                 "it says " + utcText(facts.now) + "; until it is set, days are wrong" };
    return { "clock", Level::Ok, utcText(facts.now) };
}

Check bootCheck(const DoctorFacts &facts)
{
    if (!facts.bootId)
        return {
            "boot", Level::Warning,
            "the kernel's boot id cannot be read; what flows while nobody counts may be lost"
        };
    return { "boot", Level::Ok, "the kernel's boot id can be read" };
}

Check busCheck(const DoctorFacts &facts)
{
    if (!facts.busSocket)
        return { "bus", Level::Warning,
                 "no system bus at " + facts.busAddress
                     + "; modems are not told apart, connect and disconnect do not work" };
    return { "bus", Level::Ok, "system bus at " + facts.busAddress };
}

const char *word(Level level)
{
    switch (level) {
    case Level::Ok:
        return "ok";
    case Level::Warning:
        return "warning";
    case Level::Error:
        break;
    }
    return "error";
}

} // namespace

std::vector<Check> diagnose(const DoctorFacts &facts)
{
    std::vector<Check> checks { storeCheck(facts) };
    if (facts.directoryIsThere) {
        checks.push_back(spaceCheck(facts));
        checks.push_back(setAsideCheck(facts));
    }
    for (const auto check : { &problemCheck, &countingCheck, &interfaceCheck, &countersCheck,
                              &deviceCheck, &zoneCheck, &clockCheck, &bootCheck, &busCheck })
        checks.push_back(check(facts));
    return checks;
}

bool hasError(const std::vector<Check> &checks)
{
    return std::any_of(checks.begin(), checks.end(),
                       [](const Check &check) { return check.level == Level::Error; });
}

std::string checksText(const std::vector<Check> &checks)
{
    std::vector<std::vector<std::string>> rows;
    for (const Check &check : checks)
        rows.push_back({ word(check.level), check.name, check.text });
    return table({}, rows);
}

std::string checksJson(const std::vector<Check> &checks)
{
    Json list = Json::array();
    for (const Check &check : checks)
        list.push_back(Json {
            { "check", check.name }, { "level", word(check.level) }, { "text", check.text } });
    return documentText(Json::object({ { "checks", std::move(list) } }));
}

std::string socketPath(const std::string &address)
{
    const std::string kind = "unix:path=";
    if (address.compare(0, kind.size(), kind) != 0)
        return {};
    return address.substr(kind.size(), address.find_first_of(",;", kind.size()) - kind.size());
}

} // namespace velqctl
