// A program that uses the SDK and does what it is told by lines of its standard input, until it is
// killed. It prints an answer to each. "busy" as its argument: it commits all the time meanwhile.

#include <host/velq.h>
#include <host/velq_extension.h>

#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string>
#include <thread>

namespace {

std::atomic<int> g_ticks { 0 };

int tick(int, void *)
{
    ++g_ticks;
    return 0;
}

void say(const std::string &line)
{
    std::printf("%s\n", line.c_str());
    (void)std::fflush(stdout);
}

//! What today's report says: "download upload"; "none" when there is no answer.
std::string usage()
{
    std::array<char, VELQ_STATISTICS_REPORT_SIZE> report {};
    unsigned long long download = 0;
    unsigned long long upload = 0;
    if (VELQ_Statistics_GetReport(1, report.data(), VELQ_CONNECT_TYPE_DIALUP) != 0)
        return "none";
    std::memcpy(&download, report.data() + 524, sizeof download);
    std::memcpy(&upload, report.data() + 532, sizeof upload);
    return std::to_string(download) + " " + std::to_string(upload);
}

//! The device that is counted: "key roaming".
std::string countedDevice()
{
    VELQ_Device *list = nullptr;
    int count = 0;
    std::string found = "none";
    (void)VELQ_DevSrv_GetDevices(&list, &count);
    for (int i = 0; i < count; ++i) {
        if (list[i].chosen)
            found = std::string(list[i].key) + " " + std::to_string(list[i].roaming);
    }
    (void)VELQ_DevSrv_ReleaseDevices(list);
    return found;
}

//! Asking for the devices writes what is pending first.
void commitForEver()
{
    for (;;) {
        (void)countedDevice();
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
}

//! Two ticks from now on have been, so that one of them has begun after now.
void waitForLook()
{
    const int target = g_ticks + 2;
    for (int i = 0; i < 1000 && g_ticks < target; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
}

std::string answerTo(const std::string &command)
{
    if (command == "usage")
        return usage();
    if (command == "look") {
        waitForLook();
        return usage();
    }
    if (command == "counting")
        return std::to_string(VELQ_StoreSrv_IsCounting());
    if (command == "device")
        return countedDevice();
    if (command == "connect")
        return std::to_string(VELQ_NetConnectSrv_Connect());
    if (command == "disconnect")
        return std::to_string(VELQ_NetConnectSrv_Disconnect());
    if (command == "problem") {
        std::array<char, 400> text {};
        (void)VELQ_StoreSrv_GetProblem(text.data(), int(text.size()));
        return text.data();
    }
    return "unknown";
}

} // namespace

int main(int argc, char **argv)
{
    const std::string first = usage();
    (void)VELQ_Statistics_RegisterStatisticsCallbackEvent(tick);
    say(first);
    if (argc > 1 && std::string(argv[1]) == "busy")
        std::thread(commitForEver).detach();
    std::string command;
    while (std::getline(std::cin, command)) {
        if (command == "end")
            std::exit(0); // the busy thread may be in the SDK
        say(answerTo(command));
    }
    std::_Exit(1); // the test is gone
}
