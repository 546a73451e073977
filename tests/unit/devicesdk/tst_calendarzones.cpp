// Periods of 1970 to 2100 in many zones, beside the C library's local time. The two agree
// everywhere, also after 2037, where only a rule is left of a zone, and where winter time is the
// exception.

#include "calendar/Period.h"

#include <QtTest>

#include <algorithm>
#include <map>
#include <random>
#include <utility>
#include <vector>

#include "CLibraryZone.h"

using velq::Day;
using velq::DaySpan;
using velq::Period;
using velq::PeriodStart;
using velq::Span;
using velq::TimeZone;

class tst_CalendarZones : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanupTestCase();

    void daysBeginWhereTheCLibrarySays_data();
    void daysBeginWhereTheCLibrarySays();
    void periodsTileTimeForEveryStart_data();
    void periodsTileTimeForEveryStart();
    void eachInstantIsInOnePeriod_data();
    void eachInstantIsInOnePeriod();
    void rulesAgreeWithTheCLibrary_data();
    void rulesAgreeWithTheCLibrary();

private:
    std::mt19937_64 m_random;
    qint64 m_zones = 0;
    qint64 m_days = 0;
    qint64 m_periods = 0;
    qint64 m_instants = 0;
};

namespace {

// The odd ones: offsets of quarter and half hours or with seconds, half an hour or two hours of
// summer time, winter time as the exception, rules by the moon, midnights skipped and doubled, days
// left out.
const char *const kZones[] = {
    "Africa/Cairo",        "Africa/Casablanca", "Africa/Monrovia",
    "America/Asuncion",    "America/Caracas",   "America/Havana",
    "America/New_York",    "America/Sao_Paulo", "America/Scoresbysund",
    "America/St_Johns",    "Antarctica/Casey",  "Antarctica/Troll",
    "Asia/Amman",          "Asia/Beirut",       "Asia/Gaza",
    "Asia/Kathmandu",      "Asia/Pyongyang",    "Asia/Tehran",
    "Australia/Lord_Howe", "Europe/Berlin",     "Europe/Dublin",
    "Pacific/Apia",        "Pacific/Chatham",   "Pacific/Fakaofo",
    "Pacific/Kiritimati",  "Pacific/Kwajalein", "UTC",
};

const char *const kRules[] = {
    "CET-1CEST,M3.5.0,M10.5.0/3",
    "<+1030>-10:30<+11>-11,M10.1.0,M4.1.0", // south, half an hour
    "IST-1GMT0,M10.5.0,M3.5.0/1", // winter time as the exception
    "<-02>2<-01>,M3.5.0/-1,M10.5.0/0", // the evening before
    "EET-2EEST,M3.4.4/50,M10.4.4/50", // two days after
    "NST3:30NDT,M4.1.0/0:01,M10.5.0/0:01", // back over midnight
    "AAA0BBB,M4.1.0/23:30,M10.1.0/0:30", // forward and back over midnight
    "EST5EDT4,J60,J300/1",
    "EST5EDT4,59/0,299",
    "<+0545>-5:45",
    "UTC0",
};

const velq::Day kFirst = velq::dayNumber({ 1970, 1, 1 });
const velq::Day kLast = velq::dayNumber({ 2101, 1, 1 }); // not checked itself

constexpr int kMargin = 400; // days at both ends, so that every period is inside

struct Kind
{
    Period period;
    PeriodStart start;
};

std::vector<Kind> everyKind()
{
    std::vector<Kind> kinds { { Period::Day, {} }, { Period::Year, {} } };
    for (int weekday = 0; weekday < 7; ++weekday)
        kinds.push_back({ Period::Week, { weekday, 1 } });
    for (int day = 1; day <= 31; ++day)
        kinds.push_back({ Period::Month, { 0, day } });
    return kinds;
}

void addZones()
{
    QTest::addColumn<QString>("zone");
    for (const char *zone : kZones)
        QTest::newRow(zone) << zone;
}

struct Oracle
{
    std::vector<std::int64_t> begins; // of every day from kFirst to kLast
    std::vector<std::int64_t> changes; // instants at which the clocks change
};

//! What the C library says to \a value in TZ; asked only once, because that takes its time.
const Oracle &oracle(const QByteArray &value)
{
    static std::map<QByteArray, Oracle> known;
    const auto found = known.find(value);
    if (found != known.end())
        return found->second;
    constexpr std::int64_t kTwoDays = 2 * 86400;
    CLibraryZone zone(value.constData(), kFirst * std::int64_t(86400) - kTwoDays,
                      kLast * std::int64_t(86400) + kTwoDays);
    Oracle oracle { {}, zone.changes() };
    for (Day day = kFirst; day <= kLast; ++day)
        oracle.begins.push_back(zone.firstInstant(day));
    return known.emplace(value, std::move(oracle)).first->second;
}

//! The last day of \a begins that has begun; of those that begin at once the last one, which is
//! real.
Day dayAt(const std::vector<std::int64_t> &begins, std::int64_t instant)
{
    return kFirst + Day(std::upper_bound(begins.begin(), begins.end(), instant) - begins.begin())
        - 1;
}

void compareDays(const TimeZone &zone, const std::vector<std::int64_t> &begins)
{
    for (Day day = kFirst; day < kLast; ++day) {
        const std::int64_t from = begins[std::size_t(day - kFirst)];
        const std::int64_t to = begins[std::size_t(day - kFirst) + 1];
        if (zone.firstInstant(day) != from)
            QFAIL(qPrintable(QStringLiteral("day %1 begins at %2 instead of %3")
                                 .arg(day)
                                 .arg(zone.firstInstant(day))
                                 .arg(from)));
        if (from == to) // a date that never was
            continue;
        QCOMPARE(zone.dayOf(from), day);
        QCOMPARE(zone.dayOf(to - 1), day);
    }
}

} // namespace

