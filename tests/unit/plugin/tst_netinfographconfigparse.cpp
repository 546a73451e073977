#include "NetInfoGraphConfigParse.h"

#include <QColor>
#include <QDir>
#include <QFile>
#include <QtTest>
#include <QXmlStreamReader>

#include <cmath>
#include <utility>

#include "FakeHost.h"
#include "PluginFolder.h"
#include "TestLog.h"

class tst_NetInfoGraphConfigParse : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void theInstanceIsSingleUntilDestroyed();
    void entriesAreReadInTheirOrder();
    void aMissingAttributeIsEmpty();
    void nothingIsConverted();
    void aSecondCallDoublesEveryEntry();
    void aMissingFileIs3();
    void aFileThatCannotBeOpenedIs25();
    void anotherRootHasNoEntries();
    void lowerCaseElementsAreIgnored();
    void nestingIsNotLookedAt();
    void theRootCarriesNoEntryItself();
    void brokenXmlKeepsTheEntriesBefore();
    void anErrorRightAfterTheRootIs6();
    void anErrorBeforeTheRootIs6_data();
    void anErrorBeforeTheRootIs6();
    void anEntityBombIsRefused();
    void hostileXmlKeepsTheEntriesBefore_data();
    void hostileXmlKeepsTheEntriesBefore();
    void theTraceIsComplete();
    void theScannerReadsToTheEndOfADocument();
    void theShippedFileTruncatedAnywhereIsHarmless();
    void theShippedFileHasWhatTheGraphTakes();
    void theShippedColoursDiffer();

private:
    int read();
    void expectReadError(bool inScanner);

    QScopedPointer<PluginFolder> m_folder;
    QScopedPointer<TestLog> m_log;
    QVector<NetInfoColourConfig> m_colours;
    QVector<NetInfoFontConfig> m_fonts;
};

namespace {

QString sourcePath()
{
    return QStringLiteral("../../src/NetInfoUIExPlugin/NetInfoGraphConfigParse.cpp");
}

//! Relative luminance of \a colour, 0 to 1 (sRGB, IEC 61966-2-1).
double luminance(const QColor &colour)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF())
        + 0.0722 * linear(colour.blueF());
}

//! Contrast ratio of two colours, 1 to 21 (WCAG 2.1).
double contrast(const QColor &one, const QColor &other)
{
    const double a = luminance(one) + 0.05;
    const double b = luminance(other) + 0.05;
    return a > b ? a / b : b / a;
}

} // namespace

void tst_NetInfoGraphConfigParse::init()
{
    resetFakeHost();
    m_folder.reset(new PluginFolder);
    m_log.reset(new TestLog);
    m_colours.clear();
    m_fonts.clear();
}

void tst_NetInfoGraphConfigParse::cleanup()
{
    NetInfoGraphConfigParse::OnDestroy();
    const QStringList problems = m_log->takeProblems();
    m_log.reset();
    QVERIFY2(problems.isEmpty(), qPrintable(problems.join(QLatin1Char(10))));
}

int tst_NetInfoGraphConfigParse::read()
{
    return NetInfoGraphConfigParse::GetInstance()->GetSettingsFromXML(m_colours, m_fonts);
}

void tst_NetInfoGraphConfigParse::expectReadError(bool inScanner)
{
    if (inScanner)
        m_log->expectWarning(sourcePath() + QStringLiteral(": readGroupInfo:"));
    m_log->expectWarning(sourcePath() + QStringLiteral(": GetSettingsFromXML: Read Fle Error: n"));
}

void tst_NetInfoGraphConfigParse::theInstanceIsSingleUntilDestroyed()
{
    NetInfoGraphConfigParse *const first = NetInfoGraphConfigParse::GetInstance();
    QVERIFY(first);
    QCOMPARE(NetInfoGraphConfigParse::GetInstance(), first);
    NetInfoGraphConfigParse::OnDestroy();
    NetInfoGraphConfigParse::OnDestroy();
    QVERIFY(NetInfoGraphConfigParse::GetInstance());
}

