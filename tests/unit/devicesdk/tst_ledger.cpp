#include "store/Ledger.h"

#include <QtTest>

#include <csignal>
#include <thread>

#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "StoreFolder.h"

using velq::Ledger;
using velq::Span;
using velq::Totals;

class tst_Ledger : public QObject
{
    Q_OBJECT
private slots:
    void reportsAreStoredPlusPending();
    void commitsNeitherDoubleNorLose();
    void aResetClearsPendingToo();
    void closingWritesWhatIsPending();
    void closingDoesNotBringARemovedStoreBack();
    void aSecondLedgerNeverDoubles();
    void anUnusableDirectoryKeepsFiguresInMemory();
    void aResetWithoutAStoreIsWrittenLater();
    void aReadOnlyDiskKeepsFiguresInMemory();
    void aFullDiskLosesNothing();
    void filesThatMayNotGrowLoseNothing();
    void threadsLoseNothing();
};

namespace {

constexpr Span kAlways { 0, INT64_MAX };

std::uint64_t download(Ledger &ledger, int type = 0)
{
    Totals totals;
    if (!ledger.totals(type, kAlways, totals))
        qFatal("the sum cannot be read");
    return totals.download;
}

//! A file system of its own, for the tests that need a full or a write-protected one.
class SmallDisk
{
public:
    explicit SmallDisk(const QString &path)
        : m_path(path.toUtf8())
        , m_mounted(mkdir(m_path.constData(), 0700) == 0
                    && mount("test", m_path.constData(), "tmpfs", 0, "size=256k") == 0)
    {
    }
    ~SmallDisk()
    {
        if (m_mounted)
            (void)umount2(m_path.constData(), MNT_DETACH);
    }
    SmallDisk(const SmallDisk &) = delete;
    SmallDisk &operator=(const SmallDisk &) = delete;
    [[nodiscard]] bool isMounted() const
    {
        return m_mounted;
    }
    [[nodiscard]] bool setReadOnly(bool readOnly) const
    {
        const unsigned long flags = MS_REMOUNT | (readOnly ? MS_RDONLY : 0);
        return mount("test", m_path.constData(), "tmpfs", flags, "size=256k") == 0;
    }
    //! Writes until nothing more fits.
    void fill() const
    {
        QFile file(filler());
        if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
            qFatal("cannot fill the disk");
        for (const qint64 size : { 4096, 512, 1 }) {
            const QByteArray block(int(size), 'x');
            while (file.write(block) == size) { }
        }
    }
    void makeRoom() const
    {
        QFile::remove(filler());
    }

private:
    [[nodiscard]] QString filler() const
    {
        return QString::fromUtf8(m_path) + "/filler";
    }

    const QByteArray m_path;
    const bool m_mounted;
};

velq::StoreOptions optionsOn(const StoreFolder &folder, const char *disk)
{
    velq::StoreOptions options = folder.options();
    options.directory += std::string("/") + disk;
    return options;
}

} // namespace

void tst_Ledger::reportsAreStoredPlusPending()
{
    const StoreFolder folder;
    Ledger ledger(folder.options(), kNow);
    QVERIFY(ledger.problem().empty());
    ledger.book(0, kNow, { 5, 1, 1000 });
    QCOMPARE(download(ledger), std::uint64_t(5));
    QCOMPARE(runSql(folder.file(), "SELECT count(*) FROM bucket"), 0LL);
    ledger.commit();
    QCOMPARE(runSql(folder.file(), "SELECT download FROM bucket"), 5LL);
    QCOMPARE(download(ledger), std::uint64_t(5));
    ledger.book(0, kNow, { 6, 1, 1000 });
    ledger.book(1, kNow, { 900, 1, 1000 });
    QCOMPARE(download(ledger), std::uint64_t(11));
    Totals today;
    QVERIFY(ledger.totals(0, { kNow - 1, kNow + 1 }, today));
    QCOMPARE(today.upload, std::uint64_t(2));
    QVERIFY(ledger.totals(0, { kNow + 900, kNow + 1800 }, today));
    QVERIFY(today.isZero());
}

void tst_Ledger::commitsNeitherDoubleNorLose()
{
    const StoreFolder folder;
    Ledger ledger(folder.options(), kNow);
    for (int i = 0; i < 50; ++i) {
        ledger.book(i % 2, kNow + i * 300, { 1, 1, 1 });
        if (i % 3 == 0)
            ledger.commit();
        if (i % 5 == 0)
            ledger.commit();
        QCOMPARE(download(ledger, 0) + download(ledger, 1), std::uint64_t(i + 1));
    }
    ledger.commit();
    QCOMPARE(runSql(folder.file(), "SELECT sum(download) FROM bucket"), 50LL);
}

