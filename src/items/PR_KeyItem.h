#ifndef PR_KEYITEM_H
#define PR_KEYITEM_H

#include "PR_TypedItem.h"

#include <QKeySequence>

/*! A keyboard shortcut: a single key, possibly with modifiers; an empty sequence is no shortcut. */
class BRIVANT_PREFERENCE_EXPORT PR_KeyItem : public PR_TypedItem<PR_KeyItem, QKeySequence> {
public:
    /*! From a text such as "Ctrl+S" in the native form; one that cannot be read gives no shortcut. */
    PR_KeyItem(Category category, QString const &key, QString const &text);
    /*! From a key code with Qt's modifier bits; 0 gives no shortcut. */
    PR_KeyItem(Category category, QString const &key, int code);
    /*! From a definition: "value". */
    PR_KeyItem(Category category, QString const &key, QDomElement const &definition);
    ~PR_KeyItem() override;

    /*! Shortcut. */
    Type getType() const override;

    /*! Makes the key \a code the user's shortcut; true only when it changed. A locked item reports and refuses. */
    bool setValue(int code);

protected:
    /*! The first key of a text in the native form; empty when the text is not one. */
    static QKeySequence makeShortcut(QString const &text);

private:
    friend class PR_TypedItem<PR_KeyItem, QKeySequence>;
    friend struct PR_ItemTypes;

    PR_KeyItem(Category category, QString const &key, PR_Element const &definition);
    static QKeySequence parse(QString const &text);
    void write(PR_XmlTree &tree, PR_Element *parent) const;
    bool readElement(PR_Element const &element, QKeySequence &shortcut) const;
    bool readToken(TULex &lex, QKeySequence &shortcut) const;
    QString asString(QKeySequence const &shortcut) const;
};

#endif
