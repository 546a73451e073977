#include "engine/CustomizeName.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cstdlib>

namespace velq {

namespace {

constexpr std::size_t kMaxBytes = 127;

std::string fileStart(const std::string &path)
{
    // Not blocking: somebody may have put a pipe there.
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0)
        return {};
    std::array<char, 1024> bytes {};
    const auto size = read(file, bytes.data(), bytes.size());
    (void)close(file);
    return size > 0 ? std::string(bytes.data(), static_cast<std::size_t>(size)) : std::string();
}

bool continuesCharacter(char c)
{
    return (static_cast<unsigned char>(c) & 0xc0) == 0x80; // UTF-8
}

} // namespace

std::string trimmedName(const std::string &text)
{
    constexpr const char *kBlanks = " \t\r\v\f";
    // A NUL ends the name as well: it is handed out NUL-terminated.
    std::string line = text.substr(0, text.find_first_of(std::string("\n\0", 2)));
    const auto first = line.find_first_not_of(kBlanks);
    if (first == std::string::npos)
        return {};
    line = line.substr(first, line.find_last_not_of(kBlanks) - first + 1);
    if (line.size() <= kMaxBytes)
        return line;
    std::size_t end = kMaxBytes;
    while (end > 0 && continuesCharacter(line[end]))
        --end;
    return line.substr(0, end);
}

std::string customizeName(const std::string &directory)
{
    if (const char *value = std::getenv("VELQ_CUSTOMIZE_NAME")) {
        std::string name = trimmedName(value);
        if (!name.empty())
            return name;
    }
    if (!directory.empty()) {
        std::string name = trimmedName(fileStart(directory + "/customize-name"));
        if (!name.empty())
            return name;
    }
    return "common";
}

} // namespace velq
