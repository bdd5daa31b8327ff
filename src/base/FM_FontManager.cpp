#include "FM_FontManager.h"

#include "HostPlatform.h"

#include <QFontDatabase>
#include <QGuiApplication>

FM_FontManager &FM_FontManager::instance()
{
    static FM_FontManager manager;
    return manager;
}

std::vector<FM_FontManager::FontDesc> const &FM_FontManager::getAvailableFonts() const
{
    auto const &hostFonts = HostPlatform::current().fonts;
    QStringList families;
    if (hostFonts)
        families = *hostFonts;
    else if (qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
        families = QFontDatabase::families();

    if (families != m_families) {
        m_fonts.clear();
        m_fonts.reserve(size_t(families.size()));
        for (QString const &family : families)
            m_fonts.push_back({ UT_String(family) });
        m_families = families;
    }
    return m_fonts;
}

unsigned int FM_FontManager::getDefaultFontId() const
{
    return HostPlatform::current().defaultFontId;
}
