#include <QCoreApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <linux/if.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <sqlite3.h>

#include <csignal>
#include <memory>

#include "Loopback.h"
#include "NetworkPair.h"

//! How processes that use the SDK end, and what they leave behind; see velq_client.cpp.
class tst_VelqProcess : public QObject
{
    Q_OBJECT
public:
    explicit tst_VelqProcess(bool alone)
        : m_alone(alone)
    {
    }
private slots:
    void initTestCase();
    void init();

    void onlyTheNamesOfTheMapAreExported();
    void returningFromMainCommits();
    void exitingInACallbackCommits();
    void unloadingEndsTheThreadAndCommits();
    void aForkedChildHarmsNothing();
    void aChildThatStaysBehindDoesNotHoldTheStore();
    void aSecondProcessOnlyReadsAndAKilledOneLosesLittle();

private:
    //! The program's output, or what went wrong with it.
    [[nodiscard]] QByteArray run(const QStringList &arguments,
                                 const QString &program = QStringLiteral(VELQ_CLIENT));
    [[nodiscard]] qint64 stored() const;
    void start(QProcess &process, const QStringList &arguments,
               const QString &program = QStringLiteral(VELQ_CLIENT)) const;

    const bool m_alone; // nobody else sends over this loopback
    std::unique_ptr<QTemporaryDir> m_folder;
};

namespace {

constexpr int kTimeoutMs = 20000;
constexpr qint64 kSent = kLoopbackBytes;

qint64 value(const QByteArray &output, const char *name)
{
    qint64 found = -1;
    for (const QByteArray &line : output.split('\n')) {
        if (line.startsWith(QByteArray(name) + ' '))
            found = line.mid(int(qstrlen(name)) + 1).toLongLong();
    }
    return found;
}

bool loopbackIsUp()
{
    const int file = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    ifreq request {};
    qstrcpy(request.ifr_name, "lo");
    const bool up = ioctl(file, SIOCGIFFLAGS, &request) == 0 && (request.ifr_flags & IFF_UP);
    (void)close(file);
    return up;
}

} // namespace

void tst_VelqProcess::initTestCase()
{
    if (!loopbackIsUp())
        QSKIP("the loopback interface is down here");
}

void tst_VelqProcess::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

void tst_VelqProcess::start(QProcess &process, const QStringList &arguments,
                            const QString &program) const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("VELQ_DATA_DIR", m_folder->path());
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
}

QByteArray tst_VelqProcess::run(const QStringList &arguments, const QString &program)
{
    QProcess process;
    start(process, arguments, program);
    if (!process.waitForFinished(kTimeoutMs))
        return "did not end: " + process.readAll();
    const QByteArray output = process.readAll();
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        return "failed with " + QByteArray::number(process.exitCode()) + ": " + output;
    return output;
}

//! The stored uploads; -1 when the store cannot be read.
qint64 tst_VelqProcess::stored() const
{
    sqlite3 *database = nullptr;
    qint64 sum = -1;
    const QByteArray path = m_folder->filePath("velq.db").toUtf8();
    if (sqlite3_open_v2(path.constData(), &database, SQLITE_OPEN_READWRITE, nullptr) == SQLITE_OK) {
        const auto take = [](void *target, int, char **columns, char **) {
            *static_cast<qint64 *>(target) = columns[0] ? QByteArray(columns[0]).toLongLong() : 0;
            return 0;
        };
        (void)sqlite3_exec(database, "SELECT sum(upload) FROM day", take, &sum, nullptr);
    }
    sqlite3_close(database);
    return sum;
}

void tst_VelqProcess::onlyTheNamesOfTheMapAreExported()
{
    QProcess nm;
    nm.start("nm", { "-D", "--defined-only", QStringLiteral(VELQ_LIBRARY) });
    if (!nm.waitForFinished(kTimeoutMs) || nm.exitCode() != 0)
        QSKIP("nm is not installed");
    int functions = 0;
    for (const QByteArray &line : nm.readAll().split('\n')) {
        const QByteArray name = line.mid(line.lastIndexOf(' ') + 1);
        if (name.isEmpty())
            continue;
        QVERIFY2(name.startsWith("VELQ_"), line.constData());
        functions += line.contains(" T ") ? 1 : 0;
    }
    QCOMPARE(functions, 32);
}

void tst_VelqProcess::returningFromMainCommits()
{
    const QByteArray output = run({ "return" });
    const qint64 upload = value(output, "upload");
    QVERIFY2(upload >= kSent, output.constData());
    QVERIFY2(stored() >= upload, output.constData());
    QVERIFY(!QFile::exists(m_folder->filePath("velq.db-wal"))); // closed in order
}

void tst_VelqProcess::exitingInACallbackCommits()
{
    const QByteArray output = run({ "exit-in-callback" });
    QVERIFY2(value(output, "upload") >= kSent, output.constData());
    QVERIFY(stored() >= value(output, "upload"));
}

void tst_VelqProcess::unloadingEndsTheThreadAndCommits()
{
    const QByteArray output = run({ QStringLiteral(VELQ_LIBRARY) }, QStringLiteral(VELQ_LOADER));
    QVERIFY2(output.isEmpty(), output.constData());
    QVERIFY(stored() >= 3 * kSent);
}

void tst_VelqProcess::aForkedChildHarmsNothing()
{
    const QByteArray output = run({ "fork" });
    QCOMPARE(value(output, "child"), 0);
    QVERIFY2(value(output, "upload") >= 2 * kSent, output.constData());
    QVERIFY(stored() >= value(output, "upload"));
}

void tst_VelqProcess::aChildThatStaysBehindDoesNotHoldTheStore()
{
    const qint64 child = value(run({ "leave-a-child" }), "left");
    QVERIFY(child > 0);
    const QByteArray problem = run({ "problem" }).trimmed();
    QVERIFY2(kill(pid_t(child), SIGKILL) == 0, "it was there all the time");
    QVERIFY2(problem.isEmpty(), problem.constData());
}

void tst_VelqProcess::aSecondProcessOnlyReadsAndAKilledOneLosesLittle()
{
    QProcess first;
    start(first, { "wait" });
    QByteArray output;
    while (!output.contains("ready") && first.waitForReadyRead(kTimeoutMs))
        output += first.readAll();
    QVERIFY2(value(output, "ready") >= kSent, output.constData());
    const qint64 before = stored();
    QVERIFY2(before >= kSent, "what was sent five seconds before is committed");

    const QByteArray problem = run({ "problem" });
    QVERIFY2(problem.startsWith("Another process counts into"), problem.constData());
    const QByteArray second = run({ "return" });
    QVERIFY2(value(second, "upload") >= before, second.constData()); // what the first has stored
    first.kill();
    QVERIFY(first.waitForFinished(kTimeoutMs));
    // The second one sent as much again. The first may have stored that; the second has not.
    const qint64 after = stored();
    QVERIFY2(after >= before, QByteArray::number(after).constData());
    if (m_alone)
        QVERIFY2(after < before + 2 * kSent, QByteArray::number(after).constData());

    QVERIFY(value(run({ "return" }), "upload") >= after + kSent);
    QVERIFY(stored() >= after + kSent);
    const QByteArray none = run({ "problem" }).trimmed();
    QVERIFY2(none.isEmpty(), none.constData());
}

int main(int argc, char **argv)
{
    // A namespace of its own, where it is allowed, has a loopback that nobody else uses.
    NetworkPair network;
    const bool alone = network.enter().isEmpty();
    QCoreApplication application(argc, argv);
    tst_VelqProcess test(alone);
    return QTest::qExec(&test, argc, argv);
}
#include "tst_velqprocess.moc"
