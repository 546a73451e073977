#include "Files.h"

#include "Words.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace velqctl {

namespace {

std::string because(const std::string &what, int error)
{
    return what + ": " + std::strerror(error);
}

//! The permissions that a new file would get.
mode_t newFileMode()
{
    const mode_t mask = umask(0);
    (void)umask(mask);
    return 0666 & ~mask;
}

std::string writeAndClose(int file, const std::string &text)
{
    std::string problem = writeAll(file, text);
    if (close(file) != 0 && problem.empty())
        problem = std::strerror(errno);
    return problem;
}

std::string writeInto(const std::string &path, const std::string &text)
{
    const int file = open(path.c_str(), O_WRONLY | O_CLOEXEC);
    if (file < 0)
        return because(printable(path), errno);
    const std::string problem = writeAndClose(file, text);
    return problem.empty() ? problem : printable(path) + ": " + problem;
}

} // namespace

std::string writeAll(int file, const std::string &text)
{
    for (std::size_t at = 0; at < text.size();) {
        const ssize_t size = write(file, text.data() + at, text.size() - at);
        if (size < 0 && errno == EINTR)
            continue;
        if (size < 0)
            return std::strerror(errno);
        at += static_cast<std::size_t>(size);
    }
    return {};
}

std::string replaceFile(const std::string &path, const std::string &text)
{
    struct stat status
    {
    };
    if (stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode))
        return writeInto(path, text);
    std::string draft = path + ".XXXXXX";
    const int file = mkostemp(draft.data(), O_CLOEXEC);
    if (file < 0)
        return because(printable(path), errno);
    (void)fchmod(file, newFileMode());
    std::string problem = writeAndClose(file, text);
    if (problem.empty() && std::rename(draft.c_str(), path.c_str()) != 0)
        problem = std::strerror(errno);
    if (problem.empty())
        return {};
    (void)unlink(draft.c_str());
    return printable(path) + ": " + problem;
}

void holdStandardFiles()
{
    // Read-only, so that writing to a closed standard output is still noticed.
    int file = 0;
    while (file >= 0 && file <= STDERR_FILENO)
        file = open("/dev/null", O_RDONLY);
    if (file >= 0)
        (void)close(file);
}

} // namespace velqctl
