#include <ConsoleReport.h>

#include <Languages.h>

#include <QLocale>
#include <QtTest>

#include <limits>

#include "TestLog.h"

namespace {

LiveSample sample()
{
    LiveSample result;
    result.connected = true;
    result.interfaceName = "wwan0";
    result.upload = 1536;
    result.download = 5368709120ULL;
    result.uploadSpeed = 100;
    result.downloadSpeed = 2048;
    result.seconds = 3725;
    result.counters = VELQ_Counters { 1000, 500, 1000 + 5368709120ULL, 500 + 1536 };
    return result;
}

} // namespace

class tst_ConsoleReport : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();
    void aLineHoldsEveryFigure();
    void linesAlignWithTheHeading();
    void whyNothingIsCountedIsSaidOnce();
    void aMissingRouteIsSaid();
    void theSummaryComparesWithTheKernel();
    void aDifferenceIsSaid_data();
    void aDifferenceIsSaid();
    void countersThatPassTheirEndAgree();
    void withoutCountersThereIsNothingToCompare();
    void withoutSamplesTheSummarySaysSo();
    void aDemonstrationIsNoKernel();
    void samplesAreCounted();

private:
    QScopedPointer<Languages> m_languages;
    QScopedPointer<TestLog> m_log;
};

void tst_ConsoleReport::initTestCase()
{
    m_languages.reset(new Languages(NETINFO_LANG_BUILT));
    QVERIFY(m_languages->hasEnglish());
}

void tst_ConsoleReport::init()
{
    QLocale::setDefault(QLocale::c());
    m_log.reset(new TestLog);
}

void tst_ConsoleReport::cleanup()
{
    const QStringList problems = m_log->takeProblems();
    m_log.reset();
    QCOMPARE(problems, QStringList());
}

void tst_ConsoleReport::aLineHoldsEveryFigure()
{
    ConsoleReport report(false);
    const QStringList lines = report.lines(sample());
    QCOMPARE(lines.size(), 1);
    QCOMPARE(
        lines.constFirst().simplified(),
        QString("wwan0 01:02:05 100.00 B/s 2.00 KB/s 1536 B (1.50 KB) 5368709120 B (5.00 GB)"));
}

void tst_ConsoleReport::linesAlignWithTheHeading()
{
    ConsoleReport report(false);
    LiveSample small = sample();
    small.upload = small.download = 0;
    small.uploadSpeed = small.downloadSpeed = 0;
    small.seconds = 0;
    const QString first = report.lines(small).constFirst();
    QCOMPARE(first.size(), ConsoleReport::heading().size());
    const QString second = report.lines(sample()).constFirst();
    QCOMPARE(second.size(), ConsoleReport::heading().size());
    QVERIFY(first.startsWith("wwan0 "));
    QVERIFY(first.contains(" 00:00:00 "));
}

void tst_ConsoleReport::whyNothingIsCountedIsSaidOnce()
{
    ConsoleReport report(false);
    LiveSample away;
    away.interfaceName = "wwan0";
    QCOMPARE(report.lines(away).size(), 2);
    QCOMPARE(report.lines(away).size(), 1);
    QCOMPARE(report.lines(sample()).size(), 1);
    const QStringList again = report.lines(away);
    QCOMPARE(again.size(), 2);
    QCOMPARE(again.constFirst(), QString("Interface wwan0 is not connected; nothing is counted."));
}

void tst_ConsoleReport::aMissingRouteIsSaid()
{
    ConsoleReport report(false);
    const QStringList lines = report.lines(LiveSample());
    QCOMPARE(lines.size(), 2);
    QCOMPARE(lines.at(0), QString("No interface carries a default route; nothing is counted."));
    QVERIFY(lines.at(1).startsWith("- "));
    QVERIFY(lines.at(1).contains(" 0 B ("));
}

void tst_ConsoleReport::theSummaryComparesWithTheKernel()
{
    ConsoleReport report(false);
    static_cast<void>(report.lines(sample()));
    QCOMPARE(report.summary(),
             QStringList({ "Kernel counters of wwan0 over the same 3725 s: uploaded 1536 B, "
                           "downloaded 5368709120 B.",
                           "The live figures are equal to these counters." }));
}

void tst_ConsoleReport::aDifferenceIsSaid_data()
{
    QTest::addColumn<quint64>("upload");
    QTest::addColumn<quint64>("download");
    QTest::newRow("a byte of the upload") << quint64(1537) << quint64(5368709120ULL);
    QTest::newRow("a byte of the download") << quint64(1536) << quint64(5368709119ULL);
}

void tst_ConsoleReport::aDifferenceIsSaid()
{
    QFETCH(quint64, upload);
    QFETCH(quint64, download);
    LiveSample wrong = sample();
    wrong.upload = upload;
    wrong.download = download;
    QVERIFY(!wrong.agrees());
    ConsoleReport report(false);
    static_cast<void>(report.lines(wrong));
    QCOMPARE(report.summary().constLast(),
             QStringLiteral("The live figures DIFFER: uploaded %1 B, downloaded %2 B.")
                 .arg(upload)
                 .arg(download));
}

void tst_ConsoleReport::countersThatPassTheirEndAgree()
{
    LiveSample wrapped = sample();
    const unsigned long long end = std::numeric_limits<unsigned long long>::max();
    wrapped.counters = VELQ_Counters { end - 9, end, 90, 1535 };
    wrapped.download = 100;
    QVERIFY(wrapped.agrees());
}

void tst_ConsoleReport::withoutCountersThereIsNothingToCompare()
{
    LiveSample none = sample();
    none.counters.reset();
    QVERIFY(!none.agrees());
    ConsoleReport report(false);
    static_cast<void>(report.lines(none));
    QCOMPARE(report.summary(), QStringList("There are no kernel counters to compare with."));
}

void tst_ConsoleReport::withoutSamplesTheSummarySaysSo()
{
    QCOMPARE(ConsoleReport(false).summary(), QStringList("No figures came within this time."));
}

void tst_ConsoleReport::aDemonstrationIsNoKernel()
{
    ConsoleReport report(true);
    static_cast<void>(report.lines(sample()));
    QVERIFY(report.summary().constFirst().startsWith("Scripted counters of wwan0 "));
}

void tst_ConsoleReport::samplesAreCounted()
{
    ConsoleReport report(false);
    QCOMPARE(report.count(), 0);
    static_cast<void>(report.lines(sample()));
    static_cast<void>(report.lines(LiveSample()));
    QCOMPARE(report.count(), 2);
}

QTEST_GUILESS_MAIN(tst_ConsoleReport)
#include "tst_consolereport.moc"
