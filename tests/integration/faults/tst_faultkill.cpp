#include <QElapsedTimer>
#include <QtTest>

#include <array>
#include <deque>

#include "FaultStage.h"

//! Programs that use the SDK are killed under traffic: each byte is booked, and once.
class tst_FaultKill : public FaultStage
{
    Q_OBJECT
private slots:
    void killedTwoHundredTimes_data();
    void killedTwoHundredTimes();
    void killedAroundTheirCommits();
    void stoppedWhileTrafficFlows();
    void twoProgramsKilledInTurn();
};

void tst_FaultKill::killedTwoHundredTimes_data()
{
    QTest::addColumn<QString>("interface");
    QTest::addColumn<int>("kills");
    QTest::newRow("named interface") << "va" << 200;
    QTest::newRow("interface of the default route") << "" << 50;
}

//! At any moment: while it loads, opens the store, recovers, books or commits.
void tst_FaultKill::killedTwoHundredTimes()
{
    QFETCH(QString, interface);
    QFETCH(int, kills);
    constexpr int kLongestLifeMs = 100;
    ClientOptions options = beginStore("store", interface);
    const Usage base = kernelUsage("va");
    FaultTraffic upload("va");
    FaultTraffic download("vb", s_network->there());
    for (int i = 0; i < kills; ++i) {
        options.busy = i % 4 != 0;
        FaultClient client;
        client.start(options);
        sleepUpTo(kLongestLifeMs);
        client.kill();
    }
    upload.stop();
    download.stop();
    const Usage kernel = kernelUsage("va") - base;
    QVERIFY(isExact(QByteArray::number(kills) + " kills, " + QTest::currentDataTag(), kernel,
                    usageAtLast(options)));
    QVERIFY(stored(options.folder, "SELECT count(*) FROM reason WHERE kind = 1") > kills / 10);
}

//! Long lives, whose looks and commits come when they come; several programs beside each other.
void tst_FaultKill::killedAroundTheirCommits()
{
    constexpr int kSpanMs = 16000;
    constexpr int kLongestLifeMs = 8000;
    std::array<FaultClient, 12> clients;
    std::array<ClientOptions, 12> options;
    std::array<qint64, 12> ends {};
    for (std::size_t i = 0; i < clients.size(); ++i)
        options[i] = beginStore(QStringLiteral("store-%1").arg(i), i % 2 ? "va" : "");
    const Usage base = kernelUsage("va");
    FaultTraffic upload("va");
    FaultTraffic download("vb", s_network->there());
    std::uniform_int_distribution<int> life(0, kLongestLifeMs);
    QElapsedTimer time;
    time.start();
    int kills = -int(clients.size());
    while (time.elapsed() < kSpanMs) {
        for (std::size_t i = 0; i < clients.size(); ++i) {
            if (time.elapsed() < ends[i])
                continue;
            clients[i].kill();
            clients[i].start(options[i]);
            ends[i] = time.elapsed() + life(*s_random);
            ++kills;
        }
        QTest::qSleep(5);
    }
    upload.stop();
    download.stop();
    const Usage kernel = kernelUsage("va") - base;
    for (std::size_t i = 0; i < clients.size(); ++i) {
        clients[i].kill();
        QVERIFY(isExact("store " + QByteArray::number(int(i)) + " of 12, "
                            + QByteArray::number(kills) + " kills in all",
                        kernel, usageAtLast(options[i])));
    }
}

void tst_FaultKill::stoppedWhileTrafficFlows()
{
    const ClientOptions options = beginStore("store", "");
    const Usage base = kernelUsage("va");
    Usage meanwhile;
    for (int i = 0; i < 10; ++i) {
        FaultClient client;
        Usage usage;
        client.start(options);
        QVERIFY(client.waitUntilReady(usage));
        QCOMPARE(usage.upload, meanwhile.upload);
        QCOMPARE(usage.download, meanwhile.download);
        if (i % 2)
            client.kill();
        else
            QVERIFY(client.end());
        FaultTraffic upload("va");
        FaultTraffic download("vb", s_network->there());
        sleepUpTo(300);
        upload.stop();
        download.stop();
        meanwhile = kernelUsage("va") - base;
    }
    QVERIFY(isExact("stopped 10 times while traffic flowed", meanwhile, usageAtLast(options)));
    QCOMPARE(stored(options.folder, "SELECT sum(upload) FROM reason WHERE kind = 1"),
             qint64(meanwhile.upload));
}

//! The one that counts is killed, the other one takes over, and the first one comes back.
void tst_FaultKill::twoProgramsKilledInTurn()
{
    constexpr int kTurns = 10;
    ClientOptions options = beginStore("store", "va");
    const Usage base = kernelUsage("va");
    FaultTraffic upload("va");
    FaultTraffic download("vb", s_network->there());
    std::array<FaultClient, 2> clients;
    Usage usage;
    options.busy = true;
    for (FaultClient &client : clients) {
        client.start(options);
        QVERIFY(client.waitUntilReady(usage));
    }
    for (int i = 0; i < kTurns; ++i) {
        FaultClient &counting = clients[std::size_t(i % 2)];
        FaultClient &other = clients[std::size_t(1 - i % 2)];
        QTRY_COMPARE_WITH_TIMEOUT(counting.ask("counting"), QByteArray("1"), 8000);
        QCOMPARE(other.ask("counting"), QByteArray("0"));
        sleepUpTo(1800);
        counting.kill();
        options.busy = i % 4 != 3; // the usual commits, too
        QTRY_COMPARE_WITH_TIMEOUT(other.ask("counting"), QByteArray("1"), 8000);
        counting.start(options);
        QVERIFY(counting.waitUntilReady(usage));
    }
    upload.stop();
    download.stop();
    const Usage kernel = kernelUsage("va") - base;
    QVERIFY(isExact("two programs, 10 takeovers, the living one", kernel, clients[0].look()));
    for (FaultClient &client : clients)
        client.kill();
    QVERIFY(isExact("two programs, 10 takeovers, the store", kernel, usageAtLast(options)));
}

int main(int argc, char **argv)
{
    return FaultStage::run<tst_FaultKill>(argc, argv);
}
#include "tst_faultkill.moc"
