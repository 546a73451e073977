#pragma once

#include "modem/BusObjects.h"

#include <systemd/sd-bus.h>

#include <chrono>
#include <cstddef>
#include <map>
#include <string>

namespace velq {

using BusClock = std::chrono::steady_clock;

struct MirrorTimes
{
    std::chrono::milliseconds call { 5000 }; //!< an answer must come within
    std::chrono::milliseconds refresh { 8000 }; //!< between two looks at figures without a signal
    std::chrono::milliseconds firstRetry { 500 }; //!< after a failed call; doubles each time
    std::chrono::milliseconds lastRetry { 8000 };
};

/*!
 * A copy of a service's objects, kept current by its signals. Nothing waits: every call is answered
 * while the bus is processed. Calls go to the owner of the service's name, so they start nothing.
 */
class ServiceMirror
{
public:
    ServiceMirror(const ServiceRules &rules, const MirrorTimes &times);
    ~ServiceMirror();
    ServiceMirror(const ServiceMirror &) = delete;
    ServiceMirror &operator=(const ServiceMirror &) = delete;

    //! Begins to listen on \a bus, which outlives this object. False when it cannot.
    [[nodiscard]] bool attach(sd_bus *bus);
    //! Asks what is to be asked by now.
    void work();
    //! When work() has something to do next.
    [[nodiscard]] BusClock::time_point nextWork() const;

    //! The bus does not serve us: begin anew with another connection.
    [[nodiscard]] bool hasFailed() const
    {
        return m_failed;
    }
    [[nodiscard]] bool isPresent() const
    {
        return !m_owner.empty();
    }
    [[nodiscard]] const ObjectTree &objects() const
    {
        return m_objects;
    }
    //! Whether presence or objects changed since the last call.
    [[nodiscard]] bool takeChanged();

private:
    struct Call
    {
        ServiceMirror *mirror = nullptr;
        const ObjectKey *key = nullptr;
        sd_bus_slot *slot = nullptr; //!< set while the answer is outstanding
        unsigned failures = 0;
        BusClock::time_point askAt;
    };

    template <void (ServiceMirror::*Handler)(sd_bus_message *)>
    static int dispatch(sd_bus_message *message, void *self, sd_bus_error *) noexcept;
    static int dispatchAnswer(sd_bus_message *message, void *call, sd_bus_error *) noexcept;

    [[nodiscard]] bool listen(const std::string &rule, sd_bus_message_handler_t handler);
    [[nodiscard]] bool listenToService();
    [[nodiscard]] bool askForOwner();
    void onOwnerChange(sd_bus_message *message);
    void onOwner(sd_bus_message *message);
    void onPropertiesChanged(sd_bus_message *message);
    void onObjectsChanged(sd_bus_message *message);
    void onAnswer(Call &call, sd_bus_message *message);

    [[nodiscard]] bool isFromService(sd_bus_message *message) const;
    [[nodiscard]] bool isAging(const ObjectKey &key) const;
    void setOwner(const std::string &owner);
    void dropAll();
    //! Follows what the objects name by now, and nothing else.
    void update();
    void forget(std::map<ObjectKey, Call>::iterator call);
    void ask(Call &call);
    void merge(const ObjectKey &key, const PropertyMap &values);
    void askAgain(const ObjectKey &key);

    const ServiceRules &m_rules;
    const MirrorTimes m_times;
    sd_bus *m_bus = nullptr;
    std::string m_owner; //!< the service's unique name
    ObjectTree m_objects;
    std::map<ObjectKey, Call> m_calls; //!< one for each object that is followed
    std::size_t m_outstanding = 0;
    bool m_changed = false;
    bool m_failed = false;
};

} // namespace velq
