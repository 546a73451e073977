#include "NetInfoConfigParse.h"

#include <QDir>
#include <QFile>
#include <QtTest>
#include <QXmlStreamReader>

#include <utility>

#include "FakeHost.h"
#include "PluginFolder.h"
#include "TestLog.h"

class tst_NetInfoConfigParse : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void theInstanceIsSingleUntilDestroyed();
    void itemsOfTheModuleAreRead();
    void aMissingFileIs3();
    void aFileThatCannotBeOpenedIs25();
    void anotherRootIsReadToItsEnd();
    void anItemBeforeAnySectionHasNone();
    void namesOfGroupAndModuleAreExact_data();
    void namesOfGroupAndModuleAreExact();
    void aSecondGroupKeepsTheModule();
    void endTagsResetNothing();
    void unknownElementsAreIgnored();
    void aMissingColourComponentIsZero();
    void aColourOutOfRangeIsInvalid();
    void limitsAndColoursComeFromEveryModule();
    void limitsAndColoursAreAddedAtEachCall();
    void brokenXmlKeepsTheItemsBefore();
    void anErrorRightAfterTheRootIs6();
    void anErrorBeforeTheRootIs6();
    void hostileXmlKeepsTheItemsBefore_data();
    void hostileXmlKeepsTheItemsBefore();
    void bytesThatAreNoUtf8Are6();
    void outIsEmptiedFirst();
    void theTraceIsComplete();
    void theShippedFileTruncatedAnywhereIsHarmless();
    void theShippedFileHasEverySwitch();
    void theShippedUnitsReachTerabytes();
    void theShippedLimitsAndColours();

private:
    int read(const char *group = "customize", const char *module = "common");

    QScopedPointer<PluginFolder> m_folder;
    QScopedPointer<TestLog> m_log;
    QVector<NetInfoConfig> m_items;
};

void tst_NetInfoConfigParse::init()
{
    resetFakeHost();
    m_folder.reset(new PluginFolder);
    m_log.reset(new TestLog);
    m_items.clear();
}

void tst_NetInfoConfigParse::cleanup()
{
    NetInfoConfigParse::OnDestroy();
    const QStringList problems = m_log->takeProblems();
    m_log.reset();
    QVERIFY2(problems.isEmpty(), qPrintable(problems.join(QLatin1Char(10))));
}

int tst_NetInfoConfigParse::read(const char *group, const char *module)
{
    QString groupName = QLatin1String(group);
    QString moduleName = QLatin1String(module);
    return NetInfoConfigParse::GetInstance()->GetSettingsFromXML(groupName, moduleName, m_items);
}

void tst_NetInfoConfigParse::theInstanceIsSingleUntilDestroyed()
{
    NetInfoConfigParse *const first = NetInfoConfigParse::GetInstance();
    QCOMPARE(NetInfoConfigParse::GetInstance(), first);
    first->m_limitCfgs.append(NetInfoLimitCfg());
    NetInfoConfigParse::OnDestroy();
    NetInfoConfigParse::OnDestroy();
    QVERIFY(NetInfoConfigParse::GetInstance()->m_limitCfgs.isEmpty());
}

void tst_NetInfoConfigParse::itemsOfTheModuleAreRead()
{
    m_folder->writeConfig(PluginFolder::document(
        "<function><item name=\"SHOWGRAPH\" value=\"true\"/></function>"
        "<fluxunit><item name=\"B\" value=\"1\" type=\"2\" langResID=\"IDS_B\"/></fluxunit>"));
    QCOMPARE(read(), 0);
    QCOMPARE(int(m_items.size()), 2);
    QCOMPARE(m_items.at(0).section, QStringLiteral("function"));
    QCOMPARE(m_items.at(0).name, QStringLiteral("SHOWGRAPH"));
    QCOMPARE(m_items.at(0).value, QStringLiteral("true"));
    QCOMPARE(m_items.at(0).type, QString());
    QCOMPARE(m_items.at(1).section, QStringLiteral("fluxunit"));
    QCOMPARE(m_items.at(1).value, QStringLiteral("1"));
    QCOMPARE(m_items.at(1).type, QStringLiteral("2"));
    QCOMPARE(m_items.at(1).langResID, QStringLiteral("IDS_B"));
    QCOMPARE(m_items.at(1).module, QStringLiteral("common"));
}

