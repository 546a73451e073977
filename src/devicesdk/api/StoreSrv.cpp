#include "api/Guard.h"

#include <host/velq_extension.h>

#include <climits>
#include <cstring>
#include <string>

using namespace velq;

int VELQ_StoreSrv_SetDirectory(const char *directory)
{
    return guarded([directory] {
        const std::string path = directory ? directory : "";
        if (!path.empty() && (path.front() != '/' || path.size() >= PATH_MAX))
            return false;
        return Runtime::choose([&path](HostChoices &choices) { choices.directory = path; });
    });
}

int VELQ_StoreSrv_GetProblem(char *text, int size)
{
    if (!text || size <= 0)
        return kFailure;
    return withService([=](Service &service) {
        std::string problem = service.engine().ledger().problem();
        if (problem.size() >= static_cast<std::size_t>(size))
            problem.resize(static_cast<std::size_t>(size) - 1);
        std::memcpy(text, problem.c_str(), problem.size() + 1);
        return true;
    });
}
