#include "ExportCsv.h"

#include "Rows.h"

#include <QtTest>

using namespace velqctl;

class tst_ExportCsv : public QObject
{
    Q_OBJECT
private slots:
    void cells_data();
    void cells();
    void daysAndHours();
    void noRowsIsTheHeader();
};

void tst_ExportCsv::cells_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("cell");
    QTest::newRow("plain") << "hw:02"
                           << "hw:02";
    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("a comma") << "a,b"
                             << "\"a,b\"";
    QTest::newRow("a quote") << "a\"b"
                             << "\"a\"\"b\"";
    QTest::newRow("a quote alone") << "\""
                                   << "\"\"\"\"";
    QTest::newRow("an end of line") << "a\nb"
                                    << "\"a\nb\"";
    QTest::newRow("a carriage return") << "a\rb"
                                       << "\"a\rb\"";
}

void tst_ExportCsv::cells()
{
    QFETCH(QString, text);
    QTEST(QString::fromStdString(csvCell(text.toStdString())), "cell");
}

void tst_ExportCsv::daysAndHours()
{
    VELQ_Usage hour = dayRow(19783, "sim:1,2/3", 1, true, -5, 7, 61001);
    hour.start = 1709301600;
    const std::string text = usageCsv({ dayRow(19782, "hw:02", 0, false, 1, 2, 3), hour });
    QCOMPARE(text,
             std::string("day,hour,device,type,roaming,download_bytes,upload_bytes,connected_ms\r\n"
                         "2024-02-29,,hw:02,mobile,0,1,2,3\r\n"
                         "2024-03-01,2024-03-01T14:00:00Z,\"sim:1,2/3\",wifi,1,-5,7,61001\r\n"));
}

void tst_ExportCsv::noRowsIsTheHeader()
{
    QCOMPARE(
        usageCsv({}),
        std::string("day,hour,device,type,roaming,download_bytes,upload_bytes,connected_ms\r\n"));
}

QTEST_GUILESS_MAIN(tst_ExportCsv)
#include "tst_exportcsv.moc"