void tst_NetInfoConfigParse::aMissingFileIs3()
{
    m_log->expectWarning(QStringLiteral("File ") + m_folder->configPath()
                         + QStringLiteral(" does not exist"));
    QCOMPARE(read(), 3);
    QCOMPARE(m_log->takeLines().last(),
             QStringLiteral("<time> : ../../src/NetInfoUIExPlugin/NetInfoConfigParse.cpp: "
                            "GetSettingsFromXML: Exited"));
}

void tst_NetInfoConfigParse::aFileThatCannotBeOpenedIs25()
{
    QVERIFY(QDir().mkdir(m_folder->configPath())); // a folder: no user can open it as a file
    m_log->expectWarning(QStringLiteral("Error open file: "));
    QCOMPARE(read(), 25);
    const QStringList lines = m_log->takeLines();
    QCOMPARE(lines.at(1), QStringLiteral("Error open file: "));
    QVERIFY(lines.at(2).endsWith(QLatin1String("GetSettingsFromXML: Exited")));
}

void tst_NetInfoConfigParse::anotherRootIsReadToItsEnd()
{
    m_folder->writeConfig("<other><group name=\"customize\"><module name=\"common\"><function>"
                          "<item name=\"A\" value=\"true\"/></function></module></group></other>");
    QCOMPARE(read(), 0);
    QVERIFY(m_items.isEmpty());
}

void tst_NetInfoConfigParse::anItemBeforeAnySectionHasNone()
{
    m_folder->writeConfig(PluginFolder::document("<item name=\"A\" value=\"x\"/>"));
    QCOMPARE(read(), 0);
    QCOMPARE(int(m_items.size()), 1);
    QCOMPARE(m_items.at(0).section, QString());
    QCOMPARE(m_items.at(0).name, QStringLiteral("A"));
}

void tst_NetInfoConfigParse::namesOfGroupAndModuleAreExact_data()
{
    QTest::addColumn<QByteArray>("group");
    QTest::addColumn<QByteArray>("module");
    QTest::addColumn<int>("count");
    QTest::newRow("both as written") << QByteArray("customize") << QByteArray("common") << 1;
    QTest::newRow("another module") << QByteArray("customize") << QByteArray("operator") << 0;
    QTest::newRow("module in capitals") << QByteArray("customize") << QByteArray("Common") << 0;
    QTest::newRow("group in capitals") << QByteArray("Customize") << QByteArray("common") << 0;
    QTest::newRow("no names") << QByteArray() << QByteArray() << 0;
}

void tst_NetInfoConfigParse::namesOfGroupAndModuleAreExact()
{
    QFETCH(QByteArray, group);
    QFETCH(QByteArray, module);
    m_folder->writeConfig(PluginFolder::document("<function><item name=\"A\"/></function>"));
    QCOMPARE(read(group.constData(), module.constData()), 0);
    QTEST(int(m_items.size()), "count");
}

void tst_NetInfoConfigParse::aSecondGroupKeepsTheModule()
{
    m_folder->writeConfig("<velqdoc><group name=\"other\"><module name=\"common\"/></group>"
                          "<group name=\"customize\"><function><item name=\"A\"/></function>"
                          "</group></velqdoc>");
    QCOMPARE(read(), 0);
    QCOMPARE(int(m_items.size()), 1);
    QCOMPARE(m_items.at(0).module, QStringLiteral("common"));
}

void tst_NetInfoConfigParse::endTagsResetNothing()
{
    m_folder->writeConfig(
        PluginFolder::document("<format/></module></group><item name=\"A\"/><group><module>"));
    QCOMPARE(read(), 0);
    QCOMPARE(int(m_items.size()), 1);
    QCOMPARE(m_items.at(0).section, QStringLiteral("format"));
}

