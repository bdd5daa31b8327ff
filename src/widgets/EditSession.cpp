#include "EditSession_p.h"

#include <PR_DefinitionList.h>
#include <PR_DoubleItem.h>
#include <PR_KeyItem.h>
#include <PR_Preference.h>

#include <QElapsedTimer>
#include <QSet>
#include <QUndoCommand>

#include <memory>
#include <typeinfo>
#include <vector>

using namespace Qt::StringLiterals;

namespace {
std::unique_ptr<PR_PrefItem> copyOf(PR_PrefItem *item)
{
    return std::unique_ptr<PR_PrefItem>(item ? item->clone() : nullptr);
}

bool areEqual(PR_PrefItem const &a, PR_PrefItem const &b)
{
    auto const *const number = dynamic_cast<PR_DoubleItem const *>(&a); // whose text is shorter than the number
    auto const *const other = dynamic_cast<PR_DoubleItem const *>(&b);
    bool const isSame = number && other ? number->value() == other->value() : a.valueAsString() == b.valueAsString();
    return isSame && a.getOrigin() == b.getOrigin();
}

// What is held down, such as the arrow of a number, is one step.
constexpr int stepMilliseconds = 400;
} // namespace

class EditSession::Step final : public QUndoCommand {
public:
    struct Change {
        QString key;
        std::unique_ptr<PR_PrefItem> before, after;
    };

    Step(EditSession &session, QString const &name, std::vector<Change> changes)
        : QUndoCommand(name)
        , m_session(session)
        , m_changes(std::move(changes))
    {
        m_age.start();
    }

    void undo() override { apply(&Change::before); }
    void redo() override
    {
        if (m_isDone) // it was when it came in
            apply(&Change::after);
        m_isDone = true;
    }
    int id() const override { return 1; }
    bool mergeWith(QUndoCommand const *command) override
    {
        auto const *const next = static_cast<Step const *>(command);
        bool const isSame = m_changes.size() == 1 && next->m_changes.size() == 1
            && m_changes[0].key == next->m_changes[0].key && text() == next->text()
            && m_age.elapsed() < stepMilliseconds;
        if (isSame) {
            m_changes[0].after = copyOf(next->m_changes[0].after.get());
            m_age.restart();
        }
        return isSame;
    }

private:
    void apply(std::unique_ptr<PR_PrefItem> Change::*state)
    {
        QStringList keys;
        for (Change &change : m_changes) {
            PR_PrefItem *const item = m_session.m_store.find(change.key);
            PR_PrefItem &wanted = *(change.*state);
            // Not what has been locked or loaded anew as something else since then.
            if (!item || item->hasFacilityOverride(false) || typeid(*item) != typeid(wanted))
                continue;
            item->copy(&wanted);
            keys.append(change.key);
        }
        m_session.m_store.emitPreferenceChanged();
        Q_EMIT m_session.stepped(keys);
    }

    EditSession &m_session;
    std::vector<Change> m_changes;
    QElapsedTimer m_age;
    bool m_isDone = false;
};

EditSession::EditSession(PR_Preference &store, QString set)
    : preferenceSet(std::move(set))
    , m_store(store)
{
    // The notice comes inside the write and may come a thousand times in a loop.
    m_announcement.setSingleShot(true);
    m_announcement.setInterval(0);
    m_save.setSingleShot(true);
    m_save.setInterval(1000);
    connect(&m_announcement, &QTimer::timeout, this, &EditSession::changed);
    connect(&m_save, &QTimer::timeout, this, &EditSession::save);
    connect(&store, &PR_Preference::preferenceChanged, this, [this] {
        m_isUnsaved = true;
        m_shortcuts.clear();
        m_announcement.start();
        if (isSaving)
            m_save.start();
    });
}

bool EditSession::edit(QStringList const &keys, QString const &name, std::function<void()> const &change)
{
    std::vector<Step::Change> changes;
    for (QString const &key : keys)
        changes.push_back({ key, copyOf(m_store.find(key)), nullptr });
    change();
    std::vector<Step::Change> real;
    for (Step::Change &each : changes) {
        each.after = copyOf(m_store.find(each.key));
        if (each.before && each.after && !areEqual(*each.before, *each.after))
            real.push_back(std::move(each));
    }
    if (real.empty())
        return false;
    m_undoStack.push(std::make_unique<Step>(*this, name, std::move(real)).release());
    m_store.emitPreferenceChanged(); // last: a receiver may do anything
    return true;
}

void EditSession::restoreDefaults(QStringList const &keys, QString const &name)
{
    edit(keys, name, [&] {
        for (QString const &key : keys)
            m_store.restoreDefault(key);
    });
}

QStringList EditSession::changedKeys() const
{
    QStringList keys;
    for (PR_PrefItem const *item : m_store) {
        if (item->getCategory() != PR_PrefItem::Internal && item->getOrigin() == PR_PrefItem::OriginUser)
            keys.append(item->getKey());
    }
    return keys;
}

QString EditSession::label(QString const &key) const
{
    PR_PrefItem const *const item = m_store.find(key);
    QString const text = item ? item->getShortDescription() : QString();
    return text.isEmpty() ? key : PR_DefinitionList::translated(key, text);
}

QStringList EditSession::othersWith(int code, QString const &key)
{
    if (m_shortcuts.isEmpty()) {
        for (PR_PrefItem const *item : m_store) {
            auto const *const shortcut = dynamic_cast<PR_KeyItem const *>(item);
            if (shortcut && !shortcut->value().isEmpty())
                m_shortcuts[shortcut->value()[0].toCombined()].append(item->getKey());
        }
    }
    QStringList others = m_shortcuts.value(code);
    others.removeAll(key);
    return others;
}

void EditSession::reload()
{
    bool const isUnsaved = m_isUnsaved;
    (void)m_store.reloadShared();
    m_isUnsaved = isUnsaved; // what comes from the file need not go there
    if (!isUnsaved)
        m_save.stop();
}

bool EditSession::save()
{
    m_save.stop();
    if (!m_isUnsaved || !isSaving)
        return true;
    m_store.save();
    PR_Preference::SaveStatus const status = m_store.saveStatus();
    m_isUnsaved = status.state != PR_Preference::SaveStatus::Saved;
    Q_EMIT saved(!m_isUnsaved, status.reason);
    return !m_isUnsaved;
}
