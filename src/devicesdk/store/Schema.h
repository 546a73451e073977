#pragma once

#include "store/Sqlite.h"

#include <vector>

namespace velq {

//! SQL that leads from schema number i to i + 1, for i from 0 (an empty database).
using Migrations = std::vector<const char *>;

//! All steps of this version; their count is the schema number that it writes. By value: the store
//! is closed while the library's static objects are destroyed, so it may not rely on one.
[[nodiscard]] Migrations schemaMigrations();

/*! What a database is, seen from a list of migrations. */
enum class SchemaState {
    Current,
    Old, //!< can be migrated; an empty database too
    Newer, //!< written by a later version
    Foreign, //!< a database of something else, or one with other tables than its number says
    Unreadable //!< asking failed
};

struct SchemaCheck
{
    SchemaState state = SchemaState::Unreadable;
    std::int64_t number = 0; //!< user_version
    int error = 0; //!< SQLite's code when unreadable
};

[[nodiscard]] SchemaCheck checkSchema(Database &database, const Migrations &migrations);

/*!
 * Looks at every page and row of a database that is no newer: 0, SQLITE_CORRUPT for a damaged page
 * or a value that is not of its column's type, or another of SQLite's codes.
 */
[[nodiscard]] int checkContent(Database &database);

/*!
 * Makes up for rows that others need, in a current database: amounts of a device that is missing
 * get one, so that no new device takes them over. 0, or SQLite's code.
 */
[[nodiscard]] int completeRows(Database &database);

/*!
 * Applies the missing steps, each in one transaction with its number, and leaves what was reached
 * when one fails. 0, or SQLite's code.
 */
[[nodiscard]] int migrate(Database &database, const Migrations &migrations);

} // namespace velq