void tst_NetInfoConfigParse::unknownElementsAreIgnored()
{
    m_folder->writeConfig(PluginFolder::document(
        "<function><limit/><color/><Item name=\"B\"/>text<!-- <item/> --><item name=\"A\"/>"
        "</function>"));
    QCOMPARE(read(), 0);
    QCOMPARE(int(m_items.size()), 1);
    QCOMPARE(m_items.at(0).section, QStringLiteral("function"));
}

void tst_NetInfoConfigParse::aMissingColourComponentIsZero()
{
    m_folder->writeConfig(PluginFolder::document(
        "<Color><item name=\"A\" R=\"255\" G=\"0\"/><item name=\"B\" R=\"x\" G=\"12\" B=\"0x7\"/>"
        "</Color>"));
    QCOMPARE(read(), 0);
    QVERIFY(m_items.isEmpty());
    const QVector<NetInfoProgressColor> colors
        = NetInfoConfigParse::GetInstance()->m_progressColors;
    QCOMPARE(int(colors.size()), 2);
    QCOMPARE(colors.at(0).section, QStringLiteral("Color"));
    QCOMPARE(colors.at(0).name, QStringLiteral("A"));
    QCOMPARE(colors.at(0).color, QColor(255, 0, 0, 255));
    QCOMPARE(colors.at(1).color, QColor(0, 12, 0, 255));
}

void tst_NetInfoConfigParse::aColourOutOfRangeIsInvalid()
{
    m_folder->writeConfig(
        PluginFolder::document("<Color><item name=\"A\" R=\"256\" G=\"0\" B=\"0\"/></Color>"));
    m_log->expectWarning(QStringLiteral("out of range")); // Qt's own
    QCOMPARE(read(), 0);
    QVERIFY(!NetInfoConfigParse::GetInstance()->m_progressColors.at(0).color.isValid());
}

void tst_NetInfoConfigParse::limitsAndColoursComeFromEveryModule()
{
    m_folder->writeConfig(
        "<velqdoc><group name=\"x\"><module name=\"y\">"
        "<Limit><item name=\"L\" value=\"80\" value1=\"20\"/></Limit>"
        "<Color><item name=\"C\" R=\"1\" G=\"2\" B=\"3\"/></Color></module></group></velqdoc>");
    QCOMPARE(read(), 0);
    QVERIFY(m_items.isEmpty());
    const NetInfoConfigParse *const parse = NetInfoConfigParse::GetInstance();
    QCOMPARE(int(parse->m_limitCfgs.size()), 1);
    QCOMPARE(parse->m_limitCfgs.at(0).section, QStringLiteral("Limit"));
    QCOMPARE(parse->m_limitCfgs.at(0).name, QStringLiteral("L"));
    QCOMPARE(parse->m_limitCfgs.at(0).value, QStringLiteral("80"));
    QCOMPARE(parse->m_limitCfgs.at(0).value1, QStringLiteral("20"));
    QCOMPARE(parse->m_progressColors.at(0).color, QColor(1, 2, 3));
}

void tst_NetInfoConfigParse::limitsAndColoursAreAddedAtEachCall()
{
    m_folder->writeConfig(PluginFolder::document(
        "<Limit><item name=\"L\"/></Limit><Color><item name=\"C\"/></Color>"));
    QCOMPARE(read(), 0);
    QCOMPARE(read("customize", "operator"), 0);
    QCOMPARE(int(NetInfoConfigParse::GetInstance()->m_limitCfgs.size()), 2);
    QCOMPARE(int(NetInfoConfigParse::GetInstance()->m_progressColors.size()), 2);
}

