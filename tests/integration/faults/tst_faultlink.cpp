#include <QtTest>

#include <net/if.h>

#include <thread>

#include "FaultStage.h"
#include "Frames.h"

//! Links that go down, are renamed, deleted and made again under a program that counts them.
class tst_FaultLink : public FaultStage
{
    Q_OBJECT
private slots:
    void downUpAndRenamed_data();
    void downUpAndRenamed();
    void deletedAndMadeAgain_data();
    void deletedAndMadeAgain();
    void deletedUnderTraffic();
    void shortLives();
    void theRouteMovesUnderTraffic();
    void pastFourGiBWithKills();
};

void tst_FaultLink::downUpAndRenamed_data()
{
    QTest::addColumn<QString>("interface");
    QTest::addColumn<bool>("kill");
    QTest::newRow("named interface") << "va" << false;
    QTest::newRow("interface of the default route") << "" << false;
    QTest::newRow("interface of the default route, killed as well") << "" << true;
}

void tst_FaultLink::downUpAndRenamed()
{
    QFETCH(QString, interface);
    QFETCH(bool, kill);
    constexpr int kTimes = 8;
    const ClientOptions options = beginStore("store", interface);
    const Usage base = kernelUsage("va");
    FaultClient client;
    client.start(options);
    FaultTraffic upload("va");
    FaultTraffic download("vb", s_network->there());
    for (int i = 0; i < kTimes; ++i) {
        sleepUpTo(200);
        QVERIFY(s_network->ipHere("link set va down"));
        sleepUpTo(i % 4 ? 20 : 600);
        QVERIFY(s_network->ipHere("link set va name vz"));
        QVERIFY(s_network->ipHere("link set vz up"));
        sleepUpTo(100);
        QVERIFY(s_network->ipHere("link set vz down"));
        QVERIFY(s_network->ipHere("link set vz name va"));
        QVERIFY(s_network->ipHere("link set va up") && addRoute());
        if (kill && i % 2) {
            sleepUpTo(800);
            client.kill();
            client.start(options);
        }
    }
    upload.stop();
    download.stop();
    const Usage kernel = kernelUsage("va") - base;
    client.kill();
    QVERIFY(isExact(QByteArray("8 times down, renamed and up, ") + QTest::currentDataTag(), kernel,
                    usageAtLast(options)));
}

void tst_FaultLink::deletedAndMadeAgain_data()
{
    QTest::addColumn<QString>("interface");
    QTest::newRow("named interface") << "va";
    QTest::newRow("interface of the default route") << "";
}

/*!
 * With the same name and index. Each life is looked at once at least, and its last bytes flow after
 * that. Of a deleted pair the kernel forgets the download; the upload is known.
 */
void tst_FaultLink::deletedAndMadeAgain()
{
    QFETCH(QString, interface);
    constexpr int kLives = 4;
    constexpr int kIndex = 4711;
    const ClientOptions options = beginStore("store", interface);
    Usage kernel {};
    const Usage base = kernelUsage("va");
    FaultClient client;
    Usage usage;
    client.start(options);
    QVERIFY(client.waitUntilReady(usage));
    for (int i = 0; i < kLives; ++i) {
        QVERIFY(sendFrames("va", 100 + i, 700));
        usage = client.look();
        QVERIFY(sendFrames("va", 50, 1000 + i)); // never looked at while the link lives
        const Usage life = kernelUsage("va");
        kernel.upload += i == 0 ? life.upload - base.upload : life.upload;
        QVERIFY(s_network->ipHere("link del va"));
        QVERIFY(makeLink(kIndex));
        QCOMPARE(if_nametoindex("va"), unsigned(kIndex));
    }
    usage = client.look();
    QVERIFY(client.end());
    QVERIFY(isExact(QByteArray("4 lives with the same index, ") + QTest::currentDataTag(), kernel,
                    usageAtLast(options)));
}

