#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace velq {

/*! A default route of the main table that can carry traffic. */
struct DefaultRoute
{
    int family = 0; //!< AF_INET or AF_INET6
    int index = 0; //!< the link it leaves by
    std::uint32_t metric = 0; //!< lower is preferred
};

/*!
 * Reads the first message of \a buffer. Nothing unless it is RTM_NEWROUTE with a usable default
 * route of the main table; one that spreads over several links is a route by each of them that is
 * usable. \a buffer has to be aligned to 4 bytes.
 */
[[nodiscard]] std::vector<DefaultRoute> parseRouteMessage(const void *buffer, std::size_t size);

/*! Whether the first message of \a buffer tells of a default route that came, changed or went. */
[[nodiscard]] bool isDefaultRouteChange(const void *buffer, std::size_t size);

/*! Whether \a route comes before \a other: IPv4 first, then the lower metric. */
[[nodiscard]] bool isPreferred(const DefaultRoute &route, const DefaultRoute &other);

} // namespace velq
