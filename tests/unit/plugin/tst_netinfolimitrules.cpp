#include "NetInfoLimitRules.h"

#include <QtTest>

#include <cmath>
#include <limits>

using namespace NetInfoRules;

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr quint64 kMostBytes = std::numeric_limits<quint64>::max();
constexpr double kTwoToThe64 = 18446744073709551616.0;

LimitWarning warning(int percentage, int remainder)
{
    LimitWarning result;
    result.percentage = percentage;
    result.remainder = remainder;
    return result;
}

//! The state as the data meter finds it.
LimitState dataState(unsigned int limit, long double used, const LimitWarning &warn)
{
    return limitState(limit - used, dataPercentageReached(used, limit, warn), warn);
}

//! The state as the time meter finds it: seconds of a limit in hours.
LimitState timeState(unsigned int hours, long double seconds, const LimitWarning &warn)
{
    return limitState(hours * 3600.0L - seconds, timePercentageReached(seconds, hours, warn), warn);
}

} // namespace

class tst_NetInfoLimitRules : public QObject
{
    Q_OBJECT
private slots:
    void dataStates_data();
    void dataStates();
    void timeStates_data();
    void timeStates();
    void dataPercentage_data();
    void dataPercentage();
    void everyWholePercentageIsExact();
    void timePercentage_data();
    void timePercentage();
    void limitStates_data();
    void limitStates();
    void everyStateHasItsColour();
    void megabytes_data();
    void megabytes();
    void bytes_data();
    void bytes();
    void everyByteCountSurvivesMegabytes();
    void wholeNumber_data();
    void wholeNumber();
    void hoursAndMinutes_data();
    void hoursAndMinutes();
    void isNewPeriod_data();
    void isNewPeriod();
    void meterFill_data();
    void meterFill();
};

void tst_NetInfoLimitRules::dataStates_data()
{
    QTest::addColumn<unsigned int>("limit");
    QTest::addColumn<double>("used");
    QTest::addColumn<int>("percentage");
    QTest::addColumn<int>("remainder");
    QTest::addColumn<int>("state");
    const auto row = [](const char *name, unsigned int limit, double used, int percentage,
                        int remainder, int state) {
        QTest::newRow(name) << limit << used << percentage << remainder << state;
    };
    row("exactly 80 % used is near", 100, 80, 80, 0, 1);
    row("exactly 80 % of a large limit is near", 1000, 800, 80, 0, 1);
    row("just below 80 % is fine", 100, std::nextafter(80.0, 0.0), 80, 0, 0);
    row("just above 80 % is near", 100, std::nextafter(80.0, 100.0), 80, 0, 1);
    row("exactly the remainder left is near", 100, 80, 0, 20, 1);
    row("just before the remainder is fine", 100, 79.99, 0, 20, 0);
    row("one MB left of a remainder of one is near", 100, 99, 0, 1, 1);
    row("a remainder switches the percentage off", 100, 99, 1, 1, 1);
    row("with both set the percentage alone is fine", 100, 98, 1, 1, 0);
    row("no warning set is fine up to the limit", 100, 99.99, 0, 0, 0);
    row("used equal to the limit is reached", 100, 100, 80, 0, 2);
    row("used equal to the limit is reached with a remainder", 100, 100, 0, 20, 2);
    row("used equal to the limit is reached without a warning", 100, 100, 0, 0, 2);
    row("just below the limit is near", 100, std::nextafter(100.0, 0.0), 80, 0, 1);
    row("more than the limit is reached", 100, 1e9, 80, 0, 2);
    row("100 % is never near", 100, std::nextafter(100.0, 0.0), 100, 0, 0);
    row("a limit of 0 is reached by nothing", 0, 0, 80, 0, 2);
    row("a limit of 0 is reached by something", 0, 5, 80, 0, 2);
    row("a limit of 0 is reached without a warning", 0, 0, 0, 0, 2);
    row("80 % of 999999 MB", 999999, 799999.25, 80, 0, 1);
    row("just below 80 % of 999999 MB", 999999, 799999.1875, 80, 0, 0);
    row("999999 MB used", 999999, 999999, 80, 0, 2);
    row("the largest limit there is", 4294967295u, 4294967294.0, 0, 1, 1);
    row("a remainder above the limit is near at once", 100, 0, 0, 101, 1);
    row("nothing used", 100, 0, 80, 0, 0);
}

void tst_NetInfoLimitRules::dataStates()
{
    QFETCH(unsigned int, limit);
    QFETCH(double, used);
    QFETCH(int, percentage);
    QFETCH(int, remainder);
    QTEST(int(dataState(limit, used, warning(percentage, remainder))), "state");
}

