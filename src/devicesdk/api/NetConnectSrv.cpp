#include "api/Guard.h"

#include <host/velq.h>
#include <host/velq_extension.h>

#include <memory>
#include <string>

using namespace velq;

struct VELQ_ConnectionStatus
{
    std::string interface;
    int type = 0;
};

int VELQ_NetConnectSrv_GetConnectionStatus(VELQ_ConnectionStatus **list, int *count)
{
    if (!list || !count)
        return kFailure;
    return withService([=](Service &service) {
        const LiveFigures figures = service.engine().live();
        std::unique_ptr<VELQ_ConnectionStatus[]> connections;
        if (figures.connected) {
            connections = std::make_unique<VELQ_ConnectionStatus[]>(1);
            connections[0] = { figures.interface, figures.type };
        }
        *count = connections ? 1 : 0;
        *list = connections.release();
        return true;
    });
}

int VELQ_NetConnectSrv_ReleaseConnectionStatus(VELQ_ConnectionStatus *list)
{
    delete[] list;
    return kSuccess;
}

int VELQ_NetConnectSrv_Disconnect(void)
{
    int result = VELQ_DISCONNECT_FAILED;
    (void)withService([&result](Service &service) {
        result = service.engine().live().connected ? VELQ_DISCONNECT_NO_SERVICE
                                                   : VELQ_DISCONNECT_NO_CONNECTION;
        return true;
    });
    return result;
}