void tst_NetInfoConfigParse::brokenXmlKeepsTheItemsBefore()
{
    m_folder->writeConfig("<velqdoc><group name=\"customize\"><module name=\"common\">"
                          "<function><item name=\"A\"/><item name=\"B\"/></wrong>");
    m_log->expectWarning(QStringLiteral("GroupInfo Read Error "));
    m_log->expectWarning(QStringLiteral(": Read Error: n"));
    QCOMPARE(read(), 6);
    QCOMPARE(int(m_items.size()), 2);
    const QStringList lines = m_log->takeLines();
    QCOMPARE(lines.at(1),
             QStringLiteral("GroupInfo Read Error <time> : "
                            "../../src/NetInfoUIExPlugin/NetInfoConfigParse.cpp: readGroupInfo:"));
    QCOMPARE(lines.at(2),
             QStringLiteral("<time> : ../../src/NetInfoUIExPlugin/NetInfoConfigParse.cpp: "
                            "GetSettingsFromXML: Read Error: n"));
}

void tst_NetInfoConfigParse::anErrorRightAfterTheRootIs6()
{
    m_folder->writeConfig("<velqdoc></wrong>");
    m_log->expectWarning(QStringLiteral(": Read Error: n"));
    QCOMPARE(read(), 6);
    QVERIFY(m_items.isEmpty());
}

void tst_NetInfoConfigParse::anErrorBeforeTheRootIs6()
{
    m_folder->writeConfig("");
    m_log->expectWarning(QStringLiteral(": Read Error: n"));
    QCOMPARE(read(), 6);
}

void tst_NetInfoConfigParse::hostileXmlKeepsTheItemsBefore_data()
{
    QTest::addColumn<QByteArray>("head");
    QTest::addColumn<QByteArray>("rest");
    QByteArray entities = "<!DOCTYPE velqdoc [<!ENTITY e0 \"aaaaaaaaaa\">";
    for (int i = 1; i < 30; ++i) {
        const QByteArray inner = "&e" + QByteArray::number(i - 1) + ";";
        entities += "<!ENTITY e" + QByteArray::number(i) + " \"" + inner + inner + "\">";
    }
    const QByteArray none;
    QTest::newRow("entities that grow without end") << entities + "]>" << QByteArray("&e29;");
    QTest::newRow("an entity that nobody declared") << none << QByteArray("<item name=\"&x;\"/>");
    QTest::newRow("an attribute given twice")
        << none << QByteArray("<item name=\"B\" name=\"C\"/>");
    QTest::newRow("a prefix that nobody declared") << none << QByteArray("<a:b/>");
    QTest::newRow("a zero byte") << none << QByteArray("a\0b", 3);
    QTest::newRow("a hundred thousand open elements") << none << QByteArray("<a>").repeated(100000);
}

void tst_NetInfoConfigParse::hostileXmlKeepsTheItemsBefore()
{
    QFETCH(QByteArray, head);
    QFETCH(QByteArray, rest);
    m_folder->writeConfig(head + PluginFolder::document("<item name=\"A\"/>" + rest));
    m_log->expectWarning(QStringLiteral("GroupInfo Read Error "));
    m_log->expectWarning(QStringLiteral(": Read Error: n"));
    QCOMPARE(read(), 6);
    QCOMPARE(int(m_items.size()), 1);
    QCOMPARE(m_items.at(0).name, QStringLiteral("A"));
}

void tst_NetInfoConfigParse::bytesThatAreNoUtf8Are6()
{
    m_folder->writeConfig(PluginFolder::document("<x a=\"\xff\xfe\"/>"));
    QCOMPARE(read(), 6);
    const QStringList problems = m_log->takeProblems(); // one or two, as the bytes are met
    QVERIFY(problems.last().endsWith(QLatin1String(": Read Error: n")));
}

void tst_NetInfoConfigParse::outIsEmptiedFirst()
{
    m_items.resize(3);
    m_log->expectWarning(QStringLiteral("does not exist"));
    QCOMPARE(read(), 3);
    QVERIFY(m_items.isEmpty());
}

