#include "Commands.h"

#include "Amount.h"
#include "Sdk.h"
#include "Words.h"

namespace velqctl {

Outcome runCorrect(const Command &command)
{
    const int type = command.type.value_or(VELQ_CONNECT_TYPE_DIALUP);
    if (VELQ_StatisticsSrv_Correct(*command.period, static_cast<_VELQ_EN_CONNECT_TYPE>(type),
                                   command.download, command.upload)
        != 0)
        return { ExitCode::Failed, {}, "the figure was not taken over" };
    return doneOutcome(command,
                       "The " + periodWord(*command.period) + " figure of " + typeWord(type)
                           + " is now " + amountText(command.download) + " down, "
                           + amountText(command.upload) + " up.");
}

} // namespace velqctl
