#pragma once

#include "store/Bucket.h"
#include "store/Schema.h"
#include "store/Sqlite.h"
#include "store/StoreFiles.h"
#include "store/WriterLock.h"

#include <array>
#include <functional>
#include <string>
#include <vector>

namespace velq {

/*! Where a store is and how it learns the time. */
struct StoreOptions
{
    std::string directory; //!< absolute; empty with inMemory
    bool inMemory = false;
    std::string complaint; //!< not empty: the directory is unusable for this reason
    std::function<std::int64_t()> wallSeconds; //!< for the names of what is set aside
};

enum class StoreState {
    Closed, //!< nothing can be read or written at the moment
    Writable,
    ReadOnly, //!< can be read; writing is tried again
    Shared, //!< another process writes; this one only reads
};

/*!
 * The database of buckets. It opens what it can, says in words what is wrong, and mends itself at
 * the next open() or commit(). One thread at a time.
 */
class Store
{
public:
    explicit Store(StoreOptions options);
    ~Store();
    Store(const Store &) = delete;
    Store &operator=(const Store &) = delete;

    //! Opens the database, or tries to get from a lesser state to Writable.
    void open();
    void close();
    //! After a fork, in the child: forgets everything without touching the parent's files.
    void abandon();
    [[nodiscard]] StoreState state() const
    {
        return m_state;
    }

    //! Whether the file that was open has been removed meanwhile.
    [[nodiscard]] bool isRemoved() const;

    //! Writes \a changes in one transaction; false when nothing of it was written.
    [[nodiscard]] bool commit(const Changes &changes);
    //! The stored sum of \a type in \a span; false when it cannot be read, and untouched then.
    [[nodiscard]] bool sum(int type, const Span &span, Totals &totals);
    //! When \a type was last reset, or the store was begun; untouched when it cannot be read.
    [[nodiscard]] bool lastReset(int type, std::int64_t &at);
    //! What is wrong at the moment, in English; empty while all is well.
    [[nodiscard]] std::string problem() const;

private:
    struct CachedSum
    {
        int type = 0;
        Span span;
        Totals totals;
    };

    [[nodiscard]] std::string path() const;
    void openMemory();
    void openFile();
    void openWritable();
    void openForReading(StoreState state);
    //! Opens, checks and migrates. SQLite's code; \a damaged when the file has to be set aside.
    int openAndMigrate(bool &damaged);
    int checkWritable();
    bool setAside();
    void noteFailure(int code);
    void dropConnection();
    [[nodiscard]] bool prepareStatements(bool writing);
    int write(const Changes &changes);
    int writeReset(int type, std::int64_t at);
    void updateCache(const Changes &changes);

    const StoreOptions m_options;
    StoreState m_state = StoreState::Closed;
    WriterLock m_lock;
    Database m_database;
    FileIdentity m_identity;
    Statement m_add;
    Statement m_clear;
    Statement m_setReset;
    Statement m_sum;
    Statement m_lastReset;
    std::vector<CachedSum> m_cache; // only while Writable: nobody else changes the store then
    std::string m_problem; // what is wrong now
    std::string m_notice; // what was set aside since the start
};

} // namespace velq
