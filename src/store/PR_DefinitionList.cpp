#include "PR_DefinitionList.h"

#include "PR_Loader_p.h"
#include "PR_Preference_p.h"

#include "HostPlatform.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

class PR_DefinitionList::Reader final : public PR_LoadObserver {
public:
    explicit Reader(PR_DefinitionList &list)
        : m_list(list)
    {
    }

private:
    void definition(
        PR_LoadObserver::Definition const &found, Outcome outcome, PR_LoadObserver::Definition const *) override
    {
        if (outcome != Won)
            return;
        QString const key = found.item->getKey();
        auto const place = m_list.m_places.constFind(key);
        if (place == m_list.m_places.constEnd()) {
            m_list.m_places.insert(key, m_list.m_definitions.size());
            m_list.m_definitions.append(PR_DefinitionList::Definition());
        }
        auto &definition = m_list.m_definitions[m_list.m_places.value(key)];
        definition.key = key;
        definition.category = found.item->getCategory();
        definition.layer = PR_DefinitionList::Layer(found.layer);
        auto const take = [&found](char16_t const *attribute, auto const &read) {
            if (found.element->hasAttribute(attribute))
                read(found.element->attribute(attribute).toString());
        };
        auto const takeLimit = [&take](char16_t const *attribute, std::optional<double> &limit) {
            take(attribute, [&limit](QString const &text) {
                bool isNumber = false;
                double const number = text.toDouble(&isNumber);
                limit = isNumber ? std::optional(number) : std::nullopt;
            });
        };
        take(u"group", [&](QString const &text) { definition.group = text; });
        take(u"unit", [&](QString const &text) { definition.unit = text; });
        if (found.element->name == u"int")
            take(u"choices",
                [&](QString const &text) { definition.choices = choicesOf(text).value_or(QList<Choice>()); });
        if (found.element->name == u"double") {
            takeLimit(u"min", definition.minimum);
            takeLimit(u"max", definition.maximum);
        }
    }

    PR_DefinitionList &m_list;
};

PR_DefinitionList::PR_DefinitionList(PR_Preference const &store)
{
    PR_ItemSet items;
    Reader reader(*this);
    PR_Loader loader(items, &reader);
    m_preferenceSet = PR_Loader::preferenceSetOf(PR_Loader::readFile(store.getPathXml()));
    loader.readStore(store.d->isLocal, m_preferenceSet);
    loader.define();
}

PR_DefinitionList::Definition const *PR_DefinitionList::find(QString const &key) const
{
    auto const place = m_places.constFind(key);
    return place == m_places.constEnd() ? nullptr : &m_definitions[*place];
}

QStringList PR_DefinitionList::preferenceSets()
{
    QFileInfo const any(PR_Loader::setPath(QStringLiteral("*")));
    QStringList names;
    for (QFileInfo const &set : any.dir().entryInfoList({ any.fileName() }, QDir::Files, QDir::Name))
        names.append(set.completeBaseName());
    return names;
}

std::optional<QList<PR_DefinitionList::Choice>> PR_DefinitionList::choicesOf(QString const &text)
{
    static QRegularExpression const form(QStringLiteral("^\\s*([+-]?\\d+)\\s*=\\s*(\\S.*?)\\s*$"));
    QList<Choice> choices;
    for (QString const &part : text.split(u';')) {
        auto const match = form.match(part);
        bool isNumber = false;
        int const value = match.captured(1).toInt(&isNumber);
        if (!isNumber
            || std::any_of(choices.cbegin(), choices.cend(), [value](auto const &each) { return each.value == value; }))
            return {};
        choices.append({ value, match.captured(2) });
    }
    return choices;
}

QString PR_DefinitionList::translated(QString const &key, QString const &text)
{
    auto const &translate = HostPlatform::current().translateDefinition;
    QString const own = translate && !text.isEmpty() ? translate(key, text) : QString();
    return own.isEmpty() ? text : own;
}
