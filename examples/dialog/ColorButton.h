#ifndef COLORBUTTON_H
#define COLORBUTTON_H

#include <QColor>
#include <QPushButton>

/*! Shows a colour with its transparency; a click opens a dialog to choose another one. */
class ColorButton : public QPushButton {
    Q_OBJECT

public:
    explicit ColorButton(QWidget *parent = nullptr);

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

#endif