void tst_NetInfoGraphConfigParse::entriesAreReadInTheirOrder()
{
    m_folder->writeProfile("<TrendsCtrlProfile>"
                           "<Color id=\"a\" color=\"#FF000001\"/>"
                           "<Font id=\"f\" family=\"Sans\" style=\"bold\" size=\"9\"/>"
                           "<Color id=\"b\" color=\"#FF000002\"/>"
                           "</TrendsCtrlProfile>");
    QCOMPARE(read(), 0);
    QCOMPARE(int(m_colours.size()), 2);
    QCOMPARE(m_colours.at(0).id, QStringLiteral("a"));
    QCOMPARE(m_colours.at(0).color, QStringLiteral("#FF000001"));
    QCOMPARE(m_colours.at(1).id, QStringLiteral("b"));
    QCOMPARE(m_colours.at(1).color, QStringLiteral("#FF000002"));
    QCOMPARE(int(m_fonts.size()), 1);
    QCOMPARE(m_fonts.at(0).id, QStringLiteral("f"));
    QCOMPARE(m_fonts.at(0).family, QStringLiteral("Sans"));
    QCOMPARE(m_fonts.at(0).style, QStringLiteral("bold"));
    QCOMPARE(m_fonts.at(0).size, QStringLiteral("9"));
}

void tst_NetInfoGraphConfigParse::aMissingAttributeIsEmpty()
{
    m_folder->writeProfile("<TrendsCtrlProfile><Color Color=\"#FF000001\"/><Font Size=\"9\"/>"
                           "</TrendsCtrlProfile>");
    QCOMPARE(read(), 0);
    QCOMPARE(int(m_colours.size()), 1);
    QCOMPARE(m_colours.at(0).id, QString());
    QCOMPARE(m_colours.at(0).color, QString());
    QCOMPARE(int(m_fonts.size()), 1);
    QCOMPARE(m_fonts.at(0).family, QString());
    QCOMPARE(m_fonts.at(0).style, QString());
    QCOMPARE(m_fonts.at(0).size, QString());
}

void tst_NetInfoGraphConfigParse::nothingIsConverted()
{
    m_folder->writeProfile("<TrendsCtrlProfile><Color color=\" no colour \"/>"
                           "<Font size=\"-1e9x\"/></TrendsCtrlProfile>");
    QCOMPARE(read(), 0);
    QCOMPARE(m_colours.at(0).color, QStringLiteral(" no colour "));
    QCOMPARE(m_fonts.at(0).size, QStringLiteral("-1e9x"));
}

void tst_NetInfoGraphConfigParse::aSecondCallDoublesEveryEntry()
{
    QCOMPARE(read(), 0);
    QCOMPARE(int(m_colours.size()), 5);
    QCOMPARE(int(m_fonts.size()), 4);
    QCOMPARE(read(), 0);
    QCOMPARE(int(m_colours.size()), 10);
    QCOMPARE(int(m_fonts.size()), 8);
    QCOMPARE(m_colours.at(5).color, m_colours.at(0).color);
}

void tst_NetInfoGraphConfigParse::aMissingFileIs3()
{
    QVERIFY(QFile::remove(m_folder->profilePath()));
    m_log->expectWarning(QStringLiteral("File ") + m_folder->profilePath()
                         + QStringLiteral(" does not exist"));
    QCOMPARE(read(), 3);
    QCOMPARE(m_log->takeLines().last(),
             QStringLiteral("<time> : ") + sourcePath()
                 + QStringLiteral(": GetSettingsFromXML: Exit"));
}

void tst_NetInfoGraphConfigParse::aFileThatCannotBeOpenedIs25()
{
    QVERIFY(QFile::remove(m_folder->profilePath()));
    QVERIFY(QDir().mkdir(m_folder->profilePath())); // a folder: no user can open it as a file
    m_log->expectWarning(QStringLiteral("open file Error : "));
    QCOMPARE(read(), 25);
    const QStringList lines = m_log->takeLines();
    QCOMPARE(lines.at(1), QStringLiteral("open file Error : "));
    QVERIFY(lines.at(2).endsWith(QLatin1String("GetSettingsFromXML: Exit")));
}

void tst_NetInfoGraphConfigParse::anotherRootHasNoEntries()
{
    m_folder->writeProfile("<trendsCtrlProfile><Color color=\"#FF000001\"/></trendsCtrlProfile>");
    QCOMPARE(read(), 0);
    QVERIFY(m_colours.isEmpty());
}

