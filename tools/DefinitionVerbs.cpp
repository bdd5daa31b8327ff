#include "DefinitionVerbs.h"

#include "Checker.h"
#include "CommandTable.h"
#include "Explainer.h"
#include "ValueText.h"
#include "Verb.h"

#include <QCommandLineParser>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTextStream>

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

void print(Finding const &finding, QTextStream &out)
{
    out << finding.file << ':' << finding.place.line << ':' << finding.place.column << ": " << textOf(finding.severity)
        << ": " << ValueText::escaped(finding.text);
    if (!finding.suggestion.isEmpty())
        out << "; did you mean \"" << ValueText::escaped(finding.suggestion) << "\"?";
    out << " [" << textOf(finding.rule).name << "]\n";
}

QJsonObject toJson(Finding const &finding)
{
    return { { u"file"_s, finding.file }, { u"line"_s, finding.place.line }, { u"column"_s, finding.place.column },
        { u"severity"_s, QLatin1String(textOf(finding.severity)) },
        { u"rule"_s, QLatin1String(textOf(finding.rule).name) }, { u"key"_s, finding.key }, { u"text"_s, finding.text },
        { u"suggestion"_s, finding.suggestion } };
}

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

void printJson(QJsonArray const &array, QTextStream &out)
{
    out << QString::fromUtf8(QJsonDocument(array).toJson());
}
} // namespace

void DefinitionVerbs::check(Call const &call)
{
    if (call.options.isSet(u"rules"_s))
        return printRules(call.out);
    if (call.arguments.isEmpty())
        throw CommandTable::wrongArguments(*CommandTable::findVerb(u"check"_s)); // only --rules goes without
    bool const asJson = call.options.isSet(u"json"_s);
    QStringList const ignored = ignoredRules(call);
    Checker checker(call.options.isSet(u"local"_s));
    QJsonArray array;
    qsizetype errors = 0;
    qsizetype warnings = 0;
    for (QString const &file : call.arguments) {
        for (Finding const &finding : checker.check(file)) {
            if (ignored.contains(QLatin1String(textOf(finding.rule).name)))
                continue;
            ++(finding.severity == Severity::Error ? errors : warnings);
            if (asJson)
                array.append(toJson(finding));
            else
                print(finding, call.out);
        }
    }
    if (asJson)
        printJson(array, call.out);
    if (errors > 0 || (warnings > 0 && call.options.isSet(u"strict"_s)))
        throw Failure{ ExitStatus::CannotRead, u"Errors: %1, warnings: %2."_s.arg(errors).arg(warnings) };
}

void DefinitionVerbs::explain(Call const &call)
{
    bool const asJson = call.options.isSet(u"json"_s);
    Explainer explainer(call);
    QJsonArray array;
    QStringList texts;
    for (QString const &key : call.arguments) { // of which one may be unknown: then nothing is printed
        Explanation const explanation = explainer.explain(key);
        if (asJson)
            array.append(explanation.toJson());
        else
            texts.append(explanation.toText());
    }
    if (asJson)
        printJson(array, call.out);
    else
        call.out << texts.join(u'\n');
}
