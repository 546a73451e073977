#include "modem/NetworkWatcher.h"

#include <QtTest>

#include <atomic>
#include <ctime>

#include <sys/wait.h>
#include <unistd.h>

#include "ServiceObjects.h"

using velq::ModemFacts;
using velq::NetworkFacts;
using velq::NetworkWatcher;
using velq::WatcherOptions;

Q_DECLARE_METATYPE(Manner)

class tst_NetworkWatcher : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();

    void theFactsOfAModem();
    void theFactsOfNetworkManager();
    void changesAreFollowed();
    void aChangeWithoutItsValueIsAskedFor();
    void aSignalOfSomebodyElseIsIgnored();
    void modemsComeAndGo();
    void figuresAreReadAgain();
    void manyDevicesAreAllRead();
    void aServiceThatGoesTakesItsFactsAlong();
    void noServiceIsStarted();
    void servicesThatMisbehaveAreAskedAgain_data();
    void servicesThatMisbehaveAreAskedAgain();
    void aBusThatComesBackIsFound();
    void aBusThatHangsUpIsCalledAgain();
    void whatIsNoBusSaysNothing_data();
    void whatIsNoBusSaysNothing();
    void anIdleWatcherSleeps_data();
    void anIdleWatcherSleeps();
    void noFileStaysOpen();
    void factsAreReadFromManyThreads();
    void aForkedChildLeavesItAlone();
};

namespace {

WatcherOptions quick()
{
    WatcherOptions options;
    options.callTime = std::chrono::milliseconds(300);
    options.statsInterval = std::chrono::milliseconds(50);
    options.firstRetry = std::chrono::milliseconds(20);
    options.lastRetry = std::chrono::milliseconds(100);
    return options;
}

//! The only modem, or one without any properties.
ModemFacts modemOf(const NetworkWatcher &watcher)
{
    const auto facts = watcher.facts();
    return facts->modems.size() == 1 ? facts->modems.front() : ModemFacts();
}

bool isComplete(const NetworkWatcher &watcher)
{
    const ModemFacts modem = modemOf(watcher);
    return modem.interface == "wwan0" && modem.simId == "8900" && modem.operatorName == "Net";
}

bool isEmpty(const NetworkWatcher &watcher)
{
    const auto facts = watcher.facts();
    return !facts->bus && !facts->networkManager && !facts->modemManager && facts->modems.empty()
        && facts->devices.empty() && facts->primaryInterface.empty();
}

qint64 processorMs()
{
    timespec used {};
    (void)clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
    return qint64(used.tv_sec) * 1000 + used.tv_nsec / 1000000;
}

int openFiles()
{
    return int(QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::NoFilter).size());
}

} // namespace

#define START(watcher)                                                                             \
    NetworkWatcher watcher(quick());                                                               \
    QVERIFY(isEmpty(watcher));                                                                     \
    QVERIFY(watcher.start())

void tst_NetworkWatcher::initTestCase()
{
    qunsetenv("DBUS_STARTER_ADDRESS");
}

void tst_NetworkWatcher::theFactsOfAModem()
{
    FakeServices bus;
    setModem(bus);
    bus.start();
    START(watcher);
    QTRY_VERIFY(isComplete(watcher));
    const ModemFacts modem = modemOf(watcher);
    QCOMPARE(modem.path, kModem);
    QCOMPARE(modem.equipmentId, std::string("490"));
    QCOMPARE(modem.model, std::string("M1"));
    QCOMPARE(modem.netPorts, std::vector<std::string> { "wwan0" });
    QVERIFY(modem.connected && modem.registered && !modem.roaming && modem.hasStats);
    QCOMPARE(modem.bearerDownload, std::uint64_t(100));
    const auto facts = watcher.facts();
    QVERIFY(facts->bus && facts->modemManager && !facts->networkManager);
}

void tst_NetworkWatcher::theFactsOfNetworkManager()
{
    FakeServices bus;
    setDevices(bus, 2);
    bus.start();
    START(watcher);
    QTRY_COMPARE(watcher.facts()->devices.size(), std::size_t(2));
    QTRY_COMPARE(watcher.facts()->primaryInterface, std::string("eth0"));
    const auto facts = watcher.facts();
    QVERIFY(facts->bus && facts->networkManager && !facts->modemManager);
    QCOMPARE(facts->devices[1].interface, std::string("eth1"));
    QCOMPARE(facts->devices[1].state, 100U);
    bus.change(kManagerPath + "/Devices/1", kDevice, { { "State", fakeNumber(30) } });
    QTRY_COMPARE(watcher.facts()->devices[1].state, 30U);
    bus.change(kManagerPath, kNetworkManager, { { "PrimaryConnection", fakeText("/", 'o') } });
    QTRY_COMPARE(watcher.facts()->primaryInterface, std::string());
    bus.change(kManagerPath, kNetworkManager, { { "Devices", fakePaths({}) } });
    QTRY_VERIFY(watcher.facts()->devices.empty());
}

