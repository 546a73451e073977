#include "NetInfoTreeRules.h"

#include <QtTest>

using namespace NetInfoRules;

class tst_NetInfoTreeRules : public QObject
{
    Q_OBJECT
private slots:
    void aRowNeedsItsTextAndItsIndentations();
    void onlyMoreThan280Widens();
    void theWidestStays();
};

void tst_NetInfoTreeRules::aRowNeedsItsTextAndItsIndentations()
{
    QCOMPARE(requiredColumnWidth(100, 20, 0), 140);
    QCOMPARE(requiredColumnWidth(100, 20, 2), 180);
    QCOMPARE(requiredColumnWidth(0, 0, 5), 0);
}

void tst_NetInfoTreeRules::onlyMoreThan280Widens()
{
    QVERIFY(!widensColumn(279));
    QVERIFY(!widensColumn(280));
    QVERIFY(widensColumn(281));
}

void tst_NetInfoTreeRules::theWidestStays()
{
    QCOMPARE(widenedColumn(300, 0), 300);
    QCOMPARE(widenedColumn(300, 350), 350);
    QCOMPARE(widenedColumn(351, 350), 351);
}

QTEST_GUILESS_MAIN(tst_NetInfoTreeRules)
#include "tst_netinfotreerules.moc"
