#pragma once
// A small file that is read within bounds and replaced in one step.

#include <QByteArray>
#include <QString>

namespace NetInfoFile {

//! Whether there is nothing at \a path, or a file of size zero.
[[nodiscard]] bool isMissingOrEmpty(const QString &path);

//! Reads up to \a limit bytes of the regular file \a path, a link to one included. False, and
//! \a content untouched, for anything else and for a file that cannot be read.
[[nodiscard]] bool read(const QString &path, int limit, QByteArray &content);

//! Makes \a bytes the file \a path: writes \a temporary in the same folder, waits for the disk and
//! renames. At any moment \a path is what it was or complete. False when it is as before; what was
//! written to \a temporary is then removed.
[[nodiscard]] bool replace(const QString &path, const QString &temporary, const QByteArray &bytes);

} // namespace NetInfoFile
