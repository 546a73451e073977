/* The SDK's headers have to compile and link as C99. */
#include <host/velq.h>
#include <host/velq_extension.h>

typedef int (*AnyFunction)(void);

int velqFunctionCount(void);

int velqFunctionCount(void)
{
    const AnyFunction functions[] = {
        (AnyFunction)VELQ_Statistics_RegisterStatisticsCallbackEvent,
        (AnyFunction)VELQ_Statistics_UnRegisterStatisticsCallbackEvent,
        (AnyFunction)VELQ_Statistics_GetReport,
        (AnyFunction)VELQ_Statistics_GetSpecHistroryData,
        (AnyFunction)VELQ_Statistics_Reset,
        (AnyFunction)VELQ_NetConnectSrv_GetConnectionStatus,
        (AnyFunction)VELQ_NetConnectSrv_ReleaseConnectionStatus,
        (AnyFunction)VELQ_DevSrv_GetCustomizeName,
        (AnyFunction)VELQ_DevSrv_SetInterface,
        (AnyFunction)VELQ_DevSrv_StartDemo,
        (AnyFunction)VELQ_DevSrv_GetInterface,
        (AnyFunction)VELQ_DevSrv_GetCounters,
        (AnyFunction)VELQ_NetConnectSrv_Disconnect,
        (AnyFunction)VELQ_StatisticsSrv_SetPeriodStart,
        (AnyFunction)VELQ_StoreSrv_SetDirectory,
        (AnyFunction)VELQ_StoreSrv_GetProblem,
    };
    int count = 0;
    for (unsigned i = 0; i < sizeof functions / sizeof functions[0]; ++i)
        count += functions[i] != 0;
    return count;
}
