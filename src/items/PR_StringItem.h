#ifndef PR_STRINGITEM_H
#define PR_STRINGITEM_H

#include "PR_TypedItem.h"

/*! A text; also the store's stand-in for keys whose type it does not know, hence the conversions. */
class BRIVANT_PREFERENCE_EXPORT PR_StringItem : public PR_TypedItem<PR_StringItem, QString> {
public:
    /*! \a text is both default and current value. */
    PR_StringItem(Category category, QString const &key, QString text);
    /*! From a definition: "value". */
    PR_StringItem(Category category, QString const &key, QDomElement const &definition);
    ~PR_StringItem() override;

    /*! Makes \a text the user's text; true only when it changed. A locked item reports and refuses. */
    bool setValue(QString const &text) { return changeValue(text); }

    /*! \name The current text as another type
        \a ok tells whether the text has the form. */
    /*!\{*/
    /*! Y or N as first letter, in either case. */
    [[nodiscard]] bool valueAsBool(bool &ok) const;
    /*! A decimal integer. */
    [[nodiscard]] int valueAsInt(bool &ok) const;
    /*! A number with a decimal point, whatever the locale. */
    [[nodiscard]] double valueAsDouble(bool &ok) const;
    /*! Four integers, red, green, blue and alpha, separated by white space; what follows is ignored. */
    [[nodiscard]] unsigned int valueAsRgba(bool &ok) const;
    /*!\}*/

private:
    friend class PR_TypedItem<PR_StringItem, QString>;
    friend struct PR_ItemTypes;

    PR_StringItem(Category category, QString const &key, PR_Element const &definition);
    void write(PR_XmlTree &tree, PR_Element *parent) const;
    bool readElement(PR_Element const &element, QString &text) const;
    bool readToken(TULex &lex, QString &text) const;
    QString asString(QString const &text) const { return text; }
};

#endif
