#pragma once

#include <cctz/time_zone.h>

#include <string>

namespace velq {

/*!
 * Makes cctz take a zone from the \a bytes of a compiled time zone file, whose counts have to be
 * right: cctz believes them. The same bytes are kept only once, but for the rest of the process.
 */
[[nodiscard]] bool loadZoneBytes(const std::string &bytes, cctz::time_zone &zone);

} // namespace velq
