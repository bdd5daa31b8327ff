#include "PreferenceDialog.h"

#include "CategoryPage.h"

#include <PR_Preference.h>

#include <QBoxLayout>
#include <QDialogButtonBox>
#include <QEvent>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QShortcut>
#include <QStackedWidget>

#include <algorithm>
#include <map>

using namespace Qt::StringLiterals;

namespace {
constexpr int CategoryRole = Qt::UserRole;

// The library gives no text of its own for the category of the second flavour.
QString categoryName(PR_PrefItem::Category category)
{
    return category == PR_PrefItem::Panovia ? u"Panovia"_s : PR_PrefItem::getCategoryString(category);
}

// How many preferences "Restore All Defaults" would change. Those of the category Internal have no default.
int changedCount(PR_Preference const &store)
{
    return int(std::count_if(store.begin(), store.end(), [](PR_PrefItem const *item) {
        return item->getCategory() != PR_PrefItem::Internal && item->getOrigin() == PR_PrefItem::OriginUser;
    }));
}
} // namespace

PreferenceDialog::PreferenceDialog(PR_Preference &store, QWidget *parent)
    : QDialog(parent)
    , m_store(store)
    , m_search(new QLineEdit)
    , m_categories(new QListWidget)
    , m_stack(new QStackedWidget)
    , m_noMatch(new QLabel(tr("No preference matches.")))
    , m_error(new QFrame)
    , m_errorText(new QLabel)
    , m_restoreAll(nullptr)
{
    setWindowTitle(tr("Preferences"));
    resize(880, 560);

    std::map<PR_PrefItem::Category, QStringList> keys;
    for (PR_PrefItem const *item : store) {
        if (item->getCategory() != PR_PrefItem::Internal) // what programs keep for themselves, without texts
            keys[item->getCategory()].append(item->getKey());
    }
    for (auto const &[category, categoryKeys] : keys)
        addCategory(category, categoryKeys);
    m_noMatch->setAlignment(Qt::AlignCenter);
    m_stack->addWidget(m_noMatch);

    // In the order in which the tab key goes through them.
    auto *const middle = new QHBoxLayout;
    middle->addWidget(createCategories());
    middle->addWidget(m_stack, 1);
    auto *const all = new QVBoxLayout(this);
    all->addLayout(middle, 1);
    all->addWidget(createError());
    all->addWidget(createButtons());

    connect(m_categories, &QListWidget::currentRowChanged, this,
        [this](int row) { m_stack->setCurrentIndex(row < 0 ? m_stack->indexOf(m_noMatch) : row); });
    search();

    // The notice comes inside the write and may come a thousand times in a loop: shown once, when all is done.
    m_refresh.setSingleShot(true);
    m_refresh.setInterval(0);
    connect(&m_refresh, &QTimer::timeout, this, &PreferenceDialog::refresh);
    connect(&store, &PR_Preference::preferenceChanged, this, [this] {
        m_unsaved = true;
        m_refresh.start();
    });
    refresh();
}

void PreferenceDialog::showCategory(PR_PrefItem::Category category)
{
    for (int row = 0; row < m_categories->count(); ++row) {
        if (m_categories->item(row)->data(CategoryRole) == int(category))
            m_categories->setCurrentRow(row);
    }
}

void PreferenceDialog::done(int result)
{
    // A field takes what is typed into it when it loses the focus.
    if (QWidget *const field = focusWidget())
        field->clearFocus();
    if (save())
        QDialog::done(result);
}

bool PreferenceDialog::event(QEvent *event)
{
    if (event->type() == QEvent::WindowActivate) {
        bool const unsaved = m_unsaved;
        (void)m_store.reloadShared(); // does nothing in a store that is not shared
        m_unsaved = unsaved;
    }
    return QDialog::event(event);
}

QWidget *PreferenceDialog::createCategories()
{
    auto *const searchLabel = new QLabel(tr("&Search:"));
    searchLabel->setBuddy(m_search);
    m_search->setObjectName(u"search"_s);
    m_search->setPlaceholderText(tr("Keys and texts"));
    m_search->setClearButtonEnabled(true);
    connect(m_search, &QLineEdit::textChanged, this, &PreferenceDialog::search);
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, m_search,
        [this] { m_search->setFocus(Qt::ShortcutFocusReason); });

    auto *const listLabel = new QLabel(tr("Ca&tegories:"));
    listLabel->setBuddy(m_categories);
    m_categories->setObjectName(u"categories"_s);
    m_categories->setTextElideMode(Qt::ElideRight);
    m_categories->setSpacing(2);

    auto *const side = new QWidget;
    side->setFixedWidth(200);
    auto *const layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    for (QWidget *const widget : { static_cast<QWidget *>(searchLabel), static_cast<QWidget *>(m_search),
             static_cast<QWidget *>(listLabel), static_cast<QWidget *>(m_categories) })
        layout->addWidget(widget);
    return side;
}

