// What a kill or a failing system call leaves of the settings file: the old one or the new one.

#include <QDir>
#include <QFile>
#include <QtTest>

#include <sys/syscall.h>

#include <cerrno>
#include <cstdio>

#include "CallTracer.h"
#include "FakeHost.h"
#include "NetInfoSettingUILogic.h"
#include "SettingFolder.h"
#include "TestLog.h"

class tst_SettingKill : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void aKillLeavesTheOldOrTheNewFile_data();
    void aKillLeavesTheOldOrTheNewFile();
    void afterAKillTheNextSaveSucceeds();
    void aFailingCallLeavesTheOldOrTheNewFile_data();
    void aFailingCallLeavesTheOldOrTheNewFile();
    void shortWritesAreContinued();
    void theTextIsOnTheDiskBeforeItsNameIs();

private:
    using Work = void (*)();
    static void addFiles();
    static void saveOther();
    static void load();
    void restore(const QByteArray &old) const;
    [[nodiscard]] QByteArray kept() const;

    QScopedPointer<SettingFolder> m_folder;
    QScopedPointer<TestLog> m_log;
};

void tst_SettingKill::init()
{
    resetFakeHost();
    m_folder.reset(new SettingFolder);
    m_log.reset(new TestLog);
}

void tst_SettingKill::cleanup()
{
    const QStringList problems = m_log->takeProblems();
    m_log.reset();
    QVERIFY2(problems.isEmpty(), qPrintable(problems.join(QLatin1Char(10))));
}

void tst_SettingKill::saveOther()
{
    NetInfoSettingUILogic store;
    for (int i = 0; i < 17; ++i)
        store.updateUseLimitSetting(i, QStringLiteral("new") + QString::number(i));
    (void)store.saveUseLimitSetting();
}

void tst_SettingKill::load()
{
    NetInfoSettingUILogic().GetUseLimitSetting();
}

void tst_SettingKill::addFiles()
{
    QTest::addColumn<bool>("saves");
    QTest::addColumn<QByteArray>("old");
    QTest::addColumn<QByteArray>("expected");
    const QByteArray old = SettingFolder::savedFile("old");
    const QByteArray saved = SettingFolder::savedFile("new");
    const QByteArray first = SettingFolder::firstFile();
    QTest::newRow("saving over a file") << true << old << saved;
    QTest::newRow("saving without a file") << true << QByteArray("missing") << saved;
    QTest::newRow("saving over what is no text") << true << QByteArray("a\0b", 3) << saved;
    QTest::newRow("a first file where none is") << false << QByteArray("missing") << first;
    QTest::newRow("a first file where an empty one is") << false << QByteArray("") << first;
    QTest::newRow("loading a file") << false << old << old;
}

//! The user data folder with \a old as its only file; "missing": without any.
void tst_SettingKill::restore(const QByteArray &old) const
{
    for (const QString &name : m_folder->userNames())
        QVERIFY(QFile::remove(m_folder->userFolder() + QLatin1Char('/') + name));
    if (old != "missing")
        m_folder->write(m_folder->userFile(), old);
}

QByteArray tst_SettingKill::kept() const
{
    return m_folder->content(m_folder->userFile() + QStringLiteral(".kept"));
}

void tst_SettingKill::aKillLeavesTheOldOrTheNewFile_data()
{
    addFiles();
}

void tst_SettingKill::aKillLeavesTheOldOrTheNewFile()
{
    QFETCH(bool, saves);
    QFETCH(QByteArray, old);
    QFETCH(QByteArray, expected);
    const Work work = saves ? saveOther : load;
    int replaced = 0;
    int stop = 0;
    for (TraceResult result; !result.finished;) {
        restore(old);
        result = killAtStop(work, ++stop);
        if (!result.possible)
            QSKIP("this process may not trace its children");
        QVERIFY2(result.finished || result.stops == stop, "the child failed by itself");
        const QByteArray file = m_folder->content(m_folder->userFile());
        QVERIFY2(file == old || file == expected, file.constData());
        if (old.contains('\0'))
            QVERIFY(file == old || kept() == old);
        replaced += file == expected ? 1 : 0;
    }
    QCOMPARE(m_folder->content(m_folder->userFile()), expected);
    QVERIFY(!QFile::exists(m_folder->temporaryFile()));
    std::printf("%s: killed at %d points, at %d of them the new file was there\n",
                QTest::currentDataTag(), stop - 1, replaced - 1);
    QVERIFY(stop - 1 >= 10);
}

