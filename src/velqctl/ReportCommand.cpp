#include "Commands.h"

#include "Json.h"
#include "Sdk.h"
#include "Views.h"

namespace velqctl {

Outcome runReport(const Command &command)
{
    std::vector<int> kinds(kPeriodKinds.begin(), kPeriodKinds.end());
    if (command.period)
        kinds = { *command.period };
    const auto figures = periodFigures(kinds);
    if (!figures)
        return unreadableOutcome();
    const bool json = command.format == Format::Json;
    return { ExitCode::Good, json ? listJson("periods", *figures) : reportText(*figures), {} };
}

} // namespace velqctl
