#include "CategoryPage.h"

#include "ItemEditor.h"

#include <PR_Preference.h>
#include <PR_PrefItem.h>

#include <QVBoxLayout>

#include <algorithm>

namespace {
bool matches(PR_PrefItem const *item, QStringList const &words)
{
    return item && std::all_of(words.cbegin(), words.cend(), [item](QString const &word) {
        return item->getKey().contains(word, Qt::CaseInsensitive)
            || item->getShortDescription().contains(word, Qt::CaseInsensitive)
            || item->getLongDescription().contains(word, Qt::CaseInsensitive);
    });
}
} // namespace

CategoryPage::CategoryPage(PR_Preference &store, QStringList const &keys, QWidget *parent)
    : QScrollArea(parent)
    , m_store(store)
    , m_keys(keys)
{
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

int CategoryPage::filter(QStringList const &words)
{
    m_words = words;
    for (ItemEditor *const editor : m_editors)
        editor->setVisible(matches(m_store.find(editor->key()), words));
    return int(std::count_if(
        m_keys.cbegin(), m_keys.cend(), [&](QString const &key) { return matches(m_store.find(key), words); }));
}

void CategoryPage::refresh()
{
    for (ItemEditor *const editor : m_editors)
        editor->refresh();
}

void CategoryPage::showEvent(QShowEvent *event)
{
    if (!widget())
        build();
    QScrollArea::showEvent(event);
}

void CategoryPage::build()
{
    auto *const lines = new QWidget;
    auto *const layout = new QVBoxLayout(lines);
    for (QString const &key : m_keys) {
        PR_PrefItem const *const item = m_store.find(key);
        if (!item)
            continue;
        auto *const editor = new ItemEditor(m_store, *item);
        m_editors.push_back(editor);
        layout->addWidget(editor);
    }
    layout->addStretch();
    setWidget(lines);
    filter(m_words);

    // The tab key would reach widgets that are made late after all others, behind the buttons of the dialog. The page
    // itself has nothing to do with the focus but to mark the place.
    QWidget *last = this;
    for (ItemEditor const *const editor : m_editors) {
        setTabOrder(last, editor->field());
        setTabOrder(editor->field(), editor->restoreButton());
        last = editor->restoreButton();
    }
    setFocusPolicy(Qt::NoFocus);
}
