#ifndef SHORTCUTEDIT_H
#define SHORTCUTEDIT_H

#include <QKeySequenceEdit>

/*! Takes the key that is pressed in it as the shortcut, at once. Backspace alone takes the shortcut away.

    The base class would wait for up to three further keys, but a preference holds a single one. */
class ShortcutEdit : public QKeySequenceEdit {
    Q_OBJECT

public:
    explicit ShortcutEdit(QWidget *parent = nullptr);

    /*! The key with Qt's modifier bits; 0 for none. */
    int code() const;

protected:
    void keyPressEvent(QKeyEvent *event) override;
};

#endif
