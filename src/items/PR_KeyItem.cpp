#include "PR_KeyItem.h"
#include "PR_TypedItem_p.h"

template class PR_TypedItem<PR_KeyItem, QKeySequence>;

namespace {
// Modifiers alone, which files name in this form.
struct NamedKey {
    int code;
    char const *name;
};
NamedKey const namedKeys[] = { { Qt::Key_Shift, "Shift" }, { Qt::Key_Control, "Ctrl" }, { Qt::Key_Alt, "Alt" } };

int firstKey(QKeySequence const &shortcut)
{
    return shortcut.isEmpty() ? 0 : shortcut[0].toCombined();
}
} // namespace

PR_KeyItem::PR_KeyItem(Category category, QString const &key, QString const &text)
    : PR_TypedItem(category, key, QStringLiteral("shortcut"), makeShortcut(text))
{
}

PR_KeyItem::PR_KeyItem(Category category, QString const &key, int code)
    : PR_TypedItem(category, key, QStringLiteral("shortcut"), QKeySequence(code))
{
}

PR_KeyItem::PR_KeyItem(Category category, QString const &key, QDomElement const &definition)
    : PR_KeyItem(category, key, definition.attribute(kValue))
{
}

PR_KeyItem::PR_KeyItem(Category category, QString const &key, PR_Element const &definition)
    : PR_KeyItem(category, key, definition.attribute(u"value").toString())
{
}

PR_KeyItem::~PR_KeyItem() = default;

PR_PrefItem::Type PR_KeyItem::getType() const
{
    return Shortcut;
}

bool PR_KeyItem::setValue(int code)
{
    return changeValue(QKeySequence(code));
}

QKeySequence PR_KeyItem::makeShortcut(QString const &text)
{
    if (text == u",")
        return QKeySequence(Qt::Key_Comma);
    int const code = firstKey(QKeySequence(text));
    bool const unreadable = (code & ~int(Qt::KeyboardModifierMask)) == Qt::Key_unknown;
    return unreadable ? QKeySequence() : QKeySequence(code);
}

QKeySequence PR_KeyItem::parse(QString const &text)
{
    for (NamedKey const &key : namedKeys) {
        if (text == QLatin1String(key.name))
            return QKeySequence(key.code);
    }
    if (text.contains(QLatin1String("?>"))) {
        // An old form of files: the second byte is the key code as one digit.
        QByteArray const bytes = text.toUtf8();
        char const digit = bytes.size() < 2 ? '0' : bytes[1];
        return QKeySequence(digit >= '0' && digit <= '9' ? digit - '0' : 0);
    }
    QLatin1String const keypad("Keypad+");
    if (!text.startsWith(keypad))
        return makeShortcut(text);
    int const code = firstKey(makeShortcut(text.mid(keypad.size())));
    int const keypadOffset = 0x01000000; // not Qt's keypad modifier: what the files have always meant
    return code == 0 ? QKeySequence() : QKeySequence(code + keypadOffset);
}

bool PR_KeyItem::readElement(PR_Element const &element, QKeySequence &shortcut) const
{
    shortcut = parse(element.value().toString());
    return true;
}

bool PR_KeyItem::readToken(TULex &lex, QKeySequence &shortcut) const
{
    shortcut = parse(lex);
    lex.get(false);
    return true;
}

void PR_KeyItem::write(PR_XmlTree &tree, PR_Element *parent) const
{
    QString text = asString(m_value);
    for (NamedKey const &key : namedKeys) {
        if (firstKey(m_value) == key.code)
            text = QString::fromLatin1(key.name);
    }
    tree.addItem(parent, getTag(), getKey(), text);
}

QString PR_KeyItem::asString(QKeySequence const &shortcut) const
{
    return shortcut.toString(QKeySequence::PortableText);
}
