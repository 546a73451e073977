#include "store/Period.h"

#include <QDateTime>
#include <QtTest>

#include <cstdlib>
#include <ctime>

using velq::Period;
using velq::Span;

class tst_Period : public QObject
{
    Q_OBJECT
private slots:
    void cleanup();

    void starts_data();
    void starts();
    void everyInstantLiesInItsPeriodAndTheyJoin_data();
    void everyInstantLiesInItsPeriodAndTheyJoin();
    void aChangedZoneIsFollowed();
    void bucketStarts_data();
    void bucketStarts();
};

namespace {

void setZone(const char *zone)
{
    qputenv("TZ", zone);
    tzset();
}

qint64 utc(const QString &text)
{
    return QDateTime::fromString(text + QLatin1Char('Z'), Qt::ISODate).toSecsSinceEpoch();
}

} // namespace

void tst_Period::cleanup()
{
    setZone("UTC");
}

void tst_Period::starts_data()
{
    QTest::addColumn<QString>("zone");
    QTest::addColumn<int>("period");
    QTest::addColumn<QString>("now");
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    const auto row
        = [](const char *name, const char *zone, Period period, const char *now, const char *from,
             const char *to) { QTest::newRow(name) << zone << int(period) << now << from << to; };
    row("the first second of a day", "UTC", Period::Day, "2031-03-05T00:00:00",
        "2031-03-05T00:00:00", "2031-03-06T00:00:00");
    row("the last second of a day", "UTC", Period::Day, "2031-03-05T23:59:59",
        "2031-03-05T00:00:00", "2031-03-06T00:00:00");
    row("half-hour zone", "Asia/Kolkata", Period::Day, "2031-03-05T18:30:00", "2031-03-05T18:30:00",
        "2031-03-06T18:30:00");
    row("three-quarter zone", "Asia/Kathmandu", Period::Day, "2031-03-05T18:14:59",
        "2031-03-04T18:15:00", "2031-03-05T18:15:00");
    row("a day of 23 hours", "Europe/Berlin", Period::Day, "2030-03-31T12:00:00",
        "2030-03-30T23:00:00", "2030-03-31T22:00:00");
    row("a day of 25 hours", "Europe/Berlin", Period::Day, "2030-10-27T12:00:00",
        "2030-10-26T22:00:00", "2030-10-27T23:00:00");
    row("midnight is skipped", "America/Sao_Paulo", Period::Day, "2018-11-04T12:00:00",
        "2018-11-04T03:00:00", "2018-11-05T02:00:00");
    row("the day before it", "America/Sao_Paulo", Period::Day, "2018-11-04T02:59:59",
        "2018-11-03T03:00:00", "2018-11-04T03:00:00");
    row("midnight comes twice", "America/Havana", Period::Day, "2018-11-04T12:00:00",
        "2018-11-04T04:00:00", "2018-11-05T05:00:00");
    row("a date that never was", "Pacific/Apia", Period::Day, "2011-12-30T12:00:00",
        "2011-12-30T10:00:00", "2011-12-31T10:00:00");
    row("Monday's first second", "UTC", Period::Week, "2031-03-03T00:00:00", "2031-03-03T00:00:00",
        "2031-03-10T00:00:00");
    row("Sunday's last second", "UTC", Period::Week, "2031-03-09T23:59:59", "2031-03-03T00:00:00",
        "2031-03-10T00:00:00");
    row("a week over the year's end", "UTC", Period::Week, "2031-01-01T12:00:00",
        "2030-12-30T00:00:00", "2031-01-06T00:00:00");
    row("a week with a change of clocks", "Europe/Berlin", Period::Week, "2030-03-31T12:00:00",
        "2030-03-24T23:00:00", "2030-03-31T22:00:00");
    row("February", "UTC", Period::Month, "2031-02-28T23:59:59", "2031-02-01T00:00:00",
        "2031-03-01T00:00:00");
    row("February of a leap year", "UTC", Period::Month, "2032-02-29T23:59:59",
        "2032-02-01T00:00:00", "2032-03-01T00:00:00");
    row("the 31st", "UTC", Period::Month, "2031-01-31T10:00:00", "2031-01-01T00:00:00",
        "2031-02-01T00:00:00");
    row("December", "America/New_York", Period::Month, "2031-01-01T04:59:59", "2030-12-01T05:00:00",
        "2031-01-01T05:00:00");
    row("a month with a change of clocks", "America/New_York", Period::Month, "2031-03-20T00:00:00",
        "2031-03-01T05:00:00", "2031-04-01T04:00:00");
    row("a year", "Australia/Lord_Howe", Period::Year, "2031-06-15T00:00:00", "2030-12-31T13:00:00",
        "2031-12-31T13:00:00");
    row("the year's first second", "UTC", Period::Year, "2031-01-01T00:00:00",
        "2031-01-01T00:00:00", "2032-01-01T00:00:00");
    row("the epoch", "UTC", Period::Year, "1970-01-01T00:00:00", "1970-01-01T00:00:00",
        "1971-01-01T00:00:00");
    row("beyond 32 bits", "UTC", Period::Month, "2106-02-07T06:28:16", "2106-02-01T00:00:00",
        "2106-03-01T00:00:00");
}

