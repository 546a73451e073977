#pragma once

#include "Command.h"
#include "ExitCode.h"

#include <optional>
#include <string>
#include <vector>

namespace velqctl {

/*! A command, or what to say instead: help, the version, or what is wrong. */
struct CommandLine
{
    std::optional<Command> command;
    Outcome outcome;
};

//! \a arguments without the program's name.
[[nodiscard]] CommandLine parseCommandLine(std::vector<std::string> arguments);

} // namespace velqctl
