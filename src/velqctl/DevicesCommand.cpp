#include "Commands.h"

#include "Json.h"
#include "Sdk.h"
#include "Views.h"

namespace velqctl {

Outcome runDevices(const Command &command)
{
    const auto all = devices();
    if (!all)
        return unreadableOutcome();
    const bool json = command.format == Format::Json;
    return { ExitCode::Good,
             json ? listJson("devices", *all) : devicesText(*all, usedDevice()),
             {} };
}

} // namespace velqctl
