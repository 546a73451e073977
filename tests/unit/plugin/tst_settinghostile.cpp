// Settings files that are none, and disks that take nothing.

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtTest>

#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>

#include "ChildProcess.h"
#include "FakeHost.h"
#include "NetInfoSettingRules.h"
#include "NetInfoSettingUILogic.h"
#include "SettingFolder.h"
#include "TestLog.h"

namespace {

constexpr char kNoOtherUser[] = "this process cannot become one of another user";
constexpr int kMegabyte = 1024 * 1024;

QByteArray utf16(const QByteArray &text)
{
    QByteArray bytes("\xff\xfe");
    for (const char c : text)
        bytes.append(c).append('\0');
    return bytes;
}

QByteArray asciiBytes(int from, int to)
{
    QByteArray bytes;
    for (int i = from; i <= to; ++i)
        bytes.append(char(i));
    return bytes;
}

//! The first \a count settings.
QStringList loaded(int count)
{
    NetInfoSettingUILogic store;
    store.GetUseLimitSetting();
    QStringList values;
    for (int i = 0; i < count; ++i)
        values << store.value(i);
    return values;
}

bool saveNew()
{
    NetInfoSettingUILogic store;
    for (int i = 0; i < NetInfoRules::kSettingCount; ++i)
        store.updateUseLimitSetting(i, QStringLiteral("new") + QString::number(i));
    return store.saveUseLimitSetting();
}

} // namespace

class tst_SettingHostile : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void aFileTruncatedAnywhereGivesItsWholeLines();
    void textIsReadAndReplaced_data();
    void textIsReadAndReplaced();
    void whatIsNoTextIsKeptWhenReplaced_data();
    void whatIsNoTextIsKeptWhenReplaced();
    void aHugeFileTakesLittleMemory();
    void aHugeFileIsReadFromItsBeginning();
    void earlierKeptFilesStay();
    void aThingThatIsNoFileStays_data();
    void aThingThatIsNoFileStays();
    void aLinkIsReplacedAndItsFileStays();
    void aLinkToNothingIsReplaced();
    void aLinkToItselfIsReplaced();
    void aLinkInTheTemporaryFilesPlaceIsNotFollowed();
    void aFolderInTheTemporaryFilesPlaceStays();
    void aFileOfModeZeroIsKept();
    void anotherUsersUnreadableFileIsKept();
    void aReadOnlyFolderKeepsTheOldFile();
    void aFullDiskKeepsTheOldFile();
    void aReadOnlyDiskKeepsTheOldFile();
    void aFileThatMayNotGrowKeepsTheOldFile();

private:
    [[nodiscard]] QStringList templateValues() const;
    [[nodiscard]] QByteArray differences(const QByteArray &userFile,
                                         const QStringList &names) const;

    QScopedPointer<SettingFolder> m_folder;
    QScopedPointer<TestLog> m_log;
};

void tst_SettingHostile::init()
{
    resetFakeHost();
    m_folder.reset(new SettingFolder);
    m_log.reset(new TestLog);
}

void tst_SettingHostile::cleanup()
{
    const QStringList problems = m_log->takeProblems();
    m_log.reset();
    QVERIFY2(problems.isEmpty(), qPrintable(problems.join(QLatin1Char(10))));
}

//! What is read when the user file cannot be.
QStringList tst_SettingHostile::templateValues() const
{
    return QStringList(SettingFolder::values("t")).mid(0, 14)
        << QString() << QString() << QString();
}

//! Empty when the user data folder holds \a names alone and the file \a userFile.
QByteArray tst_SettingHostile::differences(const QByteArray &userFile,
                                           const QStringList &names) const
{
    if (m_folder->content(m_folder->userFile()) != userFile)
        return "file: " + m_folder->content(m_folder->userFile());
    if (m_folder->userNames() != names)
        return "names: " + m_folder->userNames().join(QLatin1Char(' ')).toUtf8();
    return QByteArray();
}

