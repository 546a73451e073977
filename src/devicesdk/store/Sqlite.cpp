#include "store/Sqlite.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <system_error>
#include <utility>

namespace velq {

namespace {

constexpr int kPrimaryCode = 0xff; // extended result codes carry more in the bits above

} // namespace

Database::~Database()
{
    close();
}

int Database::open(const std::string &path, int flags)
{
    close();
    const int result = sqlite3_open_v2(path.c_str(), &m_handle, flags, nullptr) & kPrimaryCode;
    if (result != SQLITE_OK)
        close();
    return result;
}

void Database::close()
{
    if (m_handle)
        sqlite3_close(m_handle);
    m_handle = nullptr;
}

void Database::abandon()
{
    m_abandoned = std::exchange(m_handle, nullptr);
}

void Database::preserveFiles()
{
    if (m_handle)
        (void)sqlite3_db_config(m_handle, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
}

bool Database::isReadOnly() const
{
    return m_handle && sqlite3_db_readonly(m_handle, "main") == 1;
}

int Database::execute(const char *sql)
{
    if (!m_handle)
        return SQLITE_MISUSE;
    return sqlite3_exec(m_handle, sql, nullptr, nullptr, nullptr) & kPrimaryCode;
}

int Database::queryInteger(const char *sql, std::int64_t &value)
{
    Statement statement;
    int result = statement.prepare(*this, sql);
    if (result == SQLITE_OK)
        result = statement.step();
    if (result == SQLITE_ROW)
        value = statement.integer(0);
    return result == SQLITE_ROW || result == SQLITE_DONE ? SQLITE_OK : result;
}

int Database::queryText(const char *sql, std::string &value)
{
    Statement statement;
    int result = statement.prepare(*this, sql);
    if (result == SQLITE_OK)
        result = statement.step();
    if (result == SQLITE_ROW)
        value = statement.text(0);
    return result == SQLITE_ROW || result == SQLITE_DONE ? SQLITE_OK : result;
}

std::string Database::errorText() const
{
    return m_handle ? sqlite3_errmsg(m_handle) : "it cannot be opened";
}

std::string copyDatabase(Database &source, const std::string &path)
{
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (file < 0)
        return path + " cannot be created: " + std::generic_category().message(errno) + ".";
    (void)::close(file);
    Database target;
    int code = target.open(path, SQLITE_OPEN_READWRITE);
    if (code == SQLITE_OK) {
        sqlite3_backup *backup
            = sqlite3_backup_init(target.handle(), "main", source.handle(), "main");
        if (backup)
            (void)sqlite3_backup_step(backup, -1); // finish() repeats its failure
        code = backup ? sqlite3_backup_finish(backup) & kPrimaryCode : SQLITE_ERROR;
    }
    if (code == SQLITE_OK)
        return {};
    const std::string words = path + " cannot be written: " + target.errorText() + ".";
    target.close();
    (void)std::remove(path.c_str());
    return words;
}

Statement::~Statement()
{
    finalize();
}

int Statement::prepare(Database &database, const char *sql)
{
    finalize();
    if (!database.isOpen())
        return SQLITE_MISUSE;
    return sqlite3_prepare_v2(database.handle(), sql, -1, &m_statement, nullptr) & kPrimaryCode;
}

void Statement::finalize()
{
    sqlite3_finalize(m_statement);
    m_statement = nullptr;
}

void Statement::bind(int position, std::int64_t value)
{
    (void)sqlite3_bind_int64(m_statement, position, value);
}

void Statement::bind(int position, const std::string &value)
{
    (void)sqlite3_bind_text(m_statement, position, value.data(), static_cast<int>(value.size()),
                            SQLITE_TRANSIENT);
}

int Statement::step()
{
    return sqlite3_step(m_statement) & kPrimaryCode;
}

void Statement::reset()
{
    (void)sqlite3_reset(m_statement); // repeats the error of step(), which was seen there
}

int Statement::run()
{
    const int result = step();
    reset();
    return result == SQLITE_DONE ? SQLITE_OK : result;
}

std::int64_t Statement::integer(int column) const
{
    return sqlite3_column_int64(m_statement, column);
}

std::string Statement::text(int column) const
{
    const auto *bytes = reinterpret_cast<const char *>(sqlite3_column_text(m_statement, column));
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(m_statement, column));
    return bytes ? std::string(bytes, size) : std::string(); // a NUL is a character
}

} // namespace velq