void tst_Ledger::aResetClearsPendingToo()
{
    const StoreFolder folder;
    Ledger ledger(folder.options(), kNow);
    ledger.book(0, kNow, { 5, 1, 1000 });
    ledger.commit();
    ledger.book(0, kNow, { 6, 1, 1000 });
    ledger.book(1, kNow, { 7, 1, 1000 });
    QVERIFY(ledger.reset(0, kNow + 10));
    QCOMPARE(download(ledger, 0), std::uint64_t(0));
    QCOMPARE(download(ledger, 1), std::uint64_t(7));
    QCOMPARE(ledger.lastReset(0), std::int64_t(kNow + 10));
    ledger.book(0, kNow, { 2, 1, 1000 });
    ledger.close();
    Ledger next(folder.options(), 0);
    QCOMPARE(download(next, 0), std::uint64_t(2));
    QCOMPARE(next.lastReset(0), std::int64_t(kNow + 10));
}

void tst_Ledger::closingWritesWhatIsPending()
{
    const StoreFolder folder;
    {
        Ledger ledger(folder.options(), kNow);
        ledger.book(0, kNow, { 5, 1, 1000 });
        ledger.close();
        ledger.close();
        ledger.commit();
        QVERIFY(!ledger.reset(0, kNow));
    }
    QCOMPARE(runSql(folder.file(), "SELECT download FROM bucket"), 5LL);
    Ledger next(folder.options(), kNow);
    QVERIFY2(next.problem().empty(), "the lock was given back");
}

void tst_Ledger::closingDoesNotBringARemovedStoreBack()
{
    const StoreFolder folder;
    Ledger ledger(folder.options(), kNow);
    ledger.book(0, kNow, { 5, 1, 1000 });
    for (const QString &name : folder.entries())
        QVERIFY(QFile::remove(folder.file(name.toLatin1().constData())));
    ledger.close();
    QVERIFY(folder.entries().isEmpty());
}

void tst_Ledger::aSecondLedgerNeverDoubles()
{
    const StoreFolder folder;
    Ledger first(folder.options(), kNow);
    Ledger second(folder.options(), kNow);
    for (Ledger *ledger : { &first, &second })
        ledger->book(0, kNow, { 5, 1, 1000 });
    QCOMPARE(download(second), std::uint64_t(0));
    QVERIFY(!second.reset(0, kNow));
    first.commit();
    second.commit();
    QCOMPARE(download(first), std::uint64_t(5));
    QCOMPARE(download(second), std::uint64_t(5));
    first.close();
    second.commit(); // it has the store to itself now and counts from here on
    second.book(0, kNow, { 1, 1, 1000 });
    second.commit();
    QCOMPARE(download(second), std::uint64_t(6));
    QVERIFY(second.problem().empty());
}

void tst_Ledger::anUnusableDirectoryKeepsFiguresInMemory()
{
    const StoreFolder folder;
    folder.write("occupied", "a file where the folder should be");
    const velq::StoreOptions options = optionsOn(folder, "occupied");
    Ledger ledger(options, kNow);
    QVERIFY2(contains(ledger.problem(), "cannot be created"), ledger.problem().c_str());
    ledger.book(0, kNow, { 5, 1, 1000 });
    ledger.commit();
    ledger.commit();
    QCOMPARE(download(ledger), std::uint64_t(5));
    QCOMPARE(ledger.lastReset(0), std::int64_t(kNow));
    QVERIFY(QFile::remove(folder.file("occupied")));
    ledger.commit();
    QVERIFY(ledger.problem().empty());
    QCOMPARE(download(ledger), std::uint64_t(5));
    QCOMPARE(runSql(folder.file("occupied/velq.db"), "SELECT download FROM bucket"), 5LL);
}

void tst_Ledger::aResetWithoutAStoreIsWrittenLater()
{
    const StoreFolder folder;
    const velq::StoreOptions options = optionsOn(folder, "store");
    {
        Ledger ledger(options, kNow);
        ledger.book(0, kNow, { 5, 1, 1000 });
        ledger.close();
    }
    QVERIFY(QFile::rename(folder.file("store"), folder.file("kept")));
    folder.write("store", "in the way");
    Ledger ledger(options, kNow);
    QVERIFY(ledger.reset(0, kNow + 10));
    ledger.book(0, kNow, { 2, 1, 1000 });
    QVERIFY(QFile::remove(folder.file("store")));
    QVERIFY(QFile::rename(folder.file("kept"), folder.file("store")));
    QCOMPARE(download(ledger), std::uint64_t(2));
    ledger.commit();
    QCOMPARE(download(ledger), std::uint64_t(2));
    QCOMPARE(ledger.lastReset(0), std::int64_t(kNow + 10));
    QCOMPARE(runSql(folder.file("store/velq.db"), "SELECT sum(download) FROM bucket"), 2LL);
}

