#pragma once
// A disk whose power can be cut: an SQLite file system that notes what was written to the files of
// one folder, and what of it has been synced.

#include <QByteArray>
#include <QString>

#include <functional>
#include <map>
#include <random>
#include <vector>

class CutDisk
{
public:
    //! Stands in the place of SQLite's usual file system while it lives; one at a time.
    CutDisk();
    ~CutDisk();
    CutDisk(const CutDisk &) = delete;
    CutDisk &operator=(const CutDisk &) = delete;

    //! Called after each change of a file below \a folder. Nothing more after an empty one.
    void watch(const QString &folder, std::function<void()> changed);

    //! Writes to \a target what the files hold: a copy without closing.
    void copyAsWritten(const QString &target) const;
    /*!
     * Writes to \a target what a power cut leaves: what was synced, and of what was written since
     * each part with a chance of \a share, in any order. Side files that were never synced may be
     * missing altogether.
     */
    void copyAfterCut(const QString &target, double share, std::mt19937 &random) const;

    // For the file system's functions.
    void noteWrite(const QString &path, const void *bytes, int size, qint64 offset);
    void noteTruncate(const QString &path, qint64 size);
    void noteSync(const QString &path);
    void noteDelete(const QString &path);
    [[nodiscard]] static CutDisk *current();

private:
    struct Write
    {
        qint64 offset = 0; //!< of a truncation: the new size
        QByteArray bytes;
        bool truncates = false;
    };
    struct File
    {
        QByteArray durable;
        std::vector<Write> since; //!< the latest sync
        bool wasSynced = false;
    };
    static void apply(const Write &write, QByteArray &content);
    [[nodiscard]] File *find(const QString &path);
    void changed();

    QString m_folder;
    std::function<void()> m_changed;
    std::map<QString, File> m_files; // by name
};
