#include "ValueText.h"

#include "PR_ItemTypes_p.h"

#include <QLocale>
#include <QRegularExpression>

#include <cmath>
#include <optional>

using namespace Qt::StringLiterals;

namespace {
template <class Value> std::optional<Value> valueIf(bool condition, Value const &value)
{
    return condition ? std::optional<Value>(value) : std::nullopt;
}

std::optional<bool> parse(PR_BoolItem const &, QString const &text)
{
    static QStringList const yes{ u"yes"_s, u"true"_s, u"y"_s, u"1"_s };
    static QStringList const no{ u"no"_s, u"false"_s, u"n"_s, u"0"_s };
    bool const isYes = yes.contains(text, Qt::CaseInsensitive);
    return valueIf(isYes || no.contains(text, Qt::CaseInsensitive), isYes);
}

std::optional<int> parse(PR_IntItem const &item, QString const &text)
{
    bool ok = false;
    int const value = text.toInt(&ok);
    return valueIf(ok && value >= item.minValue() && value <= item.maxValue(), value);
}

std::optional<double> parse(PR_DoubleItem const &, QString const &text)
{
    bool ok = false;
    double const value = text.toDouble(&ok);
    return valueIf(ok && std::isfinite(value), value);
}

std::optional<unsigned int> parse(PR_RgbaItem const &, QString const &text)
{
    static QRegularExpression const hexadecimal(u"^#([0-9a-fA-F]{2})?([0-9a-fA-F]{6})$"_s);
    if (auto const match = hexadecimal.match(text); match.hasMatch()) {
        unsigned int const alpha = match.captured(1).isEmpty() ? 0xFF : match.captured(1).toUInt(nullptr, 16);
        return alpha << 24 | match.captured(2).toUInt(nullptr, 16);
    }

    static QRegularExpression const decimal(u"^\\(?\\s*(\\d+)\\s+(\\d+)\\s+(\\d+)(?:\\s+(\\d+))?\\s*\\)?$"_s);
    auto const match = decimal.match(text);
    bool inRange = match.hasMatch();
    auto const channel = [&](int index) {
        QString const digits = match.captured(index);
        bool ok = true;
        int const value = digits.isEmpty() ? 255 : digits.toInt(&ok);
        inRange = inRange && ok && value <= 255;
        return value;
    };
    unsigned int const color = PR_RgbaItem::pack(channel(1), channel(2), channel(3), channel(4));
    return valueIf(inRange, color);
}

std::optional<QString> parse(PR_StringItem const &, QString const &text)
{
    return text;
}

std::optional<int> parse(PR_KeyItem const &, QString const &text)
{
    if (text.isEmpty())
        return 0;
    QKeySequence const shortcut = QKeySequence::fromString(text, QKeySequence::PortableText);
    bool const isOneKey = shortcut.count() == 1 && shortcut[0].key() != Qt::Key_unknown;
    return valueIf(isOneKey, isOneKey ? shortcut[0].toCombined() : 0);
}

std::optional<int> parse(PR_EnumItem const &item, QString const &text)
{
    QStringList const fonts = item.EnumNameList();
    for (int i = 0; i < fonts.size(); ++i) {
        if (fonts[i].compare(text, Qt::CaseInsensitive) == 0)
            return i;
    }
    return std::nullopt;
}

QString form(PR_BoolItem const &)
{
    return u"yes or no"_s;
}

QString form(PR_IntItem const &item)
{
    return u"a whole number from %1 to %2"_s.arg(item.minValue()).arg(item.maxValue());
}

QString form(PR_DoubleItem const &)
{
    return u"a number"_s;
}

QString form(PR_RgbaItem const &)
{
    return u"#RRGGBB, #AARRGGBB or R G B [A] from 0 to 255"_s;
}

QString form(PR_StringItem const &)
{
    return u"a text"_s;
}

QString form(PR_KeyItem const &)
{
    return u"a key such as Ctrl+Shift+S, or nothing"_s;
}

QString form(PR_EnumItem const &)
{
    return u"the name of an available font"_s;
}

QString exactText(PR_BoolItem const &item)
{
    return item.value() ? u"yes"_s : u"no"_s;
}

QString exactText(PR_DoubleItem const &item)
{
    return QString::number(item.value(), 'g', QLocale::FloatingPointShortest);
}

QString exactText(PR_RgbaItem const &item)
{
    return u"#%1"_s.arg(item.value(), 8, 16, QLatin1Char('0'));
}

QString exactText(PR_FontItem &item)
{
    return item.fontName();
}

QString exactText(PR_PrefItem const &item)
{
    return item.valueAsString();
}

template <class Visitor> void visit(PR_PrefItem &item, Visitor const &visitor)
{
    PR_ItemTypes::any([&](auto const &row, int) {
        auto *const typed = dynamic_cast<typename std::decay_t<decltype(row)>::Item *>(&item);
        if (typed)
            visitor(*typed);
        return typed != nullptr;
    });
}
} // namespace

ValueText::Outcome ValueText::assign(PR_PrefItem &item, QString const &text)
{
    Outcome outcome = Refused;
    visit(item, [&](auto &typed) {
        if (auto const value = parse(typed, text))
            outcome = typed.setValue(*value) ? Changed : Held;
    });
    return outcome;
}

QString ValueText::exact(PR_PrefItem &item)
{
    QString text;
    visit(item, [&](auto &typed) { text = exactText(typed); });
    return text;
}

QString ValueText::expectedForm(PR_PrefItem &item)
{
    QString text;
    visit(item, [&](auto const &typed) { text = form(typed); });
    return text;
}

QString ValueText::refusal(PR_PrefItem &item, QString const &text)
{
    return u"\"%1\" is no value of %2; expected %3."_s.arg(escaped(text), escaped(item.getKey()), expectedForm(item));
}

QString ValueText::noSuchPreference(QString const &key, QString const &nearest)
{
    return u"There is no preference %1."_s.arg(escaped(key))
        + (nearest.isEmpty() ? QString() : u" Did you mean %1?"_s.arg(escaped(nearest)));
}

QString ValueText::originOf(PR_PrefItem const &item)
{
    static char const *const names[] = { "default", "user", "facility" };
    return QString::fromLatin1(names[item.getOrigin()]);
}

QString ValueText::escaped(QString text)
{
    text.replace(u'\\', "\\\\"_L1).replace(u'\t', "\\t"_L1).replace(u'\n', "\\n"_L1).replace(u'\r', "\\r"_L1);
    for (qsizetype i = text.size() - 1; i >= 0; --i) { // a terminal would obey the others
        if (text[i].category() == QChar::Other_Control)
            text.replace(i, 1, u"\\x%1"_s.arg(text[i].unicode(), 2, 16, QLatin1Char('0')));
    }
    return text;
}
