#include "Commands.h"

#include "Words.h"

#include <host/velq_extension.h>

#include <array>
#include <filesystem>
#include <system_error>

namespace velqctl {

Outcome runBackup(const Command &command)
{
    std::error_code error;
    const std::string path = std::filesystem::absolute(command.file, error).string();
    std::array<char, 1024> problem {};
    if (error
        || VELQ_StoreSrv_BackUp(path.c_str(), problem.data(), static_cast<int>(problem.size()))
            != 0)
        return { ExitCode::Failed,
                 {},
                 problem[0] ? std::string(problem.data()) : "the store could not be copied" };
    return doneOutcome(command, "The store was copied to " + printable(path) + '.');
}

} // namespace velqctl