void tst_Ledger::aReadOnlyDiskKeepsFiguresInMemory()
{
    const StoreFolder folder;
    const SmallDisk disk(folder.file("disk"));
    if (!disk.isMounted())
        QSKIP("mounting a file system is not allowed here");
    {
        Ledger ledger(optionsOn(folder, "disk"), kNow);
        ledger.book(0, kNow, { 5, 1, 1000 });
        ledger.close();
    }
    QVERIFY(disk.setReadOnly(true));
    Ledger ledger(optionsOn(folder, "disk"), kNow);
    QVERIFY2(contains(ledger.problem(), "not writable"), ledger.problem().c_str());
    QCOMPARE(download(ledger), std::uint64_t(5)); // what is there can be read
    ledger.book(0, kNow, { 6, 1, 1000 });
    ledger.commit();
    QCOMPARE(download(ledger), std::uint64_t(11));
    QVERIFY(disk.setReadOnly(false));
    ledger.commit();
    QVERIFY2(ledger.problem().empty(), ledger.problem().c_str());
    QCOMPARE(download(ledger), std::uint64_t(11));
    QCOMPARE(runSql(folder.file("disk/velq.db"), "SELECT download FROM bucket"), 11LL);
}

void tst_Ledger::aFullDiskLosesNothing()
{
    const StoreFolder folder;
    const SmallDisk disk(folder.file("disk"));
    if (!disk.isMounted())
        QSKIP("mounting a file system is not allowed here");
    disk.fill();
    Ledger begunOnAFullDisk(optionsOn(folder, "disk"), kNow);
    begunOnAFullDisk.book(0, kNow, { 5, 1, 1000 });
    begunOnAFullDisk.commit();
    QVERIFY(!begunOnAFullDisk.problem().empty());
    QCOMPARE(download(begunOnAFullDisk), std::uint64_t(5));
    disk.makeRoom();
    begunOnAFullDisk.commit();
    QVERIFY2(begunOnAFullDisk.problem().empty(), begunOnAFullDisk.problem().c_str());

    disk.fill();
    for (int i = 0; i < 300; ++i) { // more buckets than the pages that are there can take
        begunOnAFullDisk.book(0, kNow + i * 900, { 1, 0, 0 });
        begunOnAFullDisk.commit();
    }
    QVERIFY2(contains(begunOnAFullDisk.problem(), "full")
                 || contains(begunOnAFullDisk.problem(), "I/O"),
             begunOnAFullDisk.problem().c_str());
    QCOMPARE(download(begunOnAFullDisk), std::uint64_t(305));
    disk.makeRoom();
    begunOnAFullDisk.commit();
    QVERIFY2(begunOnAFullDisk.problem().empty(), begunOnAFullDisk.problem().c_str());
    QCOMPARE(download(begunOnAFullDisk), std::uint64_t(305));
    QCOMPARE(runSql(folder.file("disk/velq.db"), "SELECT sum(download) FROM bucket"), 305LL);
}

void tst_Ledger::filesThatMayNotGrowLoseNothing()
{
    // A full disk for those who may not mount one.
    const StoreFolder folder;
    Ledger ledger(folder.options(), kNow);
    ledger.book(0, kNow, { 5, 1, 1000 });
    ledger.commit();
    rlimit before {};
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small { 16384, before.rlim_max };
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &small), 0);
    for (int i = 0; i < 20; ++i) {
        ledger.book(0, kNow + i * 900, { 1, 0, 0 });
        ledger.commit();
    }
    const std::string problem = ledger.problem();
    const std::uint64_t during = download(ledger);
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &before), 0);
    (void)std::signal(SIGXFSZ, handler);
    QVERIFY2(contains(problem, "cannot be written"), problem.c_str());
    QCOMPARE(during, std::uint64_t(25));
    ledger.commit();
    QVERIFY2(ledger.problem().empty(), ledger.problem().c_str());
    QCOMPARE(download(ledger), std::uint64_t(25));
    QCOMPARE(runSql(folder.file(), "SELECT sum(download) FROM bucket"), 25LL);
}

void tst_Ledger::threadsLoseNothing()
{
    const StoreFolder folder;
    Ledger ledger(folder.options(), kNow);
    constexpr int kRounds = 200;
    const auto book = [&ledger](int type) {
        for (int i = 0; i < kRounds; ++i)
            ledger.book(type, kNow, { 1, 1, 1 });
    };
    std::thread first(book, 0);
    std::thread second(book, 1);
    std::thread writer([&ledger] {
        for (int i = 0; i < 20; ++i)
            ledger.commit();
    });
    std::uint64_t seen = 0;
    bool monotonous = true;
    for (int i = 0; i < 100; ++i) {
        const std::uint64_t now = download(ledger, 0);
        monotonous = monotonous && now >= seen; // a commit never hides what is on its way
        seen = now;
    }
    first.join();
    second.join();
    writer.join();
    QVERIFY(monotonous);
    QCOMPARE(download(ledger, 0), std::uint64_t(kRounds));
    QCOMPARE(download(ledger, 1), std::uint64_t(kRounds));
    ledger.close();
    QCOMPARE(runSql(folder.file(), "SELECT sum(download) FROM bucket"), qint64(2 * kRounds));
}

QTEST_GUILESS_MAIN(tst_Ledger)
#include "tst_ledger.moc"
