#include "PR_DefinitionTree_p.h"

#include "PR_Preference.h"

#include "AC_XML.h"
#include "WHO_Features.h"
#include "oswRemapPath.h"
#include "oswUtil.h"

#include <utility>

namespace {
bool hasPanoviaFlavour()
{
    return WHO_Features::hasPanoviaPreferenceUI()
        || oswUtil::ZeltDir(false).contains(QLatin1String("panovia"), Qt::CaseInsensitive);
}

QString resourcePath(char const *mainFlavour, char const *panoviaFlavour)
{
    return oswUtil::ZeltDir(false) + QLatin1String(hasPanoviaFlavour() ? panoviaFlavour : mainFlavour);
}

bool isAdmitted(QDomElement const &element)
{
    return PR_Preference::isValidOnThisPlatform(element) && PR_Preference::isValidInThisMode(element);
}
} // namespace

QString PR_DefinitionTree::mainPath()
{
    return resourcePath("/resources/prefs.xml", "/resources/pv_prefs.xml");
}

QString PR_DefinitionTree::localPath()
{
    return resourcePath("/resources/localPrefs.xml", "/resources/pv_localPrefs.xml");
}

QString PR_DefinitionTree::overridePath()
{
    return resourcePath("/resources/prefs_override.xml", "/resources/pv_prefs_override.xml");
}

QString PR_DefinitionTree::setPath(QString const &name)
{
    return resourcePath("/resources/preferenceSets/norvelle/", "/resources/preferenceSets/panovia/") + name
        + QLatin1String(".xml");
}

PR_DefinitionTree::PR_DefinitionTree(PR_XmlFile mainFile)
{
    m_files.push_back({ PR_DefinitionFile::Main, std::move(mainFile) });
}

void PR_DefinitionTree::append(PR_DefinitionFile::Layer layer, QString const &path)
{
    m_files.push_back({ layer, PR_XmlFile::readDocument(oswRemapPath::RemapPath2(path)) });
}

void PR_DefinitionTree::appendLayers(QString const &setPath)
{
    if (!setPath.isEmpty())
        append(PR_DefinitionFile::Set, setPath);
    append(PR_DefinitionFile::Override, overridePath());
}

void PR_DefinitionTree::trim()
{
    QStringList const keywords = WHO_Features::keywords(false);
    // The tree has one root, that of the main file: its condition is that of all files, and no other root's counts.
    QString const feature = QStringLiteral("feature");
    QDomElement const mainRoot = m_files.front().xml.document.documentElement();
    for (PR_DefinitionFile &file : m_files) {
        QDomElement root = file.xml.document.documentElement();
        if (mainRoot.hasAttribute(feature))
            root.setAttribute(feature, mainRoot.attribute(feature));
        else
            root.removeAttribute(feature);
        AC_XML::trimConditions(root, keywords, false);
    }
}

void PR_DefinitionTree::visit(Extent extent, Visitor const &visitor) const
{
    QString const categoryName = QStringLiteral("category");
    auto const isVisited = [extent](QDomElement const &element) { return extent == Everything || isAdmitted(element); };
    for (PR_DefinitionFile const &file : m_files) {
        PR_Definition definition{ &file, file.xml.document.documentElement().firstChildElement(categoryName), {} };
        QDomElement &category = definition.category;
        for (; !category.isNull(); category = category.nextSiblingElement(categoryName)) {
            if (!isVisited(category))
                continue;
            QDomElement &element = definition.element;
            for (element = category.firstChildElement(); !element.isNull(); element = element.nextSiblingElement()) {
                if (isVisited(element))
                    visitor(definition);
            }
        }
    }
}
