#pragma once

#include "counters/LinkSource.h"
#include "modem/NetworkFacts.h"

#include <map>
#include <vector>

namespace velq {

using Links = std::map<int, Link>; //!< by index

//! Whether a link is a device of its own; modems may have a kind nevertheless.
[[nodiscard]] bool isHardware(const Link &link);
//! Whether its bytes may be another link's as well, without the kernel saying which.
[[nodiscard]] bool mayBeOverAnother(const Link &link);

/*!
 * The links that carry what leaves the computer, each byte on one of them only, the preferred
 * first: a connected modem's, then that of NetworkManager's primary connection, then those of the
 * default routes. A bridge or bond stands for its ports, a VLAN for the link below; a tunnel's
 * bytes travel over another link and count there.
 */
[[nodiscard]] std::vector<int> uplinks(const Links &links, const std::vector<DefaultRoute> &routes,
                                       const NetworkFacts &facts);

/*!
 * \a same, links of one device, without those whose bytes are on another of them as well: a VLAN or
 * the like stands for the link below, any other link has its own before the one that carries it.
 */
[[nodiscard]] std::vector<int> withoutDoubles(const Links &links, std::vector<int> same);

} // namespace velq
