#pragma once

#include <QByteArray>
#include <QString>

//! What a plug-in's file says about the Qt that it was built with. Values only, nothing is loaded.
namespace PluginBuild {

//! The major version of Qt that the plug-in in \a image was built with; 0 when it does not say.
[[nodiscard]] int qtMajorOf(const QByteArray &image);

//! The same for the file \a path; 0 also when it cannot be read.
[[nodiscard]] int qtMajorOfFile(const QString &path);

} // namespace PluginBuild
