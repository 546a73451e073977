#include <HostSettings.h>

#include <QTemporaryDir>
#include <QtTest>

#include "TestLog.h"

class tst_HostSettings : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void aNewFolderRemembersNothing();
    void whatIsSetComesBack();
    void nonsenseCountsAsNotThere();
    void withoutAFolderNothingIsRemembered();

private:
    QScopedPointer<TestLog> m_log;
    QScopedPointer<QTemporaryDir> m_folder;
};

void tst_HostSettings::init()
{
    m_folder.reset(new QTemporaryDir);
    m_log.reset(new TestLog);
}

void tst_HostSettings::cleanup()
{
    const QStringList problems = m_log->takeProblems();
    m_log.reset();
    QCOMPARE(problems, QStringList());
}

void tst_HostSettings::aNewFolderRemembersNothing()
{
    const HostSettings settings(m_folder->path() + '/');
    QVERIFY(!settings.view());
    QVERIFY(settings.geometry().isEmpty());
    QVERIFY(settings.language().isEmpty());
}

void tst_HostSettings::whatIsSetComesBack()
{
    for (const HostView view : { HostView::Usage, HostView::Statistics }) {
        {
            HostSettings settings(m_folder->path() + '/');
            settings.setView(view);
            settings.setGeometry(QByteArray("\0\1\2=;\"", 6));
            settings.setLanguage("de");
        }
        const HostSettings settings(m_folder->path() + '/');
        QVERIFY(settings.view() == view);
        QCOMPARE(settings.geometry(), QByteArray("\0\1\2=;\"", 6));
        QCOMPARE(settings.language(), QString("de"));
    }
    QVERIFY(QFileInfo::exists(m_folder->filePath("skylet.ini")));
}

void tst_HostSettings::nonsenseCountsAsNotThere()
{
    QFile file(m_folder->filePath("skylet.ini"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[General]\nview=sideways\n\xff\xfe=\n[[[");
    file.close();
    const HostSettings settings(m_folder->path() + '/');
    QVERIFY(!settings.view());
    QVERIFY(settings.language().isEmpty());
}

void tst_HostSettings::withoutAFolderNothingIsRemembered()
{
    HostSettings settings { QString() };
    settings.setView(HostView::Usage);
    settings.setLanguage("de");
    QVERIFY(!settings.view());
    QVERIFY(settings.language().isEmpty());
}

QTEST_GUILESS_MAIN(tst_HostSettings)
#include "tst_hostsettings.moc"
