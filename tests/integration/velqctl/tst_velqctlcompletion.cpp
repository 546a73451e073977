#include <QProcess>
#include <QStandardPaths>
#include <QtTest>

#include "VelqctlHelp.h"

//! What each shell offers is what the program's own help has.
class tst_VelqctlCompletion : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase_data();
    void initTestCase();
    void init();

    void theCommandsAreOffered();
    void aCommandsOptionsAreOffered();
    void valuesAreOffered_data();
    void valuesAreOffered();

private:
    VelqctlHelp m_help;
};

namespace {

const QString kData = QStringLiteral(VELQCTL_DATA);

//! What \a shell is given to print the completions of \a words, the last of which is being typed.
QStringList command(const QString &shell, const QStringList &words)
{
    if (shell == "bash") {
        const QString script
            = QString("source '%1/velqctl.bash'; COMP_WORDS=('%2'); COMP_CWORD=%3; _velqctl; "
                      "printf '%s\\n' \"${COMPREPLY[@]}\"");
        return { "-c", script.arg(kData, words.join("' '")).arg(words.size() - 1) };
    }
    if (shell == "fish")
        return { "--no-config", "-c", "source $argv[1]; complete -C $argv[2] | cut -f 1",
                 kData + "/velqctl.fish", words.join(' ') };
    return { "-f", VELQCTL_ZSH, kData + "/velqctl.zsh", words.join(' ') };
}

//! Of a path only its last part: shells differ in whether they print the rest again.
Words complete(const QString &shell, const QStringList &words)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(shell, command(shell, words));
    (void)process.waitForFinished();
    Words offered;
    for (QString word : QString::fromUtf8(process.readAllStandardOutput()).split('\n')) {
        if (word.endsWith('/'))
            word.chop(1);
        offered.insert(word.section('/', -1));
    }
    offered.remove(QString());
    return offered;
}

} // namespace

void tst_VelqctlCompletion::initTestCase_data()
{
    QTest::addColumn<QString>("shell");
    for (const char *shell : { "bash", "zsh", "fish" })
        QTest::newRow(shell) << shell;
}

void tst_VelqctlCompletion::initTestCase()
{
    m_help = VelqctlHelp::read();
    QCOMPARE(m_help.verbs.size(), 13);
}

void tst_VelqctlCompletion::init()
{
    QFETCH_GLOBAL(QString, shell);
    if (QStandardPaths::findExecutable(shell).isEmpty())
        QSKIP(qPrintable(shell + " is not installed"));
}

//! Some shells offer options only after a dash.
void tst_VelqctlCompletion::theCommandsAreOffered()
{
    QFETCH_GLOBAL(QString, shell);
    const Words verbs(m_help.verbs.begin(), m_help.verbs.end());
    const Words offered = complete(shell, { "velqctl", "" });
    QVERIFY2(offered - m_help.common == verbs, listed(offered));
    QCOMPARE(complete(shell, { "velqctl", "--json", "re" }), (Words { "report", "reset" }));
}

void tst_VelqctlCompletion::aCommandsOptionsAreOffered()
{
    QFETCH_GLOBAL(QString, shell);
    for (const QString &verb : m_help.verbs) {
        const Words offered = complete(shell, { "velqctl", verb, "--" });
        const Words expected = VelqctlHelp::optionsOf(verb) + m_help.common;
        QVERIFY2(offered == expected,
                 qPrintable(verb + ": offered only " + listed(offered - expected) + ", missing "
                            + listed(expected - offered)));
    }
}

void tst_VelqctlCompletion::valuesAreOffered_data()
{
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<Words>("offered");
    QTest::newRow("a report's period")
        << QStringList { "velqctl", "report", "m" } << Words { "monthly" };
    QTest::newRow("a type") << QStringList { "velqctl", "reset", "--type", "" }
                            << Words { "mobile", "wifi" };
    QTest::newRow("an interface") << QStringList { "velqctl", "--interface", "l" }
                                  << Words { "lo" };
    QTest::newRow("nothing for an amount")
        << QStringList { "velqctl", "correct", "--download", "" } << Words();
    QTest::newRow("a backup's folder")
        << QStringList { "velqctl", "backup", "/us" } << Words { "usr" };
}

void tst_VelqctlCompletion::valuesAreOffered()
{
    QFETCH_GLOBAL(QString, shell);
    QFETCH(QStringList, words);
    QTEST(complete(shell, words), "offered");
}

QTEST_GUILESS_MAIN(tst_VelqctlCompletion)
#include "tst_velqctlcompletion.moc"
