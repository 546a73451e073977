#pragma once
// A part of a test that changes its process for good, run in a child.

#include <QByteArray>
#include <QString>

#include <functional>

//! Runs \a work in a child, which ends without running any destructor outside of it, and gives its
//! answer: empty when all is well, else what is wrong, up to 4000 bytes.
[[nodiscard]] QByteArray inChild(const std::function<QByteArray()> &work);

//! What a child answers when this system does not allow what it tries.
extern const char kNotAllowed[];

//! As root makes \a folder and what lies in it the property of the user without rights. False when
//! not allowed.
[[nodiscard]] bool giveAway(const QString &folder);
//! Makes this process one of that user, if it is root's. False when not allowed.
[[nodiscard]] bool giveUpRights();
//! Mounts an empty disk of \a bytes at \a folder, for this process alone. False when not allowed.
[[nodiscard]] bool mountDisk(const QString &folder, int bytes);
//! Makes that disk read-only.
[[nodiscard]] bool makeDiskReadOnly(const QString &folder);
