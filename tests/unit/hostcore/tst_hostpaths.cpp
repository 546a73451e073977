#include <HostPaths.h>

#include <host/CommonUtils.h>

#include <QTemporaryDir>
#include <QtTest>

#include "TestLog.h"

#include <sys/stat.h>

namespace {

int modeOf(const QString &path)
{
    struct stat info = {};
    return ::stat(QFile::encodeName(path).constData(), &info) == 0 ? int(info.st_mode & 0777) : -1;
}

} // namespace

class tst_HostPaths : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void theLibraryPathIsBesideTheProgram();
    void theEnvironmentNamesTheLibraryPath_data();
    void theEnvironmentNamesTheLibraryPath();
    void theSetterBeatsTheEnvironment();
    void theTextsAreBesideTheProgram();
    void theDataFolderIsInTheUsersDataFolder();
    void theDataFolderIsForTheUserAlone();
    void anExistingFolderKeepsItsMode();
    void theSetterNamesTheDataFolder();
    void aFolderThatCannotBeMadeIsEmpty();
    void aFileInTheWayGivesNoFolder();

private:
    QScopedPointer<TestLog> m_log;
    QScopedPointer<QTemporaryDir> m_home;
};

void tst_HostPaths::init()
{
    m_home.reset(new QTemporaryDir);
    qputenv("XDG_DATA_HOME", QFile::encodeName(m_home->path()));
    m_log.reset(new TestLog);
}

void tst_HostPaths::cleanup()
{
    HostPaths::setLibraryPath(QString());
    HostPaths::setUserDataDirectory(QString());
    qunsetenv("SKYLET_LIBRARY_PATH");
    const QStringList problems = m_log->takeProblems();
    m_log.reset();
    QCOMPARE(problems, QStringList());
}

void tst_HostPaths::theLibraryPathIsBesideTheProgram()
{
    QCOMPARE(CommonUtils::GetPluginLibraryPath(), QString(NETINFO_BUILT_LIBRARY_PATH));
}

void tst_HostPaths::theEnvironmentNamesTheLibraryPath_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QString>("expected");
    const QString here = QDir::currentPath();
    QTest::newRow("as it is") << QByteArray("/a/b") << "/a/b";
    QTest::newRow("separators at the end go") << QByteArray("/a/b//") << "/a/b";
    QTest::newRow("dots go") << QByteArray("/a/./c/../b/") << "/a/b";
    QTest::newRow("a relative path becomes absolute") << QByteArray("a/b") << here + "/a/b";
    QTest::newRow("the root") << QByteArray("/") << "";
}

void tst_HostPaths::theEnvironmentNamesTheLibraryPath()
{
    QFETCH(QByteArray, value);
    qputenv("SKYLET_LIBRARY_PATH", value);
    QTEST(CommonUtils::GetPluginLibraryPath(), "expected");
}

void tst_HostPaths::theSetterBeatsTheEnvironment()
{
    qputenv("SKYLET_LIBRARY_PATH", "/a");
    HostPaths::setLibraryPath("/b/");
    QCOMPARE(CommonUtils::GetPluginLibraryPath(), QString("/b"));
    HostPaths::setLibraryPath(QString());
    QCOMPARE(CommonUtils::GetPluginLibraryPath(), QString("/a"));
}

void tst_HostPaths::theTextsAreBesideTheProgram()
{
    QCOMPARE(HostPaths::languageDirectory(), QString(NETINFO_BUILT_LANG));
}

void tst_HostPaths::theDataFolderIsInTheUsersDataFolder()
{
    QCOMPARE(CommonUtils::getUserDataDirectory(), m_home->path() + "/skylet/");
    QVERIFY(QFileInfo(m_home->path() + "/skylet").isDir());
}

void tst_HostPaths::theDataFolderIsForTheUserAlone()
{
    qputenv("XDG_DATA_HOME", QFile::encodeName(m_home->filePath("new/deeper")));
    QCOMPARE(CommonUtils::getUserDataDirectory(), m_home->filePath("new/deeper/skylet/"));
    QCOMPARE(modeOf(m_home->filePath("new/deeper/skylet")), 0700);
    QCOMPARE(modeOf(m_home->filePath("new/deeper")), 0700);
    QCOMPARE(modeOf(m_home->filePath("new")), 0700);
}

void tst_HostPaths::anExistingFolderKeepsItsMode()
{
    const QByteArray path = QFile::encodeName(m_home->filePath("skylet"));
    QCOMPARE(::mkdir(path.constData(), 0755), 0);
    QCOMPARE(::chmod(path.constData(), 0755), 0);
    QVERIFY(!CommonUtils::getUserDataDirectory().isEmpty());
    QCOMPARE(modeOf(m_home->filePath("skylet")), 0755);
}

void tst_HostPaths::theSetterNamesTheDataFolder()
{
    HostPaths::setUserDataDirectory(m_home->filePath("mine"));
    QCOMPARE(CommonUtils::getUserDataDirectory(), m_home->filePath("mine/"));
    QCOMPARE(modeOf(m_home->filePath("mine")), 0700);
    HostPaths::setUserDataDirectory(m_home->filePath("mine//"));
    QCOMPARE(CommonUtils::getUserDataDirectory(), m_home->filePath("mine/"));
}

void tst_HostPaths::aFolderThatCannotBeMadeIsEmpty()
{
    HostPaths::setUserDataDirectory("/proc/nowhere");
    QVERIFY(CommonUtils::getUserDataDirectory().isEmpty());
}

void tst_HostPaths::aFileInTheWayGivesNoFolder()
{
    QFile file(m_home->filePath("skylet"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(CommonUtils::getUserDataDirectory().isEmpty());
    HostPaths::setUserDataDirectory(m_home->filePath("skylet/below"));
    QVERIFY(CommonUtils::getUserDataDirectory().isEmpty());
}

QTEST_GUILESS_MAIN(tst_HostPaths)
#include "tst_hostpaths.moc"
