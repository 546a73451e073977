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
constexpr std::size_t kMaxCachedSums = 16; // four periods of two types, twice

bool isDamage(int code)
{
    return code == SQLITE_CORRUPT || code == SQLITE_NOTADB;
}

std::string reason(int error)
{
    return std::generic_category().message(error);
}

std::int64_t stored(std::uint64_t amount)
{
    return static_cast<std::int64_t>(
        std::min<std::uint64_t>(amount, std::uint64_t(INT64_MAX))); // SQLite's integers are signed
}

std::uint64_t unsignedAmount(std::int64_t value)
{
    return value > 0 ? static_cast<std::uint64_t>(value) : 0;
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
    for (Statement *statement : { &m_add, &m_clear, &m_setReset, &m_sum, &m_lastReset })
        statement->abandon();
    m_database.abandon();
    m_lock.abandon();
    m_state = StoreState::Closed;
    m_cache.clear();
}

void Store::dropConnection()
{
    for (Statement *statement : { &m_add, &m_clear, &m_setReset, &m_sum, &m_lastReset })
        statement->finalize();
    m_database.close();
    m_cache.clear();
    m_state = StoreState::Closed;
}

void Store::openMemory()
{
    const int code = m_database.open(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    if (code == SQLITE_OK && migrate(m_database, schemaMigrations()) == SQLITE_OK
        && prepareStatements(true))
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
    switch (m_lock.take(m_options.directory + "/" + kLockFileName)) {
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
    if (code == SQLITE_OK && prepareStatements(true)) {
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
    std::string health;
    int code = m_database.queryText("PRAGMA quick_check(1)", health);
    if (code == SQLITE_OK && health != "ok")
        code = SQLITE_CORRUPT;
    if (code == SQLITE_OK && m_database.isReadOnly())
        code = SQLITE_READONLY;
    // FULL: a committed transaction survives a power cut, not only the end of the process.
    if (code == SQLITE_OK)
        code = m_database.execute("PRAGMA journal_mode = WAL; PRAGMA synchronous = FULL");
    if (code == SQLITE_OK)
        code = migrate(m_database, schemaMigrations());
    if (code == SQLITE_OK && !prepareStatements(true))
        code = SQLITE_CORRUPT; // the number is right but the tables are not there
    return code;
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
    if (check.state == SchemaState::Current && prepareStatements(false))
        m_state = state;
    else
        dropConnection();
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

bool Store::prepareStatements(bool writing)
{
    constexpr const char *kAdd
        = "INSERT INTO bucket (type, start, download, upload, time_ms) VALUES (?1, ?2, ?3, ?4, ?5)"
          " ON CONFLICT (type, start) DO UPDATE SET download = download + excluded.download,"
          " upload = upload + excluded.upload, time_ms = time_ms + excluded.time_ms";
    constexpr const char *kSetReset = "INSERT INTO reset (type, at) VALUES (?1, ?2)"
                                      " ON CONFLICT (type) DO UPDATE SET at = excluded.at";
    constexpr const char *kSum = "SELECT sum(download), sum(upload), sum(time_ms) FROM bucket"
                                 " WHERE type = ?1 AND start >= ?2 AND start < ?3";
    if (m_sum.prepare(m_database, kSum) != SQLITE_OK
        || m_lastReset.prepare(m_database, "SELECT at FROM reset WHERE type = ?1") != SQLITE_OK)
        return false;
    if (!writing)
        return true;
    return m_add.prepare(m_database, kAdd) == SQLITE_OK
        && m_clear.prepare(m_database, "DELETE FROM bucket WHERE type = ?1") == SQLITE_OK
        && m_setReset.prepare(m_database, kSetReset) == SQLITE_OK;
}

bool Store::isRemoved() const
{
    return m_state == StoreState::Writable && !m_options.inMemory
        && fileIdentity(path()).inode == 0;
}

bool Store::commit(const Changes &changes)
{
    // Somebody removed or replaced the file: what is written to the old one would be lost.
    if (m_state == StoreState::Writable && !m_options.inMemory
        && !(fileIdentity(path()) == m_identity)) {
        dropConnection();
        m_lock.release(); // its file may be gone as well
    }
    open();
    if (m_state != StoreState::Writable)
        return false;
    if (changes.isEmpty())
        return true;
    int code = m_database.execute("BEGIN IMMEDIATE");
    if (code == SQLITE_OK)
        code = write(changes);
    if (code == SQLITE_OK)
        code = m_database.execute("COMMIT");
    if (code == SQLITE_OK) {
        m_problem.clear();
        updateCache(changes);
        return true;
    }
    noteFailure(code);
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

int Store::write(const Changes &changes)
{
    for (int type = 0; type < kConnectTypes; ++type) {
        const auto &at = changes.resets[static_cast<std::size_t>(type)];
        const int code = at ? writeReset(type, *at) : SQLITE_OK;
        if (code != SQLITE_OK)
            return code;
    }
    for (const auto &[key, totals] : changes.buckets) {
        m_add.bind(1, key.second);
        m_add.bind(2, key.first);
        m_add.bind(3, stored(totals.download));
        m_add.bind(4, stored(totals.upload));
        m_add.bind(5, stored(totals.timeMs));
        const int code = m_add.run();
        if (code != SQLITE_OK)
            return code;
    }
    return SQLITE_OK;
}

int Store::writeReset(int type, std::int64_t at)
{
    m_clear.bind(1, type);
    m_setReset.bind(1, type);
    m_setReset.bind(2, at);
    const int code = m_clear.run();
    return code == SQLITE_OK ? m_setReset.run() : code;
}

void Store::updateCache(const Changes &changes)
{
    const auto wasReset = [&changes](const CachedSum &cached) {
        return bool(changes.resets[static_cast<std::size_t>(cached.type)]);
    };
    m_cache.erase(std::remove_if(m_cache.begin(), m_cache.end(), wasReset), m_cache.end());
    for (CachedSum &cached : m_cache)
        cached.totals.add(velq::sum(changes.buckets, cached.type, cached.span));
}

bool Store::sum(int type, const Span &span, Totals &totals)
{
    if (m_state == StoreState::Closed || !m_database.isOpen()) {
        totals = {};
        return true; // nothing is stored that could be seen
    }
    for (const CachedSum &cached : m_cache) {
        if (cached.type == type && cached.span.from == span.from && cached.span.to == span.to) {
            totals = cached.totals;
            return true;
        }
    }
    m_sum.bind(1, type);
    m_sum.bind(2, span.from);
    m_sum.bind(3, span.to);
    const int code = m_sum.step();
    const bool found = code == SQLITE_ROW;
    if (found)
        totals = { unsignedAmount(m_sum.integer(0)), unsignedAmount(m_sum.integer(1)),
                   unsignedAmount(m_sum.integer(2)) };
    m_sum.reset();
    if (found && m_state == StoreState::Writable) {
        if (m_cache.size() >= kMaxCachedSums)
            m_cache.erase(m_cache.begin());
        m_cache.push_back({ type, span, totals });
    }
    if (isDamage(code)) {
        m_database.preserveFiles();
        dropConnection(); // the next commit sets it aside
    }
    return found;
}

bool Store::lastReset(int type, std::int64_t &at)
{
    if (!m_database.isOpen())
        return false;
    m_lastReset.bind(1, type);
    const bool found = m_lastReset.step() == SQLITE_ROW;
    if (found)
        at = m_lastReset.integer(0);
    m_lastReset.reset();
    return found;
}

std::string Store::problem() const
{
    if (m_problem.empty() || m_notice.empty())
        return m_problem + m_notice;
    return m_problem + " " + m_notice;
}

} // namespace velq
