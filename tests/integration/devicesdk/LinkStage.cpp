#include "LinkStage.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QtTest>

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <cstdio>

using velq::LinkMonitor;
using velq::LinkNews;

NetworkPair *LinkStage::s_network = nullptr;

void LinkStage::initTestCase()
{
    QVERIFY(silenceNewLinks());
    QVERIFY(s_network->runThere(silenceNewLinks));
    const QByteArray sys = QFile::encodeName(m_folder.filePath("sys"));
    QVERIFY(QDir(m_folder.path()).mkdir("sys"));
    m_hasPlaces = unshare(CLONE_NEWNS) == 0
        && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0
        && mount("sysfs", sys.constData(), "sysfs", 0, nullptr) == 0;
    if (!m_hasPlaces)
        std::printf("links are not told apart here: /sys cannot be mounted\n");
}

void LinkStage::init()
{
    m_sums = LinkSums();
    m_monitor = std::make_unique<LinkMonitor>(m_folder.path().toStdString());
}

void LinkStage::cleanup()
{
    m_monitor.reset();
    for (const char *name : { "va", "vb", "vz", "br0", "mac0" })
        if (kernelCounters(name).found)
            QVERIFY(s_network->ipHere(QStringLiteral("link del ") + name));
    QCOMPARE(QString::fromStdString(m_sums.problem()), QString());
}

void LinkStage::cleanupTestCase()
{
    if (m_hasPlaces)
        (void)umount2(QFile::encodeName(m_folder.filePath("sys")).constData(), MNT_DETACH);
}

void LinkStage::read()
{
    const LinkNews news = m_monitor->read();
    QVERIFY(news.valid);
    m_sums.apply(news);
    m_routes = news.routes;
}

void LinkStage::report(const char *what, quint64 counted, quint64 expected)
{
    std::printf("%-52s counted %12llu  kernel %12llu  difference %lld\n", what,
                static_cast<unsigned long long>(counted), static_cast<unsigned long long>(expected),
                static_cast<long long>(counted) - static_cast<long long>(expected));
    (void)std::fflush(stdout);
}

bool LinkStage::makeLink(int index)
{
    const QString options = index > 0 ? QStringLiteral(" index %1").arg(index) : QString();
    return s_network->ipHere("link add va" + options + " type veth peer name vb")
        && s_network->ipHere(
            "link set vb netns "
            + QStringLiteral("/proc/%1/fd/%2").arg(getpid()).arg(s_network->there()))
        && s_network->ipThere("link set vb up") && s_network->ipHere("link set va up");
}

bool LinkStage::upload(int count, int size)
{
    return sendFrames("va", count, size);
}

bool LinkStage::download(int count, int size)
{
    return s_network->runThere([=] { return sendFrames("vb", count, size); });
}

velq::LinkCounters LinkStage::sumOf(const char *name) const
{
    const LinkSum *sum = m_sums.of(name);
    return sum ? sum->sum : velq::LinkCounters {};
}

bool LinkStage::isUp(const char *name) const
{
    const LinkSum *sum = m_sums.of(name);
    return sum && sum->link.up;
}

int LinkStage::run(int argc, char **argv, const std::function<std::unique_ptr<QObject>()> &make)
{
    // Before the first thread, which Qt would start.
    NetworkPair network;
    const QByteArray reason = network.enter();
    if (!reason.isEmpty()) {
        std::printf("SKIPPED: %s\n", reason.constData());
        return 77;
    }
    s_network = &network;
    const QCoreApplication application(argc, argv);
    return QTest::qExec(make().get(), argc, argv);
}
