#pragma once

#include "modem/BusReplies.h"

#include <chrono>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <vector>

struct sd_bus;
struct sd_bus_message;

namespace velq {

/*! An answer to a call: a message, or the name of an error. */
class BusReply
{
public:
    BusReply() = default;
    //! Takes \a message over; null when no answer came.
    explicit BusReply(sd_bus_message *message);

    //! Empty when the call succeeded; "timeout" when nothing came in time.
    [[nodiscard]] const std::string &error() const
    {
        return m_error;
    }
    //! False, and \a value untouched, when the message holds something else.
    [[nodiscard]] bool read(std::string &value) const; //!< of a string or an object path
    [[nodiscard]] bool read(std::vector<std::string> &paths) const;
    [[nodiscard]] bool readVariant(std::string &value) const; //!< also of an object path
    [[nodiscard]] bool readVariant(std::uint32_t &value) const;
    [[nodiscard]] std::optional<PropertyMap> readProperties() const;

private:
    struct Unref
    {
        void operator()(sd_bus_message *message) const;
    };
    std::unique_ptr<sd_bus_message, Unref> m_message;
    std::string m_error = "timeout";
};

/*!
 * A connection of its own to the system bus for some calls to one service. All of them together
 * take no longer than the time given, whatever sits at the other end of the socket. One thread.
 */
class BusConnection
{
public:
    BusConnection(const char *service, std::chrono::milliseconds time);
    ~BusConnection();
    BusConnection(const BusConnection &) = delete;
    BusConnection &operator=(const BusConnection &) = delete;

    //! 0, or a number of errno's kind. Does not wait.
    [[nodiscard]] int open();
    //! Calls a method that takes strings, or with \a type 'o' paths. Does not start the service.
    [[nodiscard]] BusReply call(const std::string &path, const char *interface, const char *method,
                                std::initializer_list<const char *> arguments = {},
                                char type = 's');
    [[nodiscard]] BusReply property(const std::string &path, const char *interface,
                                    const char *name);
    //! Of an object of another service.
    [[nodiscard]] BusReply properties(const char *service, const std::string &path,
                                      const char *interface);
    [[nodiscard]] std::chrono::microseconds timeLeft() const;

private:
    //! Takes \a message over.
    [[nodiscard]] BusReply send(sd_bus_message *message);
    //! Works until \a reply is there; false when the time is over or the connection ends.
    bool process(sd_bus_message *const &reply);

    const char *const m_service;
    const std::chrono::steady_clock::time_point m_end;
    sd_bus *m_bus = nullptr;
};

} // namespace velq
