#include <PeriodStartWatch.h>

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include "SettingsFile.h"
#include "TestLog.h"

namespace {

using Told = QVector<QPair<int, int>>;

} // namespace

class tst_PeriodStartWatch : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void theFirstCheckTellsTheDefault();
    void theFirstCheckTellsWhatIsSaved();
    void everyReplacementIsTold();
    void aFileThatComesAndGoesIsTold();
    void whatStaysTheSameIsNotToldAgain();
    void aChangeInsideTheFileIsFoundByACheck();
    void anotherFolderOfTheNameIsFoundByACheck();
    void aRefusedStartIsToldAgain();
    void withoutAFolderTheDefaultIsTold();

private:
    [[nodiscard]] PeriodStartWatch::Tell tell();
    void start();

    QScopedPointer<TestLog> m_log;
    QScopedPointer<QTemporaryDir> m_home;
    QScopedPointer<PeriodStartWatch> m_watch;
    QString m_folder; // with a separator
    QString m_file;
    Told m_told;
    int m_answer = 0;
};

void tst_PeriodStartWatch::init()
{
    m_log.reset(new TestLog);
    m_home.reset(new QTemporaryDir);
    m_folder = m_home->filePath("data/");
    m_file = m_folder + "DataUsageLimit.ini";
    QVERIFY(QDir().mkpath(m_folder));
    m_told.clear();
    m_answer = 0;
}

void tst_PeriodStartWatch::cleanup()
{
    m_watch.reset();
    const QStringList problems = m_log->takeProblems();
    m_log.reset();
    QCOMPARE(problems, QStringList());
}

PeriodStartWatch::Tell tst_PeriodStartWatch::tell()
{
    return [this](int weekday, int day) {
        m_told.append({ weekday, day });
        return m_answer;
    };
}

void tst_PeriodStartWatch::start()
{
    m_watch.reset(new PeriodStartWatch(m_folder, tell()));
    m_watch->check();
}

void tst_PeriodStartWatch::theFirstCheckTellsTheDefault()
{
    start();
    QCOMPARE(m_told, Told({ { 0, 1 } }));
}

void tst_PeriodStartWatch::theFirstCheckTellsWhatIsSaved()
{
    QVERIFY(SettingsFile::replace(m_file, 3, 30));
    start();
    QCOMPARE(m_told, Told({ { 3, 31 } }));
}

void tst_PeriodStartWatch::everyReplacementIsTold()
{
    QVERIFY(SettingsFile::replace(m_file, 3, 30));
    start();
    QSignalSpy changed(m_watch.data(), &PeriodStartWatch::changed);
    for (int day = 0; day < 5; ++day) {
        m_told.clear();
        QVERIFY(SettingsFile::replace(m_file, 2, day));
        QTRY_COMPARE(m_told, Told({ { 2, day + 1 } }));
    }
    QCOMPARE(changed.count(), 5);
}

void tst_PeriodStartWatch::aFileThatComesAndGoesIsTold()
{
    start();
    for (int round = 0; round < 3; ++round) {
        m_told.clear();
        QVERIFY(SettingsFile::replace(m_file, 4, 9));
        QTRY_COMPARE(m_told, Told({ { 4, 10 } }));
        m_told.clear();
        QVERIFY(QFile::remove(m_file));
        QTRY_COMPARE(m_told, Told({ { 0, 1 } }));
    }
}

void tst_PeriodStartWatch::whatStaysTheSameIsNotToldAgain()
{
    QVERIFY(SettingsFile::replace(m_file, 3, 30));
    start();
    QSignalSpy changed(m_watch.data(), &PeriodStartWatch::changed);
    QVERIFY(SettingsFile::replace(m_file, 3, 30));
    m_watch->check();
    m_watch->check();
    QVERIFY(SettingsFile::replace(m_file, 5, 30)); // told once the one before has been seen
    QTRY_COMPARE(m_told, Told({ { 3, 31 }, { 5, 31 } }));
    QCOMPARE(changed.count(), 1);
}

void tst_PeriodStartWatch::aChangeInsideTheFileIsFoundByACheck()
{
    QVERIFY(SettingsFile::replace(m_file, 3, 30));
    start();
    QVERIFY(SettingsFile::write(m_file, SettingsFile::text(4, 30))); // as long as before
    m_watch->check();
    QCOMPARE(m_told, Told({ { 3, 31 }, { 4, 31 } }));
}

void tst_PeriodStartWatch::anotherFolderOfTheNameIsFoundByACheck()
{
    QVERIFY(SettingsFile::replace(m_file, 3, 30));
    start();
    QVERIFY(QDir(m_folder).removeRecursively());
    QTRY_COMPARE(m_told, Told({ { 3, 31 }, { 0, 1 } }));
    QVERIFY(QDir().mkpath(m_folder));
    QVERIFY(SettingsFile::replace(m_file, 1, 1));
    m_watch->check();
    QCOMPARE(m_told, Told({ { 3, 31 }, { 0, 1 }, { 1, 2 } }));
}

void tst_PeriodStartWatch::aRefusedStartIsToldAgain()
{
    m_answer = 1;
    m_watch.reset(new PeriodStartWatch(m_folder, tell()));
    QSignalSpy changed(m_watch.data(), &PeriodStartWatch::changed);
    m_watch->check();
    m_watch->check();
    QCOMPARE(m_told, Told({ { 0, 1 }, { 0, 1 } }));
    QCOMPARE(changed.count(), 0);
    m_answer = 0;
    m_watch->check();
    m_watch->check();
    QCOMPARE(m_told.size(), 3);
    QCOMPARE(changed.count(), 1);
}

void tst_PeriodStartWatch::withoutAFolderTheDefaultIsTold()
{
    m_watch.reset(new PeriodStartWatch(QString(), tell()));
    m_watch->check();
    QCOMPARE(m_told, Told({ { 0, 1 } }));
}

QTEST_GUILESS_MAIN(tst_PeriodStartWatch)
#include "tst_periodstartwatch.moc"
