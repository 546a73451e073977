#include "ConnectNotice.h"

#include <host/velq_extension.h>

Notice connectNotice(int result)
{
    switch (result) {
    case VELQ_CONNECT_DONE:
        return {}; // the status line says so
    case VELQ_CONNECT_NO_DEVICE:
        return { "HOST_CONNECT_NO_DEVICE", true };
    case VELQ_CONNECT_NO_SERVICE:
        return { "HOST_CONNECT_NO_SERVICE", true };
    case VELQ_CONNECT_NOT_MANAGED:
        return { "HOST_CONNECT_NOT_MANAGED", true };
    case VELQ_CONNECT_REFUSED:
        return { "HOST_CONNECT_REFUSED", true };
    case VELQ_CONNECT_NO_PROFILE:
        return { "HOST_CONNECT_NO_PROFILE", true };
    default:
        return { "HOST_CONNECT_FAILED", true };
    }
}
