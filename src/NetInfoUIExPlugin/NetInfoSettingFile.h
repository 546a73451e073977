#pragma once
// A small file that is read within bounds and replaced in one step.

#include <QByteArray>
#include <QString>

namespace NetInfoFile {

//! What replace() does with the file that it replaces.
enum class Old {
    Drop, //!< it goes, unless it is a link
    Keep //!< it gets the first free name of path.kept, path.kept-2 and so on
};

//! Whether there is nothing at \a path, or a file of size zero.
[[nodiscard]] bool isMissingOrEmpty(const QString &path);

//! Reads up to \a limit bytes of the regular file \a path, through links. False, and \a content
//! untouched, for anything else and for a file that cannot be read.
[[nodiscard]] bool read(const QString &path, int limit, QByteArray &content);

//! Makes \a bytes the file \a path: writes \a temporary, a name in the same folder, waits for the
//! disk and renames. At every moment \a path is what it was or complete. A link is itself replaced
//! and kept; what it points to stays. False when \a path is as before, as it is for a folder or a
//! device; \a temporary is then removed.
[[nodiscard]] bool replace(const QString &path, const QString &temporary, const QByteArray &bytes,
                           Old old);

} // namespace NetInfoFile
