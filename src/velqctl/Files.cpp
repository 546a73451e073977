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

//! Empty without an error.
std::string problemText(const std::string &path, int error)
{
    return error == 0 ? std::string() : printable(path) + ": " + std::strerror(error);
}

//! The permissions that a new file would get.
mode_t newFileMode()
{
    const mode_t mask = umask(0);
    (void)umask(mask);
    return 0666 & ~mask;
}

int writeAndClose(int file, const std::string &text)
{
    const int error = writeAll(file, text);
    const bool closed = close(file) == 0;
    return error == 0 && !closed ? errno : error;
}

int writeInto(const std::string &path, const std::string &text)
{
    const int file = open(path.c_str(), O_WRONLY | O_CLOEXEC);
    return file < 0 ? errno : writeAndClose(file, text);
}

int replace(const std::string &path, const std::string &text)
{
    std::string draft = path + ".XXXXXX";
    const int file = mkostemp(draft.data(), O_CLOEXEC);
    if (file < 0)
        return errno;
    (void)fchmod(file, newFileMode());
    int error = writeAndClose(file, text);
    if (error == 0 && std::rename(draft.c_str(), path.c_str()) != 0)
        error = errno;
    if (error != 0)
        (void)unlink(draft.c_str());
    return error;
}

} // namespace

int writeAll(int file, const std::string &text)
{
    for (std::size_t at = 0; at < text.size();) {
        const ssize_t size = write(file, text.data() + at, text.size() - at);
        if (size < 0 && errno == EINTR)
            continue;
        if (size < 0)
            return errno;
        at += static_cast<std::size_t>(size);
    }
    return 0;
}

std::string replaceFile(const std::string &path, const std::string &text)
{
    struct stat status
    {
    };
    const bool special = stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode);
    return problemText(path, special ? writeInto(path, text) : replace(path, text));
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
