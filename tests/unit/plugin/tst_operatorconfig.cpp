// The statistics source's configuration: the common module and the operator's.

#include "NetInfoUILogic.h"

#include <QtTest>

#include "FakeHost.h"
#include "FakeSdk.h"
#include "PluginFolder.h"
#include "TestLog.h"

namespace {

const QString kSource = QStringLiteral("<time>: ../../src/NetInfoUIExPlugin/NetInfoUILogic.cpp: ");

} // namespace

class tst_OperatorConfig : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void theNameDecidesTheOperatorsModule_data();
    void theNameDecidesTheOperatorsModule();
    void readingAgainMergesTheKnownOperator_data();
    void readingAgainMergesTheKnownOperator();
    void aSectionIsReplacedOnlyByItsOwnKind();
    void withoutANameTheResultIsOne();
    void theResultIsThatOfTheLastFile();
    void withoutAReaderTheResultIsThirteen();
    void anUnterminatedNameIsCut();
    void theOperatorsUnitsReplaceTheCommonOnes();

private:
    QScopedPointer<PluginFolder> m_folder;
    QScopedPointer<TestLog> m_log;
};

void tst_OperatorConfig::init()
{
    resetFakeHost();
    resetFakeSdk();
    m_folder.reset(new PluginFolder);
    m_folder->writeSwitches(PluginFolder::allSwitches());
    m_log.reset(new TestLog);
}

void tst_OperatorConfig::cleanup()
{
    NetInfoUILogic::Destroy();
    const QStringList problems = m_log->takeProblems();
    m_log.reset();
    QVERIFY2(problems.isEmpty(), qPrintable(problems.join(QLatin1Char(10))));
}

void tst_OperatorConfig::theNameDecidesTheOperatorsModule_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("reads");
    QTest::addColumn<bool>("graph");
    QTest::newRow("common is read once") << QByteArray("common") << 1 << true;
    QTest::newRow("an empty name reads once") << QByteArray("") << 1 << true;
    QTest::newRow("the operator's switch wins") << QByteArray("tele") << 2 << false;
    QTest::newRow("an operator without a module changes nothing")
        << QByteArray("none") << 2 << true;
    QTest::newRow("names are case-sensitive") << QByteArray("Common") << 2 << true;
}

void tst_OperatorConfig::theNameDecidesTheOperatorsModule()
{
    QFETCH(QByteArray, name);
    QFETCH(int, reads);
    m_folder->writeConfig(PluginFolder::document(
        "<function><item name=\"SHOWGRAPH\" value=\"true\"/></function></module>"
        "<module name=\"tele\"><function><item name=\"SHOWGRAPH\" value=\"false\"/></function>"));
    fakeSdk().customizeName = name.constData();
    QCOMPARE(NetInfoUILogic::Instance()->Init(), 0);
    QTEST(NetInfoUILogic::Instance()->IsFunctionEnable(QStringLiteral("SHOWGRAPH")), "graph");
    QCOMPARE(int(m_log->takeLines().filter(QStringLiteral("GetSettingsFromXML: Entered")).size()),
             reads);
}

void tst_OperatorConfig::readingAgainMergesTheKnownOperator_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("nameResult");
    QTest::addColumn<int>("result");
    QTest::newRow("the name is common") << QByteArray("common") << 0 << 0;
    QTest::newRow("the name is empty") << QByteArray("") << 0 << 0;
    QTest::newRow("there is no name") << QByteArray("common") << 5 << 1;
}

void tst_OperatorConfig::readingAgainMergesTheKnownOperator()
{
    QFETCH(QByteArray, name);
    QFETCH(int, nameResult);
    m_folder->writeConfig(PluginFolder::document(
        "<function><item name=\"SHOWGRAPH\" value=\"true\"/></function>"
        "<fluxunit><item name=\"B\"/></fluxunit></module>"
        "<module name=\"tele\"><function><item name=\"SHOWGRAPH\" value=\"false\"/></function>"
        "<fluxunit><item name=\"Mo\"/></fluxunit>"));
    fakeSdk().customizeName = "tele";
    NetInfoUILogic *const source = NetInfoUILogic::Instance();
    QCOMPARE(source->Init(), 0);
    fakeSdk().customizeName = name.constData();
    fakeSdk().nameResult = nameResult;
    QTEST(source->getConfigData(), "result");
    QVERIFY(!source->IsFunctionEnable(QStringLiteral("SHOWGRAPH")));
    QVector<TagUnits> flux;
    source->GetFluxUnitData(flux);
    QCOMPARE(int(flux.size()), 1);
    QCOMPARE(flux.at(0).name, QStringLiteral("Mo"));
}

