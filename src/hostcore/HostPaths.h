#pragma once

#include <host/HostCoreExport.h>

#include <QString>

//! Where the host keeps its files. Plug-ins ask CommonUtils. GUI thread.
namespace HostPaths {

//! Replaces the library path, which is otherwise SKYLET_LIBRARY_PATH from the environment or the
//! folder beside the program's. Empty: back to that.
HOST_CORE_EXPORT void setLibraryPath(const QString &path);

//! Replaces the user data folder, which is otherwise "skylet" in the user's XDG data folder. Empty:
//! back to that.
HOST_CORE_EXPORT void setUserDataDirectory(const QString &path);

//! The folder of the translation files, without a separator at its end.
[[nodiscard]] HOST_CORE_EXPORT QString languageDirectory();

//! Makes \a path and the folders above it, each for the user alone. True when it is a folder now.
[[nodiscard]] HOST_CORE_EXPORT bool makePrivateDirectory(const QString &path);

} // namespace HostPaths
