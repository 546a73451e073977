#include "Dates.h"

#include <QtTest>

#include <ctime>
#include <limits>

using namespace velqctl;

class tst_Dates : public QObject
{
    Q_OBJECT
private slots:
    void days_data();
    void days();
    void nonsenseIsNoDay_data();
    void nonsenseIsNoDay();
    void daysBeforeAndBeyondAreWritten();
    void everyDayReadsAsItWasWritten();
    void times();
    void localTimesFollowTheZone();
    void durations_data();
    void durations();
};

void tst_Dates::days_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("day");
    QTest::newRow("the first") << "1970-01-01" << 0;
    QTest::newRow("a leap day") << "2024-02-29" << 19782;
    QTest::newRow("the last") << "9999-12-31" << 2932896;
}

void tst_Dates::days()
{
    QFETCH(QString, text);
    QFETCH(int, day);
    QCOMPARE(parseDay(text.toStdString()).value_or(-1), day);
    QCOMPARE(QString::fromStdString(dayText(day)), text);
}

void tst_Dates::nonsenseIsNoDay_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text : { "", "today", "2023-02-29", "2024-13-01", "2024-00-10", "2024-01-00",
                              "2024-1-1", "24-01-01", "1969-12-31", "2024/01/01", "2024-01-01 ",
                              "+024-01-01", "10000-01-01", "2024-01-32" })
        QTest::newRow(text) << QString(text);
}

void tst_Dates::nonsenseIsNoDay()
{
    QFETCH(QString, text);
    QVERIFY(!parseDay(text.toStdString()));
}

void tst_Dates::daysBeforeAndBeyondAreWritten()
{
    QCOMPARE(dayText(-1), std::string("1969-12-31"));
    QVERIFY(!dayText(std::numeric_limits<int>::max()).empty());
    QVERIFY(!dayText(std::numeric_limits<int>::min()).empty());
    QVERIFY(!utcText(std::numeric_limits<long long>::max()).empty());
}

void tst_Dates::everyDayReadsAsItWasWritten()
{
    for (int day = 0; day <= 2932896; day += 13)
        QCOMPARE(parseDay(dayText(day)).value_or(-1), day);
}

void tst_Dates::times()
{
    QCOMPARE(utcText(1709301909), std::string("2024-03-01T14:05:09Z"));
    QCOMPARE(utcText(0), std::string("1970-01-01T00:00:00Z"));
}

void tst_Dates::localTimesFollowTheZone()
{
    qputenv("TZ", "XYZ-5:45");
    tzset();
    QCOMPARE(localText(1709301909), std::string("2024-03-01 19:50:09"));
    QCOMPARE(utcText(1709301909), std::string("2024-03-01T14:05:09Z"));
    qputenv("TZ", "UTC");
    tzset();
}

void tst_Dates::durations_data()
{
    QTest::addColumn<qlonglong>("seconds");
    QTest::addColumn<QString>("text");
    QTest::newRow("none") << 0LL << "0:00:00";
    QTest::newRow("each part") << 3909LL << "1:05:09";
    QTest::newRow("days are hours") << 360000LL << "100:00:00";
}

void tst_Dates::durations()
{
    QFETCH(qlonglong, seconds);
    QTEST(QString::fromStdString(durationText(seconds)), "text");
}

QTEST_GUILESS_MAIN(tst_Dates)
#include "tst_dates.moc"
