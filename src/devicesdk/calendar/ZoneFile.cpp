#include "calendar/ZoneFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

namespace velq {

namespace {

bool isNameCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '/'
        || c == '_' || c == '+' || c == '-';
}

} // namespace

std::string zonePath(const std::string &name)
{
    constexpr std::size_t kLongest = 255;
    if (name.empty() || name.size() > kLongest || name.front() == '/'
        || !std::all_of(name.begin(), name.end(), isNameCharacter))
        return {};
    const char *const directory = std::getenv("TZDIR");
    return std::string(directory && *directory ? directory : "/usr/share/zoneinfo") + '/' + name;
}

std::optional<std::string> readZoneFile(const std::string &path)
{
    constexpr std::size_t kLargest = 65536; // the longest of the system's have 5 KiB
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    if (file < 0)
        return std::nullopt;
    struct stat status
    {
    };
    std::string bytes;
    if (fstat(file, &status) == 0 && S_ISREG(status.st_mode)) {
        bytes.resize(kLargest + 1);
        const ssize_t length = read(file, bytes.data(), bytes.size());
        bytes.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
    }
    (void)close(file);
    if (bytes.empty() || bytes.size() > kLargest)
        return std::nullopt;
    return bytes;
}

} // namespace velq
