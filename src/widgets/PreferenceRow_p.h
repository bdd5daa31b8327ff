#ifndef PREFERENCEROW_P_H
#define PREFERENCEROW_P_H

#include "FieldType_p.h"

#include <QLabel>
#include <QTimer>
#include <QWidget>

#include <optional>

class EditSession;
class QFrame;
class QLineEdit;
class QToolButton;

/*! One preference: its field, and a button that brings back the default or tells of a lock. The label is a widget of
    its own, for whoever lays out the rows. */
class PreferenceRow : public QWidget {
    Q_OBJECT

public:
    PreferenceRow(EditSession &session, FieldType::Definition const &definition, PR_PrefItem const &item);

    FieldType::Definition const &definition() const { return m_definition; }
    QLabel *label() const { return m_label; }
    QWidget *field() const { return m_field; }
    QToolButton *stateButton() const { return m_state; }
    bool isChanged() const; /*!< By the user. */
    bool isLocked() const; /*!< By the facility. */
    bool isShortcut() const; /*!< Whether it holds a shortcut, be it an empty one. */
    int shortcut() const; /*!< The key with Qt's modifier bits; 0 for none, and for any other preference. */

    /*! Whether each of the words occurs in label, description, key or value. */
    bool matches(QStringList const &words) const;
    /*! Marks words in the label, or shows below it where else they occur. */
    void highlight(QStringList const &words);
    /*! What there is to know of the preference, as rich text. */
    QString explanation() const;
    /*! Brings the row up to date with its item. */
    void refresh();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    PR_PrefItem *item() const;
    void enter(FieldType::Change const &change);
    void showState(PR_PrefItem const &item);
    QString origin() const;
    QString conflict() const;
    bool isTypedInto() const;
    void receiveShortcut(int code);
    void setShortcut(int code, QStringList const &takenFrom = {});
    void ask(QString const &question, QString const &answer, std::function<void()> const &act);
    void endQuestion();

    EditSession &m_session;
    FieldType::Definition const m_definition;
    FieldType const &m_type;
    QString const m_name;
    QString const m_description;
    std::optional<QString> m_shownValue;
    QString m_shownState; // origin and conflict
    QStringList m_words; // that are marked
    QTimer m_lateRefresh;

    QLabel *m_label;
    QWidget *m_field;
    QLineEdit *m_text; // the part of the field that is typed into, if any
    QToolButton *m_state;
    QFrame *m_question = nullptr; // what stands in the way of a key that was pressed
};

#endif
