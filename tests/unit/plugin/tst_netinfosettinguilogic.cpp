#include "NetInfoSettingUILogic.h"

#include <QDate>
#include <QDir>
#include <QFile>
#include <QtTest>

#include "FakeHost.h"
#include "NetInfoSettingRules.h"
#include "PluginFolder.h"
#include "SettingFolder.h"
#include "TestLog.h"

class tst_NetInfoSettingUILogic : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void theInstanceIsSingleAndStaysAfterItsEnd();
    void indicesAreTheLinesOfTheFile();
    void theUserFileIsRead();
    void keysAndFirstLineAreNotLookedAt();
    void aMissingUserFileIsMadeFromTheTemplate();
    void anEmptyUserFileIsMadeAnew();
    void makingAUserFileLeavesNothingElse();
    void aUserFileIsNotMadeAnew();
    void thePathIsGivenForAnExistingFile();
    void withoutAnyFileThePathIsEmpty();
    void withoutAnyFileThereAreThreeEmptyValues();
    void anEmptyUserFileWithoutTemplateGivesNothing();
    void aTemplateThatCannotBeOpenedGivesAnEmptyUserFile();
    void withoutUserFolderNothingHappens();
    void aMissingUserFolderGivesTheTemplate();
    void readingTwiceAppendsASecondSet();
    void updatingReplacesOneText();
    void updatingCompletesAShortList();
    void updatingOutsideTheListChangesNothing_data();
    void updatingOutsideTheListChangesNothing();
    void valuesOutsideTheListAreEmpty();
    void savingWritesTheWholeFile();
    void savingAnEmptyListWritesEmptyValues();
    void savingWritesTheFirstSetAlone();
    void savingRemovesAnOldTemporaryFile();
    void savingMakesAMissingFile();
    void savingKeepsTheFilesMode();
    void aSavedFileAndAFirstFileReadTheSameStart();
    void theTraceHasTimePathFunctionAndLine();
    void theShippedTemplate();

private:
    static QStringList valuesOf(const NetInfoSettingUILogic &store, int count);
    static QStringList loaded(int count);

    QScopedPointer<SettingFolder> m_folder;
    QScopedPointer<TestLog> m_log;
};

void tst_NetInfoSettingUILogic::init()
{
    resetFakeHost();
    m_folder.reset(new SettingFolder);
    m_log.reset(new TestLog);
}

void tst_NetInfoSettingUILogic::cleanup()
{
    const QStringList problems = m_log->takeProblems();
    m_log.reset();
    QVERIFY2(problems.isEmpty(), qPrintable(problems.join(QLatin1Char(10))));
}

QStringList tst_NetInfoSettingUILogic::valuesOf(const NetInfoSettingUILogic &store, int count)
{
    QStringList values;
    for (int i = 0; i < count; ++i)
        values << store.value(i);
    return values;
}

QStringList tst_NetInfoSettingUILogic::loaded(int count)
{
    NetInfoSettingUILogic store;
    store.GetUseLimitSetting();
    return valuesOf(store, count);
}

void tst_NetInfoSettingUILogic::theInstanceIsSingleAndStaysAfterItsEnd()
{
    m_folder->write(m_folder->userFile(), SettingFolder::savedFile("v"));
    NetInfoSettingUILogic *const first = NetInfoSettingUILogic::GetInstance();
    QVERIFY(first);
    QCOMPARE(NetInfoSettingUILogic::GetInstance(), first);
    QCOMPARE(first->value(0), QString()); // nothing is read yet
    NetInfoSettingUILogic::Destroy();
    QVERIFY(NetInfoSettingUILogic::GetInstance() == first); // dead, as nobody asks for it any more
}

