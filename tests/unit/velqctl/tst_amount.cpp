#include "Amount.h"

#include <QtTest>

#include <limits>

using namespace velqctl;

class tst_Amount : public QObject
{
    Q_OBJECT
private slots:
    void reading_data();
    void reading();
    void nonsenseIsNoAmount_data();
    void nonsenseIsNoAmount();
    void writing_data();
    void writing();
    void aCorrectionMayBeNegative();
};

void tst_Amount::reading_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<quint64>("bytes");
    QTest::newRow("digits alone are bytes") << "1500000" << quint64(1500000);
    QTest::newRow("nothing is an amount, too") << "0" << quint64(0);
    QTest::newRow("bytes may be named") << "17B" << quint64(17);
    QTest::newRow("decimal") << "1.5GB" << quint64(1500000000);
    QTest::newRow("binary") << "1.5GiB" << quint64(1610612736);
    QTest::newRow("binary, rounded down to a byte") << "1.4GiB" << quint64(1503238553);
    QTest::newRow("without B") << "2k" << quint64(2000);
    QTest::newRow("binary without B") << "2Ki" << quint64(2048);
    QTest::newRow("in any case") << "3mIb" << quint64(3 * 1048576);
    QTest::newRow("a blank before the unit") << "7 MB" << quint64(7000000);
    QTest::newRow("six decimals of the largest unit") << "1.000001TB" << quint64(1000001000000);
    QTest::newRow("a blank and no unit") << "5 " << quint64(5);
    QTest::newRow("leading zeros") << "007" << quint64(7);
    QTest::newRow("the most") << "4611686018427387904" << (quint64(1) << 62);
    QTest::newRow("the most in a unit") << "4194304TiB" << (quint64(1) << 62);
}

void tst_Amount::reading()
{
    QFETCH(QString, text);
    const auto bytes = parseAmount(text.toStdString());
    QVERIFY(bytes);
    QTEST(quint64(*bytes), "bytes");
}

void tst_Amount::nonsenseIsNoAmount_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text : { "",
                              " ",
                              "GB",
                              ".5GB",
                              "1.GB",
                              "-1",
                              "+1",
                              "1,5GB",
                              "1.5.5",
                              "1 2",
                              "5x",
                              "5BB",
                              "5bits",
                              "0x10",
                              "1e3",
                              "1.0000001GB",
                              "4611686018427387905",
                              "4194304.1TiB",
                              "4194305TiB",
                              "99999999999999999999999",
                              " 5",
                              "5MB ",
                              "1\n",
                              "inf",
                              "nan" })
        QTest::newRow(text) << QString(text);
}

void tst_Amount::nonsenseIsNoAmount()
{
    QFETCH(QString, text);
    QVERIFY(!parseAmount(text.toStdString()));
}

void tst_Amount::writing_data()
{
    QTest::addColumn<quint64>("bytes");
    QTest::addColumn<QString>("text");
    QTest::newRow("none") << quint64(0) << "0 B";
    QTest::newRow("below the first unit") << quint64(999) << "999 B";
    QTest::newRow("the first unit") << quint64(1000) << "1.00 kB";
    QTest::newRow("a zero behind the point") << quint64(1049) << "1.05 kB";
    QTest::newRow("rounded down") << quint64(1004) << "1.00 kB";
    QTest::newRow("rounded up") << quint64(1005) << "1.01 kB";
    QTest::newRow("just below the next unit") << quint64(999994) << "999.99 kB";
    QTest::newRow("rounding reaches the next unit") << quint64(999995) << "1.00 MB";
    QTest::newRow("gigabytes") << quint64(1500000000) << "1.50 GB";
    QTest::newRow("the most of 64 bits") << ~quint64(0) << "18.45 EB";
}

void tst_Amount::writing()
{
    QFETCH(quint64, bytes);
    QTEST(QString::fromStdString(amountText(static_cast<unsigned long long>(bytes))), "text");
}

void tst_Amount::aCorrectionMayBeNegative()
{
    QCOMPARE(amountText(-1500LL), std::string("-1.50 kB"));
    QCOMPARE(amountText(std::numeric_limits<long long>::min()), std::string("-9.22 EB"));
}

QTEST_GUILESS_MAIN(tst_Amount)
#include "tst_amount.moc"
