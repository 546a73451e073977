#include "counters/LinkMonitor.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>

#include "Frames.h"
#include "LinkSums.h"
#include "NetworkPair.h"

using velq::LinkMonitor;
using velq::LinkNews;

namespace {

NetworkPair *g_network = nullptr;

//! The messages that the kernel could not put into the queues of this process.
quint64 lostMessages()
{
    QFile file(QStringLiteral("/proc/self/net/netlink"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    constexpr int kPortColumn = 2;
    constexpr int kLostColumn = 8;
    quint64 lost = 0;
    for (const QByteArray &line : file.readAll().split('\n')) {
        const QList<QByteArray> columns = line.simplified().split(' ');
        if (columns.value(kPortColumn).toLongLong() == getpid())
            lost += columns.value(kLostColumn).toULongLong();
    }
    return lost;
}

void report(const char *what, quint64 counted, quint64 expected)
{
    std::printf("%-52s counted %12llu  kernel %12llu  difference %lld\n", what,
                static_cast<unsigned long long>(counted), static_cast<unsigned long long>(expected),
                static_cast<long long>(counted) - static_cast<long long>(expected));
    (void)std::fflush(stdout);
}

} // namespace

//! Real links of a namespace: what a user of the news adds up is what the kernel has counted.
class tst_LinkTraffic : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();
    void theFirstLookHasNoBase();
    void aNewLinkIsCountedFromItsBase();
    void downUpAndRenameKeepTheLink();
    void deletionLosesNothingThatTheKernelStillKnows_data();
    void deletionLosesNothingThatTheKernelStillKnows();
    void aDeletedPairInventsNothing();
    void deletionUnderTrafficLosesNothing_data();
    void deletionUnderTrafficLosesNothing();
    void aNewLinkWithTheSameNameAndIndexIsAnother();
    void trafficInAnotherNamespaceIsNotCounted();
    void linksOverLinks();
    void lostEventsLoseNoByte();
    void changesUnderTrafficNeverLetACounterFall();
    void moreThanFourGiB();
    void defaultRoutesInTheirOrder();
    void disconnectedUntilANewAddress();

private:
    void read();
    [[nodiscard]] bool makeLink(int index = 0);
    [[nodiscard]] static bool upload(int count, int size);
    [[nodiscard]] static bool download(int count, int size);
    [[nodiscard]] velq::LinkCounters sumOf(const char *name) const;
    [[nodiscard]] bool isUp(const char *name) const;

    QTemporaryDir m_folder; // has a /sys that shows the namespace, where that can be mounted
    bool m_hasPlaces = false;
    std::unique_ptr<LinkMonitor> m_monitor;
    LinkSums m_sums;
    std::vector<velq::DefaultRoute> m_routes;
};

void tst_LinkTraffic::initTestCase()
{
    QVERIFY(silenceNewLinks());
    QVERIFY(g_network->runThere(silenceNewLinks));
    const QByteArray sys = QFile::encodeName(m_folder.filePath("sys"));
    QVERIFY(QDir(m_folder.path()).mkdir("sys"));
    m_hasPlaces = unshare(CLONE_NEWNS) == 0
        && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0
        && mount("sysfs", sys.constData(), "sysfs", 0, nullptr) == 0;
    if (!m_hasPlaces)
        std::printf("links are not told apart here: /sys cannot be mounted\n");
}

void tst_LinkTraffic::init()
{
    m_sums = LinkSums();
    m_monitor = std::make_unique<LinkMonitor>(m_folder.path().toStdString());
}

void tst_LinkTraffic::cleanup()
{
    m_monitor.reset();
    for (const char *name : { "va", "vb", "vz", "br0", "mac0" })
        if (kernelCounters(name).found)
            QVERIFY(g_network->ipHere(QStringLiteral("link del ") + name));
    QCOMPARE(QString::fromStdString(m_sums.problem()), QString());
}

void tst_LinkTraffic::cleanupTestCase()
{
    if (m_hasPlaces)
        (void)umount2(QFile::encodeName(m_folder.filePath("sys")).constData(), MNT_DETACH);
}

void tst_LinkTraffic::read()
{
    const LinkNews news = m_monitor->read();
    QVERIFY(news.valid);
    m_sums.apply(news);
    m_routes = news.routes;
}

bool tst_LinkTraffic::makeLink(int index)
{
    const QString options = index > 0 ? QStringLiteral(" index %1").arg(index) : QString();
    return g_network->ipHere("link add va" + options + " type veth peer name vb")
        && g_network->ipHere(
            "link set vb netns "
            + QStringLiteral("/proc/%1/fd/%2").arg(getpid()).arg(g_network->there()))
        && g_network->ipThere("link set vb up") && g_network->ipHere("link set va up");
}

bool tst_LinkTraffic::upload(int count, int size)
{
    return sendFrames("va", count, size);
}

bool tst_LinkTraffic::download(int count, int size)
{
    return g_network->runThere([=] { return sendFrames("vb", count, size); });
}

velq::LinkCounters tst_LinkTraffic::sumOf(const char *name) const
{
    const LinkSum *sum = m_sums.of(name);
    return sum ? sum->sum : velq::LinkCounters {};
}

bool tst_LinkTraffic::isUp(const char *name) const
{
    const LinkSum *sum = m_sums.of(name);
    return sum && sum->link.up;
}

void tst_LinkTraffic::theFirstLookHasNoBase()
{
    QVERIFY(makeLink());
    QVERIFY(upload(10, 1000));
    m_monitor = std::make_unique<LinkMonitor>(m_folder.path().toStdString());
    read();
    const LinkSum *va = m_sums.of("va");
    QVERIFY(va && !va->hasBase);
    QCOMPARE(va->last.upload, quint64(10000));
    QCOMPARE(va->link.kind, std::string("veth"));
    QCOMPARE(va->link.lowerIndex, 0); // its peer is in another namespace
    QCOMPARE(va->link.up, true);
    QCOMPARE(va->link.instance != 0, m_hasPlaces);
    QCOMPARE(m_sums.of("lo")->link.loopback, true);
    QVERIFY(upload(3, 100));
    read();
    QCOMPARE(sumOf("va").upload, quint64(300));
}

void tst_LinkTraffic::aNewLinkIsCountedFromItsBase()
{
    read();
    QVERIFY(makeLink());
    QVERIFY(upload(100, 1000));
    QVERIFY(download(50, 1400));
    read();
    QVERIFY(upload(1, 60));
    read();
    QVERIFY(m_sums.of("va")->hasBase);
    report("created while watched, upload", sumOf("va").upload, kernelCounters("va").upload);
    QCOMPARE(sumOf("va").upload, quint64(100 * 1000 + 60));
    QCOMPARE(sumOf("va").upload, kernelCounters("va").upload);
    QCOMPARE(sumOf("va").download, quint64(50 * 1400));
    QCOMPARE(sumOf("va").download, kernelCounters("va").download);
}

void tst_LinkTraffic::downUpAndRenameKeepTheLink()
{
    read();
    QVERIFY(makeLink());
    read();
    const auto first = m_sums.of("va")->link;
    for (int i = 0; i < 20; ++i) {
        QVERIFY(upload(7, 100 + i));
        QVERIFY(g_network->ipHere("link set va down"));
        if (i % 3 == 0) {
            read();
            QVERIFY(!isUp("va"));
        }
        QVERIFY(g_network->ipHere("link set va name vz")
                && g_network->ipHere("link set vz name va"));
        QVERIFY(g_network->ipHere("link set va up"));
        QVERIFY(download(3, 1000 + i));
    }
    QVERIFY(g_network->ipHere("link set va name vz"));
    read();
    const auto links = m_sums.withIndex(first.index);
    QCOMPARE(links.size(), std::size_t(1));
    QCOMPARE(links.front().link.name, std::string("vz"));
    QCOMPARE(links.front().link.instance, first.instance);
    QVERIFY(isUp("vz"));
    const KernelCounters kernel = kernelCounters("vz");
    report("down, up and renamed 20 times, upload", sumOf("vz").upload, kernel.upload);
    report("down, up and renamed 20 times, download", sumOf("vz").download, kernel.download);
    QCOMPARE(sumOf("vz").upload, kernel.upload);
    QCOMPARE(sumOf("vz").download, kernel.download);
    QCOMPARE(sumOf("vz").upload, quint64(20 * 7 * 100 + 7 * 190));
}

void tst_LinkTraffic::deletionLosesNothingThatTheKernelStillKnows_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("here");
    QTest::addColumn<QString>("there");
    QTest::newRow("itself") << ""
                            << "link del va"
                            << "";
    QTest::newRow("its peer") << ""
                              << ""
                              << "link del vb";
    QTest::newRow("itself, when it is down") << "link set va down"
                                             << "link del va"
                                             << "";
    QTest::newRow("its peer, when it is down") << "link set va down"
                                               << ""
                                               << "link del vb";
}

