#include "CommandTable.h"

#include "Findings.h"
#include "ItemFilter.h"

#include <QtGlobal>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
// The options whose verbs fulfil a condition, in the order of the table.
template <class Condition> std::vector<Option> optionsWith(Condition const &holds)
{
    std::vector<Option> found;
    for (Option const &option : CommandTable::options()) {
        if (holds(CommandTable::verbsOf(option)))
            found.push_back(option);
    }
    return found;
}
} // namespace

std::vector<Verb> const &CommandTable::verbs()
{
    static std::vector<Verb> const table{
        { "list", "", "category changed locked", Verbs::list,
            "Key, type and value of each preference, separated by tabs." },
        { "get", "KEY", "", Verbs::get, "The value." },
        { "describe", "KEY", "", Verbs::describe, "All that is known of a preference." },
        { "set", "KEY VALUE", "", Verbs::set, "Sets the value and saves.",
            "The value is in the form that get shows, or yes or no, a number, #RRGGBB or #AARRGGBB, a key such as "
            "Ctrl+Shift+S, or the name of a font." },
        { "reset", "KEY", "", Verbs::reset, "Goes back to the default and saves." },
        { "diff", "", "against json", Verbs::diff, "What the user changed: key, default and value.",
            "A value that equals the default is left out; a key that has no definition has no default. With --against, "
            "what differs from another user's values: key, value there and value here. FILE is the file itself, such "
            "as F-pref.xml; it is left as it is, damaged or not. The exit status does not tell whether anything "
            "differs." },
        { "dump", "", "category changed", Verbs::dump, "The values as JSON, as load takes them.",
            "One object, sorted by key. Switches are true or false, numbers are numbers, all else is the text that "
            "set takes: colors as #AARRGGBB, fonts by name. A value that has no such form, such as the font of a "
            "machine without fonts, is null. Keys without a definition are left out, as load refuses them for a user "
            "who does not have them, unless --category Internal asks for them." },
        { "load", "FILE", "dry-run", Verbs::load, "Sets the values of a JSON file, all or none, and saves once.",
            "FILE is as dump writes it; \"-\" is standard input. Keys that it does not name stay as they are, and a "
            "value that is there already changes nothing, be it locked or null. Every other unknown key, locked key "
            "and value of the wrong type or range is named on the error stream, and nothing is changed then; of "
            "several reasons the lowest gives the exit status. Of a key that the file gives twice the last value "
            "counts." },
        { "check", "[FILE...]", "strict ignore rules summary override json", Verbs::check,
            "What is wrong in definitions, overrides, sets and users' files.",
            "A file below a folder \"preferenceSets\" is taken for a preference set, one with \"override\" in its name "
            "for an override, one with categories for definitions, and any other for a user's file. Without a FILE the "
            "definition files of the installation are checked." },
        { "override", "KEY[=VALUE]...", "lock unlock remove output", Verbs::writeOverride,
            "Writes new defaults and locks for everybody into an override.",
            "Each KEY gets the whole definition that is shipped, one for each platform and mode, with the value, which "
            "is in the form that set takes. Without a VALUE the default stays, and without --lock and --unlock the "
            "lock. What else is in FILE stays as it is. The new text is checked as check does it, and nothing is "
            "written when it has errors." },
        { "explain", "KEY...", "json", Verbs::explain, "Where the value comes from, layer by layer." },
        { "keys", "FILE...", "header namespace", Verbs::keys,
            "The name, type and place of each typed key that definition files give.",
            "With --header a C++ header of such keys, with the types, defaults and ranges of the definitions. The "
            "CMake "
            "function brivant_preference_keys makes it for a target. A key with two types is an error." },
        { "check-sources", "FILE...", "unused json", Verbs::checkSources,
            "Which reads and writes of C++ sources do not fit the definitions.",
            "A FILE may be a folder. Of each read, write, find and restoreDefault with a literal key: whether the key "
            "has a definition, of the type that the function reads, and whether a literal default is its default." },
        { "texts", "", "ts", Verbs::texts, "Writes the texts of the definitions for translators.",
            "What the file has of translations stays; those of texts that no definition has any more are kept as "
            "vanished. A host translates with the context \"Preferences\" and the key as the disambiguation." },
        { "cached", "", "", Verbs::cached, "Accessor, key, type and value of each cached value." },
        { "scenes", "", "", Verbs::scenes, "Recent scenes: key, last use, cache, and whether it goes next." },
    };
    return table;
}

