#include <QDir>
#include <QFile>
#include <QtTest>

#include <sys/mount.h>

#include "FaultStage.h"

//! A store on a disk that is full, read-only or gone for a while, under traffic.
class tst_FaultDisk : public FaultStage
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void fullForAWhile_data();
    void fullForAWhile();
    void fullFromTheStart();
    void readOnlyForAWhile();
    void theFolderIsMovedAwayAndBack();

private:
    [[nodiscard]] bool remount(bool readOnly) const;
    void fill() const;
    void makeRoom() const;
    //! Sends in both directions while \a body runs.
    void underTraffic(const std::function<void()> &body) const;

    QByteArray m_disk;
};

namespace {

constexpr const char *kSize = "size=256k";

} // namespace

void tst_FaultDisk::init()
{
    FaultStage::init();
    m_disk = m_folder->filePath("disk").toUtf8();
    QVERIFY(QDir().mkdir(m_disk));
    QCOMPARE(mount("test", m_disk.constData(), "tmpfs", 0, kSize), 0);
}

void tst_FaultDisk::cleanup()
{
    (void)umount2(m_disk.constData(), MNT_DETACH);
    FaultStage::cleanup();
}

bool tst_FaultDisk::remount(bool readOnly) const
{
    const unsigned long flags = MS_REMOUNT | (readOnly ? MS_RDONLY : 0);
    return mount("test", m_disk.constData(), "tmpfs", flags, kSize) == 0;
}

void tst_FaultDisk::fill() const
{
    QFile file(m_disk + "/filler");
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    for (const int size : { 4096, 512, 1 }) {
        const QByteArray block(size, 'x');
        while (file.write(block) == size) { }
    }
}

void tst_FaultDisk::makeRoom() const
{
    QVERIFY(QFile::remove(m_disk + "/filler"));
}

void tst_FaultDisk::underTraffic(const std::function<void()> &body) const
{
    FaultTraffic upload("va");
    FaultTraffic download("vb", s_network->there());
    body();
}

void tst_FaultDisk::fullForAWhile_data()
{
    QTest::addColumn<bool>("kill");
    QTest::newRow("and then free again") << false;
    QTest::newRow("killed while it is full") << true;
}

void tst_FaultDisk::fullForAWhile()
{
    QFETCH(bool, kill);
    ClientOptions options = beginStore("disk/store", "va");
    const Usage base = kernelUsage("va");
    options.busy = true;
    FaultClient client;
    Usage usage;
    client.start(options);
    QVERIFY(client.waitUntilReady(usage));
    underTraffic([&] {
        usage = client.look();
        fill();
        QTRY_VERIFY_WITH_TIMEOUT(client.ask("problem").contains("cannot be written"), 8000);
        usage = client.look();
    });
    QByteArray what = "disk full for a while";
    if (kill) {
        client.kill();
        client.start(options);
        QVERIFY(client.waitUntilReady(usage));
        what += ", killed meanwhile";
    }
    const Usage kernel = kernelUsage("va") - base;
    QVERIFY(isExact(what + ", from memory", kernel, client.look()));
    makeRoom();
    QTRY_COMPARE_WITH_TIMEOUT(client.ask("problem"), QByteArray(), 8000);
    client.kill();
    QVERIFY(isExact(what + ", stored", kernel, usageAtLast(options)));
}

//! Nothing is stored when counting begins: it begins with the first look.
void tst_FaultDisk::fullFromTheStart()
{
    fill();
    const ClientOptions options { m_disk + "/store", "va", true, {} };
    const Usage base = kernelUsage("va");
    FaultClient client;
    Usage usage;
    client.start(options);
    QVERIFY(client.waitUntilReady(usage));
    QVERIFY(!client.ask("problem").isEmpty());
    underTraffic([&] { usage = client.look(); });
    const Usage kernel = kernelUsage("va") - base;
    QVERIFY(isExact("disk full from the start, from memory", kernel, client.look()));
    makeRoom();
    QTRY_COMPARE_WITH_TIMEOUT(client.ask("problem"), QByteArray(), 8000);
    client.kill();
    QVERIFY(isExact("disk full from the start, stored", kernel, usageAtLast(options)));
}

//! A file system cannot become read-only under a program that writes, so it is when that starts.
void tst_FaultDisk::readOnlyForAWhile()
{
    ClientOptions options = beginStore("disk/store", "va");
    const Usage base = kernelUsage("va");
    QVERIFY(remount(true));
    options.busy = true;
    FaultClient client;
    Usage usage;
    underTraffic([&] {
        client.start(options);
        QVERIFY(client.waitUntilReady(usage));
        QVERIFY(client.ask("problem").contains("not writable"));
        usage = client.look();
    });
    const Usage kernel = kernelUsage("va") - base;
    QVERIFY(isExact("read-only for a while, from memory", kernel, client.look()));
    QVERIFY(remount(false));
    QTRY_COMPARE_WITH_TIMEOUT(client.ask("problem"), QByteArray(), 8000);
    client.kill();
    QVERIFY(isExact("read-only for a while, stored", kernel, usageAtLast(options)));
}

//! What was written before is back in the end; what a new store got meanwhile is not in it.
void tst_FaultDisk::theFolderIsMovedAwayAndBack()
{
    ClientOptions options = beginStore("disk/store", "va");
    const Usage base = kernelUsage("va");
    FaultClient client;
    Usage usage;
    client.start(options);
    QVERIFY(client.waitUntilReady(usage));
    const QString path = QString::fromUtf8(m_disk);
    underTraffic([&] {
        usage = client.look();
        QVERIFY(QDir().rename(path + "/store", path + "/away"));
        usage = client.look();
        client.kill();
        QDir(path + "/store").removeRecursively();
        QVERIFY(QDir().rename(path + "/away", path + "/store"));
    });
    const Usage kernel = kernelUsage("va") - base;
    QVERIFY(isExact("folder away, killed, and back", kernel, usageAtLast(options)));
}

int main(int argc, char **argv)
{
    return FaultStage::run<tst_FaultDisk>(argc, argv);
}
#include "tst_faultdisk.moc"
