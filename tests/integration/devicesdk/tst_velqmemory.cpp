#include "store/Ledger.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <ctime>

//! How much memory a program holds that uses only the SDK; see velq_user.cpp.
class tst_VelqMemory : public QObject
{
    Q_OBJECT
private slots:
    void residentMemoryIsBelowEightMiB_data();
    void residentMemoryIsBelowEightMiB();
};

namespace {

//! Two devices in every hour until now.
bool fill(const QString &folder, int years)
{
    velq::LedgerOptions options;
    options.store.directory = folder.toStdString();
    options.dayOf = [](std::int64_t second) { return velq::Day(second / 86400); };
    velq::Ledger ledger(options);
    velq::HourAmounts hours;
    const std::int64_t last = velq::hourStart(std::time(nullptr));
    for (std::int64_t hour = last - years * 365 * 86400LL; hour < last; hour += 3600) {
        for (const char *device : { "hw:1", "sim:1" })
            hours[{ hour, velq::Day(hour / 86400), device, 0 }] = { 1000, 100, 3600000, 3600000 };
    }
    ledger.seed(hours);
    return ledger.problem().empty();
}

} // namespace

void tst_VelqMemory::residentMemoryIsBelowEightMiB_data()
{
    QTest::addColumn<int>("years");
    QTest::newRow("a new store") << 0;
    QTest::newRow("a store of ten years") << 10;
}

void tst_VelqMemory::residentMemoryIsBelowEightMiB()
{
    constexpr int kTimeoutMs = 60000;
    constexpr int kMostKiB = 8 * 1024;
    QFETCH(int, years);
    const QTemporaryDir folder;
    QVERIFY(fill(folder.path(), years));
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("VELQ_DATA_DIR", folder.path());
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(VELQ_USER), { "resident" });
    QVERIFY(process.waitForFinished(kTimeoutMs));
    QCOMPARE(process.exitCode(), 0);
    const QByteArray output = process.readAll();
    QVERIFY2(output.startsWith("resident "), output.constData());
    const int resident = output.mid(9).trimmed().toInt();
    qInfo("%d KiB resident", resident);
    QVERIFY(resident > 0);
    QVERIFY2(resident < kMostKiB, output.constData());
}

QTEST_GUILESS_MAIN(tst_VelqMemory)
#include "tst_velqmemory.moc"
