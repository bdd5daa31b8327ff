#include "Findings.h"

#include <QRegularExpression>

#include <algorithm>
#include <cstddef>
#include <utility>

using namespace Qt::StringLiterals;

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
    { "bad-key", warning, none, "A key is a word in upper case, of letters, digits and \"_\"." },
    { "duplicate-key", error, warning, "The same file has the key before, under the same conditions." },
    { "shadowed-key", warning, none, "A later definition holds wherever this one does, and replaces it." },
    { "dropped-by-lock", error, warning, "An earlier definition locks the key, so that this value is never used." },
    { "unknown-category", error, none, "A category that does not exist is Internal: no editor shows it." },
    { "missing-value", warning, warning, "Without a value the default is no, 0 or black." },
    { "missing-texts", warning, none, "Without shortDesc and longDesc an editor has nothing to show but the key." },
    { "bad-value", error, error, "The text is no value of the type: another value is used." },
    { "bad-flag", error, none, "The text is neither true nor false, which counts as false." },
    { "bad-lock", error, none, "It looks like a lock, but facilityOverride=\"true\" alone locks." },
    { "reversed-range", error, none, "The minimum is above the maximum." },
    { "outside-range", error, warning, "The value is outside of the range that an editor offers." },
    { "outside-percentage", warning, warning, "A percentage is a number from 0 to 1." },
    { "bad-choices", error, none, "The names of numbers are as in \"0=Never; 1=Always\", the default among them." },
    { "outside-channel", error, error, "A part of a color is outside 0 to 255, and is taken modulo 256." },
    { "unreadable-shortcut", error, error, "The text is not one key, with or without modifiers." },
    { "same-shortcut", warning, none, "Another preference has the same shortcut under the same conditions." },
    { "missing-font", warning, warning, "The font is not on this machine, which takes another one." },
    { "bad-platform", error, none, "The platforms are windows, macosx and linux, or \"not \" and one of them." },
    { "bad-mode", error, none, "The modes are full, paint and scan, or \"not \" and one of them." },
    { "bad-feature", error, none, "A feature is one word, or \"not \" and a word." },
    { "never-holds", error, none, "The conditions contradict each other." },
    { "conditional-cached-key", error, none, "The application caches the key, which then must not have a condition." },
    { "unknown-key", error, warning, "No definition of the installation has the key." },
    { "two-types", warning, none, "The files give the key two types: which one counts depends on where it is read." },
    { "changed-type", error, error,
        "The type is not that of the definition: the application gets its fallback value." },
    { "changed-category", warning, none, "The category is not that of the definition: an editor shows it elsewhere." },
    { "left-off", warning, none, "What the definition has, and what replaces it does not: it is gone then." },
    { "repeated-default", warning, none, "The value is the default of the definition that it replaces." },
    { "without-effect", warning, none, "The preference set is chosen by the user's file alone." },
    { "missing-set", warning, error, "The preference set that is chosen is not there or cannot be read." },
    { "kept-file", none, warning, "Values that a run could not read and had to replace are kept beside the file." },
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

Findings::Findings(PR_XmlFile const &file, FileKind kind)
    : m_file(file)
    , m_kind(kind)
{
}

void Findings::add(
    Rule rule, PR_Element const &element, QString const &text, QString const &attribute, QString const &suggestion)
{
    Severity const severity = m_kind == UserFile ? textOf(rule).inUserFile : textOf(rule).inDefinitions;
    bool const isItem = element.parent && element.name != u"category";
    Finding finding{ m_file.path, element.line, element.column, severity, rule,
        isItem ? element.id().toString() : QString(), text, suggestion };
    if (element.hasAttribute(attribute)) {
        XmlText const &all = this->text();
        qsizetype const place = all.attributeOf(all.positionOf(element.line, element.column), attribute).begin;
        auto const next = std::upper_bound(all.lineStarts.begin(), all.lineStarts.end(), place);
        finding.line = int(next - all.lineStarts.begin());
        finding.column = int(place - *std::prev(next)) + 1;
    }
    m_findings.push_back(std::move(finding));
}

void Findings::addUnreadable()
{
    Rule const rule = m_file.state == PR_XmlFile::CannotOpen ? Rule::CannotRead : Rule::NotXml;
    Finding finding{ m_file.path, m_file.errorLine, m_file.errorColumn, textOf(rule).inUserFile, rule, {}, m_file.error,
        {} };
    if (m_file.errorLine > 0) {
        static QRegularExpression const bareAmpersand(u"&\\w*[^;\\w]{0,2}.?$"_s);
        XmlText const &all = text();
        QStringView const before = QStringView(all.text).left(all.positionOf(finding.line, finding.column) + 1);
        if (bareAmpersand.match(before.right(64).toString()).hasMatch())
            finding.suggestion = u"&amp;"_s;
    }
    m_findings.push_back(finding);
}

std::vector<Finding> const &Findings::inOrder()
{
    std::stable_sort(m_findings.begin(), m_findings.end(),
        [](Finding const &a, Finding const &b) { return std::pair(a.line, a.column) < std::pair(b.line, b.column); });
    return m_findings;
}

XmlText const &Findings::text()
{
    if (!m_text)
        m_text.emplace(QString::fromUtf8(m_file.text));
    return *m_text;
}
