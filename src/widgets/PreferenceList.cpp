#include "PreferenceList.h"

#include "EditSession.h"
#include "PreferenceRow.h"

#include <PR_DefinitionList.h>
#include <PR_Preference.h>

#include <QCoreApplication>
#include <QFormLayout>
#include <QLabel>
#include <QScrollBar>
#include <QStyle>

#include <algorithm>

PreferenceList::PreferenceList(EditSession &session, PR_DefinitionList const &definitions, QWidget *parent)
    : QScrollArea(parent)
    , m_form(new QFormLayout)
{
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    setFrameShape(QFrame::NoFrame);
    m_form->setRowWrapPolicy(QFormLayout::WrapLongRows);
    m_form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    auto *const lines = new QWidget;
    lines->setLayout(m_form);

    // Definitions of one category may stand in several places: a set or an override adds to what is there.
    QHash<PR_PrefItem::Category, QList<PR_DefinitionList::Definition>> byCategory;
    for (auto const &definition : definitions.definitions()) {
        if (definition.category == PR_PrefItem::Internal) // what programs keep for themselves
            continue;
        if (!byCategory.contains(definition.category))
            m_categories.push_back(definition.category);
        byCategory[definition.category].append(definition);
    }
    for (PR_PrefItem::Category const category : m_categories) {
        addHeading(m_categoryHeadings, nameOf(category));
        QString group;
        for (auto const &definition : byCategory.value(category)) {
            PR_PrefItem const *const item = session.store().find(definition.key);
            if (!item)
                continue;
            if (definition.group != group)
                addHeading(m_groupHeadings, PR_DefinitionList::translated(definition.key, definition.group));
            group = definition.group;
            auto *const row = new PreferenceRow(session, definition, *item);
            m_rows.push_back(row);
            m_form->addRow(row->label(), row);
        }
        m_groupHeadings.push_back({ m_rows.size(), nullptr });
    }
    setWidget(lines);
}

bool PreferenceList::hasShortcuts() const
{
    return std::any_of(m_rows.begin(), m_rows.end(), [](auto const *row) { return row->isShortcut(); });
}

// The library gives no text of its own for the category of the second flavour.
QString PreferenceList::nameOf(PR_PrefItem::Category category)
{
    return category == PR_PrefItem::Panovia
        ? QStringLiteral("Panovia")
        : QCoreApplication::translate("PR_PrefItem", PR_PrefItem::getCategoryString(category).toUtf8().constData());
}

int PreferenceList::show(View const &view)
{
    std::vector<bool> isSeen;
    for (PreferenceRow *const row : m_rows) {
        bool const isIn = (!view.category || row->definition().category == *view.category)
            && (!view.isChanged || row->isChanged()) && (!view.isLocked || row->isLocked())
            && (!view.isShortcut || row->isShortcut()) && (view.shortcut == 0 || row->shortcut() == view.shortcut)
            && row->matches(view.words);
        isSeen.push_back(isIn);
        if (isIn)
            row->highlight(view.words);
        m_form->setRowVisible(row, isIn);
    }
    auto const showHeadings = [&](std::vector<Heading> const &headings, bool areWanted) {
        for (size_t i = 0; i < headings.size(); ++i) {
            auto const end = i + 1 < headings.size() ? headings[i + 1].first : m_rows.size();
            auto const begin = isSeen.begin();
            bool const isOver =
                std::find(begin + qsizetype(headings[i].first), begin + qsizetype(end), true) != begin + qsizetype(end);
            if (headings[i].label)
                m_form->setRowVisible(headings[i].label, areWanted && isOver);
        }
    };
    showHeadings(m_categoryHeadings, !view.category);
    showHeadings(m_groupHeadings, view.category.has_value());
    wrapLabels();
    verticalScrollBar()->setValue(0);
    return int(std::count(isSeen.begin(), isSeen.end(), true));
}

void PreferenceList::refresh()
{
    for (PreferenceRow *const row : m_rows)
        row->refresh();
}

PreferenceRow *PreferenceList::find(QString const &key) const
{
    auto const found =
        std::find_if(m_rows.begin(), m_rows.end(), [&key](auto const *row) { return row->definition().key == key; });
    return found == m_rows.end() ? nullptr : *found;
}

PreferenceRow *PreferenceList::find(QWidget const *widget) const
{
    auto const found = std::find_if(m_rows.begin(), m_rows.end(),
        [widget](auto const *row) { return row->label() == widget || row == widget || row->isAncestorOf(widget); });
    return found == m_rows.end() ? nullptr : *found;
}

void PreferenceList::resizeEvent(QResizeEvent *event)
{
    QScrollArea::resizeEvent(event);
    wrapLabels();
}

void PreferenceList::addHeading(std::vector<Heading> &headings, QString const &text)
{
    QLabel *label = nullptr;
    if (!text.isEmpty()) {
        label = new QLabel(text);
        label->setTextFormat(Qt::PlainText);
        QFont font = label->font();
        font.setBold(true);
        label->setFont(font);
        m_form->addRow(label);
    }
    headings.push_back({ m_rows.size(), label });
}

// A label is on one line as long as that fits into the window.
void PreferenceList::wrapLabels()
{
    int const room = viewport()->width() - m_form->contentsMargins().left() - m_form->contentsMargins().right();
    for (PreferenceRow *const row : m_rows) {
        QLabel *const label = row->label();
        label->setWordWrap(false);
        label->setWordWrap(label->sizeHint().width() > room);
    }
}
