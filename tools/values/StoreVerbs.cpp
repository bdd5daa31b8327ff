#include "Command.h"
#include "ItemFilter.h"
#include "PrefsStore.h"
#include "ValueText.h"

#include "PR_DefinitionList.h"
#include "PR_DoubleItem.h"
#include "PR_FontItem.h"
#include "PR_IntItem.h"

#include <QCommandLineParser>
#include <QTextStream>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {
QString yesOrNo(bool value)
{
    return value ? u"yes"_s : u"no"_s;
}
// Tells which preferences have the shortcut of an item too.
void warnOfShortcut(PrefsStore const &store, PR_PrefItem const &item)
{
    QString const text = item.valueAsString();
    if (item.getType() != PR_PrefItem::Shortcut || text.isEmpty())
        return;
    for (PR_PrefItem const *other : store) {
        if (other != &item && other->getType() == PR_PrefItem::Shortcut && other->valueAsString() == text)
            std::fprintf(stderr, "prefs: %s is the shortcut of %s too.\n", qUtf8Printable(text),
                qUtf8Printable(ValueText::escaped(other->getKey())));
    }
}
} // namespace

void Verbs::list(Call const &call)
{
    ItemFilter const filter(call.options);
    PrefsStore store(call);
    store.useFontsWhere([&filter](PR_PrefItem const &item) { return filter.admits(item); });
    for (PR_PrefItem const *item : store) {
        if (!filter.admits(*item))
            continue;
        call.out << ValueText::escaped(item->getKey()) << '\t' << ValueText::escaped(item->getTag()) << '\t'
                 << ValueText::escaped(item->valueAsString()) << '\n';
    }
}

void Verbs::get(Call const &call)
{
    PrefsStore store(call);
    call.out << store.item(call.arguments[0]).valueAsString() << '\n';
}

void Verbs::describe(Call const &call)
{
    PrefsStore store(call);
    PR_PrefItem const &item = store.item(call.arguments[0]);
    auto const line = [&call](char const *label, QString const &text) {
        call.out << label << ": " << ValueText::escaped(text) << '\n';
    };
    line("Key", item.getKey());
    line("Type", item.getTag());
    line("Category", PR_PrefItem::getCategoryString(item.getCategory()));
    line("Value", item.valueAsString());
    line("Default", item.defaultValueAsString());
    PR_DefinitionList const definitions(store);
    PR_DefinitionList::Definition const *const definition = definitions.find(item.getKey());
    if (auto const *number = dynamic_cast<PR_IntItem const *>(&item))
        line("Range", u"%1 to %2"_s.arg(number->minValue()).arg(number->maxValue()));
    if (auto const *number = dynamic_cast<PR_DoubleItem const *>(&item)) {
        auto const text = [](std::optional<double> limit) { return limit ? QString::number(*limit) : u"any"_s; };
        if (definition && (definition->minimum || definition->maximum))
            line("Range", u"%1 to %2"_s.arg(text(definition->minimum), text(definition->maximum)));
        line("Percentage", yesOrNo(number->percentage()));
    }
    if (definition && !definition->unit.isEmpty())
        line("Unit", definition->unit);
    if (definition && !definition->choices.isEmpty()) {
        QStringList choices;
        for (auto const &choice : definition->choices)
            choices.append(u"%1=%2"_s.arg(choice.value).arg(choice.name));
        line("Choices", choices.join("; "_L1));
    }
    if (definition && !definition->group.isEmpty())
        line("Group", definition->group);
    if (auto const *font = dynamic_cast<PR_FontItem const *>(&item))
        line("Choices", font->EnumNameList().join(", "_L1));
    line("Locked", yesOrNo(item.hasFacilityOverride(false)));
    line("Origin", ValueText::originOf(item));
    line("Short description", item.getShortDescription());
    line("Long description", item.getLongDescription());
}

void Verbs::set(Call const &call)
{
    PrefsStore store(call, PrefsStore::ToWrite);
    QString const text = call.arguments[1];
    PR_PrefItem &item = store.unlockedItem(call.arguments[0]);
    ValueText::Outcome const outcome = ValueText::assign(item, text);
    if (outcome == ValueText::Refused)
        throw Failure{ ExitStatus::NotAValue, ValueText::refusal(item, text) };
    if (outcome == ValueText::Changed)
        store.saveNow();
    warnOfShortcut(store, item);
}

void Verbs::reset(Call const &call)
{
    PrefsStore store(call, PrefsStore::ToWrite);
    QString const key = call.arguments[0];
    PR_PrefItem const &item = store.unlockedItem(key);
    if (item.getCategory() == PR_PrefItem::Internal)
        throw Failure{ ExitStatus::NoSuchKey,
            u"%1 has no definition, and so no default."_s.arg(ValueText::escaped(key)) };
    if (item.getOrigin() == PR_PrefItem::OriginDefault)
        return;
    store.restoreDefault(key);
    store.saveNow();
}
