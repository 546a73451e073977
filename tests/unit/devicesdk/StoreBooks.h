#pragma once
// What the tests of a store ask and write through it.

#include "store/Store.h"

#include <QtGlobal>

#include "StoreFolder.h"

constexpr velq::Span kAlways { 0, INT64_MAX };

inline velq::Amounts sumOf(velq::Store &store, int type = 0, const velq::Span &span = kAlways)
{
    velq::HourAmounts hours;
    if (store.isReadable()
        && !store.read([&](const velq::BookReader &reader) { return reader.hours(span, hours); }))
        qFatal("the sum cannot be read");
    velq::Amounts sum;
    for (const auto &[key, amounts] : hours) {
        if (key.use == type)
            sum.add(amounts);
    }
    return sum;
}

inline std::int64_t lastReset(velq::Store &store, int type)
{
    std::int64_t at = -1;
    if (!store.read([&](const velq::BookReader &reader) { return reader.lastReset(type, at); }))
        qFatal("the reset cannot be read");
    return at;
}

inline void makeStore(const StoreFolder &folder, qint64 download)
{
    velq::Store store(folder.options());
    if (!store.commit(amounts(kNow, download)))
        qFatal("the store cannot be made");
}
