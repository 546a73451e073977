#include "engine/Ticker.h"

#include <QElapsedTimer>
#include <QtTest>

#include <sys/prctl.h>

#include <atomic>
#include <csignal>
#include <memory>
#include <thread>

using velq::Ticker;

class tst_Ticker : public QObject
{
    Q_OBJECT
private slots:
    void ticksKeepTheirSchedule();
    void stoppingIsImmediate();
    void stoppingWaitsForTheRunningTick();
    void aTickMayStopItsOwnTicker();
    void signalsAreLeftToTheHost();
    void timeoutsOfACallAreInTime();
};

void tst_Ticker::ticksKeepTheirSchedule()
{
    constexpr int kIntervalMs = 50;
    constexpr int kWorkMs = 40;
    constexpr int kTicks = 10;
    std::atomic<int> ticks { 0 };
    QElapsedTimer time;
    Ticker ticker;
    time.start();
    QVERIFY(ticker.start(
        [&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(kWorkMs));
            ++ticks;
        },
        kIntervalMs));
    QTRY_VERIFY_WITH_TIMEOUT(ticks >= kTicks, 5000);
    const qint64 elapsed = time.elapsed();
    ticker.stop();
    const QByteArray text = QByteArray::number(elapsed);
    QVERIFY2(elapsed >= kTicks * kIntervalMs, text.constData());
    // A pause after each tick, in place of a schedule, would take 90 ms a tick.
    QVERIFY2(elapsed < kTicks * (kIntervalMs + kWorkMs) - kIntervalMs, text.constData());
    const int after = ticks;
    QTest::qWait(2 * kIntervalMs + kWorkMs);
    QCOMPARE(ticks.load(), after);
}

void tst_Ticker::stoppingIsImmediate()
{
    Ticker ticker;
    QVERIFY(ticker.start([] {}, 3600 * 1000));
    QElapsedTimer time;
    time.start();
    ticker.stop();
    QVERIFY(time.elapsed() < 1000);
    ticker.stop();
}

void tst_Ticker::stoppingWaitsForTheRunningTick()
{
    std::atomic<bool> inside { false };
    std::atomic<bool> finished { false };
    Ticker ticker;
    QVERIFY(ticker.start(
        [&] {
            inside = true;
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
            finished = true;
        },
        1));
    QTRY_VERIFY(inside);
    ticker.stop();
    QVERIFY(finished);
}

void tst_Ticker::aTickMayStopItsOwnTicker()
{
    // Static, because its thread ends by itself, some time after the tick has returned.
    static Ticker ticker;
    static std::atomic<int> ticks { 0 };
    QVERIFY(ticker.start(
        [] {
            ticker.stop();
            ++ticks;
        },
        10));
    QTRY_COMPARE(ticks.load(), 1);
    QTest::qWait(50);
    QCOMPARE(ticks.load(), 1);
}

void tst_Ticker::signalsAreLeftToTheHost()
{
    static std::atomic<bool> checked { false };
    static std::atomic<bool> blocked { false };
    Ticker ticker;
    QVERIFY(ticker.start(
        [] {
            sigset_t mask;
            pthread_sigmask(SIG_SETMASK, nullptr, &mask);
            blocked = sigismember(&mask, SIGTERM) == 1 && sigismember(&mask, SIGCHLD) == 1;
            checked = true;
        },
        5));
    QTRY_VERIFY(checked);
    QVERIFY(blocked);
    sigset_t mask;
    pthread_sigmask(SIG_SETMASK, nullptr, &mask);
    QCOMPARE(sigismember(&mask, SIGTERM), 0); // the starting thread's own mask is as before
}

//! Only the ticker's own waiting may be late; threads that a call starts inherit what it has.
void tst_Ticker::timeoutsOfACallAreInTime()
{
    static std::atomic<int> slackNs { 0 };
    Ticker ticker;
    QVERIFY(ticker.start([] { slackNs = prctl(PR_GET_TIMERSLACK); }, 100));
    QTRY_VERIFY(slackNs > 0);
    QCOMPARE(slackNs.load(), prctl(PR_GET_TIMERSLACK));
}

QTEST_GUILESS_MAIN(tst_Ticker)
#include "tst_ticker.moc"
