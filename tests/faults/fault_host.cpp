// A host of a store whose saves and loads the tests disturb: fault_host INSTALL VERB FILE [NUMBER [COUNT]]
//
//   load FILE           prints the set of values that a load finds
//   values FILE         prints every value after a load
//   save FILE N [COUNT] loads, then sets all values to set N and saves, COUNT times with N, N+1...
//   recover FILE N      prints the set that a load finds, saves set N, prints the set that a second store finds
//   share FILE N COUNT  as number N of several stores that share FILE: COUNT times writes or resets some of its own
//   keys and
//                       of the common ones, saves or reloads; before and after each save prints all its own values
//   watch FILE          loads until the input ends, at least 100 times; fails on anything but a full set
//
// FILE is the store's name. Reports and failed saves go to the error stream; a failure gives the exit status 1.

#include "ValueSet.h"

#include "HostPlatform.h"
#include "PR_Preference.h"
#include "PR_PrefItem.h"

#include <QCoreApplication>
#include <QStringList>

#include <cstdio>
#include <poll.h>
#include <random>

using namespace Qt::StringLiterals;

namespace {
class LoadedStore : public PR_Preference {
public:
    explicit LoadedStore(QString const &name)
        : PR_Preference(name, false, true)
    {
    }
};

bool saveSet(PR_Preference &store, int number)
{
    ValueSet::write(store, number);
    store.save();
    PR_Preference::SaveStatus const status = store.saveStatus();
    if (status.state == PR_Preference::SaveStatus::Saved)
        return true;
    std::fprintf(stderr, "not saved: %s\n", qUtf8Printable(status.reason));
    return false;
}

void printSet(PR_Preference const &store)
{
    std::printf("%d\n", ValueSet::read(store));
}

bool inputHasEnded()
{
    pollfd input{ 0, POLLIN, 0 };
    return poll(&input, 1, 0) != 0;
}

bool watch(QString const &name)
{
    int loads = 0;
    int broken = 0;
    for (; loads < 100 || !inputHasEnded(); ++loads) {
        LoadedStore const store(name);
        int const backup = ValueSet::inFile(store.getPathXml() + u'~');
        if (ValueSet::read(store) <= ValueSet::Default || backup == ValueSet::Torn || backup == ValueSet::Mixed)
            ++broken;
    }
    std::printf("loads: %d, broken: %d\n", loads, broken);
    return broken == 0;
}
// Own keys are "N.0" to "N.4"; a value tells who wrote it, and when.
bool share(PR_Preference &store, int number, int count)
{
    std::mt19937 random(static_cast<unsigned int>(number));
    store.setShared(true);
    auto const print = [&](char const *what) {
        std::printf("%s", what);
        for (int i = 0; i < 5; ++i)
            std::printf(" %d", store.getIntValue(u"%1.%2"_s.arg(number).arg(i), -1));
        std::printf("\n");
        std::fflush(stdout);
    };
    for (int time = 1; time <= count; ++time) {
        int const value = number * 1000000 + time;
        for (auto i = random() % 3; i > 0; --i) {
            QString const key =
                random() % 3 == 0 ? u"common.%1"_s.arg(random() % 3) : u"%1.%2"_s.arg(number).arg(random() % 5);
            random() % 8 == 0 ? store.deleteAllKeyBeginingWith(key) : store.setIntValue(key, value);
        }
        if (random() % 4 == 0) {
            store.reloadShared();
            continue;
        }
        print("saves");
        store.save();
        if (store.saveStatus().state != PR_Preference::SaveStatus::Saved || !store.saveStatus().reason.isEmpty()) {
            std::fprintf(stderr, "%s\n", qUtf8Printable(store.saveStatus().reason));
            return false;
        }
        print("saved");
    }
    return true;
}
} // namespace

int main(int argc, char **argv)
{
    QCoreApplication const application(argc, argv);
    QStringList const arguments = QCoreApplication::arguments();
    if (arguments.size() < 4)
        return 2;
    HostPlatform &host = HostPlatform::current();
    host.installFolder = arguments[1];
    host.fonts = QStringList{ u"Arial"_s };
    host.report = [](HostReport const &report) {
        std::fprintf(stderr, "%d %s\n", report.action, qUtf8Printable(report.text));
    };
    QString const &verb = arguments[2];
    QString const &name = arguments[3];
    int const number = arguments.value(4).toInt();

    if (verb == "watch"_L1)
        return watch(name) ? 0 : 1;
    LoadedStore store(name);
    bool succeeded = true;
    if (verb == "values"_L1) {
        for (PR_PrefItem const *item : store)
            std::printf("%s=%s\n", qUtf8Printable(item->getKey()), qUtf8Printable(item->valueAsString()));
    } else if (verb == "share"_L1) {
        succeeded = share(store, number, arguments.value(5).toInt());
    } else if (verb == "save"_L1) {
        int const end = number + qMax(1, arguments.value(5).toInt());
        for (int i = number; i < end; ++i)
            succeeded = saveSet(store, i) && succeeded;
    } else {
        printSet(store);
        if (verb == "recover"_L1) {
            succeeded = saveSet(store, number);
            printSet(LoadedStore(name));
        }
    }
    return succeeded ? 0 : 1;
}
