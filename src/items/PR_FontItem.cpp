#include "PR_FontItem.h"

#include "FM_FontManager.h"
#include "PR_Element_p.h"
#include "PR_PrefConstants.h"

#include <QDomElement>

#include <cstring>
#include <memory>

namespace {
// Machine names, each allocated by itself.
struct FreeNames {
    size_t count = 0;

    void operator()(char const *const *names) const
    {
        for (size_t i = 0; i < count; ++i)
            delete[] names[i];
        delete[] names;
    }
};
using Names = std::unique_ptr<char const *const[], FreeNames>;

Names namesOf(QStringList const &fonts)
{
    auto const count = size_t(fonts.size());
    auto *const table = new char const *[count]();
    Names names(table, FreeNames{ count });
    for (size_t i = 0; i < count; ++i) {
        QByteArray const name = fonts[qsizetype(i)].toLower().toUtf8();
        auto const size = size_t(name.size()) + 1;
        table[i] = static_cast<char const *>(std::memcpy(new char[size], name.constData(), size));
    }
    return names;
}
} // namespace

PR_FontItem::PR_FontItem(Category category, QString const &key, QString const &fontName)
    : PR_EnumItem(category, key, QStringLiteral("font"))
{
    init(fontName);
}

PR_FontItem::PR_FontItem(Category category, QString const &key, QDomElement const &definition)
    : PR_FontItem(category, key, definition.attribute(kValue))
{
}

PR_FontItem::PR_FontItem(Category category, QString const &key, PR_Element const &definition)
    : PR_FontItem(category, key, definition.attribute(u"value").toString())
{
}

PR_FontItem::PR_FontItem(PR_FontItem const &other)
    : PR_EnumItem(other)
{
    m_nameTable = namesOf(m_displayNames).release();
}

PR_FontItem::~PR_FontItem()
{
    FreeNames{ size_t(m_nameCount) }(m_nameTable);
}

PR_PrefItem *PR_FontItem::clone()
{
    return new PR_FontItem(*this);
}

void PR_FontItem::copy(PR_PrefItem *other)
{
    if (this == other)
        return;
    QStringList const fonts = static_cast<PR_EnumItem *>(other)->EnumNameList();
    Names names = namesOf(fonts);
    Names const replaced(m_nameTable, FreeNames{ size_t(m_nameCount) });
    PR_EnumItem::copy(other);
    m_nameTable = names.release();
    m_nameCount = quint64(fonts.size());
}

QString PR_FontItem::fontName()
{
    return isChoice(m_value) ? asDisplayString(m_value) : QString();
}

void PR_FontItem::init(QString const &fontName)
{
    FM_FontManager const &manager = FM_FontManager::instance();
    for (FM_FontManager::FontDesc const &font : manager.getAvailableFonts())
        m_displayNames.append(font.name.ToQString());
    Names names = namesOf(m_displayNames);
    m_nameTable = names.get();
    m_nameCount = quint64(m_displayNames.size());

    int const named = findChoice(fontName);
    m_default = named >= 0 ? named : int(manager.getDefaultFontId());
    m_value = m_default;
    names.release(); // nothing can fail any more
}
