#include "CommandLine.h"

#include <QtTest>

using namespace velqctl;

class tst_CommandLine : public QObject
{
    Q_OBJECT
private slots:
    void everyVerbIsUnderstood_data();
    void everyVerbIsUnderstood();
    void theCommonOptionsStandBeforeAndBehindTheVerb();
    void periodsAndTypes();
    void spans();
    void aDeviceOrAutomatic();
    void corrections();
    void formats();
    void badLinesAreUsageErrors_data();
    void badLinesAreUsageErrors();
    void helpAndVersionAreGood();
    void emptyNamesAreUsageErrors_data();
    void emptyNamesAreUsageErrors();
    void whatATerminalWouldObeyIsNotRepeated();
};

namespace {

CommandLine parse(const QString &line)
{
    std::vector<std::string> arguments;
    for (const QString &word : line.split(' ', Qt::SkipEmptyParts))
        arguments.push_back(word.toStdString());
    return parseCommandLine(arguments);
}

Command good(const QString &line)
{
    const CommandLine parsed = parse(line);
    if (!parsed.command)
        qWarning("%s: %s", qPrintable(line), parsed.outcome.message.c_str());
    return parsed.command.value_or(Command());
}

} // namespace

void tst_CommandLine::everyVerbIsUnderstood_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("verb");
    const auto row = [](const char *line, Verb verb) { QTest::newRow(line) << line << int(verb); };
    row("status", Verb::Status);
    row("report", Verb::Report);
    row("history", Verb::History);
    row("devices", Verb::Devices);
    row("use wwan0", Verb::Use);
    row("correct daily --download 1 --upload 2", Verb::Correct);
    row("reset --yes", Verb::Reset);
    row("connect", Verb::Connect);
    row("disconnect", Verb::Disconnect);
    row("why", Verb::Why);
    row("export --csv", Verb::Export);
    row("backup copy.db", Verb::Backup);
    row("doctor", Verb::Doctor);
}

void tst_CommandLine::everyVerbIsUnderstood()
{
    QFETCH(QString, line);
    const CommandLine parsed = parse(line);
    QVERIFY2(parsed.command, parsed.outcome.message.c_str());
    QTEST(int(parsed.command->verb), "verb");
    if (line.startsWith("export"))
        return; // has formats of its own
    QVERIFY(parsed.command->format == Format::Text);
    QVERIFY(good(line + " --json").format == Format::Json);
}

void tst_CommandLine::theCommonOptionsStandBeforeAndBehindTheVerb()
{
    const QString options
        = "--json --data-dir /d --interface wwan0 --week-start 6 --month-start 31 --demo";
    for (const QString &line : { options + " status", "status " + options }) {
        const Command command = good(line);
        QVERIFY(command.format == Format::Json);
        QCOMPARE(command.dataDirectory, std::string("/d"));
        QCOMPARE(command.interface, std::string("wwan0"));
        QCOMPARE(command.weekStart, 6);
        QCOMPARE(command.monthStart, 31);
        QVERIFY(command.demo);
    }
    const Command plain = good("status");
    QCOMPARE(plain.weekStart, 0);
    QCOMPARE(plain.monthStart, 1);
    QVERIFY(!plain.demo && plain.dataDirectory.empty() && plain.interface.empty());
}

void tst_CommandLine::periodsAndTypes()
{
    QVERIFY(!good("report").period);
    QVERIFY(!good("report all").period);
    QCOMPARE(good("report daily").period.value_or(0), 1);
    QCOMPARE(good("report weekly").period.value_or(0), 3);
    QCOMPARE(good("report monthly").period.value_or(0), 4);
    QCOMPARE(good("report yearly").period.value_or(0), 5);
    QVERIFY(!good("reset --yes").type);
    QCOMPARE(good("reset --yes --type mobile").type.value_or(-1), 0);
    QCOMPARE(good("reset --yes --type wifi").type.value_or(-1), 1);
}

void tst_CommandLine::spans()
{
    const Command hours = good("history --hours --from 1970-01-02 --to 1970-01-03");
    QVERIFY(hours.hours);
    QCOMPARE(hours.from.value_or(-1), 1);
    QCOMPARE(hours.to.value_or(-1), 2);
    const Command days = good("history --days");
    QVERIFY(!days.hours && !days.from && !days.to);
    QCOMPARE(good("history --from 1970-01-02 --to 1970-01-02").to.value_or(-1), 1);
    QCOMPARE(good("why").count, 20);
    QCOMPARE(good("why -n 3").count, 3);
    QCOMPARE(good("why --number=4").count, 4);
}

void tst_CommandLine::aDeviceOrAutomatic()
{
    QCOMPARE(good("use hw:02:00:00:00:00:01").device, std::string("hw:02:00:00:00:00:01"));
    QVERIFY(good("use --automatic").device.empty());
    QVERIFY(good("use wwan0 --absent").absent);
}

