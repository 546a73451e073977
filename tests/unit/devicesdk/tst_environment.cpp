#include "counters/InterfaceName.h"
#include "engine/CustomizeName.h"
#include "engine/Environment.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

using velq::customizeName;
using velq::HostChoices;

class tst_Environment : public QObject
{
    Q_OBJECT
private slots:
    void init();

    void theInterfaceIsChosenInOrder();
    void theDirectoryIsChosenInOrder();
    void aRelativeDirectoryIsComplainedAbout();
    void interfaceNames_data();
    void interfaceNames();
    void wirelessIsWhatTheSystemSays();
    void theCustomisationNameIsChosenInOrder();
    void trimmedNames_data();
    void trimmedNames();
};

void tst_Environment::init()
{
    for (const char *name :
         { "VELQ_INTERFACE", "VELQ_DATA_DIR", "VELQ_CUSTOMIZE_NAME", "XDG_DATA_HOME" })
        qunsetenv(name);
    qputenv("HOME", "/home/someone");
}

void tst_Environment::theInterfaceIsChosenInOrder()
{
    QCOMPARE(velq::chosenInterface({}), std::string());
    qputenv("VELQ_INTERFACE", "wwan0");
    QCOMPARE(velq::chosenInterface({}), std::string("wwan0"));
    QCOMPARE(velq::chosenInterface({ "eth7", {}, false, {} }), std::string("eth7"));
}

void tst_Environment::theDirectoryIsChosenInOrder()
{
    QCOMPARE(velq::dataDirectory({}).path, std::string("/home/someone/.local/share/velq"));
    qputenv("XDG_DATA_HOME", "relative"); // invalid, so it does not count
    QCOMPARE(velq::dataDirectory({}).path, std::string("/home/someone/.local/share/velq"));
    qputenv("XDG_DATA_HOME", "/data");
    QCOMPARE(velq::dataDirectory({}).path, std::string("/data/velq"));
    qputenv("VELQ_DATA_DIR", "/elsewhere");
    QCOMPARE(velq::dataDirectory({}).path, std::string("/elsewhere"));
    QCOMPARE(velq::dataDirectory({ {}, "/chosen", false, {} }).path, std::string("/chosen"));
    qputenv("VELQ_DATA_DIR", "");
    qputenv("XDG_DATA_HOME", "");
    qunsetenv("HOME");
    const velq::DataDirectory fromUserRecord = velq::dataDirectory({});
    QVERIFY(fromUserRecord.path.empty() != fromUserRecord.complaint.empty());
}

void tst_Environment::aRelativeDirectoryIsComplainedAbout()
{
    qputenv("VELQ_DATA_DIR", "some/where");
    const velq::DataDirectory directory = velq::dataDirectory({});
    QVERIFY(directory.path.empty());
    QCOMPARE(directory.complaint, std::string("VELQ_DATA_DIR is not an absolute path."));
}

void tst_Environment::interfaceNames_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<bool>("possible");
    QTest::newRow("usual") << QByteArray("wwan0") << true;
    QTest::newRow("one byte") << QByteArray("a") << true;
    QTest::newRow("15 bytes") << QByteArray(15, 'a') << true;
    QTest::newRow("16 bytes") << QByteArray(16, 'a') << false;
    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("slash") << QByteArray("a/b") << false;
    QTest::newRow("blank") << QByteArray("a b") << false;
    QTest::newRow("tab") << QByteArray("a\tb") << false;
    QTest::newRow("line end") << QByteArray("a\n") << false;
    QTest::newRow("colon") << QByteArray("eth0:1") << false;
    QTest::newRow("dot") << QByteArray(".") << false;
    QTest::newRow("two dots") << QByteArray("..") << false;
    QTest::newRow("dots inside") << QByteArray("eth0.7") << true;
}

void tst_Environment::interfaceNames()
{
    QFETCH(QByteArray, name);
    QTEST(velq::isInterfaceName(name.toStdString()), "possible");
}

void tst_Environment::wirelessIsWhatTheSystemSays()
{
    const QTemporaryDir root;
    const QDir folder(root.path());
    QVERIFY(folder.mkpath("sys/class/net/wlan0/wireless"));
    QVERIFY(folder.mkpath("sys/class/net/wlan1/phy80211"));
    QVERIFY(folder.mkpath("sys/class/net/eth0"));
    QVERIFY(folder.mkpath("sys/class/net/wireless"));
    const std::string path = root.path().toStdString();
    QVERIFY(velq::isWireless(path, "wlan0"));
    QVERIFY(velq::isWireless(path, "wlan1"));
    QVERIFY(!velq::isWireless(path, "eth0"));
    QVERIFY(!velq::isWireless(path, "missing"));
    QVERIFY(!velq::isWireless(path, ".")); // would find the folder of that name
}

void tst_Environment::theCustomisationNameIsChosenInOrder()
{
    const QTemporaryDir folder;
    const std::string path = folder.path().toStdString();
    QCOMPARE(customizeName(path), std::string("common"));
    QCOMPARE(customizeName({}), std::string("common"));
    QFile file(folder.filePath("customize-name"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("  orange \nsecond line\n");
    file.close();
    QCOMPARE(customizeName(path), std::string("orange"));
    qputenv("VELQ_CUSTOMIZE_NAME", "blue");
    QCOMPARE(customizeName(path), std::string("blue"));
    qputenv("VELQ_CUSTOMIZE_NAME", "  ");
    QCOMPARE(customizeName(path), std::string("orange"));
    QVERIFY(file.remove());
    QVERIFY(QDir(folder.path()).mkdir("customize-name")); // cannot be read
    QCOMPARE(customizeName(path), std::string("common"));
}

void tst_Environment::trimmedNames_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("empty") << QByteArray() << QByteArray();
    QTest::newRow("blanks") << QByteArray(" \t ") << QByteArray();
    QTest::newRow("only the first line") << QByteArray("\nname") << QByteArray();
    QTest::newRow("lines of another system") << QByteArray("name\r\n") << QByteArray("name");
    QTest::newRow("blanks inside stay") << QByteArray(" a b ") << QByteArray("a b");
    QTest::newRow("up to a NUL") << QByteArray("ab\0cd", 5) << QByteArray("ab");
    QTest::newRow("127 bytes") << QByteArray(127, 'x') << QByteArray(127, 'x');
    QTest::newRow("128 bytes") << QByteArray(128, 'x') << QByteArray(127, 'x');
    const QByteArray accent("\xc3\xa9");
    QTest::newRow("no half character") << QByteArray(126, 'x') + accent << QByteArray(126, 'x');
    QTest::newRow("a whole one") << QByteArray(125, 'x') + accent << QByteArray(125, 'x') + accent;
    QTest::newRow("only rubbish bytes") << QByteArray(200, '\x80') << QByteArray();
}

void tst_Environment::trimmedNames()
{
    QFETCH(QByteArray, text);
    QTEST(QByteArray::fromStdString(velq::trimmedName(text.toStdString())), "name");
}

QTEST_GUILESS_MAIN(tst_Environment)
#include "tst_environment.moc"
