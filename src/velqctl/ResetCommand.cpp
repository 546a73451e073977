#include "Commands.h"

#include "PeriodFigures.h"
#include "Words.h"

#include <host/velq.h>

namespace velqctl {

Outcome runReset(const Command &command)
{
    std::string cleared;
    for (int type = 0; type < kConnectTypes; ++type) {
        if (command.type && *command.type != type)
            continue;
        if (VELQ_Statistics_Reset(static_cast<_VELQ_EN_CONNECT_TYPE>(type)) != 0)
            return { ExitCode::Failed, {}, "the figures were not cleared" };
        cleared += (cleared.empty() ? "" : " and ") + typeWord(type);
    }
    return doneOutcome(command, "The figures of " + cleared + " are cleared.");
}

} // namespace velqctl
