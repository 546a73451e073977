// A process that loads the SDK by name, as a plug-in of a plug-in would, and unloads it again.

#include <host/velq.h>

#include <dlfcn.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <thread>

#include "Loopback.h"

namespace {

std::atomic<int> g_ticks { 0 };

int tick(int, void *)
{
    ++g_ticks;
    return 0;
}

bool useAndUnload(void *handle)
{
    const auto choose
        = reinterpret_cast<int (*)(const char *)>(dlsym(handle, "VELQ_DevSrv_SetInterface"));
    const auto add = reinterpret_cast<int (*)(VELQ_StatisticsCallback)>(
        dlsym(handle, "VELQ_Statistics_RegisterStatisticsCallbackEvent"));
    if (!choose || !add || choose("lo") != 0 || add(tick) != 0)
        return false;
    makeTraffic();
    const int before = g_ticks;
    for (int i = 0; i < 500 && g_ticks == before; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    (void)dlclose(handle);
    return g_ticks > before;
}

} // namespace

int main(int argc, char **argv)
{
    for (int round = 0; argc > 1 && round < 3; ++round) {
        void *handle = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
        if (!handle || !useAndUnload(handle)) {
            std::printf("cannot be used in round %d\n", round);
            return 1;
        }
        if (dlopen(argv[1], RTLD_NOW | RTLD_NOLOAD)) {
            std::puts("still loaded");
            return 2;
        }
    }
    const int ticks = g_ticks;
    std::this_thread::sleep_for(std::chrono::milliseconds(1200));
    return g_ticks == ticks ? 0 : 3; // a thread that lived on would have crashed or called
}
