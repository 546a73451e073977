#include <BlockingCall.h>

#include <host/velq_extension.h>

#include <QElapsedTimer>
#include <QSemaphore>
#include <QSignalSpy>
#include <QThread>
#include <QtTest>

#include <atomic>

#include "TestLog.h"

static constexpr int kFailure = 99; // there is always a thread here

class tst_BlockingCall : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void theResultArrives_data();
    void theResultArrives();
    void theCallRunsOnAnotherThread();
    void aRequestReturnsWhileTheCallRuns();
    void aSecondRequestIsDropped();
    void afterAResultThereMayBeAnother();
    void aReceiverMayRequestAgain();
    void theEndWaitsForARunningCall();
    void theEndDropsAResultOnItsWay();
    void theEndWithoutACallWaitsForNothing();

private:
    [[nodiscard]] std::function<int()> blocking(int result);

    QScopedPointer<TestLog> m_log;
    QSemaphore m_entered;
    QSemaphore m_release;
    std::atomic<int> m_left { 0 };
};

void tst_BlockingCall::init()
{
    m_log.reset(new TestLog);
    m_left = 0;
}

void tst_BlockingCall::cleanup()
{
    QCOMPARE(m_entered.available(), 0);
    QCOMPARE(m_release.available(), 0);
    const QStringList problems = m_log->takeProblems();
    m_log.reset();
    QCOMPARE(problems, QStringList());
}

// A call that lasts until the test lets it go.
std::function<int()> tst_BlockingCall::blocking(int result)
{
    return [this, result] {
        m_entered.release();
        m_release.acquire();
        ++m_left;
        return result;
    };
}

void tst_BlockingCall::theResultArrives_data()
{
    QTest::addColumn<int>("result");
    QTest::newRow("done") << int(VELQ_DISCONNECT_DONE);
    QTest::newRow("no service") << int(VELQ_DISCONNECT_NO_SERVICE);
    QTest::newRow("failed") << int(VELQ_DISCONNECT_FAILED);
    QTest::newRow("unknown") << -77;
}

void tst_BlockingCall::theResultArrives()
{
    QFETCH(int, result);
    BlockingCall call([result] { return result; }, kFailure);
    QSignalSpy started(&call, &BlockingCall::started);
    QSignalSpy finished(&call, &BlockingCall::finished);
    QVERIFY(call.request());
    QCOMPARE(started.count(), 1);
    QCOMPARE(finished.count(), 0); // never from inside the request
    QTRY_COMPARE(finished.count(), 1);
    QCOMPARE(finished.at(0).at(0).toInt(), result);
}

void tst_BlockingCall::theCallRunsOnAnotherThread()
{
    std::atomic<QThread *> thread { nullptr };
    BlockingCall call(
        [&thread] {
            thread = QThread::currentThread();
            return 0;
        },
        kFailure);
    QSignalSpy finished(&call, &BlockingCall::finished);
    QVERIFY(call.request());
    QTRY_COMPARE(finished.count(), 1);
    QVERIFY(thread);
    QVERIFY(thread != QThread::currentThread());
}

void tst_BlockingCall::aRequestReturnsWhileTheCallRuns()
{
    BlockingCall call(blocking(0), kFailure);
    QSignalSpy finished(&call, &BlockingCall::finished);
    QVERIFY(call.request());
    m_entered.acquire();
    QCoreApplication::processEvents();
    QCOMPARE(finished.count(), 0);
    m_release.release();
    QTRY_COMPARE(finished.count(), 1);
}

void tst_BlockingCall::aSecondRequestIsDropped()
{
    BlockingCall call(blocking(0), kFailure);
    QSignalSpy started(&call, &BlockingCall::started);
    QSignalSpy finished(&call, &BlockingCall::finished);
    QVERIFY(call.request());
    QVERIFY(!call.request());
    m_entered.acquire();
    QVERIFY(!call.request());
    m_release.release();
    QTRY_COMPARE(finished.count(), 1);
    QCOMPARE(started.count(), 1);
    QCOMPARE(m_left.load(), 1);
}

void tst_BlockingCall::afterAResultThereMayBeAnother()
{
    int calls = 0;
    BlockingCall call([&calls] { return ++calls; }, kFailure);
    QSignalSpy finished(&call, &BlockingCall::finished);
    for (int i = 1; i <= 20; ++i) {
        QVERIFY(call.request());
        QTRY_COMPARE(finished.count(), i);
        QCOMPARE(finished.at(i - 1).at(0).toInt(), i);
    }
}

void tst_BlockingCall::aReceiverMayRequestAgain()
{
    BlockingCall call([] { return 0; }, kFailure);
    QSignalSpy finished(&call, &BlockingCall::finished);
    bool again = false;
    connect(&call, &BlockingCall::finished, this, [&call, &again] {
        if (!again)
            again = call.request();
    });
    QVERIFY(call.request());
    QTRY_COMPARE(finished.count(), 2);
    QVERIFY(again);
}

void tst_BlockingCall::theEndWaitsForARunningCall()
{
    int results = 0;
    {
        BlockingCall call(
            [this] {
                m_entered.release();
                QThread::msleep(200); // the end comes while this lasts
                ++m_left;
                return 0;
            },
            kFailure);
        connect(&call, &BlockingCall::finished, this, [&results] { ++results; });
        QVERIFY(call.request());
        m_entered.acquire();
    }
    QCOMPARE(m_left.load(), 1);
    QCoreApplication::processEvents();
    QCOMPARE(results, 0);
}

void tst_BlockingCall::theEndDropsAResultOnItsWay()
{
    int results = 0;
    for (int i = 0; i < 50; ++i) { // the result is queued before or after the end begins
        BlockingCall call([this] { return ++m_left; }, kFailure);
        connect(&call, &BlockingCall::finished, this, [&results] { ++results; });
        QVERIFY(call.request());
    }
    QCOMPARE(m_left.load(), 50);
    QCoreApplication::processEvents();
    QCOMPARE(results, 0);
}

void tst_BlockingCall::theEndWithoutACallWaitsForNothing()
{
    QElapsedTimer timer;
    timer.start();
    {
        const BlockingCall call(blocking(0), kFailure);
    }
    QVERIFY(timer.elapsed() < 1000);
    QCOMPARE(m_left.load(), 0);
}

QTEST_GUILESS_MAIN(tst_BlockingCall)
#include "tst_blockingcall.moc"
