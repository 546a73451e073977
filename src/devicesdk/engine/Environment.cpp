#include "engine/Environment.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <fstream>

namespace velq {

namespace {

std::string variable(const char *name)
{
    const char *value = std::getenv(name);
    return value ? value : "";
}

bool isAbsolute(const std::string &path)
{
    return !path.empty() && path.front() == '/';
}

std::string homeDirectory()
{
    std::string home = variable("HOME");
    if (isAbsolute(home))
        return home;
    passwd entry {};
    passwd *found = nullptr;
    std::array<char, 4096> buffer {};
    if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found
        && found->pw_dir && isAbsolute(found->pw_dir))
        return found->pw_dir;
    return {};
}

} // namespace

std::string chosenInterface(const HostChoices &choices)
{
    return choices.interface.empty() ? variable("VELQ_INTERFACE") : choices.interface;
}

std::string bootId()
{
    std::ifstream file("/proc/sys/kernel/random/boot_id");
    std::string id;
    std::getline(file, id);
    return id;
}

DataDirectory dataDirectory(const HostChoices &choices)
{
    if (!choices.directory.empty())
        return { choices.directory, {} };
    const std::string named = variable("VELQ_DATA_DIR");
    if (!named.empty() && !isAbsolute(named))
        return { {}, "VELQ_DATA_DIR is not an absolute path." };
    if (!named.empty())
        return { named, {} };
    const std::string data = variable("XDG_DATA_HOME");
    if (isAbsolute(data)) // a relative one is invalid and to be ignored
        return { data + "/velq", {} };
    const std::string home = homeDirectory();
    if (home.empty())
        return { {}, "The user has no home directory." };
    return { home + "/.local/share/velq", {} };
}

} // namespace velq
