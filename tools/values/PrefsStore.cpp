#include "PrefsStore.h"

#include "Application.h"
#include "Command.h"
#include "ValueText.h"

#include "NearestWord_p.h"
#include "PR_Loader_p.h"

#include "MSG_Text.h"
#include "oswRemapPath.h"
#include "tufile.h"

#include <QCommandLineParser>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace {
// What the user's files have under each key, whatever its type.
class UserTexts final : public PR_LoadObserver {
public:
    UserTexts(QString const &xmlPath, QString const &textPath)
    {
        PR_ItemSet none;
        PR_Loader loader(none, this);
        auto const leave = [](QString const &, QString const &) {};
        PR_XmlFile const file = readUserFile(xmlPath);
        if (file.state == PR_XmlFile::Read)
            loader.loadUserFile(file, leave);
        else
            loader.loadText(textPath, leave);
    }

    QString of(QString const &key) const { return m_texts.value(key); }

private:
    void userValue(UserValue const &value) override { m_texts.insert(value.key, value.text); }

    QHash<QString, QString> m_texts;
};
} // namespace

bool holdsDefinitions(PR_Element const &root)
{
    for (PR_Element const &element : PR_Elements(root)) {
        if (element.name == u"category" || element.firstElement())
            return true;
    }
    return false;
}

PR_XmlFile readUserFile(QString const &path)
{
    PR_XmlFile file = PR_XmlFile::read(path);
    if (file.state == PR_XmlFile::NotXml) {
        PR_XmlFile backup = PR_XmlFile::read(PL_FileSlot::backupOf(PL_FileSlot::targetOf(path)));
        if (backup.state == PR_XmlFile::Read)
            return backup;
    }
    return file;
}

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
{
    HostPlatform::current().readOnly = purpose == ToRead;
    if (purpose == ToWrite)
        waitForTurn();
    init();
    if (getErrorCode() != NoError)
        throw Failure{ ExitStatus::CannotRead, u"The preferences cannot be loaded."_s };
}

// From the load to the save, so that of any number of simultaneous calls none loses what another one saves.
void PrefsStore::waitForTurn()
{
    QString const path = oswRemapPath::RemapPath2(getPathXml());
    MSG_Text ignored; // the save tells
    (void)tufile::checkCreatePath(path, ignored, true);
    m_turn = std::make_unique<PL_FileLock>(path, 60000);
    if (m_turn->isBusy() && !m_turn->isHeld())
        throw Failure{ ExitStatus::CannotWrite, u"%1 is held by other programs."_s.arg(ValueText::escaped(path)) };
}

PR_PrefItem &PrefsStore::item(QString const &key)
{
    PR_PrefItem *found = find(key);
    if (dynamic_cast<PR_FontItem const *>(found) && !m_hasFonts) {
        useFonts();
        found = find(key);
    }
    if (found)
        return *found;
    QStringList keys;
    for (PR_PrefItem const *item : *this)
        keys.append(item->getKey());
    throw Failure{ ExitStatus::NoSuchKey, ValueText::noSuchPreference(key, NearestWord(keys).to(key)) };
}

PR_PrefItem &PrefsStore::unlockedItem(QString const &key)
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
void PrefsStore::useFonts()
{
    m_hasFonts = true;
    QStringList fonts = Application::fonts();
    UserTexts const texts(getPathXml(), getPath());
    for (PR_PrefItem const *item : *this) {
        QString const font = texts.of(item->getKey());
        if (dynamic_cast<PR_FontItem const *>(item) && !font.isEmpty() && !fonts.contains(font, Qt::CaseInsensitive))
            fonts.append(font);
    }
    HostPlatform::current().fonts = fonts;
    ReportScope const silence; // all was said by the load before
    init();
}
