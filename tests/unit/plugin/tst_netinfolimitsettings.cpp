#include "NetInfoLimitRules.h"

#include <QtTest>

#include "NetInfoSettingUILogic.h"

using namespace NetInfoRules;

namespace {

LimitWarnings warnings(int bits)
{
    LimitWarnings result;
    result.dataBefore = (bits & 1) != 0;
    result.dataAfter = (bits & 2) != 0;
    result.timeBefore = (bits & 4) != 0;
    result.timeAfter = (bits & 8) != 0;
    return result;
}

//! What a settings record says of one switch; -1 where two readings differ.
int isOn(const LimitSettings &settings, int index)
{
    const LimitWarnings &enabled = settings.enabled;
    switch (index) {
    case 0:
        return settings.specificPeriod;
    case 1:
        return settings.daily;
    case 2:
        return settings.weekly;
    case 4:
        return settings.dataEnabled;
    case 5:
        return settings.timeEnabled;
    case 8:
        return enabled.dataBefore == enabled.timeBefore ? int(enabled.dataBefore) : -1;
    case 9:
        return enabled.dataAfter == enabled.timeAfter ? int(enabled.dataAfter) : -1;
    case 10:
        return settings.pending.dataAfter;
    case 11:
        return settings.pending.dataBefore;
    case 12:
        return settings.pending.timeBefore;
    case 13:
        return settings.pending.timeAfter;
    default:
        return -1;
    }
}

constexpr int kSwitches[] = { 0, 1, 2, 4, 5, 8, 9, 10, 11, 12, 13 };

bool isWarningSwitch(int index)
{
    return index == 8 || index == 9;
}

//! Seventeen empty texts but \a text at \a index.
QStringList record(int index, const QString &text)
{
    QStringList values;
    for (int i = 0; i < 17; ++i)
        values << (i == index ? text : QString());
    return values;
}

} // namespace

class tst_NetInfoLimitSettings : public QObject
{
    Q_OBJECT
private slots:
    void limitWarning_data();
    void limitWarning();
    void anyPairEnabledRearmsItself_data();
    void anyPairEnabledRearmsItself();
    void rearmingClearsNothing();
    void equalWarningsAreEqualInEach();
    void switches_data();
    void switches();
    void aSwitchChangesNothingElse();
    void numbers_data();
    void numbers();
    void theStartDateIsKeptAsText();
    void missingValuesAreEmpty();
    void settingsDate_data();
    void settingsDate();
    void switchText();
};

void tst_NetInfoLimitSettings::limitWarning_data()
{
    QTest::addColumn<QStringList>("items"); // name, value and value1 of each
    QTest::addColumn<int>("percentage");
    QTest::addColumn<int>("remainder");
    QTest::newRow("no item is off") << QStringList() << 0 << 0;
    QTest::newRow("an item") << QStringList({ "D", "80", "20" }) << 80 << 20;
    QTest::newRow("another name is off") << QStringList({ "T", "80", "20" }) << 0 << 0;
    QTest::newRow("case counts") << QStringList({ "d", "80", "20" }) << 0 << 0;
    QTest::newRow("the last item wins")
        << QStringList({ "D", "80", "20", "D", "70", "0" }) << 70 << 0;
    QTest::newRow("another name after it changes nothing")
        << QStringList({ "D", "80", "20", "T", "70", "0" }) << 80 << 20;
    QTest::newRow("empty texts are off") << QStringList({ "D", "80", "20", "D", "", "" }) << 0 << 0;
    QTest::newRow("what is no number is off") << QStringList({ "D", "many", "8O" }) << 0 << 0;
    QTest::newRow("a fraction is no number") << QStringList({ "D", "80.5", "1e3" }) << 0 << 0;
    QTest::newRow("what does not fit is off")
        << QStringList({ "D", "2147483648", "-2147483649" }) << 0 << 0;
    QTest::newRow("the largest numbers")
        << QStringList({ "D", "2147483647", "-2147483648" }) << 2147483647 << int(-2147483647 - 1);
}

