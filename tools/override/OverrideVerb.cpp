#include "Application.h"
#include "Command.h"
#include "ConditionSet.h"
#include "DefinitionText.h"
#include "FileChecks.h"
#include "ValueText.h"

#include "PR_BoolItem.h"
#include "PR_PrefConstants.h"
#include "PR_RgbaItem.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <QTextStream>

#include <algorithm>
#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace {
using Attributes = std::vector<DefinitionText::Attribute>;

void checkUsage(Call const &call)
{
    auto const wrongUsage = [](QString const &text) { return Failure{ ExitStatus::WrongUsage, text }; };
    auto const isSet = [&call](char const *name) { return call.options.isSet(QLatin1String(name)); };
    if (!isSet("output"))
        throw wrongUsage(u"override takes --output FILE."_s);
    if (isSet("lock") + isSet("unlock") + isSet("remove") > 1)
        throw wrongUsage(u"override takes one of --lock, --unlock and --remove."_s);
    for (QString const &argument : call.arguments) {
        if (isSet("remove") && argument.contains(u'='))
            throw wrongUsage(u"With --remove a key has no value: %1."_s.arg(ValueText::escaped(argument)));
    }
    QString const path = call.options.value(u"output"_s);
    QString const file = QFileInfo(path).canonicalFilePath();
    for (QString const &shipped : { PR_Loader::mainPath(), PR_Loader::localPath() }) {
        if (!file.isEmpty() && file == QFileInfo(shipped).canonicalFilePath())
            throw wrongUsage(u"%1 is no override."_s.arg(ValueText::escaped(path)));
    }
}

// The attributes that give a definition the present value of an item.
Attributes attributesOf(PR_PrefItem &item)
{
    if (auto const *color = dynamic_cast<PR_RgbaItem const *>(&item)) {
        auto const channel = [&](int shift) { return QString::number(color->value() >> shift & 0xFF); };
        return { { kRed, channel(16) }, { kGreen, channel(8) }, { kBlue, channel(0) }, { kAlpha, channel(24) } };
    }
    if (auto const *flag = dynamic_cast<PR_BoolItem const *>(&item))
        return { { kValue, flag->value() ? u"true"_s : u"false"_s } };
    return { { kValue, ValueText::exact(item) } };
}

// All definitions of a key in the main file of the store, of every platform, mode and product.
std::vector<PR_Element const *> shippedOf(QString const &key, Installation &installation)
{
    bool const isLocal = installation.isOfMachine();
    std::vector<PR_Element const *> found;
    for (PR_Element const *definition : installation.mainFiles()[isLocal ? 1 : 0]->of(key)) {
        if (definition->name == u"font")
            (void)Application::fonts(); // which its item looks for
        if (itemOf(*definition))
            found.push_back(definition);
    }
    if (!found.empty())
        return found;
    QString const other =
        u"There is no preference %1 %2 --local."_s.arg(ValueText::escaped(key), isLocal ? u"with"_s : u"without"_s);
    bool const isOfOther = installation.find(key).second != nullptr;
    throw Failure{ ExitStatus::NoSuchKey,
        isOfOther ? other : ValueText::noSuchPreference(key, installation.nearestTo(key)) };
}

Attributes valueFor(std::vector<PR_Element const *> const &definitions, QString const &text)
{
    Attributes attributes;
    for (PR_Element const *definition : definitions) {
        std::unique_ptr<PR_PrefItem> const item = itemOf(*definition);
        if (ValueText::assign(*item, text) == ValueText::Refused)
            throw Failure{ ExitStatus::NotAValue, ValueText::refusal(*item, text) };
        attributes = attributesOf(*item);
    }
    return attributes;
}

// Gives an override definitions of a key, "KEY" or "KEY=VALUE", wherever the installation has one, and all of them the
// value and the lock.
void define(QString const &argument, DefinitionText &text, Installation &installation, Call const &call)
{
    QString const key = argument.section(u'=', 0, 0);
    bool const locks = call.options.isSet(u"lock"_s);
    auto shipped = shippedOf(key, installation);
    Attributes attributes;
    if (argument.contains(u'='))
        attributes = valueFor(shipped, argument.section(u'=', 1));
    if (locks)
        attributes.push_back({ u"facilityOverride"_s, u"true"_s });
    else if (call.options.isSet(u"unlock"_s))
        attributes.push_back({ u"facilityOverride"_s, {} });

    std::vector<ConditionSet> present;
    for (PR_Element const *element : text.of(key))
        present.emplace_back(*element);
    if (locks) // the first one that holds counts then, not the last one
        std::reverse(shipped.begin(), shipped.end());
    for (PR_Element const *definition : shipped) {
        ConditionSet const wanted(*definition);
        if (std::none_of(present.begin(), present.end(), [&](ConditionSet const &set) { return set.covers(wanted); }))
            text.add(*definition);
    }
    text.change(key, attributes);
}

void takeOut(QString const &key, DefinitionText &text)
{
    if (text.of(key).empty())
        throw Failure{ ExitStatus::NoSuchKey,
            u"%1 has no %2."_s.arg(ValueText::escaped(text.file().path), ValueText::escaped(key)) };
    text.remove(key);
}

// Shows what is wrong; throws a Failure when the file must not be written.
void expectGood(PR_XmlFile const &file, CheckedFiles &files, QTextStream &out)
{
    qsizetype errors = 0;
    auto const findings = findingsOf(file, PR_LoadObserver::Override, files);
    for (Finding const &finding : findings) {
        print(finding, out);
        errors += finding.severity == Severity::Error ? 1 : 0;
    }
    if (errors > 0)
        throw Failure{ ExitStatus::CannotRead,
            u"Errors: %1, warnings: %2.\nNothing was written."_s.arg(errors).arg(qsizetype(findings.size()) - errors) };
}
} // namespace

void Verbs::writeOverride(Call const &call)
{
    checkUsage(call);
    CheckedFiles files{ Installation(call.options.isSet(u"local"_s), {}) };
    DefinitionText text(call.options.value(u"output"_s));
    for (QString const &argument : call.arguments) {
        if (text.file().state != PR_XmlFile::Read)
            break; // what is wrong is told below
        if (call.options.isSet(u"remove"_s))
            takeOut(argument, text);
        else
            define(argument, text, files.installation, call);
    }
    expectGood(text.file(), files, call.out);
    text.save();
}
