#include <host/Change.h>
#include <host/CommonUtils.h>

#include <QLocale>
#include <QtTest>

#include <limits>

#include "TestLog.h"

namespace {

const QString kModule = QStringLiteral("NetInfoUIExPlugin");

// As the shipped file reads: the factor of TB does not fit into `value`.
QVector<TagUnits> amounts()
{
    return { { "B", 1, 1, "IDS_UNIT_B" },
             { "KB", 1024, 1024, "IDS_UNIT_KB" },
             { "MB", 1048576, 1048576, "IDS_UNIT_MB" },
             { "GB", 1073741824, 1073741824, "IDS_UNIT_GB" },
             { "TB", 0, 1099511627776ULL, "IDS_UNIT_TB" } };
}

QVector<TagUnits> speeds()
{
    return { { "KBPS", 1024, 1024, "IDS_UNIT_KBPS" },
             { "MBPS", 1048576, 1048576, "IDS_UNIT_MBPS" } };
}

} // namespace

// No translator is installed here: the unit's text is its identifier.
class tst_CommonUtils : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void amount_data();
    void amount();
    void speedBelowEveryUnitIsInTheSmallest();
    void anEmptyTableGivesTheBareNumber();
    void aRowWithoutAFactorDividesByNothing();
    void numbersFollowTheLocale_data();
    void numbersFollowTheLocale();
    void theCaptionIsTheFirstUnit();
    void theCaptionOfAnEmptyTableIsEmpty();
    void anUnknownKeyGivesItself();

private:
    QScopedPointer<TestLog> m_log;
};

void tst_CommonUtils::init()
{
    QLocale::setDefault(QLocale::c());
    m_log.reset(new TestLog);
}

void tst_CommonUtils::cleanup()
{
    const QStringList problems = m_log->takeProblems();
    m_log.reset();
    QCOMPARE(problems, QStringList());
}

void tst_CommonUtils::amount_data()
{
    QTest::addColumn<quint64>("value");
    QTest::addColumn<QString>("expected");
    const quint64 max = std::numeric_limits<quint64>::max();
    QTest::newRow("nothing") << quint64(0) << "0.00 IDS_UNIT_B";
    QTest::newRow("just below 1 KB") << quint64(1023) << "1023.00 IDS_UNIT_B";
    QTest::newRow("1 KB") << quint64(1024) << "1.00 IDS_UNIT_KB";
    QTest::newRow("1.5 KB") << quint64(1536) << "1.50 IDS_UNIT_KB";
    QTest::newRow("a leading zero of the decimals") << quint64(1075) << "1.05 IDS_UNIT_KB";
    QTest::newRow("just below 1 MB rounds within its unit")
        << quint64(1048575) << "1024.00 IDS_UNIT_KB";
    QTest::newRow("1 MB") << quint64(1048576) << "1.00 IDS_UNIT_MB";
    QTest::newRow("just below 1 GB") << quint64(1073741823) << "1024.00 IDS_UNIT_MB";
    QTest::newRow("1 GB") << quint64(1073741824) << "1.00 IDS_UNIT_GB";
    QTest::newRow("above 32 bits") << quint64(5368709120ULL) << "5.00 IDS_UNIT_GB";
    QTest::newRow("just below 1 TB") << quint64(1099511627775ULL) << "1024.00 IDS_UNIT_GB";
    QTest::newRow("1 TB") << quint64(1099511627776ULL) << "1.00 IDS_UNIT_TB";
    QTest::newRow("2^64-1") << max << "16777216.00 IDS_UNIT_TB";
}

void tst_CommonUtils::amount()
{
    QFETCH(quint64, value);
    QTEST(CommonUtils::SpeedFluxToString(amounts(), value, kModule), "expected");
}

void tst_CommonUtils::speedBelowEveryUnitIsInTheSmallest()
{
    QCOMPARE(CommonUtils::SpeedFluxToString(speeds(), 0, kModule), QString("0.00 IDS_UNIT_KBPS"));
    QCOMPARE(CommonUtils::SpeedFluxToString(speeds(), 512, kModule), QString("0.50 IDS_UNIT_KBPS"));
}

void tst_CommonUtils::anEmptyTableGivesTheBareNumber()
{
    QCOMPARE(CommonUtils::SpeedFluxToString({}, 5, kModule), QString("5.00"));
    QCOMPARE(CommonUtils::SpeedFluxToString({}, std::numeric_limits<quint64>::max(), kModule),
             QString("18446744073709551615.00"));
}

void tst_CommonUtils::aRowWithoutAFactorDividesByNothing()
{
    QCOMPARE(CommonUtils::SpeedFluxToString({ { "X", 0, 0, "IDS_X" } }, 7, kModule),
             QString("7.00 IDS_X"));
}

void tst_CommonUtils::numbersFollowTheLocale_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<quint64>("bytes");
    for (const char *locale :
         { "C", "de_DE", "en_US", "fr_FR", "es_ES", "ar_EG", "ar_SA", "fa_IR" }) {
        for (const quint64 bytes : { 0, 7, 105, 1234, 98765, 12345678 })
            QTest::newRow(
                qPrintable(QString::fromLatin1("%1 %2").arg(QLatin1String(locale)).arg(bytes)))
                << QString::fromLatin1(locale) << bytes;
    }
}

// The same text as Qt makes of the same number in floating point, where that is exact.
void tst_CommonUtils::numbersFollowTheLocale()
{
    QFETCH(QString, locale);
    QFETCH(quint64, bytes);
    QLocale::setDefault(QLocale(locale));
    const QVector<TagUnits> hundreds { { "H", 100, 100, "IDS_H" } };
    QCOMPARE(CommonUtils::SpeedFluxToString(hundreds, bytes, kModule),
             QLocale(locale).toString(double(bytes) / 100, 'f', 2) + " IDS_H");
}

void tst_CommonUtils::theCaptionIsTheFirstUnit()
{
    QCOMPARE(CommonUtils::SpeedUnitToString(speeds(), kModule), QString("IDS_UNIT_KBPS"));
}

void tst_CommonUtils::theCaptionOfAnEmptyTableIsEmpty()
{
    QVERIFY(CommonUtils::SpeedUnitToString({}, kModule).isEmpty());
}

void tst_CommonUtils::anUnknownKeyGivesItself()
{
    QCOMPARE(Change::tr(kModule, "IDS_THERE_IS_NO_SUCH_KEY"), QString("IDS_THERE_IS_NO_SUCH_KEY"));
    QVERIFY(Change::tr(kModule, QString()).isEmpty());
}

QTEST_GUILESS_MAIN(tst_CommonUtils)
#include "tst_commonutils.moc"
