#include "Commands.h"

#include "Json.h"
#include "Sdk.h"
#include "Views.h"

namespace velqctl {

Outcome runHistory(const Command &command)
{
    const auto now = today();
    if (!now)
        return unreadableOutcome();
    const int last = command.to.value_or(*now);
    const int shown = command.hours ? 2 : 31; // days, without --from
    const auto rows = usage(command.hours, command.from.value_or(last - shown + 1), last);
    if (!rows)
        return unreadableOutcome();
    const char *key = command.hours ? "hours" : "days";
    const bool json = command.format == Format::Json;
    return { ExitCode::Good, json ? listJson(key, *rows) : historyText(*rows), {} };
}

} // namespace velqctl
