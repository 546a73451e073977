// A random walk over both limit pages. After every step the pages, the store and its file are what
// the model says. NETINFO_SEED=number takes another walk, or the same one again.

#include <QTest>

#include <cstdio>

#include "SettingWalk.h"

namespace {

constexpr int kSteps = 20000;
constexpr unsigned int kDefaultSeed = 20251;

} // namespace

class tst_SettingWalk : public SettingWalk
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void bothPagesFollowTheModel();
};

void tst_SettingWalk::init()
{
    PluginTest::init();
    begin();
}

void tst_SettingWalk::cleanup()
{
    end();
    PluginTest::cleanup();
}

void tst_SettingWalk::bothPagesFollowTheModel()
{
    bool isGiven = false;
    const unsigned int given = qgetenv("NETINFO_SEED").toUInt(&isGiven);
    const unsigned int number = isGiven ? given : kDefaultSeed;
    std::printf("NETINFO_SEED=%u\n", number);
    seed(number);
    for (int step = 0; step < kSteps; ++step) {
        takeStep();
        const QString wrong = problem();
        if (wrong.isEmpty())
            continue;
        std::printf("step %d of seed %u; the last ones:\n%s\n", step, number,
                    qPrintable(history()));
        QFAIL(qPrintable(wrong));
    }
    std::printf("%d saved, %d refused, %d pages died with their window\n", m_saved, m_refused,
                m_died);
    QVERIFY(m_saved > kSteps / 100 && m_refused > kSteps / 200 && m_died > kSteps / 200);
}

QTEST_MAIN(tst_SettingWalk)
#include "tst_settingwalk.moc"