void tst_NetworkWatcher::changesAreFollowed()
{
    FakeServices bus;
    setModem(bus);
    bus.start();
    START(watcher);
    QTRY_VERIFY(isComplete(watcher));
    bus.change(kModem, kModem3gpp,
               { { "RegistrationState", fakeNumber(5) }, { "OperatorName", fakeText("Abroad") } });
    QTRY_VERIFY(modemOf(watcher).roaming);
    QCOMPARE(modemOf(watcher).operatorName, std::string("Abroad"));
    bus.change(kModem, kModem3gpp, { { "RegistrationState", fakeNumber(1) } });
    QTRY_VERIFY(!modemOf(watcher).roaming);
    bus.change(kModem, kModemInterface,
               { { "State", fakeNumber(8, 'i') }, { "Bearers", fakePaths({}) } });
    QTRY_VERIFY(!modemOf(watcher).connected);
    QCOMPARE(modemOf(watcher).interface, std::string());
    bus.change(kModem, kModemInterface, { { "Sim", fakeText("/", 'o') } });
    QTRY_COMPARE(modemOf(watcher).simId, std::string());
}

void tst_NetworkWatcher::aChangeWithoutItsValueIsAskedFor()
{
    FakeServices bus;
    setModem(bus);
    bus.start();
    START(watcher);
    QTRY_VERIFY(isComplete(watcher));
    bus.change(kModem, kModemInterface, { { "Model", fakeText("M2") } }, false);
    QTRY_COMPARE(modemOf(watcher).model, std::string("M2"));
}

void tst_NetworkWatcher::aSignalOfSomebodyElseIsIgnored()
{
    FakeServices bus;
    setModem(bus);
    bus.start();
    START(watcher);
    QTRY_VERIFY(isComplete(watcher));
    bus.forge(kModem, kModemInterface, { { "Model", fakeText("forged") } });
    bus.change(kModem, kModem3gpp, { { "OperatorName", fakeText("Later") } });
    QTRY_COMPARE(modemOf(watcher).operatorName, std::string("Later"));
    QCOMPARE(modemOf(watcher).model, std::string("M1"));
}

void tst_NetworkWatcher::modemsComeAndGo()
{
    FakeServices bus;
    setModem(bus);
    bus.start();
    START(watcher);
    for (int i = 0; i < 5; ++i) {
        QTRY_VERIFY(isComplete(watcher));
        bus.removeObject(kModem);
        QTRY_VERIFY(watcher.facts()->modems.empty());
        bus.addObject(kModem, modemObject());
    }
    QTRY_VERIFY(isComplete(watcher));
    bus.removeObject(kModem); // gone and back before anybody looked
    bus.addObject(kModem, modemObject());
    bus.changeSilently(kModem, kModemInterface, { { "Model", fakeText("M3") } });
    bus.change(kModem, kModem3gpp, { { "OperatorName", fakeText("Net") } });
    QTRY_COMPARE(modemOf(watcher).model, std::string("M3"));
}

void tst_NetworkWatcher::figuresAreReadAgain()
{
    FakeServices bus;
    setModem(bus);
    bus.start();
    START(watcher);
    QTRY_VERIFY(isComplete(watcher));
    bus.changeSilently(kBearer, kModemManager + ".Bearer", { { "Stats", fakeStats(900, 80, 13) } });
    QTRY_COMPARE(modemOf(watcher).bearerDownload, std::uint64_t(900));
    QCOMPARE(modemOf(watcher).bearerUpload, std::uint64_t(80));
    QCOMPARE(modemOf(watcher).bearerSeconds, std::uint32_t(13));
    bus.change(kBearer, kModemManager + ".Bearer", { { "Connected", fakeNumber(0, 'b') } });
    QTRY_VERIFY(!modemOf(watcher).hasStats);
    const int calls = bus.callCount();
    QTest::qWait(300); // six intervals: for what must not happen there is no state to wait for
    QVERIFY2(bus.callCount() <= calls + 1, QByteArray::number(bus.callCount() - calls).constData());
}

