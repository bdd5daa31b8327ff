#include "PR_Loader_p.h"
#include "PR_Conditions_p.h"

#include "PR_ElementDom_p.h"
#include "PR_PrefItemFactoryManager.h"

#include "AC_XML.h"
#include "HostPlatform.h"
#include "PL_FileSlot_p.h"
#include "TULex.h"
#include "WHO_Features.h"
#include "oswRemapPath.h"
#include "oswUtil.h"
#include "tufile.h"

#include <QLoggingCategory>

#include <typeinfo>
#include <utility>

namespace {
// Reports go to the host, what is beside them to the log of who asks for it.
Q_LOGGING_CATEGORY(lcPreference, "brivant.preference", QtWarningMsg)

bool hasPanoviaFlavour()
{
    return WHO_Features::hasPanoviaPreferenceUI()
        || oswUtil::ZeltDir(false).contains(QLatin1String("panovia"), Qt::CaseInsensitive);
}

QString resourcePath(char const *mainFlavour, char const *panoviaFlavour)
{
    return oswUtil::ZeltDir(false) + QLatin1String(hasPanoviaFlavour() ? panoviaFlavour : mainFlavour);
}

// The element behind another one in document order, within a tree.
PR_Element *following(PR_Element *element)
{
    if (PR_Element *const child = element->firstElement())
        return child;
    for (; element; element = element->parent) {
        if (PR_Element *const next = element->nextElement())
            return next;
    }
    return nullptr;
}

QDomElement following(QDomElement element)
{
    if (QDomElement const child = element.firstChildElement(); !child.isNull())
        return child;
    for (; !element.isNull(); element = element.parentNode().toElement()) {
        if (QDomElement const next = element.nextSiblingElement(); !next.isNull())
            return next;
    }
    return {};
}
} // namespace

// ---- Observers

PR_LoadObserver::~PR_LoadObserver() = default;

void PR_LoadObserver::file(Layer, PR_XmlFile const &)
{
}

void PR_LoadObserver::definition(Definition const &, Outcome, Definition const *)
{
}

void PR_LoadObserver::userValue(UserValue const &)
{
}

// ---- Files

QString PR_Loader::mainPath()
{
    return resourcePath("/resources/prefs.xml", "/resources/pv_prefs.xml");
}

QString PR_Loader::localPath()
{
    return resourcePath("/resources/localPrefs.xml", "/resources/pv_localPrefs.xml");
}

QString PR_Loader::overridePath()
{
    return resourcePath("/resources/prefs_override.xml", "/resources/pv_prefs_override.xml");
}

QString PR_Loader::setPath(QString const &name)
{
    return resourcePath("/resources/preferenceSets/norvelle/", "/resources/preferenceSets/panovia/") + name
        + QLatin1String(".xml");
}

QString PR_Loader::preferenceSetOf(PR_XmlFile const &userFile)
{
    for (PR_Element *element = userFile.tree.root(); element; element = following(element)) {
        if (element->name == u"string" && element->id() == u"PREFERENCE_SET")
            return element->attribute(u"value").toString();
    }
    return {};
}

QString PR_Loader::keptFileOf(QString const &userFile)
{
    QString const kept = PL_FileSlot::keptOf(PL_FileSlot::targetOf(userFile));
    if (!tufile::fileExists(kept))
        return {};
    qCInfo(lcPreference, "%s holds values that an earlier run could not read.", qUtf8Printable(kept));
    return kept;
}

bool PR_Loader::isLocked(PR_Element const &definition)
{
    return definition.attribute(u"facilityOverride").compare(u"true", Qt::CaseInsensitive) == 0;
}

PR_Loader::PR_Loader(PR_ItemSet &items, PR_LoadObserver *observer)
    : m_items(items)
    , m_observer(observer)
{
}

