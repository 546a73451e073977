#include "counters/InterfaceName.h"

#include <linux/if.h>
#include <unistd.h>

#include <algorithm>

namespace velq {

namespace {

bool isForbidden(char c)
{
    // The kernel refuses these; it allows nearly everything else, bytes above 127 included.
    return c == '/' || c == ':' || c == ' ' || (c >= '\t' && c <= '\r') || c == '\0';
}

} // namespace

bool isInterfaceName(const std::string &name)
{
    if (name.empty() || name.size() >= IFNAMSIZ || name == "." || name == "..")
        return false;
    return std::none_of(name.begin(), name.end(), isForbidden);
}

bool isWireless(const std::string &root, const std::string &name)
{
    if (!isInterfaceName(name))
        return false;
    const std::string folder = root + "/sys/class/net/" + name;
    return access((folder + "/wireless").c_str(), F_OK) == 0
        || access((folder + "/phy80211").c_str(), F_OK) == 0;
}

} // namespace velq
