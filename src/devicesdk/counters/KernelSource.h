#pragma once

#include "counters/CounterSource.h"
#include "counters/NetlinkSocket.h"

#include <optional>

namespace velq {

struct DefaultRoute;

/*!
 * The kernel's link counters by rtnetlink. Counts the interface it is given, which is waited for
 * when it is missing, or the one that carries the default route, which is looked up again when
 * routes or links change. It stays in the network namespace in which it was made.
 */
class KernelSource : public CounterSource
{
public:
    //! \a name: the interface, or empty for the default route. \a root: see isWireless().
    explicit KernelSource(std::string name, std::string root = {});

    ReadResult readChosen() override;
    ReadResult readIndex(int index) override;
    void noteDisconnect() override;

private:
    void open();
    void readEvents();
    void noteEvent(const void *message, std::size_t size);
    //! False when the routes could not be read.
    bool lookUpRoute();
    void applyDisconnect(LinkReading &link);
    bool dumpRoutes(int family, std::optional<DefaultRoute> &best);
    ReadResult readLink(int index, const std::string &name);

    const std::string m_name;
    const std::string m_root;
    bool m_open = false;
    NetlinkSocket m_requests;
    NetlinkSocket m_events;
    bool m_routesChanged = true;
    int m_routeIndex = 0; // 0: no default route
    int m_watchedIndex = 0; // the link whose deletion starts a new generation
    std::uint64_t m_generation = 0;
    int m_disconnectedIndex = 0; // the link that is down by request, whatever the kernel says
};

} // namespace velq
