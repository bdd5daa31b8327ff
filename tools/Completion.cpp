#include "Completion.h"

#include "CommandTable.h"

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

// Goes through the words before the last one. Behind it, "typed" holds the options that choose the store, "verb" the
// verb, "arguments" what follows it, "pending" the option whose value is the last word, and "plain" is set where
// nothing is an option any more.
auto const scan = R"sh(
    local -a typed=() arguments=()
    local verb= pending= plain= kept= option= word=
    for word in "${before[@]}"; do
        if [[ -n $pending ]]; then
            [[ -z $kept ]] || typed+=("$word")
            pending=
        elif [[ -z $plain && $word == -- ]]; then
            plain=1
        elif [[ -z $plain && $word == -?* && $word != -[0-9.]* ]]; then
            option=${word%%=*}
            kept=
            [[ $store_options != *" $option "* ]] || kept=1
            [[ -z $kept ]] || typed+=("$word")
            [[ $word == *=* ]] || pending=${option_kinds[$option]:+$option}
        else
            [[ $word != -?* ]] || plain=1
            if [[ -z $verb ]]; then verb=$word; else arguments+=("$word"); fi
        fi
    done
)sh"_L1;

// Prints, one a line, the keys of the store, or what is known of the values of the key before the last word.
auto const ask = R"sh(
_prefs_ask()
{
    local line rest newline=$'\n'
    if [[ $1 == keys ]]; then
        "$program" "${typed[@]}" list | while IFS=$'\t' read -r line rest; do printf '%s\n' "$line"; done
        return
    fi
    "$program" "${typed[@]}" describe -- "$key" | while IFS= read -r line; do
        case $line in
            'Type: bool') printf '%s\n' true false ;;
            'Choices: '*) line=${line#*: } && printf '%s\n' "${line//, /$newline}" ;;
        esac
    done
} 2>/dev/null </dev/null
)sh"_L1;

auto const bashHead = R"sh(# Completion of prefs for bash, made by "prefs --generate bash".

# A word as the program would get it. Nothing in it is run.
_prefs_plain()
{
    plain_word=${1//[\"\'\\]/}
    [[ $plain_word != '~/'* ]] || plain_word=$HOME/${plain_word:2}
}
)sh"_L1;

auto const bashWords = R"sh(
    # Readline may have broken words at "=".
    local IFS=$' \t\n' current= plain_word= i last
    local -a words=() before=()
    for ((i = 0; i <= COMP_CWORD; i++)); do
        current=${COMP_WORDS[i]}
        last=$((${#words[@]} - 1))
        if ((last > 0)) && [[ ${words[last]} == --* && ($current == = || ${words[last]} == *=) ]]; then
            words[last]+=$current
        else
            words+=("$current")
        fi
    done
    last=$((${#words[@]} - 1))
    current=${words[last]}
    for ((i = 1; i < last; i++)); do
        _prefs_plain "${words[i]}"
        before+=("$plain_word")
    done
)sh"_L1;

auto const bashTail = R"sh(
    local kind= prefix= candidates=
    local -a kinds=(${argument_kinds[${verb:-none}]-})
    if [[ -n $pending ]]; then
        kind=${option_kinds[$pending]}
    elif [[ -z $plain && $current == --*=* ]]; then
        option=${current%%=*}
        kind=${option_kinds[$option]-}
        current=${current#*=}
        # The part before "=" is to be given when readline does not break words there.
        [[ ${COMP_WORDS[COMP_CWORD]} != --*=* ]] || prefix=$option=
    elif [[ -z $plain && $current == -* ]]; then
        candidates="$general_options ${verb_options[${verb:-none}]-}"
        candidates=${candidates// /$'\n'}
    elif [[ -z $verb ]]; then
        candidates=${verbs// /$'\n'}
    elif ((${#kinds[@]} > 0)); then
        last=$((${#kinds[@]} - 1))
        i=${#arguments[@]}
        ((i <= last)) || [[ ${kinds[last]} != *... ]] || i=$last
        kind=${kinds[i]-}
        kind=${kind%...}
    fi

    _prefs_plain "${words[0]}"
    local program=$plain_word key=${arguments[0]-}
    case ${sources[${kind:-none}]-} in
        files) compopt -o default ;;
        folders) compopt -o dirnames ;;
        choices) candidates=${choices[$kind]} ;;
        keys | values) candidates=$(_prefs_ask "${sources[$kind]}") ;;
    esac
    [[ -n $candidates ]] || return 0

    # Behind an open quote readline quotes by itself.
    local quote=%q
    [[ $current != [\"\']* ]] || quote=%s
    _prefs_plain "$current"
    while IFS= read -r option; do
        [[ ${option,,} != "${plain_word,,}"* ]] || COMPREPLY+=("$prefix$(printf "$quote" "$option")")
    done <<<"$candidates"
}

complete -F _prefs prefs
)sh"_L1;

auto const zshHead = R"sh(#compdef prefs
# Completion of prefs for zsh, made by "prefs --generate zsh".
)sh"_L1;

auto const zshValue = R"sh(
# Offers what may stand for a kind of value.
_prefs_value()
{
    local -a found expl
    case ${sources[$1]-} in
        files) _files && return ;;
        folders) _files -/ && return ;;
        choices) found=("${(@f)choices[$1]}") ;;
        keys | values) found=("${(@f)$(_prefs_ask $sources[$1])}") ;;
    esac
    found=("${(@)found:#}")
    (($#found)) && _wanted values expl $1 compadd -M 'm:{a-zA-Z}={A-Za-z}' -a found
}

_prefs_verb()
{
    _describe -t verbs VERB verb_texts
}

_prefs()
{
)sh"_L1;

auto const zshWords = R"sh(
    # As the program would get them.
    local -a before=("${(@Q)words[2,CURRENT-1]}")
    before=("${(@)before/#\~\//$HOME/}")
)sh"_L1;

auto const zshTail = R"sh(
    local program=${${(Q)words[1]}/#\~\//$HOME/} key=${arguments[1]-}
    _arguments -S $specs
}

_prefs "$@"
)sh"_L1;

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
    return bashHead + ask + "\n_prefs()\n{\n    COMPREPLY=()\n"_L1 + kindTables() + verbOptions.text()
        + "    local verbs="_L1 + quoted(verbs.join(u' ')) + "\n    local general_options="_L1
        + quoted(typedNames(CommandTable::optionsOf(nullptr)).join(u' ')) + u'\n' + bashWords + scan + bashTail;
}

QString Completion::zsh()
{
    QString texts;
    QString ofVerbs = "    [[ -n $verb ]] || specs+=("_L1 + zshSpecs(CommandTable::optionsOfSomeVerbs()) + ")\n"_L1;
    for (Verb const &verb : CommandTable::verbs()) {
        QString const name = QLatin1String(verb.name);
        texts += "\n        "_L1 + quoted(name + u':' + QLatin1String(verb.help));
        if (QString const specs = zshSpecs(verb); !specs.isEmpty())
            ofVerbs += "    [[ $verb != "_L1 + name + " ]] || specs+=("_L1 + specs + ")\n"_L1;
    }
    return zshHead + ask + zshValue + kindTables() + "    local -a verb_texts=("_L1 + texts + ")\n"_L1 + zshWords + scan
        + "\n    local -a specs=(\n        '1:VERB: _prefs_verb'"_L1 + zshSpecs(CommandTable::optionsOf(nullptr))
        + ")\n"_L1 + ofVerbs + zshTail;
}
