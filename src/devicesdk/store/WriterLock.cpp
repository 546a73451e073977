#include "store/WriterLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace velq {

WriterLock::~WriterLock()
{
    release();
}

WriterLock::Result WriterLock::take(const std::string &path)
{
    if (isIn(path))
        return Result::Taken;
    release();
    const int file = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (file < 0) {
        m_error = errno;
        return Result::Failed;
    }
    if (flock(file, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
        (void)close(file);
        return Result::Held;
    }
    // Some network file systems have no locks: one writer is then what the user has to see to.
    m_file = file;
    return Result::Taken;
}

bool WriterLock::isIn(const std::string &path) const
{
    struct stat ours
    {
    };
    struct stat there
    {
    };
    return m_file >= 0 && fstat(m_file, &ours) == 0 && stat(path.c_str(), &there) == 0
        && ours.st_dev == there.st_dev && ours.st_ino == there.st_ino;
}

void WriterLock::release()
{
    if (m_file >= 0)
        (void)flock(m_file, LOCK_UN); // also for handles that a child process still holds
    abandon();
}

void WriterLock::abandon()
{
    if (m_file >= 0)
        (void)close(m_file);
    m_file = -1;
}

} // namespace velq
