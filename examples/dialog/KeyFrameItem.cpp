#include "KeyFrameItem.h"

#include <PR_PrefConstants.h>
#include <PR_PrefItemFactory.h>

#include <QCoreApplication>
#include <QDomElement>

#include <iterator>

using namespace Qt::StringLiterals;

namespace {
// Names in files, which never change; the texts shown may be translated.
char constantName[] = "constant";
char linearName[] = "linear";
char bezierName[] = "bezier";
char *names[] = { constantName, linearName, bezierName };
char const *const texts[] = { QT_TRANSLATE_NOOP("KeyFrameItem", "Constant"),
    QT_TRANSLATE_NOOP("KeyFrameItem", "Linear"), QT_TRANSLATE_NOOP("KeyFrameItem", "Bezier") };
} // namespace

KeyFrameItem::KeyFrameItem(Category category, QString const &key, QDomElement const &definition)
    : PR_EnumItem(category, key, u"keyFrame"_s)
{
    m_nameCount = std::size(names);
    m_nameTable = names;
    for (char const *const text : texts)
        m_displayNames.append(QCoreApplication::translate("KeyFrameItem", text));
    m_default = index(definition.attribute(kValue));
    m_value = m_default;
}

PR_PrefItem *KeyFrameItem::clone()
{
    return new KeyFrameItem(*this);
}

void KeyFrameItem::registerType()
{
    // The registry refers to the factory for as long as the process lives.
    static PR_ConcretePrefItemFactory<KeyFrameItem> factory(u"keyFrame"_s);
    factory.registerClass();
}
