#ifndef NUMBERBOX_H
#define NUMBERBOX_H

#include <QDoubleSpinBox>

/*! A box for any number, without needless zeros; shows a fraction as a percentage when asked to. */
class NumberBox : public QDoubleSpinBox {
    Q_OBJECT

public:
    explicit NumberBox(bool percentage, QWidget *parent = nullptr);

    /*! The number itself: 0.5 while "50 %" is shown. */
    double number() const;
    void setNumber(double number);

    QString textFromValue(double value) const override;

private:
    double const m_scale;
};

#endif
