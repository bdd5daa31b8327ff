#ifndef PR_FONTITEM_H
#define PR_FONTITEM_H

#include "PR_EnumItem.h"

/*! One of the fonts that were available when the item was built. Files hold its name in lower case. */
class BRIVANT_PREFERENCE_EXPORT PR_FontItem : public PR_EnumItem {
public:
    /*! \a fontName is the default, without regard to case; for a font that is not there the font manager's default. */
    PR_FontItem(Category category, QString const &key, QString const &fontName);
    /*! From a definition: "value" names the default font. */
    PR_FontItem(Category category, QString const &key, QDomElement const &definition);
    /*! \name Copies */
    /*!\{*/
    /*! With a list of fonts of its own. */
    PR_FontItem(PR_FontItem const &other);
    PR_FontItem &operator=(PR_FontItem const &other) = default; /*!< The same. */
    /*!\}*/

    ~PR_FontItem() override;
    PR_PrefItem *clone() override;
    void copy(PR_PrefItem *other) override;
    /*! The name of the chosen font; empty when the choice is none of the fonts. */
    [[nodiscard]] virtual QString fontName();

private:
    friend struct PR_ItemTypes;

    PR_FontItem(Category category, QString const &key, PR_Element const &definition);
    void init(QString const &fontName);
};

#endif
