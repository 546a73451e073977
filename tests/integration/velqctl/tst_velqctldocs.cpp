#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QtTest>

#include "VelqctlHelp.h"

//! The manual page has what the program's own help has, and nothing else.
class tst_VelqctlDocs : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();

    void theManualPageHasEveryCommand();
    void theManualPageHasTheProgramsOptions();
    void theManualPageIsWellFormed();

private:
    VelqctlHelp m_help;
    QString m_page;
};

void tst_VelqctlDocs::initTestCase()
{
    m_help = VelqctlHelp::read();
    QCOMPARE(m_help.verbs.size(), 13);
    QVERIFY(m_help.common.contains("--json") && m_help.common.contains("--help"));
    QFile page(QStringLiteral(VELQCTL_DATA "/velqctl.1"));
    QVERIFY(page.open(QFile::ReadOnly));
    m_page = QString::fromUtf8(page.readAll()).replace("\\-", "-");
}

void tst_VelqctlDocs::theManualPageHasEveryCommand()
{
    for (const QString &verb : m_help.verbs) {
        const QRegularExpression heading("\\n\\.TP\\n\\.BR? " + verb + "[ \\n]");
        QVERIFY2(heading.match(m_page).hasMatch(), qPrintable(verb));
    }
}

void tst_VelqctlDocs::theManualPageHasTheProgramsOptions()
{
    Words all = m_help.common;
    for (const QString &verb : m_help.verbs) {
        const Words own = VelqctlHelp::optionsOf(verb) - m_help.common;
        all += own;
        const auto heading = QRegularExpression("\\n\\.BR? " + verb + "( .*)?\\n").match(m_page);
        const Words missing = own - longOptions(heading.captured());
        QVERIFY2(missing.isEmpty(), qPrintable(verb + " lacks " + listed(missing)));
    }
    const Words written = longOptions(m_page);
    QVERIFY2((written - all).isEmpty(), listed(written - all).constData());
    QVERIFY2((all - written).isEmpty(), listed(all - written).constData());
}

void tst_VelqctlDocs::theManualPageIsWellFormed()
{
    const QString groff = QStandardPaths::findExecutable("groff");
    if (groff.isEmpty())
        QSKIP("groff is not installed");
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(groff, { "-man", "-Tutf8", "-ww", "-z", VELQCTL_DATA "/velqctl.1" });
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 0);
    QCOMPARE(process.readAll(), QByteArray());
}

QTEST_GUILESS_MAIN(tst_VelqctlDocs)
#include "tst_velqctldocs.moc"
