#include <QTemporaryDir>
#include <QtTest>

#include <cstdio>

#include "CutDisk.h"
#include "FaultTraffic.h"
#include "StoreFolder.h"

using velq::Ledger;

//! Power cuts: whatever a moment of writing leaves on the disk opens, with all that was committed.
class tst_FaultPower : public QObject
{
    Q_OBJECT
private slots:
    void everyCutOpensWithWhatWasCommitted_data();
    void everyCutOpensWithWhatWasCommitted();

private:
    std::mt19937 m_random = faultRandom();
};

namespace {

constexpr double kAsWritten = -1;

//! The n-th commit: a byte, in an hour of its own, and the mark that goes with it.
void commitOne(Ledger &ledger, qint64 number)
{
    velq::BookingBatch batch;
    batch.bookings.push_back({ kDevice, 0, { 1, 1000, 1000, 1000 } });
    velq::LinkMark mark;
    mark.id = { "boot", 3, 33 };
    mark.name = "wwan0";
    mark.device = kDevice;
    mark.download = std::uint64_t(number);
    batch.marks.push_back(mark);
    ledger.book(batch, momentOf(kNow + number * 600));
    ledger.commit();
}

//! What a snapshot holds.
struct Found
{
    bool good = false; //!< opened, and nothing was set aside
    qint64 commits = -1;
    qint64 days = -1;
    qint64 mark = -1;
};

Found openSnapshot(const QString &path)
{
    velq::StoreOptions store;
    store.directory = path.toStdString();
    store.wallSeconds = [] { return std::int64_t(kNow); };
    Ledger ledger(ledgerOptions(store));
    velq::HourAmounts hours;
    Found found;
    found.good = ledger.problem().empty() && ledger.hours({ 0, INT64_MAX }, hours)
        && QDir(path).entryList({ "*damaged*" }).isEmpty();
    found.commits = 0;
    for (const auto &[key, amounts] : hours)
        found.commits += amounts.download;
    found.days = ledger.totals(0, { 0, INT32_MAX }).download;
    const auto marks = ledger.marks();
    found.mark = marks.empty() ? 0 : qint64(marks.front().download);
    return found;
}

/*! Commits, and at random writes takes a snapshot and looks into it. */
class Plant
{
public:
    Plant(std::mt19937 &random, double share)
        : m_random(random)
        , m_share(share)
    {
    }

    void work(int commits)
    {
        CutDisk disk;
        m_disk = &disk;
        disk.watch(m_folder.path(), [this] { perhapsCut(); });
        velq::StoreOptions store;
        store.directory = m_folder.path().toStdString();
        store.wallSeconds = [] { return std::int64_t(kNow); };
        Ledger ledger(ledgerOptions(store));
        for (m_done = 0; m_done < commits; ++m_done)
            commitOne(ledger, m_done + 1);
        ledger.close();
        disk.watch(m_folder.path(), {});
    }

    int snapshots = 0;
    int bad = 0; //!< not opened, set aside, or not in agreement with itself
    qint64 largestLoss = 0; //!< in commits
    qint64 invented = 0;
    int changes = 0;

private:
    void perhapsCut()
    {
        constexpr double kShare = 0.04;
        ++changes;
        if (m_inCut || !std::bernoulli_distribution(kShare)(m_random))
            return;
        m_inCut = true;
        QTemporaryDir folder;
        if (m_share < 0)
            m_disk->copyAsWritten(folder.path());
        else
            m_disk->copyAfterCut(folder.path(), m_share, m_random);
        judge(openSnapshot(folder.path()));
        m_inCut = false;
    }

    void judge(const Found &found)
    {
        ++snapshots;
        const bool agrees = found.commits == found.days && found.commits == found.mark;
        bad += found.good && agrees ? 0 : 1;
        largestLoss = std::max(largestLoss, m_done - found.commits);
        invented = std::max(invented, found.commits - (m_done + 1)); // one may be under way
    }

    std::mt19937 &m_random;
    const double m_share;
    QTemporaryDir m_folder;
    CutDisk *m_disk = nullptr;
    qint64 m_done = 0; // commits that have returned
    bool m_inCut = false;
};

} // namespace

void tst_FaultPower::everyCutOpensWithWhatWasCommitted_data()
{
    QTest::addColumn<double>("share");
    QTest::newRow("copied as written, without closing") << kAsWritten;
    QTest::newRow("all that was not synced dropped") << 0.0;
    QTest::newRow("half of what was not synced dropped") << 0.5;
    QTest::newRow("a tenth of what was not synced dropped") << 0.9;
}

void tst_FaultPower::everyCutOpensWithWhatWasCommitted()
{
    QFETCH(double, share);
    constexpr int kCommits = 400;
    Plant plant(m_random, share);
    plant.work(kCommits);
    std::printf("%s: %d snapshots in %d changes, %d not good, largest loss %lld commits, "
                "%lld invented\n",
                QTest::currentDataTag(), plant.snapshots, plant.changes, plant.bad,
                static_cast<long long>(plant.largestLoss),
                static_cast<long long>(std::max<qint64>(0, plant.invented)));
    (void)std::fflush(stdout);
    QVERIFY(plant.snapshots > 100);
    QCOMPARE(plant.bad, 0);
    QCOMPARE(plant.largestLoss, 0LL); // a commit that has returned is synced
    QVERIFY(plant.invented <= 0);
}

QTEST_GUILESS_MAIN(tst_FaultPower)
#include "tst_faultpower.moc"