void tst_SettingHostile::aFileTruncatedAnywhereGivesItsWholeLines()
{
    const QByteArray whole = SettingFolder::savedFile("v");
    const QStringList values(SettingFolder::values("v"));
    for (int size = 1; size <= whole.size(); ++size) {
        const QByteArray part = whole.left(size);
        m_folder->write(m_folder->userFile(), part);
        const QStringList read = loaded(17);
        const int last = int(part.count('\n')) - 1; // the value of the line that is cut
        for (int i = 0; i < 17; ++i) {
            if (i == last)
                QVERIFY2(values.at(i).startsWith(read.at(i)), qPrintable(read.at(i)));
            else
                QCOMPARE(read.at(i), i < last ? values.at(i) : QString());
        }
        QCOMPARE(m_folder->content(m_folder->userFile()), part);
    }
    QCOMPARE(loaded(17), values);
}

void tst_SettingHostile::textIsReadAndReplaced_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::newRow("no = at all") << QByteArray("some\nnotes\nof mine\n") << ""
                                 << "";
    QTest::newRow("line ends alone") << QByteArray(500, '\n') << ""
                                     << "";
    QTest::newRow("= alone") << QByteArray(60000, '=') << ""
                             << "";
    QTest::newRow("bytes that are no UTF-8")
        << QByteArray("\n=\xff\xfe\n=\xc3") << QString(2, QChar(0xfffd)) << QString(QChar(0xfffd));
    QTest::newRow("a long value within the limit")
        << "x\na=" + QByteArray(60000, 'v') << QString(60000, 'v') << "";
}

void tst_SettingHostile::textIsReadAndReplaced()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, first);
    QFETCH(QString, second);
    m_folder->write(m_folder->userFile(), content);
    QCOMPARE(loaded(2), QStringList({ first, second }));
    QCOMPARE(differences(content, { "DataUsageLimit.ini" }), QByteArray());
    QCOMPARE(saveNew(), true);
    QCOMPARE(differences(SettingFolder::savedFile("new"), { "DataUsageLimit.ini" }), QByteArray());
}

void tst_SettingHostile::whatIsNoTextIsKeptWhenReplaced_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("first");
    const QString zeroes = QString(QChar(0)) + "v" + QChar(0) + "0" + QChar(0);
    QTest::newRow("UTF-16") << utf16(SettingFolder::savedFile("v")) << zeroes;
    const QByteArray afterSign = asciiBytes('=' + 1, 127) + asciiBytes(0, '\n' - 1);
    QTest::newRow("binary") << asciiBytes(0, 127).repeated(32)
                            << QString::fromLatin1(afterSign.constData(), int(afterSign.size()));
    QTest::newRow("a zero byte") << QByteArray("x\na=1\n\0", 7) << "1";
    QTest::newRow("longer than the limit") << "x\na=1\nb=" + QByteArray(kMegabyte, 'v') << "1";
    QTest::newRow("longer, in one line") << "x\na=" + QByteArray(kMegabyte, 'v') << "";
}

void tst_SettingHostile::whatIsNoTextIsKeptWhenReplaced()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, first);
    m_folder->write(m_folder->userFile(), content);
    QCOMPARE(loaded(1), QStringList(first));
    QCOMPARE(differences(content, { "DataUsageLimit.ini" }), QByteArray());
    QCOMPARE(saveNew(), true);
    QCOMPARE(differences(SettingFolder::savedFile("new"),
                         { "DataUsageLimit.ini", "DataUsageLimit.ini.kept" }),
             QByteArray());
    QCOMPARE(m_folder->content(m_folder->userFile() + ".kept"), content);
}

