#include "ExportOpenMetrics.h"

#include "Rows.h"

#include <QRegularExpression>
#include <QSet>
#include <QtTest>

using namespace velqctl;

class tst_OpenMetrics : public QObject
{
    Q_OBJECT
private slots:
    void labelsAreEscaped_data();
    void labelsAreEscaped();
    void countersAreSumsOfAllDaysWithoutCorrections();
    void periodsAreGaugesWithCorrections();
    void resetsAndStates();
    void theFormatIsKept_data();
    void theFormatIsKept();
};

namespace {

Metrics example()
{
    Metrics metrics;
    metrics.days
        = { dayRow(1, "hw:02", 0, false, 100, 10, 1500),
            dayRow(2, "hw:02", 0, false, 200, 20, 2005), dayRow(2, "hw:02", 0, true, 1, 2, 3),
            dayRow(2, "sim:a\\b\"c", 1, false, 5, 6, 0),
            dayRow(2, "operator", 0, false, -300, -30, 0) };
    metrics.periods = { { 1, 0, 2, 3, 77, 88, 99 } };
    metrics.lastResets = { 1709301909, 0 };
    metrics.connected = true;
    return metrics;
}

QStringList lines(const std::string &text)
{
    return QString::fromStdString(text).split('\n');
}

} // namespace

void tst_OpenMetrics::labelsAreEscaped_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("value");
    QTest::newRow("plain") << "wwan0"
                           << "wwan0";
    QTest::newRow("a quote") << "a\"b"
                             << "a\\\"b";
    QTest::newRow("a backslash") << "a\\b"
                                 << "a\\\\b";
    QTest::newRow("an end of line") << "a\nb"
                                    << "a\\nb";
    QTest::newRow("other letters") << QString::fromUtf8("ü") << QString::fromUtf8("ü");
}

void tst_OpenMetrics::labelsAreEscaped()
{
    QFETCH(QString, text);
    QTEST(QString::fromStdString(labelValue(text.toStdString())), "value");
}

void tst_OpenMetrics::countersAreSumsOfAllDaysWithoutCorrections()
{
    const std::string text = openMetrics(example());
    const QStringList all = lines(text);
    for (const char *line :
         { R"(velq_download_bytes_total{device="hw:02",type="mobile",roaming="0"} 300)",
           R"(velq_upload_bytes_total{device="hw:02",type="mobile",roaming="0"} 30)",
           R"(velq_connected_seconds_total{device="hw:02",type="mobile",roaming="0"} 3.505)",
           R"(velq_download_bytes_total{device="hw:02",type="mobile",roaming="1"} 1)",
           R"(velq_connected_seconds_total{device="hw:02",type="mobile",roaming="1"} 0.003)",
           R"(velq_upload_bytes_total{device="sim:a\\b\"c",type="wifi",roaming="0"} 6)" })
        QVERIFY2(all.count(line) == 1, line);
    QVERIFY(text.find("operator") == std::string::npos);
}

void tst_OpenMetrics::periodsAreGaugesWithCorrections()
{
    const QStringList all = lines(openMetrics(example()));
    for (const char *line : { R"(velq_period_download_bytes{period="daily",type="mobile"} 77)",
                              R"(velq_period_upload_bytes{period="daily",type="mobile"} 88)",
                              R"(velq_period_connected_seconds{period="daily",type="mobile"} 99)" })
        QVERIFY2(all.count(line) == 1, line);
}

void tst_OpenMetrics::resetsAndStates()
{
    Metrics metrics = example();
    QStringList all = lines(openMetrics(metrics));
    QCOMPARE(all.filter(QRegularExpression("^velq_last_reset_timestamp_seconds")),
             QStringList { R"(velq_last_reset_timestamp_seconds{type="mobile"} 1709301909)" });
    QVERIFY(all.contains("velq_connected 1"));
    QVERIFY(all.contains("velq_store_problem 0"));
    metrics.connected = false;
    metrics.storeHasProblem = true;
    all = lines(openMetrics(metrics));
    QVERIFY(all.contains("velq_connected 0"));
    QVERIFY(all.contains("velq_store_problem 1"));
}

void tst_OpenMetrics::theFormatIsKept_data()
{
    QTest::addColumn<bool>("empty");
    QTest::newRow("with everything") << false;
    QTest::newRow("with nothing") << true;
}

//! A family's lines stand together, the type first; its name ends with its unit; samples fit it.
void tst_OpenMetrics::theFormatIsKept()
{
    QFETCH(bool, empty);
    const std::string text = openMetrics(empty ? Metrics() : example());
    QStringList all = lines(text);
    QCOMPARE(all.takeLast(), QString()); // the last line ends, too
    QCOMPARE(all.takeLast(), QString("# EOF"));
    const QRegularExpression head("^# (TYPE|UNIT|HELP) ([a-z_]+) (.+)$");
    const QRegularExpression sample(
        R"(^([a-z_]+)(\{[a-z]+="([^"\\]|\\.)*"(,[a-z]+="([^"\\]|\\.)*")*\})? (-?[0-9]+(\.[0-9]+)?)$)");
    QSet<QString> families;
    QSet<QString> samples;
    QString family;
    bool counter = false;
    for (const QString &line : all) {
        if (const auto match = head.match(line); match.hasMatch()) {
            if (match.captured(1) == "TYPE") {
                family = match.captured(2);
                counter = match.captured(3) == "counter";
                QVERIFY2(!families.contains(family), qPrintable(line));
                families.insert(family);
            }
            QCOMPARE(match.captured(2), family);
            if (match.captured(1) == "UNIT")
                QVERIFY2(family.endsWith('_' + match.captured(3)), qPrintable(line));
            continue;
        }
        const auto match = sample.match(line);
        QVERIFY2(match.hasMatch(), qPrintable(line));
        QCOMPARE(match.captured(1), counter ? family + "_total" : family);
        const QString series = match.captured(1) + match.captured(2);
        QVERIFY2(!samples.contains(series), qPrintable(line));
        samples.insert(series);
        QVERIFY2(!counter || !match.captured(6).startsWith('-'), qPrintable(line));
    }
    QCOMPARE(families.size(), 9);
}

QTEST_GUILESS_MAIN(tst_OpenMetrics)
#include "tst_openmetrics.moc"
