#include "XmlText.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

XmlText::XmlText(QString whole)
    : text(std::move(whole))
    , lineStarts{ 0 }
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        bool const endsPair = i + 1 < text.size() && text[i] == u'\r' && text[i + 1] == u'\n';
        if (text[i] == u'\n' || (text[i] == u'\r' && !endsPair))
            lineStarts.push_back(i + 1);
    }
}

qsizetype XmlText::positionOf(int line, int column) const
{
    auto const index = size_t(std::clamp(line - 1, 0, int(lineStarts.size()) - 1));
    return std::clamp(lineStarts[index] + column - 1, qsizetype(0), text.size());
}

XmlText::Span XmlText::attributeOf(qsizetype tag, QString const &attribute) const
{
    auto const skip = [this](qsizetype from, auto const &isSkipped) {
        while (from < text.size() && isSkipped(text[from]))
            ++from;
        return from;
    };
    auto const isSpace = [](QChar c) { return c.isSpace(); };
    auto const isName = [](QChar c) { return !c.isSpace() && c != u'=' && c != u'>'; };
    for (qsizetype at = skip(tag, isName); at < text.size();) {
        qsizetype const name = skip(at, isSpace);
        qsizetype const end = skip(name, isName);
        qsizetype const quote = skip(end, [](QChar c) { return c.isSpace() || c == u'='; });
        if (quote >= text.size() || text[quote] == u'>')
            break; // an element of an entity stands elsewhere
        at = text.indexOf(text[quote], quote + 1) + 1;
        if (at == 0)
            break;
        if (QStringView(text).mid(name, end - name) == attribute)
            return { name, at };
    }
    return { tag, tag };
}

// Behind a tag, a comment, a section or an instruction.
qsizetype XmlText::behindMarkup(qsizetype at) const
{
    auto const behind = [this](QLatin1String what, qsizetype from) {
        qsizetype const found = text.indexOf(what, from);
        return found < 0 ? text.size() : found + what.size();
    };
    QStringView const markup = QStringView(text).mid(at, 9);
    if (markup.startsWith("<!--"_L1))
        return behind("-->"_L1, at + 4);
    if (markup.startsWith("<![CDATA["_L1))
        return behind("]]>"_L1, at);
    if (markup.startsWith("<?"_L1))
        return behind("?>"_L1, at);
    QChar quote;
    for (; at < text.size() && (text[at] != u'>' || !quote.isNull()); ++at) {
        if (!quote.isNull())
            quote = text[at] == quote ? QChar() : quote;
        else if (text[at] == u'"' || text[at] == u'\'')
            quote = text[at];
    }
    return std::min(at + 1, text.size());
}

XmlText::Parts XmlText::partsOf(qsizetype tag) const
{
    Parts parts{ { tag, behindMarkup(tag) }, {} };
    parts.endTag = { parts.startTag.end, parts.startTag.end };
    auto const isEmptyElement = [this](qsizetype end) { return text[end - 2] == u'/'; };
    for (int depth = isEmptyElement(parts.startTag.end) ? 0 : 1; depth > 0;) {
        qsizetype const begin = text.indexOf(u'<', parts.endTag.end);
        if (begin < 0)
            break;
        parts.endTag = { begin, behindMarkup(begin) };
        QChar const kind = begin + 1 < text.size() ? text[begin + 1] : QChar();
        if (kind == u'/')
            --depth;
        else if (kind != u'!' && kind != u'?' && !isEmptyElement(parts.endTag.end))
            ++depth;
    }
    return parts;
}
