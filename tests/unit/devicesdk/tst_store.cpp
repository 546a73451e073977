#include "store/Store.h"

#include <QtTest>

#include "StoreFolder.h"

using velq::Changes;
using velq::Span;
using velq::Store;
using velq::StoreState;
using velq::Totals;

class tst_Store : public QObject
{
    Q_OBJECT
private slots:
    void amountsAreStillThereAfterReopening();
    void aSpanTakesItsStartAndNotItsEnd();
    void theTypesAreApart();
    void cachedSumsFollowCommits();
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
    void theSecondWriterTakesOver();
    void damageDuringTheRunIsSetAside();
};

namespace {

constexpr Span kAlways { 0, INT64_MAX };

Totals sumOf(Store &store, int type = 0, const Span &span = kAlways)
{
    Totals totals { 12345, 12345, 12345 };
    if (!store.sum(type, span, totals))
        qFatal("the sum cannot be read");
    return totals;
}

void makeStore(const StoreFolder &folder, quint64 download)
{
    Store store(folder.options());
    if (!store.commit(amounts(kNow, download)))
        qFatal("the store cannot be made");
}

} // namespace

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
    const Totals totals = sumOf(store);
    QCOMPARE(totals.download, std::uint64_t(120));
    QCOMPARE(totals.upload, std::uint64_t(8));
    QCOMPARE(totals.timeMs, std::uint64_t(2000));
    QCOMPARE(runSql(folder.file(), "SELECT count(*) FROM bucket"), 1LL);
    QCOMPARE(runSql(folder.file(), "PRAGMA user_version"), 1LL);
}

void tst_Store::aSpanTakesItsStartAndNotItsEnd()
{
    StoreFolder folder;
    Store store(folder.options());
    QVERIFY(store.commit(amounts(1800, 1)));
    QVERIFY(store.commit(amounts(2700, 10)));
    QVERIFY(store.commit(amounts(3600, 100)));
    QCOMPARE(sumOf(store, 0, { 1800, 3600 }).download, std::uint64_t(11));
    QCOMPARE(sumOf(store, 0, { 1801, 3600 }).download, std::uint64_t(10));
    QCOMPARE(sumOf(store, 0, { 1800, 3601 }).download, std::uint64_t(111));
    QCOMPARE(sumOf(store, 0, { 3600, 1800 }).download, std::uint64_t(0));
}

void tst_Store::theTypesAreApart()
{
    const StoreFolder folder;
    Store store(folder.options());
    QVERIFY(store.commit(amounts(kNow, 1, 0, 0)));
    QVERIFY(store.commit(amounts(kNow, 10, 0, 1)));
    QCOMPARE(sumOf(store, 0).download, std::uint64_t(1));
    QCOMPARE(sumOf(store, 1).download, std::uint64_t(10));
}

void tst_Store::cachedSumsFollowCommits()
{
    const StoreFolder folder;
    Store store(folder.options());
    QVERIFY(store.commit(amounts(kNow, 1)));
    const Span today { kNow - 3600, kNow + 3600 };
    QCOMPARE(sumOf(store, 0, today).download, std::uint64_t(1));
    QVERIFY(store.commit(amounts(kNow, 2)));
    QVERIFY(store.commit(amounts(kNow - 86400, 1000)));
    QVERIFY(store.commit(amounts(kNow, 5000, 0, 1)));
    QCOMPARE(sumOf(store, 0, today).download, std::uint64_t(3));
    for (int i = 0; i < 100; ++i) // more spans than are kept
        QCOMPARE(sumOf(store, 0, { kNow - 3600 - i, kNow + 3600 }).download, std::uint64_t(3));
    QCOMPARE(sumOf(store, 0, today).download, std::uint64_t(3));
    Changes reset;
    reset.resets[0] = kNow;
    QVERIFY(store.commit(reset));
    QCOMPARE(sumOf(store, 0, today).download, std::uint64_t(0));
    QCOMPARE(sumOf(store, 1, today).download, std::uint64_t(5000));
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
    std::int64_t at = 0;
    QVERIFY(store.lastReset(0, at));
    QCOMPARE(at, std::int64_t(777));
    QVERIFY(store.lastReset(1, at));
    QVERIFY(at != 777);
    QCOMPARE(sumOf(store, 0).download, std::uint64_t(3));
    QCOMPARE(sumOf(store, 1).download, std::uint64_t(10));
}

