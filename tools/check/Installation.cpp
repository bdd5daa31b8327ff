#include "Installation.h"

#include "Command.h"

#include "PR_DefinitionList.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace {
void expectRead(PR_XmlFile const &file)
{
    if (file.state != PR_XmlFile::Read)
        throw Failure{ ExitStatus::CannotRead,
            u"The definitions of the installation cannot be read: %1: %2"_s.arg(file.path, file.error) };
}
} // namespace

std::unique_ptr<PR_PrefItem> itemOf(PR_Element const &definition)
{
    int const type = PR_ItemTypes::find(definition.name);
    if (type == PR_ItemTypes::Count)
        return nullptr;
    auto const category = PR_PrefItem::getCategory(definition.parent->id().toString());
    return std::unique_ptr<PR_PrefItem>(
        PR_ItemTypes::row(type).create(category, definition.id().toString(), definition));
}

Definitions::Definitions()
    : m_loader(m_items, this)
{
}

std::vector<PR_Element const *> const &Definitions::of(QString const &key) const
{
    static std::vector<PR_Element const *> const none;
    auto const found = m_byKey.constFind(key);
    return found == m_byKey.constEnd() ? none : *found;
}

PR_Element const *Definitions::find(QString const &key) const
{
    auto const winner = m_winners.constFind(key);
    if (winner != m_winners.constEnd())
        return *winner;
    return of(key).empty() ? nullptr : of(key).back();
}

QString Definitions::placeOf(PR_Element const &definition) const
{
    return u"%1:%2"_s.arg(m_paths[definition.source], QString::number(definition.line));
}

void Definitions::file(Layer layer, PR_XmlFile const &file)
{
    m_paths[layer] = file.path;
}

void Definitions::definition(Definition const &definition, Outcome outcome, Definition const *)
{
    QString const key = definition.element->id().toString();
    m_byKey[key].push_back(definition.element);
    if (outcome == Won)
        m_winners.insert(key, definition.element);
}

Installation::Installation(bool local, QString candidate)
    : m_isLocal(local)
    , m_candidate(candidate.isEmpty() ? PR_Loader::overridePath() : std::move(candidate))
{
}

std::unique_ptr<Definitions> Installation::read(PR_LoadObserver::Layer layer, QString const &path, bool mustExist)
{
    auto definitions = std::make_unique<Definitions>();
    PR_XmlFile const &file = definitions->loader().read(layer, path);
    if (mustExist)
        expectRead(file);
    definitions->loader().define();
    return definitions;
}

std::vector<Definitions const *> Installation::mainFiles()
{
    if (!m_application) {
        m_application = read(PR_LoadObserver::MainFile, PR_Loader::mainPath(), !m_isLocal);
        m_machine = read(PR_LoadObserver::MainFile, PR_Loader::localPath(), m_isLocal);
    }
    return { m_application.get(), m_machine.get() };
}

Definitions const &Installation::facility()
{
    if (!m_facility)
        m_facility = read(PR_LoadObserver::Override, m_candidate, false);
    return *m_facility;
}

Definitions const &Installation::ofStore(QString const &setName)
{
    auto found = m_stores.find(setName);
    if (found != m_stores.end())
        return *found->second;
    if (m_stores.size() > 16) // more sets than anybody has: names of nothing
        m_stores.clear();
    auto store = std::make_unique<Definitions>();
    expectRead(store->loader().readStore(m_isLocal, setName, m_candidate));
    store->loader().define();
    return *m_stores.emplace(setName, std::move(store)).first->second;
}

std::pair<Definitions const *, PR_Element const *> Installation::find(QString const &key)
{
    std::pair<Definitions const *, PR_Element const *> found;
    for (Definitions const *definitions : mainFiles()) {
        if (PR_Element const *const element = definitions->find(key)) {
            if (definitions->item(key))
                return { definitions, element };
            found = { definitions, element };
        }
    }
    return found;
}

QString Installation::nearestTo(QString const &key)
{
    if (!m_keys) {
        QStringList keys;
        for (Definitions const *definitions : mainFiles())
            keys += definitions->keys();
        keys.sort();
        m_keys.emplace(keys);
    }
    return m_keys->to(key);
}

QStringList Installation::files(QString const &candidate)
{
    QStringList files{ PR_Loader::mainPath(), PR_Loader::localPath(),
        candidate.isEmpty() ? PR_Loader::overridePath() : candidate };
    for (QString const &set : PR_DefinitionList::preferenceSets())
        files.append(PR_Loader::setPath(set));
    files.erase(
        std::remove_if(files.begin() + 1, files.end(), [](QString const &file) { return !QFile::exists(file); }),
        files.end()); // without the first one there is no installation
    return files;
}
