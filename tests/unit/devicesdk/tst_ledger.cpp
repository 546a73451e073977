#include "store/Ledger.h"

#include <QtTest>

#include <thread>

#include "StoreFolder.h"

using velq::Amounts;
using velq::DaySpan;
using velq::Ledger;

class tst_Ledger : public QObject
{
    Q_OBJECT
private slots:
    void reportsAreStoredPlusPending();
    void commitsNeitherDoubleNorLose();
    void aResetClearsPendingToo();
    void closingWritesWhatIsPending();
    void closingDoesNotBringARemovedStoreBack();
    void aSecondLedgerNeverDoubles();
    void withoutItsLockFileOneOfTwoStops();
    void threadsLoseNothing();
    void timeAfterAPauseGoesToItsHours();
    void sumsSinceAnHour();
    void sumsSinceAnHourThatWasThinnedOutTakeTheDay();
    void aClockThatIsYearsAheadForADayTakesNoHours();
    void aLimitOfTheHoursBeyondAllTimesTakesTheDay();
    void marksReasonsAndSettingsAreStored();
    void hoursAndDaysArePlusPending();
    void aStoreThatWasSetAsideIsTold();
    void takingOverIsTold();
};

namespace {

constexpr DaySpan kAlways { 0, INT32_MAX };

} // namespace

void tst_Ledger::reportsAreStoredPlusPending()
{
    const StoreFolder folder;
    Ledger ledger(ledgerOptions(folder.options()));
    QVERIFY(ledger.problem().empty());
    book(ledger, 0, kNow, { 5, 1, 1000, 1000 });
    QCOMPARE(download(ledger), std::int64_t(5));
    QCOMPARE(runSql(folder.file(), "SELECT count(*) FROM hour"), 0LL);
    ledger.commit();
    QCOMPARE(runSql(folder.file(), "SELECT download FROM hour"), 5LL);
    QCOMPARE(download(ledger), std::int64_t(5));
    book(ledger, 0, kNow, { 6, 1, 1000, 1000 });
    book(ledger, 1, kNow, { 900, 1, 1000, 1000 });
    QCOMPARE(download(ledger), std::int64_t(11));
    const velq::Day today = utcDay(kNow);
    QCOMPARE(ledger.totals(0, { today, today + 1 }).upload, std::int64_t(2));
    QVERIFY(ledger.totals(0, { today + 1, today + 2 }).isZero());
}

void tst_Ledger::commitsNeitherDoubleNorLose()
{
    const StoreFolder folder;
    Ledger ledger(ledgerOptions(folder.options()));
    for (int i = 0; i < 50; ++i) {
        book(ledger, i % 2, kNow + i * 300, { 1, 1, 1, 1 });
        if (i % 3 == 0)
            ledger.commit();
        if (i % 5 == 0)
            ledger.commit();
        QCOMPARE(download(ledger, 0) + download(ledger, 1), std::int64_t(i + 1));
    }
    ledger.commit();
    QCOMPARE(runSql(folder.file(), "SELECT sum(download) FROM hour"), 50LL);
}

void tst_Ledger::aResetClearsPendingToo()
{
    const StoreFolder folder;
    Ledger ledger(ledgerOptions(folder.options()));
    book(ledger, 0, kNow, { 5, 1, 1000, 1000 });
    ledger.commit();
    book(ledger, 0, kNow, { 6, 1, 1000, 1000 });
    book(ledger, 1, kNow, { 7, 1, 1000, 1000 });
    QVERIFY(ledger.reset(0, momentOf(kNow + 10)));
    QCOMPARE(download(ledger, 0), std::int64_t(0));
    QCOMPARE(download(ledger, 1), std::int64_t(7));
    QCOMPARE(ledger.lastReset(0), std::int64_t(kNow + 10));
    book(ledger, 0, kNow, { 2, 1, 1000, 1000 });
    ledger.close();
    Ledger next(ledgerOptions(folder.options()));
    QCOMPARE(download(next, 0), std::int64_t(2));
    QCOMPARE(next.lastReset(0), std::int64_t(kNow + 10));
}

void tst_Ledger::closingWritesWhatIsPending()
{
    const StoreFolder folder;
    {
        Ledger ledger(ledgerOptions(folder.options()));
        book(ledger, 0, kNow, { 5, 1, 1000, 1000 });
        ledger.close();
        ledger.close();
        ledger.commit();
        QVERIFY(!ledger.reset(0, momentOf(kNow)));
    }
    QCOMPARE(runSql(folder.file(), "SELECT download FROM hour"), 5LL);
    Ledger next(ledgerOptions(folder.options()));
    QVERIFY2(next.problem().empty(), "the lock was given back");
}