void tst_LinkTraffic::deletionLosesNothingThatTheKernelStillKnows()
{
    QFETCH(QString, before);
    QFETCH(QString, here);
    QFETCH(QString, there);
    read();
    QVERIFY(makeLink());
    QVERIFY(download(11, 900));
    QVERIFY(upload(10, 500));
    read();
    QVERIFY(upload(1000, 1234)); // never read while the link lives
    KernelCounters peer;
    QVERIFY(g_network->runThere([&] { return (peer = kernelCounters("vb")).found; }));
    QVERIFY(before.isEmpty() || g_network->ipHere(before));
    QVERIFY(here.isEmpty() || g_network->ipHere(here));
    QVERIFY(there.isEmpty() || g_network->ipThere(there));
    QTRY_VERIFY(!kernelCounters("va").found);
    read();
    const LinkSum *va = m_sums.of("va");
    QVERIFY(va->gone);
    QVERIFY(!va->link.up);
    report(QTest::currentDataTag(), va->sum.upload, peer.download);
    QCOMPARE(va->sum.upload, peer.download);
    QCOMPARE(va->sum.upload, quint64(10 * 500 + 1000 * 1234));
    QCOMPARE(va->sum.download, peer.upload);
    QCOMPARE(va->falls, 0);
}

//! The download of one end is the upload of the other: the kernel forgets it with the deletion.
void tst_LinkTraffic::aDeletedPairInventsNothing()
{
    read();
    QVERIFY(makeLink());
    QVERIFY(download(10, 1000));
    read();
    QVERIFY(download(5, 1000));
    QVERIFY(upload(7, 1000));
    QVERIFY(g_network->ipThere("link del vb"));
    QTRY_VERIFY(!kernelCounters("va").found);
    read();
    report("a pair's download since the last look, deleted", sumOf("va").download, 15000);
    QVERIFY(sumOf("va").download >= 10000);
    QVERIFY(sumOf("va").download <= 15000);
    QCOMPARE(sumOf("va").upload, quint64(7000));
    QCOMPARE(m_sums.falls(), 0);
}

