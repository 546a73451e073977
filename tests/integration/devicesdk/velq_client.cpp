// A process that uses the SDK and ends in the way that its argument names; driven by
// tst_velqprocess. It prints what the test has to know, a line each.

#include <host/velq.h>
#include <host/velq_extension.h>

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <thread>

#include "Loopback.h"

namespace {

std::atomic<int> g_ticks { 0 };

int tick(int, void *)
{
    ++g_ticks;
    return 0;
}

int tickAndExit(int, void *)
{
    if (++g_ticks >= 3)
        std::exit(0); // NOLINT: on the SDK's own thread, which is the point
    return 0;
}

unsigned long long uploadOf(int kind)
{
    std::array<char, VELQ_STATISTICS_REPORT_SIZE> report {};
    unsigned long long upload = 0;
    if (VELQ_Statistics_GetReport(kind, report.data(), VELQ_CONNECT_TYPE_DIALUP) != 0)
        return ~0ULL;
    std::memcpy(&upload, report.data() + 532, sizeof upload);
    return upload;
}

void waitForTicks(int count)
{
    const int target = g_ticks + count;
    for (int i = 0; i < 1000 && g_ticks < target; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
}

void say(const char *what, unsigned long long value)
{
    std::printf("%s %llu\n", what, value);
    (void)std::fflush(stdout);
}

void begin()
{
    (void)VELQ_DevSrv_SetInterface("lo");
    (void)VELQ_Statistics_RegisterStatisticsCallbackEvent(tick);
    makeTraffic();
    waitForTicks(1);
    say("upload", uploadOf(1));
}

int forkAndGoOn()
{
    begin();
    const pid_t child = fork();
    if (child == 0) {
        const bool refused = uploadOf(1) == ~0ULL
            && VELQ_Statistics_RegisterStatisticsCallbackEvent(tick) != 0
            && VELQ_StoreSrv_SetDirectory("/tmp") != 0;
        std::exit(refused ? 0 : 9); // with its exit handlers
    }
    int status = -1;
    (void)waitpid(child, &status, 0);
    say("child", static_cast<unsigned long long>(WEXITSTATUS(status) + WTERMSIG(status)));
    makeTraffic();
    waitForTicks(1);
    say("upload", uploadOf(1));
    return 0;
}

//! Leaves a child that lives on; its inherited handles must not keep the store locked.
int leaveAChild()
{
    begin();
    const pid_t child = fork();
    if (child == 0) {
        for (const int file : { STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO })
            (void)close(file);
        (void)alarm(20); // the test ends it sooner
        for (;;)
            pause();
    }
    say("left", static_cast<unsigned long long>(child));
    std::_Exit(0); // no clean end
}

} // namespace

int main(int argc, char **argv)
{
    const std::string mode = argc > 1 ? argv[1] : "";
    if (mode == "return") { // with the callback registered
        begin();
        return 0;
    }
    if (mode == "exit-in-callback") {
        begin();
        (void)VELQ_Statistics_RegisterStatisticsCallbackEvent(tickAndExit);
        for (;;)
            pause();
    }
    if (mode == "fork")
        return forkAndGoOn();
    if (mode == "leave-a-child")
        return leaveAChild();
    if (mode == "wait") { // to be the first of two, and to be killed
        begin();
        waitForTicks(5); // past a commit
        say("ready", uploadOf(1));
        for (;;)
            pause();
    }
    if (mode == "problem") {
        std::array<char, 400> text {};
        (void)VELQ_StoreSrv_GetProblem(text.data(), int(text.size()));
        std::printf("%s\n", text.data());
        return 0;
    }
    return 64;
}
