#include "PrefsStore.h"

#include "ReportScope.h"
#include "UndefinedStore.h"
#include "ValueText.h"
#include "Verb.h"

#include "PR_FontItem.h"

#include <QCommandLineParser>
#include <QFontDatabase>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

QString PrefsStore::nameOf(QCommandLineParser const &options)
{
    if (options.isSet(u"user"_s))
        return options.value(u"user"_s);
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/Brivant Animation/"_L1
        + (options.isSet(u"local"_s) ? "localpref"_L1 : "user.pref"_L1);
}

PrefsStore::PrefsStore(Call const &call, Purpose purpose)
    : PrefsStore(nameOf(call.options), call.options.isSet(u"local"_s), purpose)
{
}

PrefsStore::PrefsStore(QString const &name, bool local, Purpose purpose)
    : PR_Preference(name, local, false)
    , m_isLocal(local)
{
    HostPlatform::current().readOnly = purpose == ToRead;
    init();
    if (getErrorCode() != NoError)
        throw Failure{ ExitStatus::CannotRead, u"The preferences cannot be loaded."_s };
    keepFontsOfUser();
}

PR_PrefItem &PrefsStore::item(QString const &key) const
{
    if (PR_PrefItem *const item = find(key))
        return *item;
    throw Failure{ ExitStatus::NoSuchKey, u"There is no preference %1."_s.arg(ValueText::escaped(key)) };
}

PR_PrefItem &PrefsStore::unlockedItem(QString const &key) const
{
    PR_PrefItem &unlocked = item(key);
    if (unlocked.hasFacilityOverride(true))
        throw Failure{ ExitStatus::Locked, u"%1 was left as it is."_s.arg(ValueText::escaped(key)) };
    return unlocked;
}

void PrefsStore::saveNow()
{
    save();
    SaveStatus const status = saveStatus();
    if (status.state != SaveStatus::Saved)
        throw Failure{ ExitStatus::CannotWrite, u"The change was not saved: %1"_s.arg(status.reason) };
}

// A font item takes a font that is not there for the first one, and a save would make that the user's choice. So what
// the user's files name counts as available, whatever is installed on the machine of this run.
void PrefsStore::keepFontsOfUser()
{
    HostPlatform &host = HostPlatform::current();
    ReportScope const silence; // all was said by the load before
    UndefinedStore const files(getPath(), m_isLocal);
    QStringList fonts = host.fonts.value_or(QFontDatabase::families());
    auto const available = fonts.size();
    for (PR_PrefItem const *item : *this) {
        QString const font = files.getStringValue(item->getKey(), QString());
        if (dynamic_cast<PR_FontItem const *>(item) && !font.isEmpty() && !fonts.contains(font, Qt::CaseInsensitive))
            fonts.append(font);
    }
    if (fonts.size() > available) {
        host.fonts = fonts;
        init();
    }
}
