#include "CutDisk.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sqlite3.h>

#include <cstring>

namespace {

CutDisk *g_current = nullptr;
sqlite3_vfs *g_system = nullptr;

/*! What SQLite takes for its file: ours, and the system's behind it. */
struct CutFile
{
    sqlite3_file base;
    QString *path;
    [[nodiscard]] sqlite3_file *system()
    {
        return reinterpret_cast<sqlite3_file *>(this + 1);
    }
};

CutFile *cutFile(sqlite3_file *file)
{
    return reinterpret_cast<CutFile *>(file);
}

sqlite3_file *systemFile(sqlite3_file *file)
{
    return cutFile(file)->system();
}

int closeFile(sqlite3_file *file)
{
    const int code = systemFile(file)->pMethods->xClose(systemFile(file));
    delete cutFile(file)->path;
    return code;
}

int readFile(sqlite3_file *file, void *bytes, int size, sqlite3_int64 offset)
{
    return systemFile(file)->pMethods->xRead(systemFile(file), bytes, size, offset);
}

int writeFile(sqlite3_file *file, const void *bytes, int size, sqlite3_int64 offset)
{
    const int code = systemFile(file)->pMethods->xWrite(systemFile(file), bytes, size, offset);
    if (code == SQLITE_OK && g_current)
        g_current->noteWrite(*cutFile(file)->path, bytes, size, offset);
    return code;
}

int truncateFile(sqlite3_file *file, sqlite3_int64 size)
{
    const int code = systemFile(file)->pMethods->xTruncate(systemFile(file), size);
    if (code == SQLITE_OK && g_current)
        g_current->noteTruncate(*cutFile(file)->path, size);
    return code;
}

int syncFile(sqlite3_file *file, int flags)
{
    const int code = systemFile(file)->pMethods->xSync(systemFile(file), flags);
    if (code == SQLITE_OK && g_current)
        g_current->noteSync(*cutFile(file)->path);
    return code;
}

int fileSize(sqlite3_file *file, sqlite3_int64 *size)
{
    return systemFile(file)->pMethods->xFileSize(systemFile(file), size);
}

int lockFile(sqlite3_file *file, int level)
{
    return systemFile(file)->pMethods->xLock(systemFile(file), level);
}

int unlockFile(sqlite3_file *file, int level)
{
    return systemFile(file)->pMethods->xUnlock(systemFile(file), level);
}

int checkReserved(sqlite3_file *file, int *result)
{
    return systemFile(file)->pMethods->xCheckReservedLock(systemFile(file), result);
}

int controlFile(sqlite3_file *file, int operation, void *argument)
{
    return systemFile(file)->pMethods->xFileControl(systemFile(file), operation, argument);
}

int sectorSize(sqlite3_file *file)
{
    return systemFile(file)->pMethods->xSectorSize(systemFile(file));
}

//! A disk of which nothing good is known.
int characteristics(sqlite3_file *)
{
    return 0;
}

int mapShared(sqlite3_file *file, int page, int size, int extend, void volatile **memory)
{
    return systemFile(file)->pMethods->xShmMap(systemFile(file), page, size, extend, memory);
}

int lockShared(sqlite3_file *file, int offset, int count, int flags)
{
    return systemFile(file)->pMethods->xShmLock(systemFile(file), offset, count, flags);
}

void barrier(sqlite3_file *file)
{
    systemFile(file)->pMethods->xShmBarrier(systemFile(file));
}

int unmapShared(sqlite3_file *file, int remove)
{
    return systemFile(file)->pMethods->xShmUnmap(systemFile(file), remove);
}

const sqlite3_io_methods kMethods
    = { 2,           closeFile,   readFile,        writeFile,  truncateFile,
        syncFile,    fileSize,    lockFile,        unlockFile, checkReserved,
        controlFile, sectorSize,  characteristics, mapShared,  lockShared,
        barrier,     unmapShared, nullptr,         nullptr };

int openFile(sqlite3_vfs *, const char *name, sqlite3_file *file, int flags, int *outFlags)
{
    auto *const cut = cutFile(file);
    cut->base.pMethods = nullptr;
    const int code = g_system->xOpen(g_system, name, cut->system(), flags, outFlags);
    if (code != SQLITE_OK)
        return code;
    cut->path = new QString(QString::fromUtf8(name));
    cut->base.pMethods = &kMethods;
    return SQLITE_OK;
}

int deleteFile(sqlite3_vfs *, const char *name, int syncFolder)
{
    const int code = g_system->xDelete(g_system, name, syncFolder);
    if (code == SQLITE_OK && g_current)
        g_current->noteDelete(QString::fromUtf8(name));
    return code;
}

sqlite3_vfs *cutSystem()
{
    static sqlite3_vfs system = *g_system;
    system.zName = "cut";
    system.pNext = nullptr;
    system.szOsFile = int(sizeof(CutFile)) + g_system->szOsFile;
    system.xOpen = openFile;
    system.xDelete = deleteFile;
    return &system;
}

void writeAll(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("a snapshot cannot be written");
}

} // namespace

