#include "Rules.h"

#include <cstddef>

namespace {
constexpr Severity none = Severity::None;
constexpr Severity warning = Severity::Warning;
constexpr Severity error = Severity::Error;

// In the order of the enumeration.
constexpr RuleText rules[] = {
    { "cannot-read", error, error, "The file cannot be opened or read." },
    { "not-xml", error, error, "The file is not XML, or too large or nested too deeply: it is not read at all." },
    { "unknown-root", warning, warning, "The root has another name than \"preferences\". It is read all the same." },
    { "unknown-element", error, none, "No preference comes from an element of this name, or at this place." },
    { "unknown-attribute", warning, warning, "An attribute that an element of this name does not have is not read." },
    { "ignored-content", warning, warning, "What stands inside of the element is not read." },
    { "missing-id", error, error, "An element without an id belongs to no preference." },
    { "duplicate-key", error, warning, "The same file has the key before, under the same conditions." },
    { "shadowed-key", warning, none, "A later definition holds wherever this one does, and replaces it." },
    { "dropped-by-lock", error, warning, "An earlier definition locks the key, so that this value is never used." },
    { "unknown-category", error, none, "A category that does not exist is Internal: no editor shows it." },
    { "missing-value", warning, warning, "Without a value the default is no, 0 or black." },
    { "bad-value", error, error, "The text is no value of the type: another value is used." },
    { "bad-flag", error, none, "The text is neither true nor false, which counts as false." },
    { "reversed-range", error, none, "The minimum is above the maximum." },
    { "outside-range", error, warning, "The value is outside of the range that an editor offers." },
    { "outside-channel", error, error, "A part of a color is outside 0 to 255, and is taken modulo 256." },
    { "unreadable-shortcut", error, error, "The text is not one key, with or without modifiers." },
    { "missing-font", warning, warning, "The font is not on this machine, which takes another one." },
    { "bad-platform", error, none, "The platforms are windows, macosx and linux, or \"not \" and one of them." },
    { "bad-mode", error, none, "The modes are full, paint and scan, or \"not \" and one of them." },
    { "bad-feature", error, none, "A feature is one word, or \"not \" and a word." },
    { "never-holds", error, none, "The conditions contradict each other." },
    { "conditional-cached-key", error, none, "The application caches the key, which then must not have a condition." },
    { "unknown-key", error, warning, "No definition of the installation has the key." },
    { "changed-type", error, none, "The type is not that of the definition: the application gets its fallback value." },
    { "changed-category", warning, none, "The category is not that of the definition: an editor shows it elsewhere." },
    { "repeated-default", warning, none, "The value is the default of the definition that it replaces." },
    { "missing-set", none, error, "The preference set that the user chose is not there or cannot be read." },
};
static_assert(sizeof(rules) / sizeof(rules[0]) == std::size_t(Rule::Count), "each rule has its text");
} // namespace

QStringList ruleNames()
{
    QStringList names;
    for (RuleText const &rule : rules)
        names.append(QLatin1String(rule.name));
    return names;
}

RuleText const &textOf(Rule rule)
{
    return rules[std::size_t(rule)];
}

char const *textOf(Severity severity)
{
    return severity == Severity::Error ? "error" : severity == Severity::Warning ? "warning" : "-";
}
