#include "counters/CounterDelta.h"

#include <QtTest>

#include <limits>

using velq::LinkReading;

class tst_CounterDelta : public QObject
{
    Q_OBJECT
private slots:
    void differences_data();
    void differences();
    void speeds_data();
    void speeds();
};

namespace {

constexpr quint64 kMax = std::numeric_limits<quint64>::max();
constexpr qint64 kSecond = 1000000000;

LinkReading reading(int index, quint64 generation, quint64 download, quint64 upload)
{
    LinkReading link;
    link.index = index;
    link.generation = generation;
    link.download = download;
    link.upload = upload;
    return link;
}

} // namespace

Q_DECLARE_METATYPE(LinkReading)

void tst_CounterDelta::differences_data()
{
    QTest::addColumn<LinkReading>("before");
    QTest::addColumn<LinkReading>("now");
    QTest::addColumn<bool>("restarted");
    QTest::addColumn<quint64>("download");
    QTest::addColumn<quint64>("upload");
    const LinkReading base = reading(3, 0, 1000, 500);
    QTest::newRow("nothing flowed") << base << base << false << quint64(0) << quint64(0);
    QTest::newRow("both grew") << base << reading(3, 0, 1001, 507) << false << quint64(1)
                               << quint64(7);
    QTest::newRow("one byte less is a restart")
        << base << reading(3, 0, 999, 900) << true << quint64(0) << quint64(0);
    QTest::newRow("an upload that fell is a restart")
        << base << reading(3, 0, 2000, 499) << true << quint64(0) << quint64(0);
    QTest::newRow("from the top to 0 is no wrap")
        << reading(3, 0, kMax, kMax) << reading(3, 0, 0, 0) << true << quint64(0) << quint64(0);
    QTest::newRow("past 32 bits") << reading(3, 0, 0xffffffff, 0)
                                  << reading(3, 0, quint64(0x1) << 32, 0) << false << quint64(1)
                                  << quint64(0);
    QTest::newRow("the whole range")
        << reading(3, 0, 0, 0) << reading(3, 0, kMax, kMax) << false << kMax << kMax;
    QTest::newRow("another index with larger counters")
        << base << reading(4, 0, 9000, 9000) << true << quint64(0) << quint64(0);
    QTest::newRow("the same index of another generation")
        << base << reading(3, 1, 9000, 9000) << true << quint64(0) << quint64(0);
}

void tst_CounterDelta::differences()
{
    QFETCH(LinkReading, before);
    QFETCH(LinkReading, now);
    const velq::CounterDelta delta = velq::counterDelta(before, now);
    QTEST(delta.restarted, "restarted");
    QTEST(quint64(delta.download), "download");
    QTEST(quint64(delta.upload), "upload");
}

void tst_CounterDelta::speeds_data()
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

void tst_CounterDelta::speeds()
{
    QFETCH(quint64, bytes);
    QFETCH(qint64, elapsedNs);
    QTEST(quint32(velq::speed(bytes, elapsedNs)), "expected");
}

QTEST_GUILESS_MAIN(tst_CounterDelta)
#include "tst_counterdelta.moc"
