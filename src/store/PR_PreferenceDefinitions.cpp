#include "PR_DefinitionTree_p.h"
#include "PR_PreferenceMessages_p.h"
#include "PR_Preference_p.h"

#include "PR_PrefConstants.h"
#include "PR_PrefItemFactoryManager.h"

#include "OSW_Lang.h"
#include "WHO_Features.h"
#include "WHO_Identity.h"
#include "oswRemapPath.h"
#include "whoami.h"

namespace {
#if defined(Q_OS_WIN)
QLatin1String const platformWord("windows");
#elif defined(Q_OS_MACOS)
QLatin1String const platformWord("macosx");
#else
QLatin1String const platformWord("linux");
#endif

// Whether a condition, a word or "not " and a word, holds where only the given word is true.
bool conditionHolds(QString const &condition, QLatin1String word)
{
    QLatin1String const negation("not ");
    if (condition.startsWith(negation))
        return QStringView(condition).mid(negation.size()) != word;
    return condition == word;
}

bool conditionHolds(QDomElement const &element, QString const &attribute, QLatin1String word)
{
    // An element without the attribute is as good as one with the word that holds.
    return conditionHolds(element.attribute(attribute, word), word);
}

// Reports a file that could not be read under the name by which the user knows it.
void reportUnreadable(PR_XmlFile const &file, QString const &path)
{
    if (file.state == PR_XmlFile::CannotOpen)
        PR_PreferenceMessages::report(PR_PreferenceMessages::CannotOpenForReading, MSG_Scope::Log, path);
    else if (file.state == PR_XmlFile::NotXml)
        PR_PreferenceMessages::report(PR_PreferenceMessages::CannotParse, MSG_Scope::Error, path);
}

// The text beside its item, not among those of the document, which would pin the memory around them.
QString ownText(QString const &text)
{
    return QString(text.constData(), text.size());
}

std::unique_ptr<PR_PrefItem> createItem(PR_PrefItem::Category category, QDomElement const &definition)
{
    QString const key = ownText(definition.attribute(kId));
    QString const type = definition.tagName();
    if (type == QLatin1String("shortcut"))
        return std::make_unique<PR_KeyItem>(category, key, definition.attribute(kValue));
    auto const factory = PR_PrefItemFactoryManager::getInstance()->factory(type);
    return std::unique_ptr<PR_PrefItem>(factory ? factory->create(category, key, definition) : nullptr);
}
} // namespace

QString PR_Preference::getPrefsXMLPath()
{
    return PR_DefinitionTree::mainPath();
}

QString PR_Preference::getLocalPrefsXMLPath()
{
    return PR_DefinitionTree::localPath();
}

QString PR_Preference::getPrefsOverrideXMLPath()
{
    return PR_DefinitionTree::overridePath();
}

QString PR_Preference::getPrefsSetXMLPath()
{
    QString const path = getPathXml();
    if (path.isEmpty())
        return {};
    PR_UserFile const userFile(path);
    reportUnreadable(userFile.file(), path);
    d->userFile = userFile;
    QString const &name = userFile.preferenceSet();
    return name.isEmpty() ? QString() : PR_DefinitionTree::setPath(name);
}

PR_Preference::Error PR_Preference::initPreferences()
{
    clear();
    QString const path = d->isLocal ? getLocalPrefsXMLPath() : getPrefsXMLPath();
    if (path.isEmpty())
        return DefaultFileNotFound;
    PR_XmlFile const mainFile = PR_XmlFile::readDocument(oswRemapPath::RemapPath2(path));
    reportUnreadable(mainFile, path);
    if (mainFile.state != PR_XmlFile::Read)
        return DefaultFileNotFound;

    PR_DefinitionTree definitions(mainFile);
    d->items.reserve(size_t(mainFile.elementCount));
    QString const setPath = getPrefsSetXMLPath();
    if (!setPath.isEmpty())
        definitions.append(setPath);
    definitions.append(getPrefsOverrideXMLPath());
    definitions.trim();

    definitions.visit([this](QDomElement const &category, QDomElement const &definition) {
        auto item = createItem(PR_PrefItem::getCategory(category.attribute(kId)), definition);
        if (!item || !isValidInThisConfig(item.get()))
            return;
        item->setShortDescription(ownText(definition.attribute(QStringLiteral("shortDesc"))));
        item->setLongDescription(ownText(definition.attribute(QStringLiteral("longDesc"))));
        if (definition.attribute(QStringLiteral("facilityOverride")).toLower() == QLatin1String("true"))
            item->setFacilityOverride();
        // A later definition wins, but a lock stays.
        auto const held = d->items.find(item->getKey());
        if (!held || !held->hasFacilityOverride(false))
            d->items.insert(std::move(item));
    });

    int const termStyleLanguage = 4;
    if (whoami::appIsPanovia() && OSW_Lang::languageID() == termStyleLanguage) {
        QString const key = QStringLiteral("ST_TERM_STYLE");
        setBoolValue(key, true);
        if (PR_PrefItem *item = find(key))
            item->setFacilityOverride();
    }
    return NoError;
}

bool PR_Preference::isValidOnThisPlatform(QDomElement const &element)
{
    return conditionHolds(element, QStringLiteral("platform"), platformWord);
}

bool PR_Preference::isValidInThisMode(QDomElement const &element)
{
    int const mode = WHO_Identity::mode();
    QLatin1String const word(mode == 2 ? "paint" : mode == 3 ? "scan" : "full");
    return conditionHolds(element, QStringLiteral("mode"), word);
}

bool PR_Preference::isValidInThisConfig(PR_PrefItem const *item)
{
    return !item->getKey().contains(QLatin1String("MORPH")) || WHO_Features::hasMorphing();
}

void PR_Preference::setPrefsFlavour(bool flavour)
{
    for (char const *key :
        { "DRAWING_SELECT_TOOL_IS_LASSO", "CAMERA_PASTE_FORCE_KEY_FRAME", "TIMELINE_PASTE_FORCE_KEY_FRAME" })
        setBoolValue(QString::fromLatin1(key), !flavour);
}