QWidget *PreferenceDialog::createError()
{
    m_error->setObjectName(u"error"_s);
    m_error->setFrameShape(QFrame::StyledPanel);
    m_errorText->setWordWrap(true);
    m_errorText->setTextFormat(Qt::PlainText);
    m_errorText->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto *const icon = new QLabel;
    icon->setPixmap(style()->standardPixmap(QStyle::SP_MessageBoxWarning));
    auto *const closeAnyway = new QPushButton(tr("Close &Without Saving"));
    closeAnyway->setAutoDefault(false);
    connect(closeAnyway, &QPushButton::clicked, this, [this] { QDialog::done(Rejected); });

    auto *const layout = new QHBoxLayout(m_error);
    layout->addWidget(icon);
    layout->addWidget(m_errorText, 1);
    layout->addWidget(closeAnyway);
    m_error->hide();
    return m_error;
}

QWidget *PreferenceDialog::createButtons()
{
    auto *const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    m_restoreAll = buttons->addButton(tr("Restore &All Defaults..."), QDialogButtonBox::ResetRole);
    connect(m_restoreAll, &QPushButton::clicked, this, &PreferenceDialog::confirmRestoreAll);
    connect(buttons, &QDialogButtonBox::rejected, this, &PreferenceDialog::reject);
    // Enter ends the typing in a field; it must not also press a button.
    for (QAbstractButton *const button : buttons->buttons())
        static_cast<QPushButton *>(button)->setAutoDefault(false);
    return buttons;
}

void PreferenceDialog::addCategory(PR_PrefItem::Category category, QStringList const &keys)
{
    auto *const entry = new QListWidgetItem(m_categories);
    entry->setData(CategoryRole, int(category));
    auto *const page = new CategoryPage(m_store, keys);
    m_pages.push_back(page);
    m_stack->addWidget(page);
}

// Leaves the categories in which something matches, with the number of matches.
void PreferenceDialog::search()
{
    QStringList const words = m_search->text().simplified().split(u' ', Qt::SkipEmptyParts);
    int firstMatch = -1;
    for (int row = 0; row < m_categories->count(); ++row) {
        QListWidgetItem *const entry = m_categories->item(row);
        int const matches = m_pages[size_t(row)]->filter(words);
        QString const name = categoryName(PR_PrefItem::Category(entry->data(CategoryRole).toInt()));
        entry->setText(words.isEmpty() ? name : tr("%1 (%2)").arg(name).arg(matches));
        entry->setHidden(matches == 0);
        if (matches > 0 && firstMatch < 0)
            firstMatch = row;
    }
    QListWidgetItem const *const current = m_categories->currentItem();
    if (!current || current->isHidden())
        m_categories->setCurrentRow(firstMatch);
}

void PreferenceDialog::refresh()
{
    for (CategoryPage *const page : m_pages)
        page->refresh();
    m_restoreAll->setEnabled(changedCount(m_store) > 0);
}

void PreferenceDialog::confirmRestoreAll()
{
    auto *const question = new QMessageBox(QMessageBox::Question, windowTitle(),
        tr("Restore the defaults of all %n changed preference(s), in every category?", nullptr, changedCount(m_store)),
        QMessageBox::Cancel, this);
    question->setAttribute(Qt::WA_DeleteOnClose);
    question->setInformativeText(tr("Your own values are lost."));
    QPushButton *const restore = question->addButton(tr("&Restore"), QMessageBox::DestructiveRole);
    question->setDefaultButton(QMessageBox::Cancel);
    connect(restore, &QPushButton::clicked, this, [this] {
        m_store.restoreDefaults();
        m_store.emitPreferenceChanged(); // restoring alone announces nothing
    });
    question->open();
}

bool PreferenceDialog::save()
{
    if (!m_unsaved)
        return true;
    m_store.save();
    PR_Preference::SaveStatus const status = m_store.saveStatus();
    m_unsaved = status.state != PR_Preference::SaveStatus::Saved;
    m_errorText->setText(
        tr("The preferences could not be saved in %1: %2\nThey stay in effect until the program ends; the file is as "
           "it was before.")
            .arg(m_store.getPathXml(), status.reason));
    m_error->setVisible(m_unsaved);
    return !m_unsaved;
}
