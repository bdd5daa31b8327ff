#include "DefinitionText.h"

#include "Command.h"
#include "ConditionSet.h"
#include "ValueText.h"

#include "PL_FileSlot_p.h"
#include "PR_Loader_p.h"
#include "PR_PrefConstants.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
// Where the blanks begin that end at a position.
qsizetype beginOfBlanks(QStringView text, qsizetype end, bool withLineEnds)
{
    while (end > 0 && (withLineEnds ? text[end - 1].isSpace() : text[end - 1] == u' ' || text[end - 1] == u'\t'))
        --end;
    return end;
}

bool areAlike(PR_Element const &category, PR_Element const &other)
{
    QStringList const names = ConditionSet::attributes() + QStringList{ kId };
    return std::all_of(names.begin(), names.end(),
        [&](QString const &name) { return category.attribute(name) == other.attribute(name); });
}

QString attributeText(QStringView name, QString value)
{
    value.replace(u'&', "&amp;"_L1).replace(u'<', "&lt;"_L1).replace(u'"', "&quot;"_L1);
    for (qsizetype i = value.size() - 1; i >= 0; --i) { // a reader makes blanks of them
        if (value[i] < u' ')
            value.replace(i, 1, u"&#%1;"_s.arg(value[i].unicode()));
    }
    return name + "=\""_L1 + value + u'"';
}

// A tag without its end, in the layout of the files that are shipped.
QString tagText(PR_Element const &element, int indent)
{
    qsizetype const lineLength = 120;
    QString text = QString(indent, u' ') + u'<' + element.name;
    for (int i = 0; i < element.attributeCount; ++i) {
        QStringView const name = element.attributes[i].name;
        QString const attribute = attributeText(name, element.attributes[i].value.toString());
        bool const isTooLong = text.size() + 1 + attribute.size() > lineLength;
        bool const startsLine = name == u"longDesc" || (name == u"shortDesc" && isTooLong);
        text += (startsLine ? u'\n' + QString(indent + 4, u' ') : u" "_s) + attribute;
    }
    return text;
}
} // namespace

DefinitionText::DefinitionText(QString const &path)
{
    PL_InputFile const input = PL_InputFile::read(path);
    m_file.path = path;
    m_file.version = input.version;
    m_file.error = input.error;
    bool const isNew = PL_FileVersion::of(path) == PL_FileVersion();
    if (isNew)
        parse("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<preferences>\n</preferences>\n");
    else if (input.error.isEmpty())
        parse(m_original = input.bytes);
    if (isNew || m_file.state != PR_XmlFile::Read)
        return;
    auto const refuse = [&path](QString const &reason) {
        return Failure{ ExitStatus::CannotRead, u"%1 cannot be changed: %2"_s.arg(ValueText::escaped(path), reason) };
    };
    if (!m_original.endsWith(m_file.text))
        throw refuse(u"it is not in UTF-8."_s);
    if (m_file.text.contains("<!ENTITY")) // elements may stand elsewhere than where they are read
        throw refuse(u"it has entities of its own."_s);
    m_mark = m_original.chopped(m_file.text.size());
}

std::vector<PR_Element const *> DefinitionText::of(QString const &key) const
{
    std::vector<PR_Element const *> found;
    for (PR_Element const &category : PR_Elements(m_file.tree.root(), u"category")) {
        for (PR_Element const &element : PR_Elements(category)) {
            if (element.id() == key)
                found.push_back(&element);
        }
    }
    return found;
}

void DefinitionText::add(PR_Element const &definition)
{
    QString const element = tagText(definition, 8) + "/>"_L1;
    for (PR_Element const &category : PR_Elements(m_file.tree.root(), u"category")) {
        if (areAlike(category, *definition.parent))
            return addAtEnd(category, element);
    }
    if (PR_Element const *const root = m_file.tree.root())
        addAtEnd(*root, tagText(*definition.parent, 4) + ">\n"_L1 + element + "\n    </category>"_L1);
}

void DefinitionText::change(QString const &key, std::vector<Attribute> const &attributes)
{
    auto const elements = of(key);
    for (auto element = elements.rbegin(); element != elements.rend(); ++element) { // those before keep their places
        for (Attribute const &attribute : attributes) {
            bool const isThere = (*element)->hasAttribute(attribute.name);
            auto const &value = attribute.value;
            if (isThere != value.has_value() || (value && (*element)->attribute(attribute.name) != *value))
                set(beginOf(**element), attribute);
        }
    }
    parse(m_text.text.toUtf8());
}

