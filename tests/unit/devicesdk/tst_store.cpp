#include "store/Store.h"

#include <QtTest>

#include "StoreBooks.h"

using velq::Amounts;
using velq::Changes;
using velq::Span;
using velq::Store;
using velq::StoreState;

class tst_Store : public QObject
{
    Q_OBJECT
private slots:
    void amountsAreStillThereAfterReopening();
    void aSpanTakesItsStartAndNotItsEnd();
    void theTypesAreApart();
    void daysAreTheSumsOfTheirHours();
    void amountsCanBeTakenBack();
    void everythingElseComesBackAsItWas();
    void hoursAreThinnedOutToDays();
    void marksOfDevicesThatStayAwayGoWithTheirHours();
    void aCopyIsMadeWhileInUse();
    void aResetClearsOneTypeAndKeepsItsTime();
    void aNewStoreWasLastResetWhenItWasBegun();
    void amountsOf63BitsAreStored();
    void memoryStoresLeaveNoFile();
    void missingFoldersAreMade();
    void aNewerSchemaIsLeftAlone();
    void damagedFilesAreSetAside_data();
    void damagedFilesAreSetAside();
    void sideFilesAreSetAsideToo();
    void aDamagedDatabaseKeepsItsLog();
    void aNameThatIsTakenIsNotOverwritten();
    void anEmptyFileIsANewStore();
    void aFileThatIsRemovedIsBegunAnew();
    void aSecondWriterOnlyReads();
    void onlyMissingTablesCountAsDamage();
    void theSecondWriterTakesOver();
    void damageDuringTheRunIsSetAside();
};

void tst_Store::amountsAreStillThereAfterReopening()
{
    const StoreFolder folder;
    {
        Store store(folder.options());
        store.open();
        QCOMPARE(store.state(), StoreState::Writable);
        QVERIFY(store.problem().empty());
        QVERIFY(store.commit(amounts(kNow, 100, 7)));
        QVERIFY(store.commit(amounts(kNow + 60, 20, 1))); // the same bucket
        QVERIFY(store.commit({}));
    }
    Store store(folder.options());
    store.open();
    const Amounts totals = sumOf(store);
    QCOMPARE(totals.download, std::int64_t(120));
    QCOMPARE(totals.upload, std::int64_t(8));
    QCOMPARE(totals.timeMs, std::int64_t(2000));
    QCOMPARE(runSql(folder.file(), "SELECT count(*) FROM hour"), 1LL);
    QCOMPARE(runSql(folder.file(), "PRAGMA user_version"), 2LL);
}

void tst_Store::aSpanTakesItsStartAndNotItsEnd()
{
    const StoreFolder folder;
    Store store(folder.options());
    QVERIFY(store.commit(amounts(7200, 1)));
    QVERIFY(store.commit(amounts(10800, 10)));
    QVERIFY(store.commit(amounts(14400, 100)));
    QCOMPARE(sumOf(store, 0, { 7200, 14400 }).download, std::int64_t(11));
    QCOMPARE(sumOf(store, 0, { 7201, 14400 }).download, std::int64_t(10));
    QCOMPARE(sumOf(store, 0, { 7200, 14401 }).download, std::int64_t(111));
    QCOMPARE(sumOf(store, 0, { 14400, 7200 }).download, std::int64_t(0));
}

void tst_Store::theTypesAreApart()
{
    const StoreFolder folder;
    Store store(folder.options());
    QVERIFY(store.commit(amounts(kNow, 1, 0, 0)));
    QVERIFY(store.commit(amounts(kNow, 10, 0, 1)));
    QCOMPARE(sumOf(store, 0).download, std::int64_t(1));
    QCOMPARE(sumOf(store, 1).download, std::int64_t(10));
}

void tst_Store::daysAreTheSumsOfTheirHours()
{
    const StoreFolder folder;
    Store store(folder.options());
    QVERIFY(store.commit(amounts(kNow, 1, 5)));
    QVERIFY(store.commit(amounts(kNow + 3600, 2)));
    QVERIFY(store.commit(amounts(kNow - 86400, 1000)));
    QVERIFY(store.commit(amounts(kNow, 5000, 0, 3)));
    QCOMPARE(runSql(folder.file(), "SELECT count(*) FROM day"), 3LL);
    velq::DaySums sums;
    QVERIFY(store.read([&](const velq::BookReader &reader) { return reader.daySums(sums); }));
    const velq::Day today = utcDay(kNow);
    QCOMPARE(sums.sum(0, { today, today + 1 }).download, std::int64_t(3));
    QCOMPARE(sums.sum(0, { today - 1, today + 1 }).download, std::int64_t(1003));
    QCOMPARE(sums.sum(1, { today, today + 1 }).download, std::int64_t(5000)); // abroad
    QCOMPARE(sums.sumOfUse(1, { today, today + 1 }).download, std::int64_t(0));
}

