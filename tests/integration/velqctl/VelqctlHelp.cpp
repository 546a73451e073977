#include "VelqctlHelp.h"

#include <QRegularExpression>

#include "VelqctlProgram.h"

namespace {

QString help(const QStringList &arguments)
{
    const Answer answer = velqctl({}, arguments + QStringList { "--help" });
    return answer.code == 0 ? QString::fromUtf8(answer.output) : QString();
}

//! The first words of the lines that describe options, so not those in the descriptions.
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

} // namespace

VelqctlHelp VelqctlHelp::read()
{
    VelqctlHelp found;
    const QString text = help({});
    bool commands = false;
    for (const QString &line : text.split('\n')) {
        commands = commands || line.startsWith("Subcommands", Qt::CaseInsensitive);
        const auto match = QRegularExpression("^ +([a-z]+) ").match(line);
        if (commands && match.hasMatch())
            found.verbs.append(match.captured(1));
    }
    found.common = longOptions(optionLines(text));
    return found;
}

Words VelqctlHelp::optionsOf(const QString &verb)
{
    return longOptions(optionLines(help({ verb })));
}

Words longOptions(const QString &text)
{
    Words words;
    auto matches = QRegularExpression("(?<![-a-z])--[a-z][-a-z]*").globalMatch(text);
    while (matches.hasNext())
        words.insert(matches.next().captured());
    return words;
}

QByteArray listed(const Words &words)
{
    return QStringList(words.values()).join(' ').toUtf8();
}