void tst_Period::starts()
{
    QFETCH(QString, zone);
    QFETCH(int, period);
    QFETCH(QString, now);
    QFETCH(QString, from);
    QFETCH(QString, to);
    setZone(zone.toLatin1().constData());
    const Span span = velq::periodSpan(Period(period), utc(now));
    QCOMPARE(qint64(span.from), utc(from));
    QCOMPARE(qint64(span.to), utc(to));
}

void tst_Period::everyInstantLiesInItsPeriodAndTheyJoin_data()
{
    QTest::addColumn<QString>("zone");
    for (const char *zone :
         { "UTC", "Europe/Berlin", "America/Sao_Paulo", "America/Havana", "Asia/Kathmandu",
           "Australia/Lord_Howe", "Pacific/Chatham", "Asia/Beirut", "Africa/Casablanca" })
        QTest::newRow(zone) << zone;
}

void tst_Period::everyInstantLiesInItsPeriodAndTheyJoin()
{
    QFETCH(QString, zone);
    setZone(zone.toLatin1().constData());
    const qint64 begin = utc("2016-01-01T00:00:00");
    const qint64 end = utc("2020-01-01T00:00:00");
    for (const Period period : { Period::Day, Period::Week, Period::Month, Period::Year }) {
        Span span = velq::periodSpan(period, begin);
        while (span.to < end) {
            QVERIFY(span.to > span.from);
            QCOMPARE(span.from % velq::kBucketSeconds, std::int64_t(0));
            const Span last = velq::periodSpan(period, span.to - 1);
            QCOMPARE(last.from, span.from);
            QCOMPARE(last.to, span.to);
            const Span next = velq::periodSpan(period, span.to);
            QCOMPARE(next.from, span.to);
            span = next;
        }
    }
}

void tst_Period::aChangedZoneIsFollowed()
{
    const qint64 now = utc("2031-03-05T20:00:00"); // already the 6th in Tokyo
    setZone("UTC");
    QCOMPARE(qint64(velq::periodSpan(Period::Day, now).from), utc("2031-03-05T00:00:00"));
    qputenv("TZ", "Asia/Tokyo"); // the traveller's; nobody calls tzset() for us
    QCOMPARE(qint64(velq::periodSpan(Period::Day, now).from), utc("2031-03-05T15:00:00"));
}

void tst_Period::bucketStarts_data()
{
    QTest::addColumn<qint64>("second");
    QTest::addColumn<qint64>("start");
    QTest::newRow("on the border") << qint64(1800) << qint64(1800);
    QTest::newRow("the last second") << qint64(2699) << qint64(1800);
    QTest::newRow("the epoch") << qint64(0) << qint64(0);
    QTest::newRow("before the epoch") << qint64(-1) << qint64(-900);
    QTest::newRow("a border before the epoch") << qint64(-900) << qint64(-900);
}

void tst_Period::bucketStarts()
{
    QFETCH(qint64, second);
    QTEST(qint64(velq::bucketStart(second)), "start");
}

QTEST_GUILESS_MAIN(tst_Period)
#include "tst_period.moc"