void tst_SettingHostile::aHugeFileTakesLittleMemory()
{
    m_folder->write(m_folder->userFile(), SettingFolder::savedFile("v"));
    QVERIFY(QFile::resize(m_folder->userFile(), 100 * qint64(kMegabyte)));
    const QByteArray wrong = inChild([] {
        const auto peakKilobytes = [] {
            rusage usage = {};
            (void)getrusage(RUSAGE_SELF, &usage);
            return usage.ru_maxrss;
        };
        const long before = peakKilobytes();
        (void)loaded(17);
        (void)saveNew();
        const long grown = peakKilobytes() - before;
        return grown < 8 * 1024 ? QByteArray() : "grown by KiB: " + QByteArray::number(int(grown));
    });
    QCOMPARE(wrong, QByteArray());
    QCOMPARE(QFileInfo(m_folder->userFile() + ".kept").size(), 100 * qint64(kMegabyte));
}

void tst_SettingHostile::aHugeFileIsReadFromItsBeginning()
{
    const QByteArray start = SettingFolder::savedFile("v") + '\n';
    m_folder->write(m_folder->userFile(), start + QByteArray(kMegabyte, 'x'));
    QCOMPARE(loaded(18), QStringList(SettingFolder::values("v")) << QString());
}

void tst_SettingHostile::earlierKeptFilesStay()
{
    for (const char *content : { "1", "2", "3" }) {
        m_folder->write(m_folder->userFile(), QByteArray(content, 2)); // with its zero byte
        QVERIFY(saveNew());
        QVERIFY(saveNew());
    }
    QCOMPARE(m_folder->content(m_folder->userFile() + ".kept"), QByteArray("1", 2));
    QCOMPARE(m_folder->content(m_folder->userFile() + ".kept-2"), QByteArray("2", 2));
    QCOMPARE(m_folder->content(m_folder->userFile() + ".kept-3"), QByteArray("3", 2));
    QCOMPARE(int(m_folder->userNames().size()), 4);
}

void tst_SettingHostile::aThingThatIsNoFileStays_data()
{
    QTest::addColumn<bool>("pipe");
    QTest::newRow("a folder") << false;
    QTest::newRow("a pipe without writer") << true;
}

void tst_SettingHostile::aThingThatIsNoFileStays()
{
    QFETCH(bool, pipe);
    if (pipe)
        QCOMPARE(mkfifo(QFile::encodeName(m_folder->userFile()).constData(), 0600), 0);
    else
        QVERIFY(QDir().mkpath(m_folder->userFile() + "/within"));
    QCOMPARE(NetInfoSettingUILogic().GetConfigFilePath(), m_folder->userFile());
    QCOMPARE(loaded(17), templateValues());
    QCOMPARE(saveNew(), true);
    QVERIFY(!QFileInfo(m_folder->userFile()).isFile());
    QCOMPARE(QFileInfo(m_folder->userFile() + "/within").isDir(), !pipe);
    QCOMPARE(m_folder->userNames(), QStringList("DataUsageLimit.ini"));
}

void tst_SettingHostile::aLinkIsReplacedAndItsFileStays()
{
    const QString target = m_folder->rootPath() + "/elsewhere";
    m_folder->write(target, SettingFolder::savedFile("v"));
    QVERIFY(QFile::link(target, m_folder->userFile()));
    QCOMPARE(loaded(17), QStringList(SettingFolder::values("v")));
    QVERIFY(QFileInfo(m_folder->userFile()).isSymLink());
    QCOMPARE(saveNew(), true);
    QVERIFY(!QFileInfo(m_folder->userFile()).isSymLink());
    QCOMPARE(m_folder->content(m_folder->userFile()), SettingFolder::savedFile("new"));
    QCOMPARE(m_folder->content(target), SettingFolder::savedFile("v"));
    QCOMPARE(QFile::symLinkTarget(m_folder->userFile() + ".kept"), target);
}

void tst_SettingHostile::aLinkToNothingIsReplaced()
{
    const QString target = m_folder->rootPath() + "/elsewhere";
    QVERIFY(QFile::link(target, m_folder->userFile()));
    QCOMPARE(loaded(1), QStringList("t0"));
    QVERIFY(!QFileInfo(m_folder->userFile()).isSymLink());
    QCOMPARE(m_folder->content(m_folder->userFile()), SettingFolder::firstFile());
    QVERIFY(!QFile::exists(target));
    QCOMPARE(QFile::symLinkTarget(m_folder->userFile() + ".kept"), target);
}

