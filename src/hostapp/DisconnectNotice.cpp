#include "DisconnectNotice.h"

#include <host/velq_extension.h>

Notice disconnectNotice(int result)
{
    switch (result) {
    case VELQ_DISCONNECT_DONE:
        return { "HOST_DISCONNECT_DONE", false };
    case VELQ_DISCONNECT_NO_CONNECTION:
        return { "HOST_DISCONNECT_NO_CONNECTION", false };
    case VELQ_DISCONNECT_NO_SERVICE:
        return { "HOST_DISCONNECT_NO_SERVICE", true };
    case VELQ_DISCONNECT_NOT_MANAGED:
        return { "HOST_DISCONNECT_NOT_MANAGED", true };
    case VELQ_DISCONNECT_REFUSED:
        return { "HOST_DISCONNECT_REFUSED", true };
    default:
        return { "HOST_DISCONNECT_FAILED", true };
    }
}

// "It has been ended" and "there is none" stay true while it is down; the rest was about one that
// is up.
bool isDisconnectNoticeOver(int result, bool connected)
{
    const bool saysDown = result == VELQ_DISCONNECT_DONE || result == VELQ_DISCONNECT_NO_CONNECTION;
    return connected || !saysDown;
}