void tst_LinkTraffic::deletionUnderTrafficLosesNothing_data()
{
    QTest::addColumn<QString>("command");
    QTest::newRow("deleted under traffic") << "link del vz";
    QTest::newRow("closed under traffic") << "";
    QTest::newRow("set down, then closed") << "link set vz down";
}

void tst_LinkTraffic::deletionUnderTrafficLosesNothing()
{
    QFETCH(QString, command);
    read();
    quint64 written = 0;
    quint64 counted = 0;
    for (int i = 0; i < 20; ++i) {
        Tap tap("vz");
        if (!tap.isOpen())
            QSKIP("links of programs are not allowed here");
        QVERIFY(g_network->ipHere("link set vz up"));
        tap.startFlood();
        QTest::qSleep(5 + i);
        if (i % 2 == 0)
            read();
        QTest::qSleep(1 + i);
        if (!command.isEmpty())
            QVERIFY(g_network->ipHere(command));
        written += tap.stopFlood();
        tap.close();
        read();
        const LinkSum *vz = m_sums.of("vz");
        QVERIFY(vz && vz->gone);
        counted += vz->sum.download;
    }
    report(QTest::currentDataTag(), counted, written);
    QVERIFY(written > 0);
    QCOMPARE(counted, written);
    QCOMPARE(m_sums.falls(), 0);
}

void tst_LinkTraffic::aNewLinkWithTheSameNameAndIndexIsAnother()
{
    constexpr int kIndex = 4711;
    read();
    QVERIFY(makeLink(kIndex));
    QVERIFY(upload(20, 800));
    QVERIFY(g_network->ipHere("link del va"));
    QVERIFY(makeLink(kIndex));
    QVERIFY(upload(30, 900)); // more than the first one has counted
    read();
    const auto links = m_sums.withIndex(kIndex);
    QCOMPARE(links.size(), std::size_t(2));
    QCOMPARE(links[0].gone, true);
    QCOMPARE(links[0].sum.upload, quint64(20 * 800));
    QCOMPARE(links[1].gone, false);
    QCOMPARE(links[1].sum.upload, quint64(30 * 900));
    report("deleted and made again, upload", links[0].sum.upload + links[1].sum.upload,
           20 * 800 + kernelCounters("va").upload);
}

