#include "NetInfoSettingRules.h"

#include <QDate>
#include <QLocale>
#include <QStringList>
#include <QtTest>

using namespace NetInfoRules;

class tst_NetInfoSettingRules : public QObject
{
    Q_OBJECT
private slots:
    void settingValue_data();
    void settingValue();
    void settingValues_data();
    void settingValues();
    void aFileHasEighteenLinesInOrder();
    void missingValuesAreWrittenEmpty();
    void valuesAfterTheSeventeenthAreNotWritten();
    void aWrittenFileReadsTheSame();
    void settingDate_data();
    void settingDate();
    void dateOfSetting_data();
    void dateOfSetting();
    void settingEntry_data();
    void settingEntry();
    void firstSettingFile_data();
    void firstSettingFile();
    void bothKindsOfFileHaveTheStartAtTheSamePlaces();
    void linesWithin_data();
    void linesWithin();
    void isSettingText_data();
    void isSettingText();
};

void tst_NetInfoSettingRules::settingValue_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("value");
    QTest::newRow("a value") << "SizeVolume=1024"
                             << "1024";
    QTest::newRow("the key is not looked at") << "anything else=1024"
                                              << "1024";
    QTest::newRow("no key at all") << "=1024"
                                   << "1024";
    QTest::newRow("an empty value") << "SizeVolume="
                                    << "";
    QTest::newRow("a second = ends the value") << "SizeVolume=12=3"
                                               << "12";
    QTest::newRow("two = in a row give an empty value") << "SizeVolume==3"
                                                        << "";
    QTest::newRow("blanks belong to the value") << "SizeVolume= 12 "
                                                << " 12 ";
    QTest::newRow("no = gives an empty value") << "SizeVolume"
                                               << "";
    QTest::newRow("an empty line gives an empty value") << ""
                                                        << "";
}

void tst_NetInfoSettingRules::settingValue()
{
    QFETCH(QString, line);
    QTEST(NetInfoRules::settingValue(line), "value");
}

void tst_NetInfoSettingRules::settingValues_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QStringList>("values");
    const auto row = [](const char *name, const QByteArray &content, const QStringList &values) {
        QTest::newRow(name) << content << values;
    };
    const QStringList none;
    row("an empty file has none", "", none);
    row("the first line alone has none", "[uselimit]", none);
    row("the first line with its end has none", "[uselimit]\n", none);
    row("one value without a line's end", "[uselimit]\na=1", { "1" });
    row("the last line's end adds none", "[uselimit]\na=1\n", { "1" });
    row("the first line is lost whatever it holds", "a=1\nb=2", { "2" });
    row("order is by line", "x\nb=2\na=1", { "2", "1" });
    row("an empty line counts", "x\na=1\n\nb=2", { "1", "", "2" });
    row("an empty line at the end counts", "x\na=1\n\n", { "1", "" });
    row("a line without = counts", "x\na=1\nno\nb=2", { "1", "", "2" });
    row("carriage returns are dropped", "x\r\na=1\r\nb=2\r\n", { "1", "2" });
    row("the text is UTF-8", "x\na=\xc3\xa4", { QString(QChar(0xe4)) });
    row("a byte that is no UTF-8 is replaced", "x\na=\xff", { QString(QChar(0xfffd)) });
    row("a byte order mark is on the lost line", "\xef\xbb\xbfx\na=1", { "1" });
    row("a zero byte ends nothing", QByteArray("x\na=1\0002\nb=3", 11),
        { QString("1") + QChar(0) + QString("2"), "3" });
    row("more lines give more values", "x" + QByteArray("\na=1").repeated(40),
        QStringList(QVector<QString>(40, "1").toList()));
}

void tst_NetInfoSettingRules::settingValues()
{
    QFETCH(QByteArray, content);
    QFETCH(QStringList, values);
    QCOMPARE(QStringList(NetInfoRules::settingValues(content)), values);
}

