#include "Doctor.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include <functional>

using namespace velqctl;

Q_DECLARE_METATYPE(std::function<void(DoctorFacts &)>)

class tst_DoctorRules : public QObject
{
    Q_OBJECT
private slots:
    void allIsWell();
    void aFactShowsInItsCheck_data();
    void aFactShowsInItsCheck();
    void nothingIsCountedForAReason();
    void textAndJsonHaveEveryCheck();
    void theBusSocketIsFound_data();
    void theBusSocketIsFound();
};

namespace {

DoctorFacts wellFacts()
{
    DoctorFacts facts;
    facts.store = { true, "/d/velq.db", "" };
    facts.directory = "/d";
    facts.directoryIsThere = facts.directoryWritable = facts.fileIsThere = facts.fileWritable
        = true;
    facts.freeBytes = 1000000000;
    facts.interface = "wwan0";
    facts.connected = facts.counters = true;
    facts.zone = "Europe/Berlin";
    facts.zoneIsKnown = facts.bootId = facts.busSocket = true;
    facts.busAddress = "unix:path=/run/dbus/system_bus_socket";
    facts.now = 1709301909;
    return facts;
}

const Check *find(const std::vector<Check> &checks, const std::string &name)
{
    for (const Check &check : checks) {
        if (check.name == name)
            return &check;
    }
    return nullptr;
}

} // namespace

void tst_DoctorRules::allIsWell()
{
    const std::vector<Check> checks = diagnose(wellFacts());
    QCOMPARE(int(checks.size()), 12);
    for (const Check &check : checks)
        QVERIFY2(check.level == Level::Ok && !check.text.empty(), check.name.c_str());
    QVERIFY(!hasError(checks));
}

void tst_DoctorRules::aFactShowsInItsCheck_data()
{
    using Change = std::function<void(DoctorFacts &)>;
    QTest::addColumn<Change>("change");
    QTest::addColumn<QString>("check");
    QTest::addColumn<int>("level");
    const auto row = [](const char *name, const char *check, Level level, const Change &change) {
        QTest::newRow(name) << change << check << int(level);
    };
    const Level kError = Level::Error;
    const Level kWarning = Level::Warning;
    row("in memory", "store", kWarning, [](DoctorFacts &f) { f.store.path.clear(); });
    row("no directory", "store", kError, [](DoctorFacts &f) { f.directoryIsThere = false; });
    row("read-only directory", "store", kError,
        [](DoctorFacts &f) { f.directoryWritable = false; });
    row("read-only file", "store", kError, [](DoctorFacts &f) { f.fileWritable = false; });
    row("no file", "store", kError, [](DoctorFacts &f) { f.fileIsThere = false; });
    row("too little space", "space", kWarning, [](DoctorFacts &f) { f.freeBytes = 9999999; });
    row("enough space", "space", Level::Ok, [](DoctorFacts &f) { f.freeBytes = 10000000; });
    row("a problem", "problem", kError, [](DoctorFacts &f) { f.store.problem = "Full."; });
    row("another process", "problem", Level::Ok, [](DoctorFacts &f) {
        f.store.problem = "Another process counts.";
        f.store.counting = false;
    });
    row("damaged before", "damaged", kWarning, [](DoctorFacts &f) { f.setAside = { "/d/x" }; });
    row("nothing counted", "interface", kWarning, [](DoctorFacts &f) { f.interface.clear(); });
    row("not connected", "interface", kWarning, [](DoctorFacts &f) { f.connected = false; });
    row("no counters", "counters", kError, [](DoctorFacts &f) { f.counters = false; });
    row("no counters without a connection", "counters", Level::Ok, [](DoctorFacts &f) {
        f.counters = false;
        f.connected = false;
    });
    row("a device that is away", "device", kWarning, [](DoctorFacts &f) { f.used = "hw:02"; });
    row("a device that is here", "device", Level::Ok, [](DoctorFacts &f) {
        f.used = "hw:02";
        f.usedIsPresent = true;
    });
    row("no zone", "zone", kWarning, [](DoctorFacts &f) { f.zone.clear(); });
    row("unknown zone", "zone", kWarning, [](DoctorFacts &f) { f.zoneIsKnown = false; });
    row("clock not set", "clock", kWarning, [](DoctorFacts &f) { f.now = 1000; });
    row("no boot id", "boot", kWarning, [](DoctorFacts &f) { f.bootId = false; });
    row("no bus", "bus", kWarning, [](DoctorFacts &f) { f.busSocket = false; });
}

void tst_DoctorRules::aFactShowsInItsCheck()
{
    QFETCH(std::function<void(DoctorFacts &)>, change);
    QFETCH(QString, check);
    QFETCH(int, level);
    DoctorFacts facts = wellFacts();
    change(facts);
    const std::vector<Check> checks = diagnose(facts);
    const Check *found = find(checks, check.toStdString());
    QVERIFY(found);
    QCOMPARE(int(found->level), level);
    QCOMPARE(hasError(checks), level == int(Level::Error));
}

void tst_DoctorRules::nothingIsCountedForAReason()
{
    DoctorFacts facts = wellFacts();
    facts.interface.clear();
    const auto says = [&facts](const char *words) {
        const std::vector<Check> checks = diagnose(facts);
        const Check *check = find(checks, "interface");
        return check && check->text.find(words) != std::string::npos;
    };
    QVERIFY(says("no default route"));
    facts.used = "hw:02"; // which is away
    QVERIFY(says("used device is not here") && !says("no default route"));
}

void tst_DoctorRules::textAndJsonHaveEveryCheck()
{
    DoctorFacts facts = wellFacts();
    facts.store.problem = "The disk is full.";
    const std::vector<Check> checks = diagnose(facts);
    const QString text = QString::fromStdString(checksText(checks));
    QCOMPARE(text.count('\n'), int(checks.size()));
    QVERIFY2(text.contains("error  problem    The disk is full.\n"), qPrintable(text));
    const QJsonArray list
        = QJsonDocument::fromJson(QByteArray::fromStdString(checksJson(checks)))["checks"]
              .toArray();
    QCOMPARE(int(list.size()), int(checks.size()));
    QCOMPARE(list.at(3).toObject()["check"].toString(), QString("problem"));
    QCOMPARE(list.at(3).toObject()["level"].toString(), QString("error"));
    QCOMPARE(list.at(3).toObject()["text"].toString(), QString("The disk is full."));
}

void tst_DoctorRules::theBusSocketIsFound_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("path");
    QTest::newRow("a path") << "unix:path=/run/bus"
                            << "/run/bus";
    QTest::newRow("with an identity") << "unix:path=/run/bus,guid=1"
                                      << "/run/bus";
    QTest::newRow("the first of two") << "unix:path=/a;unix:path=/b"
                                      << "/a";
    QTest::newRow("another transport") << "tcp:host=localhost"
                                       << "";
    QTest::newRow("empty") << ""
                           << "";
}

void tst_DoctorRules::theBusSocketIsFound()
{
    QFETCH(QString, address);
    QTEST(QString::fromStdString(socketPath(address.toStdString())), "path");
}

QTEST_GUILESS_MAIN(tst_DoctorRules)
#include "tst_doctorrules.moc"