void tst_NetInfoSettingUILogic::indicesAreTheLinesOfTheFile()
{
    QCOMPARE(int(VLS_CHK_RECURRENCE), 0);
    QCOMPARE(int(VLS_RADIO_DAILY), 1);
    QCOMPARE(int(VLS_RADIO_WEEKLY), 2);
    QCOMPARE(int(VLS_RADIO_MONTHLY), 3);
    QCOMPARE(int(VLS_CHK_VOLUME), 4);
    QCOMPARE(int(VLS_CHK_TIME_VOLUME), 5);
    QCOMPARE(int(VLS_SIZE_VOLUME), 6);
    QCOMPARE(int(VLS_SIZE_TIME_VOLUME), 7);
    QCOMPARE(int(VLS_CHK_WARN_BEFORE), 8);
    QCOMPARE(int(VLS_CHK_WARN_AFTER), 9);
    QCOMPARE(int(VLS_SHOW_DATA_WARN_AFTER), 10);
    QCOMPARE(int(VLS_SHOW_DATA_WARN_BEFORE), 11);
    QCOMPARE(int(VLS_SHOW_TIME_WARN_BEFORE), 12);
    QCOMPARE(int(VLS_SHOW_TIME_WARN_AFTER), 13);
    QCOMPARE(int(VLS_START_DATE), 14);
    QCOMPARE(int(VLS_START_WEEK_DATE), 15);
    QCOMPARE(int(VLS_START_MONTH_DATE), 16);
}

void tst_NetInfoSettingUILogic::theUserFileIsRead()
{
    m_folder->write(m_folder->userFile(), SettingFolder::savedFile("v"));
    QCOMPARE(loaded(18), QStringList(SettingFolder::values("v")) << QString());
    QCOMPARE(m_folder->content(m_folder->userFile()), SettingFolder::savedFile("v"));
}

void tst_NetInfoSettingUILogic::keysAndFirstLineAreNotLookedAt()
{
    m_folder->write(m_folder->userFile(), "chkRecurrence=lost\nx=1\n=2\nSizeVolume=12=3");
    QCOMPARE(loaded(4), QStringList({ "1", "2", "12", QString() }));
}

void tst_NetInfoSettingUILogic::aMissingUserFileIsMadeFromTheTemplate()
{
    QCOMPARE(NetInfoSettingUILogic().GetConfigFilePath(), m_folder->userFile());
    QCOMPARE(m_folder->content(m_folder->userFile()), SettingFolder::firstFile());
    const QString today = NetInfoRules::settingDate(QDate::currentDate());
    QCOMPARE(loaded(18),
             QStringList(SettingFolder::values("t")).mid(0, 14) << today << "0"
                                                                << "0" << QString());
}

void tst_NetInfoSettingUILogic::anEmptyUserFileIsMadeAnew()
{
    m_folder->write(m_folder->userFile(), QByteArray());
    QCOMPARE(loaded(1), QStringList("t0"));
    QCOMPARE(m_folder->content(m_folder->userFile()), SettingFolder::firstFile());
}

void tst_NetInfoSettingUILogic::makingAUserFileLeavesNothingElse()
{
    NetInfoSettingUILogic().GetUseLimitSetting();
    QCOMPARE(m_folder->userNames(), QStringList("DataUsageLimit.ini"));
}

void tst_NetInfoSettingUILogic::aUserFileIsNotMadeAnew()
{
    m_folder->write(m_folder->userFile(), "x");
    NetInfoSettingUILogic store;
    QCOMPARE(store.GetConfigFilePath(), m_folder->userFile());
    store.GetUseLimitSetting();
    QCOMPARE(m_folder->content(m_folder->userFile()), QByteArray("x"));
    QCOMPARE(valuesOf(store, 1), QStringList(QString()));
}

void tst_NetInfoSettingUILogic::thePathIsGivenForAnExistingFile()
{
    m_folder->write(m_folder->userFile(), "x");
    QVERIFY(QFile::remove(m_folder->templateFile()));
    QCOMPARE(NetInfoSettingUILogic().GetConfigFilePath(), m_folder->userFile());
}

void tst_NetInfoSettingUILogic::withoutAnyFileThePathIsEmpty()
{
    QVERIFY(QFile::remove(m_folder->templateFile()));
    QCOMPARE(NetInfoSettingUILogic().GetConfigFilePath(), QString());
    QCOMPARE(m_folder->userNames(), QStringList());
    m_folder->write(m_folder->userFile(), QByteArray());
    QCOMPARE(NetInfoSettingUILogic().GetConfigFilePath(), QString());
    QCOMPARE(m_folder->content(m_folder->userFile()), QByteArray());
}

