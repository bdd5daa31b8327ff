#ifndef USERFILECHECKER_H
#define USERFILECHECKER_H

#include "FileChecker.h"

#include "PR_UserFile_p.h"

#include <QHash>

#include <memory>

class DefinitionHistory;
class KnownDefinitions;
struct XmlOutline;

/*! Checks a user's file against the definitions of the installation. */
class UserFileChecker final : public FileChecker {
public:
    UserFileChecker(PR_UserFile const &userFile, SourceText const &source, KnownDefinitions &known);

    void check(XmlOutline const &outline);

private:
    void checkSet();
    void checkElement(PR_UserFile::Element const &element);
    /*! The store of the file has no such key. */
    void reportUnknownKey(QString const &key);
    void checkRepetition(QString const &key);
    void checkValue(PR_PrefItem &definition, PR_UserFile::Element const &element);

    PR_UserFile const &m_userFile;
    KnownDefinitions &m_known;
    std::unique_ptr<DefinitionHistory> m_definitions;
    QHash<QString, Place> m_places; // of the last element of each key so far
};

#endif
