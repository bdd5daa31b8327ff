#include "PR_DefinitionTree_p.h"

#include "PR_Preference.h"

#include "AC_XML.h"
#include "WHO_Features.h"
#include "oswRemapPath.h"
#include "oswUtil.h"

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

PR_DefinitionTree::PR_DefinitionTree(PR_XmlFile const &mainFile)
    : m_document(mainFile.document)
{
}

void PR_DefinitionTree::append(QString const &path)
{
    PR_XmlFile const file = PR_XmlFile::readDocument(oswRemapPath::RemapPath2(path));
    QDomElement root = m_document.documentElement();
    QDomNode const otherRoot = file.document.documentElement();
    for (QDomNode node = otherRoot.firstChild(); !node.isNull(); node = node.nextSibling())
        root.appendChild(m_document.importNode(node, true));
}

void PR_DefinitionTree::trim()
{
    QDomElement root = m_document.documentElement();
    AC_XML::trimConditions(root, WHO_Features::keywords(false), false);
}

void PR_DefinitionTree::visit(Visitor const &visitor) const
{
    QString const categoryName = QStringLiteral("category");
    QDomElement const root = m_document.documentElement();
    for (QDomElement category = root.firstChildElement(categoryName); !category.isNull();
         category = category.nextSiblingElement(categoryName)) {
        if (!isAdmitted(category))
            continue;
        for (QDomElement item = category.firstChildElement(); !item.isNull(); item = item.nextSiblingElement()) {
            if (isAdmitted(item))
                visitor(category, item);
        }
    }
}
