#include "api/Guard.h"
#include "api/Lists.h"

#include <host/velq_extension.h>

#include <climits>
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
        writeCut(text, static_cast<std::size_t>(size), service.engine().ledger().problem());
        return true;
    });
}

int VELQ_StoreSrv_GetPath(char *path, int size)
{
    if (!path || size <= 0)
        return kFailure;
    return withService(
        [=](Service &service) { return writeWhole(path, size, service.storePath()); });
}

int VELQ_StoreSrv_IsCounting(void)
{
    bool counts = false;
    const int result = withService([&counts](Service &service) {
        counts = !service.engine().ledger().isShared();
        return true;
    });
    return result == kSuccess ? int(counts) : -1;
}

int VELQ_StoreSrv_SetKeptDays(int days)
{
    constexpr int kMost = 36500;
    if (days < 0 || days > kMost)
        return kFailure;
    return withService([days](Service &service) {
        service.engine().setKeptDays(days);
        return true;
    });
}

int VELQ_StoreSrv_BackUp(const char *path, char *problem, int size)
{
    if (!path || path[0] != '/')
        return kFailure;
    return withService([=](Service &service) {
        const std::string words = service.engine().ledger().backUp(path);
        if (words.empty())
            return true;
        if (problem && size > 0)
            writeCut(problem, static_cast<std::size_t>(size), words);
        return false;
    });
}
