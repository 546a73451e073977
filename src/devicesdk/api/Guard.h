#pragma once

#include "engine/Runtime.h"

#include <host/velq.h>

#include <utility>

namespace velq {

constexpr int kSuccess = 0;
constexpr int kFailure = 1;

inline int resultOf(bool success)
{
    return success ? kSuccess : kFailure;
}

inline bool isConnectType(_VELQ_EN_CONNECT_TYPE type)
{
    return type == VELQ_CONNECT_TYPE_DIALUP || type == VELQ_CONNECT_TYPE_WLAN;
}

/*! Calls \a body, which answers whether it succeeded; no exception gets out. */
template <typename Body>
int guarded(Body &&body) noexcept
{
    try {
        return resultOf(body());
    } catch (...) {
        return kFailure;
    }
}

/*! Calls \a body with the service, which this starts when needed. */
template <typename Body>
int withService(Body &&body) noexcept
{
    return guarded([&body] {
        const auto service = Runtime::service();
        return service && body(*service);
    });
}

} // namespace velq