void tst_NetworkWatcher::manyDevicesAreAllRead()
{
    FakeServices bus;
    setDevices(bus, 500); // many more than are asked about at once
    bus.start();
    START(watcher);
    QTRY_COMPARE(watcher.facts()->devices.size(), std::size_t(500));
    QCOMPARE(watcher.facts()->devices.back().interface, std::string("eth499"));
}

void tst_NetworkWatcher::aServiceThatGoesTakesItsFactsAlong()
{
    FakeServices bus;
    setModem(bus);
    setDevices(bus, 1);
    bus.start();
    START(watcher);
    for (int i = 0; i < 3; ++i) {
        QTRY_VERIFY(isComplete(watcher));
        QTRY_COMPARE(watcher.facts()->primaryInterface, std::string("eth0"));
        bus.vanish(kModemManager);
        QTRY_VERIFY(!watcher.facts()->modemManager);
        QVERIFY(watcher.facts()->modems.empty());
        QCOMPARE(watcher.facts()->primaryInterface, std::string("eth0"));
        bus.vanish(kNetworkManager);
        QTRY_VERIFY(!watcher.facts()->networkManager);
        QVERIFY(watcher.facts()->devices.empty() && watcher.facts()->primaryInterface.empty());
        bus.appear(kModemManager);
        bus.appear(kNetworkManager);
    }
    QTRY_VERIFY(isComplete(watcher));
    bus.appear(kModemManager); // a new owner, without a word of the old one's end
    bus.change(kModem, kModemInterface, { { "Model", fakeText("M2") } });
    QTRY_COMPARE(modemOf(watcher).model, std::string("M2"));
}

void tst_NetworkWatcher::noServiceIsStarted()
{
    FakeServices bus;
    bus.start();
    START(watcher);
    QTRY_VERIFY(watcher.facts()->bus);
    setModem(bus);
    QTRY_VERIFY(isComplete(watcher));
    QVERIFY(!bus.wasAskedToStartSomething());
}

void tst_NetworkWatcher::servicesThatMisbehaveAreAskedAgain_data()
{
    QTest::addColumn<Manner>("manner");
    QTest::newRow("silent") << Manner::Silent;
    QTest::newRow("nonsense") << Manner::Nonsense;
    QTest::newRow("refusing") << Manner::Refusing;
}

void tst_NetworkWatcher::servicesThatMisbehaveAreAskedAgain()
{
    QFETCH(Manner, manner);
    FakeServices bus;
    setModem(bus);
    setDevices(bus, 3);
    bus.setManner(manner);
    bus.start();
    START(watcher);
    QTRY_VERIFY(watcher.facts()->modemManager && watcher.facts()->networkManager);
    QTRY_VERIFY(bus.callCount() >= 6);
    QVERIFY(watcher.facts()->modems.empty() && watcher.facts()->devices.empty());
    bus.setManner(Manner::Normal);
    QTRY_VERIFY(isComplete(watcher));
    QTRY_COMPARE(watcher.facts()->primaryInterface, std::string("eth0"));
    bus.setManner(manner); // what was said before stays
    const int calls = bus.callCount();
    QTRY_VERIFY(bus.callCount() >= calls + 3); // the bearer's figures
    QVERIFY(isComplete(watcher));
}

void tst_NetworkWatcher::aBusThatComesBackIsFound()
{
    FakeServices bus;
    setModem(bus);
    bus.start();
    START(watcher);
    for (int i = 0; i < 3; ++i) {
        QTRY_VERIFY(isComplete(watcher));
        bus.stop();
        QTRY_VERIFY(isEmpty(watcher));
        bus.start();
    }
    QTRY_VERIFY(isComplete(watcher));
}

void tst_NetworkWatcher::aBusThatHangsUpIsCalledAgain()
{
    FakeServices bus;
    setModem(bus);
    bus.start();
    START(watcher);
    QTRY_VERIFY(isComplete(watcher));
    for (int i = 0; i < 3; ++i) {
        const int clients = bus.clientCount();
        bus.disconnectClient();
        QTRY_COMPARE(bus.clientCount(), clients + 1);
        QTRY_VERIFY(isComplete(watcher));
    }
}

void tst_NetworkWatcher::whatIsNoBusSaysNothing_data()
{
    QTest::addColumn<QByteArray>("greeting");
    QTest::addColumn<bool>("closes");
    const QByteArray ok = "OK 0123456789abcdef0123456789abcdef\r\n";
    QTest::newRow("it never answers") << QByteArray() << false;
    QTest::newRow("it closes at once") << QByteArray() << true;
    QTest::newRow("it lets us in and never answers") << ok << false;
    QTest::newRow("it lets us in and closes") << ok << true;
    QTest::newRow("it refuses") << QByteArray("REJECTED EXTERNAL\r\n") << false;
    QTest::newRow("it sends bytes") << QByteArray(100000, '\xff') << false;
    QTest::newRow("it lets us in and sends bytes") << ok + QByteArray(4096, '\xff') << false;
}

