#include "counters/LinkMonitor.h"

#include <QtTest>

#include <linux/if_addr.h>
#include <sys/resource.h>

#include "ScriptedKernel.h"

using velq::LinkMonitor;
using velq::LinkNews;
using velq::LinkStep;

//! Which questions the monitor asks, and what it makes of odd answers.
class tst_LinkMonitor : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void linksAreListedOnce();
    void routesAreAskedForWhenTheyMayHaveChanged_data();
    void routesAreAskedForWhenTheyMayHaveChanged();
    void routesComeInTheirOrder();
    void anOldKernelListsLinksEachTime();
    void aRefusalForTheMomentIsNotRemembered();
    void anInterruptedListIsAskedForAgain();
    void withoutAnyWholeListThereAreNoNews();
    void interruptedCountersAreListed();
    void countersAreAskedForAgainAfterAnEvent();
    void lostEventsAskForAList();
    void anEventFromBeforeALossIsNotOfTheNewLink();
    void stepsSurviveAReadThatFails();
    void withoutASocketThereAreNoNews();
    void aSocketThatCouldNotBeMadeIsMadeLater();
    void disconnectingReadsTheEventsFirst();

private:
    void answer();
    [[nodiscard]] LinkNews read();

    std::shared_ptr<Script> m_script;
    std::unique_ptr<LinkMonitor> m_monitor;
    std::vector<int> m_links; // that the kernel lists
    std::vector<int> m_routes; // the links of its default routes
    quint64 m_bytes = 0;
    quint64 m_instance = 0; // of every link, in /sys
    int m_interruptions = 0; // of the next answers
    int m_silences = 0; // requests that are not answered
    int m_countersError = 0;
};

void tst_LinkMonitor::init()
{
    m_script = std::make_shared<Script>();
    m_script->requested = [this] { answer(); };
    m_monitor = std::make_unique<LinkMonitor>(std::make_unique<ScriptedKernel>(m_script),
                                              [this](const std::string &, int) {
                                                  return velq::LinkPlace { m_instance, false };
                                              });
    m_links = { 1, 5 };
    m_routes = { 5 };
    m_bytes = 0;
    m_instance = 0;
    m_interruptions = m_silences = m_countersError = 0;
}

void tst_LinkMonitor::answer()
{
    const int type = m_script->request.nlmsg_type;
    if (m_silences > 0 && m_silences-- > 0)
        return;
    if (type == RTM_GETSTATS && m_countersError != 0)
        return m_script->answer(errorBytes(-m_countersError), 0);
    const bool interrupted = m_interruptions > 0 && m_interruptions-- > 0;
    const unsigned flags = NLM_F_MULTI | (interrupted ? unsigned(NLM_F_DUMP_INTR) : 0U);
    m_bytes += 100;
    if (type == RTM_GETROUTE) {
        for (const int index : m_routes)
            m_script->answer(routeBytes(index), flags);
    } else {
        for (const int index : m_links)
            m_script->answer(type == RTM_GETLINK ? linkBytes(index, m_bytes, m_bytes)
                                                 : countersBytes(index, m_bytes, m_bytes),
                             flags);
    }
    m_script->answer(endBytes(), flags);
}

LinkNews tst_LinkMonitor::read()
{
    m_script->types.clear();
    return m_monitor->read();
}

void tst_LinkMonitor::linksAreListedOnce()
{
    LinkNews news = read();
    QVERIFY(news.valid);
    QCOMPARE(m_script->types, (std::vector<int> { RTM_GETLINK, RTM_GETROUTE }));
    QCOMPARE(news.steps.size(), std::size_t(2));
    QCOMPARE(news.steps[1].kind, LinkStep::Kind::Appeared);
    QCOMPARE(news.steps[1].link.up, true);
    for (int i = 0; i < 3; ++i) {
        news = read();
        QVERIFY(news.valid);
        QCOMPARE(m_script->types, (std::vector<int> { RTM_GETSTATS }));
        QCOMPARE(news.steps.size(), std::size_t(2));
        QCOMPARE(news.steps[1].kind, LinkStep::Kind::Counted);
        QCOMPARE(news.steps[1].link.index, 5);
        QCOMPARE(news.steps[1].counters->download, m_bytes);
        QCOMPARE(news.routes.size(), std::size_t(1)); // from memory
    }
}

