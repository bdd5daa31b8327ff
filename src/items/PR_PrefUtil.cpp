#include "PR_PrefUtil.h"
#include "PR_PrefUtil_p.h"

#include "PR_PrefConstants.h"

#include <QDomDocument>

#include <algorithm>

namespace {
QString cdataAttribute()
{
    return QStringLiteral("cdata");
}

bool isXmlName(QString const &text)
{
    auto const isAsciiLetter = [](QChar c) {
        return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c == u'_';
    };
    auto const isNameCharacter = [&](QChar c) {
        return isAsciiLetter(c) || (c >= u'0' && c <= u'9') || c == u'-' || c == u'.';
    };
    return !text.isEmpty() && isAsciiLetter(text.front()) && std::all_of(text.begin(), text.end(), isNameCharacter);
}

// A reader turns CR LF into LF and ends the section at "]]>".
bool fitsCdata(QString const &text)
{
    return !text.contains(u'\r') && !text.contains(QLatin1String("]]>"));
}
} // namespace

QString PR_PrefUtil::xmlText(QString const &text)
{
    // The length in code units of the character at a position; 0 for one that XML cannot hold.
    auto const validLength = [&text](qsizetype i) {
        char16_t const c = text[i].unicode();
        if (QChar::isHighSurrogate(c))
            return i + 1 < text.size() && text[i + 1].isLowSurrogate() ? 2 : 0;
        bool const valid = c < 0x20 ? c == u'\t' || c == u'\n' || c == u'\r' : !QChar::isLowSurrogate(c) && c < 0xFFFE;
        return valid ? 1 : 0;
    };

    qsizetype i = 0;
    while (i < text.size() && validLength(i) > 0)
        i += validLength(i);
    if (i == text.size())
        return text;

    QString valid = text.left(i);
    while (i < text.size()) {
        int const length = validLength(i);
        valid += QStringView(text).mid(i, length);
        i += qMax(length, 1);
    }
    return valid;
}

QString PR_PrefUtil::elementValue(QDomElement const &element)
{
    if (element.hasAttribute(cdataAttribute())) {
        QDomCDATASection const section = element.firstChild().toCDATASection();
        if (!section.isNull())
            return section.data();
    }
    return element.attribute(kValue);
}

QDomElement PR_PrefUtil::appendElement(QDomDocument *document, QString const &tag, QString const &id)
{
    QDomElement element = document->createElement(isXmlName(tag) ? tag : QStringLiteral("string"));
    element.setAttribute(kId, xmlText(id));
    document->documentElement().appendChild(element);
    return element;
}

void PR_PrefUtil::addElement(
    QDomDocument *document, QString const &tag, QString const &id, QString const &value, bool cdata)
{
    QDomElement element = appendElement(document, tag, id);
    QString const text = xmlText(value);
    if (cdata && fitsCdata(text)) {
        element.appendChild(document->createCDATASection(text));
        element.setAttribute(cdataAttribute(), QStringLiteral("true"));
    } else {
        element.setAttribute(kValue, text);
    }
}

bool PR_PrefUtil::attributes(QDomElement const &element, QString *id, QString *value)
{
    *id = element.attribute(kId);
    *value = elementValue(element);
    return !id->isEmpty();
}
