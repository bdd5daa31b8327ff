#include "ItemEditor.h"

#include "ElidedLabel.h"

#include <PR_EnumItem.h>
#include <PR_Preference.h>
#include <PR_PrefItem.h>

#include <QEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPainter>
#include <QSignalBlocker>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {
// Painted, as few fonts have a lock.
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

// A definition need not have texts.
QString labelText(PR_PrefItem const &item)
{
    return item.getShortDescription().isEmpty() ? item.getKey() : item.getShortDescription();
}

QString defaultText(PR_PrefItem const &item)
{
    auto const *const choice = dynamic_cast<PR_EnumItem const *>(&item);
    QString const text = choice ? choice->defaultValueAsDisplayString() : item.defaultValueAsString();
    return text.isEmpty() ? ItemEditor::tr("(empty)") : text;
}
} // namespace

ItemEditor::ItemEditor(PR_Preference &store, PR_PrefItem const &item, QWidget *parent)
    : QWidget(parent)
    , m_store(store)
    , m_key(item.getKey())
    , m_type(FieldType::of(item))
    , m_mark(new QLabel)
    , m_label(new ElidedLabel(labelText(item)))
    , m_field(m_type.create(item, [this](FieldType::Change const &change) { enter(change); }))
    , m_text(qobject_cast<QLineEdit *>(m_field))
    , m_restore(new QToolButton)
{
    if (!m_text)
        m_text = m_field->findChild<QLineEdit *>();

    m_field->setObjectName(m_key);
    m_field->setAccessibleName(labelText(item));
    m_field->setAccessibleDescription(item.getLongDescription());
    m_field->setFocusPolicy(Qt::StrongFocus);
    m_field->installEventFilter(this);
    m_label->setBuddy(m_field);
    m_mark->setFixedWidth(16);
    m_restore->setText(tr("Restore Default"));
    m_restore->setAccessibleName(tr("Restore the default of %1").arg(labelText(item)));
    m_restore->setFocusPolicy(Qt::StrongFocus); // a click ends what is being typed

    // Widths that depend on no content keep the columns of all lines in step.
    m_field->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    m_field->setMaximumWidth(260);
    QSizePolicy keepsPlace = m_restore->sizePolicy();
    keepsPlace.setRetainSizeWhenHidden(true);
    m_restore->setSizePolicy(keepsPlace);
    auto *const line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(m_mark);
    line->addWidget(m_label, 5);
    line->addWidget(m_field, 4);
    line->addWidget(m_restore);

    connect(m_restore, &QToolButton::clicked, this, &ItemEditor::restoreDefault);
    refresh();
}

QWidget *ItemEditor::restoreButton() const
{
    return m_restore;
}

void ItemEditor::refresh()
{
    PR_PrefItem const *const present = item();
    setEnabled(present);
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

bool ItemEditor::eventFilter(QObject *watched, QEvent *event)
{
    // The wheel scrolls the page; without this, it changes whatever value comes to lie under the pointer.
    if (event->type() == QEvent::Wheel && !m_field->hasFocus()) {
        event->ignore();
        return true;
    }
    // What was held back while the user typed; queued, since the field takes the typed text only now.
    if (event->type() == QEvent::FocusOut)
        QMetaObject::invokeMethod(this, &ItemEditor::refresh, Qt::QueuedConnection);
    return QWidget::eventFilter(watched, event);
}

// The item under the key, as long as it is of the type that the field was made for.
PR_PrefItem *ItemEditor::item() const
{
    PR_PrefItem *const found = m_store.find(m_key);
    return found && &FieldType::of(*found) == &m_type ? found : nullptr;
}

void ItemEditor::enter(FieldType::Change const &change)
{
    if (m_text)
        m_text->setModified(false);
    PR_PrefItem *const target = item();
    if (target && change(*target)) {
        m_shownValue = target->valueAsString();
        m_store.emitPreferenceChanged(); // last: a receiver may do anything
        return;
    }
    // Not taken, because it is the value already or since a lock came in between: the field shows what holds.
    m_shownValue.reset();
    refresh();
}

void ItemEditor::restoreDefault()
{
    m_field->setFocus(); // the button is about to be hidden
    m_store.restoreDefault(m_key);
    m_store.emitPreferenceChanged(); // restoring alone announces nothing
}

void ItemEditor::showState(PR_PrefItem const &item)
{
    bool const locked = item.hasFacilityOverride(false);
    bool const changed = item.getOrigin() == PR_PrefItem::OriginUser;
    QString why;
    if (locked)
        why = tr("Locked for everybody by the facility. It can be changed by the administrator only.");
    else if (changed)
        why = tr("Changed by you. The default is %1.").arg(defaultText(item));
    QString const state = locked ? u"locked"_s : changed ? u"changed"_s : u"default"_s;
    if (state == m_shownState)
        return;
    m_shownState = state;

    // Rich text, which is wrapped; a plain tool tip becomes as wide as the screen.
    QString help =
        "<p><b>%1</b></p><p>%2</p>"_L1.arg(labelText(item).toHtmlEscaped(), item.getLongDescription().toHtmlEscaped());
    if (!why.isEmpty())
        help += "<p><i>%1</i></p>"_L1.arg(why.toHtmlEscaped());
    setToolTip(help + "<p>%1</p>"_L1.arg(m_key.toHtmlEscaped()));

    if (locked)
        m_mark->setPixmap(lockPicture(*this));
    else
        m_mark->setText(changed ? QString(QChar(0x25CF)) : QString());
    m_mark->setAccessibleName(why);
    QFont font = m_label->font();
    font.setBold(changed);
    m_label->setFont(font);
    m_field->setEnabled(!locked);
    m_restore->setVisible(changed);
}

bool ItemEditor::isTypedInto() const
{
    return m_text && m_text->isModified() && m_field->hasFocus();
}