void tst_OperatorConfig::aSectionIsReplacedOnlyByItsOwnKind()
{
    NetInfoUILogic *const source = NetInfoUILogic::Instance();
    const QString flux = QStringLiteral("fluxunit");
    QVector<NetInfoConfig> items(2);
    items[0].section = flux;
    items[1].section = QStringLiteral("function");
    QVector<NetInfoConfig> custom(1);
    custom[0].section = QStringLiteral("speedunit");
    source->eraseCommonConfig(flux, items, custom);
    QCOMPARE(int(items.size()), 2);
    custom[0].section = flux;
    custom[0].name = QStringLiteral("Mo");
    source->eraseCommonConfig(flux, items, custom);
    QCOMPARE(int(items.size()), 2);
    QCOMPARE(items.at(0).section, QStringLiteral("function"));
    QCOMPARE(items.at(1).name, QStringLiteral("Mo"));
}

void tst_OperatorConfig::withoutANameTheResultIsOne()
{
    fakeSdk().nameResult = 5;
    QCOMPARE(NetInfoUILogic::Instance()->Init(), 1);
    QVERIFY(m_log->takeLines().contains("<======== " + kSource
                                        + "getConfigData: VELQ_DevSrv_GetCustomizeName failed"));
    QVERIFY(NetInfoUILogic::Instance()->IsFunctionEnable(QStringLiteral("STATISTICS")));
}

void tst_OperatorConfig::theResultIsThatOfTheLastFile()
{
    QVERIFY(QFile::remove(m_folder->configPath()));
    m_log->expectWarning(QStringLiteral("does not exist"));
    QCOMPARE(NetInfoUILogic::Instance()->Init(), 3);
    QVERIFY(!NetInfoUILogic::Instance()->IsFunctionEnable(QStringLiteral("STATISTICS")));
    QVector<TagUnits> units;
    NetInfoUILogic::Instance()->GetFluxUnitData(units);
    NetInfoUILogic::Instance()->GetSpeedUnitData(units);
    QVERIFY(units.isEmpty());
}

void tst_OperatorConfig::withoutAReaderTheResultIsThirteen()
{
    QCOMPARE(NetInfoUILogic::Instance()->getConfigData(), 13);
}

void tst_OperatorConfig::anUnterminatedNameIsCut()
{
    static const QByteArray longName(200, 'x');
    fakeSdk().customizeName = longName.constData(); // fills all 128 bytes
    m_folder->writeConfig("<velqdoc><group name=\"customize\"><module name=\"" + longName.left(128)
                          + "\"><function><item name=\"A\" value=\"true\"/>"
                            "</function></module></group></velqdoc>");
    QCOMPARE(NetInfoUILogic::Instance()->Init(), 0);
    QVERIFY(NetInfoUILogic::Instance()->IsFunctionEnable(QStringLiteral("A")));
}

void tst_OperatorConfig::theOperatorsUnitsReplaceTheCommonOnes()
{
    m_folder->writeConfig(PluginFolder::document(
        "<fluxunit><item name=\"B\" value=\"1\"/><item name=\"KB\" value=\"1024\"/></fluxunit>"
        "<speedunit><item name=\"Bps\" value=\"1\" type=\"1\" langResID=\"IDS\"/></speedunit>"
        "</module><module name=\"tele\"><fluxunit><item name=\"Mo\" value=\"1000000\"/>"
        "</fluxunit>"));
    fakeSdk().customizeName = "tele";
    NetInfoUILogic *const source = NetInfoUILogic::Instance();
    QCOMPARE(source->Init(), 0);
    m_log->takeLines();
    QVector<TagUnits> flux;
    source->GetFluxUnitData(flux);
    QCOMPARE(
        m_log->takeLines(),
        QStringList({ kSource + "GetFluxUnitData: Entered", kSource + "GetFluxUnitData: Exit" }));
    QCOMPARE(int(flux.size()), 1);
    QCOMPARE(flux.at(0).name, QStringLiteral("Mo"));
    QCOMPARE(flux.at(0).value, 1000000);
    QVector<TagUnits> speed;
    source->GetSpeedUnitData(speed);
    QCOMPARE(
        m_log->takeLines(),
        QStringList({ kSource + "GetSpeedUnitData: Entered", kSource + "GetSpeedUnitData: Exit" }));
    QCOMPARE(int(speed.size()), 1);
    QCOMPARE(speed.at(0).langResID, QStringLiteral("IDS"));
}

QTEST_GUILESS_MAIN(tst_OperatorConfig)
#include "tst_operatorconfig.moc"
