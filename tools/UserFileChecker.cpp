#include "UserFileChecker.h"

#include "KnownDefinitions.h"
#include "XmlOutline.h"

#include "PR_BoolItem.h"
#include "PR_FontItem.h"
#include "PR_KeyItem.h"
#include "PR_PrefConstants.h"
#include "PR_RgbaItem.h"

#include "oswRemapPath.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

UserFileChecker::UserFileChecker(PR_UserFile const &userFile, SourceText const &source, KnownDefinitions &known)
    : FileChecker(userFile.file().path, UserFile, source)
    , m_userFile(userFile)
    , m_known(known)
{
}

void UserFileChecker::check(XmlOutline const &outline)
{
    if (m_userFile.file().state != PR_XmlFile::Read)
        return reportUnreadable(m_userFile.file());
    enter(outline.rootLine, outline.rootColumn, {});
    checkRootName(outline.root);
    if (outline.hasText)
        reportText(outline.root);
    m_definitions = m_known.ofStore(m_userFile.preferenceSet());
    checkSet();
    for (PR_UserFile::Element const &element : m_userFile.elements())
        checkElement(element);
}

void UserFileChecker::checkSet()
{
    QString const &name = m_userFile.preferenceSet();
    if (name.isEmpty())
        return;
    QString const path = oswRemapPath::RemapPath2(PR_DefinitionTree::setPath(name));
    PR_XmlFile const set = PR_XmlFile::readDocument(path);
    if (set.state == PR_XmlFile::Read)
        return;
    QString const key = u"PREFERENCE_SET"_s;
    enter(1, 0, key); // unless it is found: it may stand inside of another element
    for (PR_UserFile::Element const &element : m_userFile.elements()) {
        if (element.content.id == key && element.content.tag == "string"_L1) {
            enter(element.line, element.column, key);
            break;
        }
    }
    QStringList names;
    for (QFileInfo const &file : QFileInfo(path).dir().entryInfoList({ u"*.xml"_s }, QDir::Files))
        names.append(file.completeBaseName());
    report(Rule::MissingSet, u"the preference set %1 cannot be read: %2"_s.arg(path, set.error), kValue,
        NearestWord(names).to(name));
}

void UserFileChecker::checkElement(PR_UserFile::Element const &element)
{
    QString const &key = element.content.id;
    enter(element.line, element.column, key);
    checkAttributes(element.content, valueAttributes(element.content.tag) + QStringList{ u"cdata"_s });
    if (!element.dom.isNull())
        checkContent(element.dom, true);
    if (element.content.tag == "color"_L1)
        checkChannels(element.content);
    if (key.isEmpty())
        return report(Rule::MissingId, u"the element has no id"_s);
    checkRepetition(key);
    if (m_definitions->steps(key).empty())
        return reportUnknownKey(key);
    auto const *const definition = m_definitions->winner(key);
    if (!definition)
        return;
    if (definition->item->hasFacilityOverride(false))
        report(Rule::DroppedByLock, u"%1 locks the key"_s.arg(m_known.placeText(definition->definition)), kId);
    checkValue(*definition->item, element);
}

void UserFileChecker::reportUnknownKey(QString const &key)
{
    if (!m_known.find(key))
        return report(Rule::UnknownKey, u"the installation defines no %1"_s.arg(key), kId, m_known.nearestTo(key));
    report(Rule::UnknownKey,
        (m_known.isOfMachine() ? u"%1 is a setting of the application, not of the machine"_s
                               : u"%1 is a setting of the machine, not of the application"_s)
            .arg(key),
        kId);
}

void UserFileChecker::checkRepetition(QString const &key)
{
    auto const earlier = m_places.constFind(key);
    if (earlier != m_places.constEnd())
        report(Rule::DuplicateKey, u"the value of line %1 is not used"_s.arg(earlier->line), kId);
    m_places.insert(key, place());
}

void UserFileChecker::checkValue(PR_PrefItem &definition, PR_UserFile::Element const &element)
{
    QString const text = element.content.value();
    std::unique_ptr<PR_PrefItem> const item(definition.clone());
    item->removeFacilityOverride();
    if (!m_userFile.offer(element, *item))
        return report(Rule::BadValue, u"\"%1\" is no value of the type %2"_s.arg(text, item->getTag()), kValue);
    checkRange(*item);
    if (dynamic_cast<PR_BoolItem const *>(item.get()) && text != "Y"_L1 && text != "N"_L1)
        report(Rule::BadValue, u"\"%1\" is neither Y nor N and counts as N"_s.arg(text), kValue);
    else if (dynamic_cast<PR_KeyItem const *>(item.get()))
        checkShortcut(*item, text);
    else if (auto const *font = dynamic_cast<PR_FontItem const *>(item.get()))
        checkFont(*font, text);
    else if (dynamic_cast<PR_RgbaItem const *>(item.get())) {
        for (QString const &channel : valueAttributes(u"color"_s)) {
            if (!element.content.find(channel))
                report(Rule::MissingValue, u"\"%1\" is missing and counts as 0"_s.arg(channel));
        }
    }
}
