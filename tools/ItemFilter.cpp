#include "ItemFilter.h"

#include "CategoryText.h"
#include "ValueText.h"
#include "Verb.h"

#include <QCommandLineParser>

using namespace Qt::StringLiterals;

ItemFilter::ItemFilter(QCommandLineParser const &options)
    : m_changedOnly(options.isSet(u"changed"_s))
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
        && (!m_changedOnly || item.getOrigin() == PR_PrefItem::OriginUser);
}