void tst_CalendarZones::initTestCase()
{
    bool given = false;
    const quint64 seed = qEnvironmentVariable("NETINFO_SEED").toULongLong(&given);
    const quint64 used = given ? seed : std::random_device {}();
    qInfo("NETINFO_SEED=%llu", static_cast<unsigned long long>(used));
    m_random.seed(used);
}

void tst_CalendarZones::cleanupTestCase()
{
    qInfo("%lld zones and rules, %lld days, %lld periods, %lld instants in %zu kinds of period",
          static_cast<long long>(m_zones), static_cast<long long>(m_days),
          static_cast<long long>(m_periods), static_cast<long long>(m_instants),
          everyKind().size());
    CLibraryZone::use("UTC");
}

void tst_CalendarZones::daysBeginWhereTheCLibrarySays_data()
{
    addZones();
}

void tst_CalendarZones::daysBeginWhereTheCLibrarySays()
{
    QFETCH(QString, zone);
    const auto ours = TimeZone::named(zone.toStdString());
    QVERIFY(ours);
    QCOMPARE(ours->name(), zone.toStdString());
    compareDays(*ours, oracle(zone.toLatin1()).begins);
    ++m_zones;
    m_days += kLast - kFirst;
}

void tst_CalendarZones::periodsTileTimeForEveryStart_data()
{
    addZones();
}

void tst_CalendarZones::periodsTileTimeForEveryStart()
{
    QFETCH(QString, zone);
    const auto ours = TimeZone::named(zone.toStdString());
    QVERIFY(ours);
    const QByteArray name = zone.toLatin1();
    const std::vector<std::int64_t> &begins = oracle(name).begins;
    const std::int64_t last = begins[std::size_t(kLast - kFirst) - kMargin];
    for (const Kind &kind : everyKind()) {
        Span span = velq::periodSpan(kind.period, begins[kMargin], *ours, kind.start);
        while (span.to < last) {
            const Day day = dayAt(begins, span.to);
            const Span next = velq::periodSpan(kind.period, span.to, *ours, kind.start);
            QCOMPARE(next.from, span.to); // neither gap nor overlap
            QVERIFY(next.to > next.from);
            const DaySpan days = velq::periodDays(kind.period, day, kind.start);
            QCOMPARE(next.from, begins[std::size_t(days.from - kFirst)]);
            QCOMPARE(next.to, begins[std::size_t(days.to - kFirst)]);
            span = next;
            ++m_periods;
        }
    }
}

void tst_CalendarZones::eachInstantIsInOnePeriod_data()
{
    addZones();
}

void tst_CalendarZones::eachInstantIsInOnePeriod()
{
    QFETCH(QString, zone);
    const auto ours = TimeZone::named(zone.toStdString());
    QVERIFY(ours);
    const QByteArray name = zone.toLatin1();
    const Oracle &theirs = oracle(name);
    std::vector<std::int64_t> instants;
    for (const std::int64_t change : theirs.changes) // also both sides of the midnights nearby
        for (const std::int64_t away :
             { -86400, -3601, -1800, -60, -1, 0, 1, 59, 1800, 3600, 86399 })
            instants.push_back(change + away);
    const std::vector<std::int64_t> &begins = theirs.begins;
    std::uniform_int_distribution<std::int64_t> anywhere(begins[kMargin],
                                                         begins[begins.size() - kMargin]);
    for (int i = 0; i < 300; ++i)
        instants.push_back(anywhere(m_random));
    for (const std::int64_t instant : instants) {
        const Day day = dayAt(begins, instant);
        if (day < kFirst + kMargin || day > kLast - kMargin)
            continue;
        QCOMPARE(ours->dayOf(instant), day);
        for (const Kind &kind : everyKind()) {
            const Span span = velq::periodSpan(kind.period, instant, *ours, kind.start);
            QVERIFY(span.contains(instant));
            const DaySpan days = velq::periodDays(kind.period, day, kind.start);
            QCOMPARE(span.from, begins[std::size_t(days.from - kFirst)]);
            QCOMPARE(span.to, begins[std::size_t(days.to - kFirst)]);
        }
        ++m_instants;
    }
}

void tst_CalendarZones::rulesAgreeWithTheCLibrary_data()
{
    QTest::addColumn<QByteArray>("rule");
    for (const char *rule : kRules)
        QTest::newRow(rule) << QByteArray(rule);
}

void tst_CalendarZones::rulesAgreeWithTheCLibrary()
{
    QFETCH(QByteArray, rule);
    const auto ours = TimeZone::ofRule(rule.toStdString());
    QVERIFY(ours);
    QCOMPARE(ours->name(), rule.toStdString());
    compareDays(*ours, oracle(rule).begins);
    ++m_zones;
    m_days += kLast - kFirst;
}

QTEST_GUILESS_MAIN(tst_CalendarZones)
#include "tst_calendarzones.moc"