void tst_LinkTraffic::trafficInAnotherNamespaceIsNotCounted()
{
    read();
    QVERIFY(makeLink());
    QVERIFY(upload(10, 1000));
    const int index = [this] {
        read();
        return m_sums.of("va")->link.index;
    }();
    QVERIFY(upload(5, 1000));
    const QString handles = QStringLiteral("/proc/%1/fd/%2").arg(getpid());
    const QString here = QStringLiteral("/proc/%1/ns/net").arg(getpid());
    QVERIFY(g_network->ipHere("link set va netns " + handles.arg(g_network->there())));
    QVERIFY(g_network->ipThere("link set va up"));
    QVERIFY(g_network->runThere([] { return sendFrames("va", 100, 1000); }));
    QVERIFY(g_network->ipThere("link set va netns " + here));
    QVERIFY(g_network->ipHere("link set va up"));
    QVERIFY(upload(7, 1000));
    read();
    const auto links = m_sums.withIndex(index);
    QCOMPARE(links.size(), std::size_t(2));
    QVERIFY(links[0].gone && !links[1].gone);
    const quint64 counted = links[0].sum.upload + links[1].sum.upload;
    report("away for 100,000 bytes and back, upload", counted,
           kernelCounters("va").upload - 100000);
    QCOMPARE(kernelCounters("va").upload, quint64(122000));
    QCOMPARE(counted, quint64(22000));
}

void tst_LinkTraffic::linksOverLinks()
{
    read();
    QVERIFY(makeLink());
    Tap tun("vz", false);
    QVERIFY(g_network->ipHere("link add br0 type bridge") && g_network->ipHere("link set br0 up"));
    QVERIFY(g_network->ipHere("link set va master br0"));
    QVERIFY(g_network->ipHere("link add mac0 link br0 type macvlan"));
    read();
    const auto link = [this](const char *name) { return m_sums.of(name)->link; };
    QCOMPARE(link("br0").kind, std::string("bridge"));
    QCOMPARE(link("mac0").kind, std::string("macvlan"));
    QCOMPARE(link("va").masterIndex, link("br0").index);
    QCOMPARE(link("mac0").lowerIndex, link("br0").index);
    QCOMPARE(link("br0").masterIndex, 0);
    if (tun.isOpen())
        QCOMPARE(link("vz").kind, std::string("tun"));
    QVERIFY(download(100, 1000));
    read();
    report("through a bridge, download of its port", sumOf("va").download,
           kernelCounters("va").download);
    report("through a bridge, its own download", sumOf("br0").download,
           kernelCounters("br0").download);
    QCOMPARE(sumOf("va").download, quint64(100000));
    QCOMPARE(sumOf("br0").download, kernelCounters("br0").download);
    QVERIFY(sumOf("br0").download > 0);
    QVERIFY(g_network->ipHere("link set va nomaster"));
    read();
    QCOMPARE(link("va").masterIndex, 0);
    QVERIFY(!m_sums.of("va")->gone);
}

void tst_LinkTraffic::lostEventsLoseNoByte()
{
    constexpr int kIndex = 4712;
    read();
    QVERIFY(makeLink(kIndex));
    QVERIFY(upload(10, 1000));
    read();
    const int lo = m_sums.of("lo")->link.index;
    const quint64 lostBefore = lostMessages();
    QFile batch(m_folder.filePath("batch"));
    QVERIFY(batch.open(QIODevice::WriteOnly));
    for (int i = 0; i < 2000; ++i)
        batch.write("link set lo mtu 60000\nlink set lo mtu 65536\n");
    batch.close();
    QVERIFY(g_network->ipHere("-batch " + batch.fileName()));
    QVERIFY(lostMessages() > lostBefore);
    // Of all this the kernel says nothing any more.
    QVERIFY(g_network->ipHere("link del va"));
    QVERIFY(makeLink(kIndex));
    QVERIFY(upload(30, 1000));
    QVERIFY(g_network->ipHere("link add br0 type bridge"));
    read();
    QCOMPARE(m_sums.withIndex(lo).size(), std::size_t(1));
    QCOMPARE(m_sums.of("br0")->hasBase, true);
    QVERIFY(isUp("va"));
    const auto links = m_sums.withIndex(kIndex);
    quint64 counted = 0;
    for (const LinkSum &link : links)
        counted += link.sum.upload;
    if (!m_hasPlaces)
        QSKIP("without /sys the new link passes for the old one");
    QCOMPARE(links.size(), std::size_t(2));
    report("made again while events were lost, upload", counted,
           10000 + kernelCounters("va").upload);
    QCOMPARE(counted, quint64(40000));
    QCOMPARE(m_sums.falls(), 0);
    QVERIFY(g_network->ipHere("link set va down")); // events are heard again
    read();
    QVERIFY(!isUp("va"));
}

