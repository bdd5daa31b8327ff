#include "Findings.h"

#include <QRegularExpression>

#include <algorithm>
#include <cstddef>
#include <utility>

using namespace Qt::StringLiterals;

namespace {
constexpr RuleText rules[] = {
#define RULE(Name, name, inDefinitions, inUserFile, explanation)                                                       \
    { name, Severity::inDefinitions, Severity::inUserFile, explanation },
#include "Rules.def"
};
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
