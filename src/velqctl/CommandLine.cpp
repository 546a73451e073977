#include "CommandLine.h"

#include "Amount.h"
#include "Dates.h"
#include "Words.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <functional>
#include <sstream>

namespace velqctl {

namespace {

//! What the options fill in; the command follows from it.
struct Input
{
    Command command;
    bool json = false;
    bool csv = false;
    bool openMetrics = false;
    bool automatic = false;
    bool days = false;
};

//! An option whose text \a take understands, or answers false.
CLI::Option *addParsed(CLI::App &app, const std::string &name, const std::string &description,
                       const std::string &expected,
                       const std::function<bool(const std::string &)> &take)
{
    return app.add_option_function<std::string>(
        name,
        [=](const std::string &text) {
            if (!take(text))
                throw CLI::ValidationError(name, '"' + printable(text) + "\" is not " + expected);
        },
        description);
}

//! An empty name is a script's unset variable, never "the standard one".
CLI::Option *addName(CLI::App &app, const std::string &name, const std::string &description,
                     std::string &target)
{
    return addParsed(app, name, description, "a name", [&target](const std::string &text) {
        target = text;
        return !text.empty();
    });
}

void addAmount(CLI::App &app, const std::string &name, const std::string &description,
               unsigned long long &target)
{
    addParsed(app, name, description, "an amount like 1500000, 1.5GB or 1.4GiB",
              [&target](const std::string &text) {
                  const auto bytes = parseAmount(text);
                  target = bytes.value_or(target);
                  return bytes.has_value();
              })
        ->required()
        ->option_text("AMOUNT");
}

void addDay(CLI::App &app, const std::string &name, const std::string &description,
            std::optional<int> &target)
{
    addParsed(app, name, description, "a date like 2024-03-01", [&target](const std::string &text) {
        target = parseDay(text);
        return target.has_value();
    })->option_text("DATE");
}

void addType(CLI::App &app, const std::string &description, std::optional<int> &target)
{
    addParsed(app, "--type", description, "mobile or wifi", [&target](const std::string &text) {
        target = parseType(text);
        return target.has_value();
    })->option_text("mobile|wifi");
}

CLI::App &addVerb(CLI::App &app, Input &input, const char *name, const char *description, Verb verb)
{
    CLI::App &sub = *app.add_subcommand(name, description);
    sub.callback([&input, verb] { input.command.verb = verb; });
    return sub;
}

void addGlobals(CLI::App &app, Input &input)
{
    Command &command = input.command;
    app.set_help_flag("-h,--help", "Print this help and exit");
    app.set_version_flag("--version", "velqctl " VELQCTL_VERSION, "Print the version and exit");
    app.add_flag("--json", input.json, "Answer in JSON");
    addName(app, "--data-dir", "Directory of the store", command.dataDirectory)->option_text("DIR");
    addName(app, "--interface", "Count this interface alone", command.interface)
        ->option_text("NAME");
    app.add_flag("--demo", command.demo, "A scripted connection, nothing of this computer");
    app.add_option("--week-start", command.weekStart, "First weekday, 0 (Monday) to 6")
        ->check(CLI::Range(0, 6))
        ->option_text("0-6");
    app.add_option("--month-start", command.monthStart, "First day of a month's period")
        ->check(CLI::Range(1, 31))
        ->option_text("1-31");
}

void addSpan(CLI::App &sub, Input &input)
{
    Command &command = input.command;
    bool Command::*const hours = &Command::hours;
    CLI::Option *const byHours = sub.add_flag("--hours", command.*hours, "Hour by hour");
    sub.add_flag("--days", input.days, "Day by day (the standard)")->excludes(byHours);
    addDay(sub, "--from", "First day", command.from);
    addDay(sub, "--to", "Last day, included", command.to);
}

void addReading(CLI::App &app, Input &input)
{
    Command &command = input.command;
    (void)addVerb(app, input, "status", "What is counted, and what it has used", Verb::Status);
    CLI::App &report = addVerb(app, input, "report", "Sums of the current periods", Verb::Report);
    addParsed(report, "PERIOD", "daily, weekly, monthly, yearly or all (the standard)",
              "daily, weekly, monthly, yearly or all", [&command](const std::string &text) {
                  command.period = parsePeriod(text);
                  return command.period.has_value() || text == "all";
              });
    addSpan(addVerb(app, input, "history", "Days or hours of the books", Verb::History), input);
    (void)addVerb(app, input, "devices", "Devices that are here or were counted", Verb::Devices);
    CLI::App &why = addVerb(app, input, "why", "Why the figures are what they are", Verb::Why);
    why.add_option("-n,--number", command.count, "The latest so many, 20 without it")
        ->check(CLI::Range(1, 1000000))
        ->option_text("N");
    (void)addVerb(app, input, "doctor", "Check what counting depends on", Verb::Doctor);
}

void addChanging(CLI::App &app, Input &input)
{
    Command &command = input.command;
    CLI::App &use = addVerb(app, input, "use", "Count one device from now on", Verb::Use);
    CLI::Option *const device
        = use.add_option("DEVICE", command.device, "A device's key or interface");
    use.add_flag("--automatic", input.automatic, "Count what carries the traffic")
        ->excludes(device);
    use.add_flag("--absent", command.absent, "Take a device that was never here, too");
    CLI::App &correct = addVerb(app, input, "correct",
                                "Take over what the operator says of a period", Verb::Correct);
    addParsed(correct, "PERIOD", "daily, weekly, monthly or yearly",
              "daily, weekly, monthly or yearly",
              [&command](const std::string &text) {
                  command.period = parsePeriod(text);
                  return command.period.has_value();
              })
        ->required();
    addAmount(correct, "--download", "What was downloaded", command.download);
    addAmount(correct, "--upload", "What was uploaded", command.upload);
    addType(correct, "Connect type, mobile without it", command.type);
    CLI::App &reset = addVerb(app, input, "reset", "Clear the figures for good", Verb::Reset);
    addType(reset, "Only this connect type", command.type);
    reset.add_flag("--yes", command.yes, "Needed, so that nobody resets by mistake");
    (void)addVerb(app, input, "connect", "Connect the used device", Verb::Connect);
    (void)addVerb(app, input, "disconnect", "Take the connection down", Verb::Disconnect);
}

void addFiles(CLI::App &app, Input &input)
{
    Command &command = input.command;
    CLI::App &books = addVerb(app, input, "export",
                              "The books, in one of --json, --csv, --openmetrics", Verb::Export);
    CLI::Option *const csv = books.add_flag("--csv", input.csv, "Comma-separated values");
    books.add_flag("--openmetrics", input.openMetrics, "Metrics of the current state")
        ->excludes(csv);
    addSpan(books, input);
    addName(books, "--output", "Write to this file, replacing it", command.file)
        ->option_text("FILE");
    CLI::App &backup
        = addVerb(app, input, "backup", "Copy the store while it is in use", Verb::Backup);
    addName(backup, "FILE", "A file that does not exist yet", command.file)->required();
}

//! What excludes what and is required is in the descriptions where it matters.
void tidyHelp(CLI::App &app)
{
    for (CLI::Option *option : app.get_options([](const CLI::Option *) { return true; })) {
        if (option->get_option_text().empty())
            option->option_text(" ");
    }
    for (CLI::App *sub : app.get_subcommands([](CLI::App *) { return true; }))
        tidyHelp(*sub);
}

Format formatOf(const Input &input)
{
    if (input.csv)
        return Format::Csv;
    if (input.openMetrics)
        return Format::OpenMetrics;
    return input.json ? Format::Json : Format::Text;
}

//! What is wrong with options that are good by themselves; empty for nothing.
std::string complaint(const Input &input)
{
    const Command &command = input.command;
    if (command.verb == Verb::Use && command.device.empty() && !input.automatic)
        return "use: name a device, or --automatic; \"velqctl devices\" lists them";
    if (command.verb == Verb::Reset && !command.yes)
        return "reset clears the figures for good; add --yes to do it";
    if (command.from && command.to && *command.from > *command.to)
        return "--from is later than --to";
    if (command.verb == Verb::Export) {
        const int formats = int(input.json) + int(input.csv) + int(input.openMetrics);
        if (formats != 1)
            return "export: choose one of --json, --csv, --openmetrics";
        if (input.openMetrics && (command.hours || input.days || command.from || command.to))
            return "export: --openmetrics tells the current state and has no span";
    }
    return {};
}

Outcome outcomeOf(const CLI::App &app, const CLI::ParseError &error)
{
    std::ostringstream out;
    std::ostringstream errors;
    if (app.exit(error, out, errors) == 0)
        return { ExitCode::Good, out.str(), {} };
    std::string text = error.what();
    const std::vector<std::string> rest = app.remaining();
    if (app.get_subcommands().empty() && !rest.empty())
        text = '"' + rest.front() + "\" is neither a command nor an option";
    return { ExitCode::Usage, {}, printable(text) + "; see \"velqctl --help\"" };
}

} // namespace

CommandLine parseCommandLine(std::vector<std::string> arguments)
{
    Input input;
    CLI::App app("What this computer's connections have used.", "velqctl");
    app.fallthrough();
    app.require_subcommand(1);
    addGlobals(app, input);
    addReading(app, input);
    addChanging(app, input);
    addFiles(app, input);
    tidyHelp(app);
    std::reverse(arguments.begin(), arguments.end()); // it takes them from the end
    CommandLine result;
    try {
        app.parse(std::move(arguments));
    } catch (const CLI::ParseError &error) {
        result.outcome = outcomeOf(app, error);
        return result;
    }
    if (const std::string text = complaint(input); !text.empty()) {
        result.outcome = { ExitCode::Usage, {}, text };
        return result;
    }
    input.command.format = formatOf(input);
    result.command = input.command;
    return result;
}

} // namespace velqctl