void tst_LinkMonitor::routesAreAskedForWhenTheyMayHaveChanged_data()
{
    QTest::addColumn<QByteArray>("event");
    QTest::addColumn<bool>("asked");
    const auto row = [](const char *name, const Bytes &bytes, bool asked) {
        QTest::newRow(name) << QByteArray(bytes.data(), int(bytes.size())) << asked;
    };
    row("a default route", routeBytes(5), true);
    row("a route to a network", routeBytes(5, 24), false);
    row("a link", linkBytes(5, 1000, 1000, RTM_NEWLINK, 0), true);
    row("a deleted link", linkBytes(5, 0, 0, RTM_DELLINK), true);
    row("an unknown message", messageBytes(RTM_NEWNEIGH), false);
}

void tst_LinkMonitor::routesAreAskedForWhenTheyMayHaveChanged()
{
    QFETCH(QByteArray, event);
    QFETCH(bool, asked);
    QVERIFY(read().valid);
    m_routes = { 1 };
    m_script->event(Bytes(event.begin(), event.end()));
    const LinkNews news = read();
    QCOMPARE(m_script->types.back() == RTM_GETROUTE, asked);
    QCOMPARE(news.routes.front().index, asked ? 1 : 5);
}

void tst_LinkMonitor::routesComeInTheirOrder()
{
    const unsigned metric = 100;
    const int index = 7;
    m_routes = { 1 };
    m_script->requested = [this, metric, index] {
        if (m_script->request.nlmsg_type == RTM_GETROUTE) {
            Bytes worse = routeBytes(index);
            appendAttribute(worse, RTA_PRIORITY, &metric, sizeof metric);
            m_script->answer(worse);
        }
        answer();
    };
    const LinkNews news = read();
    QCOMPARE(news.routes.size(), std::size_t(2));
    QCOMPARE(news.routes[0].index, 1);
    QCOMPARE(news.routes[1].index, 7);
}

void tst_LinkMonitor::anOldKernelListsLinksEachTime()
{
    m_countersError = EOPNOTSUPP;
    QVERIFY(read().valid);
    QVERIFY(read().valid);
    QCOMPARE(m_script->types, (std::vector<int> { RTM_GETSTATS, RTM_GETLINK }));
    const LinkNews news = read();
    QVERIFY(news.valid);
    QCOMPARE(m_script->types, (std::vector<int> { RTM_GETLINK }));
    QCOMPARE(news.steps[1].kind, LinkStep::Kind::Counted);
    QCOMPARE(news.steps[1].counters->upload, m_bytes);
}

void tst_LinkMonitor::aRefusalForTheMomentIsNotRemembered()
{
    QVERIFY(read().valid);
    m_countersError = ENOBUFS;
    QVERIFY(read().valid);
    m_countersError = 0;
    QVERIFY(read().valid);
    QCOMPARE(m_script->types, (std::vector<int> { RTM_GETSTATS }));
}

void tst_LinkMonitor::anInterruptedListIsAskedForAgain()
{
    m_interruptions = 2;
    const LinkNews news = read();
    QVERIFY(news.valid);
    QCOMPARE(m_script->types,
             (std::vector<int> { RTM_GETLINK, RTM_GETLINK, RTM_GETLINK, RTM_GETROUTE }));
    QCOMPARE(news.steps.size(), std::size_t(6));
}

void tst_LinkMonitor::withoutAnyWholeListThereAreNoNews()
{
    m_interruptions = 3;
    QVERIFY(!read().valid);
    QCOMPARE(m_script->types.size(), std::size_t(3));
    const LinkNews news = read();
    QVERIFY(news.valid);
    QCOMPARE(news.steps.size(), std::size_t(8)); // all that was said until now
    QVERIFY(!news.steps.front().base);
}

void tst_LinkMonitor::interruptedCountersAreListed()
{
    QVERIFY(read().valid);
    m_interruptions = 1;
    QVERIFY(read().valid);
    QCOMPARE(m_script->types, (std::vector<int> { RTM_GETSTATS, RTM_GETLINK }));
}

void tst_LinkMonitor::countersAreAskedForAgainAfterAnEvent()
{
    QVERIFY(read().valid);
    m_bytes = 5000;
    m_script->event(linkBytes(5, 5000, 5000)); // the answer behind it may be the older of the two
    const LinkNews news = read();
    QVERIFY(news.valid);
    QCOMPARE(m_script->types, (std::vector<int> { RTM_GETSTATS, RTM_GETSTATS, RTM_GETROUTE }));
    QCOMPARE(news.steps.front().fromEvent, true);
    QCOMPARE(news.steps.back().link.index, 5);
    QCOMPARE(news.steps.back().counters->upload, quint64(5200));
}

