#include "store/Store.h"

#include <QtTest>

#include "StoreFolder.h"

using velq::Amounts;
using velq::Changes;
using velq::Span;
using velq::Store;

//! Contents that no store has written, and the limits of those that it has.
class tst_StoreContents : public QObject
{
    Q_OBJECT
private slots:
    void sumsBeyond63BitsStayAtTheLimit();
    void textsMayHoldANul();
    void rowsThatNobodyWroteAreLeftAlone();
    void daysBeyondAllDaysCountForNone();
};

namespace {

constexpr Span kAlways { 0, INT64_MAX };

Amounts sumOf(Store &store)
{
    velq::HourAmounts hours;
    if (store.isReadable() && !store.read([&](const velq::BookReader &reader) {
            return reader.hours(kAlways, hours);
        }))
        qFatal("the sum cannot be read");
    Amounts sum;
    for (const auto &[key, amounts] : hours) {
        if (key.use == 0)
            sum.add(amounts);
    }
    return sum;
}

void makeStore(const StoreFolder &folder, qint64 download)
{
    Store store(folder.options());
    if (!store.commit(amounts(kNow, download)))
        qFatal("the store cannot be made");
}

} // namespace

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

QTEST_GUILESS_MAIN(tst_StoreContents)
#include "tst_storecontents.moc"
