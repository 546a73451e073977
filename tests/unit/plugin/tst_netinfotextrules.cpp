#include "NetInfoTextRules.h"

#include <QtTest>

#include <limits>

using namespace NetInfoRules;

class tst_NetInfoTextRules : public QObject
{
    Q_OBJECT
private slots:
    void durationText_data();
    void durationText();
    void historyKey_data();
    void historyKey();
};

void tst_NetInfoTextRules::durationText_data()
{
    QTest::addColumn<qlonglong>("seconds");
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << qlonglong(0) << "00:00:00";
    QTest::newRow("one second below a minute") << qlonglong(59) << "00:00:59";
    QTest::newRow("a minute") << qlonglong(60) << "00:01:00";
    QTest::newRow("nine of each has a zero") << qlonglong(9 * 3600 + 9 * 60 + 9) << "09:09:09";
    QTest::newRow("ten of each has none") << qlonglong(10 * 3600 + 10 * 60 + 10) << "10:10:10";
    QTest::newRow("all three parts") << qlonglong(3725) << "01:02:05";
    QTest::newRow("hours pass two digits") << qlonglong(360000) << "100:00:00";
    QTest::newRow("no day part") << qlonglong(86400) << "24:00:00";
    QTest::newRow("negative seconds keep the zero") << qlonglong(-5) << "00:00:0-5";
    QTest::newRow("negative in each part") << qlonglong(-3725) << "0-1:0-2:0-5";
    QTest::newRow("most hours of 32 bits")
        << qlonglong(std::numeric_limits<int>::max()) * 3600 << "2147483647:00:00";
    QTest::newRow("hours have 32 bits") << Q_INT64_C(2147483648) * 3600 << "0-2147483648:00:00";
}

void tst_NetInfoTextRules::durationText()
{
    QFETCH(qlonglong, seconds);
    QTEST(NetInfoRules::durationText(seconds), "text");
}

void tst_NetInfoTextRules::historyKey_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<qulonglong>("expected");
    QTest::newRow("zero") << 0 << qulonglong(0);
    QTest::newRow("positive") << 1234567 << qulonglong(1234567);
    QTest::newRow("largest") << std::numeric_limits<int>::max() << qulonglong(2147483647);
    QTest::newRow("negative becomes zero") << -1 << qulonglong(0);
    QTest::newRow("smallest becomes zero") << std::numeric_limits<int>::min() << qulonglong(0);
}

void tst_NetInfoTextRules::historyKey()
{
    QFETCH(int, key);
    QFETCH(qulonglong, expected);
    QCOMPARE(qulonglong(NetInfoRules::historyKey(key)), expected);
}

QTEST_GUILESS_MAIN(tst_NetInfoTextRules)
#include "tst_netinfotextrules.moc"
