#include "Options.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QImageWriter>

static constexpr int kMaxSeconds = 86400;

static void addOptions(QCommandLineParser *parser)
{
    parser->setApplicationDescription(
        QStringLiteral("Shows what this machine's network connection uses.\n"
                       "Without a display it runs for a few seconds, prints the live figures and "
                       "saves a picture."));
    parser->addOption({ { QStringLiteral("h"), QStringLiteral("help") },
                        QStringLiteral("Print this help and leave.") });
    parser->addOption({ { QStringLiteral("v"), QStringLiteral("version") },
                        QStringLiteral("Print the version and leave.") });
    const auto add = [parser](const char *name, const char *text, const char *value = nullptr) {
        parser->addOption(
            QCommandLineOption(QLatin1String(name), QLatin1String(text), QLatin1String(value)));
    };
    add("interface", "Count interface <name> instead of the one with the default route.", "name");
    add("data-dir", "Keep settings and figures in <folder>.", "folder");
    add("language", "Language of the texts, for example de.", "code");
    add("view", "Start with the view usage or statistics.", "view");
    add("screenshot", "Save a picture of the window to <file> and leave.", "file");
    add("seconds", "Leave after <n> seconds (with a picture 3, without a display 5).", "n");
    add("demo", "Replay a scripted connection; keeps nothing.");
    add("verbose", "Print the trace lines too.");
}

static CommandLine leave(int status, const QString &output, const QString &error)
{
    CommandLine result;
    result.exitStatus = status;
    result.output = output;
    result.error = error;
    return result;
}

static CommandLine usageError(const QString &text)
{
    return leave(kExitUsage, QString(), text);
}

static QString viewError(const QCommandLineParser &parser, Options *options)
{
    const QString value = parser.value(QStringLiteral("view"));
    if (value == QLatin1String("usage"))
        options->view = HostView::Usage;
    else if (value == QLatin1String("statistics"))
        options->view = HostView::Statistics;
    else
        return QStringLiteral("--view is usage or statistics, not \"%1\".").arg(value);
    return QString();
}

static QString secondsError(const QCommandLineParser &parser, Options *options)
{
    const QString value = parser.value(QStringLiteral("seconds"));
    bool ok = false;
    const int seconds = value.toInt(&ok);
    if (!ok || seconds < 1 || seconds > kMaxSeconds)
        return QStringLiteral("--seconds is a number from 1 to %1, not \"%2\".")
            .arg(QString::number(kMaxSeconds), value);
    options->seconds = seconds;
    return QString();
}

static QString screenshotError(const QCommandLineParser &parser, Options *options)
{
    const QFileInfo file(parser.value(QStringLiteral("screenshot")));
    if (file.fileName().isEmpty() || file.isDir())
        return QStringLiteral("--screenshot needs the name of a file.");
    if (!file.absoluteDir().exists())
        return QStringLiteral("--screenshot: there is no folder %1.").arg(file.absolutePath());
    const QString suffix = file.suffix();
    if (!suffix.isEmpty()
        && !QImageWriter::supportedImageFormats().contains(suffix.toLower().toLatin1()))
        return QStringLiteral("--screenshot: \"%1\" is no image format; use png.").arg(suffix);
    options->screenshot = file.absoluteFilePath();
    return QString();
}

static QString textError(const QCommandLineParser &parser, const char *name, QString *value)
{
    *value = parser.value(QLatin1String(name));
    return value->isEmpty() ? QStringLiteral("--%1 needs a value.").arg(QLatin1String(name))
                            : QString();
}

// The first thing wrong with the values; empty when all are right.
static QString valueError(const QCommandLineParser &parser, Options *options)
{
    const auto given = [&parser](const char *name) { return parser.isSet(QLatin1String(name)); };
    QString error;
    if (given("interface"))
        error = textError(parser, "interface", &options->interfaceName);
    if (error.isEmpty() && given("data-dir"))
        error = textError(parser, "data-dir", &options->dataDirectory);
    if (error.isEmpty() && given("language"))
        error = textError(parser, "language", &options->language);
    if (error.isEmpty() && given("view"))
        error = viewError(parser, options);
    if (error.isEmpty() && given("seconds"))
        error = secondsError(parser, options);
    if (error.isEmpty() && given("screenshot"))
        error = screenshotError(parser, options);
    return error;
}

CommandLine parseCommandLine(const QStringList &arguments)
{
    QCommandLineParser parser;
    addOptions(&parser);
    if (!parser.parse(arguments))
        return usageError(parser.errorText());
    if (parser.isSet(QStringLiteral("help")))
        return leave(0, parser.helpText(), QString());
    if (parser.isSet(QStringLiteral("version")))
        return leave(0,
                     QCoreApplication::applicationName() + QLatin1Char(' ')
                         + QCoreApplication::applicationVersion() + QLatin1Char('\n'),
                     QString());
    if (!parser.positionalArguments().isEmpty())
        return usageError(QStringLiteral("Unexpected argument \"%1\".")
                              .arg(parser.positionalArguments().constFirst()));
    CommandLine result;
    result.options.demo = parser.isSet(QStringLiteral("demo"));
    result.options.verbose = parser.isSet(QStringLiteral("verbose"));
    const QString error = valueError(parser, &result.options);
    if (!error.isEmpty())
        return usageError(error);
    if (!result.options.dataDirectory.isEmpty())
        result.options.dataDirectory = QFileInfo(result.options.dataDirectory).absoluteFilePath();
    return result;
}