std::vector<Option> const &CommandTable::options()
{
    static std::vector<Option> const table{
        { "against", "FILE", "Another user's file, old text or XML, to compare with." },
        { "category", "CATEGORY", "Only the preferences of a category, such as \"Drawing Mode\"." },
        { "changed", "", "Only the preferences that the user changed." },
        { "locked", "", "Only the preferences that the facility locked." },
        { "strict", "", "A warning counts as an error." },
        { "ignore", "RULE", "Leave out the findings of a rule; may be repeated.", false, true },
        { "rules", "", "List the rules, with their weight in definitions and in users' files." },
        { "summary", "", "Count the findings by rule and key: count, severity, rule and key." },
        { "override", "FILE", "An override to check against in the place of the installed one." },
        { "output", "FILE", "The override, which is made where there is none." },
        { "lock", "", "Lock the preferences for all users." },
        { "unlock", "", "Let users change the preferences." },
        { "remove", "", "Take the preferences out of the override." },
        { "header", "", "Write a C++ header." },
        { "namespace", "WORD", "The namespace of the keys; Keys by default." },
        { "unused", "", "Also the keys of definitions that no source names." },
        { "ts", "FILE", "The file for Qt Linguist, such as preferences_fr.ts." },
        { "dry-run", "", "Save nothing: show key, present and new value of what would change." },
        { "json", "", "Write JSON." },
        { "install", "DIR", "Folder that holds \"resources\"; by default that of this installation." },
        { "user", "FILE",
            "The user's store: FILE is the old text file; \"F.pref\" is kept in \"F-pref.xml\", any other name gets "
            "\".xml\" added. By default the application's own." },
        { "local", "", "The store of the settings of this machine." },
        { "flavour", "FLAVOUR", "The product; norvelle by default." },
        { "mode", "MODE", "The mode of the product; full by default." },
        { "feature", "WORD", "A feature keyword that holds; may be repeated.", false, true },
        { "morphing", "", "The product has morphing." },
        { "verbose", "", "Also show messages that are only worth a log." },
        { "help h", "", "Show this text, or that of the verb.", true },
        { "version", "", "Show the version.", true },
        { "generate", "FORMAT", "Write the man page, or the completion for a shell.", true },
    };
    return table;
}

std::vector<ValueKind> const &CommandTable::kinds()
{
    static std::vector<ValueKind> const table{
        { "KEY", ValueKind::Key },
        { "KEY=VALUE", ValueKind::Key },
        { "VALUE", ValueKind::ValueOfKey },
        { "FILE", ValueKind::File },
        { "DIR", ValueKind::Folder },
        { "WORD", ValueKind::Text },
        { "RULE", ValueKind::Suggested, ruleNames() },
        { "CATEGORY", ValueKind::Suggested, CategoryText::all() },
        { "FLAVOUR", ValueKind::OneOf, { u"norvelle"_s, u"panovia"_s } },
        { "MODE", ValueKind::OneOf, { u"full"_s, u"paint"_s, u"scan"_s } },
        { "FORMAT", ValueKind::OneOf, { u"man"_s, u"bash"_s, u"zsh"_s } },
    };
    return table;
}

std::vector<StatusText> const &CommandTable::statusTexts()
{
    static std::vector<StatusText> const table{
        { ExitStatus::Done, "done" },
        { ExitStatus::NoSuchKey, "no such key, or none with a default to reset" },
        { ExitStatus::WrongUsage, "wrong usage" },
        { ExitStatus::CannotRead, "a file that cannot be read, or with errors that check found" },
        { ExitStatus::CannotWrite, "a file that cannot be written" },
        { ExitStatus::Locked, "the preference is locked by the facility" },
        { ExitStatus::NotAValue, "not a value of the preference's type" },
    };
    return table;
}

std::vector<Example> const &CommandTable::examples()
{
    static std::vector<Example> const table{
        { "prefs list --changed", "shows what the user changed." },
        { "prefs set SHORTCUT_SAVE Ctrl+Shift+S", "sets a shortcut." },
        { "prefs dump --changed > mine.json", "keeps the user's values," },
        { "prefs --user other.pref load mine.json", "and gives them to another user." },
    };
    return table;
}

std::vector<char const *> const &CommandTable::notes()
{
    static std::vector<char const *> const table{
        "Values that are separated by tabs, and those of describe, have \\t, \\n and \\\\ for a tab, a line feed and a "
        "backslash, \\r for a carriage return and \\xNN for any other control character; so have keys in messages.",
        "A VALUE that begins with '-' and is no number comes after \"--\".",
    };
    return table;
}

QStringList CommandTable::words(char const *text)
{
    return QString::fromLatin1(text).split(u' ', Qt::SkipEmptyParts);
}

Failure CommandTable::wrongArguments(Verb const &verb)
{
    QString const expected = QString::fromLatin1(verb.arguments);
    QString const text =
        u"%1 takes %2"_s.arg(QLatin1String(verb.name), expected.isEmpty() ? u"no arguments"_s : expected);
    return { ExitStatus::WrongUsage, text.endsWith(u'.') ? text : text + u'.' };
}

QString CommandTable::name(Option const &option)
{
    return words(option.names).constFirst();
}

Verb const *CommandTable::findVerb(QString const &name)
{
    auto const found = std::find_if(
        verbs().begin(), verbs().end(), [&name](Verb const &verb) { return name == QLatin1String(verb.name); });
    return found == verbs().end() ? nullptr : &*found;
}

ValueKind const &CommandTable::kind(QString name)
{
    name.remove(u'[').remove(u']').remove("..."_L1);
    for (ValueKind const &kind : kinds()) {
        if (name == QLatin1String(kind.name))
            return kind;
    }
    qFatal("The table has no kind of value \"%s\".", qUtf8Printable(name));
}

QStringList CommandTable::verbsOf(Option const &option)
{
    QStringList names;
    for (Verb const &verb : verbs()) {
        if (words(verb.options).contains(name(option)))
            names.append(QLatin1String(verb.name));
    }
    return names;
}

std::vector<Option> CommandTable::optionsOf(Verb const *verb)
{
    return optionsWith([verb](QStringList const &takers) {
        return verb ? takers.contains(QLatin1String(verb->name)) : takers.isEmpty();
    });
}

std::vector<Option> CommandTable::optionsOfSomeVerbs()
{
    return optionsWith([](QStringList const &takers) { return !takers.isEmpty(); });
}
