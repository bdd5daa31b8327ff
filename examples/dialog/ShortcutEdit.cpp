#include "ShortcutEdit.h"

#include <QKeyEvent>
#include <QSignalBlocker>

ShortcutEdit::ShortcutEdit(QWidget *parent)
    : QKeySequenceEdit(parent)
{
    setClearButtonEnabled(true);
}

int ShortcutEdit::code() const
{
    QKeySequence const shortcut = keySequence();
    return shortcut.isEmpty() ? 0 : shortcut[0].toCombined();
}

void ShortcutEdit::keyPressEvent(QKeyEvent *event)
{
    QKeySequence shortcut = keySequence();
    if (event->key() == Qt::Key_Backspace && event->modifiers() == Qt::NoModifier) {
        shortcut = {};
    } else {
        // The base class knows what the keyboard means, but forgets the shortcut as soon as a modifier goes down.
        QSignalBlocker const blocker(this);
        QKeySequence const old = shortcut;
        clear();
        QKeySequenceEdit::keyPressEvent(event);
        if (int const pressed = code())
            shortcut = QKeySequence(pressed);
        setKeySequence(old);
    }
    setKeySequence(shortcut);
}
