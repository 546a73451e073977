#include <PeriodStart.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

namespace {

// A whole settings file whose last two values are given.
QStringList linesWith(const QString &weekdayLine, const QString &dayLine)
{
    QStringList lines { QStringLiteral("[DataUsageLimit]") };
    for (int i = 0; i < 15; ++i)
        lines << QStringLiteral("Key%1=%2").arg(i).arg(i + 4);
    return lines << weekdayLine << dayLine;
}

} // namespace

class tst_PeriodStart : public QObject
{
    Q_OBJECT
private slots:
    void linesAreReadByPosition_data();
    void linesAreReadByPosition();
    void everyWeekdayAndDayIsRead();
    void aShortFileKeepsTheDefault();
    void aFileIsRead();
    void hostileFilesKeepTheDefault_data();
    void hostileFilesKeepTheDefault();
    void whatIsNoFileKeepsTheDefault();
};

void tst_PeriodStart::linesAreReadByPosition_data()
{
    QTest::addColumn<QString>("weekdayLine");
    QTest::addColumn<QString>("dayLine");
    QTest::addColumn<int>("weekday");
    QTest::addColumn<int>("day");
    QTest::newRow("first of both") << "Weekly=0"
                                   << "Monthly=0" << 0 << 1;
    QTest::newRow("last of both") << "Weekly=6"
                                  << "Monthly=30" << 6 << 31;
    QTest::newRow("one above") << "Weekly=7"
                               << "Monthly=31" << 0 << 1;
    QTest::newRow("one below") << "Weekly=-1"
                               << "Monthly=-1" << 0 << 1;
    QTest::newRow("a bad weekday leaves the day") << "Weekly=Sun"
                                                  << "Monthly=14" << 0 << 15;
    QTest::newRow("a bad day leaves the weekday") << "Weekly=3"
                                                  << "Monthly=" << 3 << 1;
    QTest::newRow("keys are not looked at") << "Monthly=3"
                                            << "=20" << 3 << 21;
    QTest::newRow("the value ends at the next sign") << "a=3=5"
                                                     << "b=20=1" << 3 << 21;
    QTest::newRow("no sign") << "3"
                             << "20" << 0 << 1;
    QTest::newRow("blanks and carriage returns") << "a= 3\r"
                                                 << "b=20 \r" << 3 << 21;
    QTest::newRow("fractions") << "a=3.0"
                               << "b=2e1" << 0 << 1;
    QTest::newRow("hexadecimal") << "a=0x3"
                                 << "b=0x14" << 0 << 1;
    QTest::newRow("other digits") << QString::fromUtf8("a=٣") << QString::fromUtf8("b=３") << 0
                                  << 1;
    QTest::newRow("more than an int holds") << "a=4294967299"
                                            << "b=99999999999999999999" << 0 << 1;
}

void tst_PeriodStart::linesAreReadByPosition()
{
    QFETCH(QString, weekdayLine);
    QFETCH(QString, dayLine);
    const PeriodStart start = readPeriodStart(linesWith(weekdayLine, dayLine));
    QTEST(start.weekday, "weekday");
    QTEST(start.dayOfMonth, "day");
}

void tst_PeriodStart::everyWeekdayAndDayIsRead()
{
    for (int index = 0; index <= 30; ++index) {
        const QString value = QStringLiteral("x=%1").arg(index);
        const PeriodStart start = readPeriodStart(linesWith(value, value));
        QCOMPARE(start.weekday, index <= 6 ? index : 0);
        QCOMPARE(start.dayOfMonth, index + 1);
    }
}

void tst_PeriodStart::aShortFileKeepsTheDefault()
{
    const QStringList whole = linesWith("a=3", "b=20");
    for (int count = 0; count < whole.size(); ++count) {
        const PeriodStart start = readPeriodStart(whole.mid(0, count));
        QCOMPARE(start.weekday, count == 17 ? 3 : 0);
        QCOMPARE(start.dayOfMonth, 1);
    }
    const PeriodStart longer = readPeriodStart(whole + whole);
    QCOMPARE(longer.weekday, 3);
    QCOMPARE(longer.dayOfMonth, 21);
}

void tst_PeriodStart::aFileIsRead()
{
    QTemporaryDir folder;
    QFile file(folder.filePath("settings.ini"));
    for (const char *lineEnd : { "\n", "\r\n" }) {
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(linesWith("a=3", "b=20").join(lineEnd).toUtf8());
        file.close();
        const PeriodStart start = readPeriodStartFile(file.fileName());
        QCOMPARE(start.weekday, 3);
        QCOMPARE(start.dayOfMonth, 21);
    }
}

void tst_PeriodStart::hostileFilesKeepTheDefault_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("line ends alone") << QByteArray(1000, '\n');
    QTest::newRow("zeros") << QByteArray(4096, '\0');
    QTest::newRow("one endless line") << QByteArray(3000000, 'x');
    QTest::newRow("endless signs") << QByteArray(3000000, '=');
    QTest::newRow("not UTF-8") << QByteArray("\xff\xfe=\n").repeated(20);
    QByteArray wide;
    for (const QChar c : linesWith("a=3", "b=20").join('\n'))
        wide += QByteArray(1, c.toLatin1()) + '\0';
    QTest::newRow("UTF-16") << wide;
}

void tst_PeriodStart::hostileFilesKeepTheDefault()
{
    QFETCH(QByteArray, content);
    QTemporaryDir folder;
    QFile file(folder.filePath("settings.ini"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), qint64(content.size()));
    file.close();
    QVERIFY(readPeriodStartFile(file.fileName()) == PeriodStart());
}

void tst_PeriodStart::whatIsNoFileKeepsTheDefault()
{
    QTemporaryDir folder;
    const QByteArray pipe = QFile::encodeName(folder.filePath("pipe"));
    QCOMPARE(::mkfifo(pipe.constData(), 0600), 0);
    QVERIFY(QFile::link(folder.filePath("nowhere"), folder.filePath("link")));
    for (const QString &path : { QString(), folder.path(), folder.filePath("missing"),
                                 folder.filePath("pipe"), folder.filePath("link") })
        QVERIFY2(readPeriodStartFile(path) == PeriodStart(), qPrintable(path));
}

QTEST_GUILESS_MAIN(tst_PeriodStart)
#include "tst_periodstart.moc"