void tst_SettingHostile::aLinkToItselfIsReplaced()
{
    QVERIFY(QFile::link(m_folder->userFile(), m_folder->userFile()));
    QCOMPARE(loaded(17), templateValues());
    QVERIFY(QFileInfo(m_folder->userFile()).isSymLink());
    QCOMPARE(saveNew(), true);
    QCOMPARE(m_folder->content(m_folder->userFile()), SettingFolder::savedFile("new"));
}

void tst_SettingHostile::aLinkInTheTemporaryFilesPlaceIsNotFollowed()
{
    const QString target = m_folder->rootPath() + "/elsewhere";
    m_folder->write(target, "mine");
    QVERIFY(QFile::link(target, m_folder->temporaryFile()));
    QCOMPARE(saveNew(), true);
    QCOMPARE(m_folder->content(target), QByteArray("mine"));
    QCOMPARE(differences(SettingFolder::savedFile("new"), { "DataUsageLimit.ini" }), QByteArray());
}

void tst_SettingHostile::aFolderInTheTemporaryFilesPlaceStays()
{
    m_folder->write(m_folder->userFile(), SettingFolder::savedFile("v"));
    QVERIFY(QDir().mkpath(m_folder->temporaryFile()));
    QCOMPARE(saveNew(), true);
    QCOMPARE(differences(SettingFolder::savedFile("v"),
                         { "DataUsageLimit.ini", "tempDataUsageLimit.ini" }),
             QByteArray());
}

void tst_SettingHostile::aFileOfModeZeroIsKept()
{
    m_folder->write(m_folder->userFile(), SettingFolder::savedFile("v"));
    QVERIFY(QFile::setPermissions(m_folder->userFile(), QFile::Permissions()));
    if (!giveAway(m_folder->rootPath()))
        QSKIP(kNoOtherUser);
    const QString kept = m_folder->userFile() + ".kept";
    const QByteArray wrong = inChild([&]() -> QByteArray {
        if (!giveUpRights())
            return kNotAllowed;
        if (loaded(17) != templateValues())
            return "read";
        if (QFile(m_folder->userFile()).permissions() != QFile::Permissions())
            return "changed by reading";
        if (!saveNew())
            return "not saved";
        if (QFile(m_folder->userFile()).permissions() & (QFile::ReadGroup | QFile::ReadOther))
            return "the new file is not its owner's alone";
        (void)QFile::setPermissions(kept, QFile::ReadOwner);
        if (m_folder->content(kept) != SettingFolder::savedFile("v"))
            return "kept: " + m_folder->content(kept);
        return differences(SettingFolder::savedFile("new"),
                           { "DataUsageLimit.ini", "DataUsageLimit.ini.kept" });
    });
    if (wrong == kNotAllowed)
        QSKIP(kNoOtherUser);
    QCOMPARE(wrong, QByteArray());
}

void tst_SettingHostile::anotherUsersUnreadableFileIsKept()
{
    if (geteuid() != 0)
        QSKIP("files of another user can be made by root alone");
    if (!giveAway(m_folder->rootPath()))
        QSKIP(kNoOtherUser);
    m_folder->write(m_folder->userFile(), SettingFolder::savedFile("v"));
    QVERIFY(QFile::setPermissions(m_folder->userFile(), QFile::Permissions()));
    const QByteArray wrong = inChild([&]() -> QByteArray {
        if (!giveUpRights())
            return kNotAllowed;
        if (loaded(17) != templateValues())
            return "read";
        return saveNew() ? differences(SettingFolder::savedFile("new"),
                                       { "DataUsageLimit.ini", "DataUsageLimit.ini.kept" })
                         : QByteArray("not saved");
    });
    if (wrong == kNotAllowed)
        QSKIP(kNoOtherUser);
    QCOMPARE(wrong, QByteArray());
    QCOMPARE(m_folder->content(m_folder->userFile() + ".kept"), SettingFolder::savedFile("v"));
}

