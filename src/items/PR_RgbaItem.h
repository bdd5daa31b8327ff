#ifndef PR_RGBAITEM_H
#define PR_RGBAITEM_H

#include "PR_TypedItem.h"

/*! A colour with transparency: alpha (255 opaque) in bits 31 to 24, then red, green and blue. */
class BRIVANT_PREFERENCE_EXPORT PR_RgbaItem : public PR_TypedItem<PR_RgbaItem, unsigned int> {
public:
    /*! \a color is both default and current value. */
    PR_RgbaItem(Category category, QString const &key, unsigned int color);
    /*! From a definition: "red", "green", "blue" and "alpha", opaque without alpha. Numbers wrap modulo 256; a text
       that is no number counts as 0. */
    PR_RgbaItem(Category category, QString const &key, QDomElement const &definition);
    ~PR_RgbaItem() override;

    /*! Color. */
    Type getType() const override;

    /*! Makes \a color the user's colour; true only when it changed. A locked item reports and refuses. */
    bool setValue(unsigned int color) { return changeValue(color); }

    /*! The colour word of four channels, each reduced modulo 256. */
    [[nodiscard]] static unsigned int pack(int red, int green, int blue, int alpha);

private:
    friend class PR_TypedItem<PR_RgbaItem, unsigned int>;
    friend struct PR_ItemTypes;

    PR_RgbaItem(Category category, QString const &key, PR_Element const &definition);
    void write(PR_XmlTree &tree, PR_Element *parent) const;
    bool readElement(PR_Element const &element, unsigned int &color) const;
    bool readToken(TULex &lex, unsigned int &color) const;
    QString asString(unsigned int color) const;
};

#endif
