// A program that uses the SDK and nothing else, so that its memory and its time are the SDK's:
//   velq_user run        counts until it is terminated, then says the day's bytes, down and up
//   velq_user resident   asks for everything after some ticks and says how much memory it holds

#include <host/velq.h>
#include <host/velq_extension.h>

#include <unistd.h>

#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <string>
#include <thread>

namespace {

std::atomic<int> g_ticks { 0 };

//! What a host does each second: it shows the live figures.
int tick(int, void *)
{
    std::array<char, VELQ_STATISTICS_REPORT_SIZE> report {};
    if (VELQ_Statistics_GetReport(0, report.data(), VELQ_CONNECT_TYPE_DIALUP) == 0)
        ++g_ticks;
    return 0;
}

//! KiB of this process that are in memory, shared libraries included; 0 when that cannot be read.
long residentKiB()
{
    std::FILE *const file = std::fopen("/proc/self/status", "r");
    std::array<char, 256> line {};
    long found = 0;
    while (file && std::fgets(line.data(), int(line.size()), file))
        (void)std::sscanf(line.data(), "VmRSS: %ld kB", &found);
    if (file)
        (void)std::fclose(file);
    return found;
}

//! Whether every question has been answered.
bool askEverything()
{
    std::array<char, VELQ_STATISTICS_REPORT_SIZE> report {};
    bool answered = true;
    for (const auto type : { VELQ_CONNECT_TYPE_DIALUP, VELQ_CONNECT_TYPE_WLAN }) {
        for (int kind = 0; kind <= 5; ++kind)
            answered = VELQ_Statistics_GetReport(kind, report.data(), type) == 0 && answered;
    }
    answered = VELQ_Statistics_GetSpecHistroryData(report.data(), 0) == 0 && answered;
    VELQ_Device *devices = nullptr;
    int count = 0;
    answered = VELQ_DevSrv_GetDevices(&devices, &count) == 0 && answered;
    (void)VELQ_DevSrv_ReleaseDevices(devices);
    return answered;
}

int tellResident()
{
    constexpr int kEnough = 7; // a commit included
    for (int i = 0; i < 2000 && g_ticks < kEnough; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    if (g_ticks < kEnough || !askEverything())
        return 1;
    std::printf("resident %ld\n", residentKiB());
    return 0;
}

int countUntilTerminated()
{
    sigset_t ends;
    sigemptyset(&ends);
    sigaddset(&ends, SIGTERM);
    sigaddset(&ends, SIGINT);
    pthread_sigmask(SIG_BLOCK, &ends, nullptr);
    std::printf("ready\n");
    (void)std::fflush(stdout);
    int signal = 0;
    (void)sigwait(&ends, &signal);
    std::array<char, VELQ_STATISTICS_REPORT_SIZE> report {};
    if (VELQ_Statistics_GetReport(1, report.data(), VELQ_CONNECT_TYPE_DIALUP) != 0)
        return 1;
    unsigned long long download = 0;
    unsigned long long upload = 0;
    std::memcpy(&download, report.data() + 524, sizeof download);
    std::memcpy(&upload, report.data() + 532, sizeof upload);
    std::printf("ticks %d\ntoday %llu %llu\n", g_ticks.load(), download, upload);
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    const std::string mode = argc > 1 ? argv[1] : "";
    if (mode != "run" && mode != "resident")
        return 64;
    if (VELQ_Statistics_RegisterStatisticsCallbackEvent(tick) != 0)
        return 1;
    return mode == "run" ? countUntilTerminated() : tellResident();
}
