#include "accounting/Speed.h"

#include <QtTest>

#include <limits>

class tst_Speed : public QObject
{
    Q_OBJECT
private slots:
    void speeds_data();
    void speeds();
};

namespace {

constexpr quint64 kMax = std::numeric_limits<quint64>::max();
constexpr qint64 kSecond = 1000000000;

} // namespace

void tst_Speed::speeds_data()
{
    QTest::addColumn<quint64>("bytes");
    QTest::addColumn<qint64>("elapsedNs");
    QTest::addColumn<quint32>("expected");
    QTest::newRow("a second") << quint64(1234567) << kSecond << 1234567U;
    QTest::newRow("two seconds") << quint64(1001) << 2 * kSecond << 500U;
    QTest::newRow("half a second") << quint64(1000) << kSecond / 2 << 2000U;
    QTest::newRow("nothing") << quint64(0) << kSecond << 0U;
    QTest::newRow("the last that fits") << quint64(0xffffffff) << kSecond << 0xffffffffU;
    QTest::newRow("one more saturates") << (quint64(1) << 32) << kSecond << 0xffffffffU;
    QTest::newRow("the largest in a nanosecond") << kMax << qint64(1) << 0xffffffffU;
    QTest::newRow("no time") << quint64(1000) << qint64(0) << 0U;
    QTest::newRow("negative time") << quint64(1000) << qint64(-1) << 0U;
}

void tst_Speed::speeds()
{
    QFETCH(quint64, bytes);
    QFETCH(qint64, elapsedNs);
    QTEST(quint32(velq::speed(bytes, elapsedNs)), "expected");
}

QTEST_GUILESS_MAIN(tst_Speed)
#include "tst_speed.moc"
