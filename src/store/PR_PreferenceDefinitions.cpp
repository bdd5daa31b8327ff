#include "PR_Condition_p.h"
#include "PR_DefinitionTree_p.h"
#include "PR_PreferenceMessages_p.h"
#include "PR_Preference_p.h"

#include "PR_PrefConstants.h"

#include "HostPlatform.h"
#include "OSW_Lang.h"
#include "WHO_Features.h"
#include "WHO_Identity.h"
#include "oswRemapPath.h"
#include "whoami.h"

#include <QPointer>

#include <utility>

namespace {
#if defined(Q_OS_WIN)
QLatin1String const platformWord("windows");
#elif defined(Q_OS_MACOS)
QLatin1String const platformWord("macosx");
#else
QLatin1String const platformWord("linux");
#endif

// An element without the attribute holds everywhere.
bool conditionHolds(QDomElement const &element, QString const &attribute, QLatin1String word)
{
    QString const present = word;
    return PR_Condition(element.attribute(attribute, present)).holds(present);
}

// Reports a file that could not be read under the name by which the user knows it.
void reportUnreadable(PR_XmlFile const &file, QString const &path)
{
    if (file.state == PR_XmlFile::CannotOpen)
        PR_PreferenceMessages::report(PR_PreferenceMessages::CannotOpenForReading, MSG_Scope::Log, path);
    else if (file.state == PR_XmlFile::NotXml)
        PR_PreferenceMessages::report(PR_PreferenceMessages::CannotParse, MSG_Scope::Error, path);
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
    PR_XmlFile mainFile = PR_XmlFile::readDocument(oswRemapPath::RemapPath2(path));
    reportUnreadable(mainFile, path);
    if (mainFile.state != PR_XmlFile::Read)
        return DefaultFileNotFound;

    d->items.reserve(size_t(mainFile.elementCount));
    PR_DefinitionTree definitions(std::move(mainFile));
    definitions.appendLayers(getPrefsSetXMLPath());
    definitions.trim();

    definitions.visit(PR_DefinitionTree::Admitted, [this](PR_Definition const &definition) {
        auto item = definition.createItem();
        if (!item || !isValidInThisConfig(item.get()))
            return;
        if (PR_Definition::mayReplace(d->items.find(item->getKey()).item()))
            d->items.insert(std::move(item));
    });
    d->items.visitInMemoryOrder(PR_Definition::detachTexts);

    if (whoami::appIsPanovia() && OSW_Lang::languageID() == HostPlatform::TermStyleLanguage) {
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
    QLatin1String const word(mode == HostPlatform::PaintMode ? "paint"
            : mode == HostPlatform::ScanMode                 ? "scan"
                                                             : "full");
    return conditionHolds(element, QStringLiteral("mode"), word);
}

bool PR_Preference::isValidInThisConfig(PR_PrefItem const *item)
{
    return !item->getKey().contains(QLatin1String("MORPH")) || WHO_Features::hasMorphing();
}

void PR_Preference::setPrefsFlavour(bool flavour)
{
    QPointer<PR_Preference> const store = this; // a receiver of a change may delete it
    for (char const *key :
        { "DRAWING_SELECT_TOOL_IS_LASSO", "CAMERA_PASTE_FORCE_KEY_FRAME", "TIMELINE_PASTE_FORCE_KEY_FRAME" }) {
        if (store)
            store->setBoolValue(QString::fromLatin1(key), !flavour);
    }
}