void tst_NetInfoGraphConfigParse::lowerCaseElementsAreIgnored()
{
    m_folder->writeProfile("<TrendsCtrlProfile><color color=\"#FF000001\"/><font size=\"1\"/>"
                           "</TrendsCtrlProfile>");
    QCOMPARE(read(), 0);
    QVERIFY(m_colours.isEmpty());
    QVERIFY(m_fonts.isEmpty());
}

void tst_NetInfoGraphConfigParse::nestingIsNotLookedAt()
{
    m_folder->writeProfile(
        "<any><TrendsCtrlProfile><Font size=\"1\"><Color color=\"a\"/>"
        "text<!-- note --></Font></TrendsCtrlProfile><Color color=\"b\"/></any>");
    QCOMPARE(read(), 0);
    QCOMPARE(int(m_fonts.size()), 1);
    QCOMPARE(int(m_colours.size()), 2);
    QCOMPARE(m_colours.at(1).color, QStringLiteral("b"));
}

void tst_NetInfoGraphConfigParse::theRootCarriesNoEntryItself()
{
    m_folder->writeProfile("<Color color=\"a\"><TrendsCtrlProfile/></Color>");
    QCOMPARE(read(), 0);
    QVERIFY(m_colours.isEmpty());
}

void tst_NetInfoGraphConfigParse::brokenXmlKeepsTheEntriesBefore()
{
    m_folder->writeProfile("<TrendsCtrlProfile><Color color=\"a\"/><Color color=\"b\"><Font");
    expectReadError(true);
    QCOMPARE(read(), 6);
    QCOMPARE(int(m_colours.size()), 2);
    QVERIFY(m_fonts.isEmpty());
    const QString source = QStringLiteral("<time> : ") + sourcePath();
    QCOMPARE(m_log->takeLines().mid(2),
             QStringList() << QStringLiteral("GroupInfo Read Error ") + source
                     + QStringLiteral(": readGroupInfo:")
                           << source + QStringLiteral(": readGroupInfo: Exit")
                           << source + QStringLiteral(": GetSettingsFromXML: Read Fle Error: n")
                           << source + QStringLiteral(": GetSettingsFromXML: Exit"));
}

void tst_NetInfoGraphConfigParse::anErrorRightAfterTheRootIs6()
{
    m_folder->writeProfile("<TrendsCtrlProfile></other>");
    expectReadError(false);
    QCOMPARE(read(), 6);
}

void tst_NetInfoGraphConfigParse::anErrorBeforeTheRootIs6_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no XML") << QByteArray("colours: none");
    QTest::newRow("zero bytes") << QByteArray(100, '\0');
    QTest::newRow("no UTF-8") << QByteArray("<TrendsCtrlProfile\xff\xfe/>");
}

void tst_NetInfoGraphConfigParse::anErrorBeforeTheRootIs6()
{
    QFETCH(QByteArray, xml);
    m_folder->writeProfile(xml);
    expectReadError(false);
    QCOMPARE(read(), 6);
    QVERIFY(m_colours.isEmpty());
}

void tst_NetInfoGraphConfigParse::anEntityBombIsRefused()
{
    QByteArray bomb = "<!DOCTYPE TrendsCtrlProfile [<!ENTITY e0 \"boom\">";
    for (int i = 1; i < 12; ++i) {
        const QByteArray inner = "&e" + QByteArray::number(i - 1) + ";";
        bomb += "<!ENTITY e" + QByteArray::number(i) + " \"" + inner.repeated(10) + "\">";
    }
    m_folder->writeProfile(bomb + "]><TrendsCtrlProfile>&e11;</TrendsCtrlProfile>");
    expectReadError(false);
    QCOMPARE(read(), 6);
    QVERIFY(m_colours.isEmpty());
}

void tst_NetInfoGraphConfigParse::hostileXmlKeepsTheEntriesBefore_data()
{
    QTest::addColumn<QByteArray>("rest");
    QTest::newRow("an unknown entity") << QByteArray("<Color color=\"&bomb;\"/>");
    QTest::newRow("an attribute twice") << QByteArray("<Color color=\"b\" color=\"c\"/>");
    QTest::newRow("a deep tree that never ends") << QByteArray("<d>").repeated(20000);
    QTest::newRow("a second root") << QByteArray("</TrendsCtrlProfile><Color color=\"b\"/>");
}

