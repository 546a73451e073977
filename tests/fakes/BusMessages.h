#pragma once
// Messages to read from, made without a bus.

#include <systemd/sd-bus.h>

#include <memory>

struct UnrefMessage
{
    void operator()(sd_bus_message *message) const
    {
        (void)sd_bus_message_unref(message);
    }
};
using BusMessage = std::unique_ptr<sd_bus_message, UnrefMessage>;

//! An empty message that can be appended to; never null.
[[nodiscard]] BusMessage newBusMessage();

//! Ends the writing of \a message: it can be read from its beginning.
void finish(sd_bus_message *message);
