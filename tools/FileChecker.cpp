#include "FileChecker.h"

#include "NearestWord.h"
#include "XmlOutline.h"

#include "PR_FontItem.h"
#include "PR_IntItem.h"
#include "PR_ItemElement_p.h"
#include "PR_PrefConstants.h"
#include "PR_XmlFile_p.h"

#include <QDomElement>
#include <QKeySequence>

using namespace Qt::StringLiterals;

bool isIgnoredText(QDomNode const &node)
{
    return node.isText() && !node.toText().data().trimmed().isEmpty();
}

QStringList valueAttributes(QString const &type)
{
    return type == "color"_L1 ? QStringList{ kRed, kGreen, kBlue, kAlpha } : QStringList{ kValue };
}

FileChecker::FileChecker(QString file, FileKind kind, SourceText const &source)
    : m_file(std::move(file))
    , m_kind(kind)
    , m_source(source)
{
}

std::vector<Finding> FileChecker::takeFindings()
{
    return std::exchange(m_findings, {});
}

void FileChecker::enter(int line, int column, QString const &key)
{
    m_tag = m_source.tagEndingAt(line, column);
    m_key = key;
}

void FileChecker::enter(QDomElement const &element)
{
    enter(element.lineNumber(), element.columnNumber(), element.attribute(kId));
}

void FileChecker::report(Rule rule, QString const &text, QString const &attribute, QString const &suggestion)
{
    m_findings.push_back({ m_file, attribute.isEmpty() ? place() : m_source.placeOf(m_tag, attribute),
        m_kind == UserFile ? textOf(rule).inUserFile : textOf(rule).inDefinitions, rule, m_key, text, suggestion });
}

void FileChecker::reportUnreadable(PR_XmlFile const &xml)
{
    Rule const rule = xml.state == PR_XmlFile::CannotOpen ? Rule::CannotRead : Rule::NotXml;
    // A parser counts the characters before the place.
    Place const place{ int(xml.errorLine), xml.errorLine > 0 ? int(xml.errorColumn) + 1 : 0 };
    m_findings.push_back({ m_file, place, textOf(rule).inUserFile, rule, {}, xml.error, {} });
}

void FileChecker::reportText(QString const &tag)
{
    report(Rule::IgnoredContent, u"the text in \"%1\" is not read"_s.arg(tag));
}

void FileChecker::checkRootName(QString const &tag)
{
    if (tag != rootName()) {
        report(Rule::UnknownRoot, u"the root is \"%1\", not \"%2\""_s.arg(tag, rootName()), {},
            NearestWord({ rootName() }).to(tag));
    }
}

void FileChecker::checkAttributes(PR_ItemElement const &element, QStringList const &known)
{
    for (auto const &[name, text] : element.attributes) {
        if (!known.contains(name))
            report(Rule::UnknownAttribute, u"\"%1\" has no attribute \"%2\""_s.arg(element.tag, name), name,
                NearestWord(known + QStringList{ kId }).to(name));
    }
}

void FileChecker::checkContent(QDomElement const &element, bool mayHoldCdata)
{
    for (QDomNode node = element.firstChild(); !node.isNull(); node = node.nextSibling()) {
        bool const isValue = mayHoldCdata && node.isCDATASection() && node.previousSibling().isNull();
        if ((node.isElement() || isIgnoredText(node)) && !isValue)
            return report(Rule::IgnoredContent, u"what stands inside of the element is not read"_s);
    }
}

void FileChecker::checkChannels(PR_ItemElement const &element)
{
    for (QString const &channel : valueAttributes(u"color"_s)) {
        if (!element.find(channel))
            continue;
        QString const text = element.attribute(channel);
        bool isNumber = false;
        int const value = text.toInt(&isNumber);
        if (!isNumber)
            report(Rule::BadValue, u"\"%1\" is no whole number and counts as 0"_s.arg(text), channel);
        else if (value < 0 || value > 255)
            report(Rule::OutsideChannel, u"%1 is outside 0 to 255"_s.arg(text), channel);
    }
}

void FileChecker::checkRange(PR_PrefItem const &item)
{
    auto const *number = dynamic_cast<PR_IntItem const *>(&item);
    if (!number || number->minValue() > number->maxValue())
        return;
    if (number->value() < number->minValue() || number->value() > number->maxValue()) {
        report(Rule::OutsideRange,
            u"%1 is outside %2 to %3"_s.arg(number->value()).arg(number->minValue()).arg(number->maxValue()), kValue);
    }
}

void FileChecker::checkFont(PR_FontItem const &item, QString const &name)
{
    QStringList const fonts = item.EnumNameList();
    if (!name.isEmpty() && !fonts.contains(name, Qt::CaseInsensitive))
        report(Rule::MissingFont, u"there is no font \"%1\""_s.arg(name), kValue, NearestWord(fonts).to(name));
}

void FileChecker::checkShortcut(PR_PrefItem const &item, QString const &text)
{
    bool const isRead = !item.valueAsString().isEmpty();
    if (!text.isEmpty() && (!isRead || QKeySequence(text).count() > 1))
        report(Rule::UnreadableShortcut,
            isRead ? u"only the first key of \"%1\" counts"_s.arg(text) : u"\"%1\" is no key"_s.arg(text), kValue);
}
