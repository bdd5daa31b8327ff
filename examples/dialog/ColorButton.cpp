#include "ColorButton.h"

#include <QColorDialog>
#include <QEvent>
#include <QPainter>
#include <QPixmap>

ColorButton::ColorButton(QWidget *parent)
    : QPushButton(parent)
{
    setAutoDefault(false);
    connect(this, &QPushButton::clicked, this, &ColorButton::openDialog);
}

void ColorButton::setColor(QColor const &color)
{
    m_color = color;
    setText(QLatin1Char(' ') + color.name(color.alpha() == 255 ? QColor::HexRgb : QColor::HexArgb));
    updateSwatch();
}

void ColorButton::changeEvent(QEvent *event)
{
    QPushButton::changeEvent(event);
    if (event->type() == QEvent::EnabledChange || event->type() == QEvent::PaletteChange)
        updateSwatch();
}

void ColorButton::openDialog()
{
    auto *const dialog = new QColorDialog(m_color, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setOption(QColorDialog::ShowAlphaChannel);
    dialog->setWindowTitle(accessibleName());
    connect(dialog, &QColorDialog::colorSelected, this, [this](QColor const &color) {
        setColor(color);
        Q_EMIT colorSelected(color);
    });
    dialog->open();
}

void ColorButton::updateSwatch()
{
    QSize const size(40, 16);
    setIconSize(size);
    QPixmap swatch(size * devicePixelRatio());
    swatch.setDevicePixelRatio(devicePixelRatio());
    QRect const area(QPoint(0, 0), size);
    QPainter painter(&swatch);
    // Squares show through a colour that is not opaque.
    painter.fillRect(area, Qt::white);
    int const square = 4;
    for (int x = 0; x < size.width(); x += square) {
        for (int y = x % (2 * square); y < size.height(); y += 2 * square)
            painter.fillRect(x, y, square, square, Qt::gray);
    }
    painter.fillRect(area, m_color);
    painter.setPen(palette().color(QPalette::Disabled, QPalette::Text));
    painter.drawRect(area.adjusted(0, 0, -1, -1));
    painter.end();
    // The colour is not to be greyed where it is locked: it is what is looked for.
    QIcon icon(swatch);
    icon.addPixmap(swatch, QIcon::Disabled);
    setIcon(icon);
}
