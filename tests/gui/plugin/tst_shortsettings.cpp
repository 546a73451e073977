// A settings file without the period's start, read by the controller and the settings page. The
// store lives as long as the process, so this needs one of its own.

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include "FakeHost.h"
#include "NetInfoSettingUILogic.h"
#include "NetInfoSettingUIPlugin.h"
#include "NetInfoUIService.h"
#include "PluginFolder.h"

class tst_ShortSettings : public QObject
{
    Q_OBJECT
private slots:
    void missingValuesStayEmpty();
};

void tst_ShortSettings::missingValuesStayEmpty()
{
    resetFakeHost();
    PluginFolder folder;
    folder.useShippedFiles();
    QTemporaryDir user;
    fakeHost().userDataDirectory = user.path() + QLatin1Char('/');
    const QString path = user.filePath(QStringLiteral("DataUsageLimit.ini"));
    QVERIFY(QFile::copy(folder.path() + QLatin1String("DataUsageLimit.ini"), path));

    CNetInfoUIService::instance();
    NetInfoSettingUIPlugin *const page = NetInfoSettingUIPlugin::GetInstance();
    QCOMPARE(page->getVolumeLimitSettings(VLS_CHK_RECURRENCE), QStringLiteral("true"));
    QCOMPARE(page->getVolumeLimitSettings(VLS_START_DATE), QString());
    QCOMPARE(page->getVolumeLimitSettings(VLS_START_WEEK_DATE), QString());
    QCOMPARE(page->getVolumeLimitSettings(VLS_START_MONTH_DATE), QString());
    QVERIFY(NetInfoSettingUILogic::GetInstance()->saveUseLimitSetting());
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().endsWith("\nstartdate=\nstartweekdate=\nstartmonthdate="));
    CNetInfoUIService::Destroy();
}

QTEST_MAIN(tst_ShortSettings)
#include "tst_shortsettings.moc"
