#ifndef FM_FONTMANAGER_H
#define FM_FONTMANAGER_H

#include "UT_String.h"
#include "brivantbase_export.h"

#include <QStringList>

#include <vector>

/*! The fonts that are available to the application. */
class BRIVANT_BASE_EXPORT FM_FontManager {
public:
    /*! One font. */
    struct FontDesc {
        UT_String name; /*!< Of the family, as shown. */
    };

    /*! The one instance; lives as long as the process. */
    [[nodiscard]] static FM_FontManager &instance();

    /*! The fonts in a stable order; valid until the next call. */
    [[nodiscard]] std::vector<FontDesc> const &getAvailableFonts() const;
    /*! Index, in that list, of the font to use when no other is named. */
    [[nodiscard]] unsigned int getDefaultFontId() const;

private:
    FM_FontManager() = default;
    Q_DISABLE_COPY_MOVE(FM_FontManager)

    mutable QStringList m_families; // what m_fonts was made from
    mutable std::vector<FontDesc> m_fonts;
};

#endif
