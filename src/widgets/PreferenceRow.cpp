#include "PreferenceRow_p.h"

#include "EditSession_p.h"
#include "FieldWidgets_p.h"

#include <PR_KeyItem.h>
#include <PR_Preference.h>

#include <QAction>
#include <QCheckBox>
#include <QEvent>
#include <QFrame>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QRegularExpression>
#include <QShortcut>
#include <QSignalBlocker>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
// Painted, as few fonts and styles have a lock.
QPixmap lockPicture(QWidget const &widget)
{
    qreal const ratio = widget.devicePixelRatio();
    QPixmap picture(QSize(12, 14) * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor const color = widget.palette().color(QPalette::WindowText);
    painter.setPen(QPen(color, 1.6));
    painter.drawArc(QRectF(3, 1.2, 6, 9), 0, 180 * 16);
    painter.fillRect(QRectF(1, 6, 10, 7.5), color);
    return picture;
}

QRegularExpression anyOf(QStringList const &words)
{
    QStringList escaped;
    for (QString const &word : words)
        escaped.append(QRegularExpression::escape(word));
    return QRegularExpression(escaped.join(u'|'), QRegularExpression::CaseInsensitiveOption);
}

// A text as HTML, in which the words stand out.
QString marked(QString const &text, QStringList const &words, QPalette const &palette)
{
    if (words.isEmpty())
        return text.toHtmlEscaped();
    QString html;
    qsizetype end = 0;
    for (auto hits = anyOf(words).globalMatch(text); hits.hasNext();) {
        auto const hit = hits.next();
        html += text.mid(end, hit.capturedStart() - end).toHtmlEscaped()
            + u"<span style=\"background-color:%1;color:%2\">%3</span>"_s.arg(palette.color(QPalette::Highlight).name(),
                palette.color(QPalette::HighlightedText).name(), hit.captured().toHtmlEscaped());
        end = hit.capturedEnd();
    }
    return html + text.mid(end).toHtmlEscaped();
}

bool containsAll(QString const &text, QStringList const &words)
{
    return std::all_of(words.cbegin(), words.cend(),
        [&text](QString const &word) { return text.contains(word, Qt::CaseInsensitive); });
}

// The part of a long text around the first of the words.
QString extract(QString const &text, QStringList const &words)
{
    qsizetype const around = 40;
    qsizetype const hit = qMax<qsizetype>(0, text.indexOf(anyOf(words)));
    QString part = text.mid(qMax<qsizetype>(0, hit - around), 2 * around);
    if (hit > around)
        part.prepend(u'\u2026');
    if (hit + around < text.size())
        part.append(u'\u2026');
    return part;
}

// Whether a key does something in nearly every text field: a letter, a digit or a sign without Ctrl, Alt or Meta.
bool isTyped(int code)
{
    int const modifiers = code & int(Qt::KeyboardModifierMask) & ~int(Qt::ShiftModifier);
    int const key = code & ~int(Qt::KeyboardModifierMask);
    return modifiers == 0 && key < Qt::Key_Escape;
}

QString nativeText(int code)
{
    return QKeySequence(code).toString(QKeySequence::NativeText);
}
} // namespace

