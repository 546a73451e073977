#include "store/Store.h"

#include <QtTest>

#include "StoreBooks.h"

using velq::Amounts;
using velq::Changes;
using velq::Span;
using velq::Store;
using velq::StoreState;

//! Contents that no store has written, and the limits of those that it has.
class tst_StoreContents : public QObject
{
    Q_OBJECT
private slots:
    void sumsBeyond63BitsStayAtTheLimit();
    void textsMayHoldANul();
    void rowsThatNobodyWroteAreLeftAlone();
    void daysBeyondAllDaysCountForNone();
    void whatRowsReferToIsMadeUpFor();
    void strangeContentsAreSetAside_data();
    void strangeContentsAreSetAside();
};

void tst_StoreContents::sumsBeyond63BitsStayAtTheLimit()
{
    const StoreFolder folder;
    Store store(folder.options());
    QVERIFY(store.commit(amounts(kNow, INT64_MAX - 5, INT64_MIN + 5)));
    QVERIFY(store.commit(amounts(kNow, 100, -100)));
    QCOMPARE(sumOf(store).download, std::int64_t(INT64_MAX));
    QCOMPARE(sumOf(store).upload, std::int64_t(INT64_MIN));
    QVERIFY(store.commit(amounts(kNow, -(INT64_MAX - 70), 0)));
    QCOMPARE(sumOf(store).download, std::int64_t(70)); // not a fraction that has lost its end
    QCOMPARE(runSql(folder.file(), "SELECT download FROM day"), 70LL);
}

void tst_StoreContents::textsMayHoldANul()
{
    const StoreFolder folder;
    const std::string text("a\0b", 3);
    Changes changes;
    changes.settings = { { "a", "1" }, { text, text } };
    Store store(folder.options());
    QVERIFY(store.commit(changes));
    std::map<std::string, std::string> settings;
    QVERIFY(store.read([&](const velq::BookReader &reader) { return reader.settings(settings); }));
    QVERIFY(settings == changes.settings);
}

void tst_StoreContents::rowsThatNobodyWroteAreLeftAlone()
{
    const StoreFolder folder;
    makeStore(folder, 100);
    QVERIFY(runSql(folder.file(),
                   "INSERT INTO mark VALUES ('b', 4294967299, 0, 'wwan0', 'hw:1', 0, 1, 1),"
                   " ('b', 3, 0, 'wwan0', 'hw:1', 0, 1, 1);"
                   "INSERT INTO recent VALUES ('b', 9223372036854775807, 0, 0, 'd', 0, 0, 0, 0,"
                   " 1, 1, 1, 1), ('b', 0, -9223372036854775808, 0, 'd', 0, 0, 0, 0, 1, 1, 1, 1),"
                   " ('b', 0, 0, 4294967296, 'd', 0, 0, 0, 0, 1, 1, 1, 1),"
                   " ('b', 0, 0, 0, 'd', 7, 0, 0, 0, 1, 1, 1, 1),"
                   " ('b', 1, 0, 0, 'd', 0, 9223372036854775807, 0, 0, 1, 1, 1, 1),"
                   " ('b', 2, 0, 0, 'd', 0, 0, -9223372036854775808, 0, 1, 1, 1, 1),"
                   " ('b', 3, 0, 0, 'd', 0, 0, 0, 0, 1, 1, 1, 1)")
            >= -1);
    QCOMPARE(runSql(folder.file(), "SELECT count(*) FROM recent"), 7LL);
    Store store(folder.options());
    store.open();
    QCOMPARE(store.problem(), std::string());
    std::vector<velq::LinkMark> marks;
    velq::RecentRows rows;
    QVERIFY(store.read(
        [&](const velq::BookReader &reader) { return reader.marks(marks) + reader.recent(rows); }));
    QCOMPARE(int(marks.size()), 1);
    QCOMPARE(marks[0].id.index, 3);
    QCOMPARE(int(rows.size()), 1);
    QCOMPARE(rows.begin()->first.offset, std::int64_t(3));
}

void tst_StoreContents::daysBeyondAllDaysCountForNone()
{
    const StoreFolder folder;
    makeStore(folder, 100);
    const qint64 far = (qint64(1) << 32) + utcDay(kNow); // whose lower half is a good day
    const std::string sql
        = "INSERT INTO day VALUES (" + std::to_string(far) + ", 1, 0, 7, 7, 7, 7)";
    runSql(folder.file(), sql.c_str());
    QCOMPARE(runSql(folder.file(), "SELECT count(*) FROM day"), 2LL);
    Store store(folder.options());
    store.open();
    velq::DaySums sums;
    QVERIFY(store.read([&](const velq::BookReader &reader) { return reader.daySums(sums); }));
    QCOMPARE(sums.sum(0, { INT32_MIN, INT32_MAX }).download, std::int64_t(100));
}

