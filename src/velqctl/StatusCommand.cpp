#include "Commands.h"

#include "Sdk.h"
#include "Status.h"

#include <algorithm>

namespace velqctl {

Outcome runStatus(const Command &command)
{
    const auto periods = periodFigures({ kDaily, kMonthly });
    const auto known = devices();
    if (!periods || !known)
        return unreadableOutcome();
    Status status;
    status.store = storeState();
    status.interface = countedInterface();
    status.connected = isConnected();
    const auto chosen = std::find_if(known->begin(), known->end(),
                                     [](const VELQ_Device &device) { return device.chosen != 0; });
    if (chosen != known->end())
        status.device = *chosen;
    status.used = usedDevice();
    status.periods = *periods;
    const bool json = command.format == Format::Json;
    return { ExitCode::Good, json ? statusJson(status) : statusText(status), {} };
}

} // namespace velqctl
