#pragma once

#include "Command.h"
#include "ExitCode.h"

namespace velqctl {

//! Starts the SDK in this process and does what \a command says.
[[nodiscard]] Outcome run(const Command &command);

[[nodiscard]] Outcome runStatus(const Command &command);
[[nodiscard]] Outcome runReport(const Command &command);
[[nodiscard]] Outcome runHistory(const Command &command);
[[nodiscard]] Outcome runDevices(const Command &command);
[[nodiscard]] Outcome runUse(const Command &command);
[[nodiscard]] Outcome runCorrect(const Command &command);
[[nodiscard]] Outcome runReset(const Command &command);
[[nodiscard]] Outcome runConnect(const Command &command);
[[nodiscard]] Outcome runDisconnect(const Command &command);
[[nodiscard]] Outcome runWhy(const Command &command);
[[nodiscard]] Outcome runExport(const Command &command);
[[nodiscard]] Outcome runBackup(const Command &command);
[[nodiscard]] Outcome runDoctor(const Command &command);

//! What a change says when it is done: \a text, or {"done": true}.
[[nodiscard]] Outcome doneOutcome(const Command &command, const std::string &text);
//! The books could not be read.
[[nodiscard]] Outcome unreadableOutcome();

} // namespace velqctl
