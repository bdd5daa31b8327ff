#include "PR_Definition_p.h"

#include "PR_KeyItem.h"
#include "PR_PrefConstants.h"
#include "PR_PrefItemFactoryManager.h"

namespace {
// The text in memory of its own, not among those of the document, which would pin the memory around them.
QString ownText(QString const &text)
{
    return QString(text.constData(), text.size());
}

std::unique_ptr<PR_PrefItem> createTypedItem(PR_PrefItem::Category category, QDomElement const &element)
{
    QString const key = ownText(element.attribute(kId));
    QString const type = element.tagName();
    if (type == QLatin1String("shortcut"))
        return std::make_unique<PR_KeyItem>(category, key, element.attribute(kValue));
    auto const factory = PR_PrefItemFactoryManager::getInstance()->factory(type);
    return std::unique_ptr<PR_PrefItem>(factory ? factory->create(category, key, element) : nullptr);
}
} // namespace

std::unique_ptr<PR_PrefItem> PR_Definition::createItem() const
{
    auto item = createTypedItem(PR_PrefItem::getCategory(category.attribute(kId)), element);
    if (!item)
        return nullptr;
    item->setShortDescription(element.attribute(QStringLiteral("shortDesc")));
    item->setLongDescription(element.attribute(QStringLiteral("longDesc")));
    if (element.attribute(QStringLiteral("facilityOverride")).toLower() == QLatin1String("true"))
        item->setFacilityOverride();
    return item;
}

void PR_Definition::detachTexts(PR_PrefItem *item)
{
    item->setShortDescription(ownText(item->getShortDescription()));
    item->setLongDescription(ownText(item->getLongDescription()));
}

bool PR_Definition::mayReplace(PR_PrefItem const *held)
{
    return !held || !held->hasFacilityOverride(false);
}
