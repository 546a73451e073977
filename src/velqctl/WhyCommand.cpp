#include "Commands.h"

#include "Json.h"
#include "Sdk.h"
#include "Views.h"

namespace velqctl {

Outcome runWhy(const Command &command)
{
    const auto rows = reasons(command.count);
    if (!rows)
        return unreadableOutcome();
    const bool json = command.format == Format::Json;
    return { ExitCode::Good, json ? listJson("reasons", *rows) : reasonsText(*rows), {} };
}

} // namespace velqctl
