#include <QFile>
#include <QtTest>

#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <thread>

#include "LinkStage.h"

using velq::LinkMonitor;

namespace {

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

} // namespace

//! Real links of a namespace: what a user of the news adds up is what the kernel has counted.
class tst_LinkTraffic : public LinkStage
{
    Q_OBJECT
private slots:
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
    void lostEventsLoseNoByte();
    void changesUnderTrafficNeverLetACounterFall();
    void moreThanFourGiB();
};

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
        QVERIFY(s_network->ipHere("link set va down"));
        if (i % 3 == 0) {
            read();
            QVERIFY(!isUp("va"));
        }
        QVERIFY(s_network->ipHere("link set va name vz")
                && s_network->ipHere("link set vz name va"));
        QVERIFY(s_network->ipHere("link set va up"));
        QVERIFY(download(3, 1000 + i));
    }
    QVERIFY(s_network->ipHere("link set va name vz"));
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
    QVERIFY(s_network->runThere([&] { return (peer = kernelCounters("vb")).found; }));
    QVERIFY(before.isEmpty() || s_network->ipHere(before));
    QVERIFY(here.isEmpty() || s_network->ipHere(here));
    QVERIFY(there.isEmpty() || s_network->ipThere(there));
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
    QVERIFY(s_network->ipThere("link del vb"));
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
        QVERIFY(s_network->ipHere("link set vz up"));
        tap.startFlood();
        QTest::qSleep(5 + i);
        if (i % 2 == 0)
            read();
        QTest::qSleep(1 + i);
        if (!command.isEmpty())
            QVERIFY(s_network->ipHere(command));
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
    QVERIFY(s_network->ipHere("link del va"));
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
    QVERIFY(s_network->ipHere("link set va netns " + handles.arg(s_network->there())));
    QVERIFY(s_network->ipThere("link set va up"));
    QVERIFY(s_network->runThere([] { return sendFrames("va", 100, 1000); }));
    QVERIFY(s_network->ipThere("link set va netns " + here));
    QVERIFY(s_network->ipHere("link set va up"));
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
    QVERIFY(s_network->ipHere("-batch " + batch.fileName()));
    QVERIFY(lostMessages() > lostBefore);
    // Of all this the kernel says nothing any more.
    QVERIFY(s_network->ipHere("link del va"));
    QVERIFY(makeLink(kIndex));
    QVERIFY(upload(30, 1000));
    QVERIFY(s_network->ipHere("link add br0 type bridge"));
    read();
    QCOMPARE(m_sums.withIndex(lo).size(), std::size_t(1));
    QVERIFY(m_sums.of("br0") && m_sums.of("br0")->hasBase);
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
    QVERIFY(s_network->ipHere("link set va down")); // events are heard again
    read();
    QVERIFY(!isUp("va"));
}

void tst_LinkTraffic::changesUnderTrafficNeverLetACounterFall()
{
    read();
    Tap tap("vz");
    if (!tap.isOpen())
        QSKIP("links of programs are not allowed here");
    QVERIFY(s_network->ipHere("link set vz up"));
    QFile batch(m_folder.filePath("batch"));
    QVERIFY(batch.open(QIODevice::WriteOnly));
    for (int i = 0; i < 4000; ++i)
        batch.write("link set vz mtu 1400\nlink set vz mtu 1500\n");
    batch.close();
    tap.startFlood();
    std::atomic<bool> done { false };
    std::thread changes([&] {
        (void)s_network->ipHere("-batch " + batch.fileName());
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
    QVERIFY(s_network->ipHere("addr add 10.81.0.1/24 dev va"));
    QVERIFY(s_network->ipThere("addr add 10.81.0.2/24 dev vb"));
    std::atomic<bool> done { false };
    bool sent = false;
    std::thread traffic([&] {
        sent = s_network->upload(kBytes);
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

int main(int argc, char **argv)
{
    return LinkStage::run<tst_LinkTraffic>(argc, argv);
}

#include "tst_linktraffic.moc"