void tst_NetInfoConfigParse::theTraceIsComplete()
{
    m_folder->writeConfig(PluginFolder::document(""));
    m_log->takeLines();
    QCOMPARE(read(), 0);
    const QString head
        = QStringLiteral("<time> : ../../src/NetInfoUIExPlugin/NetInfoConfigParse.cpp: ");
    QCOMPARE(m_log->takeLines(),
             QStringList({ head + QStringLiteral("GetSettingsFromXML: Entered"),
                           head + QStringLiteral("GetSettingsFromXML: Exited") }));
}

void tst_NetInfoConfigParse::theShippedFileTruncatedAnywhereIsHarmless()
{
    m_folder->useShippedFiles();
    QFile file(m_folder->configPath());
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray whole = file.readAll();
    file.close();
    QFile::remove(m_folder->configPath());
    QCOMPARE(whole.trimmed().right(10), QByteArray("</velqdoc>"));
    const int end = int(whole.lastIndexOf('>')) + 1; // the document is whole from here on

    int before = 0;
    for (int size = 0; size <= whole.size(); ++size) {
        m_folder->writeConfig(whole.left(size));
        const int result = read();
        QCOMPARE(result, size < end ? 6 : 0);
        QVERIFY(m_items.size() >= before); // items never get lost by reading further
        before = int(m_items.size());
    }
    QVERIFY(before > 13);
    QVERIFY(m_log->takeProblems().filter(QStringLiteral("Read Error")).size() >= end);
}

void tst_NetInfoConfigParse::theShippedFileHasEverySwitch()
{
    m_folder->useShippedFiles();
    QCOMPARE(read(), 0);
    QStringList on;
    for (const NetInfoConfig &item : std::as_const(m_items)) {
        if (item.section == QLatin1String("function") && item.value == QLatin1String("true"))
            on << item.name;
    }
    QCOMPARE(on, PluginFolder::allSwitches());
}

void tst_NetInfoConfigParse::theShippedUnitsReachTerabytes()
{
    m_folder->useShippedFiles();
    QCOMPARE(read(), 0);
    for (const char *section : { "fluxunit", "speedunit" }) {
        qulonglong largest = 0;
        for (const NetInfoConfig &item : std::as_const(m_items)) {
            if (item.section != QLatin1String(section))
                continue;
            QCOMPARE(item.value, item.type);
            QVERIFY(item.type.toULongLong() > largest);
            QVERIFY(item.langResID.startsWith(QLatin1String("IDS_UNIT_")));
            largest = item.type.toULongLong();
        }
        QCOMPARE(largest, Q_UINT64_C(1) << 40);
    }
}

void tst_NetInfoConfigParse::theShippedLimitsAndColours()
{
    m_folder->useShippedFiles();
    QCOMPARE(read(), 0);
    const NetInfoConfigParse *const parse = NetInfoConfigParse::GetInstance();
    QCOMPARE(int(parse->m_limitCfgs.size()), 2);
    QCOMPARE(parse->m_limitCfgs.at(0).name, QStringLiteral("DATAVOLUMELIMIT"));
    QCOMPARE(parse->m_limitCfgs.at(0).value, QStringLiteral("80"));
    QCOMPARE(parse->m_limitCfgs.at(0).value1, QStringLiteral("0"));
    QCOMPARE(parse->m_limitCfgs.at(1).name, QStringLiteral("TIMEVOLUMELIMIT"));
    QCOMPARE(parse->m_limitCfgs.at(1).value, QStringLiteral("0"));
    QCOMPARE(parse->m_limitCfgs.at(1).value1, QStringLiteral("1800"));
    QStringList names;
    for (const NetInfoProgressColor &color : parse->m_progressColors) {
        names << color.name;
        QVERIFY(color.color.isValid());
    }
    QCOMPARE(names, QStringList({ "NoWarningColor", "BeforeWarningColor", "ReachedWarningColor" }));
}

QTEST_GUILESS_MAIN(tst_NetInfoConfigParse)
#include "tst_netinfoconfigparse.moc"
