#include "Json.h"
#include "PeriodFigures.h"
#include "Status.h"

#include "Rows.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

using namespace velqctl;

class tst_VelqctlJson : public QObject
{
    Q_OBJECT
private slots:
    void aListHasItsKeyAndRows();
    void amountsAreExact();
    void rowsKeepTheirKeys_data();
    void rowsKeepTheirKeys();
    void aModemsOwnFiguresAreThereOrNull();
    void hoursHaveTheirBeginning();
    void bytesThatAreNotUtf8AreReplaced();
    void aStatus();
    void aReportsFieldsAreDecoded();
};

namespace {

QJsonObject object(const std::string &text)
{
    return QJsonDocument::fromJson(QByteArray::fromStdString(text)).object();
}

} // namespace

void tst_VelqctlJson::aListHasItsKeyAndRows()
{
    const std::string none = listJson("days", std::vector<VELQ_Usage>());
    QCOMPARE(none, std::string("{\n  \"days\": []\n}\n"));
    const QJsonObject two
        = object(listJson("days",
                          std::vector<VELQ_Usage> { dayRow(1, "a", 0, false, 1, 2, 3),
                                                    dayRow(2, "b", 1, true, 4, 5, 6) }));
    QCOMPARE(two.keys(), QStringList { "days" });
    QCOMPARE(two["days"].toArray().size(), 2);
    const QJsonObject row = two["days"].toArray().at(1).toObject();
    QCOMPARE(row["day"].toString(), QString("1970-01-03"));
    QVERIFY(row["hour"].isNull());
    QCOMPARE(row["device"].toString(), QString("b"));
    QCOMPARE(row["type"].toString(), QString("wifi"));
    QCOMPARE(row["roaming"].toBool(), true);
    QCOMPARE(row["download_bytes"].toInt(), 4);
}

void tst_VelqctlJson::amountsAreExact()
{
    PeriodFigures figures;
    figures.download = ~0ULL;
    const std::string text = toJson(figures).dump();
    QVERIFY2(text.find("18446744073709551615") != std::string::npos, text.c_str());
    const std::string row = toJson(dayRow(1, "a", 0, false, 9007199254740993, -1, 0)).dump();
    QVERIFY2(row.find("9007199254740993") != std::string::npos, row.c_str());
    QVERIFY2(row.find("-1,") != std::string::npos, row.c_str());
}

void tst_VelqctlJson::rowsKeepTheirKeys_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("keys");
    const auto keysOf = [](const Json &json) { return QString::fromStdString(json.dump()); };
    QTest::newRow("period") << keysOf(toJson(PeriodFigures()))
                            << "period type from to download_bytes upload_bytes connected_seconds";
    QTest::newRow("usage")
        << keysOf(toJson(dayRow(1, "a", 0, false, 1, 2, 3)))
        << "day hour device type roaming download_bytes upload_bytes connected_ms";
    QTest::newRow("device")
        << keysOf(toJson(deviceRow("a", "b", "c")))
        << "key label interface type present up counted chosen roaming last_use "
           "modem_download_bytes modem_upload_bytes";
    QTest::newRow("reason") << keysOf(toJson(reasonRow(1, 5, "a")))
                            << "at reason type device download_bytes upload_bytes seconds";
}

void tst_VelqctlJson::rowsKeepTheirKeys()
{
    QFETCH(QString, text);
    QFETCH(QString, keys);
    int at = 0;
    for (const QString &key : keys.split(' ')) {
        const int found = int(text.indexOf('"' + key + "\":", at));
        QVERIFY2(found >= at, qPrintable(key + " in " + text));
        at = found;
    }
    QCOMPARE(object(text.toStdString()).size(), keys.split(' ').size());
}

void tst_VelqctlJson::aModemsOwnFiguresAreThereOrNull()
{
    VELQ_Device device = deviceRow("sim:1/2", "EM", "wwan0");
    device.modemDownload = 5;
    QVERIFY(object(toJson(device).dump())["modem_download_bytes"].isNull());
    device.hasModemFigures = 1;
    QCOMPARE(object(toJson(device).dump())["modem_download_bytes"].toInt(), 5);
    QCOMPARE(object(toJson(device).dump())["modem_upload_bytes"].toInt(-1), 0);
}

void tst_VelqctlJson::hoursHaveTheirBeginning()
{
    VELQ_Usage hour = dayRow(19783, "a", 0, false, 1, 2, 3);
    hour.start = 1709301600;
    QCOMPARE(object(toJson(hour).dump())["hour"].toString(), QString("2024-03-01T14:00:00Z"));
}

void tst_VelqctlJson::bytesThatAreNotUtf8AreReplaced()
{
    const std::string text
        = listJson("devices", std::vector<VELQ_Device> { deviceRow("k", "a\xff\"\n", "i") });
    const QJsonObject device = object(text)["devices"].toArray().at(0).toObject();
    QCOMPARE(device["label"].toString(), QString("a") + QChar(0xfffd) + "\"\n");
}

void tst_VelqctlJson::aStatus()
{
    Status status;
    QJsonObject json = object(statusJson(status));
    QCOMPARE(json.size(), 8);
    for (const char *key : { "interface", "device", "used_device", "store", "problem" })
        QVERIFY2(json.contains(key) && json[key].isNull(), key);
    status.interface = "wwan0";
    status.store.problem = "Full.";
    status.device = deviceRow("sim:1/2", "EM", "wwan0");
    status.periods = { PeriodFigures() };
    json = object(statusJson(status));
    QCOMPARE(json["interface"].toString(), QString("wwan0"));
    QCOMPARE(json["problem"].toString(), QString("Full."));
    QCOMPARE(json["device"].toObject()["key"].toString(), QString("sim:1/2"));
    QCOMPARE(json["periods"].toArray().size(), 1);
    QCOMPARE(json["counting"].toBool(), true);
}

void tst_VelqctlJson::aReportsFieldsAreDecoded()
{
    unsigned char report[VELQ_STATISTICS_REPORT_SIZE] = {};
    report[524] = 0x01;
    report[531] = 0x80;
    report[532] = 0x02;
    report[533] = 0x01;
    report[540] = 0xff; // a speed
    report[556] = 0x03;
    report[568] = 0x95;
    report[571] = 0xf0;
    const ReportFields fields = decodeReport(report);
    QCOMPARE(fields.download, 0x8000000000000001ULL);
    QCOMPARE(fields.upload, 0x102ULL);
    QCOMPARE(fields.seconds, 3LL);
    QCOMPARE(fields.lastReset, 0xf0000095LL);
}

QTEST_GUILESS_MAIN(tst_VelqctlJson)
#include "tst_velqctljson.moc"
