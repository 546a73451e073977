#include <QDir>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QtTest>

#include "LibraryFolder.h"
#include "TestLog.h"

namespace {

struct Run
{
    int status = -1;
    QString output;
    QString error;
    [[nodiscard]] QStringList lines() const
    {
        return output.split('\n', Qt::SkipEmptyParts);
    }
};

// Different colours in the picture: a blank one has one, a page of text has many.
int coloursIn(const QString &file)
{
    const QImage image(file);
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            colours.insert(image.pixel(x, y));
    }
    return int(colours.size());
}

} // namespace

// The program as a process, without a display unless it says otherwise.
class tst_Skylet : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void helpNeedsNoDisplay();
    void versionIsPrinted();
    void aBadLineLeavesWithTwo_data();
    void aBadLineLeavesWithTwo();
    void theDemonstrationPrintsFiguresAndAPicture();
    void thePictureGoesWhereItShall();
    void aPictureThatCannotBeWrittenIsAFailure();
    void aRealInterfaceEqualsTheKernel();
    void anInterfaceThatIsNotThereCountsNothing();
    void withoutAPluginItLeavesWithThree();
    void aBrokenPluginBesideAGoodOneIsOnlySaid();
    void theShippedPluginRuns();
    void theLanguageIsTaken();
    void traceLinesAppearOnlyWhenAsked();
    void theLoggingRulesOfTheEnvironmentWin();
    void aSignalEndsItInGoodOrder();
    void nothingIsRememberedWithoutADisplay();

private:
    [[nodiscard]] QProcessEnvironment environment() const;
    [[nodiscard]] Run run(const QStringList &arguments) const;
    [[nodiscard]] QString dataDir() const;

    QScopedPointer<LibraryFolder> m_library;
    QScopedPointer<QTemporaryDir> m_home;
    QScopedPointer<TestLog> m_log;
    QProcessEnvironment m_extra;
};

void tst_Skylet::init()
{
    m_library.reset(new LibraryFolder);
    m_library->addModule("page", "good");
    m_home.reset(new QTemporaryDir);
    m_extra = QProcessEnvironment();
    m_extra.insert("SKYLET_LIBRARY_PATH", m_library->path());
    m_log.reset(new TestLog);
}

void tst_Skylet::cleanup()
{
    const QStringList problems = m_log->takeProblems();
    m_log.reset();
    QCOMPARE(problems, QStringList());
}

QProcessEnvironment tst_Skylet::environment() const
{
    QProcessEnvironment result = QProcessEnvironment::systemEnvironment();
    for (const char *name : { "DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "QT_LOGGING_RULES",
                              "VELQ_INTERFACE", "VELQ_DATA_DIR", "SKYLET_LIBRARY_PATH" })
        result.remove(name);
    result.insert("HOME", m_home->path());
    result.insert("XDG_DATA_HOME", m_home->filePath("share"));
    result.insert(m_extra);
    return result;
}

QString tst_Skylet::dataDir() const
{
    return m_home->filePath("data");
}

Run tst_Skylet::run(const QStringList &arguments) const
{
    QProcess process;
    process.setProcessEnvironment(environment());
    process.start(NETINFO_SKYLET, arguments);
    Run result;
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit)
        return result;
    result.status = process.exitCode();
    result.output = QString::fromUtf8(process.readAllStandardOutput());
    result.error = QString::fromUtf8(process.readAllStandardError());
    return result;
}

void tst_Skylet::helpNeedsNoDisplay()
{
    m_extra.insert("DISPLAY", ":98765");
    const Run help = run({ "--help" });
    QCOMPARE(help.status, 0);
    QVERIFY(help.output.contains("--screenshot"));
    QCOMPARE(help.error, QString());
}

void tst_Skylet::versionIsPrinted()
{
    const Run version = run({ "--version" });
    QCOMPARE(version.status, 0);
    static const QRegularExpression line("^skylet \\d+\\.\\d+\\.\\d+\n$");
    QVERIFY2(line.match(version.output).hasMatch(), qPrintable(version.output));
}

