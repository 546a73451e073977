// A process that loads the SDK by name, as a plug-in of a plug-in would, and unloads it again.

#include <host/velq.h>

#include <dlfcn.h>

#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>

#include "Loopback.h"

namespace {

std::atomic<int> g_ticks { 0 };

int tick(int, void *)
{
    ++g_ticks;
    return 0;
}

//! For which the SDK loads what it knows about the time zone.
bool asksForToday(void *handle)
{
    std::array<unsigned char, VELQ_STATISTICS_REPORT_SIZE> report {};
    const auto ask
        = reinterpret_cast<int (*)(int, void *, int)>(dlsym(handle, "VELQ_Statistics_GetReport"));
    return ask && ask(1, report.data(), VELQ_CONNECT_TYPE_DIALUP) == 0;
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
    const bool asked = asksForToday(handle);
    (void)dlclose(handle);
    return asked && g_ticks > before;
}

} // namespace

int main(int argc, char **argv)
{
    const std::array<const char *, 3> zones { "Europe/Berlin", "JST-9", "Europe/Berlin" };
    for (std::size_t round = 0; argc > 1 && round < zones.size(); ++round) {
        (void)setenv("TZ", zones[round], 1);
        void *handle = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
        if (!handle || !useAndUnload(handle)) {
            std::printf("cannot be used in round %zu\n", round);
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