void tst_NetInfoSettingUILogic::withoutAnyFileThereAreThreeEmptyValues()
{
    QVERIFY(QFile::remove(m_folder->templateFile()));
    NetInfoSettingUILogic store;
    store.GetUseLimitSetting();
    QCOMPARE(m_folder->userNames(), QStringList());
    // A second set shows how long the first one is.
    m_folder->write(m_folder->userFile(), SettingFolder::savedFile("v"));
    store.GetUseLimitSetting();
    QCOMPARE(valuesOf(store, 4), QStringList({ QString(), QString(), QString(), "v0" }));
}

void tst_NetInfoSettingUILogic::anEmptyUserFileWithoutTemplateGivesNothing()
{
    QVERIFY(QFile::remove(m_folder->templateFile()));
    m_folder->write(m_folder->userFile(), QByteArray());
    NetInfoSettingUILogic store;
    store.GetUseLimitSetting();
    m_folder->write(m_folder->userFile(), SettingFolder::savedFile("v"));
    store.GetUseLimitSetting();
    QCOMPARE(store.value(0), QStringLiteral("v0"));
}

void tst_NetInfoSettingUILogic::aTemplateThatCannotBeOpenedGivesAnEmptyUserFile()
{
    QVERIFY(QFile::remove(m_folder->templateFile()));
    QVERIFY(QDir().mkdir(m_folder->templateFile()));
    QCOMPARE(NetInfoSettingUILogic().GetConfigFilePath(), m_folder->userFile());
    QCOMPARE(m_folder->content(m_folder->userFile()), QByteArray());
    QCOMPARE(m_folder->userNames(), QStringList("DataUsageLimit.ini"));
}

void tst_NetInfoSettingUILogic::withoutUserFolderNothingHappens()
{
    fakeHost().userDataDirectory.clear();
    NetInfoSettingUILogic store;
    store.GetUseLimitSetting();
    QCOMPARE(store.GetConfigFilePath(), QString());
    store.updateUseLimitSetting(0, "v");
    QCOMPARE(store.saveUseLimitSetting(), false);
    QVERIFY(!QFile::exists("DataUsageLimit.ini"));
    fakeHost().userDataDirectory = m_folder->userFolder() + QLatin1Char('/');
    QCOMPARE(valuesOf(store, 2), QStringList({ "v", QString() }));
}

void tst_NetInfoSettingUILogic::aMissingUserFolderGivesTheTemplate()
{
    QVERIFY(QDir().rmdir(m_folder->userFolder()));
    NetInfoSettingUILogic store;
    QCOMPARE(store.GetConfigFilePath(), m_folder->userFile());
    store.GetUseLimitSetting();
    QCOMPARE(store.saveUseLimitSetting(), true);
    QVERIFY(!QFile::exists(m_folder->userFolder()));
    QCOMPARE(valuesOf(store, 17),
             QStringList(SettingFolder::values("t")).mid(0, 14) << ""
                                                                << ""
                                                                << "");
}

void tst_NetInfoSettingUILogic::readingTwiceAppendsASecondSet()
{
    m_folder->write(m_folder->userFile(), SettingFolder::savedFile("v"));
    NetInfoSettingUILogic store;
    store.GetUseLimitSetting();
    m_folder->write(m_folder->userFile(), SettingFolder::savedFile("w"));
    store.GetUseLimitSetting();
    QCOMPARE(valuesOf(store, 34),
             QStringList(SettingFolder::values("v")) + QStringList(SettingFolder::values("w")));
}

