#ifndef PR_ENUMITEM_H
#define PR_ENUMITEM_H

#include "PR_TypedItem.h"

#include <QStringList>

class BRIVANT_PREFERENCE_EXPORT PR_EnumItem; // exported here already: the template takes its visibility from it
extern template class PR_TypedItem<PR_EnumItem, int>;

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

    void copy(PR_PrefItem *other) override;
    /*! The display name of the current choice; otherwise as asString(). */
    virtual QString valueAsDisplayString() const;
    /*! The display name of the default; otherwise as asString(). */
    virtual QString defaultValueAsDisplayString() const;

    /*! The element that saveXml() appends, apart from a document. */
    PR_ItemElement element() const;

    /*! Makes the choice \a value the user's; true only when it changed. The index is not tested. A locked item reports
        and refuses. */
    bool setValue(int value);

    /*! The machine name of a choice; empty for an index that is none, the index itself when there are no choices. */
    QString asString(int index) const;
    /*! The display name of a choice; otherwise as asString(). */
    QString asDisplayString(int index) const;
    /*! The first choice of that machine name, without regard to case; 0 when there is none. */
    int index(QString const &name) const;
    /*! The first choice of exactly that display name; 0 when there is none. */
    int indexDisplay(QString const &name) const;
    /*! All display names, in the order of the choices. */
    QStringList EnumNameList() const { return m_displayNames; }

protected:
    /*! The first choice of a machine name, without regard to case; -1 when there is none. */
    int findChoice(QString const &name) const;
    /*! Whether an index is that of a choice. */
    bool isChoice(int index) const { return index >= 0 && quint64(index) < m_nameCount; }

    quint64 m_nameCount = 0; /*!< Number of choices; 0 for an item without choices. */
    char **m_nameTable = nullptr; /*!< UTF-8 machine names; owned by the derived class that filled it. */
    QStringList m_displayNames; /*!< One for each choice. */

private:
    friend class PR_TypedItem<PR_EnumItem, int>;

    bool readElement(PR_ItemElement const &element, int &value);
    bool readToken(TULex &lex, int &value);

    QString m_nameRead; // the user's choice as a file named it; saved again while there are no choices
};

#endif
