#pragma once

#include <cstdint>
#include <string>

namespace velq {

constexpr const char *kStoreFileName = "velq.db";
constexpr const char *kLockFileName = "velq.lock";

//! Makes \a directory and its parents, for the user alone. 0 or errno.
[[nodiscard]] int makeDirectories(const std::string &directory);

/*!
 * Renames the database \a path and its side files to "NAME.damaged-YYYYMMDD-HHMMSS" (UTC; with "-2"
 * and so on when that exists; the side files keep their endings) and gives the new path to
 * \a setAside. 0, or errno with nothing renamed.
 */
[[nodiscard]] int setAsideDatabase(const std::string &path, std::int64_t now,
                                   std::string &setAside);

//! Whether \a path holds something that cannot be a database, so that SQLite need not touch it.
[[nodiscard]] bool isNoDatabase(const std::string &path);

[[nodiscard]] bool isEmptyOrMissing(const std::string &path);

/*! Which file a path names, so that a replaced one is noticed. */
struct FileIdentity
{
    std::uint64_t device = 0;
    std::uint64_t inode = 0; //!< 0: there is none

    [[nodiscard]] bool operator==(const FileIdentity &other) const
    {
        return device == other.device && inode == other.inode;
    }
};

[[nodiscard]] FileIdentity fileIdentity(const std::string &path);

} // namespace velq
