#pragma once

#include "counters/RouteMessage.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace velq {

/*! Bytes since the link was made. */
struct LinkCounters
{
    std::uint64_t download = 0;
    std::uint64_t upload = 0;
};

/*! A network link and its state. */
struct Link
{
    int index = 0; //!< the kernel's number of the link; another link may get it later
    std::uint64_t instance = 0; //!< tells links with the same index apart; 0: not known
    std::string name;
    std::string kind; //!< "bridge", "tun", "vlan", ...; empty for hardware
    std::string hardwareAddress; //!< the permanent one, "02:00:5e:10:00:01"; empty without one
    int lowerIndex = 0; //!< the link that this one sends through, in the same namespace; 0: none
    int masterIndex = 0; //!< the bridge or bond that this one is a port of; 0: none
    bool loopback = false;
    bool up = false; //!< able to carry traffic, and not disconnected on request
    bool wireless = false;
};

/*! One thing that the kernel said about a link. */
struct LinkStep
{
    enum class Kind { Appeared, Changed, Gone, Counted };
    Kind kind = Kind::Counted;
    Link link; //!< whole for Appeared and Changed; index and instance always
    std::optional<LinkCounters> counters; //!< what they were then; when gone, the last ones
    bool fromEvent = false; //!< said at the moment of the change, not when we asked
    //! Appeared only: the counters from which this link's traffic is ours. Without it the link was
    //! there before we looked for the first time.
    std::optional<LinkCounters> base;
};

/*! What happened between two looks. */
struct LinkNews
{
    bool valid = false; //!< false: nothing could be learnt; the next valid news have it all
    std::vector<LinkStep> steps; //!< in the order in which the kernel said so
    std::vector<DefaultRoute> routes; //!< all usable default routes, the preferred one first
};

/*! Where the counters of all links come from. Used by one thread at a time. */
class LinkSource
{
public:
    virtual ~LinkSource() = default;
    //! Looks at all links. Each known one has at least one step with counters in valid news,
    //! unless it is gone.
    [[nodiscard]] virtual LinkNews read() = 0;
    //! The link was disconnected on request: it is down until it connects anew, although the
    //! hardware may stay up.
    virtual void noteDisconnect(int index) = 0;
    //! Connecting was asked for: a script in the kernel's place ends its pause.
    virtual void noteConnect() { }
};

} // namespace velq