void tst_Ledger::closingDoesNotBringARemovedStoreBack()
{
    const StoreFolder folder;
    Ledger ledger(ledgerOptions(folder.options()));
    book(ledger, 0, kNow, { 5, 1, 1000, 1000 });
    for (const QString &name : folder.entries())
        QVERIFY(QFile::remove(folder.file(name.toLatin1().constData())));
    ledger.close();
    QVERIFY(folder.entries().isEmpty());
}

void tst_Ledger::aSecondLedgerNeverDoubles()
{
    const StoreFolder folder;
    Ledger first(ledgerOptions(folder.options()));
    Ledger second(ledgerOptions(folder.options()));
    for (Ledger *ledger : { &first, &second })
        book(*ledger, 0, kNow, { 5, 1, 1000, 1000 });
    QCOMPARE(download(second), std::int64_t(0));
    QVERIFY(!second.reset(0, momentOf(kNow)));
    first.commit();
    second.commit();
    QCOMPARE(download(first), std::int64_t(5));
    QCOMPARE(download(second), std::int64_t(5));
    first.close();
    second.commit(); // it has the store to itself now and counts from here on
    book(second, 0, kNow, { 1, 1, 1000, 1000 });
    second.commit();
    QCOMPARE(download(second), std::int64_t(6));
    QVERIFY(second.problem().empty());
}

void tst_Ledger::withoutItsLockFileOneOfTwoStops()
{
    const StoreFolder folder;
    Ledger first(ledgerOptions(folder.options()));
    QVERIFY(QFile::remove(folder.file("velq.lock")));
    first.commit(); // alone, it goes on
    QVERIFY(!first.isShared());
    QVERIFY(QFile::exists(folder.file("velq.lock")));
    QVERIFY(QFile::remove(folder.file("velq.lock")));
    Ledger second(ledgerOptions(folder.options()));
    QVERIFY(!second.isShared());
    book(first, 0, kNow, { 100, 0, 0, 0 }); // the same bytes
    book(second, 0, kNow, { 100, 0, 0, 0 });
    first.commit();
    second.commit();
    QVERIFY(first.isShared());
    QVERIFY(!second.isShared());
    QCOMPARE(download(second), std::int64_t(100));
    first.commit();
    QCOMPARE(download(first), std::int64_t(100));
}

void tst_Ledger::threadsLoseNothing()
{
    const StoreFolder folder;
    Ledger ledger(ledgerOptions(folder.options()));
    constexpr int kRounds = 200;
    const auto bookOften = [&ledger](int type) {
        for (int i = 0; i < kRounds; ++i)
            book(ledger, type, kNow, { 1, 1, 1, 1 });
    };
    std::thread first(bookOften, 0);
    std::thread second(bookOften, 1);
    std::thread writer([&ledger] {
        for (int i = 0; i < 20; ++i)
            ledger.commit();
    });
    std::int64_t seen = 0;
    bool monotonous = true;
    for (int i = 0; i < 100; ++i) {
        const std::int64_t now = download(ledger, 0);
        monotonous = monotonous && now >= seen; // a commit never hides what is on its way
        seen = now;
    }
    first.join();
    second.join();
    writer.join();
    QVERIFY(monotonous);
    QCOMPARE(download(ledger, 0), std::int64_t(kRounds));
    QCOMPARE(download(ledger, 1), std::int64_t(kRounds));
    ledger.close();
    QCOMPARE(runSql(folder.file(), "SELECT sum(download) FROM hour"), qint64(2 * kRounds));
}

void tst_Ledger::timeAfterAPauseGoesToItsHours()
{
    const StoreFolder folder;
    Ledger ledger(ledgerOptions(folder.options()));
    const qint64 hour = velq::hourStart(kNow);
    constexpr qint64 kMinuteMs = 60000;
    book(ledger, 0, hour + 600, { 9, 8, 150 * kMinuteMs, 140 * kMinuteMs }); // 21:40 to 00:10
    velq::HourAmounts hours;
    QVERIFY(ledger.hours({ 0, INT64_MAX }, hours));
    QCOMPARE(int(hours.size()), 4);
    std::vector<Amounts> found;
    for (const auto &[key, amounts] : hours)
        found.push_back(amounts);
    QVERIFY((found[0] == Amounts { 0, 0, 20 * kMinuteMs, 20 * kMinuteMs }));
    QVERIFY((found[1] == Amounts { 0, 0, 60 * kMinuteMs, 60 * kMinuteMs }));
    QVERIFY((found[2] == Amounts { 0, 0, 60 * kMinuteMs, 60 * kMinuteMs }));
    QVERIFY((found[3] == Amounts { 9, 8, 10 * kMinuteMs, 0 }));
    QCOMPARE(hours.begin()->first.start, hour - 3 * 3600);
    QCOMPARE(ledger.totals(0, kAlways).timeMs, 150 * kMinuteMs);
}