void tst_NetInfoLimitRules::timeStates_data()
{
    QTest::addColumn<unsigned int>("hours");
    QTest::addColumn<double>("seconds");
    QTest::addColumn<int>("percentage");
    QTest::addColumn<int>("remainder");
    QTest::addColumn<int>("state");
    const auto row = [](const char *name, unsigned int hours, double seconds, int percentage,
                        int remainder, int state) {
        QTest::newRow(name) << hours << seconds << percentage << remainder << state;
    };
    row("half an hour left is near", 100, 358200, 0, 1800, 1);
    row("one second more left is fine", 100, 358199, 0, 1800, 0);
    row("the last second is near", 100, 359999, 0, 1800, 1);
    row("the limit is reached", 100, 360000, 0, 1800, 2);
    row("the limit is reached without a warning", 100, 360000, 0, 0, 2);
    row("no warning is fine up to the last second", 100, 359999, 0, 0, 0);
    row("the percentage takes seconds of hours: 80 of 100", 100, 80, 80, 0, 1);
    row("the percentage takes seconds of hours: 79 of 100", 100, 79, 80, 0, 0);
    row("30 hours of a day", 24, 30 * 3600, 0, 1800, 2);
    row("30 hours of 31", 31, 30 * 3600, 0, 1800, 0);
    row("a limit of 0 is reached by nothing", 0, 0, 0, 1800, 2);
    row("the time of -1 seconds, unsigned", 100, kTwoToThe64, 0, 1800, 2);
    row("999999 hours", 999999, 999999.0 * 3600 - 1800, 0, 1800, 1);
    row("the largest limit there is", 4294967295u, 4294967295.0 * 3600 - 1, 0, 1, 1);
}

void tst_NetInfoLimitRules::timeStates()
{
    QFETCH(unsigned int, hours);
    QFETCH(double, seconds);
    QFETCH(int, percentage);
    QFETCH(int, remainder);
    QTEST(int(timeState(hours, seconds, warning(percentage, remainder))), "state");
}

void tst_NetInfoLimitRules::dataPercentage_data()
{
    QTest::addColumn<double>("used");
    QTest::addColumn<unsigned int>("limit");
    QTest::addColumn<int>("percentage");
    QTest::addColumn<int>("remainder");
    QTest::addColumn<bool>("reached");
    const auto row = [](const char *name, double used, unsigned int limit, int percentage,
                        int remainder, bool reached) {
        QTest::newRow(name) << used << limit << percentage << remainder << reached;
    };
    row("exactly", 80, 100, 80, 0, true);
    row("just below", 79.999, 100, 80, 0, false);
    row("exactly 1 %", 1, 100, 1, 0, true);
    row("exactly 29 %, which no binary fraction is", 29, 100, 29, 0, true);
    row("exactly 57 % of a limit of 300", 171, 300, 57, 0, true);
    row("exactly 100 %", 100, 100, 100, 0, true);
    row("more than 100 % is a percentage", 149, 100, 150, 0, false);
    row("more than 100 % is reached", 150, 100, 150, 0, true);
    row("0 % is off", 100, 100, 0, 0, false);
    row("a remainder switches it off", 100, 100, 80, 1, false);
    row("a negative remainder, too", 100, 100, 80, -1, false);
    row("a negative percentage is always reached", 0, 100, -1, 0, true);
    row("a limit of 0 is never reached", 1, 0, 80, 0, false);
    row("a limit of 0 with a negative percentage, neither", 1, 0, -1, 0, false);
    row("no number is never enough", kNaN, 100, 80, 0, false);
    row("the infinite is enough", kInfinity, 100, 80, 0, true);
    row("80 % of 999999 MB", 799999.25, 999999, 80, 0, true);
    row("just below 80 % of 999999 MB", 799999.1875, 999999, 80, 0, false);
}

void tst_NetInfoLimitRules::dataPercentage()
{
    QFETCH(double, used);
    QFETCH(unsigned int, limit);
    QFETCH(int, percentage);
    QFETCH(int, remainder);
    QTEST(dataPercentageReached(used, limit, warning(percentage, remainder)), "reached");
}

void tst_NetInfoLimitRules::everyWholePercentageIsExact()
{
    for (int percentage = 1; percentage <= 200; ++percentage) {
        const LimitWarning warn = warning(percentage, 0);
        for (const unsigned int limit : { 100u, 300u, 1000u, 999900u }) {
            const long double used = limit / 100 * static_cast<unsigned int>(percentage);
            QVERIFY(dataPercentageReached(used, limit, warn));
            QVERIFY(!dataPercentageReached(used - 1.0L / 1048576, limit, warn)); // a byte less
        }
    }
}

