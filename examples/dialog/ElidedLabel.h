#ifndef ELIDEDLABEL_H
#define ELIDEDLABEL_H

#include <QLabel>

/*! A label of one line that ends in dots when there is not enough room, in place of being cut off. */
class ElidedLabel : public QLabel {
    Q_OBJECT

public:
    explicit ElidedLabel(QString const &text, QWidget *parent = nullptr);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void elide();

    QString m_fullText;
};

#endif