void tst_NetInfoSettingRules::aFileHasEighteenLinesInOrder()
{
    QList<QString> values;
    for (int i = 0; i < kSettingCount; ++i)
        values.append(QString::number(i));
    QCOMPARE(settingFile(values),
             QByteArray("[uselimit]\n"
                        "chkRecurrence=0\n"
                        "radioDaily=1\n"
                        "radioWeekly=2\n"
                        "radioMonthly=3\n"
                        "chkVolume=4\n"
                        "chkTimeVolume=5\n"
                        "SizeVolume=6\n"
                        "SizeTimeVolume=7\n"
                        "chkWarnbefore=8\n"
                        "chkWarnAfter=9\n"
                        "ShowDataWarnAfter=10\n"
                        "ShowDataWarnBefor=11\n"
                        "ShowTimeWarnBefor=12\n"
                        "ShowTimeWarnAfter=13\n"
                        "startdate=14\n"
                        "startweekdate=15\n"
                        "startmonthdate=16"));
}

void tst_NetInfoSettingRules::missingValuesAreWrittenEmpty()
{
    const QByteArray file = settingFile({ "true", "false" });
    QVERIFY(file.startsWith("[uselimit]\nchkRecurrence=true\nradioDaily=false\nradioWeekly=\n"));
    QVERIFY(file.endsWith("\nstartweekdate=\nstartmonthdate="));
    QCOMPARE(file.count('\n'), 17);
}

void tst_NetInfoSettingRules::valuesAfterTheSeventeenthAreNotWritten()
{
    QList<QString> values;
    for (int i = 0; i < 2 * kSettingCount; ++i)
        values.append(QString::number(i));
    QCOMPARE(settingFile(values), settingFile(values.mid(0, kSettingCount)));
}

void tst_NetInfoSettingRules::aWrittenFileReadsTheSame()
{
    QList<QString> values;
    for (int i = 0; i < kSettingCount; ++i)
        values.append(QString(i % 4, 'a'));
    QCOMPARE(NetInfoRules::settingValues(settingFile(values)), values);
}

void tst_NetInfoSettingRules::settingDate_data()
{
    QTest::addColumn<QDate>("date");
    QTest::addColumn<QString>("text");
    QTest::newRow("one digit has a zero before it") << QDate(2024, 3, 7) << "07-03-2024";
    QTest::newRow("two digits") << QDate(2023, 12, 31) << "31-12-2023";
    QTest::newRow("the leap day") << QDate(2024, 2, 29) << "29-02-2024";
    QTest::newRow("no date") << QDate() << "";
}

void tst_NetInfoSettingRules::settingDate()
{
    QFETCH(QDate, date);
    QTEST(NetInfoRules::settingDate(date), "text");
    QLocale::setDefault(QLocale(QLocale::Arabic, QLocale::Egypt)); // with digits of its own
    const QString arabic = NetInfoRules::settingDate(date);
    QLocale::setDefault(QLocale::c());
    QTEST(arabic, "text");
}

void tst_NetInfoSettingRules::dateOfSetting_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QDate>("date");
    QTest::newRow("a date") << "05-03-2024" << QDate(2024, 3, 5);
    QTest::newRow("separators are not looked at") << "05x03/2024" << QDate(2024, 3, 5);
    QTest::newRow("digits as separators") << "0510312024" << QDate(2024, 3, 5);
    QTest::newRow("what follows is not looked at") << "05-03-2024 and more" << QDate(2024, 3, 5);
    QTest::newRow("a year of three digits") << "05-03-999" << QDate(999, 3, 5);
    QTest::newRow("a digit, then none") << "5x-3x-2x24" << QDate(2, 3, 5);
    QTest::newRow("a leap day") << "29-02-2024" << QDate(2024, 2, 29);
    for (const char *text :
         { "", "29-02-2023", "31-02-2024", "00-03-2024", "05-00-2024", "05-13-2024", "05-03-0000",
           "05-03", "ab-cd-efgh", "x5-03-2024", "5-3-2024", "-5-03-2024", " 5-03-2024" })
        QTest::addRow("'%s' is none", text) << QString::fromLatin1(text) << QDate();
    QTest::newRow("null") << QString() << QDate();
    QTest::newRow("other digits") << QString(10, QChar(0x0661)) << QDate();
}

void tst_NetInfoSettingRules::dateOfSetting()
{
    QFETCH(QString, text);
    QTEST(NetInfoRules::dateOfSetting(text), "date");
}

