#include <QtTest>

#include "StoreFolder.h"

using velq::Amounts;
using velq::DaySpan;
using velq::HourAmounts;
using velq::Ledger;
using velq::Moment;

class tst_ClockStep : public QObject
{
    Q_OBJECT
private slots:
    void aDayAheadAndBackLeavesNoTrace_data();
    void aDayAheadAndBackLeavesNoTrace();
    void aClockThatIsSetAtLastDatesEverythingAnew();
    void aSmallCorrectionMovesNothing();
    void aStepOfMinutesKeepsWholeHoursInPlace();
    void whatIsOlderThanThreeDaysStays();
    void whatIsOlderThanAMonthIsForgotten();
    void whatWouldBeInTheFutureMovesAnyway();
    void aStepWhileNobodyCountedIsNoticed();
    void afterABootTheFutureWaitsADay();
    void afterABootThePastIsLeftAlone();
    void aResetForgetsWhatCouldMove();
    void theReasonIsTold();
    void theReasonOfTheLargestAmountsStaysAtTheLimit();
};

namespace {

constexpr qint64 kHour = velq::kHourSeconds;
constexpr qint64 kDay = 24 * kHour;
const qint64 kBegin = velq::hourStart(kNow);

//! A ledger that books a byte each ten minutes, with a wall clock that can be set.
class Desk
{
public:
    explicit Desk(const StoreFolder &folder, const std::string &boot = "boot")
        : ledger(ledgerOptions(folder.options(), boot))
    {
    }
    void work(qint64 seconds)
    {
        for (qint64 end = bootSeconds + seconds; bootSeconds < end; bootSeconds += step) {
            velq::BookingBatch batch;
            batch.bookings.push_back({ kDevice, 0, { 1, 10, connectedMs, 0 } });
            ledger.book(batch, now());
        }
    }
    void look()
    {
        ledger.book({}, now());
    }
    void setClock(qint64 bySeconds)
    {
        offset += bySeconds;
    }
    [[nodiscard]] Moment now() const
    {
        return { bootSeconds + offset, bootSeconds };
    }
    [[nodiscard]] QList<QPair<qint64, qint64>> hours()
    {
        HourAmounts hours;
        if (!ledger.hours({ 0, INT64_MAX }, hours))
            qFatal("the hours cannot be read");
        QList<QPair<qint64, qint64>> list;
        for (const auto &[key, amounts] : hours) {
            if (!amounts.isZero())
                list.append({ (key.start - kBegin) / kHour, amounts.download });
        }
        return list;
    }
    [[nodiscard]] qint64 sum(qint64 day)
    {
        const auto first = utcDay(kBegin) + velq::Day(day);
        return ledger.totals(0, { first, first + 1 }).download;
    }
    [[nodiscard]] qint64 all()
    {
        return ledger.totals(0, { 0, INT32_MAX }).download;
    }

    Ledger ledger;
    qint64 step = 600; // seconds between two bookings
    qint64 connectedMs = 0; // of each booking
    qint64 bootSeconds = 5000;
    qint64 offset = kBegin - 5000;
};

using Hours = QList<QPair<qint64, qint64>>;

} // namespace

void tst_ClockStep::aDayAheadAndBackLeavesNoTrace_data()
{
    QTest::addColumn<qint64>("step");
    QTest::addColumn<bool>("commit");
    for (const bool commit : { false, true }) {
        const QByteArray words = commit ? ", committed" : "";
        QTest::newRow(("ahead" + words).constData()) << kDay << commit;
        QTest::newRow(("a month ahead" + words).constData()) << 30 * kDay << commit;
        QTest::newRow(("back" + words).constData()) << -kDay << commit;
        QTest::newRow(("to 1970" + words).constData()) << -kBegin << commit;
        QTest::newRow(("half an hour" + words).constData()) << qint64(1800) << commit;
    }
}

