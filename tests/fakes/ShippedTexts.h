#pragma once
// The texts that are shipped, by key.

#include <QHash>
#include <QString>

//! The texts of the language \a code ("de"), for FakeHost::texts.
[[nodiscard]] QHash<QString, QString> shippedTexts(const QString &code);
