#include "counters/LinkPlace.h"

#include "counters/InterfaceName.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdlib>

namespace velq {

namespace {

//! The number in the file "ifindex" of \a folder; 0 without one.
long indexIn(int folder)
{
    const int file = openat(folder, "ifindex", O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return 0;
    std::array<char, 32> text {};
    const auto size = read(file, text.data(), text.size() - 1);
    (void)close(file);
    return size > 0 ? std::strtol(text.data(), nullptr, 10) : 0;
}

bool has(int folder, const char *name)
{
    return faccessat(folder, name, F_OK, 0) == 0;
}

} // namespace

LinkPlace findLinkPlace(const std::string &root, const std::string &name, int index)
{
    LinkPlace place;
    if (!isInterfaceName(name))
        return place;
    // One handle for all questions: the name may go over to another link meanwhile.
    const int folder = open((root + "/sys/class/net/" + name).c_str(), O_PATH | O_CLOEXEC);
    if (folder < 0)
        return place;
    struct stat status
    {
    };
    if (indexIn(folder) == index && fstat(folder, &status) == 0) {
        place.instance = status.st_ino;
        place.wireless = has(folder, "wireless") || has(folder, "phy80211");
    }
    (void)close(folder);
    return place;
}

} // namespace velq