void tst_Store::aNewStoreWasLastResetWhenItWasBegun()
{
    const StoreFolder folder;
    const auto before = std::int64_t(std::time(nullptr));
    Store store(folder.options());
    store.open();
    std::int64_t at = 0;
    QVERIFY(store.lastReset(0, at));
    QVERIFY(at >= before);
    QVERIFY(at <= std::int64_t(std::time(nullptr)));
}

void tst_Store::amountsOf63BitsAreStored()
{
    const StoreFolder folder;
    Store store(folder.options());
    QVERIFY(store.commit(amounts(kNow, quint64(INT64_MAX))));
    QCOMPARE(sumOf(store).download, std::uint64_t(INT64_MAX));
}

void tst_Store::memoryStoresLeaveNoFile()
{
    const StoreFolder folder;
    velq::StoreOptions options = folder.options();
    options.inMemory = true;
    Store store(options);
    store.open();
    QVERIFY(store.commit(amounts(kNow, 5)));
    QCOMPARE(sumOf(store).download, std::uint64_t(5));
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
    QCOMPARE(sumOf(store).download, std::uint64_t(0));
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
    runSql(folder.file(), "DROP TABLE bucket");
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
    QCOMPARE(sumOf(store).download, std::uint64_t(5));
    QVERIFY(!store.problem().empty()); // it stays told as long as the process lives
    store.close();
    Store next(folder.options());
    next.open();
    QVERIFY(next.problem().empty());
    QCOMPARE(sumOf(next).download, std::uint64_t(5));
}

void tst_Store::sideFilesAreSetAsideToo()
{
    const StoreFolder folder;
    folder.write("velq.db", QByteArray(8192, 'x'));
    folder.write("velq.db-wal", "left over");
    folder.write("velq.db-shm", "left over too");
    Store store(folder.options());
    store.open();
    QCOMPARE(store.state(), StoreState::Writable);
    QCOMPARE(folder.content("velq.db.damaged-20310305-120000-wal"), QByteArray("left over"));
    QVERIFY(folder.entries().contains("velq.db.damaged-20310305-120000-shm"));
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
    QCOMPARE(sumOf(store).download, std::uint64_t(6));
    store.close();
    QCOMPARE(runSql(folder.file(), "SELECT download FROM bucket"), 6LL);
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
    QCOMPARE(sumOf(second).download, std::uint64_t(5));
    QVERIFY(!second.commit(amounts(kNow, 1000)));
    QVERIFY(first.commit(amounts(kNow, 1)));
    QCOMPARE(sumOf(first).download, std::uint64_t(6));
    QCOMPARE(sumOf(second).download, std::uint64_t(6));
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
    QCOMPARE(sumOf(second).download, std::uint64_t(7));
}

void tst_Store::damageDuringTheRunIsSetAside()
{
    const StoreFolder folder;
    makeStore(folder, 5);
    // More than SQLite keeps in memory, so that it has to look at the file again.
    QVERIFY(
        runSql(folder.file(),
               "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 300000)"
               " INSERT INTO bucket SELECT 0, i * 900, 1, 1, 1 FROM n")
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
    Totals totals { 1, 2, 3 };
    QVERIFY(!store.sum(0, kAlways, totals));
    QCOMPARE(totals.upload, std::uint64_t(2)); // untouched
    QVERIFY(store.commit(amounts(kNow, 2)));
    QVERIFY2(contains(store.problem(), "set aside"), store.problem().c_str());
    QCOMPARE(sumOf(store).download, std::uint64_t(2));
    QCOMPARE(folder.content("velq.db.damaged-20310305-120000"), damaged);
}

QTEST_GUILESS_MAIN(tst_Store)
#include "tst_store.moc"
