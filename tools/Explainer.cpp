#include "Explainer.h"

#include "ConditionSet.h"
#include "KnownDefinitions.h"
#include "ReportScope.h"
#include "UndefinedStore.h"
#include "ValueText.h"
#include "Verb.h"

#include "PR_PrefConstants.h"
#include "PR_StringItem.h"
#include "PR_UnknownKeyItem_p.h"

#include "PL_FileUtil.h"
#include "oswRemapPath.h"

#include <QCommandLineParser>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
// The user's file or, where it is damaged, its backup.
PR_UserFile readableFile(QString const &path)
{
    PR_UserFile file(path);
    if (file.file().state == PR_XmlFile::NotXml) {
        PL_FileSpec const spec{ UT_String(path) };
        PR_UserFile backup(PL_FileUtil::BackupFileSpec(spec).GetFilePath().ToQString());
        if (backup.file().state == PR_XmlFile::Read)
            return backup;
    }
    return file;
}

QString layerName(PR_DefinitionFile::Layer layer)
{
    return layer == PR_DefinitionFile::Main ? u"definitions"_s
        : layer == PR_DefinitionFile::Set   ? u"preference set"_s
                                            : u"override"_s;
}

// Why nothing of a key comes from a file.
QString reasonOfAbsence(PR_XmlFile const &file)
{
    if (file.state == PR_XmlFile::Read)
        return u"the key is not in it"_s;
    QString const place = file.errorLine > 0 ? u" (line %1)"_s.arg(file.errorLine) : QString();
    return (file.state == PR_XmlFile::CannotOpen ? u"cannot be opened: "_s : u"cannot be parsed: "_s) + file.error
        + place;
}

QString conditionsOf(PR_Definition const &definition)
{
    QStringList texts;
    auto const add = [&texts](QDomElement const &element, QString const &attribute, char const *ofWhat) {
        if (element.hasAttribute(attribute))
            texts.append(u"%1%2=\"%3\""_s.arg(QLatin1String(ofWhat), attribute, element.attribute(attribute)));
    };
    add(definition.file->xml.document.documentElement(), u"feature"_s, "root ");
    for (QString const &attribute : ConditionSet::attributes()) {
        add(definition.category, attribute, "category ");
        add(definition.element, attribute, "");
    }
    return texts.join(u' ');
}

std::shared_ptr<PR_PrefItem> undefinedItem(PR_UserFile const &userFile, PR_UserFile::Element const &element)
{
    std::shared_ptr<PR_PrefItem> item = PR_UnknownKeyItem::create(element.content.tag, element.content.id);
    if (!item || !userFile.offer(element, *item)) {
        item = std::make_shared<PR_StringItem>(PR_PrefItem::Internal, element.content.id, element.content.value());
    }
    return item;
}

} // namespace

Explainer::Explainer(Call const &call)
    : m_isLocal(call.options.isSet(u"local"_s))
    , m_store(call)
    , m_userFile(readableFile(oswRemapPath::RemapPath2(m_store.getPathXml())))
    // A load looks for the preference set in the user's file alone.
    , m_definitions(KnownDefinitions(m_isLocal).ofStore(PR_UserFile(m_store.getPathXml()).preferenceSet()))
{
}

Explanation Explainer::explain(QString const &key)
{
    Explanation explanation(key, m_store.find(key));
    for (auto const layer : { PR_DefinitionFile::Main, PR_DefinitionFile::Set, PR_DefinitionFile::Override })
        addDefinitions(explanation, layer);
    addUserFile(explanation);
    if (m_userFile.file().state != PR_XmlFile::Read)
        addTextFile(explanation);
    auto const isAbsent = [](Explanation::Step const &step) { return step.outcome == Explanation::Absent; };
    if (std::all_of(explanation.steps.begin(), explanation.steps.end(), isAbsent))
        refuse(key);
    return explanation;
}

void Explainer::addDefinitions(Explanation &explanation, PR_DefinitionFile::Layer layer)
{
    DefinitionHistory::Steps const &all = m_definitions->steps(explanation.key);
    bool isAbsent = true;
    for (DefinitionHistory::Step const &step : all) {
        if (step.definition.file->layer == layer) {
            explanation.add(stepOf(step, all));
            isAbsent = false;
        }
    }
    if (!isAbsent)
        return;
    Explanation::Step absent{ layerName(layer), Explanation::Absent, {}, {}, {}, false, {}, u"no set is chosen"_s };
    for (PR_DefinitionFile const &file : m_definitions->files()) {
        if (file.layer == layer) {
            absent.file = file.xml.path;
            absent.reason = reasonOfAbsence(file.xml);
        }
    }
    explanation.add(absent);
}

