#include "Checker.h"

#include "DefinitionChecker.h"
#include "UserFileChecker.h"
#include "XmlOutline.h"

#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

Checker::Checker(bool local)
    : m_known(local)
{
}

Checker::Kind Checker::kindOf(QString const &path, XmlOutline const &outline)
{
    QFileInfo const info(path);
    QString const name = info.fileName();
    if (info.absolutePath().split(u'/').contains("preferenceSets"_L1))
        return Set;
    if (name.contains("override"_L1, Qt::CaseInsensitive))
        return Override;
    static QStringList const mainNames{ u"prefs.xml"_s, u"pv_prefs.xml"_s, u"localPrefs.xml"_s,
        u"pv_localPrefs.xml"_s };
    return mainNames.contains(name) || outline.hasCategories ? MainFile : UserFile;
}

std::vector<Finding> Checker::check(QString const &path)
{
    QByteArray const bytes = PR_XmlFile::read(path).bytes;
    SourceText const source(bytes);
    XmlOutline const outline(bytes);
    std::vector<Finding> findings;
    Kind const kind = kindOf(path, outline);
    if (kind == UserFile) {
        PR_UserFile const userFile(path);
        UserFileChecker checker(userFile, source, m_known);
        checker.check(outline);
        findings = checker.takeFindings();
    } else {
        PR_DefinitionFile::Layer const layers[] = { PR_DefinitionFile::Main, PR_DefinitionFile::Set,
            PR_DefinitionFile::Override };
        DefinitionChecker checker(
            PR_XmlFile::readDocument(path), layers[kind], source, kind == MainFile ? nullptr : &m_known);
        checker.check();
        findings = checker.takeFindings();
    }
    std::stable_sort(findings.begin(), findings.end(), [](Finding const &a, Finding const &b) {
        return std::pair(a.place.line, a.place.column) < std::pair(b.place.line, b.place.column);
    });
    return findings;
}
