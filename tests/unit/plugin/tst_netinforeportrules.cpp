#include "NetInfoReportRules.h"

#include <QtTest>

#include <cstring>

using namespace NetInfoRules;

class tst_NetInfoReportRules : public QObject
{
    Q_OBJECT
private slots:
    void reportKind_data();
    void reportKind();
    void everyFieldIsReadFromItsOffset();
    void fieldsAreLittleEndian();
    void timeIsSigned();
    void noticeHasFlagAndType();
    void anyNonZeroFlagIsConnected();
};

void tst_NetInfoReportRules::reportKind_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("kind");
    QTest::newRow("0 is the daily report") << 0 << 1;
    QTest::newRow("1 is the weekly report") << 1 << 3;
    QTest::newRow("2 is the monthly report") << 2 << 4;
    QTest::newRow("3 is the yearly report") << 3 << 5;
    QTest::newRow("4 falls back to daily") << 4 << 1;
    QTest::newRow("a negative type falls back to daily") << -1 << 1;
}

void tst_NetInfoReportRules::reportKind()
{
    QFETCH(int, type);
    QTEST(NetInfoRules::reportKind(type), "kind");
}

void tst_NetInfoReportRules::everyFieldIsReadFromItsOffset()
{
    unsigned char block[576] = {};
    block[524] = 1;
    block[532] = 2;
    block[540] = 3;
    block[544] = 4;
    block[556] = 5;
    block[568] = 6;
    const NetInfoReport report = decodeReport(block);
    QCOMPARE(report.downloadData, quint64(1));
    QCOMPARE(report.uploadData, quint64(2));
    QCOMPARE(report.downloadSpeed, quint32(3));
    QCOMPARE(report.uploadSpeed, quint32(4));
    QCOMPARE(report.connectionTime, qint64(5));
    QCOMPARE(report.lastReset, quint32(6));
}

void tst_NetInfoReportRules::fieldsAreLittleEndian()
{
    unsigned char block[576] = {};
    for (int i = 0; i < 8; ++i)
        block[524 + i] = (unsigned char)(i + 1);
    for (int i = 0; i < 4; ++i)
        block[544 + i] = (unsigned char)(0xa0 + i);
    const NetInfoReport report = decodeReport(block);
    QCOMPARE(report.downloadData, Q_UINT64_C(0x0807060504030201));
    QCOMPARE(report.uploadData, quint64(0));
    QCOMPARE(report.downloadSpeed, quint32(0));
    QCOMPARE(report.uploadSpeed, quint32(0xa3a2a1a0));
}

void tst_NetInfoReportRules::timeIsSigned()
{
    unsigned char block[576] = {};
    std::memset(block + 556, 0xff, 8);
    QCOMPARE(decodeReport(block).connectionTime, qint64(-1));
}

void tst_NetInfoReportRules::noticeHasFlagAndType()
{
    const unsigned char data[8] = { 1, 9, 9, 9, 0x44, 0x33, 0x22, 0x11 };
    QCOMPARE(decodeNotice(data).connected, true);
    QCOMPARE(decodeNotice(data).connectType, 0x11223344);
    const unsigned char none[8] = { 0, 1, 1, 1, 1, 0, 0, 0 };
    QCOMPARE(decodeNotice(none).connected, false);
}

void tst_NetInfoReportRules::anyNonZeroFlagIsConnected()
{
    const unsigned char data[8] = { 0x80, 0, 0, 0, 0, 0, 0, 0 };
    QCOMPARE(decodeNotice(data).connected, true);
}

QTEST_GUILESS_MAIN(tst_NetInfoReportRules)
#include "tst_netinforeportrules.moc"