PreferenceRow::PreferenceRow(EditSession &session, FieldType::Definition const &definition, PR_PrefItem const &item)
    : m_session(session)
    , m_definition(definition)
    , m_type(FieldType::of(item, definition))
    , m_name(session.label(definition.key))
    , m_description(PR_DefinitionList::translated(definition.key, item.getLongDescription()))
    , m_label(new QLabel)
    , m_field(m_type.create(item, definition, [this](FieldType::Change const &change) { enter(change); }))
    , m_text(qobject_cast<QLineEdit *>(m_field))
    , m_state(new QToolButton)
{
    if (!m_text)
        m_text = m_field->findChild<QLineEdit *>();
    if (auto *const edit = qobject_cast<ShortcutEdit *>(m_field)) {
        m_text = nullptr; // nothing is half typed in it
        connect(edit, &ShortcutEdit::pressed, this, &PreferenceRow::receiveShortcut);
    }

    m_lateRefresh.setSingleShot(true);
    m_lateRefresh.setInterval(0);
    connect(&m_lateRefresh, &QTimer::timeout, this, &PreferenceRow::refresh);

    setObjectName("row "_L1 + m_definition.key);
    m_field->setObjectName(m_definition.key);
    m_field->setAccessibleName(m_name);
    m_field->setFocusPolicy(Qt::StrongFocus);
    for (QWidget *const watched : { m_field, static_cast<QWidget *>(m_text) }) {
        if (watched)
            watched->installEventFilter(this);
    }
    m_label->setTextFormat(Qt::RichText); // so that a "&" of a text is no mnemonic
    m_label->setBuddy(m_field);
    m_state->setAutoRaise(true);
    m_state->setFocusPolicy(Qt::StrongFocus); // also that of a locked preference, whose field takes no focus
    QSizePolicy keepsPlace = m_state->sizePolicy();
    keepsPlace.setRetainSizeWhenHidden(true);
    m_state->setSizePolicy(keepsPlace);
    connect(m_state, &QToolButton::clicked, this, [this] {
        if (isLocked())
            return;
        m_field->setFocus(); // the button is about to be hidden
        m_session.restoreDefaults({ m_definition.key }, tr("Restore %1").arg(m_name));
    });

    auto *const line = new QHBoxLayout;
    line->addWidget(m_field);
    if (m_field->sizePolicy().horizontalPolicy() != QSizePolicy::Expanding && !qobject_cast<FolderEdit *>(m_field))
        line->addStretch();
    line->addWidget(m_state);
    auto *const all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->addLayout(line);
    refresh();
    highlight({});
}

bool PreferenceRow::isChanged() const
{
    PR_PrefItem const *const present = item();
    return present && present->getOrigin() == PR_PrefItem::OriginUser;
}

bool PreferenceRow::isLocked() const
{
    PR_PrefItem const *const present = item();
    return present && present->hasFacilityOverride(false);
}

bool PreferenceRow::isShortcut() const
{
    return qobject_cast<ShortcutEdit *>(m_field);
}

int PreferenceRow::shortcut() const
{
    auto const *const present = dynamic_cast<PR_KeyItem const *>(item());
    return present && !present->value().isEmpty() ? present->value()[0].toCombined() : 0;
}

bool PreferenceRow::matches(QStringList const &words) const
{
    PR_PrefItem const *const present = item();
    QString const value = present ? m_type.text(*present, m_definition) : QString();
    return containsAll(QStringList{ m_name, m_description, m_definition.key, value }.join(u'\n'), words);
}

void PreferenceRow::highlight(QStringList const &words)
{
    m_words = words;
    QString html = marked(m_name, words, palette());
    if (!containsAll(m_name, words)) {
        for (QString const &text : { m_definition.key, m_description }) {
            if (text.contains(anyOf(words)))
                html += "<br><small>"_L1 + marked(extract(text, words), words, palette()) + "</small>"_L1;
        }
    }
    m_label->setText(html);
}

QString PreferenceRow::explanation() const
{
    QString html = u"<b>%1</b> <small>%2</small>"_s.arg(m_name.toHtmlEscaped(), m_definition.key.toHtmlEscaped());
    for (QString const &text : { conflict(), m_description, origin() }) {
        if (!text.isEmpty())
            html += "<br>"_L1 + text.toHtmlEscaped();
    }
    return html;
}

