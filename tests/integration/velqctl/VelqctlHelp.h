#pragma once

#include <QSet>
#include <QStringList>

using Words = QSet<QString>;

//! What the program's own help says.
struct VelqctlHelp
{
    [[nodiscard]] static VelqctlHelp read();
    [[nodiscard]] static Words optionsOf(const QString &verb);

    QStringList verbs;
    Words common; //!< options of every command
};

//! The long options that are named anywhere in \a text.
[[nodiscard]] Words longOptions(const QString &text);
//! For messages.
[[nodiscard]] QByteArray listed(const Words &words);