void tst_Store::amountsCanBeTakenBack()
{
    const StoreFolder folder;
    Store store(folder.options());
    QVERIFY(store.commit(amounts(kNow, 100)));
    QVERIFY(store.commit(amounts(kNow, -40)));
    QCOMPARE(sumOf(store).download, std::int64_t(60));
    QCOMPARE(runSql(folder.file(), "SELECT download FROM day"), 60LL);
}

void tst_Store::everythingElseComesBackAsItWas()
{
    const StoreFolder folder;
    Changes changes;
    const velq::LinkMark mark { { "b", 3, UINT64_MAX }, "wwan0", "hw:1", 2, UINT64_MAX, 7 };
    changes.marks[mark.id] = mark;
    changes.devices["hw:1"] = { "hw:1", "a \"label\"", "wwan0", 1 };
    changes.seen["hw:1"] = 42;
    changes.settings["device"] = "hw:1";
    velq::Reason reason { velq::ReasonKind::Recovered, 9, "hw:1", 1, 5, 6, 7, "text" };
    changes.reasons = { reason, reason };
    const velq::RecentKey recent { "b", -5, { 3600, 0, "hw:1", 1 } };
    changes.recent[recent] = { 77, 7200, 1, { 1, 2, 3, 4 } };
    {
        Store store(folder.options());
        QVERIFY(store.commit(changes));
    }
    Store store(folder.options());
    store.open();
    std::vector<velq::LinkMark> marks;
    std::vector<velq::StoredDevice> devices;
    std::vector<velq::Reason> reasons;
    std::map<std::string, std::string> settings;
    velq::RecentRows rows;
    QVERIFY(store.read([&](const velq::BookReader &reader) {
        return reader.marks(marks) + reader.devices(devices) + reader.reasons(1, reasons)
            + reader.settings(settings) + reader.recent(rows);
    }));
    QVERIFY(marks == std::vector<velq::LinkMark> { mark });
    QCOMPARE(int(devices.size()), 1);
    QVERIFY(devices[0].note == changes.devices["hw:1"]);
    QCOMPARE(devices[0].seen, std::int64_t(42));
    QCOMPARE(settings["device"], std::string("hw:1"));
    QCOMPARE(int(reasons.size()), 1);
    QCOMPARE(reasons[0].text, std::string("text"));
    QCOMPARE(reasons[0].seconds, std::int64_t(7));
    QCOMPARE(int(rows.size()), 1);
    QVERIFY(!(rows.begin()->first < recent) && !(recent < rows.begin()->first));
    QVERIFY((rows.begin()->second.amounts == Amounts { 1, 2, 3, 4 }));
    Changes gone;
    gone.settled.insert(mark.id);
    gone.forgotten.insert(recent);
    QVERIFY(store.commit(gone));
    QCOMPARE(runSql(folder.file(), "SELECT count(*) FROM mark"), 0LL);
    QCOMPARE(runSql(folder.file(), "SELECT count(*) FROM recent"), 0LL);
}

void tst_Store::hoursAreThinnedOutToDays()
{
    const StoreFolder folder;
    Store store(folder.options());
    QVERIFY(store.commit(amounts(kNow - 7200, 1)));
    Changes changes = amounts(kNow, 2);
    changes.keepHoursFrom = velq::hourStart(kNow);
    QVERIFY(store.commit(changes));
    QCOMPARE(sumOf(store).download, std::int64_t(2));
    QCOMPARE(runSql(folder.file(), "SELECT sum(download) FROM day"), 3LL);
}