void tst_NetInfoLimitRules::timePercentage_data()
{
    QTest::addColumn<double>("used");
    QTest::addColumn<quint64>("limit");
    QTest::addColumn<int>("percentage");
    QTest::addColumn<int>("remainder");
    QTest::addColumn<bool>("reached");
    const auto row = [](const char *name, double used, quint64 limit, int percentage, int remainder,
                        bool reached) {
        QTest::newRow(name) << used << limit << percentage << remainder << reached;
    };
    row("exactly", 80, 100, 80, 0, true);
    row("just below", 79, 100, 80, 0, false);
    row("exactly 29 %", 29, 100, 29, 0, true);
    row("0 % is off", 100, 100, 0, 0, false);
    row("a remainder switches it off", 100, 100, 80, 1, false);
    row("a negative remainder, too", 100, 100, 80, -1, false);
    row("of a limit of 0 any use is enough", 1, 0, 80, 0, true);
    row("of a limit of 0 the least use is enough", 1e-300, 0, 80, 0, true);
    row("of a limit of 0 none is not enough", 0, 0, 80, 0, false);
    row("of a limit of 0 less than none is not enough", -1, 0, 80, 0, false);
    row("of a limit of 0 none is not enough for a negative percentage", 0, 0, -1, 0, false);
    row("of a limit of 0 no number is not enough", kNaN, 0, 80, 0, false);
    row("a limit of 0 with 0 % is off", 1, 0, 0, 0, false);
    row("a limit of 0 with a remainder is off", 1, 0, 80, 1, false);
    row("a limit of 2^64-1", kTwoToThe64, kMostBytes, 100, 0, true);
    row("half a limit of 2^64-1", kTwoToThe64 / 2, kMostBytes, 80, 0, false);
}

void tst_NetInfoLimitRules::timePercentage()
{
    QFETCH(double, used);
    QFETCH(quint64, limit);
    QFETCH(int, percentage);
    QFETCH(int, remainder);
    QTEST(timePercentageReached(used, limit, warning(percentage, remainder)), "reached");
}

void tst_NetInfoLimitRules::limitStates_data()
{
    QTest::addColumn<double>("remaining");
    QTest::addColumn<bool>("percentageReached");
    QTest::addColumn<int>("remainder");
    QTest::addColumn<int>("state");
    const auto row
        = [](const char *name, double remaining, bool percentageReached, int remainder, int state) {
              QTest::newRow(name) << remaining << percentageReached << remainder << state;
          };
    row("nothing remains", 0, false, 0, LimitReached);
    row("nothing remains, and near in both ways", 0, true, 20, LimitReached);
    row("less than nothing remains", -0.01, false, 0, LimitReached);
    row("the least remains", 4.9e-324, false, 0, LimitFine);
    row("the percentage is reached", 50, true, 0, LimitNear);
    row("the percentage is reached, the remainder not", 50, true, 20, LimitNear);
    row("exactly the remainder is left", 20, false, 20, LimitNear);
    row("more than the remainder is left", 20.01, false, 20, LimitFine);
    row("less than the remainder is left", 19.99, false, 20, LimitNear);
    row("without a remainder nothing is near", 0.5, false, 0, LimitFine);
    row("a negative remainder is never near", 0.5, false, -1, LimitFine);
    row("no number is fine", kNaN, false, 20, LimitFine);
    row("the infinite is fine", kInfinity, false, 20, LimitFine);
}

void tst_NetInfoLimitRules::limitStates()
{
    QFETCH(double, remaining);
    QFETCH(bool, percentageReached);
    QFETCH(int, remainder);
    QTEST(int(limitState(remaining, percentageReached, warning(80, remainder))), "state");
}

void tst_NetInfoLimitRules::everyStateHasItsColour()
{
    QCOMPARE(limitColourName(LimitFine), QStringLiteral("NoWarningColor"));
    QCOMPARE(limitColourName(LimitNear), QStringLiteral("BeforeWarningColor"));
    QCOMPARE(limitColourName(LimitReached), QStringLiteral("ReachedWarningColor"));
}

