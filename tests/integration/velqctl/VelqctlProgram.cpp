#include "VelqctlProgram.h"

#include <QJsonDocument>
#include <QProcess>

namespace {

constexpr int kTimeoutMs = 20000;

Answer run(const QString &program, const QStringList &arguments,
           const QProcessEnvironment &environment)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    Answer answer;
    if (process.waitForFinished(kTimeoutMs) && process.exitStatus() == QProcess::NormalExit)
        answer.code = process.exitCode();
    answer.output = process.readAllStandardOutput();
    answer.message = process.readAllStandardError();
    return answer;
}

} // namespace

QJsonObject Answer::json() const
{
    return QJsonDocument::fromJson(output).object();
}

Answer velqctl(const QString &directory, const QStringList &arguments,
               const QProcessEnvironment &environment)
{
    QStringList all = arguments;
    if (!directory.isEmpty())
        all = QStringList { "--data-dir", directory } + all;
    return run(QStringLiteral(VELQCTL), all, environment);
}

Answer shell(const QString &directory, const QString &script)
{
    return run("/bin/sh", { "-c", script, QStringLiteral(VELQCTL), directory },
               QProcessEnvironment::systemEnvironment());
}
