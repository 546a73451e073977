#pragma once

#include "store/BookReader.h"
#include "store/BookWriter.h"
#include "store/Schema.h"
#include "store/Sqlite.h"
#include "store/StoreFiles.h"
#include "store/WriterLock.h"

#include <functional>
#include <string>

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
 * The database of the books. It opens what it can, says in words what is wrong, and mends itself at
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
    //! Whether there is something to read.
    [[nodiscard]] bool isReadable() const
    {
        return m_state != StoreState::Closed && m_database.isOpen();
    }
    //! Lets \a query, which returns SQLite's code, read; false when it failed.
    [[nodiscard]] bool read(const std::function<int(const BookReader &)> &query);
    /*!
     * Another number after each change that did not come through commit(): opened, closed, begun
     * anew, written by another process. What was read before is old then.
     */
    [[nodiscard]] std::uint64_t version();
    //! How often a database was begun, as there was none.
    [[nodiscard]] int begun() const
    {
        return m_begun;
    }
    //! How often a damaged file has been set aside.
    [[nodiscard]] int setAsides() const
    {
        return m_setAsides;
    }
    //! Copies the database to \a path, which must not exist. Empty, or what went wrong.
    [[nodiscard]] std::string backUp(const std::string &path);
    //! What is wrong at the moment, in English; empty while all is well.
    [[nodiscard]] std::string problem() const;

private:
    [[nodiscard]] std::string path() const;
    [[nodiscard]] std::string lockPath() const;
    void openMemory();
    void openFile();
    void openWritable();
    void openForReading(StoreState state);
    //! Opens, checks and migrates. SQLite's code; \a damaged when the file has to be set aside.
    int openAndMigrate(bool &damaged);
    int checkWritable();
    //! Lets a sound database be written: migrates it and completes its rows.
    int makeCurrent(const SchemaCheck &check);
    bool setAside();
    void noteFailure(int code);
    void dropConnection();
    [[nodiscard]] bool prepareStatements(bool writing);

    const StoreOptions m_options;
    StoreState m_state = StoreState::Closed;
    WriterLock m_lock;
    Database m_database;
    FileIdentity m_identity;
    BookWriter m_writer;
    std::uint64_t m_version = 0;
    std::int64_t m_dataVersion = 0; // SQLite's: changes of other connections
    std::string m_problem; // what is wrong now
    int m_begun = 0;
    int m_setAsides = 0;
    std::string m_notice; // what was set aside since the start
};

} // namespace velq