void tst_LinkMonitor::lostEventsAskForAList()
{
    QVERIFY(read().valid);
    m_script->event(linkBytes(5, 5000, 5000));
    m_script->lose();
    m_links = { 1, 6 };
    const LinkNews news = read();
    QVERIFY(news.valid);
    QCOMPARE(m_script->types, (std::vector<int> { RTM_GETSTATS, RTM_GETLINK, RTM_GETROUTE }));
    QCOMPARE(news.steps.size(), std::size_t(4));
    QCOMPARE(news.steps[0].counters->upload, quint64(5000));
    QCOMPARE(news.steps[2].kind, LinkStep::Kind::Appeared);
    QCOMPARE(news.steps[2].base->upload, quint64(0));
    QCOMPARE(news.steps[3].kind, LinkStep::Kind::Gone);
    QCOMPARE(news.steps[3].link.index, 5);
}

//! The link was made anew while events were lost, and one of the old link still waits.
void tst_LinkMonitor::anEventFromBeforeALossIsNotOfTheNewLink()
{
    m_instance = 1;
    m_bytes = 5000;
    QVERIFY(read().valid);
    m_script->requested = [this] {
        answer();
        if (m_script->request.nlmsg_type != RTM_GETSTATS)
            return;
        m_script->event(linkBytes(5, 5600, 5600));
        m_script->entries.push_front({ Script::Status::Lost, {} });
        m_instance = 2;
        m_bytes = 0;
    };
    const LinkNews news = read();
    QVERIFY(news.valid);
    const LinkStep &made = news.steps.back();
    QCOMPARE(made.kind, LinkStep::Kind::Appeared);
    QCOMPARE(made.link.instance, quint64(2));
    QCOMPARE(made.counters->upload, quint64(100));
    for (const LinkStep &step : news.steps)
        QVERIFY(step.link.instance == 1 || step.counters->upload == 100);
}

void tst_LinkMonitor::stepsSurviveAReadThatFails()
{
    QVERIFY(read().valid);
    m_script->event(linkBytes(5, 5000, 6000, RTM_NEWLINK, 0));
    m_script->event(linkBytes(5, 0, 0, RTM_DELLINK));
    m_silences = 1;
    QVERIFY(!read().valid);
    m_links = { 1 };
    const LinkNews news = read();
    QVERIFY(news.valid);
    QCOMPARE(news.steps.size(), std::size_t(3));
    QCOMPARE(news.steps[0].counters->upload, quint64(6000));
    QCOMPARE(news.steps[0].fromEvent, true);
    QCOMPARE(news.steps[1].kind, LinkStep::Kind::Gone);
}

void tst_LinkMonitor::withoutASocketThereAreNoNews()
{
    m_script->sends = false;
    QVERIFY(!read().valid);
    m_script->sends = true;
    m_script->fail();
    QVERIFY(!read().valid);
    QVERIFY(read().valid);
}

void tst_LinkMonitor::aSocketThatCouldNotBeMadeIsMadeLater()
{
#ifdef __SANITIZE_ADDRESS__
    QSKIP("the sanitizer's own checks need descriptors");
#endif
    rlimit before {};
    QCOMPARE(getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit none { 0, before.rlim_max };
    QCOMPARE(setrlimit(RLIMIT_NOFILE, &none), 0);
    LinkMonitor monitor;
    const bool valid = monitor.read().valid;
    QCOMPARE(setrlimit(RLIMIT_NOFILE, &before), 0);
    QVERIFY(!valid);
    const auto news = monitor.read();
    QVERIFY(news.valid);
    QVERIFY(!news.steps.empty()); // the loopback, at least
}

void tst_LinkMonitor::disconnectingReadsTheEventsFirst()
{
    QVERIFY(read().valid);
    ifaddrmsg info {};
    info.ifa_index = 5;
    const Bytes address = messageBytes(RTM_NEWADDR, &info, sizeof info);
    m_script->event(address); // of the connection that ends
    m_monitor->noteDisconnect(5);
    LinkNews news = read();
    QCOMPARE(news.steps.front().kind, LinkStep::Kind::Changed);
    QCOMPARE(news.steps.front().link.up, false);
    m_script->event(address);
    news = read();
    QCOMPARE(news.steps.front().kind, LinkStep::Kind::Changed);
    QCOMPARE(news.steps.front().link.up, true);
}

QTEST_GUILESS_MAIN(tst_LinkMonitor)
#include "tst_linkmonitor.moc"
