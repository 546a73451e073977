#pragma once

#include "Devices.h"

#include <host/velq_extension.h>

#include <functional>

//! The SDK's calls that change more than this program's own figures; a test puts others here.
struct SdkCalls
{
    //! Blocks for five seconds at most. A VELQ_DISCONNECT_ value. Called on a thread of its own.
    std::function<int()> disconnect = &VELQ_NetConnectSrv_Disconnect;
    //! Blocks for thirty seconds at most. A VELQ_CONNECT_ value. Called on a thread of its own.
    std::function<int()> connect = &VELQ_NetConnectSrv_Connect;
    std::function<HostDevices()> devices = &readDevices;
    //! 0 when only this device is counted from now on; empty: what carries the traffic.
    std::function<int(const char *)> useDevice = &VELQ_DevSrv_UseDevice;
    //! Weekday 0 (Monday) to 6 and day of month 1 to 31; 0 when they were taken.
    std::function<int(int, int)> setPeriodStart = &VELQ_StatisticsSrv_SetPeriodStart;
};
