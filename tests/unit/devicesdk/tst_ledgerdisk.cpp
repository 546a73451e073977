// A ledger whose disk is full, write-protected or not there.

#include <QtTest>

#include <csignal>

#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include "StoreFolder.h"

using velq::Ledger;

class tst_LedgerDisk : public QObject
{
    Q_OBJECT
private slots:
    void anUnusableDirectoryKeepsFiguresInMemory();
    void aResetWithoutAStoreIsWrittenLater();
    void aReadOnlyDiskKeepsFiguresInMemory();
    void aFullDiskLosesNothing();
    void filesThatMayNotGrowLoseNothing();
};

namespace {

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

void tst_LedgerDisk::anUnusableDirectoryKeepsFiguresInMemory()
{
    const StoreFolder folder;
    folder.write("occupied", "a file where the folder should be");
    const velq::StoreOptions options = optionsOn(folder, "occupied");
    Ledger ledger(ledgerOptions(options));
    QVERIFY2(contains(ledger.problem(), "cannot be created"), ledger.problem().c_str());
    book(ledger, 0, kNow, { 5, 1, 1000, 1000 });
    ledger.commit();
    ledger.commit();
    QCOMPARE(download(ledger), std::int64_t(5));
    QCOMPARE(ledger.lastReset(0), std::int64_t(kNow));
    QVERIFY(QFile::remove(folder.file("occupied")));
    ledger.commit();
    QVERIFY(ledger.problem().empty());
    QCOMPARE(download(ledger), std::int64_t(5));
    QCOMPARE(runSql(folder.file("occupied/velq.db"), "SELECT download FROM hour"), 5LL);
}

void tst_LedgerDisk::aResetWithoutAStoreIsWrittenLater()
{
    const StoreFolder folder;
    const velq::StoreOptions options = optionsOn(folder, "store");
    {
        Ledger ledger(ledgerOptions(options));
        book(ledger, 0, kNow, { 5, 1, 1000, 1000 });
        ledger.close();
    }
    QVERIFY(QFile::rename(folder.file("store"), folder.file("kept")));
    folder.write("store", "in the way");
    Ledger ledger(ledgerOptions(options));
    QVERIFY(ledger.reset(0, momentOf(kNow + 10)));
    book(ledger, 0, kNow, { 2, 1, 1000, 1000 });
    QVERIFY(QFile::remove(folder.file("store")));
    QVERIFY(QFile::rename(folder.file("kept"), folder.file("store")));
    QCOMPARE(download(ledger), std::int64_t(2));
    ledger.commit();
    QCOMPARE(download(ledger), std::int64_t(2));
    QCOMPARE(ledger.lastReset(0), std::int64_t(kNow + 10));
    QCOMPARE(runSql(folder.file("store/velq.db"), "SELECT sum(download) FROM hour"), 2LL);
}

void tst_LedgerDisk::aReadOnlyDiskKeepsFiguresInMemory()
{
    const StoreFolder folder;
    const SmallDisk disk(folder.file("disk"));
    if (!disk.isMounted())
        QSKIP("mounting a file system is not allowed here");
    {
        Ledger ledger(ledgerOptions(optionsOn(folder, "disk")));
        book(ledger, 0, kNow, { 5, 1, 1000, 1000 });
        ledger.close();
    }
    QVERIFY(disk.setReadOnly(true));
    Ledger ledger(ledgerOptions(optionsOn(folder, "disk")));
    QVERIFY2(contains(ledger.problem(), "not writable"), ledger.problem().c_str());
    QCOMPARE(download(ledger), std::int64_t(5)); // what is there can be read
    book(ledger, 0, kNow, { 6, 1, 1000, 1000 });
    ledger.commit();
    QCOMPARE(download(ledger), std::int64_t(11));
    QVERIFY(disk.setReadOnly(false));
    ledger.commit();
    QVERIFY2(ledger.problem().empty(), ledger.problem().c_str());
    QCOMPARE(download(ledger), std::int64_t(11));
    QCOMPARE(runSql(folder.file("disk/velq.db"), "SELECT download FROM hour"), 11LL);
}

void tst_LedgerDisk::aFullDiskLosesNothing()
{
    const StoreFolder folder;
    const SmallDisk disk(folder.file("disk"));
    if (!disk.isMounted())
        QSKIP("mounting a file system is not allowed here");
    disk.fill();
    Ledger begunOnAFullDisk(ledgerOptions(optionsOn(folder, "disk")));
    book(begunOnAFullDisk, 0, kNow, { 5, 1, 1000, 1000 });
    begunOnAFullDisk.commit();
    QVERIFY(!begunOnAFullDisk.problem().empty());
    QCOMPARE(download(begunOnAFullDisk), std::int64_t(5));
    disk.makeRoom();
    begunOnAFullDisk.commit();
    QVERIFY2(begunOnAFullDisk.problem().empty(), begunOnAFullDisk.problem().c_str());

    disk.fill();
    for (int i = 0; i < 300; ++i) { // more buckets than the pages that are there can take
        book(begunOnAFullDisk, 0, kNow + i * 3600, { 1, 0, 0, 0 });
        begunOnAFullDisk.commit();
    }
    QVERIFY2(contains(begunOnAFullDisk.problem(), "full")
                 || contains(begunOnAFullDisk.problem(), "I/O"),
             begunOnAFullDisk.problem().c_str());
    QCOMPARE(download(begunOnAFullDisk), std::int64_t(305));
    disk.makeRoom();
    begunOnAFullDisk.commit();
    QVERIFY2(begunOnAFullDisk.problem().empty(), begunOnAFullDisk.problem().c_str());
    QCOMPARE(download(begunOnAFullDisk), std::int64_t(305));
    QCOMPARE(runSql(folder.file("disk/velq.db"), "SELECT sum(download) FROM hour"), 305LL);
}

void tst_LedgerDisk::filesThatMayNotGrowLoseNothing()
{
    // A full disk for those who may not mount one.
    const StoreFolder folder;
    Ledger ledger(ledgerOptions(folder.options()));
    book(ledger, 0, kNow, { 5, 1, 1000, 1000 });
    ledger.commit();
    rlimit before {};
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small { 16384, before.rlim_max };
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &small), 0);
    for (int i = 0; i < 20; ++i) {
        book(ledger, 0, kNow + i * 3600, { 1, 0, 0, 0 });
        ledger.commit();
    }
    const std::string problem = ledger.problem();
    const std::int64_t during = download(ledger);
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &before), 0);
    (void)std::signal(SIGXFSZ, handler);
    QVERIFY2(contains(problem, "cannot be written"), problem.c_str());
    QCOMPARE(during, std::int64_t(25));
    ledger.commit();
    QVERIFY2(ledger.problem().empty(), ledger.problem().c_str());
    QCOMPARE(download(ledger), std::int64_t(25));
    QCOMPARE(runSql(folder.file(), "SELECT sum(download) FROM hour"), 25LL);
}

QTEST_GUILESS_MAIN(tst_LedgerDisk)
#include "tst_ledgerdisk.moc"
