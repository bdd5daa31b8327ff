#include "Command.h"
#include "FileChecks.h"
#include "PrefsStore.h"
#include "ValueText.h"

#include "PR_PrefConstants.h"

#include <QCommandLineParser>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTextStream>

#include <algorithm>
#include <map>
#include <tuple>

using namespace Qt::StringLiterals;

namespace {
void printRules(QTextStream &out)
{
    for (int rule = 0; rule < int(Rule::Count); ++rule) {
        RuleText const &text = textOf(Rule(rule));
        out << text.name << '\t' << textOf(text.inDefinitions) << '\t' << textOf(text.inUserFile) << '\t'
            << text.explanation << '\n';
    }
}

QJsonObject toJson(Finding const &finding)
{
    return { { u"file"_s, finding.file }, { u"line"_s, finding.line }, { u"column"_s, finding.column },
        { u"severity"_s, QLatin1String(textOf(finding.severity)) },
        { u"rule"_s, QLatin1String(textOf(finding.rule).name) }, { u"key"_s, finding.key }, { u"text"_s, finding.text },
        { u"suggestion"_s, finding.suggestion } };
}

// How often each rule was broken for each key, most often first.
class Summary {
public:
    void add(Finding const &finding) { ++m_counts[{ finding.rule, finding.severity, finding.key }]; }

    void print(QTextStream &out, bool asJson) const
    {
        std::vector<std::pair<Row, qsizetype>> rows(m_counts.begin(), m_counts.end());
        std::stable_sort(rows.begin(), rows.end(), [](auto const &a, auto const &b) { return a.second > b.second; });
        QJsonArray array;
        for (auto const &[row, count] : rows) {
            auto const &[rule, severity, key] = row;
            QLatin1String const name(textOf(rule).name), weight(textOf(severity));
            if (asJson)
                array.append(QJsonObject{
                    { u"count"_s, count }, { u"severity"_s, weight }, { u"rule"_s, name }, { u"key"_s, key } });
            else
                out << count << '\t' << weight << '\t' << name << '\t' << ValueText::escaped(key) << '\n';
        }
        if (asJson)
            out << QString::fromUtf8(QJsonDocument(array).toJson());
    }

private:
    using Row = std::tuple<Rule, Severity, QString>;
    std::map<Row, qsizetype> m_counts;
};

// The rules that the user wants left out.
QStringList ignoredRules(Call const &call)
{
    QStringList const ignored = call.options.values(u"ignore"_s);
    QStringList const names = ruleNames();
    for (QString const &name : ignored) {
        if (!names.contains(name))
            throw Failure{ ExitStatus::WrongUsage, u"There is no rule \"%1\"."_s.arg(ValueText::escaped(name)) };
    }
    return ignored;
}

// A user's file is none of the definition files by its place or name, nor does it hold categories.
PR_LoadObserver::Layer layerOf(PR_XmlFile const &file)
{
    QFileInfo const info(file.path);
    QString const name = info.fileName();
    if (info.absolutePath().split(u'/').contains("preferenceSets"_L1))
        return PR_LoadObserver::PreferenceSet;
    if (name.contains("override"_L1, Qt::CaseInsensitive))
        return PR_LoadObserver::Override;
    static QStringList const mainNames{ u"prefs.xml"_s, u"pv_prefs.xml"_s, u"localPrefs.xml"_s,
        u"pv_localPrefs.xml"_s };
    bool const isMainFile = mainNames.contains(name) || (file.tree.root() && holdsDefinitions(*file.tree.root()));
    return isMainFile ? PR_LoadObserver::MainFile : PR_LoadObserver::UserFile;
}

std::vector<Finding> check(QString const &path, CheckedFiles &files)
{
    PR_XmlFile file = PR_XmlFile::read(path);
    auto const layer = layerOf(file);
    if (layer != PR_LoadObserver::UserFile && file.elementCount > PR_Loader::MaximumDefinitions)
        file = PR_XmlFile::read(path, PR_Loader::MaximumDefinitions);
    return findingsOf(file, layer, files);
}
} // namespace

std::vector<Finding> findingsOf(PR_XmlFile const &file, PR_LoadObserver::Layer layer, CheckedFiles &files)
{
    bool const isUserFile = layer == PR_LoadObserver::UserFile;
    Findings findings(file, isUserFile ? Findings::UserFile : Findings::DefinitionFile);
    if (file.state != PR_XmlFile::Read)
        findings.addUnreadable();
    else if (isUserFile)
        checkUserFile(findings, file, files.installation);
    else
        checkDefinitions(findings, file, layer, files);
    return findings.inOrder();
}

void print(Finding const &finding, QTextStream &out)
{
    out << ValueText::escaped(finding.file) << ':' << finding.line << ':' << finding.column << ": "
        << textOf(finding.severity) << ": " << ValueText::escaped(finding.text);
    if (!finding.suggestion.isEmpty())
        out << "; did you mean \"" << ValueText::escaped(finding.suggestion) << "\"?";
    out << " [" << textOf(finding.rule).name << "]\n";
}

void Verbs::check(Call const &call)
{
    if (call.options.isSet(u"rules"_s))
        return printRules(call.out);
    QString const candidate = call.options.value(u"override"_s);
    bool const asJson = call.options.isSet(u"json"_s);
    bool const isSummary = call.options.isSet(u"summary"_s);
    QStringList const ignored = ignoredRules(call);
    CheckedFiles files{ Installation(call.options.isSet(u"local"_s), candidate) };
    Summary summary;
    QJsonArray array;
    qsizetype errors = 0;
    qsizetype warnings = 0;
    for (QString const &file : call.arguments.isEmpty() ? Installation::files(candidate) : call.arguments) {
        for (Finding const &finding : ::check(file, files)) {
            if (ignored.contains(QLatin1String(textOf(finding.rule).name)))
                continue;
            ++(finding.severity == Severity::Error ? errors : warnings);
            if (isSummary)
                summary.add(finding);
            else if (asJson)
                array.append(toJson(finding));
            else
                print(finding, call.out);
        }
    }
    if (isSummary)
        summary.print(call.out, asJson);
    else if (asJson)
        call.out << QString::fromUtf8(QJsonDocument(array).toJson());
    if (errors > 0 || (warnings > 0 && call.options.isSet(u"strict"_s)))
        throw Failure{ ExitStatus::CannotRead, u"Errors: %1, warnings: %2."_s.arg(errors).arg(warnings) };
}
