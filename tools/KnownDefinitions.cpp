#include "KnownDefinitions.h"

#include "Verb.h"

#include "oswRemapPath.h"

using namespace Qt::StringLiterals;

namespace {
PR_DefinitionTree treeOf(QString const &path, bool mustExist)
{
    PR_XmlFile file = PR_XmlFile::readDocument(oswRemapPath::RemapPath2(path));
    if (mustExist && file.state != PR_XmlFile::Read)
        throw Failure{ ExitStatus::CannotRead,
            u"The definitions of the installation cannot be read: %1: %2"_s.arg(path, file.error) };
    return PR_DefinitionTree(std::move(file));
}
} // namespace

KnownDefinitions::KnownDefinitions(bool local)
    : m_local(local)
{
}

std::vector<DefinitionHistory const *> KnownDefinitions::mainFiles()
{
    if (!m_application) {
        m_application = std::make_unique<DefinitionHistory>(treeOf(PR_DefinitionTree::mainPath(), !m_local));
        m_machine = std::make_unique<DefinitionHistory>(treeOf(PR_DefinitionTree::localPath(), m_local));
    }
    return { m_application.get(), m_machine.get() };
}

DefinitionHistory const &KnownDefinitions::facility()
{
    if (!m_facility)
        m_facility = std::make_unique<DefinitionHistory>(treeOf(PR_DefinitionTree::overridePath(), false));
    return *m_facility;
}

std::unique_ptr<DefinitionHistory> KnownDefinitions::ofStore(QString const &setName)
{
    PR_DefinitionTree tree = treeOf(m_local ? PR_DefinitionTree::localPath() : PR_DefinitionTree::mainPath(), true);
    tree.appendLayers(setName.isEmpty() ? QString() : PR_DefinitionTree::setPath(setName));
    return std::make_unique<DefinitionHistory>(std::move(tree));
}

DefinitionHistory::Step const *KnownDefinitions::find(QString const &key)
{
    DefinitionHistory::Step const *found = nullptr;
    for (DefinitionHistory const *history : mainFiles()) {
        if (auto const *winner = history->winner(key))
            return winner;
        if (!history->steps(key).empty())
            found = &history->steps(key).back();
    }
    return found;
}

QString KnownDefinitions::nearestTo(QString const &key)
{
    if (!m_keys) {
        QStringList keys;
        for (DefinitionHistory const *history : mainFiles())
            keys += history->keys();
        keys.sort();
        m_keys.emplace(keys);
    }
    return m_keys->to(key);
}
