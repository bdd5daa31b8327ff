#include "ElidedLabel.h"

#include <QEvent>

using namespace Qt::StringLiterals;

ElidedLabel::ElidedLabel(QString const &text, QWidget *parent)
    : QLabel(parent)
    , m_fullText(text)
{
    setTextFormat(Qt::PlainText);
    setAccessibleName(text);
    // The shown text depends on the width, so the width must not depend on the text.
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    elide();
}

void ElidedLabel::resizeEvent(QResizeEvent *event)
{
    QLabel::resizeEvent(event);
    elide();
}

void ElidedLabel::changeEvent(QEvent *event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        elide();
}

void ElidedLabel::elide()
{
    QString shown = fontMetrics().elidedText(m_fullText, Qt::ElideRight, contentsRect().width());
    setText(shown.replace(u'&', "&&"_L1)); // a label with a buddy takes a single one for a mnemonic
}
