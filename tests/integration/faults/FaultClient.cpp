#include "FaultClient.h"

#include <QElapsedTimer>
#include <QProcessEnvironment>

namespace {

constexpr int kTimeoutMs = 40000; // connecting a modem takes up to 30 seconds

bool parse(const QByteArray &line, Usage &usage)
{
    bool isDownload = false;
    bool isUpload = false;
    const QList<QByteArray> words = line.split(' ');
    const Usage found { words.value(0).toULongLong(&isDownload),
                        words.value(1).toULongLong(&isUpload) };
    if (isDownload && isUpload)
        usage = found;
    return isDownload && isUpload;
}

//! The next line; empty when none comes.
QByteArray lineOf(QProcess &process)
{
    QElapsedTimer time;
    time.start();
    while (!process.canReadLine() && time.elapsed() < kTimeoutMs
           && process.state() != QProcess::NotRunning)
        (void)process.waitForReadyRead(100);
    return process.readLine().trimmed();
}

} // namespace

FaultClient::~FaultClient()
{
    kill();
}

void FaultClient::start(const ClientOptions &options)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("VELQ_DATA_DIR"), options.folder);
    environment.insert(QStringLiteral("VELQ_INTERFACE"), options.interface);
    m_process.setProcessEnvironment(environment);
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    QStringList words = options.launcher;
    words.append(QStringLiteral(FAULT_CLIENT));
    if (options.busy)
        words.append(QStringLiteral("busy"));
    const QString program = words.takeFirst();
    m_process.start(program, words);
}

bool FaultClient::waitUntilReady(Usage &first)
{
    return parse(lineOf(m_process), first);
}

QByteArray FaultClient::ask(const QByteArray &command)
{
    m_process.write(command + '\n');
    return lineOf(m_process);
}

Usage FaultClient::look()
{
    Usage usage { ~0ULL, ~0ULL };
    (void)parse(ask("look"), usage);
    return usage;
}

void FaultClient::kill()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.kill();
    (void)m_process.waitForFinished(kTimeoutMs);
    (void)m_process.readAll();
}

bool FaultClient::end()
{
    m_process.write("end\n");
    const bool ended = m_process.waitForFinished(kTimeoutMs);
    (void)m_process.readAll();
    return ended && m_process.exitStatus() == QProcess::NormalExit && m_process.exitCode() == 0;
}