void tst_NetInfoSettingUILogic::updatingReplacesOneText()
{
    m_folder->write(m_folder->userFile(), SettingFolder::savedFile("v"));
    NetInfoSettingUILogic store;
    store.GetUseLimitSetting();
    store.updateUseLimitSetting(VLS_SIZE_VOLUME, "new");
    QStringList expected(SettingFolder::values("v"));
    expected[6] = "new";
    QCOMPARE(valuesOf(store, 17), expected);
    QCOMPARE(m_folder->content(m_folder->userFile()), SettingFolder::savedFile("v"));
}

void tst_NetInfoSettingUILogic::updatingCompletesAShortList()
{
    NetInfoSettingUILogic store;
    store.updateUseLimitSetting(3, "v");
    m_folder->write(m_folder->userFile(), SettingFolder::savedFile("w"));
    store.GetUseLimitSetting();
    QCOMPARE(store.value(3), QStringLiteral("v"));
    QCOMPARE(store.value(16), QString());
    QCOMPARE(store.value(17), QStringLiteral("w0"));
}

void tst_NetInfoSettingUILogic::updatingOutsideTheListChangesNothing_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("below") << -1;
    QTest::newRow("just above") << 17;
    QTest::newRow("within a second set") << 20;
    QTest::newRow("far above") << std::numeric_limits<int>::max();
    QTest::newRow("far below") << std::numeric_limits<int>::min();
}

void tst_NetInfoSettingUILogic::updatingOutsideTheListChangesNothing()
{
    QFETCH(int, index);
    m_folder->write(m_folder->userFile(), SettingFolder::savedFile("v"));
    NetInfoSettingUILogic store;
    store.updateUseLimitSetting(index, "new");
    store.GetUseLimitSetting();
    store.GetUseLimitSetting();
    store.updateUseLimitSetting(index, "new");
    const QStringList set(SettingFolder::values("v"));
    QCOMPARE(valuesOf(store, 35), set + set + QStringList(QString()));
}

void tst_NetInfoSettingUILogic::valuesOutsideTheListAreEmpty()
{
    m_folder->write(m_folder->userFile(), SettingFolder::savedFile("v"));
    NetInfoSettingUILogic store;
    QCOMPARE(store.value(0), QString());
    store.GetUseLimitSetting();
    QCOMPARE(store.value(-1), QString());
    QCOMPARE(store.value(17), QString());
    QCOMPARE(store.value(std::numeric_limits<int>::max()), QString());
}

void tst_NetInfoSettingUILogic::savingWritesTheWholeFile()
{
    m_folder->write(m_folder->userFile(), SettingFolder::savedFile("v"));
    NetInfoSettingUILogic store;
    store.GetUseLimitSetting();
    store.updateUseLimitSetting(VLS_START_MONTH_DATE, "30");
    QCOMPARE(store.saveUseLimitSetting(), true);
    QList<QString> expected = SettingFolder::values("v");
    expected[16] = "30";
    QCOMPARE(m_folder->content(m_folder->userFile()), NetInfoRules::settingFile(expected));
    QCOMPARE(m_folder->userNames(), QStringList("DataUsageLimit.ini"));
}

void tst_NetInfoSettingUILogic::savingAnEmptyListWritesEmptyValues()
{
    QCOMPARE(NetInfoSettingUILogic().saveUseLimitSetting(), true);
    QCOMPARE(m_folder->content(m_folder->userFile()), NetInfoRules::settingFile({}));
}

void tst_NetInfoSettingUILogic::savingWritesTheFirstSetAlone()
{
    m_folder->write(m_folder->userFile(), SettingFolder::savedFile("v"));
    NetInfoSettingUILogic store;
    store.GetUseLimitSetting();
    m_folder->write(m_folder->userFile(), SettingFolder::savedFile("w"));
    store.GetUseLimitSetting();
    QCOMPARE(store.saveUseLimitSetting(), true);
    QCOMPARE(m_folder->content(m_folder->userFile()), SettingFolder::savedFile("v"));
}

void tst_NetInfoSettingUILogic::savingRemovesAnOldTemporaryFile()
{
    m_folder->write(m_folder->temporaryFile(),
                    "half a file that is longer than " + QByteArray(900, 'x'));
    QCOMPARE(NetInfoSettingUILogic().saveUseLimitSetting(), true);
    QCOMPARE(m_folder->content(m_folder->userFile()), NetInfoRules::settingFile({}));
    QCOMPARE(m_folder->userNames(), QStringList("DataUsageLimit.ini"));
}

