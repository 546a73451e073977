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

[[nodiscard]] bool writeNewFile(const char *path, const QByteArray &bytes)
{
    constexpr mode_t kMode = 0666;
    Descriptor file(::open(path, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kMode));
    return file.isOpen() && writeAll(file.get(), bytes) && ::fsync(file.get()) == 0 && file.close();
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
    const QFileInfo info(path);
    return !info.exists() || (info.isFile() && info.size() == 0);
}

bool read(const QString &path, int limit, QByteArray &content)
{
    // Not blocking: a pipe would wait for its writer.
    const Descriptor file(
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    struct stat status;
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

bool replace(const QString &path, const QString &temporary, const QByteArray &bytes)
{
    const QByteArray target = QFile::encodeName(path);
    const QByteArray source = QFile::encodeName(temporary);
    (void)::unlink(source.constData()); // of a process that was killed
    if (!writeNewFile(source.constData(), bytes)
        || ::rename(source.constData(), target.constData()) != 0) {
        (void)::unlink(source.constData());
        return false;
    }
    syncFolder(path);
    return true;
}

} // namespace NetInfoFile