void tst_Skylet::aBadLineLeavesWithTwo_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("named");
    QTest::newRow("unknown option") << QStringList { "--nonsense" } << "nonsense";
    QTest::newRow("unknown language")
        << QStringList { "--language", "xx" } << "\"xx\"; there are en";
    QTest::newRow("impossible interface") << QStringList { "--interface", "a/b" } << "a/b";
    QTest::newRow("impossible folder")
        << QStringList { "--data-dir", "/proc/none" } << "/proc/none";
    QTest::newRow("unknown view") << QStringList { "--view", "both" } << "both";
}

void tst_Skylet::aBadLineLeavesWithTwo()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, named);
    const Run bad = run(arguments);
    QCOMPARE(bad.status, 2);
    QCOMPARE(bad.output, QString());
    QVERIFY2(bad.error.startsWith("skylet: ") && bad.error.contains(named), qPrintable(bad.error));
    QCOMPARE(bad.error.count('\n'), 1);
}

void tst_Skylet::theDemonstrationPrintsFiguresAndAPicture()
{
    const Run demo = run({ "--demo", "--seconds", "2", "--data-dir", dataDir() });
    QCOMPARE(demo.status, 0);
    QCOMPARE(demo.error, QString());
    const QStringList lines = demo.lines();
    QCOMPARE(lines.size(), 6);
    QVERIFY(lines.at(0).startsWith("Interface"));
    static const QRegularExpression figures("^demo0 +00:00:0\\d +[\\d.]+ \\w+/s +[\\d.]+ \\w+/s "
                                            "+\\d+ B \\([\\d.]+ \\w+\\) +[1-9]\\d* B ");
    for (int i = 1; i <= 2; ++i) {
        QVERIFY2(figures.match(lines.at(i)).hasMatch(), qPrintable(lines.at(i)));
        QCOMPARE(lines.at(i).size(), lines.at(0).size());
    }
    QVERIFY(lines.at(3).startsWith("Scripted counters of demo0"));
    QCOMPARE(lines.at(4), QString("The live figures are equal to these counters."));
    const QString picture = dataDir() + "/skylet-screenshot.png";
    QCOMPARE(lines.at(5), "Picture: " + picture);
    QVERIFY(coloursIn(picture) > 10);
}

void tst_Skylet::thePictureGoesWhereItShall()
{
    const QString picture = m_home->filePath("here.png");
    const Run demo
        = run({ "--demo", "--seconds", "1", "--data-dir", dataDir(), "--screenshot", picture });
    QCOMPARE(demo.status, 0);
    QVERIFY(demo.output.contains("Picture: " + picture));
    QVERIFY(coloursIn(picture) > 10);
    QVERIFY(!QFile::exists(dataDir() + "/skylet-screenshot.png"));
}

void tst_Skylet::aPictureThatCannotBeWrittenIsAFailure()
{
    const Run demo = run(
        { "--demo", "--seconds", "1", "--data-dir", dataDir(), "--screenshot", "/proc/here.png" });
    QCOMPARE(demo.status, 1);
    QVERIFY2(demo.error.contains("/proc/here.png"), qPrintable(demo.error));
}

// The loopback interface is everywhere; what flows through it meanwhile does not matter.
void tst_Skylet::aRealInterfaceEqualsTheKernel()
{
    const Run real = run({ "--interface", "lo", "--seconds", "2", "--data-dir", dataDir() });
    QCOMPARE(real.status, 0);
    QCOMPARE(real.error, QString());
    QVERIFY2(real.output.contains("\nlo  "), qPrintable(real.output));
    QVERIFY(real.output.contains("Kernel counters of lo over the same "));
    QVERIFY2(real.output.contains("equal to these counters"), qPrintable(real.output));
}

