#ifndef PR_INTITEM_H
#define PR_INTITEM_H

#include "PR_TypedItem.h"

#include <limits>

/*! An integer preference. The range is what an editor offers; no operation tests it. */
class BRIVANT_PREFERENCE_EXPORT PR_IntItem : public PR_TypedItem<PR_IntItem, int> {
public:
    /*! \a value is both default and current value; both ends belong to the range, by default that of the type. */
    PR_IntItem(Category category, QString const &key, int value, int minimum = std::numeric_limits<int>::min(),
        int maximum = std::numeric_limits<int>::max());
    /*! From a definition: "value", "min" and "max"; a text that is no number counts as 0, a missing end of the range
        as that of the type. */
    PR_IntItem(Category category, QString const &key, QDomElement const &definition);
    ~PR_IntItem() override;

    void copy(PR_PrefItem *other) override;

    [[nodiscard]] int minValue() const { return m_minimum; } /*!< The least value of the range. */
    [[nodiscard]] int maxValue() const { return m_maximum; } /*!< The greatest value of the range. */

    /*! Makes \a value the user's value; true only when it changed. A locked item reports and refuses. */
    bool setValue(int value) { return changeValue(value); }
    /*! Replaces the default alone; current value and origin stay. */
    void setDefaultValue(int value) { m_default = value; }

private:
    friend class PR_TypedItem<PR_IntItem, int>;
    friend struct PR_ItemTypes;

    PR_IntItem(Category category, QString const &key, PR_Element const &definition);
    void write(PR_XmlTree &tree, PR_Element *parent) const;
    bool readElement(PR_Element const &element, int &value) const;
    bool readToken(TULex &lex, int &value) const;
    QString asString(int value) const;

    int m_minimum;
    int m_maximum;
};

#endif
