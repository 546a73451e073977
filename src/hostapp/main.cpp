#include "Console.h"
#include "Options.h"
#include "Session.h"

#include <QApplication>
#include <QLoggingCategory>

#include <cstdio>
#include <cstring>

// Help must not need a display, so these are looked for before the application object exists.
static bool asksForText(int argc, char **argv)
{
    for (int i = 1; i < argc; ++i) {
        for (const char *option : { "-h", "--help", "-v", "--version" }) {
            if (std::strcmp(argv[i], option) == 0)
                return true;
        }
    }
    return false;
}

static void choosePlatform(int argc, char **argv)
{
    const bool hasDisplay = !qEnvironmentVariableIsEmpty("DISPLAY")
        || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    if (asksForText(argc, argv) || (!hasDisplay && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM")))
        qputenv("QT_QPA_PLATFORM", "offscreen");
}

static QtMessageHandler thePreviousHandler = nullptr;

// Two remarks of Qt about running without a desktop, which is just what was asked for.
static void withoutPlatformRemarks(QtMsgType type, const QMessageLogContext &context,
                                   const QString &text)
{
    const bool isRemark = text.contains(QLatin1String("propagateSizeHints"))
        || text.contains(QLatin1String("XDG_RUNTIME_DIR not set"));
    if (type == QtFatalMsg || !isRemark)
        thePreviousHandler(type, context, text);
}

static bool isHeadless()
{
    const QString platform = QGuiApplication::platformName();
    return platform == QLatin1String("offscreen") || platform == QLatin1String("minimal");
}

int main(int argc, char **argv)
{
    choosePlatform(argc, argv);
    if (qgetenv("QT_QPA_PLATFORM") == "offscreen")
        thePreviousHandler = qInstallMessageHandler(withoutPlatformRemarks);
    const QApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("skylet"));
    QCoreApplication::setApplicationVersion(QStringLiteral(SKYLET_VERSION));
    const CommandLine line = parseCommandLine(QCoreApplication::arguments());
    if (line.exitStatus) {
        std::fputs(line.output.toLocal8Bit().constData(), stdout);
        if (!line.error.isEmpty())
            printError(line.error + QLatin1String(" Try --help."));
        return *line.exitStatus;
    }
    // Trace lines of the plug-in cost nothing while nobody reads them. QT_LOGGING_RULES still wins.
    if (!line.options.verbose)
        QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    Session session(line.options, isHeadless());
    if (const auto status = session.prepare())
        return *status;
    return session.run();
}