void tst_NetInfoLimitRules::megabytes_data()
{
    QTest::addColumn<quint64>("bytes");
    QTest::addColumn<double>("megabytes"); // a double holds each of these
    QTest::newRow("none") << quint64(0) << 0.0;
    QTest::newRow("a byte") << quint64(1) << 9.5367431640625e-7;
    QTest::newRow("one below a MB") << quint64(1048575) << 1048575 * 9.5367431640625e-7;
    QTest::newRow("a MB") << quint64(1048576) << 1.0;
    QTest::newRow("half a MB more") << quint64(1572864) << 1.5;
    QTest::newRow("999999 MB") << quint64(999999) * 1048576 << 999999.0;
    QTest::newRow("half of 64 bits") << (quint64(1) << 63) << 8796093022208.0;
}

void tst_NetInfoLimitRules::megabytes()
{
    QFETCH(quint64, bytes);
    QFETCH(double, megabytes);
    QVERIFY(NetInfoRules::megabytes(bytes) == static_cast<long double>(megabytes));
}

void tst_NetInfoLimitRules::bytes_data()
{
    QTest::addColumn<double>("megabytes");
    QTest::addColumn<quint64>("bytes");
    QTest::newRow("none") << 0.0 << quint64(0);
    QTest::newRow("a MB") << 1.0 << quint64(1048576);
    QTest::newRow("a byte") << 9.5367431640625e-7 << quint64(1);
    QTest::newRow("less than a byte") << 9.5e-7 << quint64(0);
    QTest::newRow("a byte and most of another") << 1.9e-6 << quint64(1);
    QTest::newRow("the largest limit") << 4294967295.0 << quint64(4294967295u) * 1048576;
    QTest::newRow("just below 2^64") << 17592186044415.0 << kMostBytes - 1048575;
    QTest::newRow("2^64") << 17592186044416.0 << kMostBytes;
    QTest::newRow("more than 2^64") << 1e300 << kMostBytes;
    QTest::newRow("infinite") << kInfinity << kMostBytes;
    QTest::newRow("less than none") << -1.0 << quint64(0);
    QTest::newRow("infinitely less") << -kInfinity << quint64(0);
    QTest::newRow("no number") << kNaN << quint64(0);
}

void tst_NetInfoLimitRules::bytes()
{
    QFETCH(double, megabytes);
    QTEST(bytesOf(megabytes), "bytes");
}

void tst_NetInfoLimitRules::everyByteCountSurvivesMegabytes()
{
    if (std::numeric_limits<long double>::digits < 64)
        QSKIP("long double is too short here");
    for (int bit = 0; bit < 64; ++bit) {
        for (const quint64 near : { quint64(0), quint64(1), ~quint64(0) }) {
            const quint64 count = (quint64(1) << bit) + near;
            QCOMPARE(bytesOf(NetInfoRules::megabytes(count)), count);
        }
    }
}

void tst_NetInfoLimitRules::wholeNumber_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<quint64>("whole");
    QTest::newRow("nothing") << 0.0 << quint64(0);
    QTest::newRow("below one") << 0.999 << quint64(0);
    QTest::newRow("one") << 1.0 << quint64(1);
    QTest::newRow("a fraction is dropped") << 1.999 << quint64(1);
    QTest::newRow("2^63") << 9223372036854775808.0 << (quint64(1) << 63);
    QTest::newRow("just below 2^64") << 18446744073709549568.0 << kMostBytes - 2047;
    QTest::newRow("2^64") << kTwoToThe64 << kMostBytes;
    QTest::newRow("infinite") << kInfinity << kMostBytes;
    QTest::newRow("negative") << -1.0 << quint64(0);
    QTest::newRow("infinitely less") << -kInfinity << quint64(0);
    QTest::newRow("no number") << kNaN << quint64(0);
}

void tst_NetInfoLimitRules::wholeNumber()
{
    QFETCH(double, value);
    QTEST(NetInfoRules::wholeNumber(value), "whole");
}

void tst_NetInfoLimitRules::hoursAndMinutes_data()
{
    QTest::addColumn<quint64>("seconds");
    QTest::addColumn<QString>("text");
    QTest::newRow("none") << quint64(0) << "0:00";
    QTest::newRow("59 seconds are no minute") << quint64(59) << "0:00";
    QTest::newRow("60 seconds are one") << quint64(60) << "0:01";
    QTest::newRow("119 seconds are one") << quint64(119) << "0:01";
    QTest::newRow("nine minutes have two digits") << quint64(540) << "0:09";
    QTest::newRow("ten minutes") << quint64(600) << "0:10";
    QTest::newRow("just below an hour") << quint64(3599) << "0:59";
    QTest::newRow("an hour") << quint64(3600) << "1:00";
    QTest::newRow("an hour and five minutes") << quint64(3900) << "1:05";
    QTest::newRow("an hour and a half") << quint64(5400) << "1:30";
    QTest::newRow("just below a day") << quint64(86399) << "23:59";
    QTest::newRow("a day") << quint64(86400) << "24:00";
    QTest::newRow("30 hours") << quint64(108000) << "30:00";
    QTest::newRow("the unsigned of -1") << kMostBytes << "5124095576030431:00";
}

