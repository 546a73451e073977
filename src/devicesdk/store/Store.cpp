#include "store/Store.h"

#include <sqlite3.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <system_error>
#include <utility>

namespace velq {

namespace {

constexpr int kBusyTimeoutMs = 1000;
// KiB of pages that SQLite keeps; the check of a large store would fill all that it may have.
constexpr const char *kSmallCache = "PRAGMA cache_size = -256";

bool isDamage(int code)
{
    return code == SQLITE_CORRUPT || code == SQLITE_NOTADB;
}

std::string reason(int error)
{
    return std::generic_category().message(error);
}

//! A "file:" URI that tells SQLite that nobody writes to the file: for disks without write access.
std::string immutableUri(const std::string &path)
{
    std::string uri = "file:";
    for (const char c : path) {
        if (c == '%' || c == '?' || c == '#') {
            constexpr const char *kDigits = "0123456789ABCDEF";
            uri += '%';
            uri += kDigits[(static_cast<unsigned char>(c) >> 4) & 15];
            uri += kDigits[static_cast<unsigned char>(c) & 15];
        } else {
            uri += c;
        }
    }
    return uri + "?immutable=1";
}

} // namespace

Store::Store(StoreOptions options)
    : m_options(std::move(options))
{
}

Store::~Store()
{
    close();
}

std::string Store::path() const
{
    return m_options.directory + "/" + kStoreFileName;
}

std::string Store::lockPath() const
{
    return m_options.directory + "/" + kLockFileName;
}

void Store::open()
{
    if (m_state == StoreState::Writable)
        return;
    if (m_options.inMemory)
        openMemory();
    else if (!m_options.complaint.empty())
        m_problem = m_options.complaint + " Figures are kept in memory only.";
    else
        openFile();
}

void Store::close()
{
    dropConnection();
    m_lock.release();
}

void Store::abandon()
{
    m_writer.abandon();
    m_database.abandon();
    m_lock.abandon();
    m_state = StoreState::Closed;
}

void Store::dropConnection()
{
    m_writer.finalize();
    m_database.close();
    m_state = StoreState::Closed;
    ++m_version;
}

void Store::openMemory()
{
    const int code = m_database.open(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    if (code == SQLITE_OK && migrate(m_database, schemaMigrations()) == SQLITE_OK
        && m_writer.prepare(m_database) == SQLITE_OK)
        m_state = StoreState::Writable;
    else
        m_problem = "The usage figures cannot be kept: " + m_database.errorText() + ".";
}

void Store::openFile()
{
    dropConnection();
    const int error = makeDirectories(m_options.directory);
    if (error) {
        m_problem = "The data directory " + m_options.directory
            + " cannot be created: " + reason(error) + ". Figures are kept in memory until it can.";
        return;
    }
    switch (m_lock.take(lockPath())) {
    case WriterLock::Result::Taken:
        openWritable();
        break;
    case WriterLock::Result::Held:
        m_problem = "Another process counts into " + path()
            + ". This one only reads what is stored there.";
        openForReading(StoreState::Shared);
        m_state = StoreState::Shared; // also while there is nothing to read yet
        break;
    case WriterLock::Result::Failed:
        m_problem = "The data directory " + m_options.directory + " is not writable: "
            + reason(m_lock.error()) + ". Figures are kept in memory until it is.";
        openForReading(StoreState::ReadOnly);
        break;
    }
}

void Store::openWritable()
{
    bool damaged = false;
    int code = openAndMigrate(damaged);
    if (damaged) {
        dropConnection();
        if (!setAside())
            return;
        damaged = false;
        code = openAndMigrate(damaged);
    }
    if (code == SQLITE_OK) {
        ++m_version;
        m_identity = fileIdentity(path());
        m_state = StoreState::Writable;
        m_problem.clear();
        return;
    }
    if (code == SQLITE_MISMATCH) { // a newer schema; it has told its problem
        dropConnection();
        return;
    }
    noteFailure(code);
    openForReading(StoreState::ReadOnly);
}

int Store::openAndMigrate(bool &damaged)
{
    damaged = isNoDatabase(path());
    if (damaged)
        return SQLITE_NOTADB;
    int code = m_database.open(path(), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    if (code == SQLITE_OK)
        code = checkWritable();
    damaged = isDamage(code);
    if (damaged)
        m_database.preserveFiles();
    return code;
}

int Store::checkWritable()
{
    sqlite3_busy_timeout(m_database.handle(), kBusyTimeoutMs);
    const SchemaCheck check = checkSchema(m_database, schemaMigrations());
    if (check.state == SchemaState::Unreadable)
        return check.error;
    if (check.state == SchemaState::Newer) {
        m_problem = "The usage store " + path() + " was written by a newer version (schema "
            + std::to_string(check.number) + ", this version knows "
            + std::to_string(schemaMigrations().size())
            + "). It is left alone; figures are kept in memory only.";
        return SQLITE_MISMATCH;
    }
    if (check.state == SchemaState::Foreign)
        return SQLITE_CORRUPT;
    int code = m_database.execute(kSmallCache);
    if (code == SQLITE_OK)
        code = checkContent(m_database);
    if (code == SQLITE_OK && m_database.isReadOnly())
        code = SQLITE_READONLY;
    if (code == SQLITE_ERROR)
        return SQLITE_CORRUPT; // it cannot even be looked at
    return code ? code : makeCurrent(check);
}

int Store::makeCurrent(const SchemaCheck &check)
{
    int code = SQLITE_OK;
    // What cannot be migrated is found out before the switch to WAL, which changes the file.
    if (check.state == SchemaState::Old && check.number > 0)
        code = migrate(m_database, schemaMigrations());
    // FULL: a committed transaction survives a power cut, not only the end of the process.
    if (code == SQLITE_OK)
        code = m_database.execute("PRAGMA journal_mode = WAL; PRAGMA synchronous = FULL");
    if (code == SQLITE_OK)
        code = migrate(m_database, schemaMigrations());
    if (code == SQLITE_ERROR)
        code = SQLITE_CORRUPT; // a step cannot do with what the tables hold
    if (code == SQLITE_OK)
        code = completeRows(m_database);
    if (code != SQLITE_OK)
        return code;
    code = m_writer.prepare(m_database);
    if (code == SQLITE_OK && check.number == 0)
        ++m_begun;
    // The number is right but the tables are not there. Every other failure may pass.
    return code == SQLITE_ERROR ? SQLITE_CORRUPT : code;
}

void Store::openForReading(StoreState state)
{
    dropConnection();
    int code = m_database.open(path(), SQLITE_OPEN_READONLY);
    SchemaCheck check;
    if (code == SQLITE_OK) {
        sqlite3_busy_timeout(m_database.handle(), kBusyTimeoutMs);
        check = checkSchema(m_database, schemaMigrations());
    }
    // WAL needs a side file. Where that cannot be made, nobody else can write either; but without
    // what waits in the log the file alone may be neither new nor whole.
    if (check.state == SchemaState::Unreadable && state == StoreState::ReadOnly
        && isEmptyOrMissing(path() + "-wal")) {
        code = m_database.open(immutableUri(path()), SQLITE_OPEN_READONLY | SQLITE_OPEN_URI);
        if (code == SQLITE_OK)
            check = checkSchema(m_database, schemaMigrations());
    }
    if (check.state != SchemaState::Current) {
        dropConnection();
        return;
    }
    (void)m_database.execute(kSmallCache);
    m_state = state;
    ++m_version;
}

bool Store::setAside()
{
    std::string name;
    const std::int64_t now = m_options.wallSeconds ? m_options.wallSeconds() : 0;
    const int error = setAsideDatabase(path(), now, name);
    if (error) {
        m_problem = "The usage store " + path() + " is damaged and cannot be set aside: "
            + reason(error) + ". Figures are kept in memory only.";
        return false;
    }
    ++m_setAsides;
    m_notice = "The usage store " + path() + " was damaged and has been set aside as " + name
        + "; a new one was begun.";
    return true;
}

void Store::noteFailure(int code)
{
    const std::string words = code == SQLITE_FULL ? "the disk is full"
        : code == SQLITE_READONLY                 ? "it is write-protected"
                                                  : m_database.errorText();
    m_problem = "The usage store " + path() + " cannot be written: " + words
        + ". Figures are kept in memory until it can.";
}

bool Store::isRemoved() const
{
    return m_state == StoreState::Writable && !m_options.inMemory
        && fileIdentity(path()).inode == 0;
}

bool Store::commit(const Changes &changes)
{
    // Somebody removed or replaced the file: what is written to the old one would be lost. Without
    // the lock's file another process may count as well.
    if (m_state == StoreState::Writable && !m_options.inMemory
        && (!(fileIdentity(path()) == m_identity) || !m_lock.isIn(lockPath()))) {
        dropConnection();
        m_lock.release(); // its file may be gone as well
    }
    open();
    if (m_state != StoreState::Writable)
        return false;
    if (changes.isEmpty())
        return true;
    const int code = m_writer.write(changes);
    if (code == SQLITE_OK) {
        m_problem.clear();
        return true;
    }
    noteFailure(code);
    m_writer.forgetDevices();
    (void)m_database.execute("ROLLBACK"); // fails when SQLite has rolled back by itself
    if (m_options.inMemory)
        return false;
    if (isDamage(code))
        m_database.preserveFiles();
    // What can still be read stays open. Else the next attempt looks at the file anew.
    std::int64_t types = 0;
    if (isDamage(code) || m_database.queryInteger("SELECT count(*) FROM reset", types) != SQLITE_OK)
        dropConnection();
    return false;
}

bool Store::read(const std::function<int(const BookReader &)> &query)
{
    if (!isReadable())
        return false;
    const int code = query(BookReader(m_database));
    if (isDamage(code)) {
        m_database.preserveFiles();
        dropConnection(); // the next commit sets it aside
    }
    return code == SQLITE_OK;
}

std::uint64_t Store::version()
{
    std::int64_t dataVersion = m_dataVersion;
    if (m_state == StoreState::Shared
        && m_database.queryInteger("PRAGMA data_version", dataVersion) == SQLITE_OK
        && dataVersion != m_dataVersion) {
        m_dataVersion = dataVersion;
        ++m_version;
    }
    return m_version;
}

std::string Store::backUp(const std::string &path)
{
    if (!isReadable())
        return "There is no store that can be read.";
    return copyDatabase(m_database, path);
}

std::string Store::problem() const
{
    if (m_problem.empty() || m_notice.empty())
        return m_problem + m_notice;
    return m_problem + " " + m_notice;
}

} // namespace velq
