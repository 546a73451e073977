#pragma once
// A device SDK in memory: reports that a test sets, events that a test sends from any thread.

#include <QtGlobal>

#include <host/velq.h>

#include <atomic>
#include <vector>

struct FakeReport
{
    int result = 0; //!< what the call answers; other than 0 leaves the block untouched
    quint64 download = 0;
    quint64 upload = 0;
    quint32 downloadSpeed = 0;
    quint32 uploadSpeed = 0;
    qint64 time = 0;
    quint32 lastReset = 0;
};

struct FakeReportCall
{
    int kind;
    int type;
    bool cleared; //!< the block came with zeros
};

struct FakeSdk
{
    FakeReport reports[6]; //!< by kind
    FakeReport history;
    int registerResult = 0;
    int resetResult = 0;
    int nameResult = 0;
    const char *customizeName = "common";
    std::vector<FakeReportCall> calls; //!< only what came from the thread that reset the fake
    std::vector<unsigned long long> historyKeys;
    bool historyCleared = true; //!< every history block came with zeros
    std::vector<int> resets; //!< connect types
    int connectionResult = 0; //!< what the connection query answers
    int connections = 0; //!< and how many it counts, even when it fails
    bool connectionArgumentsClear = true; //!< the last query came with a null list and a count of 0
    int listsOut = 0; //!< connection lists given out less those handed back
    int registered = 0; //!< register calls
    int unregistered = 0;
};

//! The state behind the fake; a test changes it while no event is on its way.
FakeSdk &fakeSdk();
//! Back to an empty state without callbacks.
void resetFakeSdk();
//! Whether a callback is registered.
bool fakeSdkHasCallback();
//! Calls the registered callback on the calling thread; -1 without one.
int sendStatisticsEvent(bool connected, int type = 0);
//! The same with any event number and data.
int sendEvent(int event, void *data);