void tst_CommandLine::corrections()
{
    const Command command = good("correct monthly --download 1.5GB --upload=1KiB --type wifi");
    QCOMPARE(command.period.value_or(0), 4);
    QCOMPARE(command.download, 1500000000ULL);
    QCOMPARE(command.upload, 1024ULL);
    QCOMPARE(command.type.value_or(-1), 1);
}

void tst_CommandLine::formats()
{
    QVERIFY(good("export --json").format == Format::Json);
    QVERIFY(good("export --csv --hours").format == Format::Csv);
    const Command metrics = good("export --openmetrics --output velq.prom");
    QVERIFY(metrics.format == Format::OpenMetrics);
    QCOMPARE(metrics.file, std::string("velq.prom"));
}

void tst_CommandLine::badLinesAreUsageErrors_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("says");
    const auto row = [](const char *line, const char *says) {
        QTest::newRow(*line ? line : "nothing") << line << says;
    };
    row("", "subcommand is required");
    row("stat", "\"stat\" is neither a command nor an option");
    row("--no-such", "\"--no-such\" is neither");
    row("status report", "not expected");
    row("status --no-such", "--no-such");
    row("report hourly", "\"hourly\" is not daily, weekly, monthly, yearly or all");
    row("correct all --download 1 --upload 1", "\"all\" is not daily");
    row("correct daily --download 1", "--upload is required");
    row("correct daily --upload 1", "--download is required");
    row("correct --upload 1 --download 1", "PERIOD is required");
    row("correct daily --download 1,5GB --upload 1", "\"1,5GB\" is not an amount like");
    row("correct daily --download -1 --upload 1", "--download");
    row("correct daily --download 1 --upload 1 --type lte", "\"lte\" is not mobile or wifi");
    row("history --hours --days", "excludes");
    row("history --from 2024-02-30", "\"2024-02-30\" is not a date like 2024-03-01");
    row("history --from 2024-03-02 --to 2024-03-01", "--from is later than --to");
    row("use", "name a device, or --automatic");
    row("use wwan0 --automatic", "excludes");
    row("reset", "add --yes");
    row("why -n 0", "-n");
    row("why -n many", "-n");
    row("export", "choose one of --json, --csv, --openmetrics");
    row("export --json --csv", "choose one of");
    row("export --csv --openmetrics", "excludes");
    row("export --openmetrics --hours", "has no span");
    row("export --openmetrics --days", "has no span");
    row("backup", "FILE is required");
    row("status --week-start 7", "--week-start");
    row("status --week-start -1", "--week-start");
    row("status --month-start 0", "--month-start");
    row("status --month-start 32", "--month-start");
}

void tst_CommandLine::badLinesAreUsageErrors()
{
    QFETCH(QString, line);
    QFETCH(QString, says);
    const CommandLine parsed = parse(line);
    QVERIFY(!parsed.command);
    QCOMPARE(int(parsed.outcome.code), 2);
    QVERIFY(parsed.outcome.output.empty());
    const QString message = QString::fromStdString(parsed.outcome.message);
    QVERIFY2(message.contains(says), qPrintable(message));
}

void tst_CommandLine::helpAndVersionAreGood()
{
    for (const char *line : { "--help", "-h", "--version", "report --help" }) {
        const CommandLine parsed = parse(line);
        QVERIFY(!parsed.command);
        QCOMPARE(int(parsed.outcome.code), 0);
        QVERIFY(!parsed.outcome.output.empty());
        QVERIFY(parsed.outcome.message.empty());
    }
    QVERIFY(parse("--version").outcome.output.rfind("velqctl ", 0) == 0);
}

void tst_CommandLine::emptyNamesAreUsageErrors_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("name");
    QTest::newRow("directory") << "reset --yes --data-dir"
                               << "--data-dir";
    QTest::newRow("interface") << "status --interface"
                               << "--interface";
    QTest::newRow("output") << "export --csv --output"
                            << "--output";
    QTest::newRow("backup") << "backup"
                            << "FILE";
    QTest::newRow("device") << "use"
                            << "use";
}

//! What a script writes whose variable is not set must not mean the user's own store.
void tst_CommandLine::emptyNamesAreUsageErrors()
{
    QFETCH(QString, line);
    std::vector<std::string> arguments;
    for (const QString &word : line.split(' '))
        arguments.push_back(word.toStdString());
    arguments.emplace_back();
    const CommandLine parsed = parseCommandLine(arguments);
    QVERIFY(!parsed.command);
    QCOMPARE(int(parsed.outcome.code), 2);
    QTEST(QString::fromStdString(parsed.outcome.message).section(':', 0, 0), "name");
}

void tst_CommandLine::whatATerminalWouldObeyIsNotRepeated()
{
    const std::string escape = "\x1b[2J";
    for (const auto &arguments :
         { std::vector<std::string> { escape }, std::vector<std::string> { "report", escape },
           std::vector<std::string> { "status", "--" + escape } }) {
        const std::string message = parseCommandLine(arguments).outcome.message;
        QVERIFY(!message.empty());
        QVERIFY(message.find('\x1b') == std::string::npos);
    }
}

QTEST_GUILESS_MAIN(tst_CommandLine)
#include "tst_commandline.moc"
