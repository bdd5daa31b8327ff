#include "PR_RgbaItem.h"
#include "PR_TypedItem_p.h"

#include <QVarLengthArray>

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

unsigned int colorOf(PR_Element const &element, int alphaWithout)
{
    auto const number = [&element](QString const &attribute) { return element.attribute(attribute).toInt(); };
    return PR_RgbaItem::pack(
        number(kRed), number(kGreen), number(kBlue), element.hasAttribute(kAlpha) ? number(kAlpha) : alphaWithout);
}
} // namespace

PR_RgbaItem::PR_RgbaItem(Category category, QString const &key, unsigned int color)
    : PR_TypedItem(category, key, QStringLiteral("color"), color)
{
}

PR_RgbaItem::PR_RgbaItem(Category category, QString const &key, QDomElement const &definition)
    : PR_RgbaItem(category, key, *PR_ElementDom::treeOf(definition).root())
{
}

// A definition without alpha is opaque.
PR_RgbaItem::PR_RgbaItem(Category category, QString const &key, PR_Element const &definition)
    : PR_RgbaItem(category, key, colorOf(definition, 255))
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

bool PR_RgbaItem::readElement(PR_Element const &element, unsigned int &color) const
{
    color = colorOf(element, 0);
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

void PR_RgbaItem::write(PR_XmlTree &tree, PR_Element *parent) const
{
    QString const key = getKey();
    QString texts[4];
    QVarLengthArray<PR_Attribute, 5> attributes{ { kId, key } };
    for (Channel const &channel : { alphaChannel, blueChannel, greenChannel, redChannel }) {
        QString &text = texts[attributes.size() - 1];
        text = QString::number(channelValue(m_value, channel));
        attributes.append({ channel.attribute, text });
    }
    tree.addElement(parent, getTag(), attributes.constData(), int(attributes.size()));
}

QString PR_RgbaItem::asString(unsigned int color) const
{
    QString text = QStringLiteral("(%1 %2 %3 %4)");
    for (Channel const &channel : { redChannel, greenChannel, blueChannel, alphaChannel })
        text = text.arg(channelValue(color, channel), 3, 10, QLatin1Char(' '));
    return text;
}
