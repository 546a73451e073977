#include "CommandLine.h"
#include "Commands.h"
#include "Files.h"

#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <exception>
#include <string>
#include <vector>

using namespace velqctl;

namespace {

Outcome outcomeOf(const std::vector<std::string> &arguments)
{
    const CommandLine line = parseCommandLine(arguments);
    return line.command ? run(*line.command) : line.outcome;
}

int tell(const Outcome &outcome)
{
    ExitCode code = outcome.code;
    std::string message = outcome.message;
    if (const int error = writeAll(STDOUT_FILENO, outcome.output); error != 0) {
        // Who closes a pipe ("| head") has what he wants.
        message = error == EPIPE
            ? std::string()
            : std::string("the answer could not be written: ") + std::strerror(error);
        code = ExitCode::Failed;
    }
    if (!message.empty())
        (void)writeAll(STDERR_FILENO, "velqctl: " + message + '\n');
    return static_cast<int>(code);
}

} // namespace

int main(int argc, char **argv)
{
    holdStandardFiles();
    (void)std::signal(SIGPIPE, SIG_IGN); // the books are written in order, whoever reads
    try {
        return tell(outcomeOf({ argv + (argc > 0 ? 1 : 0), argv + argc }));
    } catch (const std::exception &error) {
        return tell({ ExitCode::Failed, {}, error.what() });
    }
}
