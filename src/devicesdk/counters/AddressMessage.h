#pragma once

#include <cstddef>

namespace velq {

/*!
 * The index of the link that has got, by the rtnetlink message, an address that reaches beyond it;
 * 0 for every other message.
 */
[[nodiscard]] int linkOfNewAddress(const void *message, std::size_t size);

} // namespace velq
