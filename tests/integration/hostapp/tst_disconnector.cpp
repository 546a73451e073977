#include <Disconnector.h>

#include <host/velq_extension.h>

#include <QElapsedTimer>
#include <QSemaphore>
#include <QSignalSpy>
#include <QThread>
#include <QtTest>

#include <atomic>

#include "TestLog.h"

class tst_Disconnector : public QObject
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

void tst_Disconnector::init()
{
    m_log.reset(new TestLog);
    m_left = 0;
}

void tst_Disconnector::cleanup()
{
    QCOMPARE(m_entered.available(), 0);
    QCOMPARE(m_release.available(), 0);
    const QStringList problems = m_log->takeProblems();
    m_log.reset();
    QCOMPARE(problems, QStringList());
}

// A call that lasts until the test lets it go.
std::function<int()> tst_Disconnector::blocking(int result)
{
    return [this, result] {
        m_entered.release();
        m_release.acquire();
        ++m_left;
        return result;
    };
}

void tst_Disconnector::theResultArrives_data()
{
    QTest::addColumn<int>("result");
    QTest::newRow("done") << int(VELQ_DISCONNECT_DONE);
    QTest::newRow("no service") << int(VELQ_DISCONNECT_NO_SERVICE);
    QTest::newRow("failed") << int(VELQ_DISCONNECT_FAILED);
    QTest::newRow("unknown") << -77;
}

void tst_Disconnector::theResultArrives()
{
    QFETCH(int, result);
    Disconnector disconnector([result] { return result; });
    QSignalSpy started(&disconnector, &Disconnector::started);
    QSignalSpy finished(&disconnector, &Disconnector::finished);
    QVERIFY(disconnector.request());
    QCOMPARE(started.count(), 1);
    QCOMPARE(finished.count(), 0); // never from inside the request
    QTRY_COMPARE(finished.count(), 1);
    QCOMPARE(finished.at(0).at(0).toInt(), result);
}

void tst_Disconnector::theCallRunsOnAnotherThread()
{
    std::atomic<QThread *> thread { nullptr };
    Disconnector disconnector([&thread] {
        thread = QThread::currentThread();
        return 0;
    });
    QSignalSpy finished(&disconnector, &Disconnector::finished);
    QVERIFY(disconnector.request());
    QTRY_COMPARE(finished.count(), 1);
    QVERIFY(thread);
    QVERIFY(thread != QThread::currentThread());
}

void tst_Disconnector::aRequestReturnsWhileTheCallRuns()
{
    Disconnector disconnector(blocking(0));
    QSignalSpy finished(&disconnector, &Disconnector::finished);
    QVERIFY(disconnector.request());
    m_entered.acquire();
    QCoreApplication::processEvents();
    QCOMPARE(finished.count(), 0);
    m_release.release();
    QTRY_COMPARE(finished.count(), 1);
}

void tst_Disconnector::aSecondRequestIsDropped()
{
    Disconnector disconnector(blocking(0));
    QSignalSpy started(&disconnector, &Disconnector::started);
    QSignalSpy finished(&disconnector, &Disconnector::finished);
    QVERIFY(disconnector.request());
    QVERIFY(!disconnector.request());
    m_entered.acquire();
    QVERIFY(!disconnector.request());
    m_release.release();
    QTRY_COMPARE(finished.count(), 1);
    QCOMPARE(started.count(), 1);
    QCOMPARE(m_left.load(), 1);
}

void tst_Disconnector::afterAResultThereMayBeAnother()
{
    int calls = 0;
    Disconnector disconnector([&calls] { return ++calls; });
    QSignalSpy finished(&disconnector, &Disconnector::finished);
    for (int i = 1; i <= 20; ++i) {
        QVERIFY(disconnector.request());
        QTRY_COMPARE(finished.count(), i);
        QCOMPARE(finished.at(i - 1).at(0).toInt(), i);
    }
}

void tst_Disconnector::aReceiverMayRequestAgain()
{
    Disconnector disconnector([] { return 0; });
    QSignalSpy finished(&disconnector, &Disconnector::finished);
    bool again = false;
    connect(&disconnector, &Disconnector::finished, this, [&disconnector, &again] {
        if (!again)
            again = disconnector.request();
    });
    QVERIFY(disconnector.request());
    QTRY_COMPARE(finished.count(), 2);
    QVERIFY(again);
}

void tst_Disconnector::theEndWaitsForARunningCall()
{
    int results = 0;
    {
        Disconnector disconnector([this] {
            m_entered.release();
            QThread::msleep(200); // the end comes while this lasts
            ++m_left;
            return 0;
        });
        connect(&disconnector, &Disconnector::finished, this, [&results] { ++results; });
        QVERIFY(disconnector.request());
        m_entered.acquire();
    }
    QCOMPARE(m_left.load(), 1);
    QCoreApplication::processEvents();
    QCOMPARE(results, 0);
}

void tst_Disconnector::theEndDropsAResultOnItsWay()
{
    int results = 0;
    for (int i = 0; i < 50; ++i) { // the result is queued before or after the end begins
        Disconnector disconnector([this] { return ++m_left; });
        connect(&disconnector, &Disconnector::finished, this, [&results] { ++results; });
        QVERIFY(disconnector.request());
    }
    QCOMPARE(m_left.load(), 50);
    QCoreApplication::processEvents();
    QCOMPARE(results, 0);
}

void tst_Disconnector::theEndWithoutACallWaitsForNothing()
{
    QElapsedTimer timer;
    timer.start();
    {
        const Disconnector disconnector(blocking(0));
    }
    QVERIFY(timer.elapsed() < 1000);
    QCOMPARE(m_left.load(), 0);
}

QTEST_GUILESS_MAIN(tst_Disconnector)
#include "tst_disconnector.moc"
