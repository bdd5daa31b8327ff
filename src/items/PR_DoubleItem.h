#ifndef PR_DOUBLEITEM_H
#define PR_DOUBLEITEM_H

#include "PR_TypedItem.h"

/*! A real number. The user's file keeps six significant digits. */
class BRIVANT_PREFERENCE_EXPORT PR_DoubleItem : public PR_TypedItem<PR_DoubleItem, double> {
public:
    /*! \a value is both default and current value. */
    PR_DoubleItem(Category category, QString const &key, double value);
    /*! From a definition: "value" (0.0 when it is no number) and "percentage". */
    PR_DoubleItem(Category category, QString const &key, QDomElement const &definition);
    ~PR_DoubleItem() override;

    void copy(PR_PrefItem *other) override;

    /*! Whether an editor shows the value, a fraction, as a percentage; changes no conversion. */
    [[nodiscard]] bool percentage() const { return m_percentage; }

    /*! Makes \a value the user's value; true only when it changed, as NaN always does. A locked item reports and
        refuses. */
    bool setValue(double value) { return changeValue(value); }

private:
    friend class PR_TypedItem<PR_DoubleItem, double>;
    friend struct PR_ItemTypes;

    PR_DoubleItem(Category category, QString const &key, PR_Element const &definition);
    void write(PR_XmlTree &tree, PR_Element *parent) const;
    bool readElement(PR_Element const &element, double &value) const;
    bool readToken(TULex &lex, double &value) const;
    QString asString(double value) const;

    bool m_percentage = false;
};

#endif