PR_XmlFile PR_Loader::readFile(QString const &path, qsizetype maximumElements)
{
    PR_XmlFile file = PR_XmlFile::read(path, maximumElements);
    if (file.state == PR_XmlFile::NotXml)
        qCInfo(lcPreference, "%s:%d:%d: %s", qUtf8Printable(path), file.errorLine, file.errorColumn,
            qUtf8Printable(file.error));
    return file;
}

PR_XmlFile const &PR_Loader::read(Layer layer, QString const &path)
{
    return read(layer, readFile(oswRemapPath::RemapPath2(path), MaximumDefinitions));
}

PR_XmlFile const &PR_Loader::read(Layer layer, PR_XmlFile file)
{
    m_files.push_back(std::move(file));
    PR_XmlFile const &added = m_files.back();
    if (m_observer)
        m_observer->file(layer, added);
    PR_Element *const root = added.tree.root();
    if (!root)
        return added;
    for (PR_Element *element = root; element; element = following(element))
        element->source = layer;
    if (!m_root) {
        m_root = root;
    } else if (root->firstNode) {
        for (PR_Node *node = root->firstNode; node; node = node->next)
            node->parent = m_root;
        (m_root->lastNode ? m_root->lastNode->next : m_root->firstNode) = root->firstNode;
        m_root->lastNode = root->lastNode;
    }
    m_items.reserve(m_items.count() + size_t(added.elementCount));
    return added;
}

PR_XmlFile const &PR_Loader::readStore(bool isLocal, QString const &set, QString const &overrideFile)
{
    PR_XmlFile const &mainFile = read(PR_LoadObserver::MainFile, isLocal ? localPath() : mainPath());
    if (!set.isEmpty())
        read(PR_LoadObserver::PreferenceSet, setPath(set));
    read(PR_LoadObserver::Override, overrideFile);
    return mainFile;
}

// ---- Definitions

void PR_Loader::trim()
{
    if (auto const &trimConditions = HostPlatform::current().trimConditions)
        trimByHost(trimConditions);
    else
        AC_XML::trimConditions(*m_root, WHO_Features::keywords(false), false);
}

// The host's own rules know documents alone. What they leave takes the place of the tree; its elements are found again
// by their order, to keep their places.
void PR_Loader::trimByHost(std::function<bool(QDomElement &, QStringList const &, bool)> const &trimConditions)
{
    QDomDocument document = PR_ElementDom::newDocument();
    QDomElement root = PR_ElementDom::append(document, document, *m_root);
    std::vector<std::pair<QDomElement, PR_Element *>> before;
    QDomElement dom = root;
    for (PR_Element *element = m_root; element; element = following(element), dom = following(dom))
        before.emplace_back(dom, element);

    trimConditions(root, WHO_Features::keywords(false), false);

    m_trees.push_back(PR_ElementDom::treeOf(root));
    size_t next = 0;
    dom = root;
    for (PR_Element *element = m_trees.back().root(); element; element = following(element), dom = following(dom)) {
        size_t found = next;
        while (found < before.size() && before[found].first != dom)
            ++found;
        if (found == before.size())
            continue; // the host has added it
        element->line = before[found].second->line;
        element->column = before[found].second->column;
        element->source = before[found].second->source;
        for (; next < found; ++next)
            before[next].second->isExcluded = true;
        ++next;
    }
    for (; next < before.size(); ++next)
        before[next].second->isExcluded = true;
    if (m_observer) {
        for (auto const &[gone, element] : before) {
            bool const isDefinition = element->parent && element->parent->parent == m_root;
            if (element->isExcluded && isDefinition && element->parent->name == u"category")
                define(*element, PR_PrefItem::Internal, PR_LoadObserver::WrongFeature);
        }
    }
    m_root = m_trees.back().root();
}

