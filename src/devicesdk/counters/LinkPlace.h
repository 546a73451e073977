#pragma once

#include <cstdint>
#include <string>

namespace velq {

/*! What the system's files know about a link. */
struct LinkPlace
{
    std::uint64_t instance = 0; //!< stays while the link lives, over renames; 0: not known
    bool wireless = false;
};

/*!
 * Looks up the link \a index, which is called \a name, in the folders of network links. Nothing is
 * known when the folder shows another link: it may belong to another network namespace. \a root is
 * "" for the system, a folder in its place in tests.
 */
[[nodiscard]] LinkPlace findLinkPlace(const std::string &root, const std::string &name, int index);

} // namespace velq
