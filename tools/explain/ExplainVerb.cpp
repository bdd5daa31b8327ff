#include "Command.h"
#include "ConditionSet.h"
#include "Explanation.h"
#include "Installation.h"
#include "PrefsStore.h"
#include "ValueRules.h"
#include "ValueText.h"

#include "oswRemapPath.h"

#include <QCommandLineParser>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSet>
#include <QTextStream>

#include <algorithm>
#include <map>

using namespace Qt::StringLiterals;

namespace {
// Tells where the values of some keys come from, by a load that it listens to.
class Explainer final : public PR_LoadObserver {
public:
    explicit Explainer(Call const &call);

    // In the order of the keys. A key that no layer knows is thrown as a Failure.
    std::vector<Explanation> explanations();

private:
    void file(Layer layer, PR_XmlFile const &file) override;
    void definition(Definition const &definition, Outcome outcome, Definition const *other) override;
    void userValue(UserValue const &value) override;

    void load();
    void addAbsence(Explanation &explanation, Layer layer) const;
    QString reasonOfAbsence(QString const &key, Layer layer) const;
    QString placeOf(PR_Element const &definition) const;
    QString reasonOf(UserValue const &value, bool isUsed) const;
    [[noreturn]] void refuse(QString const &key) const;

    struct File {
        QString path;
        PR_XmlFile::State state = PR_XmlFile::CannotOpen;
        QString error;
        int errorLine = 0;
        QMap<QString, int> undefinedKeys; // with their lines
    };

