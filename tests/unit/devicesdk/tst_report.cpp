#include "engine/Report.h"

#include <QtTest>

#include <cstring>
#include <vector>

using velq::Report;

class tst_Report : public QObject
{
    Q_OBJECT
private slots:
    void theLayoutByteForByte();
    void theRestIsCleared();
    void anUnalignedTargetIsFine();
    void negativeTimesKeepTheirSign();
    void eventDataByteForByte();
    void roundedSeconds_data();
    void roundedSeconds();
    void times32_data();
    void times32();
};

namespace {

Report sample()
{
    Report report;
    report.download = 0x0102030405060708;
    report.upload = 0x1112131415161718;
    report.downloadSpeed = 0x21222324;
    report.uploadSpeed = 0x31323334;
    report.seconds = 0x4142434445464748;
    report.lastReset = 0x51525354;
    return report;
}

QByteArray expectedBytes()
{
    QByteArray bytes(576, '\0');
    bytes.replace(524, 8, QByteArray::fromHex("0807060504030201"));
    bytes.replace(532, 8, QByteArray::fromHex("1817161514131211"));
    bytes.replace(540, 4, QByteArray::fromHex("24232221"));
    bytes.replace(544, 4, QByteArray::fromHex("34333231"));
    bytes.replace(556, 8, QByteArray::fromHex("4847464544434241"));
    bytes.replace(568, 4, QByteArray::fromHex("54535251"));
    return bytes;
}

} // namespace

void tst_Report::theLayoutByteForByte()
{
    std::vector<char> target(576);
    velq::writeReport(sample(), target.data());
    QCOMPARE(QByteArray(target.data(), 576), expectedBytes());
}

void tst_Report::theRestIsCleared()
{
    std::vector<char> target(578, '\x7f');
    velq::writeReport({}, target.data() + 1);
    QCOMPARE(QByteArray(target.data() + 1, 576), QByteArray(576, '\0'));
    QCOMPARE(target.front(), '\x7f');
    QCOMPARE(target.back(), '\x7f');
}

void tst_Report::anUnalignedTargetIsFine()
{
    std::vector<char> target(580);
    for (std::size_t offset = 0; offset < 4; ++offset) {
        velq::writeReport(sample(), target.data() + offset);
        QCOMPARE(QByteArray(target.data() + offset, 576), expectedBytes());
    }
}

void tst_Report::negativeTimesKeepTheirSign()
{
    std::vector<char> target(576);
    Report report;
    report.seconds = -2;
    velq::writeReport(report, target.data());
    qint64 seconds = 0;
    std::memcpy(&seconds, target.data() + 556, sizeof seconds);
    QCOMPARE(seconds, qint64(-2));
}

void tst_Report::eventDataByteForByte()
{
    const auto connected = velq::eventData(true, 1);
    QCOMPARE(QByteArray(connected.data(), 8), QByteArray::fromHex("0100000001000000"));
    const auto idle = velq::eventData(false, 0);
    QCOMPARE(QByteArray(idle.data(), 8), QByteArray(8, '\0'));
}

void tst_Report::roundedSeconds_data()
{
    QTest::addColumn<quint64>("milliseconds");
    QTest::addColumn<qint64>("seconds");
    QTest::newRow("nothing") << quint64(0) << qint64(0);
    QTest::newRow("just below the half") << quint64(1499) << qint64(1);
    QTest::newRow("the half") << quint64(1500) << qint64(2);
    QTest::newRow("a tick that came early") << quint64(9999) << qint64(10);
    QTest::newRow("the largest") << ~quint64(0) << qint64(18446744073709552);
}

void tst_Report::roundedSeconds()
{
    QFETCH(quint64, milliseconds);
    QTEST(qint64(velq::toSeconds(milliseconds)), "seconds");
}

void tst_Report::times32_data()
{
    QTest::addColumn<qint64>("seconds");
    QTest::addColumn<quint32>("expected");
    QTest::newRow("the epoch") << qint64(0) << 0U;
    QTest::newRow("before it") << qint64(-5) << 0U;
    QTest::newRow("the last that fits") << qint64(0xffffffff) << 0xffffffffU;
    QTest::newRow("later") << qint64(0x100000000) << 0xffffffffU;
}

void tst_Report::times32()
{
    QFETCH(qint64, seconds);
    QTEST(quint32(velq::toTime32(seconds)), "expected");
}

QTEST_GUILESS_MAIN(tst_Report)
#include "tst_report.moc"