void PR_Loader::define()
{
    if (!m_root)
        return;
    trim();
    PR_ItemTypes::any([this](auto const &row, int number) {
        using Factory = PR_ConcretePrefItemFactory<typename std::decay_t<decltype(row)>::Item>;
        auto const factory = row.hasFactory
            ? PR_PrefItemFactoryManager::getInstance()->factory(QString::fromLatin1(row.tag))
            : UT_SharedPtr<PR_AbstractPrefItemFactory>();
        m_isFactoryOwn[number] = row.tag && (!row.hasFactory || (factory && typeid(*factory) == typeid(Factory)));
        return false;
    });
    auto const conditionOf = [](PR_Element const &element) {
        return element.isExcluded                                            ? PR_LoadObserver::WrongFeature
            : !PR_Conditions::admitsPlatform(element.attribute(u"platform")) ? PR_LoadObserver::WrongPlatform
            : !PR_Conditions::admitsMode(element.attribute(u"mode"))         ? PR_LoadObserver::WrongMode
                                                                             : PR_LoadObserver::Won;
    };
    for (PR_Element const &category : PR_Elements(m_root, u"category")) {
        auto const outer = conditionOf(category);
        if (outer != PR_LoadObserver::Won && !m_observer)
            continue;
        auto const number = PR_PrefItem::getCategory(category.id().toString());
        for (PR_Element const &element : PR_Elements(category))
            define(element, number, outer == PR_LoadObserver::Won ? conditionOf(element) : outer);
    }
}

void PR_Loader::define(PR_Element const &element, PR_PrefItem::Category category, PR_LoadObserver::Outcome condition)
{
    PR_LoadObserver::Definition definition{ Layer(element.source), &element, nullptr };
    if (condition != PR_LoadObserver::Won)
        return tell(definition, condition);
    std::unique_ptr<PR_PrefItem> item = createItem(element, category);
    if (!item)
        return tell(definition, PR_LoadObserver::NoSuchType);
    definition.item = item.get();
    if (!PR_Conditions::admitsKey(item->getKey()))
        return tell(definition, PR_LoadObserver::NoMorphing);
    item->setShortDescription(element.attribute(u"shortDesc").toString());
    item->setLongDescription(element.attribute(u"longDesc").toString());
    if (isLocked(element))
        item->setFacilityOverride();
    auto const held = m_items.find(item->getKey());
    if (held && held->hasFacilityOverride(false))
        return tell(definition, PR_LoadObserver::Locked);
    tell(definition, PR_LoadObserver::Won);
    m_items.insert(std::move(item));
}

std::unique_ptr<PR_PrefItem> PR_Loader::createItem(PR_Element const &element, PR_PrefItem::Category category)
{
    QString const key = element.id().toString();
    int const row = PR_ItemTypes::find(element.name);
    if (row < PR_ItemTypes::Count && m_isFactoryOwn[row])
        return std::unique_ptr<PR_PrefItem>(PR_ItemTypes::row(row).create(category, key, element));
    auto const factory = PR_PrefItemFactoryManager::getInstance()->factory(element.name.toString());
    if (!factory)
        return nullptr;
    PR_ElementDom::Placed const placed = PR_ElementDom::toDom(element);
    return std::unique_ptr<PR_PrefItem>(factory->create(category, key, placed.element));
}

void PR_Loader::tell(PR_LoadObserver::Definition const &definition, PR_LoadObserver::Outcome outcome)
{
    if (!m_observer)
        return;
    QString const key = definition.item ? definition.item->getKey() : QString();
    bool const competes = outcome == PR_LoadObserver::Won || outcome == PR_LoadObserver::Locked;
    auto const other = competes ? m_winners.constFind(key) : m_winners.cend();
    m_observer->definition(definition, outcome, other == m_winners.cend() ? nullptr : &*other);
    if (outcome == PR_LoadObserver::Won)
        m_winners.insert(key, definition);
}

// ---- Values of the user

