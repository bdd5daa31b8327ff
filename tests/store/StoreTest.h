#ifndef STORETEST_H
#define STORETEST_H

#include "PR_PrefItem.h"
#include "TestSupport.h"

/*! A test of a store and of its files. */
class StoreTest : public HostTest {
protected:
    using Reports = std::vector<std::string>;

    /*! The items in their order as "<tag> <key>=<value>", marked when internal, set by the user or locked. With
        \a onlySaved those that a save writes. */
    static std::string text(PR_Preference const &store, bool onlySaved = false)
    {
        QStringList texts;
        for (PR_PrefItem const *item : store) {
            bool const saved = item->getOrigin() == PR_PrefItem::OriginUser;
            bool const internal = item->getCategory() == PR_PrefItem::Internal;
            if (saved || !onlySaved)
                texts.append(item->getTag() + QLatin1Char(' ') + item->getKey() + QLatin1Char('=')
                    + item->valueAsString()
                    + QLatin1String(internal ? " internal"
                            : saved          ? " user"
                                             : "")
                    + QLatin1String(item->hasFacilityOverride(false) ? " locked" : ""));
        }
        return texts.join(QLatin1String(", ")).toStdString();
    }

    QString const name = path(QStringLiteral("user.pref"));
    QString const xmlName = QStringLiteral("user-pref.xml");
    QString const setName = QStringLiteral("preferenceSets/norvelle/team.xml");
    QString const overrideName = QStringLiteral("prefs_override.xml");
};

#endif
