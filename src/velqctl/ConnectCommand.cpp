#include "Commands.h"

#include "Sdk.h"

namespace velqctl {

Outcome runConnect(const Command &command)
{
    const Outcome outcome = connectOutcome(VELQ_NetConnectSrv_Connect());
    return outcome.code == ExitCode::Good ? doneOutcome(command, "Connected.") : outcome;
}

Outcome runDisconnect(const Command &command)
{
    const Outcome outcome = disconnectOutcome(VELQ_NetConnectSrv_Disconnect());
    return outcome.code == ExitCode::Good ? doneOutcome(command, "Disconnected.") : outcome;
}

} // namespace velqctl
