#pragma once

#include "MessageBar.h"

//! What to say of a VELQ_CONNECT_ value.
[[nodiscard]] Notice connectNotice(int result);