//! A link of a program, whose last bytes the kernel tells.
void tst_FaultLink::deletedUnderTraffic()
{
    constexpr int kLives = 4;
    const ClientOptions options = beginStore("store", "vt");
    FaultClient client;
    Usage usage;
    client.start(options);
    QVERIFY(client.waitUntilReady(usage));
    Usage written {};
    for (int i = 0; i < kLives; ++i) {
        Tap tap("vt");
        if (!tap.isOpen())
            QSKIP("links of programs are not allowed here");
        QVERIFY(s_network->ipHere("link set vt up"));
        tap.startFlood();
        usage = client.look();
        sleepUpTo(300);
        if (i % 2)
            QVERIFY(s_network->ipHere("link del vt"));
        written.download += tap.stopFlood();
        tap.close();
    }
    usage = client.look();
    QVERIFY(client.end());
    QVERIFY(isExact("4 lives deleted or closed under traffic", written, usageAtLast(options)));
}

//! A named link that comes and goes between two looks is counted all the same.
void tst_FaultLink::shortLives()
{
    constexpr int kLives = 20;
    const ClientOptions options = beginStore("store", "vt");
    FaultClient client;
    Usage usage;
    client.start(options);
    QVERIFY(client.waitUntilReady(usage));
    Usage written {};
    for (int i = 0; i < kLives; ++i) {
        Tap tap("vt");
        if (!tap.isOpen())
            QSKIP("links of programs are not allowed here");
        QVERIFY(s_network->ipHere("link set vt up"));
        tap.startFlood();
        sleepUpTo(100);
        written.download += tap.stopFlood();
        tap.close();
    }
    usage = client.look();
    QVERIFY(client.end());
    QVERIFY(isExact("20 lives of up to 0.1 seconds", written, usageAtLast(options)));
}

//! Both links carry what leaves the computer, one after the other.
void tst_FaultLink::theRouteMovesUnderTraffic()
{
    constexpr int kMoves = 6;
    QVERIFY(s_network->ipHere("link add vc type veth peer name vd"));
    QVERIFY(s_network->ipHere("link set vc up") && s_network->ipHere("link set vd up"));
    const ClientOptions options = beginStore("store", "");
    FaultClient client;
    Usage usage;
    client.start(options);
    QVERIFY(client.waitUntilReady(usage));
    Usage sent {};
    for (int i = 0; i < kMoves; ++i) {
        const bool other = i % 2;
        const QByteArray link = other ? "vc" : "va";
        QVERIFY(addRoute(QString::fromLatin1(link)));
        usage = client.look();
        const Usage before = kernelUsage(link);
        QVERIFY(sendFrames(link, 100 + i, 900));
        sent = sent + (kernelUsage(link) - before);
    }
    usage = client.look();
    QVERIFY(client.end());
    QVERIFY(isExact("6 moves of the route", sent, usageAtLast(options)));
}

void tst_FaultLink::pastFourGiBWithKills()
{
    constexpr qint64 kBytes = 4500000000; // beyond 32 bits
    QVERIFY(s_network->ipHere("addr add 10.81.0.1/24 dev va"));
    QVERIFY(s_network->ipThere("addr add 10.81.0.2/24 dev vb"));
    const ClientOptions options = beginStore("store", "");
    const Usage base = kernelUsage("va");
    bool sent = false;
    std::atomic<bool> done { false };
    std::thread traffic([&] {
        sent = s_network->upload(kBytes);
        done = true;
    });
    int kills = 0;
    while (!done) {
        FaultClient client;
        client.start(options);
        sleepUpTo(300);
        client.kill();
        ++kills;
    }
    traffic.join();
    QVERIFY(sent);
    const Usage kernel = kernelUsage("va") - base;
    QVERIFY(kernel.upload > quint64(kBytes));
    QVERIFY(isExact("past 32 bits, " + QByteArray::number(kills) + " kills", kernel,
                    usageAtLast(options)));
}

int main(int argc, char **argv)
{
    return FaultStage::run<tst_FaultLink>(argc, argv);
}
#include "tst_faultlink.moc"
