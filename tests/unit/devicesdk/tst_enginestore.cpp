// What the engine does with its store: when it commits, how it goes on, what it thins out.

#include <QtTest>

#include "EngineStage.h"

using velq::Report;

class tst_EngineStore : public QObject, private EngineStage
{
    Q_OBJECT
private slots:
    void init()
    {
        setUp();
    }
    void cleanup()
    {
        tearDown();
    }

    void commitsEveryFewTicks();
    void aLittleWaitsLonger();
    void aNewZoneMovesNoTotal();
    void aNewEngineGoesOnWhereTheLastWasKilled();
    void aStoreThatCanBeReadLateLosesNothing();
    void theUsedDeviceIsRemembered();
    void hoursAreThinnedOutByPolicy();
    void afterClosingAnswersGoOnFromMemory();
    void nothingWaitsOverTheEndOfAnHour();
    void aNewStoreIsToldWhatTheLastOneKnew();
    void aLookWithoutMemoryIsMadeUpForByTheNext();
};

void tst_EngineStore::commitsEveryFewTicks()
{
    const char *count = "SELECT coalesce(sum(download), 0) FROM hour";
    for (int i = 1; i < velq::kCommitSeconds; ++i) {
        secondOf(1, 0);
        QCOMPARE(runSql(m_folder->file(), count), 0LL);
    }
    secondOf(1, 0);
    QCOMPARE(runSql(m_folder->file(), count), qint64(velq::kCommitSeconds));
}

//! A little of what is known already may wait for a minute.
void tst_EngineStore::aLittleWaitsLonger()
{
    constexpr qint64 kMuch = 1 << 20;
    const char *count = "SELECT coalesce(sum(download), 0) FROM hour";
    const auto commitNow = [this](quint64 bytes) {
        secondOf(bytes, 0);
        for (int i = 1; i < velq::kCommitSeconds; ++i)
            secondOf(0, 0);
    };
    commitNow(1);
    for (int i = 1; i < velq::kLongestWaitSeconds; ++i) {
        secondOf(1, 0);
        QCOMPARE(runSql(m_folder->file(), count), 1LL);
    }
    secondOf(1, 0);
    QCOMPARE(runSql(m_folder->file(), count), qint64(1 + velq::kLongestWaitSeconds));
    commitNow(kMuch - 1);
    QCOMPARE(runSql(m_folder->file(), count), qint64(1 + velq::kLongestWaitSeconds));
    commitNow(1);
    QCOMPARE(runSql(m_folder->file(), count), qint64(1 + velq::kLongestWaitSeconds) + kMuch);
}

//! The system's zone changes while the engine runs; what is booked keeps its day.
void tst_EngineStore::aNewZoneMovesNoTotal()
{
    constexpr int kDay = 1;
    constexpr int kYear = 5;
    const QByteArray zone = qgetenv("TZ");
    secondOf(1000, 10);
    const velq::DaySpan before = m_engine->periodOf(kDay);
    qputenv("TZ", "Ahead-14"); // there it is tomorrow
    for (int i = 1; i < velq::kZoneSeconds; ++i) {
        QCOMPARE(m_engine->periodOf(kDay).from, before.from);
        secondOf(0, 0);
    }
    const velq::DaySpan after = m_engine->periodOf(kDay);
    secondOf(2000, 20);
    const Report day = get(kDay);
    const Report year = get(kYear);
    qputenv("TZ", zone);
    QCOMPARE(after.from, before.from + 1);
    QCOMPARE(day.download, quint64(2000));
    QCOMPARE(day.upload, quint64(20));
    QCOMPARE(year.download, quint64(3000));
    QCOMPARE(year.upload, quint64(30));
    m_engine->close();
    QCOMPARE(runSql(m_folder->file(), "SELECT count(DISTINCT day) FROM hour"), 2LL);
    QCOMPARE(runSql(m_folder->file(), "SELECT sum(download) FROM hour"), 3000LL);
}

void tst_EngineStore::aNewEngineGoesOnWhereTheLastWasKilled()
{
    secondOf(1000, 10);
    m_engine->ledger().commit();
    secondOf(200, 2); // not committed any more
    restart();
    m_world.flow(30, 3); // nobody counts
    m_engine->sample();
    QCOMPARE(get(1).download, std::uint64_t(1230));
    QCOMPARE(get(1).upload, std::uint64_t(15));
    std::vector<velq::Reason> reasons;
    QVERIFY(m_engine->ledger().reasons(10, reasons));
    QCOMPARE(int(reasons.size()), 1);
    QCOMPARE(reasons[0].download, std::int64_t(230));
}

void tst_EngineStore::aStoreThatCanBeReadLateLosesNothing()
{
    secondOf(1000, 10);
    QVERIFY(m_engine->useDevice("va"));
    m_engine->ledger().commit();
    m_engine.reset();
    m_world.flow(200, 2); // nobody counts
    const QString away = m_folder->file() + QStringLiteral(".away");
    QVERIFY(QFile::rename(m_folder->file(), away));
    QVERIFY(QDir().mkdir(m_folder->file())); // cannot be opened
    start();
    m_engine->sample();
    for (int i = 0; i < 6; ++i)
        secondOf(30, 3);
    QCOMPARE(get(1).download, std::uint64_t(180));
    QVERIFY(QDir().rmdir(m_folder->file()));
    QVERIFY(QFile::rename(away, m_folder->file()));
    m_engine->ledger().commit();
    m_engine->ledger().commit(); // even before a look
    for (int i = 0; i < 12; ++i)
        secondOf(0, 0);
    QCOMPARE(get(1).download, std::uint64_t(1380));
    QCOMPARE(get(1).upload, std::uint64_t(30));
    QCOMPARE(m_engine->usedDevice(), std::string("va"));
    QCOMPARE(runSql(m_folder->file(), "SELECT sum(download) FROM day"), 1380LL);
    restart();
    m_engine->sample();
    QCOMPARE(get(1).download, std::uint64_t(1380));
}