Explanation::Step Explainer::stepOf(DefinitionHistory::Step const &step, DefinitionHistory::Steps const &all)
{
    PR_Definition const &definition = step.definition;
    auto const other = [&] { return m_texts.placeText(all[size_t(step.by)].definition); };
    QString reason;
    switch (step.outcome) {
    case DefinitionHistory::Won:
        break;
    case DefinitionHistory::Replaced:
        reason = u"replaced by "_s + other();
        break;
    case DefinitionHistory::Locked:
        reason = u"the key is locked by "_s + other();
        break;
    case DefinitionHistory::WrongPlatform:
        reason = u"the condition on the platform does not hold"_s;
        break;
    case DefinitionHistory::WrongMode:
        reason = u"the condition on the mode does not hold"_s;
        break;
    case DefinitionHistory::WrongFeature:
        reason = u"the condition on the feature does not hold"_s;
        break;
    case DefinitionHistory::NoMorphing:
        reason = u"the product has no morphing"_s;
        break;
    case DefinitionHistory::NoSuchType:
        reason = u"there is no type \"%1\""_s.arg(definition.element.tagName());
        break;
    }
    auto const outcome = step.outcome == DefinitionHistory::Won ? Explanation::Won
        : step.outcome == DefinitionHistory::Replaced           ? Explanation::Lost
                                                                : Explanation::LeftOut;
    return { layerName(definition.file->layer), outcome, definition.file->xml.path, m_texts.placeOf(definition),
        step.item ? step.item->defaultValueAsString() : definition.element.attribute(kValue),
        step.item && step.item->hasFacilityOverride(false), conditionsOf(definition), reason };
}

QString Explainer::reasonOfLock(QString const &key)
{
    auto const *const winner = m_definitions->winner(key);
    bool const isLocked = winner && winner->item->hasFacilityOverride(false);
    return isLocked ? u"the key is locked by "_s + m_texts.placeText(winner->definition) : QString();
}

void Explainer::addUserFile(Explanation &explanation)
{
    auto const *const winner = m_definitions->winner(explanation.key);
    std::shared_ptr<PR_PrefItem> held(winner ? winner->item->clone() : nullptr);
    bool isAbsent = true;
    for (PR_UserFile::Element const &element : m_userFile.elements()) {
        if (element.content.id == explanation.key) {
            explanation.add(stepOf(element, held));
            isAbsent = false;
        }
    }
    if (isAbsent)
        explanation.add({ u"user file"_s, Explanation::Absent, m_userFile.file().path, {}, {}, false, {},
            reasonOfAbsence(m_userFile.file()) });
}

// What an element does to the item that the key has so far, which may be null.
Explanation::Step Explainer::stepOf(PR_UserFile::Element const &element, std::shared_ptr<PR_PrefItem> &held)
{
    QString const &path = m_userFile.file().path;
    SourceText const &text = m_texts.of(path);
    Explanation::Step step{ u"user file"_s, Explanation::Won, path,
        text.placeOf(text.tagEndingAt(element.line, element.column)), element.content.value() };
    if (!held) {
        held = undefinedItem(m_userFile, element);
        step.value = held->valueAsString();
        step.reason = u"no definition has the key"_s;
        return step;
    }
    bool const isLocked = held->hasFacilityOverride(false);
    std::shared_ptr<PR_PrefItem> const changed(held->clone());
    changed->removeFacilityOverride();
    bool const isRead = m_userFile.offer(element, *changed);
    if (isRead)
        step.value = changed->valueAsString();
    if (isRead && !isLocked) {
        held = changed;
        return step;
    }
    step.outcome = Explanation::LeftOut;
    step.reason = isLocked ? reasonOfLock(element.content.id) : u"no value of the type "_s + held->getTag();
    return step;
}

// A lexer knows no lines. What its store did with a text shows in the item.
void Explainer::addTextFile(Explanation &explanation)
{
    QString const path = m_store.getPath();
    Explanation::Step step{ u"text file"_s, Explanation::Absent, path };
    UndefinedStore const texts = [&] {
        ReportScope const silence; // all was said by the load before
        return UndefinedStore(path, m_isLocal);
    }();
    PR_PrefItem const *const text = texts.find(explanation.key);
    if (!text) {
        step.reason = QFileInfo::exists(path) ? u"the key is not in it"_s : u"there is no such file"_s;
        return explanation.add(step);
    }
    bool const isUsed = explanation.item && explanation.item->getOrigin() == PR_PrefItem::OriginUser;
    step.outcome = isUsed ? Explanation::Won : Explanation::LeftOut;
    step.value = isUsed ? explanation.item->valueAsString() : text->valueAsString();
    step.reason = reasonOfLock(explanation.key);
    if (!isUsed && step.reason.isEmpty())
        step.reason = u"no value of the type"_s;
    explanation.add(step);
}

void Explainer::refuse(QString const &key) const
{
    QStringList keys = m_definitions->keys();
    for (PR_PrefItem const *item : m_store)
        keys.append(item->getKey());
    keys.sort();
    QString const nearest = NearestWord(keys).to(key);
    throw Failure{ ExitStatus::NoSuchKey,
        u"There is no preference %1."_s.arg(ValueText::escaped(key))
            + (nearest.isEmpty() ? QString() : u" Did you mean %1?"_s.arg(ValueText::escaped(nearest))) };
}