void PreferenceRow::refresh()
{
    PR_PrefItem const *const present = item();
    setEnabled(present);
    m_label->setEnabled(present);
    if (!present)
        return;
    // Compared first: to set a field again would take away what is typed or selected in it.
    QString const value = present->valueAsString();
    if (value != m_shownValue && !isTypedInto()) {
        QSignalBlocker const blocker(m_field); // a value that is shown is not one that was entered
        m_type.show(m_field, *present);
        m_shownValue = value;
    }
    showState(*present);
}

bool PreferenceRow::eventFilter(QObject *watched, QEvent *event)
{
    // The wheel scrolls the page; without this, it changes whatever value comes to lie under the pointer.
    if (event->type() == QEvent::Wheel && !m_field->hasFocus()) {
        event->ignore();
        return true;
    }
    // A text field keeps the keys of undo and redo for itself, also when it has nothing to undo.
    if (event->type() == QEvent::ShortcutOverride && m_text && watched == (m_field->focusProxy() ? m_text : m_field)) {
        auto const *const key = static_cast<QKeyEvent *>(event);
        bool const isUndo = key->matches(QKeySequence::Undo) && !m_text->isUndoAvailable();
        bool const isRedo = key->matches(QKeySequence::Redo) && !m_text->isRedoAvailable();
        if (isUndo || isRedo)
            return true;
    }
    // What was held back while the user typed; later, since the field takes the typed text only now.
    if (event->type() == QEvent::FocusOut)
        m_lateRefresh.start();
    return QWidget::eventFilter(watched, event);
}

void PreferenceRow::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        highlight(m_words);
        m_shownState.clear();
        refresh();
    }
}

// The item under the key, as long as it is of the type that the field was made for.
PR_PrefItem *PreferenceRow::item() const
{
    PR_PrefItem *const found = m_session.store().find(m_definition.key);
    return found && &FieldType::of(*found, m_definition) == &m_type ? found : nullptr;
}

void PreferenceRow::enter(FieldType::Change const &change)
{
    if (m_text)
        m_text->setModified(false);
    bool const isChange = m_session.edit({ m_definition.key }, tr("Change %1").arg(m_name), [&] {
        if (PR_PrefItem *const target = item()) {
            change(*target);
            m_shownValue = target->valueAsString();
        }
    });
    if (isChange)
        return;
    // Not taken, because it is the value already or since a lock came in between: the field shows what holds.
    m_shownValue.reset();
    refresh();
}

void PreferenceRow::showState(PR_PrefItem const &item)
{
    bool const isFree = !item.hasFacilityOverride(false);
    QString const warning = conflict();
    QString const state = QString::number(item.getOrigin()) + warning;
    if (state == m_shownState) // for nearly all rows
        return;
    m_shownState = state;
    QString const why = warning.isEmpty() ? origin() : warning + u' ' + origin();
    QFont font = m_label->font();
    font.setBold(isChanged());
    m_label->setFont(font);
    m_field->setEnabled(isFree);
    m_field->setAccessibleDescription(m_description + u'\n' + why);
    m_field->setProperty("conflict", !warning.isEmpty());
    m_state->setVisible(isChanged() || !isFree || !warning.isEmpty());
    m_state->setToolTip(isFree && isChanged() ? tr("Restore the default of %1").arg(m_name) : why);
    m_state->setAccessibleName(m_state->toolTip());
    m_state->setIcon(!isFree
            ? QIcon(lockPicture(*this))
            : style()->standardIcon(warning.isEmpty() ? QStyle::SP_BrowserReload : QStyle::SP_MessageBoxWarning));
}

// Where the value comes from, and the default in the form of the field.
QString PreferenceRow::origin() const
{
    PR_PrefItem *const present = item();
    if (!present)
        return {};
    if (isLocked())
        return tr("Locked by the facility for everybody.");
    std::unique_ptr<PR_PrefItem> const untouched(present->clone());
    untouched->defaultInUser();
    QString const text = m_type.text(*untouched, m_definition);
    QString const source = m_definition.layer == PR_DefinitionList::Override
        ? tr("The default of the facility is %1.").arg(text)
        : m_definition.layer == PR_DefinitionList::PreferenceSet
        ? tr("The default of the set %1 is %2.").arg(m_session.preferenceSet, text)
        : tr("The default is %1.").arg(text);
    return (isChanged() ? tr("Changed by you.") : tr("Not changed.")) + u' ' + source;
}

