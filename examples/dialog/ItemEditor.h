#ifndef ITEMEDITOR_H
#define ITEMEDITOR_H

#include "FieldType.h"

#include <QString>
#include <QWidget>

#include <optional>

class ElidedLabel;
class PR_Preference;
class PR_PrefItem;
class QLabel;
class QLineEdit;
class QToolButton;

/*! One line of the dialog: mark, label, field and "Restore Default" of one preference.

    It holds the key, never the item: the store may replace or delete an item while the dialog is open. */
class ItemEditor : public QWidget {
    Q_OBJECT

public:
    /*! For an item of \a store, which must outlive the editor. */
    ItemEditor(PR_Preference &store, PR_PrefItem const &item, QWidget *parent = nullptr);

    QString const &key() const { return m_key; }
    QWidget *field() const { return m_field; }
    QWidget *restoreButton() const;

    /*! Shows the present value and state. What the user is typing stays. */
    void refresh();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    PR_PrefItem *item() const;
    void enter(FieldType::Change const &change);
    void restoreDefault();
    void showState(PR_PrefItem const &item);
    bool isTypedInto() const;

    PR_Preference &m_store;
    QString const m_key;
    FieldType const &m_type;
    std::optional<QString> m_shownValue;
    QString m_shownState;

    QLabel *m_mark;
    ElidedLabel *m_label;
    QWidget *m_field;
    QLineEdit *m_text; // the part of the field that is typed into, if any
    QToolButton *m_restore;
};

#endif
