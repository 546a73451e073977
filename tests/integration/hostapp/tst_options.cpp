#include <Options.h>

#include <QTemporaryDir>
#include <QtTest>

#include "TestLog.h"

namespace {

CommandLine parse(const QStringList &arguments)
{
    return parseCommandLine(QStringList("skylet") + arguments);
}

} // namespace

class tst_Options : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void withoutArgumentsNothingIsAsked();
    void everyOptionArrives();
    void relativePathsBecomeAbsolute();
    void bothViewsHaveAName();
    void helpNamesEveryOption();
    void versionIsOneLine();
    void badLinesAreUsageErrors_data();
    void badLinesAreUsageErrors();
    void theLimitsOfSeconds();

private:
    QScopedPointer<TestLog> m_log;
};

void tst_Options::init()
{
    m_log.reset(new TestLog);
}

void tst_Options::cleanup()
{
    const QStringList problems = m_log->takeProblems();
    m_log.reset();
    QCOMPARE(problems, QStringList());
}

void tst_Options::withoutArgumentsNothingIsAsked()
{
    const CommandLine line = parse({});
    QVERIFY(!line.exitStatus);
    QVERIFY(line.options.interfaceName.isEmpty());
    QVERIFY(line.options.dataDirectory.isEmpty());
    QVERIFY(line.options.language.isEmpty());
    QVERIFY(line.options.screenshot.isEmpty());
    QVERIFY(!line.options.view);
    QVERIFY(!line.options.seconds);
    QVERIFY(!line.options.demo);
    QVERIFY(!line.options.verbose);
}

void tst_Options::everyOptionArrives()
{
    const QTemporaryDir folder;
    const QString picture = folder.filePath("a.png");
    const CommandLine line
        = parse({ "--interface", "wwan0", "--data-dir=/a/b", "--language", "de", "--screenshot",
                  picture, "--view", "usage", "--seconds", "7", "--demo", "--verbose" });
    QVERIFY(!line.exitStatus);
    QCOMPARE(line.options.interfaceName, QString("wwan0"));
    QCOMPARE(line.options.dataDirectory, QString("/a/b"));
    QCOMPARE(line.options.language, QString("de"));
    QCOMPARE(line.options.screenshot, picture);
    QVERIFY(line.options.view == HostView::Usage);
    QCOMPARE(line.options.seconds.value_or(0), 7);
    QVERIFY(line.options.demo);
    QVERIFY(line.options.verbose);
}

void tst_Options::relativePathsBecomeAbsolute()
{
    const CommandLine line = parse({ "--data-dir", "a", "--screenshot", "b.png" });
    QVERIFY(!line.exitStatus);
    QCOMPARE(line.options.dataDirectory, QDir::currentPath() + "/a");
    QCOMPARE(line.options.screenshot, QDir::currentPath() + "/b.png");
}

void tst_Options::bothViewsHaveAName()
{
    QVERIFY(parse({ "--view", "usage" }).options.view == HostView::Usage);
    QVERIFY(parse({ "--view", "statistics" }).options.view == HostView::Statistics);
}

void tst_Options::helpNamesEveryOption()
{
    for (const char *option : { "-h", "--help" }) {
        const CommandLine line = parse({ option });
        QCOMPARE(line.exitStatus.value_or(-1), 0);
        QVERIFY(line.error.isEmpty());
        for (const char *name : { "--interface", "--data-dir", "--language", "--screenshot",
                                  "--demo", "--view", "--seconds", "--verbose", "--version" })
            QVERIFY2(line.output.contains(name), name);
    }
}

void tst_Options::versionIsOneLine()
{
    QCoreApplication::setApplicationName("skylet");
    QCoreApplication::setApplicationVersion("1.2.3");
    const CommandLine line = parse({ "--version" });
    QCOMPARE(line.exitStatus.value_or(-1), 0);
    QCOMPARE(line.output, QString("skylet 1.2.3\n"));
}

void tst_Options::badLinesAreUsageErrors_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("named");
    QTest::newRow("unknown option") << QStringList { "--nonsense" } << "nonsense";
    QTest::newRow("stray argument") << QStringList { "stray" } << "stray";
    QTest::newRow("missing value") << QStringList { "--view" } << "--view";
    QTest::newRow("unknown view") << QStringList { "--view", "both" } << "both";
    QTest::newRow("no view") << QStringList { "--view", "" } << "--view";
    QTest::newRow("no seconds") << QStringList { "--seconds", "soon" } << "soon";
    QTest::newRow("no time") << QStringList { "--seconds", "0" } << "0";
    QTest::newRow("negative time") << QStringList { "--seconds=-1" } << "-1";
    QTest::newRow("too much time") << QStringList { "--seconds", "86401" } << "86401";
    QTest::newRow("beyond any number")
        << QStringList { "--seconds", "99999999999" } << "99999999999";
    QTest::newRow("no interface") << QStringList { "--interface", "" } << "--interface";
    QTest::newRow("no folder") << QStringList { "--data-dir", "" } << "--data-dir";
    QTest::newRow("no language") << QStringList { "--language=" } << "--language";
    QTest::newRow("no picture") << QStringList { "--screenshot", "" } << "--screenshot";
    QTest::newRow("a folder as a picture")
        << QStringList { "--screenshot", "/tmp" } << "--screenshot";
    QTest::newRow("a picture in no folder")
        << QStringList { "--screenshot", "/nowhere/a.png" } << "/nowhere";
    QTest::newRow("an unknown format") << QStringList { "--screenshot", "/tmp/a.doc" } << "doc";
    QTest::newRow("a flag with a value") << QStringList { "--demo=yes" } << "demo";
}

void tst_Options::badLinesAreUsageErrors()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, named);
    const CommandLine line = parse(arguments);
    QCOMPARE(line.exitStatus.value_or(-1), 2);
    QVERIFY2(line.error.contains(named), qPrintable(line.error));
    QVERIFY(line.output.isEmpty());
}

void tst_Options::theLimitsOfSeconds()
{
    QCOMPARE(parse({ "--seconds", "1" }).options.seconds.value_or(0), 1);
    QCOMPARE(parse({ "--seconds", "86400" }).options.seconds.value_or(0), 86400);
}

QTEST_GUILESS_MAIN(tst_Options)
#include "tst_options.moc"