void tst_NetInfoSettingRules::settingEntry_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("entry");
    QTest::newRow("the first") << "0" << 7 << 0;
    QTest::newRow("the last") << "6" << 7 << 6;
    QTest::newRow("after the last") << "7" << 7 << -1;
    QTest::newRow("before the first") << "-1" << 7 << -1;
    QTest::newRow("of an empty list") << "0" << 0 << -1;
    for (const char *text : { "", "abc", "1.5", "0x1", "1 2", "2147483648", "99999999999" })
        QTest::addRow("'%s' is none", text) << QString::fromLatin1(text) << 2000000000 << -1;
    QTest::newRow("null") << QString() << 7 << -1;
}

void tst_NetInfoSettingRules::settingEntry()
{
    QFETCH(QString, text);
    QFETCH(int, count);
    QTEST(NetInfoRules::settingEntry(text, count), "entry");
}

void tst_NetInfoSettingRules::firstSettingFile_data()
{
    QTest::addColumn<QByteArray>("settingTemplate");
    QTest::addColumn<QByteArray>("file");
    const QByteArray start = "startdate=07-03-2024\nstartday=0\nstartweekdate=0";
    QTest::newRow("the last line ends")
        << QByteArray("[uselimit]\na=1\n") << "[uselimit]\na=1\n" + start;
    QTest::newRow("the last line is open")
        << QByteArray("[uselimit]\na=1") << "[uselimit]\na=1\n" + start;
    QTest::newRow("carriage returns go") << QByteArray("x\r\na=1\r\n") << "x\na=1\n" + start;
    QTest::newRow("an empty line stays") << QByteArray("x\n\na=1\n") << "x\n\na=1\n" + start;
    QTest::newRow("a byte order mark goes") << QByteArray("\xef\xbb\xbfx\n") << "x\n" + start;
    QTest::newRow("an empty template") << QByteArray() << start;
}

void tst_NetInfoSettingRules::firstSettingFile()
{
    QFETCH(QByteArray, settingTemplate);
    QTEST(NetInfoRules::firstSettingFile(settingTemplate, QDate(2024, 3, 7)), "file");
}

void tst_NetInfoSettingRules::bothKindsOfFileHaveTheStartAtTheSamePlaces()
{
    QList<QString> values(QVector<QString>(14, "v").toList());
    values << "07-03-2024"
           << "0"
           << "0";
    const QByteArray saved = settingFile(values);
    const QByteArray settingTemplate = saved.left(saved.indexOf("startdate="));
    const QByteArray first = NetInfoRules::firstSettingFile(settingTemplate, QDate(2024, 3, 7));
    QVERIFY(first != saved);
    QCOMPARE(NetInfoRules::settingValues(first), NetInfoRules::settingValues(saved));
}

void tst_NetInfoSettingRules::linesWithin_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArray>("head");
    QTest::newRow("shorter than the limit") << QByteArray("ab\ncd") << QByteArray("ab\ncd");
    QTest::newRow("as long as the limit") << QByteArray("ab\ncdefg") << QByteArray("ab\ncdefg");
    QTest::newRow("one byte longer loses its last line")
        << QByteArray("ab\ncdefgh") << QByteArray("ab\n");
    QTest::newRow("a line that ends at the limit stays")
        << QByteArray("ab\ncdef\ng") << QByteArray("ab\ncdef\n");
    QTest::newRow("a line that ends after it goes")
        << QByteArray("ab\ncdefg\n") << QByteArray("ab\n");
    QTest::newRow("one long line gives nothing") << QByteArray(100, 'a') << QByteArray();
}

void tst_NetInfoSettingRules::linesWithin()
{
    QFETCH(QByteArray, content);
    QTEST(NetInfoRules::linesWithin(content, 8), "head");
}

void tst_NetInfoSettingRules::isSettingText_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("text");
    QTest::newRow("a settings file is text") << settingFile({}) << true;
    QTest::newRow("other text is text") << QByteArray("\xc3\xa4\xff\r\n\t") << true;
    QTest::newRow("nothing is text") << QByteArray() << true;
    QTest::newRow("a zero byte is not") << QByteArray("a\0b", 3) << false;
    QTest::newRow("as long as the limit is text") << QByteArray(1000, 'a') << true;
    QTest::newRow("longer is not") << QByteArray(1001, 'a') << false;
}

void tst_NetInfoSettingRules::isSettingText()
{
    QFETCH(QByteArray, content);
    QTEST(NetInfoRules::isSettingText(content, 1000), "text");
}

QTEST_GUILESS_MAIN(tst_NetInfoSettingRules)
#include "tst_netinfosettingrules.moc"
