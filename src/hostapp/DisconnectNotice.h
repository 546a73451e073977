#pragma once

#include "MessageBar.h"

//! What the window says of \a result, a VELQ_DISCONNECT_ value; unknown ones count as failures.
[[nodiscard]] Notice disconnectNotice(int result);

//! Whether what was said of \a result is out of date now that the connection has come up (\a
//! connected) or gone down.
[[nodiscard]] bool isDisconnectNoticeOver(int result, bool connected);