void tst_NetInfoGraphConfigParse::hostileXmlKeepsTheEntriesBefore()
{
    QFETCH(QByteArray, rest);
    m_folder->writeProfile("<TrendsCtrlProfile><Color color=\"a\"/>" + rest);
    expectReadError(true);
    QCOMPARE(read(), 6);
    QCOMPARE(int(m_colours.size()), 1);
}

void tst_NetInfoGraphConfigParse::theTraceIsComplete()
{
    QCOMPARE(read(), 0);
    const QString head = QStringLiteral("<time> : ") + sourcePath();
    QCOMPARE(m_log->takeLines(),
             QStringList() << head + QStringLiteral(": GetSettingsFromXML: Entered")
                           << head + QStringLiteral(": readGroupInfo: Entered")
                           << head + QStringLiteral(": readGroupInfo: Exit")
                           << head + QStringLiteral(": GetSettingsFromXML: Exit"));
}

void tst_NetInfoGraphConfigParse::theScannerReadsToTheEndOfADocument()
{
    QXmlStreamReader reader(QByteArray("<any><Color id=\"a\" color=\"b\"/></any>"));
    NetInfoGraphConfigParse *const parser = NetInfoGraphConfigParse::GetInstance();
    QCOMPARE(parser->readGroupInfo(reader, m_colours, m_fonts), 0);
    QVERIFY(reader.atEnd());
    QCOMPARE(int(m_colours.size()), 1);
}

void tst_NetInfoGraphConfigParse::theShippedFileTruncatedAnywhereIsHarmless()
{
    m_folder->useShippedFiles();
    QFile file(m_folder->profilePath());
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray whole = file.readAll();
    const int end = int(whole.lastIndexOf('>'));
    QVERIFY(end > 0);
    const int firstEntry = int(whole.indexOf("<Color"));
    for (int size = 0; size <= end; ++size) {
        m_folder->writeProfile(whole.left(size));
        expectReadError(size > firstEntry);
        QCOMPARE(read(), 6);
        m_log->dropLines();
        const QStringList problems = m_log->takeProblems();
        QVERIFY2(problems.isEmpty(), qPrintable(QString::number(size) + problems.join(QString())));
        QVERIFY(m_colours.size() <= 5);
        m_colours.clear();
        m_fonts.clear();
    }
}

void tst_NetInfoGraphConfigParse::theShippedFileHasWhatTheGraphTakes()
{
    m_folder->useShippedFiles();
    QCOMPARE(read(), 0);
    QCOMPARE(int(m_colours.size()), 5);
    QCOMPARE(int(m_fonts.size()), 4);
    for (const NetInfoColourConfig &entry : std::as_const(m_colours)) {
        QCOMPARE(int(entry.color.size()), 9);
        QVERIFY(QColor(QString(entry.color).remove(1, 2)).isValid());
    }
    QVERIFY(!m_fonts.at(3).family.isEmpty());
    QVERIFY(m_fonts.at(3).size.toInt() >= 9);
}

void tst_NetInfoGraphConfigParse::theShippedColoursDiffer()
{
    m_folder->useShippedFiles();
    QCOMPARE(read(), 0);
    const auto colour = [this](int position) {
        return QColor(QString(m_colours.at(position).color).remove(1, 2));
    };
    QVERIFY(contrast(colour(0), colour(4)) >= 7.0); // texts
    QVERIFY(contrast(colour(0), colour(2)) >= 4.5); // upload
    QVERIFY(contrast(colour(0), colour(3)) >= 4.5); // download
    // The curves differ in lightness and in blue, which red-green colour blindness leaves.
    QVERIFY(contrast(colour(2), colour(3)) >= 2.0);
    QVERIFY(qAbs(colour(2).blue() - colour(3).blue()) > 100);
}

QTEST_GUILESS_MAIN(tst_NetInfoGraphConfigParse)
#include "tst_netinfographconfigparse.moc"