void tst_Store::marksOfDevicesThatStayAwayGoWithTheirHours()
{
    const StoreFolder folder;
    Store store(folder.options());
    Changes changes;
    changes.seen = { { "old", kNow - 10 }, { "new", kNow } };
    int link = 0;
    for (const char *device : { "old", "new", "unused" }) {
        const velq::LinkMark mark { { "boot", ++link, 5 }, "va", device, 0, 7, 8 };
        changes.marks[mark.id] = mark;
    }
    QVERIFY(store.commit(changes));
    Changes thinning;
    thinning.keepHoursFrom = kNow;
    QVERIFY(store.commit(thinning));
    QCOMPARE(runSql(folder.file(), "SELECT count(*) FROM mark"), 2LL);
    QCOMPARE(runSql(folder.file(), "SELECT count(*) FROM mark WHERE device = 'old'"), 0LL);
}

void tst_Store::aCopyIsMadeWhileInUse()
{
    const StoreFolder folder;
    Store store(folder.options());
    QVERIFY(store.commit(amounts(kNow, 5)));
    const std::string copy = folder.path() + "/copy.db";
    QCOMPARE(store.backUp(copy), std::string());
    QCOMPARE(runSql(folder.file("copy.db"), "SELECT download FROM hour"), 5LL);
    QVERIFY(contains(store.backUp(copy), "cannot be created")); // never overwritten
    QCOMPARE(runSql(folder.file("copy.db"), "SELECT download FROM hour"), 5LL);
    QVERIFY(store.commit(amounts(kNow, 1)));
}

void tst_Store::aResetClearsOneTypeAndKeepsItsTime()
{
    const StoreFolder folder;
    {
        Store store(folder.options());
        QVERIFY(store.commit(amounts(kNow, 1, 0, 0)));
        QVERIFY(store.commit(amounts(kNow, 10, 0, 1)));
        Changes changes = amounts(kNow, 3); // booked after the reset, so it stays
        changes.resets[0] = 777;
        QVERIFY(store.commit(changes));
    }
    Store store(folder.options());
    store.open();
    QCOMPARE(lastReset(store, 0), std::int64_t(777));
    QVERIFY(lastReset(store, 1) != 777);
    QCOMPARE(sumOf(store, 0).download, std::int64_t(3));
    QCOMPARE(sumOf(store, 1).download, std::int64_t(10));
}

void tst_Store::aNewStoreWasLastResetWhenItWasBegun()
{
    const StoreFolder folder;
    const auto before = std::int64_t(std::time(nullptr));
    Store store(folder.options());
    store.open();
    const std::int64_t at = lastReset(store, 0);
    QVERIFY(at >= before);
    QVERIFY(at <= std::int64_t(std::time(nullptr)));
}

void tst_Store::amountsOf63BitsAreStored()
{
    const StoreFolder folder;
    Store store(folder.options());
    QVERIFY(store.commit(amounts(kNow, INT64_MAX)));
    QCOMPARE(sumOf(store).download, std::int64_t(INT64_MAX));
}

void tst_Store::memoryStoresLeaveNoFile()
{
    const StoreFolder folder;
    velq::StoreOptions options = folder.options();
    options.inMemory = true;
    Store store(options);
    store.open();
    QVERIFY(store.commit(amounts(kNow, 5)));
    QCOMPARE(sumOf(store).download, std::int64_t(5));
    QVERIFY(folder.entries().isEmpty());
}

void tst_Store::missingFoldersAreMade()
{
    const StoreFolder folder;
    velq::StoreOptions options = folder.options();
    options.directory += "/a/b c/d";
    Store store(options);
    store.open();
    QCOMPARE(store.state(), StoreState::Writable);
    QVERIFY(QFile::exists(folder.file("a/b c/d/velq.db")));
    const auto others = QFile::ReadGroup | QFile::ReadOther | QFile::ExeOther;
    QVERIFY(!(QFile::permissions(folder.file("a/b c/d")) & others));
}

void tst_Store::aNewerSchemaIsLeftAlone()
{
    const StoreFolder folder;
    makeStore(folder, 100);
    QVERIFY(runSql(folder.file(), "PRAGMA journal_mode = DELETE; PRAGMA user_version = 7") != -2);
    const QByteArray before = folder.content("velq.db");
    Store store(folder.options());
    store.open();
    QVERIFY(store.state() != StoreState::Writable);
    QVERIFY2(contains(store.problem(), "newer version (schema 7"), store.problem().c_str());
    QVERIFY(!store.commit(amounts(kNow, 5)));
    QCOMPARE(sumOf(store).download, std::int64_t(0));
    store.close();
    QCOMPARE(folder.content("velq.db"), before);
    QCOMPARE(folder.entries(), QStringList({ "velq.db", "velq.lock" }));
}