void tst_Ledger::sumsSinceAnHour()
{
    const StoreFolder folder;
    Ledger ledger(ledgerOptions(folder.options()));
    const qint64 hour = velq::hourStart(kNow);
    book(ledger, 0, hour - 3 * 86400, { 100000, 0, 0, 0 });
    book(ledger, 0, hour - 3600, { 10000, 0, 0, 0 });
    ledger.commit();
    book(ledger, 1, hour, { 1000, 0, 0, 0 });
    book(ledger, 0, hour + 3600, { 100, 0, 0, 0 });
    book(ledger, 0, hour + 86400, { 10, 0, 0, 0 });
    // Hours whose day is another one: the computer travelled.
    velq::HourAmounts abroad;
    abroad[{ hour, utcDay(hour) - 1, kDevice, 0 }] = { 1, 0, 0, 0 };
    abroad[{ hour - 3600, utcDay(hour) + 1, kDevice, 0 }] = { 5000000, 0, 0, 0 };
    ledger.seed(abroad);
    Amounts since;
    QVERIFY(ledger.totalsSince(hour, since));
    QCOMPARE(since.download, std::int64_t(1111));
    QVERIFY(ledger.totalsSince(hour + 3600, since));
    QCOMPARE(since.download, std::int64_t(110));
    QVERIFY(ledger.totalsSince(hour - 3600, since));
    QCOMPARE(since.download, std::int64_t(5011111));
    QVERIFY(ledger.totalsSince(0, since));
    QCOMPARE(since.download, std::int64_t(5111111));
    QVERIFY(ledger.totalsSince(hour + 100 * 86400, since));
    QVERIFY(since.isZero());
}

void tst_Ledger::sumsSinceAnHourThatWasThinnedOutTakeTheDay()
{
    const StoreFolder folder;
    const qint64 hour = velq::hourStart(kNow);
    {
        Ledger ledger(ledgerOptions(folder.options()));
        book(ledger, 0, hour - 10 * 86400, { 100, 0, 0, 0 });
        book(ledger, 0, hour - 10 * 86400 + 3600, { 10, 0, 0, 0 });
        book(ledger, 0, hour - 3 * 86400, { 1000, 0, 0, 0 });
        book(ledger, 0, hour, { 1, 0, 0, 0 });
        ledger.thinOut(5, hour);
        ledger.commit();
        ledger.thinOut(500, hour); // what is gone does not come back
        ledger.close();
    }
    QCOMPARE(runSql(folder.file(), "SELECT count(*) FROM hour"), 2LL);
    Ledger ledger(ledgerOptions(folder.options()));
    Amounts since;
    QVERIFY(ledger.totalsSince(hour - 10 * 86400 + 3600, since));
    QCOMPARE(since.download, std::int64_t(1111));
    QVERIFY(ledger.totalsSince(hour, since));
    QCOMPARE(since.download, std::int64_t(1));
}

void tst_Ledger::aClockThatIsYearsAheadForADayTakesNoHours()
{
    const StoreFolder folder;
    const qint64 hour = velq::hourStart(kNow);
    const qint64 ahead = hour + 9000 * qint64(86400);
    Ledger ledger(ledgerOptions(folder.options()));
    book(ledger, 0, hour - 86400, { 100, 0, 0, 0 });
    book(ledger, 0, hour - 2 * 86400, { 1000, 0, 0, 0 });
    ledger.commit();
    for (const qint64 now : { ahead, ahead + 86400 }) {
        velq::BookingBatch batch;
        batch.bookings.push_back({ kDevice, 0, { 1, 0, 0, 0 } });
        ledger.book(batch, { now, now - kBooted });
        ledger.thinOut(730, now);
        ledger.commit();
        QCOMPARE(runSql(folder.file(), "SELECT count(*) FROM hour WHERE download > 1"), 2LL);
    }
    Amounts since;
    QVERIFY(ledger.totalsSince(hour - 86400, since));
    QCOMPARE(since.download, std::int64_t(102));
    // It stays there, so it is the right one.
    ledger.thinOut(730, ahead + 3 * 86400);
    ledger.commit();
    QCOMPARE(runSql(folder.file(), "SELECT count(*) FROM hour WHERE download > 1"), 0LL);
    QVERIFY(ledger.totalsSince(hour - 86400, since));
    QCOMPARE(since.download, std::int64_t(102));
    // Or it was not: what came since has its hours.
    ledger.thinOut(730, hour);
    QVERIFY(ledger.totalsSince(hour + 3 * 86400, since));
    QCOMPARE(since.download, std::int64_t(2));
}

