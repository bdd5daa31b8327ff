#include "PR_Preference_p.h"

#include "NearestWord_p.h"

#include <QSet>

#include <algorithm>

// Off unless somebody asks for it: a release build of a host has nothing to learn from it.
Q_LOGGING_CATEGORY(lcMisuse, "brivant.preference.misuse", QtFatalMsg)

// ---- Subscriptions and batches

void PR_Subscription::end()
{
    if (auto const isActive = m_isActive.lock())
        *isActive = false;
}

QString PR_Preference::Private::ownText(PR_KeyName const &key)
{
    QString const text = key.text(); // of a module that may be unloaded before the store
    return QString(text.constData(), text.size());
}

PR_Subscription PR_Preference::addSubscriber(PR_KeyName const &key, QObject *receiver, std::function<void()> check)
{
    PR_Subscription handle;
    auto const isActive = std::make_shared<bool>(receiver != nullptr);
    handle.m_isActive = isActive;
    d->subscribers[Private::ownText(key)].push_back({ ++d->lastSubscriber, receiver, std::move(check), isActive });
    return handle;
}

void PR_Preference::Private::tell(QString const *key)
{
    if (subscribers.isEmpty())
        return;
    if (batches > 0) {
        isTellingDue = true;
        return;
    }
    auto const isOver = [](Subscriber const &each) { return !*each.isActive || !each.receiver; };
    std::vector<Subscriber> told; // a receiver may subscribe, or delete the store
    auto const take = [&](std::vector<Subscriber> &list) {
        list.erase(std::remove_if(list.begin(), list.end(), isOver), list.end());
        told.insert(told.end(), list.begin(), list.end());
    };
    if (!key) {
        std::for_each(subscribers.begin(), subscribers.end(), take);
        std::sort(told.begin(), told.end(), [](auto const &a, auto const &b) { return a.number < b.number; });
    } else if (auto const found = subscribers.find(*key); found != subscribers.end()) {
        take(*found);
    }
    for (Subscriber const &each : told) {
        if (!isOver(each))
            each.check();
    }
}

void PR_Preference::Private::announce(PR_Preference &store, QString const *key)
{
    if (batches > 0) {
        isAnnouncementDue = true;
        return;
    }
    if (refreshesCache)
        store.updateCache();
    if (!subscribers.isEmpty()) {
        QPointer<PR_Preference> const alive(&store);
        tell(key);
        if (!alive)
            return;
    }
    // Last: a receiver may delete the store.
    if (emitsEvents)
        Q_EMIT store.preferenceChanged();
}

PR_PreferenceBatch::PR_PreferenceBatch(PR_Preference &store)
    : m_store(&store)
{
    ++store.d->batches;
}

PR_PreferenceBatch::~PR_PreferenceBatch()
{
    if (!m_store || --m_store->d->batches > 0)
        return;
    PR_Preference::Private &d = *m_store->d;
    bool const isTold = std::exchange(d.isTellingDue, false);
    if (std::exchange(d.isAnnouncementDue, false))
        d.announce(*m_store, nullptr);
    else if (isTold)
        d.tell(nullptr);
}

// ---- Misuse

void PR_Preference::Private::noteMisuse(PR_ItemSet const &items, QString const &key, char const *what)
{
    static QSet<QString> noted;
    QString const note = key + u' ' + QLatin1String(what);
    if (noted.contains(note))
        return;
    noted.insert(note);
    QStringList keys;
    if (!items.find(key))
        items.visitInMemoryOrder([&keys](PR_PrefItem const *item) { keys.append(item->getKey()); });
    QString const nearest = NearestWord(keys).to(key);
    qCWarning(lcMisuse, "%s: %s%s%s", qUtf8Printable(key), what, nearest.isEmpty() ? "" : "; the nearest key is ",
        qUtf8Printable(nearest));
}
