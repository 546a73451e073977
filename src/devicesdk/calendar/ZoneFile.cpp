#include "calendar/ZoneFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>

namespace velq {

namespace {

// A compiled time zone file: a header, then tables as long as its counts say. A file with a version
// has all that twice, the second time with instants of 8 bytes, then a rule between two line ends.
// Numbers are big-endian.
constexpr char kMagic[] = "TZif";
constexpr std::size_t kMagicLength = 4;
constexpr std::size_t kVersionAt = 4;
constexpr std::size_t kCountsAt = 20;
constexpr std::size_t kHeaderLength = 44;

enum Count { UtcFlags, StandardFlags, LeapSeconds, Changes, Types, NameBytes, kCounts };

std::uint32_t numberAt(const std::string &bytes, std::size_t at)
{
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < sizeof number; ++i)
        number = number << 8 | static_cast<unsigned char>(bytes[at + i]);
    return number;
}

//! The end of the header at \a at and of its tables; npos if they are not all there.
std::size_t blockEnd(const std::string &bytes, std::size_t at, std::size_t instantSize)
{
    constexpr std::size_t kTypeSize = 6;
    constexpr std::size_t kCorrectionSize = 4;
    if (bytes.size() < at + kHeaderLength || bytes.compare(at, kMagicLength, kMagic) != 0)
        return std::string::npos;
    std::array<std::uint64_t, kCounts> counts {};
    for (std::size_t i = 0; i < kCounts; ++i)
        counts[i] = numberAt(bytes, at + kCountsAt + 4 * i);
    const std::uint64_t length = counts[UtcFlags] + counts[StandardFlags]
        + counts[LeapSeconds] * (instantSize + kCorrectionSize)
        + counts[Changes] * (instantSize + 1) + counts[Types] * kTypeSize + counts[NameBytes];
    const std::size_t end = at + kHeaderLength;
    return length <= bytes.size() - end ? end + length : std::string::npos;
}

void append(std::string &bytes, std::uint64_t number, int size)
{
    for (int i = size - 1; i >= 0; --i)
        bytes += static_cast<char>(number >> (8 * i) & 0xff);
}

void appendHeader(std::string &bytes, std::size_t changes, std::uint32_t types)
{
    bytes += kMagic;
    bytes += '2';
    bytes.append(kCountsAt - kVersionAt - 1, '\0');
    for (const std::uint64_t count :
         std::array<std::uint64_t, kCounts> { 0, 0, 0, changes, types, 2 * types })
        append(bytes, count, 4);
}

void appendType(std::string &bytes, int offset, bool summer)
{
    append(bytes, static_cast<std::uint32_t>(offset), 4);
    append(bytes, summer ? 1 : 0, 1);
    append(bytes, summer ? 2 : 0, 1); // where its name is
}

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
    constexpr std::size_t kLargest = 64 * 1024; // the longest of the system's have 5 KiB
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

bool isZoneFile(const std::string &bytes)
{
    const std::size_t first = blockEnd(bytes, 0, 4);
    if (first == std::string::npos || bytes[kVersionAt] == '\0')
        return first != std::string::npos;
    return blockEnd(bytes, first, 8) != std::string::npos;
}

std::string makeZoneFile(int standard, int summer, const std::vector<OffsetChange> &changes)
{
    std::string bytes;
    appendHeader(bytes, 0, 1); // for readers of short instants only: there is nothing
    appendType(bytes, standard, false);
    append(bytes, 0, 2);
    appendHeader(bytes, changes.size(), 2);
    for (const OffsetChange &change : changes)
        append(bytes, static_cast<std::uint64_t>(change.instant), 8);
    for (const OffsetChange &change : changes)
        append(bytes, change.summer ? 1 : 0, 1);
    appendType(bytes, standard, false);
    appendType(bytes, summer, true);
    bytes.append("S\0D\0\n\n", 6); // names of the types, which nobody asks for; no rule
    return bytes;
}

} // namespace velq