void tst_NetInfoSettingUILogic::savingMakesAMissingFile()
{
    QVERIFY(QFile::remove(m_folder->templateFile()));
    NetInfoSettingUILogic store;
    store.updateUseLimitSetting(0, "true");
    QCOMPARE(store.saveUseLimitSetting(), true);
    QCOMPARE(m_folder->content(m_folder->userFile()), NetInfoRules::settingFile({ "true" }));
}

void tst_NetInfoSettingUILogic::savingKeepsTheFilesMode()
{
    m_folder->write(m_folder->userFile(), SettingFolder::savedFile("v"));
    const QFile::Permissions owner = QFile::ReadOwner | QFile::WriteOwner;
    QVERIFY(QFile::setPermissions(m_folder->userFile(), owner));
    QCOMPARE(NetInfoSettingUILogic().saveUseLimitSetting(), true);
    const QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup
        | QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    QCOMPARE(QFile::permissions(m_folder->userFile()) & (owner | others), owner);
}

void tst_NetInfoSettingUILogic::aSavedFileAndAFirstFileReadTheSameStart()
{
    const QStringList first = loaded(17);
    NetInfoSettingUILogic store;
    store.GetUseLimitSetting();
    QCOMPARE(store.saveUseLimitSetting(), true);
    QVERIFY(m_folder->content(m_folder->userFile()) != SettingFolder::firstFile());
    QVERIFY(
        m_folder->content(m_folder->userFile()).endsWith("\nstartweekdate=0\nstartmonthdate=0"));
    QCOMPARE(loaded(17), first);
}

void tst_NetInfoSettingUILogic::theTraceHasTimePathFunctionAndLine()
{
    NetInfoSettingUILogic store;
    m_log->takeLines();
    store.GetUseLimitSetting();
    store.updateUseLimitSetting(0, "v");
    QVERIFY(store.saveUseLimitSetting());
    QStringList functions;
    static const QRegularExpression shape(
        "^(Start|End  ): <time>: ../../src/NetInfoUIExPlugin/NetInfoSettingUILogic.cpp: (\\w+) "
        "\\d+$");
    const QStringList lines = m_log->takeLines();
    for (const QString &line : lines) {
        const QRegularExpressionMatch match = shape.match(line);
        QVERIFY2(match.hasMatch(), qPrintable(line));
        functions << match.captured(1) + match.captured(2);
    }
    QCOMPARE(functions,
             QStringList({ "StartGetUseLimitSetting", "StartGetConfigFilePath",
                           "End  GetConfigFilePath", "End  GetUseLimitSetting",
                           "StartupdateUseLimitSetting", "End  updateUseLimitSetting",
                           "StartsaveUseLimitSetting", "End  saveUseLimitSetting" }));
}

void tst_NetInfoSettingUILogic::theShippedTemplate()
{
    PluginFolder shipped;
    shipped.useShippedFiles();
    const QStringList values = loaded(18);
    const QString today = NetInfoRules::settingDate(QDate::currentDate());
    QCOMPARE(
        values,
        QStringList({ "true", "false", "false", "true", "false", "false", "1024", "100", "true",
                      "true", "true", "true", "true", "true", today, "0", "0", QString() }));
    // Line for line what the saver writes, up to the three lines that it has not.
    const QByteArray file = m_folder->content(m_folder->userFile());
    const QByteArray saved = NetInfoRules::settingFile(values.mid(0, 17));
    const int start = int(file.indexOf("startdate="));
    QCOMPARE(file.left(start), saved.left(start));
    QCOMPARE(file.mid(start), "startdate=" + today.toLatin1() + "\nstartday=0\nstartweekdate=0");
}

QTEST_GUILESS_MAIN(tst_NetInfoSettingUILogic)
#include "tst_netinfosettinguilogic.moc"
