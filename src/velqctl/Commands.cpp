#include "Commands.h"

#include "Sdk.h"

#include <chrono>
#include <thread>
#include <utility>

namespace velqctl {

namespace {

Outcome runVerb(const Command &command)
{
    switch (command.verb) {
    case Verb::Status:
        return runStatus(command);
    case Verb::Report:
        return runReport(command);
    case Verb::History:
        return runHistory(command);
    case Verb::Devices:
        return runDevices(command);
    case Verb::Use:
        return runUse(command);
    case Verb::Correct:
        return runCorrect(command);
    case Verb::Reset:
        return runReset(command);
    case Verb::Connect:
        return runConnect(command);
    case Verb::Disconnect:
        return runDisconnect(command);
    case Verb::Why:
        return runWhy(command);
    case Verb::Export:
        return runExport(command);
    case Verb::Backup:
        return runBackup(command);
    case Verb::Doctor:
        return runDoctor(command);
    }
    return { ExitCode::Failed, {}, "unknown command" };
}

bool changesBooks(Verb verb)
{
    return verb == Verb::Use || verb == Verb::Correct || verb == Verb::Reset;
}

//! The store, which another call of this program may have for a moment longer.
StoreState waitForStore()
{
    constexpr int kTries = 20;
    StoreState store = storeState();
    for (int i = 0; i < kTries && !store.counting; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        writeBooks(); // takes over what is free
        store = storeState();
    }
    return store;
}

} // namespace

Outcome run(const Command &command)
{
    if (Outcome outcome = configureSdk(command); outcome.code != ExitCode::Good)
        return outcome;
    const bool change = changesBooks(command.verb);
    if (change) {
        const StoreState store = waitForStore();
        if (!store.counting)
            return readOnlyOutcome(store);
    }
    Outcome outcome = runVerb(command);
    if (change)
        writeBooks();
    outcome = withStoreProblem(std::move(outcome), storeState());
    if (change && outcome.code != ExitCode::Good && !outcome.output.empty()) {
        outcome.output.clear(); // it says that it is done
        outcome.message = "this was not done: " + outcome.message;
    }
    return outcome;
}

Outcome doneOutcome(const Command &command, const std::string &text)
{
    const bool json = command.format == Format::Json;
    return { ExitCode::Good, json ? "{\n  \"done\": true\n}\n" : text + '\n', {} };
}

Outcome unreadableOutcome()
{
    return { ExitCode::Failed,
             {},
             "the books could not be read; \"velqctl doctor\" looks for the reason" };
}

} // namespace velqctl
