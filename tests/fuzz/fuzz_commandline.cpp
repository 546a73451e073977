// Any bytes as a command line: it becomes a command that keeps its promises, or a message. And any
// amount that is written is read again.

#include "Amount.h"
#include "CommandLine.h"
#include "Dates.h"
#include "Words.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

using namespace velqctl;

namespace {

void require(bool condition)
{
    if (!condition)
        std::abort();
}

//! Each line is an argument.
std::vector<std::string> argumentsOf(const std::string &bytes)
{
    std::vector<std::string> arguments;
    std::size_t at = 0;
    while (at < bytes.size()) {
        const std::size_t end = std::min(bytes.find('\n', at), bytes.size());
        arguments.push_back(bytes.substr(at, end - at));
        at = end + 1;
    }
    return arguments;
}

void requireCommand(const Command &command)
{
    require(command.weekStart >= 0 && command.weekStart <= 6);
    require(command.monthStart >= 1 && command.monthStart <= 31);
    require(!command.period || parsePeriod(periodWord(*command.period)) == command.period);
    require(!command.type || parseType(typeWord(*command.type)) == command.type);
    require(command.verb != Verb::Correct || command.period);
    require(command.verb != Verb::Reset || command.yes);
    require(command.download <= kMostBytes && command.upload <= kMostBytes && command.count > 0);
    require(!command.from || parseDay(dayText(*command.from)) == command.from);
    require(!command.from || !command.to || *command.from <= *command.to);
    const bool file = command.format == Format::Csv || command.format == Format::OpenMetrics;
    require(command.verb == Verb::Export ? command.format != Format::Text : !file);
}

void requireOutcome(const Outcome &outcome)
{
    const bool help = outcome.code == ExitCode::Good;
    require(help || outcome.code == ExitCode::Usage);
    require(help ? outcome.message.empty() && !outcome.output.empty()
                 : !outcome.message.empty() && outcome.output.empty());
    require(printable(outcome.message) == outcome.message);
}

void requireAmounts(const std::string &text, unsigned long long number)
{
    if (const auto bytes = parseAmount(text))
        require(*bytes <= kMostBytes && parseAmount(std::to_string(*bytes)) == bytes);
    const unsigned long long bytes = number % (kMostBytes + 1);
    require(parseAmount(std::to_string(bytes)) == bytes);
    const std::string written = amountText(bytes);
    const bool unread = written.find("PB") != std::string::npos
        || written.find("EB") != std::string::npos; // units that nobody types
    const auto read = parseAmount(written);
    require(read.has_value() != unread);
    // A half of the last decimal, and so a two-hundredth of the smallest figure in a unit.
    if (read)
        require((*read > bytes ? *read - bytes : bytes - *read) <= bytes / 200);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string bytes(reinterpret_cast<const char *>(data), size);
    const CommandLine line = parseCommandLine(argumentsOf(bytes));
    if (line.command)
        requireCommand(*line.command);
    else
        requireOutcome(line.outcome);
    unsigned long long number = 0;
    if (size > 0)
        std::memcpy(&number, data, std::min(size, sizeof number));
    requireAmounts(bytes.substr(0, 40), number);
    return 0;
}
