#include "FakeSdk.h"

#include <condition_variable>
#include <cstring>
#include <mutex>
#include <thread>

namespace {

std::mutex g_mutex;
std::condition_variable g_idle;
VELQ_StatisticsCallback g_callback = nullptr;
int g_running = 0;
std::thread::id g_testThread;

void put(void *block, int offset, const void *number, size_t size)
{
    std::memcpy(static_cast<char *>(block) + offset, number, size);
}

void fill(void *block, const FakeReport &report)
{
    put(block, 524, &report.download, 8);
    put(block, 532, &report.upload, 8);
    put(block, 540, &report.downloadSpeed, 4);
    put(block, 544, &report.uploadSpeed, 4);
    put(block, 556, &report.time, 8);
    put(block, 568, &report.lastReset, 4);
}

bool isCleared(const void *block)
{
    static const char zeros[VELQ_STATISTICS_REPORT_SIZE] = {};
    return std::memcmp(block, zeros, sizeof zeros) == 0;
}

} // namespace

FakeSdk &fakeSdk()
{
    static FakeSdk sdk;
    return sdk;
}

void resetFakeSdk()
{
    const std::lock_guard<std::mutex> lock(g_mutex);
    fakeSdk() = FakeSdk();
    g_callback = nullptr;
    g_testThread = std::this_thread::get_id();
}

bool fakeSdkHasCallback()
{
    const std::lock_guard<std::mutex> lock(g_mutex);
    return g_callback != nullptr;
}

int sendEvent(int event, void *data)
{
    VELQ_StatisticsCallback callback = nullptr;
    {
        const std::lock_guard<std::mutex> lock(g_mutex);
        callback = g_callback;
        if (!callback)
            return -1;
        ++g_running;
    }
    const int result = callback(event, data);
    {
        const std::lock_guard<std::mutex> lock(g_mutex);
        --g_running;
    }
    g_idle.notify_all();
    return result;
}

int sendStatisticsEvent(bool connected, int type)
{
    unsigned char data[8] = {};
    data[0] = connected ? 1 : 0;
    std::memcpy(data + 4, &type, sizeof type);
    return sendEvent(VELQ_EVENT_STATISTICS, data);
}

int VELQ_Statistics_RegisterStatisticsCallbackEvent(VELQ_StatisticsCallback callback)
{
    const std::lock_guard<std::mutex> lock(g_mutex);
    ++fakeSdk().registered;
    if (fakeSdk().registerResult == 0)
        g_callback = callback;
    return fakeSdk().registerResult;
}

int VELQ_Statistics_UnRegisterStatisticsCallbackEvent(VELQ_StatisticsCallback callback)
{
    std::unique_lock<std::mutex> lock(g_mutex);
    ++fakeSdk().unregistered;
    if (!callback || callback != g_callback)
        return 1;
    g_callback = nullptr;
    g_idle.wait(lock, [] { return g_running == 0; });
    return 0;
}

int VELQ_Statistics_GetReport(int kind, void *report, _VELQ_EN_CONNECT_TYPE type)
{
    if (std::this_thread::get_id() == g_testThread)
        fakeSdk().calls.push_back({ kind, type, isCleared(report) });
    if (kind < 0 || kind > 5)
        return 1;
    const FakeReport &figures = fakeSdk().reports[kind];
    if (figures.result == 0)
        fill(report, figures);
    return figures.result;
}

int VELQ_Statistics_GetSpecHistroryData(void *report, unsigned long long key)
{
    fakeSdk().historyKeys.push_back(key);
    fakeSdk().historyCleared = fakeSdk().historyCleared && isCleared(report);
    if (fakeSdk().history.result == 0)
        fill(report, fakeSdk().history);
    return fakeSdk().history.result;
}

int VELQ_Statistics_Reset(_VELQ_EN_CONNECT_TYPE type)
{
    fakeSdk().resets.push_back(type);
    return fakeSdk().resetResult;
}

int VELQ_NetConnectSrv_GetConnectionStatus(VELQ_ConnectionStatus **list, int *count)
{
    fakeSdk().connectionArgumentsClear = !*list && *count == 0;
    *count = fakeSdk().connections;
    if (fakeSdk().connectionResult != 0)
        return fakeSdk().connectionResult;
    *list = reinterpret_cast<VELQ_ConnectionStatus *>(&fakeSdk().connections); // never looked into
    ++fakeSdk().listsOut;
    return 0;
}

int VELQ_NetConnectSrv_ReleaseConnectionStatus(VELQ_ConnectionStatus *list)
{
    --fakeSdk().listsOut;
    return list ? 0 : 1;
}

int VELQ_DevSrv_GetCustomizeName(char *name)
{
    if (fakeSdk().nameResult == 0)
        std::strncpy(name, fakeSdk().customizeName, VELQ_CUSTOMIZE_NAME_SIZE);
    return fakeSdk().nameResult;
}
