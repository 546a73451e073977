#include "store/Period.h"

#include <QDateTime>
#include <QtTest>

#include <climits>
#include <cstdlib>
#include <ctime>
#include <initializer_list>
#include <vector>

using velq::Period;
using velq::PeriodStart;
using velq::Span;

class tst_Period : public QObject
{
    Q_OBJECT
private slots:
    void cleanup();

    void starts_data();
    void starts();
    void weeksBeginOnTheChosenDay_data();
    void weeksBeginOnTheChosenDay();
    void monthsBeginOnTheChosenDay_data();
    void monthsBeginOnTheChosenDay();
    void monthsNeverDrift();
    void onlyRealDaysAreValid_data();
    void onlyRealDaysAreValid();
    void daysAndYearsDoNotMove();
    void everyInstantLiesInItsPeriodAndTheyJoin_data();
    void everyInstantLiesInItsPeriodAndTheyJoin();
    void chosenPeriodsJoin_data();
    void chosenPeriodsJoin();
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

void addRow(const char *name, const char *zone, Period period, const char *now, const char *from,
            const char *to)
{
    QTest::newRow(name) << zone << int(period) << now << from << to;
}

void addDays()
{
    addRow("the first second of a day", "UTC", Period::Day, "2031-03-05T00:00:00",
           "2031-03-05T00:00:00", "2031-03-06T00:00:00");
    addRow("the last second of a day", "UTC", Period::Day, "2031-03-05T23:59:59",
           "2031-03-05T00:00:00", "2031-03-06T00:00:00");
    addRow("half-hour zone", "Asia/Kolkata", Period::Day, "2031-03-05T18:30:00",
           "2031-03-05T18:30:00", "2031-03-06T18:30:00");
    addRow("three-quarter zone", "Asia/Kathmandu", Period::Day, "2031-03-05T18:14:59",
           "2031-03-04T18:15:00", "2031-03-05T18:15:00");
    addRow("a day of 23 hours", "Europe/Berlin", Period::Day, "2030-03-31T12:00:00",
           "2030-03-30T23:00:00", "2030-03-31T22:00:00");
    addRow("a day of 25 hours", "Europe/Berlin", Period::Day, "2030-10-27T12:00:00",
           "2030-10-26T22:00:00", "2030-10-27T23:00:00");
    addRow("midnight is skipped", "America/Sao_Paulo", Period::Day, "2018-11-04T12:00:00",
           "2018-11-04T03:00:00", "2018-11-05T02:00:00");
    addRow("the day before it", "America/Sao_Paulo", Period::Day, "2018-11-04T02:59:59",
           "2018-11-03T03:00:00", "2018-11-04T03:00:00");
    addRow("midnight comes twice", "America/Havana", Period::Day, "2018-11-04T12:00:00",
           "2018-11-04T04:00:00", "2018-11-05T05:00:00");
    addRow("a date that never was", "Pacific/Apia", Period::Day, "2011-12-30T12:00:00",
           "2011-12-30T10:00:00", "2011-12-31T10:00:00");
}

void addLongerPeriods()
{
    addRow("Monday's first second", "UTC", Period::Week, "2031-03-03T00:00:00",
           "2031-03-03T00:00:00", "2031-03-10T00:00:00");
    addRow("Sunday's last second", "UTC", Period::Week, "2031-03-09T23:59:59",
           "2031-03-03T00:00:00", "2031-03-10T00:00:00");
    addRow("a week over the year's end", "UTC", Period::Week, "2031-01-01T12:00:00",
           "2030-12-30T00:00:00", "2031-01-06T00:00:00");
    addRow("a week with a change of clocks", "Europe/Berlin", Period::Week, "2030-03-31T12:00:00",
           "2030-03-24T23:00:00", "2030-03-31T22:00:00");
    addRow("February", "UTC", Period::Month, "2031-02-28T23:59:59", "2031-02-01T00:00:00",
           "2031-03-01T00:00:00");
    addRow("February of a leap year", "UTC", Period::Month, "2032-02-29T23:59:59",
           "2032-02-01T00:00:00", "2032-03-01T00:00:00");
    addRow("the 31st", "UTC", Period::Month, "2031-01-31T10:00:00", "2031-01-01T00:00:00",
           "2031-02-01T00:00:00");
    addRow("December", "America/New_York", Period::Month, "2031-01-01T04:59:59",
           "2030-12-01T05:00:00", "2031-01-01T05:00:00");
    addRow("a month with a change of clocks", "America/New_York", Period::Month,
           "2031-03-20T00:00:00", "2031-03-01T05:00:00", "2031-04-01T04:00:00");
    addRow("a year", "Australia/Lord_Howe", Period::Year, "2031-06-15T00:00:00",
           "2030-12-31T13:00:00", "2031-12-31T13:00:00");
    addRow("the year's first second", "UTC", Period::Year, "2031-01-01T00:00:00",
           "2031-01-01T00:00:00", "2032-01-01T00:00:00");
    addRow("the epoch", "UTC", Period::Year, "1970-01-01T00:00:00", "1970-01-01T00:00:00",
           "1971-01-01T00:00:00");
    addRow("beyond 32 bits", "UTC", Period::Month, "2106-02-07T06:28:16", "2106-02-01T00:00:00",
           "2106-03-01T00:00:00");
}

struct Chosen
{
    const char *name;
    const char *zone;
    int day; // the weekday from Monday, or the day of the month
    const char *now;
    const char *from;
    const char *to;
};

void addRows(std::initializer_list<Chosen> rows)
{
    QTest::addColumn<QString>("zone");
    QTest::addColumn<int>("day");
    QTest::addColumn<QString>("now");
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    for (const Chosen &row : rows)
        QTest::newRow(row.name) << row.zone << row.day << row.now << row.from << row.to;
}

void checkRow(Period period, const PeriodStart &start)
{
    QFETCH(QString, zone);
    QFETCH(QString, now);
    setZone(zone.toLatin1().constData());
    const Span span = velq::periodSpan(period, utc(now), start);
    QTEST(QDateTime::fromSecsSinceEpoch(span.from).toUTC().toString(Qt::ISODate).chopped(1),
          "from");
    QTEST(QDateTime::fromSecsSinceEpoch(span.to).toUTC().toString(Qt::ISODate).chopped(1), "to");
}

//! Every period that touches four years, in order.
std::vector<Span> spansOfFourYears(Period period, const PeriodStart &start)
{
    std::vector<Span> spans { velq::periodSpan(period, utc("2016-01-01T00:00:00"), start) };
    while (spans.back().to < utc("2020-01-01T00:00:00"))
        spans.push_back(velq::periodSpan(period, spans.back().to, start));
    return spans;
}

void checkJoined(const std::vector<Span> &spans, Period period, const PeriodStart &start)
{
    for (std::size_t i = 0; i < spans.size(); ++i) {
        QVERIFY(spans[i].to > spans[i].from);
        QCOMPARE(spans[i].from % velq::kBucketSeconds, std::int64_t(0));
        if (i > 0)
            QCOMPARE(spans[i].from, spans[i - 1].to);
        for (const std::int64_t inside : { (spans[i].from + spans[i].to) / 2, spans[i].to - 1 }) {
            const Span same = velq::periodSpan(period, inside, start);
            QCOMPARE(same.from, spans[i].from);
            QCOMPARE(same.to, spans[i].to);
        }
    }
}

QDate localDate(std::int64_t second)
{
    return QDateTime::fromSecsSinceEpoch(second).date();
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
    addDays();
    addLongerPeriods();
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

void tst_Period::weeksBeginOnTheChosenDay_data()
{
    addRows({
        { "Thursday's first second", "UTC", 3, "2031-03-06T00:00:00", "2031-03-06T00:00:00",
          "2031-03-13T00:00:00" },
        { "the second before Thursday", "UTC", 3, "2031-03-05T23:59:59", "2031-02-27T00:00:00",
          "2031-03-06T00:00:00" },
        { "a Sunday is the last of Monday's week", "UTC", 0, "2031-03-09T12:00:00",
          "2031-03-03T00:00:00", "2031-03-10T00:00:00" },
        { "a Sunday is the first of its own", "UTC", 6, "2031-03-09T12:00:00",
          "2031-03-09T00:00:00", "2031-03-16T00:00:00" },
        { "a Saturday is the last of Sunday's week", "UTC", 6, "2031-03-08T12:00:00",
          "2031-03-02T00:00:00", "2031-03-09T00:00:00" },
        { "over the year's end", "Europe/Berlin", 3, "2031-01-01T12:00:00", "2030-12-25T23:00:00",
          "2031-01-01T23:00:00" },
        { "over a change of clocks", "Europe/Berlin", 5, "2030-04-02T12:00:00",
          "2030-03-29T23:00:00", "2030-04-05T22:00:00" },
        { "from a midnight that is skipped", "America/Sao_Paulo", 6, "2018-11-05T12:00:00",
          "2018-11-04T03:00:00", "2018-11-11T02:00:00" },
        { "from a date that never was", "Pacific/Apia", 4, "2012-01-01T00:00:00",
          "2011-12-30T10:00:00", "2012-01-05T10:00:00" },
        { "up to a date that never was", "Pacific/Apia", 4, "2011-12-30T09:59:59",
          "2011-12-23T10:00:00", "2011-12-30T10:00:00" },
    });
}

void tst_Period::weeksBeginOnTheChosenDay()
{
    QFETCH(int, day);
    checkRow(Period::Week, { day, 1 });
}

void tst_Period::monthsBeginOnTheChosenDay_data()
{
    addRows({
        { "the day itself", "UTC", 15, "2031-03-15T00:00:00", "2031-03-15T00:00:00",
          "2031-04-15T00:00:00" },
        { "the second before it", "UTC", 15, "2031-03-14T23:59:59", "2031-02-15T00:00:00",
          "2031-03-15T00:00:00" },
        { "January from the 31st", "UTC", 31, "2031-02-27T23:59:59", "2031-01-31T00:00:00",
          "2031-02-28T00:00:00" },
        { "February from the 31st", "UTC", 31, "2031-02-28T00:00:00", "2031-02-28T00:00:00",
          "2031-03-31T00:00:00" },
        { "the 30th of March is not the 31st", "UTC", 31, "2031-03-30T23:59:59",
          "2031-02-28T00:00:00", "2031-03-31T00:00:00" },
        { "April from the 31st", "UTC", 31, "2031-04-30T00:00:00", "2031-04-30T00:00:00",
          "2031-05-31T00:00:00" },
        { "a leap year from the 30th", "UTC", 30, "2032-02-29T00:00:00", "2032-02-29T00:00:00",
          "2032-03-30T00:00:00" },
        { "a leap year from the 29th", "UTC", 29, "2032-02-28T12:00:00", "2032-01-29T00:00:00",
          "2032-02-29T00:00:00" },
        { "no leap year at a century", "UTC", 29, "2100-02-28T00:00:00", "2100-02-28T00:00:00",
          "2100-03-29T00:00:00" },
        { "over the year's end", "America/New_York", 31, "2031-01-01T12:00:00",
          "2030-12-31T05:00:00", "2031-01-31T05:00:00" },
        { "over a change of clocks", "Europe/Berlin", 31, "2030-03-31T12:00:00",
          "2030-03-30T23:00:00", "2030-04-29T22:00:00" },
        { "from a date that never was", "Pacific/Apia", 30, "2011-12-30T10:00:00",
          "2011-12-30T10:00:00", "2012-01-29T10:00:00" },
    });
}

void tst_Period::monthsBeginOnTheChosenDay()
{
    QFETCH(int, day);
    checkRow(Period::Month, { 0, day });
}

void tst_Period::monthsNeverDrift()
{
    std::int64_t now = utc("2031-01-31T12:00:00");
    QStringList begins;
    for (int i = 0; i < 13; ++i) {
        const Span month = velq::periodSpan(Period::Month, now, { 0, 31 });
        begins.append(localDate(month.from).toString(QStringLiteral("MM-dd")));
        now = month.to;
    }
    QCOMPARE(begins.join(' '),
             QStringLiteral("01-31 02-28 03-31 04-30 05-31 06-30 07-31 08-31 09-30 10-31 11-30 "
                            "12-31 01-31"));
}

void tst_Period::onlyRealDaysAreValid_data()
{
    QTest::addColumn<int>("weekday");
    QTest::addColumn<int>("dayOfMonth");
    QTest::addColumn<bool>("valid");
    QTest::newRow("the first of both") << 0 << 1 << true;
    QTest::newRow("the last of both") << 6 << 31 << true;
    QTest::newRow("weekday -1") << -1 << 1 << false;
    QTest::newRow("weekday 7") << 7 << 1 << false;
    QTest::newRow("day 0") << 0 << 0 << false;
    QTest::newRow("day 32") << 0 << 32 << false;
    QTest::newRow("the smallest numbers") << INT_MIN << INT_MIN << false;
    QTest::newRow("the largest numbers") << INT_MAX << INT_MAX << false;
}

void tst_Period::onlyRealDaysAreValid()
{
    QFETCH(int, weekday);
    QFETCH(int, dayOfMonth);
    QTEST(velq::isValid({ weekday, dayOfMonth }), "valid");
}

void tst_Period::daysAndYearsDoNotMove()
{
    const qint64 now = utc("2031-03-05T12:00:00");
    for (const Period period : { Period::Day, Period::Year }) {
        QCOMPARE(velq::periodSpan(period, now, { 3, 31 }).from, velq::periodSpan(period, now).from);
        QCOMPARE(velq::periodSpan(period, now, { 3, 31 }).to, velq::periodSpan(period, now).to);
    }
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
    for (const Period period : { Period::Day, Period::Week, Period::Month, Period::Year })
        checkJoined(spansOfFourYears(period, {}), period, {});
}

void tst_Period::chosenPeriodsJoin_data()
{
    everyInstantLiesInItsPeriodAndTheyJoin_data();
}

void tst_Period::chosenPeriodsJoin()
{
    QFETCH(QString, zone);
    setZone(zone.toLatin1().constData());
    for (int weekday = 0; weekday < 7; ++weekday) {
        const PeriodStart start { weekday, 1 };
        const auto weeks = spansOfFourYears(Period::Week, start);
        checkJoined(weeks, Period::Week, start);
        for (const Span &week : weeks)
            QCOMPARE(localDate(week.from).dayOfWeek(), weekday + 1);
    }
    for (int day = 1; day <= 31; ++day) {
        const PeriodStart start { 0, day };
        const auto months = spansOfFourYears(Period::Month, start);
        checkJoined(months, Period::Month, start);
        const QDate first = localDate(months.front().from);
        for (std::size_t i = 0; i < months.size(); ++i) {
            const QDate date = localDate(months[i].from);
            QCOMPARE(date.month(), first.addDays(1 - first.day()).addMonths(int(i)).month());
            QCOMPARE(date.day(), qMin(day, date.daysInMonth()));
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
