#pragma once
// The SDK's C functions as values; empty where it has none to give.

#include "Command.h"
#include "ExitCode.h"
#include "PeriodFigures.h"

#include <host/velq_extension.h>

#include <optional>
#include <string>
#include <vector>

namespace velqctl {

//! Tells the SDK what the command line says, before anything else is asked.
[[nodiscard]] Outcome configureSdk(const Command &command);

[[nodiscard]] StoreState storeState();
[[nodiscard]] std::string countedInterface();
[[nodiscard]] bool isConnected();
[[nodiscard]] std::string usedDevice();
[[nodiscard]] std::optional<std::vector<VELQ_Device>> devices();
[[nodiscard]] std::optional<PeriodFigures> periodFigures(int kind, int type);
//! Of both connect types, for each of \a kinds.
[[nodiscard]] std::optional<std::vector<PeriodFigures>>
periodFigures(const std::vector<int> &kinds);
//! The latest \a most ones, oldest first.
[[nodiscard]] std::optional<std::vector<VELQ_Reason>> reasons(int most);
//! Days, or hours of days, from the first to the last one, included.
[[nodiscard]] std::optional<std::vector<VELQ_Usage>> usage(bool hours, int from, int to);
//! The local day of now.
[[nodiscard]] std::optional<int> today();
//! When the figures of \a type were cleared, or the store was begun; seconds since 1970 UTC.
[[nodiscard]] long long lastReset(int type);

//! Writes what is booked, so that the store's problem is known before the program says "done".
void writeBooks();

} // namespace velqctl
