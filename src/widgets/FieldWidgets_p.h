#ifndef FIELDWIDGETS_P_H
#define FIELDWIDGETS_P_H

#include <QColor>
#include <QDoubleSpinBox>
#include <QKeySequenceEdit>
#include <QPushButton>
#include <QWidget>

#include <limits>
#include <utility>

class QLineEdit;

/*! Shows a colour with its transparency; a click opens a dialog to choose another one. */
class ColorButton : public QPushButton {
    Q_OBJECT

public:
    explicit ColorButton(QWidget *parent = nullptr);

    static QString text(QColor const &color);
    QColor color() const { return m_color; }
    void setColor(QColor const &color);

Q_SIGNALS:
    /*! The user has chosen a colour; the button shows it already. */
    void colorSelected(QColor const &color);

protected:
    void changeEvent(QEvent *event) override;

private:
    void openDialog();
    void updateSwatch();

    QColor m_color;
};

/*! A box for any number, without needless zeros; shows a fraction as a percentage when asked to. */
class NumberBox : public QDoubleSpinBox {
    Q_OBJECT

public:
    explicit NumberBox(bool percentage, QWidget *parent = nullptr);

    /*! The number itself: 0.5 while "50 %" is shown. */
    double number() const { return value() / m_scale; }
    /*! Shows a number, be it outside of the limits. */
    void setNumber(double number);

    /*! The least and the largest number that can be entered; take effect with setNumber(). */
    std::pair<double, double> limits{ std::numeric_limits<double>::lowest(), std::numeric_limits<double>::max() };

    QString textFromValue(double value) const override;

private:
    double const m_scale;
};

/*! Takes the key that is pressed in it. Backspace alone stands for no shortcut, Escape alone leaves the field.

    The base class would wait for up to three further keys, but a preference holds a single one. What is shown stays
    until setCode(): whoever receives the key decides. */
class ShortcutEdit : public QKeySequenceEdit {
    Q_OBJECT

public:
    explicit ShortcutEdit(QWidget *parent = nullptr);

    /*! The key with Qt's modifier bits; 0 for none. */
    int code() const;
    void setCode(int code);

Q_SIGNALS:
    void pressed(int code);

protected:
    void keyPressEvent(QKeyEvent *event) override;
};

/*! The path of a folder, to type or to choose in a dialog. */
class FolderEdit : public QWidget {
    Q_OBJECT

public:
    explicit FolderEdit(QWidget *parent = nullptr);

    QString path() const;
    void setPath(QString const &path);

Q_SIGNALS:
    /*! The user has entered a path. */
    void entered(QString const &path);

private:
    void browse();

    QLineEdit *m_edit;
};

#endif
