#pragma once
// A folder for a store, and looks into its files past the classes under test.

#include "store/Ledger.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <sqlite3.h>

#include <string>

//! The wall clock of the tests: 2031-03-05 12:00:00 UTC.
constexpr qint64 kNow = 1930478400;

class StoreFolder
{
public:
    [[nodiscard]] std::string path() const
    {
        return m_folder.path().toStdString();
    }
    [[nodiscard]] QString file(const char *name = "velq.db") const
    {
        return m_folder.filePath(name);
    }
    [[nodiscard]] velq::StoreOptions options() const
    {
        velq::StoreOptions options;
        options.directory = path();
        options.wallSeconds = [] { return std::int64_t(kNow); };
        return options;
    }
    [[nodiscard]] QStringList entries() const
    {
        return QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    [[nodiscard]] QByteArray content(const QString &name) const
    {
        QFile file(m_folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void write(const char *name, const QByteArray &content) const
    {
        QFile file(m_folder.filePath(QString::fromLatin1(name)));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write a test file");
    }

private:
    QTemporaryDir m_folder;
};

//! Runs \a sql on the file and answers the first column of the last row; -1 on failure.
inline qint64 runSql(const QString &file, const char *sql)
{
    sqlite3 *database = nullptr;
    qint64 value = -1;
    if (sqlite3_open(file.toUtf8().constData(), &database) == SQLITE_OK) {
        const auto take = [](void *target, int, char **columns, char **) {
            *static_cast<qint64 *>(target) = columns[0] ? QByteArray(columns[0]).toLongLong() : 0;
            return 0;
        };
        if (sqlite3_exec(database, sql, take, &value, nullptr) != SQLITE_OK)
            value = -1;
    }
    sqlite3_close(database);
    return value;
}

//! The device of amounts in the tests.
constexpr const char *kDevice = "name:wwan0";

inline velq::Day utcDay(std::int64_t second)
{
    return static_cast<velq::Day>(second / 86400);
}

inline velq::Changes amounts(qint64 second, qint64 download, qint64 upload = 0, int type = 0)
{
    velq::Changes changes;
    changes.hours[{ velq::hourStart(second), utcDay(second), kDevice, type }]
        = { download, upload, 1000, 1000 };
    return changes;
}

inline velq::LedgerOptions ledgerOptions(const velq::StoreOptions &store,
                                         const std::string &boot = "boot")
{
    velq::LedgerOptions options;
    options.store = store;
    options.boot = boot;
    options.dayOf = utcDay;
    options.begunAt = kNow;
    return options;
}

//! The time at which the system of the tests has started.
constexpr qint64 kBooted = kNow - 1000000;

inline velq::Moment momentOf(std::int64_t second)
{
    return { second, second - kBooted };
}

inline void book(velq::Ledger &ledger, int type, std::int64_t second, const velq::Amounts &amounts)
{
    velq::BookingBatch batch;
    batch.bookings.push_back({ kDevice, type, amounts });
    ledger.book(batch, momentOf(second));
}

inline std::int64_t download(velq::Ledger &ledger, int type = 0)
{
    return ledger.totals(type, { 0, INT32_MAX }).download;
}

inline bool contains(const std::string &text, const char *words)
{
    return text.find(words) != std::string::npos;
}
