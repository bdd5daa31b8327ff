#include "Application.h"
#include "Command.h"
#include "PrefsStore.h"
#include "ValueText.h"

#include "PR_CachedPreferences.h"
#include "PR_LocalCachePref.h"

#include <QCommandLineParser>
#include <QTextStream>

#include <memory>

using namespace Qt::StringLiterals;

namespace {
QString text(bool value)
{
    return value ? u"Yes"_s : u"No"_s;
}

QString text(int value)
{
    return QString::number(value);
}

QString text(double value)
{
    return QString::number(value, 'f', 6);
}

QString text(unsigned int color)
{
    return u"#%1"_s.arg(color, 8, 16, QLatin1Char('0'));
}

QString text(QString const &value)
{
    return ValueText::escaped(value);
}
} // namespace

void Verbs::cached(Call const &call)
{
    if (call.options.isSet(u"local"_s))
        throw Failure{ ExitStatus::WrongUsage, u"Only the main store is cached."_s };
    (void)Application::fonts(); // a cached value may be that of a font
    std::unique_ptr<PR_Preference> const store(PR_Preference::createPreference(PrefsStore::nameOf(call.options)));
    if (store->getErrorCode() != PR_Preference::NoError)
        throw Failure{ ExitStatus::CannotRead, u"The preferences cannot be loaded."_s };
#define CACHED_REF(Type, Name, KEY, Read)                                                                              \
    call.out << #Name "\t" KEY "\t" #Type "\t" << text(PR_CachedPreferences::get##Name()) << '\n';
#include "PR_CachedValues.def"
}

void Verbs::scenes(Call const &call)
{
    if (call.options.isSet(u"local"_s))
        throw Failure{ ExitStatus::WrongUsage, u"The local cache has a store of its own."_s };
    std::unique_ptr<PR_LocalCachePref> const store(PR_LocalCachePref::createLocalCachePrefs());
    if (!store)
        throw Failure{ ExitStatus::CannotRead, u"There is no folder for the local cache's settings."_s };
    if (store->getErrorCode() != PR_Preference::NoError)
        throw Failure{ ExitStatus::CannotRead, u"The local cache's settings cannot be loaded."_s };
    for (PR_LocalCachePref::RecentScene const &scene : store->recentScenes()) {
        call.out << ValueText::escaped(scene.key) << '\t'
                 << (scene.lastUse.isValid() ? scene.lastUse.toString(Qt::ISODate) : u"unknown"_s) << '\t'
                 << (scene.hasFolder ? "cache"_L1 : "no cache"_L1) << '\t'
                 << (scene.willBeForgotten ? "goes next"_L1 : "stays"_L1) << '\t' << ValueText::escaped(scene.folder)
                 << '\n';
    }
}