void DefinitionText::remove(QString const &key)
{
    for (auto elements = of(key); !elements.empty(); elements = of(key)) {
        PR_Element const &element = *elements.back();
        bool const isAlone = element.parent->firstNode == &element && !element.next;
        erase(isAlone ? *element.parent : element);
    }
}

void DefinitionText::save() const
{
    QByteArray const bytes = m_mark + m_text.text.toUtf8();
    if (bytes == m_original)
        return;
    PL_FileSlot slot;
    slot.modeOfNewFile = 0644;
    auto const result = slot.replace(
        m_file.path, bytes, [](QString const &) { return false; }, &m_file.version);
    if (result.step != PL_FileSlot::Result::Done)
        throw Failure{ ExitStatus::CannotWrite,
            u"%1 cannot be written: %2"_s.arg(ValueText::escaped(m_file.path), result.reason) };
}

void DefinitionText::parse(QByteArray const &text)
{
    PR_XmlFile file = PR_XmlFile::parse(text, PR_Loader::MaximumDefinitions);
    file.path = m_file.path;
    file.version = m_file.version;
    m_file = std::move(file);
    m_text = XmlText(QString::fromUtf8(m_file.text));
    m_lineEnd = m_text.text.contains("\r\n"_L1) ? u"\r\n"_s : u"\n"_s;
}

void DefinitionText::addAtEnd(PR_Element const &parent, QString lines)
{
    QString &text = m_text.text;
    XmlText::Parts parts = m_text.partsOf(beginOf(parent));
    if (parts.startTag.end == parts.endTag.end) { // "<x/>"
        text.replace(parts.startTag.end - 2, 2, "></"_L1 + parent.name + u'>');
        parts.endTag.begin = parts.startTag.end - 1;
    }
    bool const isRoot = !parent.parent;
    qsizetype const lineBegin = beginOfBlanks(text, parts.endTag.begin, false);
    bool const isEndOnItsOwnLine = QStringView(text).left(lineBegin).endsWith(m_lineEnd);
    if (isRoot && parent.firstNode && !QStringView(text).left(lineBegin).endsWith(m_lineEnd.repeated(2)))
        lines.prepend(u'\n');
    lines.append(u'\n');
    if (!isEndOnItsOwnLine)
        lines = u'\n' + lines + QString(isRoot ? 0 : 4, u' ');
    text.insert(isEndOnItsOwnLine ? lineBegin : parts.endTag.begin, lines.replace(u'\n', m_lineEnd));
    parse(text.toUtf8());
}

void DefinitionText::set(qsizetype tag, Attribute const &attribute)
{
    QString &text = m_text.text;
    auto [begin, end] = m_text.attributeOf(tag, attribute.name);
    bool const isThere = end > begin;
    if (!isThere) { // then behind all others
        qsizetype const tagEnd = m_text.partsOf(tag).startTag.end;
        begin = end = beginOfBlanks(text, tagEnd - (text[tagEnd - 2] == u'/' ? 2 : 1), true);
    }
    if (!attribute.value)
        begin = beginOfBlanks(text, begin, true);
    QString const written = attribute.value ? attributeText(attribute.name, *attribute.value) : QString();
    text.replace(begin, end - begin, isThere ? written : u' ' + written);
}

void DefinitionText::erase(PR_Element const &element)
{
    QString &text = m_text.text;
    qsizetype begin = beginOf(element);
    qsizetype end = m_text.partsOf(begin).endTag.end;
    qsizetype const lineBegin = beginOfBlanks(text, begin, false);
    qsizetype behind = end;
    while (behind < text.size() && (text[behind] == u' ' || text[behind] == u'\t'))
        ++behind;
    if (QStringView(text).left(lineBegin).endsWith(m_lineEnd) && QStringView(text).mid(behind).startsWith(m_lineEnd)) {
        begin = lineBegin;
        end = behind + m_lineEnd.size();
        if (element.name == u"category") { // and an empty line with it
            if (QStringView(text).mid(end).startsWith(m_lineEnd))
                end += m_lineEnd.size();
            else if (QStringView(text).left(begin).endsWith(m_lineEnd.repeated(2)))
                begin -= m_lineEnd.size();
        }
    }
    text.remove(begin, end - begin);
    parse(text.toUtf8());
}
