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

static_assert(VELQ_DISCONNECT_DONE == int(DisconnectResult::Done)
                  && VELQ_DISCONNECT_FAILED == int(DisconnectResult::Failed)
                  && VELQ_DISCONNECT_NO_CONNECTION == int(DisconnectResult::NoConnection)
                  && VELQ_DISCONNECT_NO_SERVICE == int(DisconnectResult::NoService)
                  && VELQ_DISCONNECT_NOT_MANAGED == int(DisconnectResult::NotManaged)
                  && VELQ_DISCONNECT_REFUSED == int(DisconnectResult::Refused),
              "the results are the contract's");

int VELQ_NetConnectSrv_Disconnect(void)
{
    auto result = DisconnectResult::Failed;
    (void)withService([&result](Service &service) {
        result = service.disconnect();
        return true;
    });
    return static_cast<int>(result);
}

static_assert(VELQ_CONNECT_DONE == int(ConnectResult::Done)
                  && VELQ_CONNECT_FAILED == int(ConnectResult::Failed)
                  && VELQ_CONNECT_NO_DEVICE == int(ConnectResult::NoDevice)
                  && VELQ_CONNECT_NO_SERVICE == int(ConnectResult::NoService)
                  && VELQ_CONNECT_NOT_MANAGED == int(ConnectResult::NotManaged)
                  && VELQ_CONNECT_REFUSED == int(ConnectResult::Refused)
                  && VELQ_CONNECT_NO_PROFILE == int(ConnectResult::NoProfile),
              "the results are the contract's");

int VELQ_NetConnectSrv_Connect(void)
{
    auto result = ConnectResult::Failed;
    (void)withService([&result](Service &service) {
        result = service.connect();
        return true;
    });
    return static_cast<int>(result);
}