void tst_NetInfoLimitRules::hoursAndMinutes()
{
    QFETCH(quint64, seconds);
    QTEST(NetInfoRules::hoursAndMinutes(seconds), "text");
}

void tst_NetInfoLimitRules::isNewPeriod_data()
{
    QTest::addColumn<qint64>("now");
    QTest::addColumn<qint64>("before");
    QTest::addColumn<bool>("isNew");
    const qint64 least = std::numeric_limits<qint64>::min();
    const qint64 most = std::numeric_limits<qint64>::max();
    QTest::newRow("nothing yet") << qint64(0) << qint64(0) << false;
    QTest::newRow("the same") << qint64(5) << qint64(5) << false;
    QTest::newRow("more") << qint64(6) << qint64(5) << false;
    QTest::newRow("less") << qint64(4) << qint64(5) << true;
    QTest::newRow("nothing after something") << qint64(0) << qint64(1) << true;
    QTest::newRow("-1 is the largest of all") << qint64(-1) << most << false;
    QTest::newRow("anything is less than -1") << most << qint64(-1) << true;
    QTest::newRow("-2 is less than -1") << qint64(-2) << qint64(-1) << true;
    QTest::newRow("2^63 is more than 2^63-1") << least << most << false;
    QTest::newRow("0 is less than 2^63") << qint64(0) << least << true;
}

void tst_NetInfoLimitRules::isNewPeriod()
{
    QFETCH(qint64, now);
    QFETCH(qint64, before);
    QTEST(NetInfoRules::isNewPeriod(now, before), "isNew");
}

void tst_NetInfoLimitRules::meterFill_data()
{
    QTest::addColumn<QRect>("area");
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("maximum");
    QTest::addColumn<QRectF>("fill");
    const QRect bar(0, 0, 228, 20);
    const QRectF none;
    const QRectF full(0, 0, 20, 228);
    const QRectF widest(0, 0, 1 << 24, 228);
    const auto row
        = [](const char *name, const QRect &area, double value, double maximum,
             const QRectF &fill) { QTest::newRow(name) << area << value << maximum << fill; };
    row("half the height wide, and as high as the bar is wide", bar, 50, 100, { 0, 0, 10, 228 });
    row("all of the height wide", bar, 100, 100, full);
    row("more than the maximum goes on", bar, 1140, 100, { 0, 0, 228, 228 });
    row("a part of a pixel", bar, 1, 80, { 0, 0, 0.25, 228 });
    row("a part of the bar fills from its corner", QRect(100, 5, 30, 10), 50, 100, { 0, 0, 5, 30 });
    row("a high bar", QRect(0, 0, 20, 228), 50, 100, { 0, 0, 114, 20 });
    row("bytes of a large limit", bar, 549755289600.0, 1099510579200.0, { 0, 0, 10, 228 });
    row("nothing used", bar, 0, 100, none);
    row("less than nothing used", bar, -1, 100, none);
    row("no number used", bar, kNaN, 100, none);
    row("the infinite used", bar, kInfinity, 100, widest);
    row("a maximum of 0", bar, 50, 0, none);
    row("nothing of 0", bar, 0, 0, none);
    row("a maximum below 0", bar, 50, -1, none);
    row("both below 0", bar, -50, -100, none);
    row("a maximum that is no number", bar, 50, kNaN, none);
    row("an infinite maximum", bar, 50, kInfinity, { 0, 0, 0, 228 });
    row("what is too wide for a painter", bar, 1e300, 1e-300, widest);
    row("just as wide as can be", bar, 1 << 24, 20, widest);
    row("a pixel less", bar, (1 << 24) - 1, 20, { 0, 0, (1 << 24) - 1, 228 });
    row("no height", QRect(0, 0, 228, 0), 50, 100, { 0, 0, 0, 228 });
}

void tst_NetInfoLimitRules::meterFill()
{
    QFETCH(QRect, area);
    QFETCH(double, value);
    QFETCH(double, maximum);
    QTEST(NetInfoRules::meterFill(area, value, maximum), "fill");
}

QTEST_GUILESS_MAIN(tst_NetInfoLimitRules)
#include "tst_netinfolimitrules.moc"