void tst_SettingHostile::aReadOnlyFolderKeepsTheOldFile()
{
    m_folder->write(m_folder->userFile(), SettingFolder::savedFile("v"));
    if (!giveAway(m_folder->rootPath()))
        QSKIP(kNoOtherUser);
    QVERIFY(QFile::setPermissions(m_folder->userFolder(), QFile::ReadOwner | QFile::ExeOwner));
    const QByteArray wrong = inChild([&]() -> QByteArray {
        if (!giveUpRights())
            return kNotAllowed;
        if (loaded(17) != QStringList(SettingFolder::values("v")))
            return "not read";
        return saveNew() ? QByteArray() : QByteArray("false");
    });
    QVERIFY(QFile::setPermissions(m_folder->userFolder(),
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    if (wrong == kNotAllowed)
        QSKIP(kNoOtherUser);
    QCOMPARE(wrong, QByteArray());
    QCOMPARE(differences(SettingFolder::savedFile("v"), { "DataUsageLimit.ini" }), QByteArray());
}

void tst_SettingHostile::aFullDiskKeepsTheOldFile()
{
    constexpr int kDiskBytes = 16384;
    const QString filler = m_folder->userFolder() + "/filler";
    const QByteArray wrong = inChild([&]() -> QByteArray {
        if (!mountDisk(m_folder->userFolder(), kDiskBytes))
            return kNotAllowed;
        m_folder->write(m_folder->userFile(), SettingFolder::savedFile("v"));
        QFile file(filler);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
            return "no filler";
        while (file.write(QByteArray(512, 'x')) > 0) { }
        file.close();
        if (!saveNew())
            return "false";
        const QByteArray full
            = differences(SettingFolder::savedFile("v"), { "DataUsageLimit.ini", "filler" });
        if (!full.isEmpty())
            return "full, " + full;
        if (!QFile::remove(filler) || !saveNew())
            return "false with room";
        return differences(SettingFolder::savedFile("new"), { "DataUsageLimit.ini" });
    });
    if (wrong == kNotAllowed)
        QSKIP("this process may not mount a disk of its own");
    QCOMPARE(wrong, QByteArray());
}

void tst_SettingHostile::aReadOnlyDiskKeepsTheOldFile()
{
    constexpr int kDiskBytes = 65536;
    const QByteArray wrong = inChild([&]() -> QByteArray {
        if (!mountDisk(m_folder->userFolder(), kDiskBytes))
            return kNotAllowed;
        m_folder->write(m_folder->userFile(), SettingFolder::savedFile("v"));
        if (!makeDiskReadOnly(m_folder->userFolder()))
            return "not read-only";
        return saveNew() ? differences(SettingFolder::savedFile("v"), { "DataUsageLimit.ini" })
                         : QByteArray("false");
    });
    if (wrong == kNotAllowed)
        QSKIP("this process may not mount a disk of its own");
    QCOMPARE(wrong, QByteArray());
}

void tst_SettingHostile::aFileThatMayNotGrowKeepsTheOldFile()
{
    m_folder->write(m_folder->userFile(), SettingFolder::savedFile("v"));
    const QByteArray wrong = inChild([&]() -> QByteArray {
        (void)signal(SIGXFSZ, SIG_IGN);
        const rlimit few = { 100, 100 }; // the first write is short, the second one fails
        if (setrlimit(RLIMIT_FSIZE, &few) != 0)
            return "no limit";
        return saveNew() ? differences(SettingFolder::savedFile("v"), { "DataUsageLimit.ini" })
                         : QByteArray("false");
    });
    QCOMPARE(wrong, QByteArray());
}

QTEST_GUILESS_MAIN(tst_SettingHostile)
#include "tst_settinghostile.moc"
