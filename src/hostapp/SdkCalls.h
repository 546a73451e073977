#pragma once

#include <host/velq_extension.h>

#include <functional>

//! The SDK's calls that change more than this program's own figures; a test puts others here.
struct SdkCalls
{
    //! Blocks for five seconds at most. A VELQ_DISCONNECT_ value. Called on a thread of its own.
    std::function<int()> disconnect = &VELQ_NetConnectSrv_Disconnect;
    //! Weekday 0 (Monday) to 6 and day of month 1 to 31; 0 when they were taken.
    std::function<int(int, int)> setPeriodStart = &VELQ_StatisticsSrv_SetPeriodStart;
};
