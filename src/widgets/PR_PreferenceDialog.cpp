#include "PR_PreferenceDialog.h"

#include "EditSession_p.h"
#include "FieldWidgets_p.h"
#include "PR_ReportCollector.h"
#include "PreferenceList_p.h"
#include "PreferenceRow_p.h"

#include <PR_DefinitionList.h>
#include <PR_Preference.h>

#include <QAction>
#include <QApplication>
#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QShortcut>
#include <QStyle>
#include <QToolButton>

using namespace Qt::StringLiterals;

class Q_DECL_HIDDEN PR_PreferenceDialog::Private {
public:
    Private(PR_PreferenceDialog &window, PR_Preference &store, PR_DefinitionList const &definitions);

    void addPages();
    QLayout *createTop();
    QWidget *createShortcutFilter();
    QWidget *createReports();
    QWidget *createExplanation();
    QLayout *createButtons();

    int findPage(int page) const;
    void showPage(int row);
    void updateView();
    void explain(QWidget const *focus);
    void refresh();
    void showReports();
    void confirmRestoreAll();
    void endTyping();
    void fitSize();

    // A page is a category or this.
    static constexpr int ShortcutPage = -1;

    PR_PreferenceDialog &m_window;
    EditSession m_session;
    PreferenceList *m_list;

    QLineEdit *m_search = new QLineEdit;
    QCheckBox *m_changed = new QCheckBox(tr("Chan&ged"));
    QCheckBox *m_locked = new QCheckBox(tr("&Locked"));
    QListWidget *m_pages = new QListWidget;
    QComboBox *m_pageBox = new QComboBox;
    QWidget *m_shortcutFilter = nullptr;
    ShortcutEdit *m_pressed = new ShortcutEdit;
    QLabel *m_noMatch = new QLabel(tr("No preference matches."));
    QLabel *m_explanation = new QLabel;
    QScrollArea *m_explanationArea = new QScrollArea; // of a fixed height, so that the rows stay where they are
    QFrame *m_reports = new QFrame;
    QLabel *m_reportText = new QLabel;
    QPushButton *m_closeAnyway = new QPushButton(tr("Close &Without Saving"));
    QPushButton *m_restoreAll = new QPushButton(tr("&Restore All..."));
    QPointer<PreferenceRow> m_current; // the row that is explained
    QString m_saveFailure;
};

PR_PreferenceDialog::Private::Private(
    PR_PreferenceDialog &window, PR_Preference &store, PR_DefinitionList const &definitions)
    : m_window(window)
    , m_session(store, definitions.preferenceSet())
    , m_list(new PreferenceList(m_session, definitions))
{
    window.setWindowTitle(tr("Preferences"));
    window.resize(880, 600);
    addPages();

    auto *const middle = new QHBoxLayout;
    middle->addWidget(m_pages);
    auto *const right = new QVBoxLayout;
    middle->addLayout(right, 1);
    right->addWidget(createShortcutFilter());
    right->addWidget(m_list, 1);
    right->addWidget(m_noMatch, 1);
    m_noMatch->setAlignment(Qt::AlignCenter);
    auto *const all = new QVBoxLayout(&window);
    all->setSizeConstraint(QLayout::SetNoConstraint); // that of a high window would keep it from getting low
    all->addWidget(createReports());
    all->addLayout(createTop());
    all->addWidget(m_pageBox);
    all->addLayout(middle, 1);
    all->addWidget(createExplanation());
    all->addLayout(createButtons());

    connect(&m_session, &EditSession::changed, &window, [this] { refresh(); });
    connect(&m_session, &EditSession::stepped, &window, [this](QStringList const &keys) {
        PreferenceRow const *const row = keys.isEmpty() ? nullptr : m_list->find(keys.constLast());
        if (row && !row->isVisible())
            m_window.showPreference(row->definition().key);
    });
    connect(&m_session, &EditSession::saved, &window, [this](bool isGood, QString const &reason) {
        m_saveFailure = isGood
            ? QString()
            : tr("The preferences could not be saved in %1: %2\nThey stay in effect until the program "
                 "ends; the file is as it was before.")
                  .arg(m_session.store().getPathXml(), reason);
        showReports();
    });
    connect(qApp, &QApplication::focusChanged, &m_session, [this](QWidget *, QWidget *focus) { explain(focus); });
    if (PR_ReportCollector *const collector = PR_ReportCollector::current())
        connect(collector, &PR_ReportCollector::changed, &m_session, [this] { showReports(); });
    m_pages->setCurrentRow(0);
    refresh();
    showReports();
    fitSize();
}

