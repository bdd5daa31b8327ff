#include "ItemFilter.h"

#include "Command.h"
#include "ValueText.h"

#include <QCommandLineParser>

using namespace Qt::StringLiterals;

QStringList CategoryText::all()
{
    QStringList texts;
    for (int i = PR_PrefItem::Internal; i <= PR_PrefItem::Render; ++i) {
        QString const text = PR_PrefItem::getCategoryString(PR_PrefItem::Category(i));
        if (!texts.contains(text))
            texts.append(text);
    }
    return texts + QStringList{ u"Panovia"_s }; // understood, but never shown under its own name
}

std::optional<PR_PrefItem::Category> CategoryText::categoryOf(QString const &text)
{
    // Internal is also the answer for a text that names none.
    PR_PrefItem::Category const category = PR_PrefItem::getCategory(text);
    bool const isNamed = category != PR_PrefItem::Internal || text == PR_PrefItem::getCategoryString(category);
    return isNamed ? std::optional(category) : std::nullopt;
}

ItemFilter::ItemFilter(QCommandLineParser const &options)
    : m_changedOnly(options.isSet(u"changed"_s))
    , m_lockedOnly(options.isSet(u"locked"_s))
{
    if (!options.isSet(u"category"_s))
        return;
    QString const text = options.value(u"category"_s);
    m_category = CategoryText::categoryOf(text);
    if (!m_category)
        throw Failure{ ExitStatus::WrongUsage, u"There is no category \"%1\"."_s.arg(ValueText::escaped(text)) };
}

bool ItemFilter::admits(PR_PrefItem const &item) const
{
    return (!m_category || item.getCategory() == *m_category)
        && (!m_changedOnly || item.getOrigin() == PR_PrefItem::OriginUser)
        && (!m_lockedOnly || item.hasFacilityOverride(false));
}