void tst_Store::damagedFilesAreSetAside_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("text") << QByteArray("this was never a database\n").repeated(100);
    QTest::newRow("zeros") << QByteArray(8192, '\0');
    const StoreFolder folder;
    makeStore(folder, 100);
    const QByteArray good = folder.content("velq.db");
    QByteArray pages = good;
    pages.replace(4096, good.size() - 4096, QByteArray(good.size() - 4096, '\x55'));
    QTest::newRow("overwritten pages") << pages;
    QTest::newRow("cut in the middle") << good.left(good.size() / 2);
    QByteArray noTables = good;
    QTest::newRow("cut after the header") << good.left(100);
    runSql(folder.file(), "DROP TABLE hour");
    QTest::newRow("without a table") << folder.content("velq.db");
    const StoreFolder other;
    runSql(other.file(), "CREATE TABLE notes (text)");
    QTest::newRow("something else's database") << other.content("velq.db");
    runSql(other.file(), "DROP TABLE notes; PRAGMA user_version = 1");
    QTest::newRow("a number without tables") << other.content("velq.db");
}

void tst_Store::damagedFilesAreSetAside()
{
    QFETCH(QByteArray, content);
    const StoreFolder folder;
    folder.write("velq.db", content);
    Store store(folder.options());
    store.open();
    QCOMPARE(store.state(), StoreState::Writable);
    QVERIFY2(contains(store.problem(), "damaged and has been set aside"), store.problem().c_str());
    QCOMPARE(folder.content("velq.db.damaged-20310305-120000"), content);
    QVERIFY(store.commit(amounts(kNow, 5)));
    QCOMPARE(sumOf(store).download, std::int64_t(5));
    QVERIFY(!store.problem().empty()); // it stays told as long as the process lives
    store.close();
    Store next(folder.options());
    next.open();
    QVERIFY(next.problem().empty());
    QCOMPARE(sumOf(next).download, std::int64_t(5));
}

void tst_Store::sideFilesAreSetAsideToo()
{
    const StoreFolder folder;
    folder.write("velq.db", QByteArray(8192, 'x'));
    folder.write("velq.db-wal", "left over");
    folder.write("velq.db-shm", "left over too");
    folder.write("velq.db-journal", "left over as well");
    Store store(folder.options());
    store.open();
    QCOMPARE(store.state(), StoreState::Writable);
    QCOMPARE(folder.content("velq.db.damaged-20310305-120000-wal"), QByteArray("left over"));
    QVERIFY(folder.entries().contains("velq.db.damaged-20310305-120000-shm"));
    QCOMPARE(folder.content("velq.db.damaged-20310305-120000-journal"),
             QByteArray("left over as well"));
}

void tst_Store::aDamagedDatabaseKeepsItsLog()
{
    const StoreFolder source;
    makeStore(source, 100);
    Store open(source.options());
    QVERIFY(open.commit(amounts(kNow, 7))); // it is in the log only
    QByteArray content = source.content("velq.db");
    const QByteArray log = source.content("velq.db-wal");
    QVERIFY(!log.isEmpty());
    content.replace(8192, 4096, QByteArray(4096, '\x55')); // a page that the log does not hold

    const StoreFolder folder;
    folder.write("velq.db", content);
    folder.write("velq.db-wal", log);
    Store store(folder.options());
    store.open();
    QCOMPARE(store.state(), StoreState::Writable);
    QVERIFY2(contains(store.problem(), "set aside"), store.problem().c_str());
    QCOMPARE(folder.content("velq.db.damaged-20310305-120000"), content);
    QCOMPARE(folder.content("velq.db.damaged-20310305-120000-wal"), log);
}

void tst_Store::aNameThatIsTakenIsNotOverwritten()
{
    const StoreFolder folder;
    folder.write("velq.db.damaged-20310305-120000", "an earlier one");
    folder.write("velq.db", QByteArray(8192, 'x'));
    Store store(folder.options());
    store.open();
    QCOMPARE(folder.content("velq.db.damaged-20310305-120000"), QByteArray("an earlier one"));
    QCOMPARE(folder.content("velq.db.damaged-20310305-120000-2"), QByteArray(8192, 'x'));
}

