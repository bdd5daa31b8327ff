#include "SourceTexts.h"

using namespace Qt::StringLiterals;

SourceText const &SourceTexts::of(QString const &path)
{
    auto found = m_texts.find(path);
    if (found == m_texts.end())
        found = m_texts.emplace(path, SourceText(PR_XmlFile::read(path).bytes)).first;
    return found->second;
}

Place SourceTexts::placeOf(PR_Definition const &definition)
{
    SourceText const &text = of(definition.file->xml.path);
    return text.placeOf(text.tagEndingAt(definition.element.lineNumber(), definition.element.columnNumber()));
}

QString SourceTexts::placeText(PR_Definition const &definition)
{
    return u"%1:%2"_s.arg(definition.file->xml.path, QString::number(placeOf(definition).line));
}
