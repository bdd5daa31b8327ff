#ifndef PR_ENUMITEM_H
#define PR_ENUMITEM_H

#include "PR_TypedItem.h"

#include <QStringList>

/*! One of a list of choices; the value is the index of the choice.

    Files hold a choice's machine name. A derived class fills the list; an item without choices shows its index as a
    decimal number. */
class BRIVANT_PREFERENCE_EXPORT PR_EnumItem : public PR_TypedItem<PR_EnumItem, int> {
public:
    /*! An item without choices, index 0. */
    PR_EnumItem(Category category, QString const &key, QString const &tag);
    /*! The same, \a tag in Latin-1. */
    PR_EnumItem(Category category, QString const &key, char const *tag);
    /*! The same; the tag is the definition's "value". */
    PR_EnumItem(Category category, QString const &key, QDomElement const &definition);
    /*! \name Copies
        A copy refers to the same machine names, whose owner must keep them as long. */
    /*!\{*/
    /*! Copies all of an item, its key too. */
    PR_EnumItem(PR_EnumItem const &) = default;
    /*! The same; a font goes on owning its names. */
    PR_EnumItem &operator=(PR_EnumItem const &other);
    /*!\}*/
    ~PR_EnumItem() override;

    void copy(PR_PrefItem *other) override;
    /*! The display name of the current choice; otherwise as asString(). */
    [[nodiscard]] virtual QString valueAsDisplayString() const;
    /*! The display name of the default; otherwise as asString(). */
    [[nodiscard]] virtual QString defaultValueAsDisplayString() const;

    /*! Makes the choice \a value the user's; true only when it changed. The index is not tested. A locked item reports
        and refuses. */
    bool setValue(int value) { return changeValue(value); }

    /*! The machine name of a choice; empty for an index that is none, the index itself when there are no choices. */
    [[nodiscard]] QString asString(int index) const;
    /*! The display name of a choice; otherwise as asString(). */
    [[nodiscard]] QString asDisplayString(int index) const;
    /*! The first choice of that machine name, without regard to case; 0 when there is none. */
    [[nodiscard]] int index(QString const &name) const;
    /*! The first choice of exactly that display name; 0 when there is none. */
    [[nodiscard]] int indexDisplay(QString const &name) const;
    /*! As index(), but -1 when there is no such choice. */
    [[nodiscard]] int findChoice(QString const &name) const;
    /*! As indexDisplay(), but -1 when there is no such choice. */
    [[nodiscard]] int findDisplayChoice(QString const &name) const;
    /*! All display names, in the order of the choices. */
    [[nodiscard]] QStringList EnumNameList() const { return m_displayNames; }

protected:
    /*! Whether an index is that of a choice. */
    bool isChoice(int index) const { return index >= 0 && quint64(index) < m_nameCount; }

    quint64 m_nameCount = 0; /*!< Number of choices; 0 for an item without choices. */
    char const *const *m_nameTable = nullptr; /*!< UTF-8 machine names; they belong to whoever filled the table. */
    QStringList m_displayNames; /*!< One for each choice. */

private:
    friend class PR_TypedItem<PR_EnumItem, int>;
    friend struct PR_ItemTypes;

    void write(PR_XmlTree &tree, PR_Element *parent) const;
    bool readElement(PR_Element const &element, int &value) const;
    bool readToken(TULex &lex, int &value) const;
};

#endif
