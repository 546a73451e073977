#pragma once

#include "counters/RouteMessage.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace velq {

/*! A link's byte counters. */
struct LinkCounters
{
    std::uint64_t download = 0;
    std::uint64_t upload = 0;
};

/*! What is known of a network link, apart from its counters. */
struct Link
{
    int index = 0;
    std::uint64_t instance = 0; //!< tells two links with one index apart; 0: not known
    std::string name;
    std::string kind; //!< "bridge", "tun", "vlan" and so on; empty for hardware
    std::string hardwareAddress; //!< the permanent one; empty without one
    int lowerIndex = 0; //!< the link below in this namespace, 0 without one
    int masterIndex = 0; //!< the bridge or bond above, 0 without one
    bool loopback = false;
    bool up = false; //!< can carry traffic, and not disconnected on request
    bool wireless = false;
};

/*! One thing that the kernel said. */
struct LinkStep
{
    enum class Kind { Appeared, Changed, Gone, Counted };
    Kind kind = Kind::Counted;
    Link link; //!< whole for Appeared and Changed; always with index and instance
    std::optional<LinkCounters> counters;
    bool fromEvent = false; //!< may be a little older than counters that came before
    std::optional<LinkCounters> base; //!< Appeared: counters at its making, when that was seen
};

/*! What the kernel said since the last look, in its order. */
struct LinkNews
{
    bool valid = false; //!< false: nothing could be learnt this time; what was known stays
    std::vector<LinkStep> steps;
    std::vector<DefaultRoute> routes; //!< usable ones, the preferred first
};

/*! Where links and their counters come from. Used by one thread at a time. */
class LinkSource
{
public:
    virtual ~LinkSource() = default;
    [[nodiscard]] virtual LinkNews read() = 0;
    //! Link \a index was disconnected on request: it is down until it connects anew.
    virtual void noteDisconnect(int index) = 0;
};

} // namespace velq
