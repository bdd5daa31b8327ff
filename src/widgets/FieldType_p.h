#ifndef FIELDTYPE_P_H
#define FIELDTYPE_P_H

#include <PR_DefinitionList.h>

#include <functional>

class PR_PrefItem;
class QWidget;

/*! How the values of one type of item are shown and entered: one row of a table in the source per type.

    A new type of item needs a new row there, and nothing anywhere else. */
struct FieldType {
    using Definition = PR_DefinitionList::Definition;
    /*! What an entry does to the item. */
    using Change = std::function<void(PR_PrefItem &)>;
    /*! Receives what the user enters. */
    using Enter = std::function<void(Change const &)>;

    /*! Whether the row is for this item. */
    bool (*handles)(PR_PrefItem const &item, Definition const &definition);
    /*! A widget without value, which calls \a enter for each entry of the user. */
    QWidget *(*create)(PR_PrefItem const &item, Definition const &definition, Enter const &enter);
    /*! Shows the item's value in a widget from create(). */
    void (*show)(QWidget *field, PR_PrefItem const &item);
    /*! The item's value as the widget shows it. */
    QString (*text)(PR_PrefItem const &item, Definition const &definition);

    /*! The row for an item; items of unknown types have one that only shows them. */
    static FieldType const &of(PR_PrefItem const &item, Definition const &definition);
};

#endif
