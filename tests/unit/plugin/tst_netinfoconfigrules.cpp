#include "NetInfoConfigRules.h"

#include <QtTest>

using namespace NetInfoRules;

namespace {

NetInfoConfig item(const char *section, const char *name, const char *value = "",
                   const char *type = "", const char *text = "")
{
    return { QLatin1String(section), QLatin1String(name), QLatin1String(value),
             QLatin1String(type),    QLatin1String(text), QString() };
}

QStringList names(const QVector<NetInfoConfig> &items)
{
    QStringList list;
    for (const NetInfoConfig &one : items)
        list << one.section + QLatin1Char('/') + one.name;
    return list;
}

const QVector<NetInfoConfig> kCommon
    = { item("function", "SHOWGRAPH", "true"), item("fluxunit", "B"), item("speedunit", "Bps"),
        item("fluxunit", "KB") };

//! The merge of the common items with the operator's.
void merge(QVector<NetInfoConfig> &items, const QVector<NetInfoConfig> &custom)
{
    items += custom;
    replaceSection(QStringLiteral("speedunit"), items, custom);
    replaceSection(QStringLiteral("fluxunit"), items, custom);
}

} // namespace

class tst_NetInfoConfigRules : public QObject
{
    Q_OBJECT
private slots:
    void oneOperatorUnitReplacesTheWholeTable();
    void withoutOperatorUnitsTheCommonTableStays();
    void otherSectionsKeepBothSets();
    void mergingNothingChangesNothing();
    void replacingKeepsTheOperatorsOrder();
    void theLastSwitchDecides();
    void onlyTheExactTextTrueIsOn_data();
    void onlyTheExactTextTrueIsOn();
    void aSwitchIsFoundInAnySection();
    void withoutItemsEverySwitchIsOff();
    void unitsAreReadInFileOrder();
    void unitNumbersThatAreNoneAreZero();
};

void tst_NetInfoConfigRules::oneOperatorUnitReplacesTheWholeTable()
{
    QVector<NetInfoConfig> items = kCommon;
    merge(items, { item("fluxunit", "Mo") });
    QCOMPARE(names(items), QStringList({ "function/SHOWGRAPH", "speedunit/Bps", "fluxunit/Mo" }));
}

void tst_NetInfoConfigRules::withoutOperatorUnitsTheCommonTableStays()
{
    QVector<NetInfoConfig> items = kCommon;
    merge(items, { item("function", "TRANSFER") });
    QCOMPARE(names(items),
             QStringList({ "function/SHOWGRAPH", "fluxunit/B", "speedunit/Bps", "fluxunit/KB",
                           "function/TRANSFER" }));
}

void tst_NetInfoConfigRules::otherSectionsKeepBothSets()
{
    QVector<NetInfoConfig> items = { item("format", "a"), item("function", "b") };
    merge(items, { item("format", "a"), item("function", "b"), item("", "c") });
    QCOMPARE(names(items),
             QStringList({ "format/a", "function/b", "format/a", "function/b", "/c" }));
}

void tst_NetInfoConfigRules::mergingNothingChangesNothing()
{
    QVector<NetInfoConfig> items = kCommon;
    merge(items, QVector<NetInfoConfig>());
    QCOMPARE(names(items), names(kCommon));
    items.clear();
    merge(items, QVector<NetInfoConfig>());
    QVERIFY(items.isEmpty());
}

void tst_NetInfoConfigRules::replacingKeepsTheOperatorsOrder()
{
    QVector<NetInfoConfig> items = kCommon;
    replaceSection(QStringLiteral("fluxunit"), items,
                   { item("fluxunit", "z"), item("speedunit", "s"), item("fluxunit", "a") });
    QCOMPARE(names(items),
             QStringList({ "function/SHOWGRAPH", "speedunit/Bps", "fluxunit/z", "fluxunit/a" }));
}