    Call const &m_call;
    PrefsStore m_store;
    PR_ItemSet m_items;
    PR_XmlFile m_userFile;
    std::map<Layer, File> m_files; // that were looked at
    QSet<QString> m_definedKeys; // by the main file
    QHash<QString, QString> m_locks; // by key, the place of the definition that locks it
    QString m_rootCondition;
    std::map<QString, Explanation> m_explanations;
};

Explainer::Explainer(Call const &call)
    : m_call(call)
    , m_store(call)
{
    m_store.useFontsWhere([&](PR_PrefItem const &item) { return call.arguments.contains(item.getKey()); });
    for (QString const &key : call.arguments)
        m_explanations.emplace(key, Explanation(key, m_store.find(key)));
    load();
}

void Explainer::load()
{
    PR_Loader loader(m_items, this);
    QString const path = oswRemapPath::RemapPath2(m_store.getPathXml());
    m_userFile = PR_XmlFile::read(path);
    // The preference set is looked for in the user's file alone, not in its backup.
    loader.readStore(m_call.options.isSet(u"local"_s), PR_Loader::preferenceSetOf(m_userFile));
    loader.define();

    if (m_userFile.state == PR_XmlFile::NotXml)
        m_userFile = readUserFile(path);
    file(UserFile, m_userFile);
    auto const writeText = PR_Loader::quietWriter(m_items);
    if (m_userFile.state == PR_XmlFile::Read)
        return loader.loadUserFile(m_userFile, writeText);
    m_files[TextFile].path = m_store.getPath();
    if (loader.loadText(m_store.getPath(), writeText))
        m_files[TextFile].state = PR_XmlFile::Read;
}

std::vector<Explanation> Explainer::explanations()
{
    std::vector<Explanation> all;
    for (QString const &key : m_call.arguments) {
        Explanation explanation = m_explanations.at(key);
        if (explanation.steps.empty())
            refuse(key);
        for (Layer const layer : { MainFile, PreferenceSet, Override, UserFile, TextFile })
            addAbsence(explanation, layer);
        std::stable_sort(explanation.steps.begin(), explanation.steps.end(),
            [](auto const &a, auto const &b) { return a.layer < b.layer; });
        explanation.keptFile = PR_Loader::keptFileOf(m_userFile.path);
        all.push_back(std::move(explanation));
    }
    return all;
}

void Explainer::file(Layer layer, PR_XmlFile const &file)
{
    m_files[layer] = { file.path, file.state, file.error, file.errorLine, {} };
    PR_Element const *const root = file.tree.root();
    if (layer == MainFile && root && root->hasAttribute(u"feature"))
        m_rootCondition = u"root feature=\"%1\""_s.arg(root->attribute(u"feature"));
}

QString Explainer::placeOf(PR_Element const &definition) const
{
    return Explanation::placeText(m_files.at(Layer(definition.source)).path, definition.line);
}

void Explainer::definition(Definition const &definition, Outcome outcome, Definition const *other)
{
    PR_Element const &element = *definition.element;
    QString const key = element.id().toString();
    if (definition.layer == MainFile)
        m_definedKeys.insert(key);
    else if (!m_definedKeys.contains(key))
        m_files[definition.layer].undefinedKeys.insert(key, element.line);
    if (outcome == Won && PR_Loader::isLocked(element))
        m_locks.insert(key, placeOf(element));
    auto const found = m_explanations.find(key);
    if (found == m_explanations.end())
        return;

    QStringList conditions =
        definition.layer == MainFile && !m_rootCondition.isEmpty() ? QStringList{ m_rootCondition } : QStringList();
    for (QString const &attribute : ConditionSet::attributes()) {
        auto const add = [&](PR_Element const &conditional, QLatin1String ofWhat) {
            if (conditional.hasAttribute(attribute))
                conditions.append(u"%1%2=\"%3\""_s.arg(ofWhat, attribute, conditional.attribute(attribute)));
        };
        add(*element.parent, "category "_L1);
        add(element, ""_L1);
    }
    QString const reasons[] = { {},
        outcome == Locked ? u"the key is locked by "_s + placeOf(*other->element) : QString(),
        u"the condition on the platform does not hold"_s, u"the condition on the mode does not hold"_s,
        u"the condition on the feature does not hold"_s, u"the product has no morphing"_s,
        u"there is no type \"%1\""_s.arg(element.name) };
    std::unique_ptr<PR_PrefItem> const item = itemOf(element);
    found->second.add(
        { definition.layer, outcome == Won ? Explanation::Won : Explanation::LeftOut, m_files[definition.layer].path,
            element.line, element.column, item ? item->defaultValueAsString() : element.attribute(u"value").toString(),
            PR_Loader::isLocked(element), conditions.join(u' '), reasons[outcome] });
}

void Explainer::userValue(UserValue const &value)
{
    if (!m_definedKeys.contains(value.key))
        m_files[value.layer].undefinedKeys.insert(value.key, value.element ? value.element->line : 0);
    auto const found = m_explanations.find(value.key);
    if (found == m_explanations.end())
        return;
    // A text that no item takes becomes one of its own, unless another item has the key.
    bool const isUsed = value.item && !value.item->hasFacilityOverride(false)
        && (value.isTaken || dynamic_cast<PR_StringItem const *>(value.item));
    found->second.add({ value.layer, isUsed ? Explanation::Won : Explanation::LeftOut, m_files[value.layer].path,
        value.element ? value.element->line : 0, value.element ? value.element->column : 0,
        isUsed ? value.item->valueAsString() : value.text, false, {}, reasonOf(value, isUsed) });
}

QString Explainer::reasonOf(UserValue const &value, bool isUsed) const
{
    if (!m_definedKeys.contains(value.key) && isUsed)
        return value.element ? u"no definition has the key"_s : QString();
    if (m_locks.contains(value.key))
        return u"the key is locked by "_s + m_locks.value(value.key);
    if (!value.element || !value.item)
        return isUsed ? QString() : u"no value of the type"_s;
    Findings findings(m_userFile, Findings::UserFile);
    std::unique_ptr<PR_PrefItem> const item(const_cast<PR_PrefItem *>(value.item)->clone());
    ValueRules::checkUserValue(findings, *value.element, *item);
    auto const &found = findings.inOrder();
    return found.empty() ? QString() : found.front().text;
}

void Explainer::addAbsence(Explanation &explanation, Layer layer) const
{
    auto const file = m_files.find(layer);
    if (explanation.has(layer) || (layer == TextFile && file == m_files.end()))
        return;
    QString const path = file == m_files.end() ? QString() : file->second.path;
    explanation.add({ layer, Explanation::Absent, path, 0, 0, {}, false, {}, reasonOfAbsence(explanation.key, layer) });
}

// Why nothing of a key comes from a file.
QString Explainer::reasonOfAbsence(QString const &key, Layer layer) const
{
    auto const found = m_files.find(layer);
    if (found == m_files.end())
        return u"no set is chosen"_s;
    File const &file = found->second;
    if (file.state == PR_XmlFile::Read) {
        QString const nearest = NearestWord(file.undefinedKeys.keys()).to(key);
        QString const place = Explanation::placeText(u"line"_s, file.undefinedKeys.value(nearest)).replace(u':', u' ');
        return u"the key is not in it"_s
            + (nearest.isEmpty() ? QString() : u", but %1 is, at %2"_s.arg(nearest, place));
    }
    if (layer == TextFile)
        return u"there is no such file"_s;
    QString const place = file.errorLine > 0 ? u" (line %1)"_s.arg(file.errorLine) : QString();
    return (file.state == PR_XmlFile::CannotOpen ? u"cannot be opened: "_s : u"cannot be parsed: "_s) + file.error
        + place;
}

void Explainer::refuse(QString const &key) const
{
    QStringList keys = m_definedKeys.values();
    for (PR_PrefItem const *item : m_store)
        keys.append(item->getKey());
    keys.sort();
    throw Failure{ ExitStatus::NoSuchKey, ValueText::noSuchPreference(key, NearestWord(keys).to(key)) };
}
} // namespace

void Verbs::explain(Call const &call)
{
    bool const asJson = call.options.isSet(u"json"_s);
    QJsonArray array;
    QStringList texts;
    Explainer explainer(call);
    for (Explanation const &explanation : explainer.explanations()) {
        if (asJson)
            array.append(explanation.toJson());
        else
            texts.append(explanation.toText());
    }
    call.out << (asJson ? QString::fromUtf8(QJsonDocument(array).toJson()) : texts.join(u'\n'));
}
