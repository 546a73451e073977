#include <UnitRules.h>

#include <QtTest>

#include <limits>

Q_DECLARE_METATYPE(TagUnits)

namespace {

constexpr quint64 kMax = std::numeric_limits<quint64>::max();
constexpr quint64 kTera = 1ULL << 40;

QVector<TagUnits> table(std::initializer_list<quint64> factors)
{
    QVector<TagUnits> units;
    for (const quint64 factor : factors)
        units.append({ QString::number(factor), 0, factor, QString() });
    return units;
}

} // namespace

class tst_UnitRules : public QObject
{
    Q_OBJECT
private slots:
    void factor_data();
    void factor();
    void unit_data();
    void unit();
    void anEmptyTableHasNoUnit();
    void ofEqualFactorsTheFirstCounts();
    void scaled_data();
    void scaled();
};

void tst_UnitRules::factor_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<quint64>("type");
    QTest::addColumn<quint64>("expected");
    QTest::newRow("value counts") << 1024 << quint64(1024) << quint64(1024);
    QTest::newRow("value counts, not type") << 1024 << quint64(7) << quint64(1024);
    QTest::newRow("a value that 32 bits cannot hold is in type") << 0 << kTera << kTera;
    QTest::newRow("a negative value is no factor") << -5 << quint64(1024) << quint64(1024);
    QTest::newRow("no factor at all is 1") << 0 << quint64(0) << quint64(1);
    QTest::newRow("largest value") << 2147483647 << quint64(0) << quint64(2147483647);
}

void tst_UnitRules::factor()
{
    QFETCH(int, value);
    QFETCH(quint64, type);
    QTEST(UnitRules::factorOf({ QString(), value, type, QString() }), "expected");
}

void tst_UnitRules::unit_data()
{
    QTest::addColumn<QVector<TagUnits>>("units");
    QTest::addColumn<quint64>("amount");
    QTest::addColumn<QString>("expected");
    const auto full = table({ 1, 1024, 1048576, 1073741824, kTera });
    QTest::newRow("nothing is in the smallest") << full << quint64(0) << "1";
    QTest::newRow("just below 1 K") << full << quint64(1023) << "1";
    QTest::newRow("exactly 1 K") << full << quint64(1024) << "1024";
    QTest::newRow("just below 1 M") << full << quint64(1048575) << "1024";
    QTest::newRow("exactly 1 M") << full << quint64(1048576) << "1048576";
    QTest::newRow("just below 1 T") << full << (kTera - 1) << "1073741824";
    QTest::newRow("exactly 1 T") << full << kTera << QString::number(kTera);
    QTest::newRow("the largest amount") << full << kMax << QString::number(kTera);
    const auto unsorted = table({ 1048576, 1, kTera, 1024 });
    QTest::newRow("unsorted, small") << unsorted << quint64(5) << "1";
    QTest::newRow("unsorted, middle") << unsorted << quint64(5000) << "1024";
    QTest::newRow("unsorted, large") << unsorted << kMax << QString::number(kTera);
    const auto speeds = table({ 1024, 1048576 });
    QTest::newRow("below every unit is in the smallest") << speeds << quint64(10) << "1024";
    QTest::newRow("below every unit of an unsorted table")
        << table({ 1048576, 1024 }) << quint64(10) << "1024";
    QTest::newRow("a row without a factor counts as 1") << table({ 0, 1024 }) << quint64(10) << "0";
}

void tst_UnitRules::unit()
{
    QFETCH(QVector<TagUnits>, units);
    QFETCH(quint64, amount);
    const TagUnits *unit = UnitRules::unitFor(units, amount);
    QVERIFY(unit);
    QTEST(unit->name, "expected");
}

void tst_UnitRules::anEmptyTableHasNoUnit()
{
    QVERIFY(!UnitRules::unitFor({}, 5));
}

void tst_UnitRules::ofEqualFactorsTheFirstCounts()
{
    const QVector<TagUnits> units { { "first", 8, 8, QString() }, { "second", 8, 8, QString() } };
    QCOMPARE(UnitRules::unitFor(units, 100)->name, QString("first"));
    QCOMPARE(UnitRules::unitFor(units, 1)->name, QString("first"));
}

void tst_UnitRules::scaled_data()
{
    QTest::addColumn<quint64>("amount");
    QTest::addColumn<quint64>("factor");
    QTest::addColumn<quint64>("whole");
    QTest::addColumn<uint>("hundredths");
    QTest::newRow("0") << quint64(0) << quint64(1) << quint64(0) << 0U;
    QTest::newRow("1.50") << quint64(1536) << quint64(1024) << quint64(1) << 50U;
    QTest::newRow("1.00 of 1029") << quint64(1029) << quint64(1024) << quint64(1) << 0U;
    QTest::newRow("1.01 of 1030") << quint64(1030) << quint64(1024) << quint64(1) << 1U;
    QTest::newRow("half goes up") << quint64(1) << quint64(200) << quint64(0) << 1U;
    QTest::newRow("below half goes down") << quint64(1) << quint64(201) << quint64(0) << 0U;
    QTest::newRow("1023.99") << quint64(1048565) << quint64(1024) << quint64(1023) << 99U;
    QTest::newRow("1023.999 carries") << quint64(1048575) << quint64(1024) << quint64(1024) << 0U;
    QTest::newRow("2^64-1 bytes") << kMax << quint64(1) << kMax << 0U;
    QTest::newRow("2^64-1 in T") << kMax << kTera << quint64(16777216) << 0U;
    QTest::newRow("2^64-1 by itself") << kMax << kMax << quint64(1) << 0U;
    QTest::newRow("a large rest does not overflow") << (kMax - 1) << kMax << quint64(1) << 0U;
    QTest::newRow("half of 2^64-1") << (kMax / 2) << kMax << quint64(0) << 50U;
    QTest::newRow("what doubles lose")
        << ((1ULL << 53) + 1) << quint64(1) << ((1ULL << 53) + 1) << 0U;
}

void tst_UnitRules::scaled()
{
    QFETCH(quint64, amount);
    QFETCH(quint64, factor);
    const UnitRules::Scaled result = UnitRules::scale(amount, factor);
    QTEST(result.whole, "whole");
    QTEST(result.hundredths, "hundredths");
}

QTEST_GUILESS_MAIN(tst_UnitRules)
#include "tst_unitrules.moc"
