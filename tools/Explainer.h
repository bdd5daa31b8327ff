#ifndef EXPLAINER_H
#define EXPLAINER_H

#include "DefinitionHistory.h"
#include "Explanation.h"
#include "PrefsStore.h"
#include "SourceText.h"

#include "PR_UserFile_p.h"

#include <memory>

/*! Tells where the values of the store come from that the options of a call name: a load step by step. */
class Explainer {
public:
    explicit Explainer(Call const &call);

    /*! A key that no layer knows is thrown as a Failure. */
    Explanation explain(QString const &key);

private:
    void addDefinitions(Explanation &explanation, PR_DefinitionFile::Layer layer);
    Explanation::Step stepOf(DefinitionHistory::Step const &step, DefinitionHistory::Steps const &all);
    void addUserFile(Explanation &explanation);
    Explanation::Step stepOf(PR_UserFile::Element const &element, std::shared_ptr<PR_PrefItem> &held);
    void addTextFile(Explanation &explanation);
    QString reasonOfLock(QString const &key);
    [[noreturn]] void refuse(QString const &key) const;

    bool const m_isLocal;
    PrefsStore const m_store;
    PR_UserFile const m_userFile;
    std::unique_ptr<DefinitionHistory> const m_definitions;
    SourceTextCache m_texts;
};

#endif
