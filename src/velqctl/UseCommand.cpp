#include "Commands.h"

#include "Sdk.h"
#include "Words.h"

#include <algorithm>

namespace velqctl {

namespace {

bool isKnown(const std::string &name)
{
    const auto all = devices();
    return all && std::any_of(all->begin(), all->end(), [&name](const VELQ_Device &device) {
               return name == device.key || name == device.interface;
           });
}

} // namespace

Outcome runUse(const Command &command)
{
    const std::string &device = command.device;
    if (!device.empty() && !command.absent && !isKnown(device))
        return {
            ExitCode::NothingThere,
            {},
            "no device \"" + printable(device)
                + "\"; \"velqctl devices\" lists them, --absent takes one that is yet to come"
        };
    if (VELQ_DevSrv_UseDevice(device.c_str()) != 0)
        return { ExitCode::Usage,
                 {},
                 '"' + printable(device) + "\" is neither a device's key nor an interface's name" };
    return doneOutcome(command,
                       device.empty() ? "From now on what carries the traffic is counted."
                                      : "From now on only " + printable(device) + " is counted.");
}

} // namespace velqctl
