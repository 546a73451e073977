#pragma once

#include "HostView.h"

#include <QString>
#include <QStringList>

#include <optional>

//! What the command line asks for. Empty and unset: not given.
struct Options
{
    QString interfaceName;
    QString dataDirectory; //!< absolute
    QString language;
    QString screenshot; //!< absolute
    std::optional<HostView> view;
    std::optional<int> seconds;
    bool demo = false;
    bool verbose = false;
};

//! What becomes of a command line: options to run with, or a text and an exit status to leave with.
struct CommandLine
{
    Options options;
    std::optional<int> exitStatus;
    QString output; //!< for the standard output
    QString error; //!< for the standard error, one line
};

constexpr int kExitFailure = 1; //!< something could not be written
constexpr int kExitUsage = 2; //!< an unknown option or a value that cannot be
constexpr int kExitNoPlugin = 3; //!< without a display: no plug-in was loaded

//! Reads \a arguments, the program's name first. Needs the application object for the help text.
[[nodiscard]] CommandLine parseCommandLine(const QStringList &arguments);
