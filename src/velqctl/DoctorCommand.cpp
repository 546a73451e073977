#include "Commands.h"

#include "Doctor.h"
#include "Sdk.h"

#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <system_error>

namespace velqctl {

namespace {

bool can(const std::string &path, int mode)
{
    return access(path.c_str(), mode) == 0;
}

void lookAtStore(DoctorFacts &facts)
{
    facts.store = storeState();
    const std::filesystem::path file = facts.store.path;
    std::error_code ignored;
    facts.directory = file.parent_path().string();
    facts.directoryIsThere = std::filesystem::is_directory(facts.directory, ignored);
    facts.directoryWritable = can(facts.directory, R_OK | W_OK | X_OK);
    facts.fileIsThere = can(facts.store.path, F_OK);
    facts.fileWritable = can(facts.store.path, R_OK | W_OK);
    struct statvfs disk
    {
    };
    if (statvfs(facts.directory.c_str(), &disk) == 0)
        facts.freeBytes = static_cast<unsigned long long>(disk.f_bavail) * disk.f_frsize;
    for (const auto &entry : std::filesystem::directory_iterator(facts.directory, ignored)) {
        const std::string name = entry.path().filename().string();
        const bool sideFile = name.size() > 4 && name[name.size() - 4] == '-';
        if (!sideFile && name.find(".damaged-") != std::string::npos)
            facts.setAside.push_back(entry.path().string());
    }
}

void lookAtDevices(DoctorFacts &facts)
{
    facts.interface = countedInterface();
    facts.connected = isConnected();
    VELQ_Counters counters {};
    facts.counters = VELQ_DevSrv_GetCounters(&counters) == 0;
    facts.used = usedDevice();
    const auto all = devices().value_or(std::vector<VELQ_Device>());
    facts.usedIsPresent = std::any_of(all.begin(), all.end(), [&](const VELQ_Device &device) {
        return device.present && (facts.used == device.key || facts.used == device.interface);
    });
}

void lookAtZone(DoctorFacts &facts)
{
    if (const char *variable = std::getenv("TZ")) {
        const std::string value = variable[0] == ':' ? variable + 1 : variable;
        facts.zone = value.empty() ? "UTC" : value;
        const bool rule = value.find_first_of("0123456789") != std::string::npos;
        const std::string path = value[0] == '/' ? value : "/usr/share/zoneinfo/" + value;
        facts.zoneIsKnown = value.empty() || value == "UTC" || rule || can(path, R_OK);
        return;
    }
    const char *file = "/etc/localtime";
    std::error_code error;
    const auto target = std::filesystem::read_symlink(file, error);
    if (can(file, F_OK) || !error)
        facts.zone = error ? file : target.string();
    facts.zoneIsKnown = can(file, R_OK);
}

void lookAtSystem(DoctorFacts &facts)
{
    facts.bootId = can("/proc/sys/kernel/random/boot_id", R_OK);
    const char *address = std::getenv("DBUS_SYSTEM_BUS_ADDRESS");
    facts.busAddress = address ? address : "unix:path=/run/dbus/system_bus_socket";
    const std::string path = socketPath(facts.busAddress);
    facts.busSocket = path.empty() || can(path, F_OK);
    facts.now = std::time(nullptr);
}

} // namespace

Outcome runDoctor(const Command &command)
{
    DoctorFacts facts;
    lookAtDevices(facts); // which also makes the store
    lookAtStore(facts);
    lookAtZone(facts);
    lookAtSystem(facts);
    const std::vector<Check> checks = diagnose(facts);
    const bool json = command.format == Format::Json;
    Outcome outcome;
    outcome.output = json ? checksJson(checks) : checksText(checks);
    if (hasError(checks)) {
        outcome.code = ExitCode::Failed;
        outcome.message = "something is wrong; the lines with \"error\" say what";
    }
    return outcome;
}

} // namespace velqctl
