#include "FaultStage.h"

#include <QCoreApplication>
#include <QDir>
#include <QtTest>

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <cstdio>

#include "Frames.h"

NetworkPair *FaultStage::s_network = nullptr;
std::mt19937 *FaultStage::s_random = nullptr;

//! The programs see links by a /sys of their own namespace. Empty, or why it cannot be.
QByteArray FaultStage::prepare(NetworkPair &network)
{
    const QByteArray reason = network.enter();
    if (!reason.isEmpty())
        return reason;
    if (unshare(CLONE_NEWNS) != 0 || mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0
        || mount("sysfs", "/sys", "sysfs", 0, nullptr) != 0)
        return "/sys cannot be mounted here";
    if (!silenceNewLinks() || !network.runThere(silenceNewLinks))
        return "links cannot be silenced here";
    return {};
}

int FaultStage::run(int argc, char **argv, const std::function<std::unique_ptr<QObject>()> &make)
{
    // Before the first thread, which Qt would start.
    NetworkPair network;
    const QByteArray reason = prepare(network);
    if (!reason.isEmpty()) {
        std::printf("SKIPPED: %s\n", reason.constData());
        return 77;
    }
    s_network = &network;
    std::mt19937 random = faultRandom();
    s_random = &random;
    qputenv("TZ", noonZone());
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/bus");
    const QCoreApplication application(argc, argv);
    return QTest::qExec(make().get(), argc, argv);
}

void FaultStage::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(makeLink());
}

void FaultStage::cleanup()
{
    for (const char *name : { "va", "vc" }) {
        if (kernelCounters(name).found)
            QVERIFY(s_network->ipHere(QStringLiteral("link del ") + name));
    }
}

bool FaultStage::addRoute(const QString &link)
{
    return s_network->ipHere("route replace default dev " + link);
}

bool FaultStage::makeLink(int index)
{
    const QString options = index > 0 ? QStringLiteral(" index %1").arg(index) : QString();
    const QString there = QStringLiteral("/proc/%1/fd/%2").arg(getpid()).arg(s_network->there());
    return s_network->ipHere("link add va" + options + " type veth peer name vb")
        && s_network->ipHere("link set vb netns " + there) && s_network->ipThere("link set vb up")
        && s_network->ipHere("link set va up") && addRoute();
}

ClientOptions FaultStage::beginStore(const QString &name, const QString &interface,
                                     const QStringList &launcher)
{
    const ClientOptions options { m_folder->filePath(name), interface, false, launcher };
    FaultClient client;
    Usage first;
    client.start(options);
    if (!client.waitUntilReady(first) || !(first == Usage()) || !client.end())
        qFatal("a new store cannot be begun");
    return options;
}

Usage FaultStage::usageAtLast(const ClientOptions &options)
{
    ClientOptions calm = options;
    calm.busy = false;
    Usage usage[2] { { ~0ULL, 0 }, { 0, ~0ULL } };
    for (Usage &found : usage) {
        FaultClient client;
        client.start(calm);
        if (!client.waitUntilReady(found) || !client.end())
            return { ~0ULL, ~0ULL };
    }
    return usage[0] == usage[1] ? usage[0] : Usage { ~0ULL, ~0ULL };
}

void FaultStage::sleepUpTo(int milliseconds)
{
    QTest::qSleep(1 + std::uniform_int_distribution<int>(0, milliseconds)(*s_random));
}
