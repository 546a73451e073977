// The settings page before anybody has asked for the settings store, which lives as long as the
// process: the order of these tests counts.

#include <QTemporaryDir>
#include <QtTest>

#include "FailingAllocator.h"
#include "FakeHost.h"
#include "NetInfoSettingUIPlugin.h"
#include "PluginFolder.h"

class tst_SettingPageFresh : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void withoutAPageThereIsNone();
    void withoutAStoreThereIsNothingToSave();
    void theFirstQuestionReadsTheFile();

private:
    QScopedPointer<PluginFolder> m_folder;
    QScopedPointer<QTemporaryDir> m_user;
    QString m_file;
};

void tst_SettingPageFresh::init()
{
    resetFakeHost();
    m_folder.reset(new PluginFolder);
    m_folder->useShippedFiles();
    m_user.reset(new QTemporaryDir);
    fakeHost().userDataDirectory = m_user->path() + QLatin1Char('/');
    m_file = m_user->filePath(QStringLiteral("DataUsageLimit.ini"));
}

void tst_SettingPageFresh::cleanup()
{
    NetInfoSettingUIPlugin::ReleaseInstance();
}

void tst_SettingPageFresh::withoutAPageThereIsNone()
{
    g_failAt = 1;
    QVERIFY(!NetInfoSettingUIPlugin::GetInstance());
    QCOMPARE(g_failAt, 0);
    NetInfoSettingUIPlugin::ReleaseInstance();
    QVERIFY(NetInfoSettingUIPlugin::GetInstance());
}

void tst_SettingPageFresh::withoutAStoreThereIsNothingToSave()
{
    NetInfoSettingUIPlugin *const settings = NetInfoSettingUIPlugin::GetInstance();
    const auto lacksStore = [](const auto &call) {
        g_failAt = 1;
        const bool answer = call();
        const bool asked = g_failAt == 0;
        g_failAt = 0;
        return asked && answer;
    };
    QVERIFY(
        lacksStore([&] { return settings->getVolumeLimitSettings(VLS_SIZE_VOLUME).isEmpty(); }));
    QVERIFY(lacksStore([&] { return !settings->saveLimit(); }));
    QVERIFY(lacksStore([&] { return !settings->SaveNetInfoSettings(); }));
    settings->saveWarning();
    QVERIFY(!QFile::exists(m_file));
    QVERIFY(fakeHost().messages.isEmpty());
}

void tst_SettingPageFresh::theFirstQuestionReadsTheFile()
{
    const auto write = [this](const QByteArray &size) {
        QFile file(m_file);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[uselimit]\na=true\na=\na=\na=\na=\na=\na=" + size + "\na=9");
    };
    NetInfoSettingUIPlugin *const settings = NetInfoSettingUIPlugin::GetInstance();
    write("77");
    QCOMPARE(settings->getVolumeLimitSettings(VLS_SIZE_VOLUME), QStringLiteral("77"));
    write("88");
    QCOMPARE(settings->getVolumeLimitSettings(VLS_SIZE_VOLUME), QStringLiteral("77"));
    QCOMPARE(settings->getVolumeLimitSettings(VLS_CHK_RECURRENCE), QStringLiteral("true"));
    QCOMPARE(settings->getVolumeLimitSettings(VLS_SIZE_TIME_VOLUME), QStringLiteral("9"));
    QCOMPARE(settings->getVolumeLimitSettings(VLS_START_MONTH_DATE), QString()); // not in the file
    NetInfoSettingUIPlugin::ReleaseInstance(); // the next page loads once more; the first set
                                               // counts
    QCOMPARE(NetInfoSettingUIPlugin::GetInstance()->getVolumeLimitSettings(VLS_SIZE_VOLUME),
             QStringLiteral("77"));
}

QTEST_MAIN(tst_SettingPageFresh)
#include "tst_settingpagefresh.moc"
