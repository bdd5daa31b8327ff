#include "ItemFilter.h"

#include "ValueText.h"
#include "Verb.h"

#include <QCommandLineParser>

using namespace Qt::StringLiterals;

namespace {
PR_PrefItem::Category categoryOf(QString const &text)
{
    // Internal is also the answer for a text that names none.
    PR_PrefItem::Category const category = PR_PrefItem::getCategory(text);
    if (category == PR_PrefItem::Internal && text != PR_PrefItem::getCategoryString(category))
        throw Failure{ ExitStatus::WrongUsage, u"There is no category \"%1\"."_s.arg(ValueText::escaped(text)) };
    return category;
}
} // namespace

ItemFilter::ItemFilter(QCommandLineParser const &options)
    : m_changedOnly(options.isSet(u"changed"_s))
{
    if (options.isSet(u"category"_s))
        m_category = categoryOf(options.value(u"category"_s));
}

bool ItemFilter::admits(PR_PrefItem const &item) const
{
    return (!m_category || item.getCategory() == *m_category)
        && (!m_changedOnly || item.getOrigin() == PR_PrefItem::OriginUser);
}
