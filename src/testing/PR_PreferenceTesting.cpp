#include "PR_PreferenceTesting.h"

#include <HostPlatform.h>
#include <MSG_Scope.h>
#include <PR_PrefItem.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <utility>

class PR_TestPreferences::Private {
public:
    explicit Private(QString const &installFolder)
    {
        HostPlatform &host = HostPlatform::current();
        usualHost = host;
        usualStore = tuPref;
        host.fonts = QStringList();
        host.report = [this](HostReport const &report) {
            if (report.action != MSG_Scope::Log)
                messages.append(report.text);
        };
        if (!installFolder.isEmpty())
            host.installFolder = installFolder;
    }

    ~Private()
    {
        store.reset();
        tuPref = usualStore;
        HostPlatform::current() = usualHost;
    }

    void load()
    {
        store.reset(PR_Preference::createPreference(folder.filePath(QStringLiteral("user.pref"))));
        tuPref = store.get();
    }

    QTemporaryDir folder;
    HostPlatform usualHost;
    PR_Preference *usualStore = nullptr;
    QStringList messages;
    std::unique_ptr<PR_Preference> store;
};

PR_TestPreferences::PR_TestPreferences(QByteArray const &definitions)
    : PR_TestPreferences(std::make_unique<Private>(QString()))
{
    QString const resources = d->folder.filePath(QStringLiteral("resources"));
    QDir().mkpath(resources);
    bool const isFile = definitions.contains("<preferences");
    QByteArray const text = isFile ? definitions : "<preferences>" + definitions + "</preferences>";
    HostPlatform::current().installFolder = d->folder.path();
    for (char const *name : { "/prefs.xml", "/pv_prefs.xml" }) {
        QFile file(resources + QLatin1String(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            qFatal("%s: %s", qUtf8Printable(file.fileName()), qUtf8Printable(file.errorString()));
    }
    d->load();
}

PR_TestPreferences::PR_TestPreferences(std::unique_ptr<Private> data)
    : d(std::move(data))
{
}

std::unique_ptr<PR_TestPreferences> PR_TestPreferences::fromInstallation(QString const &folder)
{
    std::unique_ptr<PR_TestPreferences> preferences(new PR_TestPreferences(std::make_unique<Private>(folder)));
    preferences->d->load();
    return preferences;
}

PR_TestPreferences::~PR_TestPreferences() = default;

PR_Preference &PR_TestPreferences::store() const
{
    return *d->store;
}

QStringList PR_TestPreferences::takeMessages()
{
    return std::exchange(d->messages, {});
}

PR_ScopedPreference::PR_ScopedPreference(PR_Preference &store, QString const &key)
    : m_store(store)
    , m_key(key.constData(), key.size())
{
    if (PR_PrefItem *const item = store.find(m_key))
        m_before.reset(item->clone());
}

PR_ScopedPreference::~PR_ScopedPreference()
{
    PR_PrefItem *const item = m_store.find(m_key);
    if (item && m_before) {
        item->copy(m_before.get());
        m_store.emitPreferenceChanged();
    }
}