void tst_ClockStep::aDayAheadAndBackLeavesNoTrace()
{
    QFETCH(qint64, step);
    QFETCH(bool, commit);
    const StoreFolder folder;
    Desk desk(folder);
    desk.work(2 * kHour);
    if (commit)
        desk.ledger.commit();
    desk.setClock(step);
    desk.work(kHour);
    QCOMPARE(desk.all(), qint64(18));
    if (commit)
        desk.ledger.commit();
    desk.setClock(-step);
    desk.work(kHour);
    if (commit)
        desk.ledger.commit();
    QCOMPARE(desk.hours(), (Hours { { 0, 6 }, { 1, 6 }, { 2, 6 }, { 3, 6 } }));
    QCOMPARE(desk.all(), qint64(24));
    QCOMPARE(desk.sum(0), qint64(24));
    desk.ledger.close();
    QCOMPARE(runSql(folder.file(), "SELECT sum(download) FROM day"), 24LL);
    QCOMPARE(runSql(folder.file(), "SELECT sum(upload) FROM hour"), 240LL);
}

void tst_ClockStep::aClockThatIsSetAtLastDatesEverythingAnew()
{
    const StoreFolder folder;
    Desk desk(folder);
    desk.setClock(-kBegin); // no battery: 1970
    desk.work(kHour);
    desk.setClock(kBegin);
    desk.work(kHour);
    QCOMPARE(desk.hours(), (Hours { { 0, 6 }, { 1, 6 } }));
}

void tst_ClockStep::aSmallCorrectionMovesNothing()
{
    const StoreFolder folder;
    Desk desk(folder);
    desk.work(kHour - 600);
    desk.setClock(59);
    desk.look();
    desk.setClock(-118);
    desk.look();
    std::vector<velq::Reason> reasons;
    QVERIFY(desk.ledger.reasons(5, reasons));
    QVERIFY(reasons.empty());
    QCOMPARE(desk.hours(), (Hours { { 0, 5 } }));
}

void tst_ClockStep::aStepOfMinutesKeepsWholeHoursInPlace()
{
    const StoreFolder folder;
    Desk desk(folder);
    desk.step = 60;
    desk.connectedMs = 60000;
    desk.bootSeconds += 60;
    desk.work(2 * kHour - 60);
    const Hours before = desk.hours();
    desk.setClock(-120);
    desk.look();
    QCOMPARE(desk.hours(), before);
    desk.setClock(-40 * 60); // most of an hour is in the one before now
    desk.look();
    QCOMPARE(desk.hours().first().first, before.first().first - 1);
}

void tst_ClockStep::whatIsOlderThanThreeDaysStays()
{
    const StoreFolder folder;
    Desk desk(folder);
    desk.work(kHour);
    desk.bootSeconds += 4 * kDay;
    desk.work(kHour);
    desk.setClock(kDay);
    desk.look();
    QCOMPARE(desk.sum(0), qint64(6));
    QCOMPARE(desk.sum(4), qint64(0));
    QCOMPARE(desk.sum(5), qint64(6));
}

void tst_ClockStep::whatIsOlderThanAMonthIsForgotten()
{
    const StoreFolder folder;
    Desk desk(folder);
    for (int day = 0; day < 50; ++day) {
        desk.work(600);
        desk.bootSeconds += kDay - 600;
    }
    desk.ledger.commit();
    QCOMPARE(runSql(folder.file(), "SELECT count(*) FROM recent"), 32LL);
    QCOMPARE(desk.all(), qint64(50));
    desk.setClock(-20 * kDay); // what is remembered does not stay in the future
    desk.look();
    QCOMPARE(desk.sum(35), qint64(0));
    QCOMPARE(desk.all(), qint64(50));
}

void tst_ClockStep::whatWouldBeInTheFutureMovesAnyway()
{
    const StoreFolder folder;
    Desk desk(folder);
    desk.setClock(10 * kDay);
    desk.work(kHour);
    desk.bootSeconds += 4 * kDay;
    desk.setClock(-10 * kDay);
    desk.look();
    QCOMPARE(desk.hours(), (Hours { { 0, 6 } }));
}

