#include "calendar/Period.h"

#include <QDateTime>
#include <QtTest>

#include <climits>
#include <initializer_list>
#include <limits>

using velq::Period;
using velq::PeriodStart;
using velq::Span;
using velq::TimeZone;

class tst_Calendar : public QObject
{
    Q_OBJECT
private slots:
    void datesHaveNumbers_data();
    void datesHaveNumbers();
    void numbersAndDatesAgreeForEightCenturies();
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
    void periodsOfDaysTile();
    void theEndsOfTimeAreSafe();
};

namespace {

TimeZone zoneNamed(const QString &name)
{
    const auto zone = TimeZone::named(name.toStdString());
    if (!zone)
        qFatal("no zone %s", qPrintable(name));
    return *zone;
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
    const Span span = velq::periodSpan(period, utc(now), zoneNamed(zone), start);
    QTEST(QDateTime::fromSecsSinceEpoch(span.from).toUTC().toString(Qt::ISODate).chopped(1),
          "from");
    QTEST(QDateTime::fromSecsSinceEpoch(span.to).toUTC().toString(Qt::ISODate).chopped(1), "to");
}

QDate dateOf(velq::Day day)
{
    return QDate(1970, 1, 1).addDays(day);
}

} // namespace

void tst_Calendar::datesHaveNumbers_data()
{
    QTest::addColumn<int>("year");
    QTest::addColumn<int>("month");
    QTest::addColumn<int>("day");
    QTest::addColumn<int>("number");
    QTest::newRow("the epoch") << 1970 << 1 << 1 << 0;
    QTest::newRow("the day before") << 1969 << 12 << 31 << -1;
    QTest::newRow("a leap day") << 2000 << 2 << 29 << 11016;
    QTest::newRow("after a century's February") << 2100 << 3 << 1 << 47541;
}

void tst_Calendar::datesHaveNumbers()
{
    QFETCH(int, year);
    QFETCH(int, month);
    QFETCH(int, day);
    QFETCH(int, number);
    QCOMPARE(velq::dayNumber({ year, month, day }), number);
    QCOMPARE(velq::dateOf(number).year, year);
    QCOMPARE(velq::dateOf(number).month, month);
    QCOMPARE(velq::dateOf(number).day, day);
}

void tst_Calendar::numbersAndDatesAgreeForEightCenturies()
{
    const QDate last(2400, 12, 31);
    for (QDate date(1600, 1, 1); date <= last; date = date.addDays(1)) {
        const auto number = velq::Day(QDate(1970, 1, 1).daysTo(date));
        QCOMPARE(velq::dayNumber({ date.year(), date.month(), date.day() }), number);
        const velq::Date same = velq::dateOf(number);
        QCOMPARE(QDate(same.year, same.month, same.day), date);
    }
}

void tst_Calendar::starts_data()
{
    QTest::addColumn<QString>("zone");
    QTest::addColumn<int>("period");
    QTest::addColumn<QString>("now");
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    addDays();
    addLongerPeriods();
}

void tst_Calendar::starts()
{
    QFETCH(QString, zone);
    QFETCH(int, period);
    QFETCH(QString, now);
    QFETCH(QString, from);
    QFETCH(QString, to);
    const Span span = velq::periodSpan(Period(period), utc(now), zoneNamed(zone));
    QCOMPARE(qint64(span.from), utc(from));
    QCOMPARE(qint64(span.to), utc(to));
}

void tst_Calendar::weeksBeginOnTheChosenDay_data()
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

void tst_Calendar::weeksBeginOnTheChosenDay()
{
    QFETCH(int, day);
    checkRow(Period::Week, { day, 1 });
}

void tst_Calendar::monthsBeginOnTheChosenDay_data()
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

void tst_Calendar::monthsBeginOnTheChosenDay()
{
    QFETCH(int, day);
    checkRow(Period::Month, { 0, day });
}

void tst_Calendar::monthsNeverDrift()
{
    velq::Day today = velq::dayNumber({ 2031, 1, 31 });
    QStringList begins;
    for (int i = 0; i < 13; ++i) {
        const velq::DaySpan month = velq::periodDays(Period::Month, today, { 0, 31 });
        begins.append(dateOf(month.from).toString(QStringLiteral("MM-dd")));
        today = month.to;
    }
    QCOMPARE(begins.join(' '),
             QStringLiteral("01-31 02-28 03-31 04-30 05-31 06-30 07-31 08-31 09-30 10-31 11-30 "
                            "12-31 01-31"));
}

void tst_Calendar::onlyRealDaysAreValid_data()
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

void tst_Calendar::onlyRealDaysAreValid()
{
    QFETCH(int, weekday);
    QFETCH(int, dayOfMonth);
    QTEST(velq::isValid({ weekday, dayOfMonth }), "valid");
}

void tst_Calendar::daysAndYearsDoNotMove()
{
    const velq::Day today = velq::dayNumber({ 2031, 3, 5 });
    for (const Period period : { Period::Day, Period::Year }) {
        const velq::DaySpan usual = velq::periodDays(period, today);
        QCOMPARE(velq::periodDays(period, today, { 3, 31 }).from, usual.from);
        QCOMPARE(velq::periodDays(period, today, { 3, 31 }).to, usual.to);
    }
}

// Each day of 1600 to 2400 is in the period that begins with the last begin up to it.
void tst_Calendar::periodsOfDaysTile()
{
    const velq::Day first = velq::dayNumber({ 1600, 1, 1 });
    const velq::Day last = velq::dayNumber({ 2400, 12, 31 });
    qint64 periods = 0;
    const auto check = [&](Period period, const PeriodStart &start, auto begins) {
        velq::DaySpan current = velq::periodDays(period, first, start);
        for (velq::Day day = first; day <= last; ++day) {
            if (day == current.to) {
                current.from = day;
                ++periods;
            }
            const velq::DaySpan span = velq::periodDays(period, day, start);
            QCOMPARE(span.from, current.from);
            if (day == current.from) {
                QVERIFY(span.to > day);
                current.to = span.to;
            }
            QCOMPARE(span.to, current.to);
            QCOMPARE(day == span.from || day == first, begins(dateOf(day)) || day == first);
        }
    };
    for (int weekday = 0; weekday < 7; ++weekday)
        check(Period::Week, { weekday, 1 },
              [weekday](const QDate &date) { return date.dayOfWeek() == weekday + 1; });
    for (int day = 1; day <= 31; ++day)
        check(Period::Month, { 0, day },
              [day](const QDate &date) { return date.day() == qMin(day, date.daysInMonth()); });
    check(Period::Day, {}, [](const QDate &) { return true; });
    check(Period::Year, {}, [](const QDate &date) { return date.dayOfYear() == 1; });
    qInfo("%lld periods of days", static_cast<long long>(periods));
}

void tst_Calendar::theEndsOfTimeAreSafe()
{
    using Limits = std::numeric_limits<std::int64_t>;
    for (const char *name : { "UTC", "Europe/Berlin", "Asia/Kathmandu" }) {
        const TimeZone zone = zoneNamed(QLatin1String(name));
        for (const std::int64_t now : { Limits::min(), Limits::max() })
            for (const Period period : { Period::Day, Period::Week, Period::Month, Period::Year }) {
                const Span span = velq::periodSpan(period, now, zone, { 6, 31 });
                QVERIFY(span.from < span.to);
            }
    }
}

QTEST_GUILESS_MAIN(tst_Calendar)
#include "tst_calendar.moc"
