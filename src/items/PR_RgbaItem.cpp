#include "PR_RgbaItem.h"
#include "PR_TypedItem_p.h"

template class PR_TypedItem<PR_RgbaItem, unsigned int>;

namespace {
struct Channel {
    QString const &attribute;
    int shift;
};

Channel const redChannel{ kRed, 16 };
Channel const greenChannel{ kGreen, 8 };
Channel const blueChannel{ kBlue, 0 };
Channel const alphaChannel{ kAlpha, 24 };

int channelValue(unsigned int color, Channel const &channel)
{
    return int((color >> channel.shift) & 0xFF);
}

template <class Element> unsigned int colorOf(Element const &element, int alpha)
{
    auto const number = [&element](QString const &attribute) { return element.attribute(attribute).toInt(); };
    return PR_RgbaItem::pack(number(kRed), number(kGreen), number(kBlue), alpha);
}

// A definition without alpha is opaque.
int alphaOf(QDomElement const &definition)
{
    return definition.hasAttribute(kAlpha) ? definition.attribute(kAlpha).toInt() : 255;
}
} // namespace

PR_RgbaItem::PR_RgbaItem(Category category, QString const &key, unsigned int color)
    : PR_TypedItem(category, key, QStringLiteral("color"), color)
{
}

PR_RgbaItem::PR_RgbaItem(Category category, QString const &key, QDomElement const &definition)
    : PR_RgbaItem(category, key, colorOf(definition, alphaOf(definition)))
{
}

PR_RgbaItem::~PR_RgbaItem() = default;

PR_PrefItem::Type PR_RgbaItem::getType() const
{
    return Color;
}

unsigned int PR_RgbaItem::pack(int red, int green, int blue, int alpha)
{
    auto const low = [](int number) { return static_cast<unsigned int>(number) & 0xFFU; };
    return low(alpha) << 24 | low(red) << 16 | low(green) << 8 | low(blue);
}

bool PR_RgbaItem::readElement(PR_ItemElement const &element, unsigned int &color) const
{
    color = colorOf(element, element.attribute(kAlpha).toInt());
    return true;
}

bool PR_RgbaItem::readToken(TULex &lex, unsigned int &color) const
{
    int red = 0, green = 0, blue = 0, alpha = 0;
    if (!lex.get_int(red) || !lex.get_int(green) || !lex.get_int(blue) || !lex.get_int(alpha))
        return false;
    color = pack(red, green, blue, alpha);
    return true;
}

PR_ItemElement PR_RgbaItem::element() const
{
    auto element = PR_ItemElement::of(getTag(), getKey());
    for (Channel const &channel : { alphaChannel, blueChannel, greenChannel, redChannel })
        element.add(channel.attribute, QString::number(channelValue(m_value, channel)));
    return element;
}

QString PR_RgbaItem::asString(unsigned int color) const
{
    QString text = QStringLiteral("(%1 %2 %3 %4)");
    for (Channel const &channel : { redChannel, greenChannel, blueChannel, alphaChannel })
        text = text.arg(channelValue(color, channel), 3, 10, QLatin1Char(' '));
    return text;
}
