#pragma once

#include <cstdint>
#include <string>

struct sqlite3;
struct sqlite3_stmt;

namespace velq {

/*! A database connection. Results are SQLite's primary codes; 0 is success. */
class Database
{
public:
    Database() = default;
    ~Database();
    Database(const Database &) = delete;
    Database &operator=(const Database &) = delete;

    //! \a flags as for sqlite3_open_v2(); \a path may be ":memory:" or, with its flag, a URI.
    [[nodiscard]] int open(const std::string &path, int flags);
    //! Statements have to be gone.
    void close();
    //! Forgets the connection without touching its files: for a child process that inherited it.
    void abandon();
    //! Lets the files stay as they are when this closes: for a damaged database, as evidence.
    void preserveFiles();
    [[nodiscard]] bool isOpen() const
    {
        return m_handle != nullptr;
    }
    [[nodiscard]] bool isReadOnly() const;
    [[nodiscard]] int execute(const char *sql);
    //! The first column of the first row; \a value is untouched on failure or without a row.
    [[nodiscard]] int queryInteger(const char *sql, std::int64_t &value);
    [[nodiscard]] int queryText(const char *sql, std::string &value);
    //! The latest error in words.
    [[nodiscard]] std::string errorText() const;
    [[nodiscard]] sqlite3 *handle() const
    {
        return m_handle;
    }

private:
    sqlite3 *m_handle = nullptr;
    sqlite3 *m_abandoned = nullptr; // never freed; known here, so that it is no leak
};

/*!
 * Copies \a source, while it is in use, to a new file \a path of this user alone. Empty, or what
 * went wrong in English; nothing is left behind then.
 */
[[nodiscard]] std::string copyDatabase(Database &source, const std::string &path);

/*! A prepared statement; its database has to outlive it. */
class Statement
{
public:
    Statement() = default;
    ~Statement();
    Statement(const Statement &) = delete;
    Statement &operator=(const Statement &) = delete;

    [[nodiscard]] int prepare(Database &database, const char *sql);
    void finalize();
    void abandon()
    {
        m_statement = nullptr;
    }
    void bind(int position, std::int64_t value); //!< from 1; for positions that exist
    void bind(int position, const std::string &value);
    [[nodiscard]] int step(); //!< SQLITE_ROW, SQLITE_DONE or an error
    void reset();
    //! Runs a statement without rows; 0 is success.
    [[nodiscard]] int run();
    [[nodiscard]] std::int64_t integer(int column) const; //!< from 0
    [[nodiscard]] std::string text(int column) const;

private:
    sqlite3_stmt *m_statement = nullptr;
};

} // namespace velq
