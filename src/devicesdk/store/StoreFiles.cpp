#include "store/StoreFiles.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>

namespace velq {

namespace {

constexpr std::array<const char *, 4> kEndings { "", "-wal", "-shm", "-journal" };

bool exists(const std::string &path)
{
    struct stat status
    {
    };
    return lstat(path.c_str(), &status) == 0;
}

std::string timeText(std::int64_t now)
{
    const auto time = static_cast<time_t>(now);
    tm parts {};
    (void)gmtime_r(&time, &parts);
    std::array<char, 32> text {};
    (void)std::strftime(text.data(), text.size(), "%Y%m%d-%H%M%S", &parts);
    return text.data();
}

std::string freeName(const std::string &path, std::int64_t now)
{
    const std::string base = path + ".damaged-" + timeText(now);
    std::string name = base;
    for (int i = 2; exists(name); ++i)
        name = base + "-" + std::to_string(i);
    return name;
}

} // namespace

int makeDirectories(const std::string &directory)
{
    constexpr mode_t kUserOnly = 0700;
    for (std::size_t end = directory.find('/', 1);; end = directory.find('/', end + 1)) {
        const std::string part = directory.substr(0, end);
        if (mkdir(part.c_str(), kUserOnly) != 0 && errno != EEXIST) {
            const int error = errno;
            struct stat status
            {
            };
            // A parent on a read-only disk answers EROFS although it is there.
            if (stat(part.c_str(), &status) != 0 || !S_ISDIR(status.st_mode))
                return error;
        }
        if (end == std::string::npos)
            break;
    }
    struct stat status
    {
    };
    if (stat(directory.c_str(), &status) != 0)
        return errno;
    return S_ISDIR(status.st_mode) ? 0 : ENOTDIR;
}

int setAsideDatabase(const std::string &path, std::int64_t now, std::string &setAside)
{
    const std::string name = freeName(path, now);
    for (const char *ending : kEndings) {
        if (std::rename((path + ending).c_str(), (name + ending).c_str()) == 0)
            continue;
        const bool main = *ending == '\0';
        // Without its side files a database may be read wrongly, but it is kept; they may be
        // missing.
        if (main)
            return errno;
    }
    setAside = name;
    return 0;
}

bool isNoDatabase(const std::string &path)
{
    constexpr char kMagic[] = "SQLite format 3"; // with its NUL: 16 bytes
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0)
        return false;
    std::array<char, sizeof kMagic> start {};
    const auto size = read(file, start.data(), start.size());
    (void)close(file);
    if (size <= 0)
        return false; // empty is a new one; what cannot be read is not known
    return size < static_cast<ssize_t>(start.size())
        || std::memcmp(start.data(), kMagic, sizeof kMagic) != 0;
}

bool isEmptyOrMissing(const std::string &path)
{
    struct stat status
    {
    };
    return stat(path.c_str(), &status) != 0 || status.st_size == 0;
}

FileIdentity fileIdentity(const std::string &path)
{
    struct stat status
    {
    };
    if (stat(path.c_str(), &status) != 0)
        return {};
    return { status.st_dev, status.st_ino };
}

} // namespace velq
