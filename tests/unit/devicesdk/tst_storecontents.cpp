#include "store/Store.h"

#include <QtTest>

#include "StoreFolder.h"

using velq::Amounts;
using velq::Span;
using velq::Store;

//! Contents that no store has written, and the limits of those that it has.
class tst_StoreContents : public QObject
{
    Q_OBJECT
private slots:
    void sumsBeyond63BitsStayAtTheLimit();
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

QTEST_GUILESS_MAIN(tst_StoreContents)
#include "tst_storecontents.moc"
