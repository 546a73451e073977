#include "NetInfoTextMeter.h"

#include <QFontMetrics>
#include <QRandomGenerator>
#include <QtTest>

class tst_NetInfoTextMeter : public QObject
{
    Q_OBJECT
private slots:
    void theWidthIsThatOfTheFont();
    void whatSurelyFitsIsNeverWider();
    void aNarrowTextNeedsNoMeasuring();
    void otherScriptsAreMeasured();
    void aChangedFontIsNoticed();
};

void tst_NetInfoTextMeter::theWidthIsThatOfTheFont()
{
    NetInfoTextMeter meter;
    QFont large;
    large.setPixelSize(30);
    for (const QString &text :
         { QStringLiteral("Uploaded: 1.00 GB"), QString(), QStringLiteral("x") }) {
        for (int twice = 0; twice < 2; ++twice) {
            QCOMPARE(meter.width(QFont(), text), QFontMetrics(QFont()).horizontalAdvance(text));
            QCOMPARE(meter.width(large, text), QFontMetrics(large).horizontalAdvance(text));
        }
    }
}

void tst_NetInfoTextMeter::whatSurelyFitsIsNeverWider()
{
    QRandomGenerator random(20);
    NetInfoTextMeter meter;
    int accepted = 0;
    for (int round = 0; round < 3000; ++round) {
        QFont font;
        font.setPixelSize(6 + round / 100);
        font.setBold(round % 3 == 0);
        font.setItalic(round % 5 == 0);
        QString text;
        const int length = random.bounded(60);
        for (int i = 0; i < length; ++i)
            text += QChar(0x20 + random.bounded(0x2e0));
        const int limit = random.bounded(400);
        if (!meter.surelyFits(font, text, limit))
            continue;
        ++accepted;
        QVERIFY(QFontMetrics(font).horizontalAdvance(text) <= limit);
    }
    QVERIFY(accepted > 300);
}

void tst_NetInfoTextMeter::aNarrowTextNeedsNoMeasuring()
{
    NetInfoTextMeter meter;
    const QString text = QStringLiteral("Downloaded: 999.99 MB");
    const int width = QFontMetrics(QFont()).horizontalAdvance(text);
    QVERIFY(meter.surelyFits(QFont(), text, width + width / 4));
    QVERIFY(!meter.surelyFits(QFont(), text, width));
    QVERIFY(!meter.surelyFits(QFont(), text, -5));
    QVERIFY(!meter.surelyFits(QFont(), QString(), -1));
    QVERIFY(meter.surelyFits(QFont(), QString(), 0));
}

void tst_NetInfoTextMeter::otherScriptsAreMeasured()
{
    NetInfoTextMeter meter;
    for (const int code : { 0x0a, 0x1f, 0x300, 0x627, 0x905, 0x4e00, 0xd83d })
        QVERIFY(!meter.surelyFits(QFont(), QString(QChar(code)), 1000));
    QVERIFY(meter.surelyFits(QFont(), QString(QChar(0xfc)), 1000));
}

void tst_NetInfoTextMeter::aChangedFontIsNoticed()
{
    NetInfoTextMeter meter;
    QFont small;
    small.setPixelSize(5);
    QFont large;
    large.setPixelSize(50);
    const QString text = QStringLiteral("mmmmmmmmmm");
    QVERIFY(meter.surelyFits(small, text, 100));
    QVERIFY(!meter.surelyFits(large, text, 100));
    QVERIFY(meter.surelyFits(small, text, 100));
}

QTEST_MAIN(tst_NetInfoTextMeter)
#include "tst_netinfotextmeter.moc"