void PR_PreferenceDialog::Private::addPages()
{
    m_pages->setObjectName(u"pages"_s);
    m_pages->setAccessibleName(tr("Pages"));
    m_pages->setSpacing(2);
    auto const add = [this](QString const &name, int page) {
        auto *const entry = new QListWidgetItem(name, m_pages);
        entry->setData(Qt::UserRole, page);
        m_pageBox->addItem(name);
    };
    for (PR_PrefItem::Category const category : m_list->categories())
        add(PreferenceList::nameOf(category), category);
    if (m_list->hasShortcuts())
        add(tr("Shortcuts"), ShortcutPage);
    m_pages->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    m_pages->setFixedWidth(m_pages->sizeHintForColumn(0) + 2 * m_pages->frameWidth() + 24); // and a scroll bar
    m_pageBox->setObjectName(u"pageBox"_s);
    m_pageBox->setAccessibleName(tr("Pages"));
    // Whoever chooses a page is done with the search.
    connect(m_pages, &QListWidget::itemClicked, &m_window, [this] { m_search->clear(); });
    connect(m_pages, &QListWidget::currentRowChanged, &m_window, [this](int row) { showPage(row); });
    connect(m_pageBox, &QComboBox::activated, &m_window, [this](int row) {
        m_search->clear();
        m_pages->setCurrentRow(row);
    });
}

QLayout *PR_PreferenceDialog::Private::createTop()
{
    m_search->setObjectName(u"search"_s);
    m_search->setPlaceholderText(tr("Search all pages"));
    m_search->setAccessibleName(tr("Search"));
    m_search->setClearButtonEnabled(true);
    m_changed->setObjectName(u"changed"_s);
    m_locked->setObjectName(u"locked"_s);
    connect(m_search, &QLineEdit::textChanged, &m_window, [this] { updateView(); });
    for (QCheckBox *const filter : { m_changed, m_locked })
        connect(filter, &QCheckBox::toggled, &m_window, [this] { updateView(); });
    connect(new QShortcut(QKeySequence::Find, &m_window), &QShortcut::activated, m_search, [this] {
        m_search->setFocus(Qt::ShortcutFocusReason);
        m_search->selectAll();
    });
    auto *const line = new QHBoxLayout;
    line->addWidget(m_search, 1);
    line->addWidget(m_changed);
    line->addWidget(m_locked);
    return line;
}

QWidget *PR_PreferenceDialog::Private::createShortcutFilter()
{
    auto *const label = new QLabel(tr("&Find by key:"));
    label->setBuddy(m_pressed);
    m_pressed->setObjectName(u"pressed"_s);
    m_pressed->setToolTip(tr("Press a key to see what it does; Backspace shows all."));
    connect(m_pressed, &ShortcutEdit::pressed, &m_window, [this](int code) {
        m_pressed->setCode(code);
        updateView();
    });
    m_shortcutFilter = new QWidget;
    auto *const line = new QHBoxLayout(m_shortcutFilter);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(label);
    line->addWidget(m_pressed, 1);
    return m_shortcutFilter;
}

QWidget *PR_PreferenceDialog::Private::createReports()
{
    m_reports->setObjectName(u"reports"_s);
    m_reports->setFrameShape(QFrame::StyledPanel);
    m_reportText->setObjectName(u"reportText"_s);
    m_reportText->setWordWrap(true);
    m_reportText->setTextFormat(Qt::PlainText);
    m_reportText->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto *const icon = new QLabel;
    icon->setPixmap(m_window.style()->standardPixmap(QStyle::SP_MessageBoxWarning));
    icon->setAlignment(Qt::AlignTop);
    auto *const dismiss = new QPushButton(tr("&Dismiss"));
    connect(dismiss, &QPushButton::clicked, &m_window, [this] {
        m_saveFailure.clear();
        if (PR_ReportCollector *const collector = PR_ReportCollector::current())
            collector->clear();
        showReports();
    });
    connect(m_closeAnyway, &QPushButton::clicked, &m_window, [this] { m_window.QDialog::done(Rejected); });

    auto *const layout = new QHBoxLayout(m_reports);
    layout->addWidget(icon);
    auto *const texts = new QScrollArea; // many reports leave room for the preferences
    texts->setWidgetResizable(true);
    texts->setFrameShape(QFrame::NoFrame);
    texts->setWidget(m_reportText);
    texts->setMaximumHeight(m_window.fontMetrics().lineSpacing() * 6);
    layout->addWidget(texts, 1);
    auto *const buttons = new QVBoxLayout;
    for (QPushButton *const button : { dismiss, m_closeAnyway }) {
        button->setAutoDefault(false);
        buttons->addWidget(button);
    }
    buttons->addStretch();
    layout->addLayout(buttons);
    return m_reports;
}

