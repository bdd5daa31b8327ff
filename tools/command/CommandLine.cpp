#include "CommandLine.h"

#include "CommandTable.h"
#include "ValueText.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
Failure wrongUsage(QString const &text)
{
    return { ExitStatus::WrongUsage, text };
}

// A negative number is a value, not an option, and so is what follows it.
QStringList withNumbersAsValues(QStringList arguments)
{
    for (qsizetype i = 0; i < arguments.size() && arguments[i] != "--"_L1; ++i) {
        QString const &argument = arguments[i];
        if (argument.size() > 1 && argument[0] == u'-' && (argument[1].isDigit() || argument[1] == u'.')) {
            arguments.insert(i, u"--"_s);
            break;
        }
    }
    return arguments;
}
} // namespace

CommandLine::CommandLine(QStringList const &typed)
{
    for (Option const &option : CommandTable::options())
        m_parser.addOption({ CommandTable::words(option.names), QString(), QString::fromLatin1(option.value) });
    if (!m_parser.parse(withNumbersAsValues(typed)))
        throw wrongUsage(m_parser.errorText());

    m_arguments = m_parser.positionalArguments();
    if (!m_arguments.isEmpty()) {
        QString const name = m_arguments.takeFirst();
        m_verb = CommandTable::findVerb(name);
        if (!m_verb)
            throw wrongUsage(u"There is no verb \"%1\"."_s.arg(ValueText::escaped(name)));
    }
    checkOptions();
    if (!isAnswered())
        checkArguments();
}

void CommandLine::checkOptions() const
{
    for (Option const &option : CommandTable::options()) {
        QString const name = CommandTable::name(option);
        if (!m_parser.isSet(name))
            continue;
        QStringList const takers = CommandTable::verbsOf(option);
        if (m_verb && !takers.isEmpty() && !takers.contains(QLatin1String(m_verb->name)))
            throw wrongUsage(u"%1 takes no --%2."_s.arg(QLatin1String(m_verb->name), name));
        if (!*option.value)
            continue;
        ValueKind const &kind = CommandTable::kind(QString::fromLatin1(option.value));
        if (kind.source == ValueKind::OneOf && !kind.choices.contains(m_parser.value(name)))
            throw wrongUsage(u"--%1 takes one of: %2."_s.arg(name, kind.choices.join(u' ')));
    }
}

bool CommandLine::isAnswered() const
{
    auto const &options = CommandTable::options();
    return std::any_of(options.begin(), options.end(),
        [this](Option const &option) { return option.isAnswer && m_parser.isSet(CommandTable::name(option)); });
}

void CommandLine::checkArguments() const
{
    if (!m_verb)
        throw wrongUsage(u"A verb is missing."_s);
    QString const expected = QString::fromLatin1(m_verb->arguments);
    // "X..." stands for one or more, "[X...]" for any number.
    auto const least = CommandTable::words(m_verb->arguments).size() - (expected.endsWith(u']') ? 1 : 0);
    if (expected.contains("..."_L1) ? m_arguments.size() < least : m_arguments.size() != least)
        throw CommandTable::wrongArguments(*m_verb);
}