QString PreferenceRow::conflict() const
{
    int const code = shortcut();
    QStringList const others = code ? m_session.othersWith(code, m_definition.key) : QStringList();
    if (others.isEmpty())
        return {};
    return tr("%1 is the shortcut of %2 too.").arg(nativeText(code), m_session.label(others.constFirst()));
}

bool PreferenceRow::isTypedInto() const
{
    return m_text && m_text->isModified() && m_text->hasFocus();
}

// ---- Shortcuts

void PreferenceRow::receiveShortcut(int code)
{
    endQuestion();
    if (code == shortcut())
        return;
    QStringList const others = code ? m_session.othersWith(code, m_definition.key) : QStringList();
    bool const isFree = std::none_of(others.cbegin(), others.cend(), [this](QString const &key) {
        PR_PrefItem const *const other = m_session.store().find(key);
        return other && other->hasFacilityOverride(false);
    });
    if (!others.isEmpty()) {
        QString const other = m_session.label(others.constFirst());
        ask((isFree ? tr("%1 is the shortcut of %2.") : tr("%1 is the shortcut of %2, which the facility has locked."))
                .arg(nativeText(code), other),
            isFree ? tr("Take It From %1").arg(other) : QString(), [this, code, others] { setShortcut(code, others); });
    } else if (code && isTyped(code)) {
        ask(tr("%1 alone would act whenever it is typed outside of a text.").arg(nativeText(code)),
            tr("Use %1").arg(nativeText(code)), [this, code] { setShortcut(code); });
    } else {
        setShortcut(code);
    }
}

void PreferenceRow::setShortcut(int code, QStringList const &takenFrom)
{
    m_session.edit(takenFrom + QStringList{ m_definition.key }, tr("Change %1").arg(m_name), [&] {
        for (QString const &key : takenFrom) {
            if (auto *const other = dynamic_cast<PR_KeyItem *>(m_session.store().find(key)))
                other->setValue(0);
        }
        if (auto *const own = dynamic_cast<PR_KeyItem *>(item()))
            own->setValue(code);
    });
}

// Asks below the field, with an answer that acts and one that does not; without the first there is nothing to do.
void PreferenceRow::ask(QString const &question, QString const &answer, std::function<void()> const &act)
{
    m_question = new QFrame;
    m_question->setObjectName(u"question"_s);
    m_question->setFrameShape(QFrame::StyledPanel);
    auto *const text = new QLabel(question);
    text->setWordWrap(true);
    auto *const lines = new QVBoxLayout(m_question);
    lines->addWidget(text);
    auto const end = [this] {
        endQuestion();
        m_field->setFocus();
    };
    auto const add = [&](QString const &label, auto const &slot) {
        auto *const button = new QPushButton(QString(label).replace(u'&', "&&"_L1));
        button->setAutoDefault(false);
        button->setAccessibleDescription(question);
        lines->addWidget(button, 0, Qt::AlignLeft);
        connect(button, &QPushButton::clicked, this, slot, Qt::QueuedConnection); // it deletes the button
        return button;
    };
    if (!answer.isEmpty())
        add(answer, [end, act] {
            end();
            act();
        });
    QPushButton *const cancel = add(tr("Cancel"), end);
    new QShortcut(Qt::Key_Escape, m_question, end, Qt::WidgetWithChildrenShortcut);
    layout()->addWidget(m_question);
    m_question->show(); // at once, to take the focus
    cancel->setFocus();
}

void PreferenceRow::endQuestion()
{
    if (m_question)
        m_question->deleteLater();
    m_question = nullptr;
}
