#include "engine/CallbackList.h"

#include <QtTest>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <stdexcept>
#include <thread>

using velq::CallbackList;

namespace {

CallbackList *g_list = nullptr;
std::atomic<int> g_calls { 0 };
std::atomic<bool> g_registered { false };
std::atomic<int> g_strayCalls { 0 };

//! A door at which a callback waits, so that a test knows it is inside.
class Gate
{
public:
    void enterAndWait()
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_inside = true;
        m_changed.notify_all();
        m_changed.wait(lock, [this] { return m_open; });
        m_inside = false;
    }
    void waitUntilInside()
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_changed.wait(lock, [this] { return m_inside; });
    }
    void open()
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        m_open = true;
        m_changed.notify_all();
    }
    [[nodiscard]] bool isInside()
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        return m_inside;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_inside = false;
    bool m_open = false;
};
Gate *g_gate = nullptr;

int count(int, void *)
{
    ++g_calls;
    return 0;
}

int countToo(int, void *)
{
    ++g_calls;
    return 0;
}

int waitAtTheGate(int, void *)
{
    g_gate->enterAndWait();
    ++g_calls;
    return 0;
}

int removeMyself(int, void *)
{
    if (g_list->remove(removeMyself))
        ++g_calls;
    return 0;
}

int removeTheNext(int, void *)
{
    (void)g_list->remove(count);
    return 0;
}

int addAnother(int, void *)
{
    g_list->add(countToo);
    return 0;
}

int throwing(int, void *)
{
    throw std::runtime_error("from the host");
}

int onlyWhileRegistered(int, void *)
{
    if (!g_registered)
        ++g_strayCalls;
    return 0;
}

} // namespace

class tst_CallbackList : public QObject
{
    Q_OBJECT
private slots:
    void init();

    void addingTwiceCallsOnce();
    void removingAnUnknownOneFails();
    void removingWaitsForTheRunningCall();
    void removingAnotherDoesNotWait();
    void aCallbackRemovesItself();
    void aCallbackRemovesTheNext();
    void aCallbackAddedFromInsideRunsNextTime();
    void exceptionsEndAtTheBorder();
    void nothingStartsAfterRemovalHasReturned();

private:
    CallbackList m_list;
};

void tst_CallbackList::init()
{
    g_list = &m_list;
    g_calls = 0;
    for (const auto callback : { count, countToo, waitAtTheGate, removeMyself, removeTheNext,
                                 addAnother, throwing, onlyWhileRegistered })
        (void)m_list.remove(callback);
}

void tst_CallbackList::addingTwiceCallsOnce()
{
    m_list.add(count);
    m_list.add(count);
    m_list.notify(8000, nullptr);
    QCOMPARE(g_calls.load(), 1);
    QVERIFY(m_list.remove(count));
    QVERIFY(!m_list.remove(count));
}

void tst_CallbackList::removingAnUnknownOneFails()
{
    QVERIFY(!m_list.remove(count));
    QVERIFY(!m_list.remove(nullptr));
}

void tst_CallbackList::removingWaitsForTheRunningCall()
{
    Gate gate;
    g_gate = &gate;
    m_list.add(waitAtTheGate);
    std::thread runner([this] { m_list.notify(8000, nullptr); });
    gate.waitUntilInside();
    std::atomic<bool> removed { false };
    std::atomic<bool> wasInside { true };
    std::thread remover([&] {
        const bool known = m_list.remove(waitAtTheGate);
        wasInside = gate.isInside();
        removed = known;
    });
    // The remover cannot be seen to wait; that it does not finish early is seen here.
    QTest::qWait(50);
    QVERIFY(!removed);
    gate.open();
    remover.join();
    runner.join();
    QVERIFY(removed);
    QVERIFY(!wasInside);
    QCOMPARE(g_calls.load(), 1);
}

void tst_CallbackList::removingAnotherDoesNotWait()
{
    Gate gate;
    g_gate = &gate;
    m_list.add(waitAtTheGate);
    m_list.add(count);
    std::thread runner([this] { m_list.notify(8000, nullptr); });
    gate.waitUntilInside();
    QVERIFY(m_list.remove(count));
    QVERIFY(gate.isInside());
    gate.open();
    runner.join();
    QCOMPARE(g_calls.load(),
             1); // the removed one did not start although its turn was still to come
}

void tst_CallbackList::aCallbackRemovesItself()
{
    m_list.add(removeMyself);
    m_list.notify(8000, nullptr);
    m_list.notify(8000, nullptr);
    QCOMPARE(g_calls.load(), 1);
}

void tst_CallbackList::aCallbackRemovesTheNext()
{
    m_list.add(removeTheNext);
    m_list.add(count);
    m_list.notify(8000, nullptr);
    QCOMPARE(g_calls.load(), 0);
}

void tst_CallbackList::aCallbackAddedFromInsideRunsNextTime()
{
    m_list.add(addAnother);
    m_list.notify(8000, nullptr);
    QCOMPARE(g_calls.load(), 0);
    m_list.notify(8000, nullptr);
    QCOMPARE(g_calls.load(), 1);
}

void tst_CallbackList::exceptionsEndAtTheBorder()
{
    m_list.add(throwing);
    m_list.add(count);
    m_list.notify(8000, nullptr);
    QCOMPARE(g_calls.load(), 1);
    QVERIFY(m_list.remove(throwing)); // it does not count as running any more
}

void tst_CallbackList::nothingStartsAfterRemovalHasReturned()
{
    g_strayCalls = 0;
    std::atomic<bool> stop { false };
    std::thread runner([&] {
        while (!stop)
            m_list.notify(8000, nullptr);
    });
    for (int i = 0; i < 2000; ++i) {
        g_registered = true;
        m_list.add(onlyWhileRegistered);
        const bool known = m_list.remove(onlyWhileRegistered);
        g_registered = false;
        if (!known)
            ++g_strayCalls;
    }
    stop = true;
    runner.join();
    QCOMPARE(g_strayCalls.load(), 0);
}

QTEST_GUILESS_MAIN(tst_CallbackList)
#include "tst_callbacklist.moc"
