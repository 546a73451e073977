#include "NetInfoSettingFile.h"

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace {

//! Closes what it holds.
class Descriptor
{
public:
    explicit Descriptor(int descriptor)
        : m_descriptor(descriptor)
    {
    }
    ~Descriptor()
    {
        (void)close();
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    [[nodiscard]] int get() const
    {
        return m_descriptor;
    }
    [[nodiscard]] bool isOpen() const
    {
        return m_descriptor >= 0;
    }
    bool close()
    {
        const int descriptor = m_descriptor;
        m_descriptor = -1;
        return descriptor < 0 || ::close(descriptor) == 0;
    }

private:
    int m_descriptor;
};

[[nodiscard]] bool writeAll(int descriptor, const QByteArray &bytes)
{
    const char *next = bytes.constData();
    size_t left = size_t(bytes.size());
    while (left > 0) {
        const ssize_t written = ::write(descriptor, next, left);
        if (written < 0 && errno != EINTR)
            return false;
        if (written > 0) {
            next += written;
            left -= size_t(written);
        }
    }
    return true;
}

//! Writes a file that is not there yet; \a mode 0 leaves its mode to the system.
[[nodiscard]] bool writeNewFile(const char *path, const QByteArray &bytes, mode_t mode)
{
    constexpr mode_t kDefaultMode = 0666;
    Descriptor file(::open(path, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kDefaultMode));
    if (!file.isOpen())
        return false;
    if (mode != 0)
        (void)::fchmod(file.get(), mode); // some file systems have none
    return writeAll(file.get(), bytes) && ::fsync(file.get()) == 0 && file.close();
}

//! Gives \a path, a link itself included, a second name.
[[nodiscard]] bool keep(const QByteArray &path)
{
    constexpr int kMostNames = 99;
    for (int i = 1; i <= kMostNames; ++i) {
        const QByteArray name
            = path + ".kept" + (i > 1 ? '-' + QByteArray::number(i) : QByteArray());
        if (::link(path.constData(), name.constData()) == 0)
            return true;
        if (errno == EPERM) // a file system without second names, or the file of another user
            return ::rename(path.constData(), name.constData()) == 0;
        if (errno != EEXIST)
            return false;
    }
    return false;
}

//! Makes a rename in the folder of \a path survive a power cut.
void syncFolder(const QString &path)
{
    const QByteArray folder = QFile::encodeName(QFileInfo(path).path());
    const Descriptor descriptor(::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor.isOpen())
        (void)::fsync(descriptor.get());
}

} // namespace

namespace NetInfoFile {

bool isMissingOrEmpty(const QString &path)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return errno == ENOENT;
    return S_ISREG(status.st_mode) && status.st_size == 0;
}

bool read(const QString &path, int limit, QByteArray &content)
{
    // Not blocking: a pipe would wait for its writer.
    const Descriptor file(
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    struct stat status = {};
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
        return false;
    QByteArray bytes(limit, Qt::Uninitialized);
    int size = 0;
    while (size < limit) {
        const ssize_t got = ::read(file.get(), bytes.data() + size, size_t(limit - size));
        if (got < 0 && errno != EINTR)
            return false;
        if (got == 0)
            break;
        if (got > 0)
            size += int(got);
    }
    content = bytes.left(size);
    return true;
}

bool replace(const QString &path, const QString &temporary, const QByteArray &bytes, Old old)
{
    const QByteArray target = QFile::encodeName(path);
    const QByteArray source = QFile::encodeName(temporary);
    struct stat status = {};
    const bool exists = ::lstat(target.constData(), &status) == 0;
    const bool isLink = exists && S_ISLNK(status.st_mode);
    const bool isFile = exists && S_ISREG(status.st_mode);
    if (exists ? !isLink && !isFile : errno != ENOENT)
        return false;
    constexpr mode_t kPermissions = 0777;
    constexpr mode_t kOwnerReads = 0600;
    const mode_t mode = isFile ? (status.st_mode & kPermissions) | kOwnerReads : 0;
    const bool keepsOld = isLink || (isFile && old == Old::Keep);

    (void)::unlink(source.constData()); // of a process that was killed
    if (writeNewFile(source.constData(), bytes, mode) && (!keepsOld || keep(target))
        && ::rename(source.constData(), target.constData()) == 0) {
        syncFolder(path);
        return true;
    }
    (void)::unlink(source.constData());
    return false;
}

} // namespace NetInfoFile