void tst_StoreContents::whatRowsReferToIsMadeUpFor()
{
    const StoreFolder folder;
    makeStore(folder, 100);
    runSql(folder.file(), "DELETE FROM device; DELETE FROM reset");
    const auto before = std::int64_t(std::time(nullptr));
    Store store(folder.options());
    store.open();
    QCOMPARE(store.problem(), std::string());
    QCOMPARE(sumOf(store).download, std::int64_t(100)); // it still belongs to a device
    QVERIFY(store.commit(amounts(kNow, 5))); // of a new one, not of that one
    QCOMPARE(runSql(folder.file(), "SELECT count(*) FROM hour"), 2LL);
    QVERIFY(lastReset(store, 0) >= before);
    QVERIFY(lastReset(store, 1) >= before);
}

void tst_StoreContents::strangeContentsAreSetAside_data()
{
    QTest::addColumn<QByteArray>("sql");
    QTest::newRow("a table is missing") << QByteArray("DROP TABLE hour");
    QTest::newRow("an index is missing") << QByteArray("DROP INDEX reason_at");
    QTest::newRow("an index too many") << QByteArray("CREATE UNIQUE INDEX one_use ON day (use)");
    QTest::newRow("a column too many") << QByteArray("ALTER TABLE device ADD COLUMN more");
    QTest::newRow("an older number") << QByteArray("PRAGMA user_version = 1");
    QTest::newRow("a trigger that takes away")
        << QByteArray("CREATE TRIGGER eat AFTER INSERT ON hour BEGIN DELETE FROM hour; END");
    QTest::newRow("a view without end in a table's place")
        << QByteArray("DROP TABLE setting; CREATE VIEW setting AS WITH RECURSIVE n(name, value) AS"
                      " (SELECT 'a', 1 UNION ALL SELECT name, value + 1 FROM n) SELECT * FROM n");
    QTest::newRow("a table without its constraints")
        << QByteArray("DROP TABLE reset; CREATE TABLE reset (type, at, UNIQUE (type))");
    QTest::newRow("a fraction in an amount") << QByteArray("UPDATE day SET download = 0.5");
    QTest::newRow("words in an amount") << QByteArray("UPDATE hour SET upload = '7 and more'");
    QTest::newRow("bytes in a name")
        << QByteArray("INSERT INTO setting VALUES (x'646576696365', 'sim:1')");
    QTest::newRow("quarter hours beyond 63 bits")
        << QByteArray("DROP TABLE device; DROP TABLE hour; DROP TABLE day; DROP TABLE mark;"
                      "DROP TABLE recent; DROP TABLE reason; DROP TABLE setting;"
                      "CREATE TABLE bucket ("
                      " type INTEGER NOT NULL CHECK (type IN (0, 1)),"
                      " start INTEGER NOT NULL,"
                      " download INTEGER NOT NULL CHECK (download >= 0),"
                      " upload INTEGER NOT NULL CHECK (upload >= 0),"
                      " time_ms INTEGER NOT NULL CHECK (time_ms >= 0),"
                      " PRIMARY KEY (type, start)) WITHOUT ROWID;"
                      "INSERT INTO bucket VALUES (0, 0, 9223372036854775807, 0, 0),"
                      " (0, 900, 9223372036854775807, 0, 0); PRAGMA user_version = 1");
}

void tst_StoreContents::strangeContentsAreSetAside()
{
    QFETCH(QByteArray, sql);
    const StoreFolder folder;
    makeStore(folder, 100);
    // Not in the store's own mode, to which it may not be switched before it has been looked at.
    runSql(folder.file(), "PRAGMA journal_mode = DELETE");
    runSql(folder.file(), sql.constData());
    const QByteArray content = folder.content("velq.db");
    Store store(folder.options());
    store.open();
    QCOMPARE(store.state(), StoreState::Writable);
    QVERIFY2(contains(store.problem(), "damaged and has been set aside"), store.problem().c_str());
    QCOMPARE(folder.content("velq.db.damaged-20310305-120000"), content);
    QVERIFY(store.commit(amounts(kNow, 5)));
    QCOMPARE(sumOf(store).download, std::int64_t(5));
    store.close();
    Store next(folder.options());
    next.open();
    QCOMPARE(next.problem(), std::string());
    QCOMPARE(sumOf(next).download, std::int64_t(5));
}

QTEST_GUILESS_MAIN(tst_StoreContents)
#include "tst_storecontents.moc"
