#ifndef KNOWNDEFINITIONS_H
#define KNOWNDEFINITIONS_H

#include "DefinitionHistory.h"
#include "NearestWord.h"
#include "SourceText.h"

/*! The definitions of the installation, read when they are first asked for. One that has none is thrown as a
    Failure. */
class KnownDefinitions {
public:
    /*! Those of the machine's settings when \a local. */
    explicit KnownDefinitions(bool local);

    /*! Whether user's files are checked as those of the machine's settings, not of the application's. */
    bool isOfMachine() const { return m_local; }

    /*! The main files of both stores: sets and overrides are laid over both. */
    std::vector<DefinitionHistory const *> mainFiles();
    /*! The override by itself. */
    DefinitionHistory const &facility();
    /*! What the store has with a preference set, whose name may be empty. */
    std::unique_ptr<DefinitionHistory> ofStore(QString const &setName);

    /*! What defines a key in the main files: what gives the default, if anything does; null for an unknown key. */
    DefinitionHistory::Step const *find(QString const &key);
    /*! The key in the main files that is nearest to an unknown one. */
    QString nearestTo(QString const &key);

    /*! A place as "FILE:LINE". */
    QString placeText(PR_Definition const &definition) { return m_texts.placeText(definition); }

private:
    bool const m_local;
    std::unique_ptr<DefinitionHistory> m_application;
    std::unique_ptr<DefinitionHistory> m_machine;
    std::unique_ptr<DefinitionHistory> m_facility;
    std::optional<NearestWord> m_keys;
    SourceTextCache m_texts;
};

#endif
