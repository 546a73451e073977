#pragma once

#include <optional>
#include <string>

namespace velqctl {

enum class Verb {
    Status,
    Report,
    History,
    Devices,
    Use,
    Correct,
    Reset,
    Connect,
    Disconnect,
    Why,
    Export,
    Backup,
    Doctor
};

enum class Format { Text, Json, Csv, OpenMetrics };

/*! A command line, understood. Each verb looks at its own members and the common ones. */
struct Command
{
    Verb verb = Verb::Status;
    Format format = Format::Text; //!< Csv and OpenMetrics only for Export
    std::string dataDirectory; //!< as it was typed; empty: the SDK's own choice
    std::string interface;
    bool demo = false;
    int weekStart = 0; //!< Monday
    int monthStart = 1;

    std::optional<int> period; //!< a report's kind; empty: all of them
    std::optional<int> type; //!< a connect type; empty: both, in Correct mobile
    bool hours = false;
    std::optional<int> from; //!< days since 1970-01-01
    std::optional<int> to; //!< the last day, included
    std::string device; //!< Use; empty: automatic
    bool absent = false; //!< Use: also a device that is not known
    unsigned long long download = 0; //!< bytes
    unsigned long long upload = 0;
    bool yes = false;
    int count = 20; //!< Why
    std::string file; //!< Export, Backup; empty: the standard output
};

} // namespace velqctl