void tst_NetInfoLimitSettings::limitWarning()
{
    QFETCH(QStringList, items);
    QVector<NetInfoLimitCfg> list;
    for (int i = 0; i + 2 < items.size(); i += 3)
        list << NetInfoLimitCfg { "Limit", items.at(i), items.at(i + 1), items.at(i + 2) };
    const LimitWarning found = NetInfoRules::limitWarning(list, "D");
    QTEST(found.percentage, "percentage");
    QTEST(found.remainder, "remainder");
}

void tst_NetInfoLimitSettings::anyPairEnabledRearmsItself_data()
{
    QTest::addColumn<int>("enabled");
    QTest::addColumn<int>("pending");
    for (int enabled = 0; enabled < 16; ++enabled) {
        const bool before = (enabled & 5) == 5;
        const bool after = (enabled & 10) == 10;
        QTest::addRow("enabled: data %d %d, time %d %d", enabled & 1, (enabled >> 1) & 1,
                      (enabled >> 2) & 1, (enabled >> 3) & 1)
            << enabled << (before ? 5 : 0) + (after ? 10 : 0);
    }
}

void tst_NetInfoLimitSettings::anyPairEnabledRearmsItself()
{
    QFETCH(int, enabled);
    QFETCH(int, pending);
    for (int before = 0; before < 16; ++before)
        QVERIFY(rearmed(warnings(before), warnings(enabled)) == warnings(before | pending));
}

void tst_NetInfoLimitSettings::rearmingClearsNothing()
{
    QVERIFY(rearmed(warnings(15), LimitWarnings()) == warnings(15));
    QVERIFY(rearmed(LimitWarnings(), LimitWarnings()) == LimitWarnings());
}

void tst_NetInfoLimitSettings::equalWarningsAreEqualInEach()
{
    for (int one = 0; one < 16; ++one) {
        for (int other = 0; other < 16; ++other)
            QCOMPARE(warnings(one) == warnings(other), one == other);
    }
}

void tst_NetInfoLimitSettings::switches_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("on");
    for (const int index : kSwitches) {
        const bool otherwise = !isWarningSwitch(index);
        const auto row = [index](const char *what, const QString &text, bool on) {
            QTest::addRow("%d: %s", index, what) << index << text << on;
        };
        row("true", QStringLiteral("true"), true);
        row("false", QStringLiteral("false"), false);
        row("empty", QString(), otherwise);
        row("TRUE", QStringLiteral("TRUE"), otherwise);
        row("FALSE", QStringLiteral("FALSE"), otherwise);
        row("a blank before", QStringLiteral(" false"), otherwise);
        row("a blank after", QStringLiteral("true "), otherwise);
        row("0", QStringLiteral("0"), otherwise);
        row("1", QStringLiteral("1"), otherwise);
        row("garbage", QString(QChar(0xfffd)), otherwise);
    }
}

void tst_NetInfoLimitSettings::switches()
{
    QFETCH(int, index);
    QFETCH(QString, text);
    QFETCH(bool, on);
    QCOMPARE(isOn(limitSettings(record(index, text)), index), int(on));
}

void tst_NetInfoLimitSettings::aSwitchChangesNothingElse()
{
    for (const int changed : kSwitches) {
        for (int values = 0; values < 2; ++values) {
            const bool on = values == 1;
            const LimitSettings settings
                = limitSettings(record(changed, NetInfoRules::switchText(on)));
            for (const int index : kSwitches) {
                const bool expected = index == changed ? on : !isWarningSwitch(index);
                QVERIFY2(isOn(settings, index) == int(expected),
                         qPrintable(QStringLiteral("%1 changes %2").arg(changed).arg(index)));
            }
        }
    }
}