void tst_SettingKill::afterAKillTheNextSaveSucceeds()
{
    const QByteArray old = SettingFolder::savedFile("old");
    int left = 0;
    int stop = 0;
    for (TraceResult result; !result.finished;) {
        restore(old);
        result = killAtStop(saveOther, ++stop);
        if (!result.possible)
            QSKIP("this process may not trace its children");
        left += QFile::exists(m_folder->temporaryFile()) ? 1 : 0;
        saveOther();
        QCOMPARE(m_folder->content(m_folder->userFile()), SettingFolder::savedFile("new"));
        QCOMPARE(m_folder->userNames(), QStringList("DataUsageLimit.ini"));
    }
    QVERIFY(left > 0); // so the kills did come between
}

void tst_SettingKill::aFailingCallLeavesTheOldOrTheNewFile_data()
{
    addFiles();
}

void tst_SettingKill::aFailingCallLeavesTheOldOrTheNewFile()
{
    QFETCH(bool, saves);
    QFETCH(QByteArray, old);
    QFETCH(QByteArray, expected);
    const Work work = saves ? saveOther : load;
    restore(old);
    const TraceResult whole = failCall(work, 0, 0);
    if (!whole.possible)
        QSKIP("this process may not change its children's calls");
    const int calls = int(whole.calls.size());
    int unchanged = 0;
    for (const int error : { ENOSPC, EIO, EACCES }) {
        for (int call = 1; call <= calls; ++call) {
            restore(old);
            const TraceResult result = failCall(work, call, error);
            QVERIFY2(result.finished, qPrintable(QString::number(call)));
            const QByteArray file = m_folder->content(m_folder->userFile());
            // Without a readable template the file is empty, and so to be made anew as before.
            const bool stillNone = old == "missing" && !saves && file.isEmpty();
            QVERIFY2(file == old || file == expected || stillNone, file.constData());
            QVERIFY2(!QFile::exists(m_folder->temporaryFile()), qPrintable(QString::number(call)));
            if (old.contains('\0'))
                QVERIFY(file == old || kept() == old);
            unchanged += file == expected ? 0 : 1;
        }
    }
    std::printf("%s: each of %d calls failed with 3 errors, %d times the old file stayed\n",
                QTest::currentDataTag(), calls, unchanged);
    QVERIFY(old == expected || unchanged > 3);
}

void tst_SettingKill::shortWritesAreContinued()
{
    constexpr long kMost = 7;
    const TraceResult result = shortenWrites(saveOther, kMost);
    if (!result.possible)
        QSKIP("this process may not change its children's calls");
    QVERIFY(result.finished);
    const QByteArray saved = SettingFolder::savedFile("new");
    QCOMPARE(m_folder->content(m_folder->userFile()), saved);
    QCOMPARE(result.calls.count(SYS_write), (saved.size() + kMost - 1) / kMost);
}

void tst_SettingKill::theTextIsOnTheDiskBeforeItsNameIs()
{
    const TraceResult result = failCall(saveOther, 0, 0);
    if (!result.possible)
        QSKIP("this process may not trace its children");
    QList<long> order;
    for (const long call : result.calls) {
        if (call == SYS_write || call == SYS_fsync || call == SYS_rename)
            order.append(call);
    }
    QCOMPARE(order, QList<long>({ SYS_write, SYS_fsync, SYS_rename, SYS_fsync }));
}

QTEST_GUILESS_MAIN(tst_SettingKill)
#include "tst_settingkill.moc"