QWidget *PR_PreferenceDialog::Private::createExplanation()
{
    m_explanation->setObjectName(u"explanation"_s);
    m_explanation->setWordWrap(true);
    m_explanation->setTextFormat(Qt::RichText);
    m_explanation->setAlignment(Qt::AlignTop);
    m_explanation->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_explanationArea->setWidgetResizable(true);
    m_explanationArea->setFocusPolicy(Qt::NoFocus);
    m_explanationArea->setWidget(m_explanation);
    return m_explanationArea;
}

QLayout *PR_PreferenceDialog::Private::createButtons()
{
    auto *const line = new QHBoxLayout;
    auto const addStep = [&](QAction *action, QKeySequence::StandardKey keys, QStyle::StandardPixmap icon) {
        action->setShortcuts(keys);
        action->setIcon(m_window.style()->standardIcon(icon));
        m_window.addAction(action);
        auto *const button = new QToolButton;
        button->setDefaultAction(action);
        button->setFocusPolicy(Qt::StrongFocus);
        line->addWidget(button);
    };
    addStep(m_session.undoStack().createUndoAction(&m_window, tr("Undo")), QKeySequence::Undo, QStyle::SP_ArrowBack);
    addStep(m_session.undoStack().createRedoAction(&m_window, tr("Redo")), QKeySequence::Redo, QStyle::SP_ArrowForward);
    auto *const close = new QPushButton(tr("&Close"));
    m_restoreAll->setToolTip(tr("Restore the defaults of all preferences."));
    connect(m_restoreAll, &QPushButton::clicked, &m_window, [this] { confirmRestoreAll(); });
    connect(close, &QPushButton::clicked, &m_window, &QDialog::reject);
    line->addStretch();
    // Enter ends the typing in a field; it must not also press a button.
    for (QPushButton *const button : { m_restoreAll, close }) {
        button->setAutoDefault(false);
        line->addWidget(button);
    }
    return line;
}

int PR_PreferenceDialog::Private::findPage(int page) const
{
    for (int row = 0; row < m_pages->count(); ++row) {
        if (m_pages->item(row)->data(Qt::UserRole).toInt() == page)
            return row;
    }
    return -1;
}

void PR_PreferenceDialog::Private::showPage(int row)
{
    m_pageBox->setCurrentIndex(row);
    m_pressed->setCode(0);
    updateView();
}

void PR_PreferenceDialog::Private::updateView()
{
    PreferenceList::View view;
    view.words = m_search->text().simplified().split(u' ', Qt::SkipEmptyParts);
    view.isChanged = m_changed->isChecked();
    view.isLocked = m_locked->isChecked();
    QListWidgetItem const *const current = m_pages->currentItem();
    bool const isSearch = !view.words.isEmpty() || view.isChanged || view.isLocked;
    bool const isOfShortcuts = current && !isSearch && current->data(Qt::UserRole).toInt() == ShortcutPage;
    view.isShortcut = isOfShortcuts;
    view.shortcut = isOfShortcuts ? m_pressed->code() : 0;
    if (current && !isSearch && !isOfShortcuts)
        view.category = PR_PrefItem::Category(current->data(Qt::UserRole).toInt());
    m_shortcutFilter->setVisible(isOfShortcuts);
    bool const isEmpty = m_list->show(view) == 0;
    m_list->setVisible(!isEmpty);
    m_noMatch->setVisible(isEmpty);
}

void PR_PreferenceDialog::Private::explain(QWidget const *focus)
{
    if (PreferenceRow *const row = focus ? m_list->find(focus) : nullptr) {
        m_current = row;
        m_explanation->setText(row->explanation());
        m_list->ensureWidgetVisible(row);
    }
}

void PR_PreferenceDialog::Private::refresh()
{
    m_list->refresh();
    if (m_current)
        m_explanation->setText(m_current->explanation());
    m_restoreAll->setEnabled(!m_session.changedKeys().isEmpty());
}

