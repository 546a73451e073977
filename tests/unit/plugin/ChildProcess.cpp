#include "ChildProcess.h"

#include <QDirIterator>
#include <QFile>

#include <grp.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>

namespace {

constexpr uid_t kNobody = 65534;
constexpr int kMostBytes = 4000; // a pipe takes them without a reader

void writeText(const char *path, const QByteArray &text)
{
    QFile file(QString::fromLatin1(path));
    if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        (void)file.write(text);
}

bool enterOwnMounts()
{
    if (unshare(CLONE_NEWNS) == 0)
        return true;
    const QByteArray user = QByteArray::number(getuid());
    const QByteArray group = QByteArray::number(getgid());
    if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
        return false;
    writeText("/proc/self/setgroups", "deny");
    writeText("/proc/self/uid_map", user + ' ' + user + " 1");
    writeText("/proc/self/gid_map", group + ' ' + group + " 1");
    return true;
}

} // namespace

const char kNotAllowed[] = "not allowed here";

QByteArray inChild(const std::function<QByteArray()> &work)
{
    std::array<int, 2> ends {};
    if (pipe(ends.data()) != 0)
        return "no pipe";
    const pid_t child = fork();
    if (child == 0) {
        const QByteArray answer = work().left(kMostBytes);
        const bool told
            = write(ends[1], answer.constData(), size_t(answer.size())) == answer.size();
        _exit(told ? 0 : 1);
    }
    (void)close(ends[1]);
    QByteArray answer(kMostBytes, '\0');
    int size = 0;
    for (ssize_t got = 1; got > 0; size += int(std::max<ssize_t>(got, 0)))
        got = read(ends[0], answer.data() + size, size_t(kMostBytes - size));
    (void)close(ends[0]);
    int status = -1;
    const bool ended = child > 0 && waitpid(child, &status, 0) == child && status == 0;
    return ended ? answer.left(size) : QByteArray("the child died");
}

bool giveAway(const QString &folder)
{
    if (geteuid() != 0)
        return true;
    QStringList paths(folder);
    QDirIterator it(folder, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext())
        paths << it.next();
    for (const QString &path : std::as_const(paths)) {
        if (chown(QFile::encodeName(path).constData(), kNobody, kNobody) != 0)
            return false;
    }
    return true;
}

bool giveUpRights()
{
    if (geteuid() == 0
        && (setgroups(0, nullptr) != 0 || setresgid(kNobody, kNobody, kNobody) != 0
            || setresuid(kNobody, kNobody, kNobody) != 0))
        return false;
    return geteuid() != 0;
}

bool mountDisk(const QString &folder, int bytes)
{
    const QByteArray size = "mode=0777,size=" + QByteArray::number(bytes);
    return enterOwnMounts() && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0
        && mount("tmpfs", QFile::encodeName(folder).constData(), "tmpfs", 0, size.constData()) == 0;
}

bool makeDiskReadOnly(const QString &folder)
{
    return mount("none", QFile::encodeName(folder).constData(), nullptr, MS_REMOUNT | MS_RDONLY,
                 nullptr)
        == 0;
}
