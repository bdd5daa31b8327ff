#ifndef PREFERENCELIST_P_H
#define PREFERENCELIST_P_H

#include <PR_PrefItem.h>

#include <QScrollArea>
#include <QStringList>

#include <optional>
#include <vector>

class EditSession;
class PR_DefinitionList;
class PreferenceRow;
class QFormLayout;
class QLabel;

/*! All preferences that an editor shows, in the order of their definitions and under headings; a view lets some of them
    be seen. */
class PreferenceList : public QScrollArea {
    Q_OBJECT

public:
    /*! Which preferences are seen: those that fulfil all that is said. */
    struct View {
        std::optional<PR_PrefItem::Category> category = {};
        QStringList words = {}; /*!< Each occurs in label, description, key or value. */
        bool isChanged = false;
        bool isLocked = false;
        bool isShortcut = false;
        int shortcut = 0; /*!< 0 for any. */
    };

    PreferenceList(EditSession &session, PR_DefinitionList const &definitions, QWidget *parent = nullptr);

    /*! The categories in the order of the definitions. */
    std::vector<PR_PrefItem::Category> const &categories() const { return m_categories; }
    bool hasShortcuts() const;
    static QString nameOf(PR_PrefItem::Category category);

    /*! Shows a view from its beginning; the number of preferences in it. */
    int show(View const &view);
    /*! Brings the rows up to date; those that are seen stay. */
    void refresh();
    /*! The row of a key or with a widget in it; null when there is none. */
    PreferenceRow *find(QString const &key) const;
    PreferenceRow *find(QWidget const *widget) const;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void addHeading(QString const &text);
    void wrapLabels();

    std::vector<PreferenceRow *> m_rows;
    std::vector<PR_PrefItem::Category> m_categories;
    std::vector<QLabel *> m_headings; // of the view
    QFormLayout *m_form = nullptr; // of the view: one that hides rows gets their heights wrong
};

#endif
