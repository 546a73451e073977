#include <QtTest>

#include "LinkStage.h"

//! What the news say of the links of a namespace beside their counters.
class tst_LinkState : public LinkStage
{
    Q_OBJECT
private slots:
    void linksOverLinks();
    void defaultRoutesInTheirOrder();
    void disconnectedUntilANewAddress();
};

void tst_LinkState::linksOverLinks()
{
    read();
    QVERIFY(makeLink());
    Tap tun("vz", false);
    QVERIFY(s_network->ipHere("link add br0 type bridge") && s_network->ipHere("link set br0 up"));
    QVERIFY(s_network->ipHere("link set va master br0"));
    QVERIFY(s_network->ipHere("link add mac0 link br0 type macvlan"));
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
    QVERIFY(s_network->ipHere("link set va nomaster"));
    read();
    QCOMPARE(link("va").masterIndex, 0);
    QVERIFY(!m_sums.of("va")->gone);
}

void tst_LinkState::defaultRoutesInTheirOrder()
{
    QVERIFY(makeLink());
    QVERIFY(s_network->ipHere("addr add 10.81.0.1/24 dev va"));
    read();
    QVERIFY(m_routes.empty());
    QVERIFY(s_network->ipHere("route add default via 10.81.0.2 dev va metric 300"));
    QVERIFY(s_network->ipHere("route add default via 10.81.0.2 dev va metric 600"));
    QVERIFY(s_network->ipHere("route add default via 10.81.0.2 dev va metric 200"));
    for (int i = 0; i < 2; ++i) { // the second time from memory
        read();
        std::vector<unsigned> metrics;
        for (const auto &route : m_routes)
            metrics.push_back(route.metric);
        QCOMPARE(metrics, (std::vector<unsigned> { 200, 300, 600 }));
    }
    QVERIFY(s_network->ipThere("link set vb down"));
    QTRY_VERIFY_WITH_TIMEOUT((read(), m_routes.empty()), 3000);
    QVERIFY(!isUp("va"));
}

void tst_LinkState::disconnectedUntilANewAddress()
{
    QVERIFY(makeLink());
    QVERIFY(s_network->ipHere("addr add 10.81.0.1/24 dev va"));
    read();
    QVERIFY(isUp("va"));
    m_monitor->noteDisconnect(m_sums.of("va")->link.index);
    QVERIFY(upload(10, 100));
    read();
    QVERIFY(!isUp("va"));
    QCOMPARE(sumOf("va").upload, quint64(1000)); // counted all the same
    QVERIFY(s_network->ipHere("link set va mtu 1400"));
    read();
    QVERIFY(!isUp("va"));
    QVERIFY(s_network->ipHere("addr add 10.81.0.3/24 dev va"));
    read();
    QVERIFY(isUp("va"));
    m_monitor->noteDisconnect(m_sums.of("va")->link.index);
    QVERIFY(s_network->ipHere("link set va down") && s_network->ipHere("link set va up"));
    QTRY_VERIFY((read(), isUp("va")));
}

int main(int argc, char **argv)
{
    return LinkStage::run<tst_LinkState>(argc, argv);
}

#include "tst_linkstate.moc"