void tst_NetworkWatcher::whatIsNoBusSaysNothing()
{
    QFETCH(QByteArray, greeting);
    QFETCH(bool, closes);
    const DumbSocket socket(greeting.toStdString(), closes);
    START(watcher);
    QTest::qWait(500); // some attempts
    QVERIFY(isEmpty(watcher));
    QElapsedTimer time;
    time.start();
    watcher.stop();
    QVERIFY2(time.elapsed() < 1000, QByteArray::number(time.elapsed()).constData());
}

void tst_NetworkWatcher::anIdleWatcherSleeps_data()
{
    QTest::addColumn<QByteArray>("address");
    QTest::newRow("no bus") << QByteArray("unix:path=/nonexistent/bus");
    QTest::newRow("no address") << QByteArray("nonsense");
    QTest::newRow("nothing happens") << QByteArray();
}

void tst_NetworkWatcher::anIdleWatcherSleeps()
{
    QFETCH(QByteArray, address);
    FakeServices bus;
    bus.start();
    if (!address.isEmpty())
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", address);
    NetworkWatcher watcher;
    QVERIFY(watcher.start());
    QTRY_COMPARE(watcher.facts()->bus, address.isEmpty());
    const qint64 before = processorMs();
    QTest::qWait(1500);
    const qint64 used = processorMs() - before;
    qInfo("%lld ms of processor time in 1500 ms", static_cast<long long>(used));
    QVERIFY(used < 300); // of all threads, the fake's too; a loop that never sleeps takes 1500
}

void tst_NetworkWatcher::noFileStaysOpen()
{
    FakeServices bus;
    setModem(bus);
    bus.start();
    const auto round = [] {
        NetworkWatcher watcher(quick());
        if (!watcher.start())
            return;
        for (int i = 0; i < 200 && !isComplete(watcher); ++i)
            QTest::qWait(10);
        watcher.stop();
        watcher.stop();
    };
    round();
    const int before = openFiles();
    for (int i = 0; i < 10; ++i)
        round();
    QTRY_VERIFY(openFiles() <= before); // the fake may have held one of the round before
}

void tst_NetworkWatcher::factsAreReadFromManyThreads()
{
    FakeServices bus;
    setModem(bus);
    bus.start();
    START(watcher);
    std::atomic<bool> stopped { false };
    std::atomic<bool> consistent { true };
    std::vector<std::thread> readers;
    for (int i = 0; i < 4; ++i)
        readers.emplace_back([&] {
            while (!stopped) {
                const auto facts = watcher.facts();
                if (facts->modems.size() > 1 || (!facts->modemManager && !facts->modems.empty()))
                    consistent = false;
                std::this_thread::yield();
            }
        });
    for (int i = 0; i < 10; ++i) {
        QTest::qWait(20);
        bus.vanish(kModemManager);
        QTest::qWait(20);
        bus.appear(kModemManager);
    }
    stopped = true;
    for (std::thread &reader : readers)
        reader.join();
    QVERIFY(consistent);
    QTRY_VERIFY(isComplete(watcher));
}

void tst_NetworkWatcher::aForkedChildLeavesItAlone()
{
#ifdef __SANITIZE_THREAD__
    QSKIP("the sanitizer forgets threads at a fork, and GCC 14's ends where one is given up");
#endif
    FakeServices bus;
    setModem(bus);
    bus.start();
    auto watcher = std::make_unique<NetworkWatcher>(quick());
    QVERIFY(watcher->start());
    QTRY_VERIFY(isComplete(*watcher));
    const pid_t child = fork();
    if (child == 0) {
        watcher->abandon();
        watcher.reset();
        _exit(7);
    }
    int status = 0;
    QCOMPARE(waitpid(child, &status, 0), child);
    QVERIFY(WIFEXITED(status));
    QCOMPARE(WEXITSTATUS(status), 7);
    bus.change(kModem, kModemInterface, { { "Model", fakeText("M2") } });
    QTRY_COMPARE(modemOf(*watcher).model, std::string("M2"));
}

QTEST_GUILESS_MAIN(tst_NetworkWatcher)
#include "tst_networkwatcher.moc"
