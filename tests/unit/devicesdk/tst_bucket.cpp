#include "store/Bucket.h"

#include <QtTest>

class tst_Bucket : public QObject
{
    Q_OBJECT
private slots:
    void bucketStarts_data();
    void bucketStarts();
};

void tst_Bucket::bucketStarts_data()
{
    QTest::addColumn<qint64>("second");
    QTest::addColumn<qint64>("start");
    QTest::newRow("on the border") << qint64(1800) << qint64(1800);
    QTest::newRow("the last second") << qint64(2699) << qint64(1800);
    QTest::newRow("the epoch") << qint64(0) << qint64(0);
    QTest::newRow("before the epoch") << qint64(-1) << qint64(-900);
    QTest::newRow("a border before the epoch") << qint64(-900) << qint64(-900);
}

void tst_Bucket::bucketStarts()
{
    QFETCH(qint64, second);
    QTEST(qint64(velq::bucketStart(second)), "start");
}

QTEST_GUILESS_MAIN(tst_Bucket)
#include "tst_bucket.moc"