CutDisk::CutDisk()
{
    g_system = sqlite3_vfs_find("unix");
    g_current = this;
    (void)sqlite3_vfs_register(cutSystem(), 1);
}

CutDisk::~CutDisk()
{
    (void)sqlite3_vfs_unregister(cutSystem());
    (void)sqlite3_vfs_register(g_system, 1);
    g_current = nullptr;
}

CutDisk *CutDisk::current()
{
    return g_current;
}

void CutDisk::watch(const QString &folder, std::function<void()> changed)
{
    m_folder = folder;
    m_changed = std::move(changed);
    m_files.clear();
}

CutDisk::File *CutDisk::find(const QString &path)
{
    const QFileInfo info(path);
    return m_changed && info.path() == m_folder ? &m_files[info.fileName()] : nullptr;
}

void CutDisk::changed()
{
    const auto call = m_changed; // it may watch something else
    call();
}

void CutDisk::noteWrite(const QString &path, const void *bytes, int size, qint64 offset)
{
    File *const file = find(path);
    if (!file)
        return;
    file->since.push_back({ offset, QByteArray(static_cast<const char *>(bytes), size), false });
    changed();
}

void CutDisk::noteTruncate(const QString &path, qint64 size)
{
    File *const file = find(path);
    if (!file)
        return;
    file->since.push_back({ size, {}, true });
    changed();
}

void CutDisk::noteSync(const QString &path)
{
    File *const file = find(path);
    if (!file)
        return;
    for (const Write &write : file->since)
        apply(write, file->durable);
    file->since.clear();
    file->wasSynced = true;
    changed();
}

void CutDisk::noteDelete(const QString &path)
{
    if (find(path))
        m_files.erase(QFileInfo(path).fileName());
}

void CutDisk::apply(const Write &write, QByteArray &content)
{
    if (write.truncates) {
        content.resize(int(write.offset));
        return;
    }
    const auto end = int(write.offset) + int(write.bytes.size());
    if (content.size() < end)
        content.append(QByteArray(end - int(content.size()), '\0'));
    std::memcpy(content.data() + write.offset, write.bytes.constData(),
                std::size_t(write.bytes.size()));
}

void CutDisk::copyAsWritten(const QString &target) const
{
    for (const QFileInfo &file : QDir(m_folder).entryInfoList(QDir::Files)) {
        if (!QFile::copy(file.filePath(), target + '/' + file.fileName()))
            qFatal("a snapshot cannot be written");
    }
}

void CutDisk::copyAfterCut(const QString &target, double share, std::mt19937 &random) const
{
    std::bernoulli_distribution reached(share);
    for (const auto &[name, file] : m_files) {
        if (!file.wasSynced && !reached(random))
            continue;
        QByteArray content = file.durable;
        for (const Write &write : file.since) {
            if (reached(random))
                apply(write, content);
        }
        writeAll(target + '/' + name, content);
    }
}