void tst_NetInfoConfigRules::theLastSwitchDecides()
{
    QVector<NetInfoConfig> items = kCommon;
    merge(items, { item("function", "SHOWGRAPH", "false") });
    QVERIFY(!isFunctionEnabled(items, QStringLiteral("SHOWGRAPH")));
    merge(items, { item("function", "SHOWGRAPH", "true") });
    QVERIFY(isFunctionEnabled(items, QStringLiteral("SHOWGRAPH")));
}

void tst_NetInfoConfigRules::onlyTheExactTextTrueIsOn_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("on");
    QTest::newRow("true is on") << "true" << true;
    QTest::newRow("True is off") << "True" << false;
    QTest::newRow("TRUE is off") << "TRUE" << false;
    QTest::newRow("1 is off") << "1" << false;
    QTest::newRow("a blank behind is off") << "true " << false;
    QTest::newRow("empty is off") << "" << false;
    QTest::newRow("false is off") << "false" << false;
}

void tst_NetInfoConfigRules::onlyTheExactTextTrueIsOn()
{
    QFETCH(QString, value);
    const QVector<NetInfoConfig> items = { item("function", "A", value.toLatin1()) };
    QTEST(isFunctionEnabled(items, QStringLiteral("A")), "on");
}

void tst_NetInfoConfigRules::aSwitchIsFoundInAnySection()
{
    const QVector<NetInfoConfig> items
        = { item("function", "SHOWGRAPH", "false"), item("format", "SHOWGRAPH", "true") };
    QVERIFY(isFunctionEnabled(items, QStringLiteral("SHOWGRAPH")));
}

void tst_NetInfoConfigRules::withoutItemsEverySwitchIsOff()
{
    QVERIFY(!isFunctionEnabled(QVector<NetInfoConfig>(), QStringLiteral("SHOWGRAPH")));
    QVERIFY(!isFunctionEnabled(kCommon, QStringLiteral("NOSUCHSWITCH")));
    QVERIFY(!isFunctionEnabled(kCommon, QStringLiteral("showgraph")));
}

void tst_NetInfoConfigRules::unitsAreReadInFileOrder()
{
    const QVector<NetInfoConfig> items
        = { item("fluxunit", "KB", "1024", "1024", "IDS_UNIT_KB"), item("speedunit", "x", "7"),
            item("fluxunit", "B", "-1", "18446744073709551615", "IDS_UNIT_B") };
    QVector<TagUnits> units(1);
    appendUnits(items, QStringLiteral("fluxunit"), units);
    QCOMPARE(int(units.size()), 3); // appended to what was there
    QCOMPARE(units.at(1).name, QStringLiteral("KB"));
    QCOMPARE(units.at(1).value, 1024);
    QCOMPARE(units.at(1).type, quint64(1024));
    QCOMPARE(units.at(1).langResID, QStringLiteral("IDS_UNIT_KB"));
    QCOMPARE(units.at(2).name, QStringLiteral("B"));
    QCOMPARE(units.at(2).value, -1);
    QCOMPARE(units.at(2).type, ~quint64(0));
}

void tst_NetInfoConfigRules::unitNumbersThatAreNoneAreZero()
{
    const QVector<NetInfoConfig> items
        = { item("fluxunit", "a", "x", ""), item("fluxunit", "b", "0x10", "-1"),
            item("fluxunit", "c", "1099511627776", "1099511627776") };
    QVector<TagUnits> units;
    appendUnits(items, QStringLiteral("fluxunit"), units);
    QCOMPARE(units.at(0).value, 0);
    QCOMPARE(units.at(0).type, quint64(0));
    QCOMPARE(units.at(1).value, 0);
    QCOMPARE(units.at(1).type, quint64(0));
    QCOMPARE(units.at(2).value, 0); // too large for 32 bits: the factor is in type
    QCOMPARE(units.at(2).type, Q_UINT64_C(1099511627776));
}

QTEST_GUILESS_MAIN(tst_NetInfoConfigRules)
#include "tst_netinfoconfigrules.moc"
