#include "FieldWidgets_p.h"

#include <QColorDialog>
#include <QCompleter>
#include <QEvent>
#include <QFileDialog>
#include <QFileSystemModel>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPixmap>
#include <QSignalBlocker>

using namespace Qt::StringLiterals;

// ---- Colours

ColorButton::ColorButton(QWidget *parent)
    : QPushButton(parent)
{
    setAutoDefault(false);
    connect(this, &QPushButton::clicked, this, &ColorButton::openDialog);
}

QString ColorButton::text(QColor const &color)
{
    return color.name(color.alpha() == 255 ? QColor::HexRgb : QColor::HexArgb);
}

void ColorButton::setColor(QColor const &color)
{
    m_color = color;
    setText(u' ' + text(color));
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

// ---- Numbers

NumberBox::NumberBox(bool percentage, QWidget *parent)
    : QDoubleSpinBox(parent)
    , m_scale(percentage ? 100 : 1)
{
    setDecimals(percentage ? 4 : 6); // the sixth of the fraction in either case
    setStepType(AdaptiveDecimalStepType); // the step suits 0.002 as well as 2000
    if (percentage)
        setSuffix(u" %"_s);
}

void NumberBox::setNumber(double number)
{
    auto const shown = [this](double limit) {
        return qBound(std::numeric_limits<double>::lowest(), limit * m_scale, std::numeric_limits<double>::max());
    };
    setRange(shown(qMin(limits.first, number)), shown(qMax(limits.second, number)));
    setValue(number * m_scale);
}

QString NumberBox::textFromValue(double value) const
{
    QLocale plain = locale();
    plain.setNumberOptions(QLocale::OmitGroupSeparator);
    return plain.toString(value, 'f', QLocale::FloatingPointShortest);
}

// ---- Shortcuts

ShortcutEdit::ShortcutEdit(QWidget *parent)
    : QKeySequenceEdit(parent)
{
}

int ShortcutEdit::code() const
{
    QKeySequence const shortcut = keySequence();
    return shortcut.isEmpty() ? 0 : shortcut[0].toCombined();
}

void ShortcutEdit::setCode(int code)
{
    setKeySequence(code ? QKeySequence(code) : QKeySequence());
}

void ShortcutEdit::keyPressEvent(QKeyEvent *event)
{
    bool const isAlone = event->modifiers() == Qt::NoModifier;
    if (isAlone && event->key() == Qt::Key_Escape)
        return clearFocus();
    if (isAlone && event->key() == Qt::Key_Backspace) {
        Q_EMIT pressed(0);
        return;
    }
    // The base class knows what the keyboard means, but forgets the shortcut as soon as a modifier goes down.
    int key = 0;
    {
        QSignalBlocker const blocker(this);
        int const shown = code();
        clear();
        QKeySequenceEdit::keyPressEvent(event);
        key = code();
        setCode(shown);
    }
    bool const hasName =
        QKeySequence(key).toString(QKeySequence::PortableText).isValidUtf16(); // else no file can hold it
    if (key && hasName)
        Q_EMIT pressed(key);
}

// ---- Folders

FolderEdit::FolderEdit(QWidget *parent)
    : QWidget(parent)
    , m_edit(new QLineEdit)
{
    auto *const button = new QPushButton(tr("Browse..."));
    button->setAutoDefault(false);
    setFocusProxy(m_edit);
    auto *const line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(m_edit, 1);
    line->addWidget(button);
    connect(m_edit, &QLineEdit::textEdited, this, [this] {
        if (m_edit->completer()) // made late: it has a thread of its own
            return;
        auto *const folders = new QFileSystemModel(this);
        folders->setFilter(QDir::AllDirs | QDir::NoDotAndDotDot);
        folders->setRootPath(QString());
        m_edit->setCompleter(new QCompleter(folders, this));
    });
    connect(m_edit, &QLineEdit::editingFinished, this, [this] { Q_EMIT entered(path()); });
    connect(button, &QPushButton::clicked, this, &FolderEdit::browse);
}

QString FolderEdit::path() const
{
    return m_edit->text();
}

void FolderEdit::setPath(QString const &path)
{
    m_edit->setText(path);
    m_edit->setCursorPosition(0);
}

void FolderEdit::browse()
{
    auto *const dialog = new QFileDialog(this, accessibleName(), path());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    connect(dialog, &QFileDialog::fileSelected, this, [this](QString const &folder) {
        setPath(QDir::toNativeSeparators(folder));
        Q_EMIT entered(path());
    });
    dialog->open();
}
