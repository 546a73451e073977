#include "TestLog.h"

#include <QMutex>
#include <QRegularExpression>
#include <QtGlobal>

#include <utility>

namespace {

struct LogState
{
    QMutex mutex;
    QStringList lines;
    QStringList expected;
    QStringList unexpected;
    QtMessageHandler previous = nullptr;
};

LogState &state()
{
    static LogState s;
    return s;
}

QString withoutTime(const QString &text)
{
    static const QRegularExpression time(QStringLiteral("\\d\\d:\\d\\d:\\d\\d:\\d\\d\\d"));
    QString line = text;
    return line.replace(time, QStringLiteral("<time>"));
}

void handle(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type == QtFatalMsg) {
        state().previous(type, context, text);
        return;
    }
    const QMutexLocker lock(&state().mutex);
    if (text.startsWith(QLatin1String("This plugin does not support ")))
        return; // a remark of the offscreen platform
    if (type != QtDebugMsg && type != QtInfoMsg) {
        for (int i = 0; i < state().expected.size(); ++i) {
            if (text.contains(state().expected.at(i))) {
                state().expected.removeAt(i);
                state().lines << text;
                return;
            }
        }
        state().unexpected << QStringLiteral("unannounced: ") + text;
        return;
    }
    state().lines << text;
}

} // namespace

TestLog::TestLog()
{
    takeLines();
    takeProblems();
    state().previous = qInstallMessageHandler(handle);
}

TestLog::~TestLog()
{
    qInstallMessageHandler(state().previous);
}

void TestLog::expectWarning(const QString &text)
{
    const QMutexLocker lock(&state().mutex);
    state().expected << text;
}

QStringList TestLog::takeLines()
{
    const QMutexLocker lock(&state().mutex);
    QStringList lines;
    for (const QString &line : std::as_const(state().lines))
        lines << withoutTime(line);
    state().lines.clear();
    return lines;
}

void TestLog::dropLines()
{
    const QMutexLocker lock(&state().mutex);
    state().lines.clear();
}

QStringList TestLog::takeProblems()
{
    const QMutexLocker lock(&state().mutex);
    QStringList problems = state().unexpected;
    for (const QString &text : std::as_const(state().expected))
        problems << QStringLiteral("did not come: ") + text;
    state().unexpected.clear();
    state().expected.clear();
    return problems;
}
