#include "BusMessages.h"

#include <sys/socket.h>

#include <cstdio>
#include <cstdlib>

namespace {

void require(bool condition, const char *what)
{
    if (condition)
        return;
    (void)std::fprintf(stderr, "bus messages: %s\n", what);
    std::abort();
}

//! Messages belong to a bus; nobody talks on this one.
sd_bus *silentBus()
{
    static sd_bus *const kBus = [] {
        int files[2] = { -1, -1 };
        sd_bus *bus = nullptr;
        require(socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, files) == 0
                    && sd_bus_new(&bus) >= 0 && sd_bus_set_fd(bus, files[0], files[0]) >= 0
                    && sd_bus_start(bus) >= 0,
                "no bus");
        return bus;
    }();
    return kBus;
}

} // namespace

BusMessage newBusMessage()
{
    sd_bus_message *message = nullptr;
    require(sd_bus_message_new_signal(silentBus(), &message, "/", "a.b", "C") >= 0, "no message");
    return BusMessage(message);
}

void finish(sd_bus_message *message)
{
    require(sd_bus_message_seal(message, 1, 0) >= 0 && sd_bus_message_rewind(message, 1) >= 0,
            "a message that is not complete");
}
