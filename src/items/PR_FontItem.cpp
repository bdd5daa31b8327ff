#include "PR_FontItem.h"

#include "FM_FontManager.h"
#include "PR_PrefConstants.h"

#include <QDomElement>

#include <cstring>

PR_FontItem::PR_FontItem(Category category, QString const &key, QString const &fontName)
    : PR_EnumItem(category, key, QStringLiteral("font"))
{
    init(fontName);
}

PR_FontItem::PR_FontItem(Category category, QString const &key, QDomElement const &definition)
    : PR_FontItem(category, key, definition.attribute(kValue))
{
}

PR_FontItem::PR_FontItem(PR_FontItem const &other)
    : PR_EnumItem(other)
{
    buildNameTable();
}

PR_FontItem &PR_FontItem::operator=(PR_FontItem const &other)
{
    if (this != &other) {
        freeNameTable();
        PR_EnumItem::operator=(other);
        buildNameTable();
    }
    return *this;
}

PR_FontItem::~PR_FontItem()
{
    freeNameTable();
}

PR_PrefItem *PR_FontItem::clone()
{
    return new PR_FontItem(*this);
}

void PR_FontItem::copy(PR_PrefItem *other)
{
    if (this != other) {
        freeNameTable();
        PR_EnumItem::copy(other);
        buildNameTable();
    }
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
    buildNameTable();

    int const named = findChoice(fontName);
    m_default = named >= 0 ? named : int(manager.getDefaultFontId());
    m_value = m_default;
}

// Each item has a table of its own: the enumeration item shares the pointer when it is copied.
void PR_FontItem::buildNameTable()
{
    m_nameTable = nullptr;
    m_nameCount = quint64(m_displayNames.size());
    m_nameTable = new char *[m_nameCount]();
    for (quint64 i = 0; i < m_nameCount; ++i) {
        QByteArray const name = m_displayNames[qsizetype(i)].toLower().toUtf8();
        m_nameTable[i] = new char[size_t(name.size()) + 1];
        std::memcpy(m_nameTable[i], name.constData(), size_t(name.size()) + 1);
    }
}

void PR_FontItem::freeNameTable()
{
    for (quint64 i = 0; i < m_nameCount; ++i)
        delete[] m_nameTable[i];
    delete[] m_nameTable;
    m_nameTable = nullptr;
    m_nameCount = 0;
}
