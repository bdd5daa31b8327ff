#include "PreferenceList_p.h"

#include "EditSession_p.h"
#include "PreferenceRow_p.h"

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
{
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    setFrameShape(QFrame::NoFrame);
    auto *const lines = new QWidget;

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
        for (auto const &definition : byCategory.value(category)) {
            PR_PrefItem const *const item = session.store().find(definition.key);
            if (!item)
                continue;
            auto *const row = new PreferenceRow(session, definition, *item);
            m_rows.push_back(row);
            for (QWidget *const widget : { static_cast<QWidget *>(row->label()), static_cast<QWidget *>(row) }) {
                widget->setParent(lines);
                widget->hide();
            }
        }
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
    setUpdatesEnabled(false);
    for (QLabel *const heading : m_headings)
        delete heading;
    m_headings.clear();
    delete m_form;
    m_form = new QFormLayout(widget());
    m_form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);

    int count = 0;
    FieldType::Definition const *previous = nullptr;
    for (PreferenceRow *const row : m_rows) {
        auto const &definition = row->definition();
        bool const isIn = (!view.category || definition.category == *view.category)
            && (!view.isChanged || row->isChanged()) && (!view.isLocked || row->isLocked())
            && (!view.isShortcut || row->isShortcut()) && (view.shortcut == 0 || row->shortcut() == view.shortcut)
            && row->matches(view.words);
        row->label()->setVisible(isIn);
        row->setVisible(isIn);
        if (!isIn)
            continue;
        // A page has its groups as headings, all else the pages.
        bool const isFirst = !previous || definition.category != previous->category;
        if (view.category ? definition.group != (previous ? previous->group : QString()) : isFirst)
            addHeading(
                view.category ? PR_DefinitionList::translated({}, definition.group) : nameOf(definition.category));
        previous = &definition;
        row->highlight(view.words);
        m_form->addRow(row->label(), row);
        ++count;
    }
    wrapLabels();
    setWidgetResizable(true); // lays out now, so that a row can be scrolled to at once
    verticalScrollBar()->setValue(0);
    setUpdatesEnabled(true);
    return count;
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

void PreferenceList::addHeading(QString const &text)
{
    auto *const heading = new QLabel(text);
    heading->setTextFormat(Qt::PlainText);
    QFont font = heading->font();
    font.setBold(true);
    heading->setFont(font);
    m_form->addRow(heading);
    heading->show(); // now, so that the rows below have their places
    m_headings.push_back(heading);
}

// Labels stand beside the fields as long as all fit, else above them, and have several lines where one is too long.
void PreferenceList::wrapLabels()
{
    if (!m_form)
        return;
    int const room = viewport()->width() - m_form->contentsMargins().left() - m_form->contentsMargins().right();
    int widest = 0, widestField = 0;
    for (PreferenceRow const *const row : m_rows) {
        if (row->isHidden())
            continue;
        QLabel *const label = row->label();
        label->setMinimumWidth(0);
        label->setWordWrap(false);
        int const width = label->sizeHint().width();
        label->setWordWrap(width > room);
        label->setMinimumWidth(width > room ? room : 0);
        widest = qMax(widest, width);
        widestField = qMax(widestField, row->minimumSizeHint().width());
    }
    bool const areBeside = widest + m_form->horizontalSpacing() + widestField <= room;
    m_form->setRowWrapPolicy(areBeside ? QFormLayout::DontWrapRows : QFormLayout::WrapAllRows);
}