void PR_PreferenceDialog::Private::showReports()
{
    QStringList texts;
    if (!m_saveFailure.isEmpty())
        texts.append(m_saveFailure);
    if (PR_ReportCollector const *const collector = PR_ReportCollector::current()) {
        for (HostReport const &report : collector->reports())
            texts.append(report.text);
    }
    m_reportText->setText(texts.join("\n\n"_L1));
    m_reports->setVisible(!texts.isEmpty());
    m_closeAnyway->setVisible(!m_saveFailure.isEmpty());
}

void PR_PreferenceDialog::Private::confirmRestoreAll()
{
    QStringList const keys = m_session.changedKeys();
    auto *const question = new QMessageBox(QMessageBox::Question, m_window.windowTitle(),
        tr("Restore the defaults of all %n changed preference(s), on every page?", nullptr, int(keys.size())),
        QMessageBox::Cancel, &m_window);
    question->setAttribute(Qt::WA_DeleteOnClose);
    QPushButton *const restore = question->addButton(tr("&Restore"), QMessageBox::DestructiveRole);
    question->setDefaultButton(QMessageBox::Cancel);
    connect(restore, &QPushButton::clicked, &m_window,
        [this, keys] { m_session.restoreDefaults(keys, tr("Restore All")); });
    question->open();
}

// A field takes what is typed into it when it loses the focus.
void PR_PreferenceDialog::Private::endTyping()
{
    if (QWidget *const field = m_window.focusWidget())
        field->clearFocus();
}

// A narrow window has no room for the list of pages, and a low one not for much around the rows.
void PR_PreferenceDialog::Private::fitSize()
{
    QFontMetrics const metrics = m_window.fontMetrics();
    bool const isWide = m_window.width() > 2 * m_pages->width() + metrics.averageCharWidth() * 20;
    bool const isHigh = m_window.height() > metrics.lineSpacing() * 20;
    m_pages->setVisible(isWide);
    m_pageBox->setVisible(!isWide);
    m_explanationArea->setFixedHeight(metrics.lineSpacing() * (isHigh ? 5 : 2));
    int const gap = m_window.style()->pixelMetric(QStyle::PM_LayoutVerticalSpacing) / (isHigh ? 1 : 3);
    m_window.layout()->setSpacing(gap);
    m_window.layout()->setContentsMargins(gap, gap, gap, gap);
}

PR_PreferenceDialog::PR_PreferenceDialog(PR_Preference &store, QWidget *parent)
    : QDialog(parent)
    , d(std::make_unique<Private>(*this, store, PR_DefinitionList(store)))
{
}

PR_PreferenceDialog::~PR_PreferenceDialog()
{
    d->endTyping(); // while all is still there
    if (d->m_saveFailure.isEmpty()) // else the user has closed it all the same
        (void)d->m_session.save(); // a main window that goes does not close its dialogs
    disconnect(qApp, nullptr, &d->m_session, nullptr);
    delete d->m_list;
}

void PR_PreferenceDialog::setSaving(bool saving)
{
    d->m_session.isSaving = saving;
}

bool PR_PreferenceDialog::isSaving() const
{
    return d->m_session.isSaving;
}

void PR_PreferenceDialog::showCategory(PR_PrefItem::Category category)
{
    int const row = d->findPage(category);
    if (row >= 0)
        d->m_pages->setCurrentRow(row);
}

void PR_PreferenceDialog::showShortcuts()
{
    showCategory(PR_PrefItem::Category(Private::ShortcutPage));
}

bool PR_PreferenceDialog::showPreference(QString const &key)
{
    PreferenceRow const *const row = d->m_list->find(key);
    if (!row)
        return false;
    d->m_changed->setChecked(false);
    d->m_locked->setChecked(false);
    d->m_search->clear();
    showCategory(row->definition().category);
    (row->isLocked() ? static_cast<QWidget *>(row->stateButton()) : row->field())->setFocus();
    d->explain(row);
    return true;
}

QUndoStack *PR_PreferenceDialog::undoStack() const
{
    return &d->m_session.undoStack();
}

void PR_PreferenceDialog::done(int result)
{
    d->endTyping();
    if (d->m_session.save())
        QDialog::done(result);
}

bool PR_PreferenceDialog::event(QEvent *event)
{
    if (event->type() == QEvent::WindowActivate)
        d->m_session.reload();
    return QDialog::event(event);
}

void PR_PreferenceDialog::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    d->fitSize();
}