void tst_Skylet::anInterfaceThatIsNotThereCountsNothing()
{
    const Run none = run({ "--interface", "none0", "--seconds", "1", "--data-dir", dataDir() });
    QCOMPARE(none.status, 0);
    QVERIFY2(none.output.contains("nothing is counted"), qPrintable(none.output));
    static const QRegularExpression zeros(
        " 00:00:00 +0\\.00 B/s +0\\.00 B/s +0 B \\(0\\.00 B\\) +0 B ");
    QVERIFY2(zeros.match(none.output).hasMatch(), qPrintable(none.output));
}

void tst_Skylet::withoutAPluginItLeavesWithThree()
{
    const QTemporaryDir empty;
    m_extra.insert("SKYLET_LIBRARY_PATH", empty.path());
    const Run none = run({ "--demo", "--data-dir", dataDir() });
    QCOMPARE(none.status, 3);
    QVERIFY2(none.error.contains(empty.path() + "/plugins: There is no such folder."),
             qPrintable(none.error));
    QCOMPARE(none.output, QString());
}

void tst_Skylet::aBrokenPluginBesideAGoodOneIsOnlySaid()
{
    const QString text = m_library->addFile("broken", "text.so", "text");
    const Run demo = run({ "--demo", "--seconds", "1", "--data-dir", dataDir() });
    QCOMPARE(demo.status, 0);
    QVERIFY2(demo.error.contains("Plug-in " + text + ": It cannot be loaded: "),
             qPrintable(demo.error));
    QVERIFY(demo.output.contains("demo0"));
}

void tst_Skylet::theShippedPluginRuns()
{
    m_extra.remove("SKYLET_LIBRARY_PATH");
    const Run demo = run({ "--demo", "--seconds", "2", "--data-dir", dataDir() });
    QCOMPARE(demo.status, 0);
    QCOMPARE(demo.error, QString());
    QVERIFY(demo.output.contains("equal to these counters"));
    QVERIFY(coloursIn(dataDir() + "/skylet-screenshot.png") > 50);
}

void tst_Skylet::theLanguageIsTaken()
{
    const Run demo
        = run({ "--demo", "--seconds", "1", "--data-dir", dataDir(), "--language", "fr_CA" });
    QCOMPARE(demo.status, 0);
    QVERIFY2(demo.output.contains(" Ko/s "), qPrintable(demo.output));
}

void tst_Skylet::traceLinesAppearOnlyWhenAsked()
{
    m_extra.remove("SKYLET_LIBRARY_PATH");
    const QStringList arguments { "--demo", "--seconds", "1", "--data-dir", dataDir() };
    QVERIFY(!run(arguments).error.contains("CNetInfoUIService"));
    const Run verbose = run(arguments + QStringList("--verbose"));
    QCOMPARE(verbose.status, 0);
    QVERIFY(verbose.error.contains("CNetInfoUIService called"));
}

void tst_Skylet::theLoggingRulesOfTheEnvironmentWin()
{
    m_extra.remove("SKYLET_LIBRARY_PATH");
    m_extra.insert("QT_LOGGING_RULES", "default.debug=true");
    const Run demo = run({ "--demo", "--seconds", "1", "--data-dir", dataDir() });
    QVERIFY(demo.error.contains("CNetInfoUIService called"));
}

void tst_Skylet::aSignalEndsItInGoodOrder()
{
    QProcess process;
    process.setProcessEnvironment(environment());
    process.start(NETINFO_SKYLET, { "--demo", "--seconds", "50", "--data-dir", dataDir() });
    QByteArray output;
    QTRY_VERIFY_WITH_TIMEOUT((output += process.readAllStandardOutput()).contains("demo0"), 20000);
    process.terminate();
    QVERIFY(process.waitForFinished(20000));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
    output += process.readAllStandardOutput();
    QVERIFY(output.contains("equal to these counters"));
}

void tst_Skylet::nothingIsRememberedWithoutADisplay()
{
    const Run demo
        = run({ "--demo", "--seconds", "1", "--data-dir", dataDir(), "--view", "usage" });
    QCOMPARE(demo.status, 0);
    QVERIFY(!QFile::exists(dataDir() + "/skylet.ini"));
}

QTEST_GUILESS_MAIN(tst_Skylet)
#include "tst_skylet.moc"
