#include "PrefsStore.h"

#include "Verb.h"

#include "HostPlatform.h"
#include "PR_FontItem.h"
#include "PR_PrefConstants.h"
#include "TULex.h"

#include <QCommandLineParser>
#include <QDomDocument>
#include <QFile>
#include <QFileInfo>
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

PrefsStore::PrefsStore(Call const &call)
    : PR_Preference(nameOf(call.options), call.options.isSet(u"local"_s), false)
{
    init();
    if (getErrorCode() != NoError)
        throw Failure{ ExitStatus::CannotRead, u"The preferences cannot be loaded."_s };
}

PR_PrefItem &PrefsStore::item(QString const &key) const
{
    if (PR_PrefItem *const item = find(key))
        return *item;
    throw Failure{ ExitStatus::NoSuchKey, u"There is no preference %1."_s.arg(key) };
}

PR_PrefItem &PrefsStore::unlockedItem(QString const &key) const
{
    PR_PrefItem &unlocked = item(key);
    if (unlocked.hasFacilityOverride(true))
        throw Failure{ ExitStatus::Locked, u"%1 was left as it is."_s.arg(key) };
    return unlocked;
}

void PrefsStore::saveNow()
{
    save();
    SaveStatus const status = saveStatus();
    if (status.state != SaveStatus::Saved)
        throw Failure{ ExitStatus::CannotWrite, u"The change was not saved: %1"_s.arg(status.reason) };
}

PR_Preference::Error PrefsStore::initPreferences()
{
    Error const result = PR_Preference::initPreferences();
    return result == NoError && addFontsOfUser() ? PR_Preference::initPreferences() : result;
}

// A font item takes a font that is not there for the first one, and a save would make that the user's choice. So what
// the user's files name counts as available, whatever is installed on the machine of this run. True when that adds any.
bool PrefsStore::addFontsOfUser() const
{
    QStringList fonts = HostPlatform::current().fonts.value_or(QFontDatabase::families());
    auto const installed = fonts.size();
    auto const add = [&](QString const &key, QString const &font) {
        if (dynamic_cast<PR_FontItem *>(find(key)) && !font.isEmpty() && !fonts.contains(font, Qt::CaseInsensitive))
            fonts.append(font);
    };

    QString const file = QFileInfo(getPathXml()).canonicalFilePath();
    for (QString const &path : { file, QString(file + u'~') }) {
        QFile input(path);
        QDomDocument document;
        if (file.isEmpty() || !input.open(QIODevice::ReadOnly) || !document.setContent(&input))
            continue;
        QDomElement element = document.documentElement().firstChildElement();
        for (; !element.isNull(); element = element.nextSiblingElement())
            add(element.attribute(kId), element.attribute(kValue));
    }
    TULex lex;
    for (lex.openFile(getPath()); !lex.eof();) {
        QString const key = lex;
        lex.get(false);
        add(key, lex);
    }

    HostPlatform::current().fonts = fonts;
    return fonts.size() > installed;
}
