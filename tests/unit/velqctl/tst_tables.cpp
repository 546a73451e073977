#include "Status.h"
#include "Table.h"
#include "Views.h"
#include "Words.h"

#include "Rows.h"

#include <QtTest>

using namespace velqctl;

//! What a person reads.
class tst_Tables : public QObject
{
    Q_OBJECT
private slots:
    void columnsAreAsWideAsTheirCells();
    void widthsAreCharacters();
    void controlCharactersAreNotPrinted_data();
    void controlCharactersAreNotPrinted();
    void words();
    void aReport();
    void aHistory();
    void hoursAreLocal();
    void devices();
    void reasons();
    void everyReasonHasASentence();
    void aStatus();
    void aStatusWithoutAConnection();
};

void tst_Tables::columnsAreAsWideAsTheirCells()
{
    QCOMPARE(table({ Align::Left, Align::Right }, { { "a", "1" }, { "long", "1000", "end" } }),
             std::string("a        1\nlong  1000  end\n"));
    QCOMPARE(table({}, {}), std::string());
}

void tst_Tables::widthsAreCharacters()
{
    QCOMPARE(table({}, { { "\xc3\xbc", "x" }, { "ab", "y" } }),
             std::string("\xc3\xbc   x\nab  y\n"));
}

void tst_Tables::controlCharactersAreNotPrinted_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("printed");
    QTest::newRow("plain") << QByteArray("wwan0") << QByteArray("wwan0");
    QTest::newRow("escape") << QByteArray("a\x1b[2J") << QByteArray("a?[2J");
    QTest::newRow("end of line") << QByteArray("a\nb") << QByteArray("a?b");
    QTest::newRow("delete") << QByteArray("a\x7f") << QByteArray("a?");
    QTest::newRow("the second set") << QByteArray("a\xc2\x9b"
                                                  "2J")
                                    << QByteArray("a?2J");
    QTest::newRow("letters stay") << QByteArray("\xc2\xa0\xc3\xbc")
                                  << QByteArray("\xc2\xa0\xc3\xbc");
    QTest::newRow("a cut letter") << QByteArray("a\xc2") << QByteArray("a\xc2");
}

void tst_Tables::controlCharactersAreNotPrinted()
{
    QFETCH(QByteArray, text);
    QTEST(QByteArray::fromStdString(printable(text.toStdString())), "printed");
}

void tst_Tables::words()
{
    for (const int kind : kPeriodKinds)
        QCOMPARE(parsePeriod(periodWord(kind)).value_or(-1), kind);
    for (int type = 0; type < kConnectTypes; ++type)
        QCOMPARE(parseType(typeWord(type)).value_or(-1), type);
    QVERIFY(!parsePeriod("hourly") && !parsePeriod("") && !parseType("unknown_7"));
    QCOMPARE(typeWord(7), std::string("unknown_7"));
}

void tst_Tables::aReport()
{
    QCOMPARE(
        reportText(
            { { 1, 0, 19782, 19783, 1500, 20, 3909 }, { 4, 1, 19783, 19814, 0, 1000000, 0 } }),
        std::string(
            "Period   Type    Download   Upload    Total  Connected  Days\n"
            "daily    mobile   1.50 kB     20 B  1.52 kB    1:05:09  2024-02-29\n"
            "monthly  wifi         0 B  1.00 MB  1.00 MB    0:00:00  2024-03-01 to 2024-03-31\n"));
}

void tst_Tables::aHistory()
{
    QCOMPARE(historyText({ dayRow(19782, "hw:02", 0, true, -1500, 20, 3909999) }),
             std::string("Day         Type           Download  Upload  Connected  Device\n"
                         "2024-02-29  mobile abroad  -1.50 kB    20 B    1:05:09  hw:02\n"));
    QCOMPARE(historyText({}), std::string("Nothing was counted in this span.\n"));
}

void tst_Tables::hoursAreLocal()
{
    VELQ_Usage hour = dayRow(19783, "hw:02", 0, false, 1, 2, 0);
    hour.start = 1709301600;
    const std::string text = historyText({ hour });
    QVERIFY2(text.find("2024-03-01 14:00  mobile") != std::string::npos, text.c_str());
    QVERIFY(text.rfind("Hour", 0) == 0);
}

void tst_Tables::devices()
{
    VELQ_Device modem = deviceRow("sim:1/2", "EM (\x1b[2J)", "wwan0");
    modem.present = modem.up = modem.counted = modem.chosen = modem.roaming = 1;
    VELQ_Device bridge = deviceRow("hw:03", "br0", "br0");
    bridge.present = bridge.up = bridge.counted = 1;
    VELQ_Device gone = deviceRow("hw:04", "wlan0", "wlan0");
    gone.connectType = 1;
    gone.lastUse = 1709301909;
    const std::string text = devicesText({ modem, bridge, gone }, "");
    QCOMPARE(text,
             std::string(
                 "Interface  State               Type    Last use             Device     Key\n"
                 "wwan0      up, chosen, abroad  mobile  -                    EM (?[2J)  sim:1/2\n"
                 "br0        up, counted         mobile  -                    br0        hw:03\n"
                 "wlan0      away                wifi    2024-03-01 14:05:09  wlan0      hw:04\n"
                 "Used: automatic (what carries the traffic)\n"));
    QVERIFY(devicesText({}, "hw:04").find("Used: hw:04\n") != std::string::npos);
}

void tst_Tables::reasons()
{
    QCOMPARE(reasonsText({ reasonRow(VELQ_REASON_RECOVERED, 1709301909, "hw:02") }),
             std::string("2024-03-01 14:05:09  mobile  hw:02  1.50 kB down, 2 B up flowed while "
                         "nobody counted and were booked later\n"));
    QCOMPARE(reasonsText({}), std::string("Nothing out of the ordinary.\n"));
}

void tst_Tables::everyReasonHasASentence()
{
    for (int kind = VELQ_REASON_RECOVERED; kind <= VELQ_REASON_SET_ASIDE; ++kind) {
        const std::string text = reasonsText({ reasonRow(kind, 0, "") });
        QVERIFY2(text.find("reason ") == std::string::npos, text.c_str());
        QVERIFY(reasonWord(kind).rfind("unknown", 0) != 0);
    }
    QVERIFY(reasonsText({ reasonRow(99, 0, "") }).find("reason 99") != std::string::npos);
}

void tst_Tables::aStatus()
{
    Status status;
    status.store = { true, "/d/velq.db", "" };
    status.interface = "wwan0";
    status.connected = true;
    status.device = deviceRow("sim:1/2", "EM (Op)", "wwan0");
    status.periods = { { 1, 0, 19782, 19783, 1500, 20, 3909 } };
    QCOMPARE(statusText(status),
             std::string("Connection:     wwan0 (EM (Op)), mobile, connected\n"
                         "Counting:       yes, this process\n"
                         "Used device:    automatic\n"
                         "Daily, mobile:  1.50 kB down, 20 B up\n"
                         "Store:          /d/velq.db\n"));
}

void tst_Tables::aStatusWithoutAConnection()
{
    Status status;
    status.store.counting = false;
    status.used = "hw:02";
    QCOMPARE(statusText(status),
             std::string("Connection:   none\n"
                         "Counting:     yes, another process\n"
                         "Used device:  hw:02\n"
                         "Store:        in memory\n"));
}

QTEST_GUILESS_MAIN(tst_Tables)
#include "tst_tables.moc"
