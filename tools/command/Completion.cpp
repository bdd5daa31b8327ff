#include "Completion.h"

#include "CommandTable.h"

#include <QFile>
#include <QRegularExpression>

#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace {
QString quoted(QString text)
{
    return u'\'' + text.replace(u'\'', "'\\''"_L1) + u'\'';
}

QStringList typedNames(Option const &option)
{
    QStringList names = CommandTable::words(option.names);
    for (QString &name : names)
        name.prepend(name.size() == 1 ? "-"_L1 : "--"_L1);
    return names;
}

QStringList typedNames(std::vector<Option> const &options)
{
    QStringList names;
    for (Option const &option : options)
        names += typedNames(option);
    return names;
}

// Options that choose the store are handed on to the program when it is asked for keys and values.
QStringList storeOptions()
{
    QStringList names;
    for (Option const &option : CommandTable::optionsOf(nullptr)) {
        if (!option.isAnswer)
            names += typedNames(option);
    }
    return names;
}

// "NAME=([key]='value' ...)", an associative array of either shell.
class Map {
public:
    explicit Map(QString const &name)
        : m_text("    local -A "_L1 + name + "=("_L1)
    {
    }

    void add(QString const &key, QString const &value)
    {
        if (!value.isEmpty())
            m_text += "\n        ["_L1 + key + "]="_L1 + quoted(value);
    }

    QString text() const { return m_text + ")\n"_L1; }

private:
    QString m_text;
};

char const *sourceName(ValueKind::Source source)
{
    switch (source) {
    case ValueKind::OneOf:
    case ValueKind::Suggested:
        return "choices";
    case ValueKind::Key:
        return "keys";
    case ValueKind::ValueOfKey:
        return "values";
    case ValueKind::File:
        return "files";
    case ValueKind::Folder:
        return "folders";
    case ValueKind::Text:
        break;
    }
    return "";
}

// What both shells look up: which kind of value an option or an argument is, and where values of the kind come from.
QString kindTables()
{
    Map ofOptions(u"option_kinds"_s);
    for (Option const &option : CommandTable::options()) {
        for (QString const &name : typedNames(option))
            ofOptions.add(name, QLatin1String(option.value));
    }
    Map ofArguments(u"argument_kinds"_s);
    for (Verb const &verb : CommandTable::verbs())
        ofArguments.add(QLatin1String(verb.name), QString::fromLatin1(verb.arguments).remove(u'[').remove(u']'));
    Map sources(u"sources"_s);
    Map choices(u"choices"_s);
    for (ValueKind const &kind : CommandTable::kinds()) {
        sources.add(QLatin1String(kind.name), QLatin1String(sourceName(kind.source)));
        choices.add(QLatin1String(kind.name), kind.choices.join(u'\n'));
    }
    return ofOptions.text() + ofArguments.text() + sources.text() + choices.text() + "    local store_options=' "_L1
        + storeOptions().join(u' ') + " '\n"_L1;
}

// A script of this folder, its directives for the checker left out and its lines "# @NAME@" filled in.
QString script(QString const &name, std::vector<std::pair<QLatin1String, QString>> const &parts)
{
    auto const read = [](QString const &fileName) {
        QFile file(":/"_L1 + fileName);
        (void)file.open(QIODevice::ReadOnly); // it is a part of the program
        return QString::fromUtf8(file.readAll())
            .remove(QRegularExpression(u"^# shellcheck .*\\n"_s, QRegularExpression::MultilineOption));
    };
    QString text = read(name);
    text.replace("# @common@"_L1, read(u"completion-common.sh"_s).trimmed());
    for (auto const &[part, filling] : parts)
        text.replace("    # @"_L1 + part + u'@', filling);
    return text;
}

// What _arguments is told of an option, once for each of its names.
QStringList zshSpecs(Option const &option)
{
    QString help = QLatin1String(option.help);
    help.replace(u'\\', "\\\\"_L1).replace(u']', "\\]"_L1);
    QString const value = QLatin1String(option.value);
    QStringList const names = typedNames(option);
    QStringList specs;
    for (QString const &name : names) {
        QString const rivals = names.size() > 1 ? u'(' + names.join(u' ') + u')' : QString();
        QString const argument = value.isEmpty() ? value : u":%1: _prefs_value %1"_s.arg(value);
        specs.append(quoted((option.isRepeated ? "*"_L1 : ""_L1) + rivals + name + (value.isEmpty() ? ""_L1 : "="_L1)
            + u'[' + help + u']' + argument));
    }
    return specs;
}

QString zshSpecs(std::vector<Option> const &options)
{
    QString lines;
    for (Option const &option : options)
        lines += "\n        "_L1 + zshSpecs(option).join(u' ');
    return lines;
}

// What _arguments is told of a verb: its options and what follows it.
QString zshSpecs(Verb const &verb)
{
    QString lines = zshSpecs(CommandTable::optionsOf(&verb));
    int position = 1;
    for (QString const &kind : CommandTable::words(verb.arguments)) {
        QString const name = QLatin1String(CommandTable::kind(kind).name);
        QString const place = kind == name ? QString::number(++position) : u"*"_s;
        lines += "\n        "_L1 + quoted(u"%1:%2: _prefs_value %2"_s.arg(place, name));
    }
    return lines;
}
} // namespace

QString Completion::bash()
{
    QStringList verbs;
    Map verbOptions(u"verb_options"_s);
    verbOptions.add(u"none"_s, typedNames(CommandTable::optionsOfSomeVerbs()).join(u' '));
    for (Verb const &verb : CommandTable::verbs()) {
        verbs.append(QLatin1String(verb.name));
        verbOptions.add(verbs.constLast(), typedNames(CommandTable::optionsOf(&verb)).join(u' '));
    }
    return script(u"completion.bash"_s,
        { { "tables"_L1,
            kindTables() + verbOptions.text() + "    local verbs="_L1 + quoted(verbs.join(u' '))
                + "\n    local general_options="_L1
                + quoted(typedNames(CommandTable::optionsOf(nullptr)).join(u' ')) } });
}

QString Completion::zsh()
{
    QString texts;
    QString ofVerbs = "    [[ -n $verb ]] || specs+=("_L1 + zshSpecs(CommandTable::optionsOfSomeVerbs()) + u')';
    for (Verb const &verb : CommandTable::verbs()) {
        QString const name = QLatin1String(verb.name);
        texts += "\n        "_L1 + quoted(name + u':' + QLatin1String(verb.help));
        if (QString const specs = zshSpecs(verb); !specs.isEmpty())
            ofVerbs += "\n    [[ $verb != "_L1 + name + " ]] || specs+=("_L1 + specs + u')';
    }
    return script(u"completion.zsh"_s,
        { { "tables"_L1, kindTables() + "    local -a verb_texts=("_L1 + texts + u')' },
            { "specs"_L1,
                "    local -a specs=(\n        '1:VERB: _prefs_verb'"_L1 + zshSpecs(CommandTable::optionsOf(nullptr))
                    + ")\n"_L1 + ofVerbs } });
}
