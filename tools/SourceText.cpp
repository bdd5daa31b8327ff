#include "SourceText.h"

#include <QRegularExpression>
#include <QStringDecoder>

#include <algorithm>

using namespace Qt::StringLiterals;

SourceText::SourceText(QByteArray bytes)
    : m_bytes(std::move(bytes))
{
}

SourceText::Lines const &SourceText::lines() const
{
    if (m_lines)
        return *m_lines;
    m_lines.emplace();
    QStringDecoder decoder(QStringConverter::encodingForData(m_bytes, u'<').value_or(QStringConverter::Utf8));
    QString const text = m_lines->text = decoder.decode(m_bytes);
    m_lines->starts.push_back(0);
    for (qsizetype i = 0; i < text.size(); ++i) {
        bool const endsPair = i + 1 < text.size() && text[i] == u'\r' && text[i + 1] == u'\n';
        if (text[i] == u'\n' || (text[i] == u'\r' && !endsPair))
            m_lines->starts.push_back(i + 1);
    }
    return *m_lines;
}

SourceText::Tag SourceText::tagEndingAt(int line, int column) const
{
    Lines const &all = lines();
    // Where a document type of the file's own has entities, elements may come from there.
    auto const index = size_t(std::clamp(line - 1, 0, int(all.starts.size()) - 1));
    qsizetype const end = std::clamp(all.starts[index] + column, qsizetype(0), all.text.size());
    // An attribute cannot hold a "<".
    return { end > 0 ? qMax(all.text.lastIndexOf(u'<', end - 1), qsizetype(0)) : 0, end };
}

Place SourceText::placeOf(qsizetype position) const
{
    auto const &starts = lines().starts;
    auto const line = std::upper_bound(starts.begin(), starts.end(), position) - 1;
    return { int(line - starts.begin()) + 1, int(position - *line) + 1 };
}

Place SourceText::placeOf(Tag const &tag) const
{
    return placeOf(tag.begin);
}

Place SourceText::placeOf(Tag const &tag, QString const &attribute) const
{
    static QRegularExpression const form(u"([^\\s=<\"']+)\\s*=\\s*(?:\"[^\"]*\"|'[^']*')"_s);
    QString const text = lines().text.mid(tag.begin, tag.end - tag.begin);
    for (auto match = form.globalMatch(text); match.hasNext();) {
        auto const found = match.next();
        if (found.captured(1) == attribute)
            return placeOf(tag.begin + found.capturedStart(1));
    }
    return placeOf(tag);
}

SourceText const &SourceTextCache::of(QString const &path)
{
    auto found = m_texts.find(path);
    if (found == m_texts.end())
        found = m_texts.emplace(path, SourceText(PR_XmlFile::read(path).bytes)).first;
    return found->second;
}

Place SourceTextCache::placeOf(PR_Definition const &definition)
{
    SourceText const &text = of(definition.file->xml.path);
    return text.placeOf(text.tagEndingAt(definition.element.lineNumber(), definition.element.columnNumber()));
}

QString SourceTextCache::placeText(PR_Definition const &definition)
{
    return u"%1:%2"_s.arg(definition.file->xml.path, QString::number(placeOf(definition).line));
}