void tst_ClockStep::aStepWhileNobodyCountedIsNoticed()
{
    const StoreFolder folder;
    {
        Desk desk(folder);
        desk.setClock(kDay);
        desk.work(kHour);
        desk.ledger.close();
    }
    Desk desk(folder);
    desk.bootSeconds += kHour + 600;
    desk.look();
    QCOMPARE(desk.hours(), (Hours { { 0, 6 } }));
    QCOMPARE(desk.sum(1), qint64(0));
}

void tst_ClockStep::afterABootTheFutureWaitsADay()
{
    const StoreFolder folder;
    {
        Desk desk(folder);
        desk.setClock(40 * kDay);
        desk.work(kHour);
        desk.ledger.close();
    }
    Desk desk(folder, "next boot");
    desk.bootSeconds = 10;
    desk.offset = kBegin + kDay;
    desk.look();
    QCOMPARE(desk.sum(40), qint64(6)); // perhaps this clock is the wrong one
    desk.bootSeconds += kDay;
    desk.look();
    QCOMPARE(desk.sum(40), qint64(0));
    QCOMPARE(desk.sum(2), qint64(6));
    desk.ledger.close();
    QCOMPARE(runSql(folder.file(), "SELECT count(*) FROM recent WHERE boot = 'boot'"), 0LL);
}

void tst_ClockStep::afterABootThePastIsLeftAlone()
{
    const StoreFolder folder;
    {
        Desk desk(folder);
        desk.work(kHour);
        desk.ledger.close();
    }
    Desk desk(folder, "next boot");
    desk.bootSeconds = 10;
    desk.offset = kBegin + kDay;
    desk.look();
    QCOMPARE(desk.hours(), (Hours { { 0, 6 } }));
    desk.ledger.close();
    QCOMPARE(runSql(folder.file(), "SELECT count(*) FROM recent"), 0LL);
}

void tst_ClockStep::aResetForgetsWhatCouldMove()
{
    const StoreFolder folder;
    Desk desk(folder);
    desk.work(kHour);
    QVERIFY(desk.ledger.reset(0, desk.now()));
    desk.setClock(kDay);
    desk.work(kHour);
    QCOMPARE(desk.all(), qint64(6));
    QCOMPARE(desk.sum(0), qint64(0));
}

void tst_ClockStep::theReasonIsTold()
{
    const StoreFolder folder;
    Desk desk(folder);
    desk.work(kHour);
    desk.setClock(kDay);
    desk.look();
    std::vector<velq::Reason> reasons;
    QVERIFY(desk.ledger.reasons(5, reasons));
    QCOMPARE(int(reasons.size()), 1);
    QVERIFY(reasons[0].kind == velq::ReasonKind::ClockStepped);
    QCOMPARE(reasons[0].seconds, kDay);
    QCOMPARE(reasons[0].download, qint64(6));
}

void tst_ClockStep::theReasonOfTheLargestAmountsStaysAtTheLimit()
{
    const StoreFolder folder;
    Desk desk(folder);
    velq::BookingBatch batch;
    batch.bookings = { { kDevice, 0, { INT64_MAX, INT64_MIN, 0, 0 } },
                       { kDevice, 1, { INT64_MAX, INT64_MIN, 0, 0 } } };
    desk.ledger.book(batch, desk.now());
    desk.setClock(kDay);
    desk.look();
    std::vector<velq::Reason> reasons;
    QVERIFY(desk.ledger.reasons(1, reasons));
    QCOMPARE(int(reasons.size()), 1);
    QCOMPARE(reasons[0].download, std::int64_t(INT64_MAX));
    QCOMPARE(reasons[0].upload, std::int64_t(INT64_MIN));
}

QTEST_GUILESS_MAIN(tst_ClockStep)
#include "tst_clockstep.moc"
