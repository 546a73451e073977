#include "Files.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

using namespace velqctl;

class tst_OutputFiles : public QObject
{
    Q_OBJECT
private slots:
    void aFileIsReplacedAsAWhole();
    void aNewFileHasTheUsualPermissions();
    void aPipeIsWrittenTo();
    void failuresNameTheFileAndLeaveNothing();
    void aClosedFileIsAnError();

private:
    [[nodiscard]] std::string path(const char *name) const
    {
        return m_folder.filePath(name).toStdString();
    }
    [[nodiscard]] QByteArray content(const char *name) const
    {
        QFile file(m_folder.filePath(name));
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray("cannot be read");
    }

    QTemporaryDir m_folder;
};

void tst_OutputFiles::aFileIsReplacedAsAWhole()
{
    QCOMPARE(replaceFile(path("a"), "a long first text\n"), std::string());
    QFile reader(m_folder.filePath("a"));
    QVERIFY(reader.open(QFile::ReadOnly));
    QCOMPARE(replaceFile(path("a"), "second\n"), std::string());
    QCOMPARE(content("a"), QByteArray("second\n"));
    QCOMPARE(reader.readAll(),
             QByteArray("a long first text\n")); // who had it open is not disturbed
    QCOMPARE(QDir(m_folder.path()).entryList(QDir::Files), QStringList { "a" });
}

void tst_OutputFiles::aNewFileHasTheUsualPermissions()
{
    const mode_t before = umask(022);
    QCOMPARE(replaceFile(path("mode"), "x"), std::string());
    (void)umask(before);
    struct stat status
    {
    };
    QCOMPARE(stat(path("mode").c_str(), &status), 0);
    QCOMPARE(int(status.st_mode & 0777), 0644);
}

void tst_OutputFiles::aPipeIsWrittenTo()
{
    QCOMPARE(mkfifo(path("pipe").c_str(), 0600), 0);
    const int reader = open(path("pipe").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    QVERIFY(reader >= 0);
    QCOMPARE(replaceFile(path("pipe"), "through\n"), std::string());
    char buffer[32] = {};
    QCOMPARE(int(read(reader, buffer, sizeof buffer)), 8);
    (void)close(reader);
    QCOMPARE(QByteArray(buffer), QByteArray("through\n"));
    struct stat status
    {
    };
    QCOMPARE(stat(path("pipe").c_str(), &status), 0);
    QVERIFY(S_ISFIFO(status.st_mode));
}

void tst_OutputFiles::failuresNameTheFileAndLeaveNothing()
{
    const std::string missing = replaceFile(path("none/file"), "x");
    QVERIFY2(missing.find("none/file: No such file") != std::string::npos, missing.c_str());
    QVERIFY(QDir(m_folder.path()).mkdir("folder"));
    QVERIFY(!replaceFile(path("folder"), "x").empty());
    QCOMPARE(QDir(m_folder.filePath("folder")).entryList(QDir::Files), QStringList());
    QCOMPARE(replaceFile("/dev/full", "x"), std::string("/dev/full: No space left on device"));
}

void tst_OutputFiles::aClosedFileIsAnError()
{
    const int file = open("/dev/null", O_RDONLY | O_CLOEXEC);
    QCOMPARE(writeAll(file, "x"), EBADF);
    QCOMPARE(writeAll(file, ""), 0);
    (void)close(file);
}

QTEST_GUILESS_MAIN(tst_OutputFiles)
#include "tst_outputfiles.moc"