void tst_Ledger::aLimitOfTheHoursBeyondAllTimesTakesTheDay()
{
    const StoreFolder folder;
    const qint64 hour = velq::hourStart(kNow);
    Ledger ledger(ledgerOptions(folder.options()));
    book(ledger, 0, hour, { 1, 0, 0, 0 });
    book(ledger, 0, hour + 3600, { 10, 0, 0, 0 });
    Amounts since;
    QVERIFY(ledger.totalsSince(hour + 3600, since));
    QCOMPARE(since.download, std::int64_t(10));
    QVERIFY(ledger.setSetting("hours_from", "9223372036854775807"));
    QVERIFY(ledger.totalsSince(hour + 3600, since));
    QCOMPARE(since.download, std::int64_t(11));
    QVERIFY(ledger.setSetting("hours_from", "-9223372036854775808"));
    QVERIFY(ledger.totalsSince(hour + 3600, since));
    QCOMPARE(since.download, std::int64_t(10));
}

void tst_Ledger::marksReasonsAndSettingsAreStored()
{
    const StoreFolder folder;
    velq::BookingBatch batch;
    const velq::LinkMark mark { { "boot", 3, 33 }, "wwan0", kDevice, 0, 5, 6 };
    batch.marks.push_back(mark);
    batch.devices.push_back({ kDevice, "wwan0", "wwan0", 0 });
    batch.reasons.resize(1);
    {
        Ledger ledger(ledgerOptions(folder.options()));
        QVERIFY(ledger.setSetting("device", "wwan0"));
        QCOMPARE(ledger.setting("device"), std::string("wwan0"));
        ledger.book(batch, momentOf(kNow));
        ledger.close();
    }
    Ledger ledger(ledgerOptions(folder.options()));
    QVERIFY(ledger.marks() == batch.marks);
    QCOMPARE(ledger.setting("device"), std::string("wwan0"));
    QVERIFY(ledger.setting("other").empty());
    velq::BookingBatch end;
    end.settled.push_back(mark.id);
    end.reasons.resize(1);
    ledger.book(end, momentOf(kNow + 1));
    std::vector<velq::Reason> reasons;
    QVERIFY(ledger.reasons(10, reasons));
    QCOMPARE(int(reasons.size()), 2); // one is pending
    QCOMPARE(reasons[1].at, std::int64_t(kNow + 1));
    QVERIFY(ledger.reasons(1, reasons));
    QCOMPARE(int(reasons.size()), 1);
    QCOMPARE(reasons[0].at, std::int64_t(kNow + 1));
    ledger.commit();
    QVERIFY(ledger.marks().empty());
}

void tst_Ledger::hoursAndDaysArePlusPending()
{
    const StoreFolder folder;
    Ledger ledger(ledgerOptions(folder.options()));
    book(ledger, 0, kNow, { 5, 0, 0, 0 });
    book(ledger, 1, kNow, { 50, 0, 0, 0 });
    ledger.commit();
    book(ledger, 0, kNow, { 6, 0, 0, 0 });
    velq::DayAmounts days;
    QVERIFY(ledger.days(kAlways, days));
    QCOMPARE(int(days.size()), 2);
    QCOMPARE(days.begin()->second.download, std::int64_t(11));
    std::vector<velq::StoredDevice> devices;
    QVERIFY(ledger.devices(devices));
    QCOMPARE(int(devices.size()), 1);
    QCOMPARE(devices[0].seen, std::int64_t(kNow));
}

void tst_Ledger::aStoreThatWasSetAsideIsTold()
{
    const StoreFolder folder;
    folder.write("velq.db", QByteArray(8192, 'x'));
    Ledger ledger(ledgerOptions(folder.options()));
    std::vector<velq::Reason> reasons;
    for (int round = 0; round < 2; ++round) {
        QVERIFY(ledger.reasons(10, reasons));
        QCOMPARE(int(reasons.size()), 1);
        QVERIFY(reasons[0].kind == velq::ReasonKind::SetAside);
        QCOMPARE(reasons[0].at, std::int64_t(kNow));
        ledger.commit();
    }
}

void tst_Ledger::takingOverIsTold()
{
    const StoreFolder folder;
    Ledger first(ledgerOptions(folder.options()));
    Ledger second(ledgerOptions(folder.options()));
    QVERIFY(second.isShared());
    QVERIFY(!second.setSetting("device", "x"));
    const auto before = second.takeovers();
    QVERIFY(first.setSetting("device", "y"));
    first.close();
    second.commit();
    QVERIFY(!second.isShared());
    QCOMPARE(second.takeovers(), before + 1);
    velq::BookingBatch batch; // of a look that was taken before
    batch.bookings.push_back({ kDevice, 0, { 5, 0, 0, 0 } });
    second.book(batch, momentOf(kNow), before);
    QCOMPARE(download(second), std::int64_t(0));
    second.book(batch, momentOf(kNow), before + 1);
    QCOMPARE(download(second), std::int64_t(5));
    QCOMPARE(second.setting("device"), std::string("y"));
}

QTEST_GUILESS_MAIN(tst_Ledger)
#include "tst_ledger.moc"
