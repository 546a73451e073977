#pragma once

#include <QString>

namespace HostPaths {

//! What the setters hold; empty where nothing is set.
struct Overrides
{
    QString libraryPath;
    QString userDataDirectory;
};
Overrides &overrides();

//! Absolute, without "." and "..", without a separator at its end; "/" becomes empty.
QString bare(const QString &path);

} // namespace HostPaths