// Offers an element to an item; whether the item took it.
bool PR_Loader::offer(PR_ItemSet::Entry const &entry, PR_Element const &element)
{
    PR_ItemTypes::Row const *const row = entry.exactRow();
    if (!row) {
        PR_ElementDom::Placed const placed = PR_ElementDom::toDom(element);
        return entry->loadXml(placed.element);
    }
    bool const isTaken = row->load(entry.item(), element);
    if (isTaken)
        noteFont(entry, element.attribute(u"value"));
    return isTaken;
}

PR_Loader::TextWriter PR_Loader::quietWriter(PR_ItemSet &items)
{
    return [&items](QString const &key, QString const &text) {
        PR_ItemSet::Entry const entry = items.find(key);
        if (!entry)
            items.insert(std::make_unique<PR_StringItem>(PR_PrefItem::Internal, key, text));
        else if (auto *const item = entry.as<PR_StringItem>())
            item->setValue(text);
    };
}

void PR_Loader::loadUserFile(PR_XmlFile const &file, TextWriter const &writeText)
{
    for (PR_Element const &element : PR_Elements(file.tree.root()))
        loadElement(element, writeText);
}

void PR_Loader::loadElement(PR_Element const &element, TextWriter const &writeText)
{
    QString const key = element.id().toString();
    bool isTaken = m_items.offer([&key] { return key; }, [&](auto const &entry) { return offer(entry, element); });
    if (!isTaken && !key.isEmpty()) {
        int const row = PR_ItemTypes::find(element.name);
        auto *const create = row < PR_ItemTypes::Count ? PR_ItemTypes::row(row).createUnknown : nullptr;
        std::unique_ptr<PR_PrefItem> item(create ? create(key) : nullptr);
        if (!item || !offer(PR_ItemSet::Entry(item.get()), element)) {
            writeText(key, element.value().toString());
        } else if (!m_items.find(key)) {
            m_items.insert(std::move(item));
            isTaken = true;
        }
    }
    if (m_observer)
        m_observer->userValue({ PR_LoadObserver::UserFile, &element, key, element.value().toString(),
            m_items.find(key).item(), isTaken });
}

bool PR_Loader::loadText(QString const &path, TextWriter const &writeText)
{
    TULex lex;
    if (!lex.openFile(path))
        return false;
    // An item that cannot read its value has moved on to a token that may be the key of a later item.
    auto const currentToken = [&lex] { return QString(lex); };
    auto const isTakenBy = [&](PR_ItemSet::Entry const &entry) {
        QString text;
        if (m_observer || entry.as<PR_FontItem>()) {
            TULex ahead = lex;
            ahead.get(false);
            text = ahead;
        }
        QString const key = lex;
        bool const isTaken = entry->load(lex);
        if (isTaken)
            noteFont(entry, text);
        if (m_observer)
            m_observer->userValue({ PR_LoadObserver::TextFile, nullptr, key, text, entry.item(), isTaken });
        return isTaken;
    };

    int const shortTokenLimit = 1000;
    for (int shortTokens = 0; !lex.eof() && shortTokens <= shortTokenLimit;) {
        if (m_items.offer(currentToken, isTakenBy))
            continue;
        QString const key = lex;
        if (key.size() < 2) {
            lex.skipToNextLine();
            ++shortTokens;
            continue;
        }
        lex.get(false);
        QString const value = lex;
        lex.get(false);
        writeText(key, value);
        if (m_observer)
            m_observer->userValue({ PR_LoadObserver::TextFile, nullptr, key, value, m_items.find(key).item(), true });
    }
    return true;
}

// Takes note of the name that an item has just read.
void PR_Loader::noteFont(PR_ItemSet::Entry const &entry, QStringView name)
{
    auto const *const font = entry.as<PR_FontItem>();
    bool const isUsers = font && font->getOrigin() == PR_PrefItem::OriginUser;
    if (isUsers && font->EnumNameList().isEmpty() && !name.isEmpty())
        unresolvedFonts.insert(font->getKey(), name.toString());
}
