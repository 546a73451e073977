#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QStandardPaths>
#include <QtTest>

#include "VelqctlProgram.h"

using Words = QSet<QString>;

//! The manual page and the completion have what the program's own help has, and nothing else.
class tst_VelqctlDocs : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();

    void theManualPageHasEveryCommand();
    void theManualPageHasTheProgramsOptions();
    void theManualPageIsWellFormed();
    void completionOffersTheCommands();
    void completionOffersACommandsOptions();
    void completionOffersValues_data();
    void completionOffersValues();

private:
    [[nodiscard]] Words optionsOf(const QString &verb) const;

    QStringList m_verbs;
    Words m_common; // of every command
    QString m_page;
};

namespace {

Words longOptions(const QString &text)
{
    Words words;
    auto matches = QRegularExpression("(?<![-a-z])--[a-z][-a-z]*").globalMatch(text);
    while (matches.hasNext())
        words.insert(matches.next().captured());
    return words;
}

//! The first words of the lines that describe options, so not those in the descriptions.
QString help(const QStringList &arguments)
{
    const Answer answer = velqctl({}, arguments + QStringList { "--help" });
    return answer.code == 0 ? QString::fromUtf8(answer.output) : QString();
}

QString optionLines(const QString &help)
{
    QString text;
    for (const QString &line : help.split('\n')) {
        const QRegularExpressionMatch match
            = QRegularExpression("^ +((-[a-z], ?)?--[a-z-]+)").match(line);
        text += match.captured(1).replace(',', ' ') + '\n';
    }
    return text;
}

QStringList complete(const QStringList &words)
{
    QStringList quoted;
    for (const QString &word : words)
        quoted.append('\'' + word + '\'');
    const QString script
        = QString("source '%1/velqctl.bash'; COMP_WORDS=(%2); COMP_CWORD=%3; _velqctl; "
                  "printf '%s\\n' \"${COMPREPLY[@]}\"")
              .arg(QStringLiteral(VELQCTL_DATA), quoted.join(' '))
              .arg(words.size() - 1);
    QProcess bash;
    bash.start("bash", { "-c", script });
    (void)bash.waitForFinished();
    return QString::fromUtf8(bash.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
}

Words toSet(const QStringList &list)
{
    Words words;
    for (const QString &word : list)
        words.insert(word);
    return words;
}

QByteArray listed(const Words &words)
{
    return QStringList(words.values()).join(' ').toUtf8();
}

} // namespace

void tst_VelqctlDocs::initTestCase()
{
    const QString text = help({});
    bool commands = false;
    for (const QString &line : text.split('\n')) {
        commands = commands || line.startsWith("Subcommands", Qt::CaseInsensitive);
        const auto match = QRegularExpression("^ +([a-z]+) ").match(line);
        if (commands && match.hasMatch())
            m_verbs.append(match.captured(1));
    }
    QCOMPARE(m_verbs.size(), 13);
    m_common = longOptions(optionLines(text));
    QVERIFY2(m_common.contains("--json") && m_common.contains("--help"), qPrintable(text));
    QFile page(QStringLiteral(VELQCTL_DATA "/velqctl.1"));
    QVERIFY(page.open(QFile::ReadOnly));
    m_page = QString::fromUtf8(page.readAll()).replace("\\-", "-");
}

Words tst_VelqctlDocs::optionsOf(const QString &verb) const
{
    return longOptions(optionLines(help({ verb })));
}

void tst_VelqctlDocs::theManualPageHasEveryCommand()
{
    for (const QString &verb : m_verbs) {
        const QRegularExpression heading("\\n\\.TP\\n\\.BR? " + verb + "[ \\n]");
        QVERIFY2(heading.match(m_page).hasMatch(), qPrintable(verb));
    }
}

void tst_VelqctlDocs::theManualPageHasTheProgramsOptions()
{
    Words all = m_common;
    for (const QString &verb : m_verbs) {
        const Words own = optionsOf(verb) - m_common;
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

void tst_VelqctlDocs::completionOffersTheCommands()
{
    const Words offered = toSet(complete({ "velqctl", "" }));
    QCOMPARE(offered, toSet(m_verbs) + m_common);
    QCOMPARE(toSet(complete({ "velqctl", "--json", "re" })), (Words { "report", "reset" }));
}

void tst_VelqctlDocs::completionOffersACommandsOptions()
{
    for (const QString &verb : m_verbs) {
        const Words offered = toSet(complete({ "velqctl", verb, "--" }));
        const Words expected = optionsOf(verb) + m_common;
        QVERIFY2(offered == expected,
                 qPrintable(verb + ": offered only " + listed(offered - expected) + ", missing "
                            + listed(expected - offered)));
    }
}

void tst_VelqctlDocs::completionOffersValues_data()
{
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<QStringList>("offered");
    QTest::newRow("a report's period")
        << QStringList { "velqctl", "report", "m" } << QStringList { "monthly" };
    QTest::newRow("a type") << QStringList { "velqctl", "reset", "--type", "" }
                            << QStringList { "mobile", "wifi" };
    QTest::newRow("an interface") << QStringList { "velqctl", "--interface", "l" }
                                  << QStringList { "lo" };
    QTest::newRow("nothing for an amount")
        << QStringList { "velqctl", "correct", "--download", "" } << QStringList();
    QTest::newRow("a backup's folder")
        << QStringList { "velqctl", "backup", "/us" } << QStringList { "/usr" };
}

void tst_VelqctlDocs::completionOffersValues()
{
    QFETCH(QStringList, words);
    QTEST(complete(words), "offered");
}

QTEST_GUILESS_MAIN(tst_VelqctlDocs)
#include "tst_velqctldocs.moc"
