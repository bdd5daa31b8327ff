// A module of another project: consumer PREFIX FOLDER reads and writes a store in FOLDER.
#include <PR_CachedPreferences.h>
#include <PR_IntItem.h>
#include <PR_PrefItemFactory.h>
#include <brivantpreference_version.h>
#include <oswUtil.h>

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

#ifdef HAS_KEYS
#include <OwnKeys.h>
#include <PR_PreferenceTesting.h>
#endif

static_assert(BRIVANT_PREFERENCE_VERSION >= BRIVANT_PREFERENCE_VERSION_CHECK(1, 0, 0)
    && BRIVANT_PREFERENCE_VERSION < BRIVANT_PREFERENCE_VERSION_CHECK(BRIVANT_PREFERENCE_VERSION_MAJOR + 1, 0, 0));

static void check(bool holds, char const *what)
{
    if (!holds) {
        std::fprintf(stderr, "consumer: %s\n", what);
        std::exit(1);
    }
}

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    check(argc == 3, "usage: consumer PREFIX FOLDER");
    QString const prefix = QString::fromLocal8Bit(argv[1]);
    QString const name = QString::fromLocal8Bit(argv[2]) + QStringLiteral("/user.pref");
    QString const key = QStringLiteral("XSHEET_LINE_HOLD");

    check(oswUtil::ZeltDir(false).startsWith(prefix), "the resources are not those of the installation");
    {
        std::unique_ptr<PR_Preference> const store(PR_Preference::createPreference(name));
        check(store->getErrorCode() == PR_Preference::NoError, "the definitions were not loaded");
        // Class information and tables of the library, as seen from outside of it.
        auto const *item = dynamic_cast<PR_IntItem *>(store->find(key));
        check(item && item->getCategory() == PR_PrefItem::ExposureSheet, "the definition has no such integer");
        PR_ConcretePrefItemFactory<PR_IntItem> factory(QStringLiteral("int"));
        check(factory.key() == QLatin1String("int"), "no factory of one's own can be made");

        int changes = 0;
        QObject::connect(store.get(), &PR_Preference::preferenceChanged, [&changes] { ++changes; });
        store->setIntValue(key, item->defaultValue() + 1);
        check(changes == 1, "the change was not announced once");
        check(PR_CachedPreferences::getXsheetLineHold() == item->value(), "the cached value did not follow");
        store->save();
        check(store->saveStatus().state == PR_Preference::SaveStatus::Saved, "the value was not saved");
    }
    std::unique_ptr<PR_Preference> const again(PR_Preference::createPreference(name));
    check(again->getIntValue(key, -1) == 4, "the saved value was not read again");
#ifdef HAS_KEYS
    check(again->value(OwnKeys::XsheetLineHold) == 4, "the typed key reads another value");
    check(PR_TestPreferences("")->value(OwnKeys::XsheetLineHold) == 3, "the typed key has another default");
#endif
    std::puts(BRIVANT_PREFERENCE_VERSION_STR);
}