void tst_EngineStore::theUsedDeviceIsRemembered()
{
    m_world.script.connect(4, "vb");
    secondOf(0, 0);
    QVERIFY(m_engine->useDevice("va"));
    secondOf(10, 0);
    QCOMPARE(m_engine->live().interface, std::string("va"));
    m_engine->ledger().commit();
    restart();
    m_engine->sample();
    QCOMPARE(m_engine->usedDevice(), std::string("va"));
    QCOMPARE(m_engine->live().interface, std::string("va"));
    m_engine->nameDevice("vb"); // the host's own choice comes first
    secondOf(0, 0);
    QCOMPARE(m_engine->live().interface, std::string("vb"));
    m_engine->nameDevice({});
    secondOf(0, 0);
    QCOMPARE(m_engine->live().interface, std::string("va"));
    QVERIFY(m_engine->useDevice({}));
    secondOf(0, 0);
    QCOMPARE(m_engine->live().interface, std::string("vb"));
}

void tst_EngineStore::hoursAreThinnedOutByPolicy()
{
    const auto count = [this] { return runSql(m_folder->file(), "SELECT count(*) FROM hour"); };
    secondOf(1, 0);
    for (int i = 0; i < 4; ++i)
        secondOf(0, 0);
    QCOMPARE(count(), 1LL);
    m_engine->setKeptDays(0);
    jump(m_world.wall + 3000 * qint64(86400));
    for (int i = 0; i < 5; ++i)
        secondOf(1, 0);
    m_engine->ledger().commit();
    QCOMPARE(count(), 2LL);
    m_engine->setKeptDays(velq::kKeptDays);
    jump(m_world.wall + 86400);
    for (int i = 0; i < 5; ++i)
        secondOf(1, 0);
    QCOMPARE(count(), 3LL); // the clock may be wrong
    jump(m_world.wall + 2 * 86400);
    for (int i = 0; i < 5; ++i)
        secondOf(1, 0);
    QCOMPARE(count(), 3LL); // of four
    QCOMPARE(runSql(m_folder->file(), "SELECT sum(download) FROM day"), 16LL);
}

void tst_EngineStore::afterClosingAnswersGoOnFromMemory()
{
    secondOf(1000, 10);
    m_engine->close();
    QCOMPARE(runSql(m_folder->file(), "SELECT download FROM hour"), 1000LL);
    QCOMPARE(get(0).download, std::uint64_t(1000));
    QCOMPARE(get(1).download, std::uint64_t(1000));
    QVERIFY(!m_engine->reset(0));
    QCOMPARE(get(0).download, std::uint64_t(1000));
}

void tst_EngineStore::nothingWaitsOverTheEndOfAnHour()
{
    jump(m_world.wall + 3597);
    secondOf(1, 0); // 12:59:58
    secondOf(10, 0);
    secondOf(100, 0); // 13:00:00
    secondOf(1000, 0);
    m_engine->ledger().commit();
    const char *sums
        = "SELECT download FROM hour WHERE download > 0 ORDER BY start LIMIT 1 OFFSET ";
    QCOMPARE(runSql(m_folder->file(), QByteArray(sums) + "0"), 11LL);
    QCOMPARE(runSql(m_folder->file(), QByteArray(sums) + "1"), 1100LL);
}

void tst_EngineStore::aNewStoreIsToldWhatTheLastOneKnew()
{
    secondOf(1000, 10);
    QVERIFY(m_engine->useDevice("va"));
    m_engine->ledger().commit();
    for (const char *ending : { "", "-wal", "-shm" })
        QVERIFY(QFile::remove(m_folder->file() + QLatin1String(ending)));
    m_engine->ledger().commit();
    m_engine->sample();
    m_engine->ledger().commit();
    QCOMPARE(runSql(m_folder->file(), "SELECT count(*) FROM device WHERE interface = 'va'"), 1LL);
    QCOMPARE(runSql(m_folder->file(), "SELECT download FROM mark WHERE name = 'va'"), 6000LL);
    QCOMPARE(runSql(m_folder->file(), "SELECT value = 'va' FROM setting WHERE name = 'device'"),
             1LL);
}

void tst_EngineStore::aLookWithoutMemoryIsMadeUpForByTheNext()
{
    secondOf(1000, 10);
    m_world.noMemory = true;
    secondOf(500, 5);
    secondOf(30, 3);
    m_world.noMemory = false;
    secondOf(2, 1);
    secondOf(0, 0);
    QCOMPARE(get(1).download, std::uint64_t(1532));
    QCOMPARE(get(1).upload, std::uint64_t(19));
}

QTEST_GUILESS_MAIN(tst_EngineStore)
#include "tst_enginestore.moc"