void tst_NetInfoLimitSettings::numbers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<unsigned int>("size");
    QTest::addColumn<int>("index");
    QTest::newRow("empty") << "" << 0u << 0;
    QTest::newRow("none") << "0" << 0u << 0;
    QTest::newRow("one") << "1" << 1u << 1;
    QTest::newRow("leading zeros") << "0030" << 30u << 30;
    QTest::newRow("six digits") << "999999" << 999999u << 999999;
    QTest::newRow("the largest signed") << "2147483647" << 2147483647u << 2147483647;
    QTest::newRow("too large as a signed one") << "2147483648" << 2147483648u << 0;
    QTest::newRow("the largest") << "4294967295" << 4294967295u << 0;
    QTest::newRow("too large") << "4294967296" << 0u << 0;
    QTest::newRow("negative") << "-1" << 0u << -1;
    QTest::newRow("a fraction") << "1.5" << 0u << 0;
    QTest::newRow("hexadecimal") << "0x10" << 0u << 0;
    QTest::newRow("garbage") << "many" << 0u << 0;
}

void tst_NetInfoLimitSettings::numbers()
{
    QFETCH(QString, text);
    QFETCH(unsigned int, size);
    QFETCH(int, index);
    const LimitSettings none = limitSettings(QStringList());
    LimitSettings settings = limitSettings(record(VLS_SIZE_VOLUME, text));
    QCOMPARE(settings.dataLimit, size);
    QCOMPARE(settings.timeLimit, none.timeLimit);
    settings = limitSettings(record(VLS_SIZE_TIME_VOLUME, text));
    QCOMPARE(settings.timeLimit, size);
    QCOMPARE(settings.dataLimit, none.dataLimit);
    settings = limitSettings(record(VLS_START_WEEK_DATE, text));
    QCOMPARE(settings.weekday, index);
    QCOMPARE(settings.day, none.day);
    settings = limitSettings(record(VLS_START_MONTH_DATE, text));
    QCOMPARE(settings.day, index);
    QCOMPARE(settings.weekday, none.weekday);
}

void tst_NetInfoLimitSettings::theStartDateIsKeptAsText()
{
    for (const char *text : { "31-12-2025", "", "garbage", "12:34:56" })
        QCOMPARE(limitSettings(record(VLS_START_DATE, text)).startDate, QString(text));
}

void tst_NetInfoLimitSettings::missingValuesAreEmpty()
{
    const LimitSettings settings = limitSettings(QStringList());
    for (const int index : kSwitches)
        QCOMPARE(isOn(settings, index), int(!isWarningSwitch(index)));
    QCOMPARE(settings.dataLimit, 0u);
    QCOMPARE(settings.timeLimit, 0u);
    QCOMPARE(settings.weekday, 0);
    QCOMPARE(settings.day, 0);
    QCOMPARE(settings.startDate, QString());
}

void tst_NetInfoLimitSettings::settingsDate_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QDate>("date");
    QTest::newRow("day, month, year") << "02-03-2024" << QDate(2024, 3, 2);
    QTest::newRow("without leading zeros") << "2-3-2024" << QDate(2024, 3, 2);
    QTest::newRow("a leap day") << "29-02-2024" << QDate(2024, 2, 29);
    QTest::newRow("the last day of a year") << "31-12-2023" << QDate(2023, 12, 31);
    QTest::newRow("no leap day") << "29-02-2023" << QDate();
    QTest::newRow("the year first") << "2024-03-02" << QDate();
    QTest::newRow("empty") << "" << QDate();
    QTest::newRow("two parts") << "02-03" << QDate();
    QTest::newRow("four parts") << "02-03-2024-1" << QDate();
    QTest::newRow("a part is empty") << "02--2024" << QDate();
    QTest::newRow("a part is no number") << "02-March-2024" << QDate();
    QTest::newRow("dots") << "02.03.2024" << QDate();
    QTest::newRow("a time") << "12:34:56" << QDate();
}

void tst_NetInfoLimitSettings::settingsDate()
{
    QFETCH(QString, text);
    QTEST(NetInfoRules::settingsDate(text), "date");
}

void tst_NetInfoLimitSettings::switchText()
{
    QCOMPARE(NetInfoRules::switchText(true), QStringLiteral("true"));
    QCOMPARE(NetInfoRules::switchText(false), QStringLiteral("false"));
}

QTEST_GUILESS_MAIN(tst_NetInfoLimitSettings)
#include "tst_netinfolimitsettings.moc"