void tst_LinkTraffic::changesUnderTrafficNeverLetACounterFall()
{
    read();
    Tap tap("vz");
    if (!tap.isOpen())
        QSKIP("links of programs are not allowed here");
    QVERIFY(g_network->ipHere("link set vz up"));
    QFile batch(m_folder.filePath("batch"));
    QVERIFY(batch.open(QIODevice::WriteOnly));
    for (int i = 0; i < 4000; ++i)
        batch.write("link set vz mtu 1400\nlink set vz mtu 1500\n");
    batch.close();
    tap.startFlood();
    std::atomic<bool> done { false };
    std::thread changes([&] {
        (void)g_network->ipHere("-batch " + batch.fileName());
        done = true;
    });
    int reads = 0;
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    for (; !done && std::chrono::steady_clock::now() < end; ++reads)
        m_sums.apply(m_monitor->read());
    changes.join();
    const quint64 written = tap.stopFlood();
    read();
    std::printf("%d looks while events came\n", reads);
    report("8000 events under traffic, download", sumOf("vz").download, written);
    QVERIFY(reads > 100);
    QCOMPARE(m_sums.falls(), 0);
    QCOMPARE(sumOf("vz").download, written);
}

void tst_LinkTraffic::moreThanFourGiB()
{
    constexpr qint64 kBytes = 4500000000; // beyond 32 bits
    read();
    QVERIFY(makeLink());
    QVERIFY(g_network->ipHere("addr add 10.81.0.1/24 dev va"));
    QVERIFY(g_network->ipThere("addr add 10.81.0.2/24 dev vb"));
    std::atomic<bool> done { false };
    bool sent = false;
    std::thread traffic([&] {
        sent = g_network->upload(kBytes);
        done = true;
    });
    while (!done) {
        m_sums.apply(m_monitor->read());
        QTest::qSleep(100);
    }
    traffic.join();
    QVERIFY(sent);
    KernelCounters before;
    do { // the last acknowledgements
        before = kernelCounters("va");
        QTest::qSleep(50);
        read();
    } while (before.upload != kernelCounters("va").upload
             || before.download != kernelCounters("va").download);
    report("past 32 bits, upload", sumOf("va").upload, before.upload);
    report("past 32 bits, download", sumOf("va").download, before.download);
    QVERIFY(sumOf("va").upload > quint64(kBytes));
    QCOMPARE(sumOf("va").upload, before.upload);
    QCOMPARE(sumOf("va").download, before.download);
}

void tst_LinkTraffic::defaultRoutesInTheirOrder()
{
    QVERIFY(makeLink());
    QVERIFY(g_network->ipHere("addr add 10.81.0.1/24 dev va"));
    read();
    QVERIFY(m_routes.empty());
    QVERIFY(g_network->ipHere("route add default via 10.81.0.2 dev va metric 300"));
    QVERIFY(g_network->ipHere("route add default via 10.81.0.2 dev va metric 600"));
    QVERIFY(g_network->ipHere("route add default via 10.81.0.2 dev va metric 200"));
    for (int i = 0; i < 2; ++i) { // the second time from memory
        read();
        std::vector<unsigned> metrics;
        for (const auto &route : m_routes)
            metrics.push_back(route.metric);
        QCOMPARE(metrics, (std::vector<unsigned> { 200, 300, 600 }));
    }
    QVERIFY(g_network->ipThere("link set vb down"));
    QTRY_VERIFY_WITH_TIMEOUT((read(), m_routes.empty()), 3000);
    QVERIFY(!isUp("va"));
}

void tst_LinkTraffic::disconnectedUntilANewAddress()
{
    QVERIFY(makeLink());
    QVERIFY(g_network->ipHere("addr add 10.81.0.1/24 dev va"));
    read();
    QVERIFY(isUp("va"));
    m_monitor->noteDisconnect(m_sums.of("va")->link.index);
    QVERIFY(upload(10, 100));
    read();
    QVERIFY(!isUp("va"));
    QCOMPARE(sumOf("va").upload, quint64(1000)); // counted all the same
    QVERIFY(g_network->ipHere("link set va mtu 1400"));
    read();
    QVERIFY(!isUp("va"));
    QVERIFY(g_network->ipHere("addr add 10.81.0.3/24 dev va"));
    read();
    QVERIFY(isUp("va"));
    m_monitor->noteDisconnect(m_sums.of("va")->link.index);
    QVERIFY(g_network->ipHere("link set va down") && g_network->ipHere("link set va up"));
    QTRY_VERIFY((read(), isUp("va")));
}

int main(int argc, char **argv)
{
    NetworkPair network;
    const QByteArray problem = network.enter();
    if (!problem.isEmpty()) {
        std::fprintf(stderr, "SKIP: %s\n", problem.constData());
        return 77;
    }
    g_network = &network;
    const QCoreApplication application(argc, argv);
    tst_LinkTraffic test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_linktraffic.moc"