void tst_Store::anEmptyFileIsANewStore()
{
    const StoreFolder folder;
    folder.write("velq.db", {});
    Store store(folder.options());
    store.open();
    QCOMPARE(store.state(), StoreState::Writable);
    QVERIFY(store.problem().empty());
}

void tst_Store::aFileThatIsRemovedIsBegunAnew()
{
    const StoreFolder folder;
    Store store(folder.options());
    QVERIFY(store.commit(amounts(kNow, 5)));
    for (const QString &name : folder.entries())
        QVERIFY(QFile::remove(folder.file(name.toLatin1().constData())));
    QVERIFY(store.commit(amounts(kNow, 6)));
    QCOMPARE(sumOf(store).download, std::int64_t(6));
    store.close();
    QCOMPARE(runSql(folder.file(), "SELECT download FROM hour"), 6LL);
}

void tst_Store::onlyMissingTablesCountAsDamage()
{
    velq::Database database;
    QCOMPARE(database.open(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE), SQLITE_OK);
    {
        velq::BookWriter writer;
        QCOMPARE(writer.prepare(database), SQLITE_ERROR);
        QCOMPARE(migrate(database, velq::schemaMigrations()), SQLITE_OK);
        QCOMPARE(writer.prepare(database), SQLITE_OK);
        writer.finalize();
        const auto deny = [](void *, int, const char *, const char *, const char *, const char *) {
            return SQLITE_DENY;
        };
        (void)sqlite3_set_authorizer(database.handle(), deny, nullptr);
        QCOMPARE(writer.prepare(database), SQLITE_AUTH); // any failure that is none of the tables'
        writer.finalize();
    }
}

void tst_Store::aSecondWriterOnlyReads()
{
    const StoreFolder folder;
    Store first(folder.options());
    Store second(folder.options());
    first.open();
    QVERIFY(first.commit(amounts(kNow, 5)));
    second.open();
    QCOMPARE(second.state(), StoreState::Shared);
    QVERIFY2(contains(second.problem(), "Another process counts"), second.problem().c_str());
    QCOMPARE(sumOf(second).download, std::int64_t(5));
    QVERIFY(!second.commit(amounts(kNow, 1000)));
    QVERIFY(first.commit(amounts(kNow, 1)));
    QCOMPARE(sumOf(first).download, std::int64_t(6));
    QCOMPARE(sumOf(second).download, std::int64_t(6));
    QVERIFY(first.problem().empty());
}

void tst_Store::theSecondWriterTakesOver()
{
    const StoreFolder folder;
    Store first(folder.options());
    Store second(folder.options());
    first.open();
    second.open(); // there may be no database to read yet
    QCOMPARE(second.state(), StoreState::Shared);
    QVERIFY(first.commit(amounts(kNow, 5)));
    first.close();
    QVERIFY(second.commit(amounts(kNow, 2)));
    QCOMPARE(second.state(), StoreState::Writable);
    QVERIFY(second.problem().empty());
    QCOMPARE(sumOf(second).download, std::int64_t(7));
}

void tst_Store::damageDuringTheRunIsSetAside()
{
    const StoreFolder folder;
    makeStore(folder, 5);
    // More than SQLite keeps in memory, so that it has to look at the file again.
    QVERIFY(
        runSql(folder.file(),
               "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 300000)"
               " INSERT INTO hour SELECT i * 3600, i / 24, 1, 0, 1, 1, 1, 1 FROM n")
        >= -1);
    Store store(folder.options());
    store.open();
    QCOMPARE(store.state(), StoreState::Writable);
    QFile file(folder.file());
    QVERIFY(file.open(QIODevice::ReadWrite) && file.seek(4096));
    const QByteArray rubbish(int(file.size() - 4096), '\x5a');
    QCOMPARE(file.write(rubbish), qint64(rubbish.size()));
    file.close();
    const QByteArray damaged = folder.content("velq.db");
    velq::HourAmounts hours;
    QVERIFY(
        !store.read([&](const velq::BookReader &reader) { return reader.hours(kAlways, hours); }));
    QVERIFY(store.commit(amounts(kNow, 2)));
    QVERIFY2(contains(store.problem(), "set aside"), store.problem().c_str());
    QCOMPARE(sumOf(store).download, std::int64_t(2));
    QCOMPARE(folder.content("velq.db.damaged-20310305-120000"), damaged);
}

QTEST_GUILESS_MAIN(tst_Store)
#include "tst_store.moc"
