#ifndef PR_LOCALCACHEPREF_H
#define PR_LOCALCACHEPREF_H

#include "PR_Preference.h"
#include "brivantpreference_export.h"

#include <QDateTime>

#include <vector>

/*! The machine-local store of the local cache: where it is, which scenes have a cache in it, when each was used.

    A scene's key has three parts separated by "/"; its cache is the folder of that name below the cache root. Nothing
    is saved until save() is called. */
class BRIVANT_PREFERENCE_EXPORT PR_LocalCachePref : private PR_Preference {
public:
    ~PR_LocalCachePref() override;

    /*! What is known of a scene. */
    struct RecentScene {
        QString key; /*!< Three parts separated by "/". */
        QString folder; /*!< The path of the folder of its cache. */
        QDateTime lastUse; /*!< Null when it is not known. */
        bool hasFolder; /*!< Whether the folder exists. */
        bool willBeForgotten; /*!< Whether setRecentScene() of a new scene would forget it and remove its folder. */
    };

    /*! A new store, loaded, that the caller owns; null when there is no folder for its file. */
    [[nodiscard]] static PR_LocalCachePref *createLocalCachePrefs();

    /*! The cache root: the chosen folder, else the default one; empty when there is neither. It need not exist. */
    [[nodiscard]] QString getLocalCacheRoot();
    /*! Chooses the cache root; an empty \a path brings back the default. */
    void setLocalCacheRoot(QString const &path);

    /*! Records that the scene \a key is used now. Before, scenes without a folder are forgotten, and the scenes used
        least recently are forgotten and their folders removed, so that with this one there are no more scenes than
        "MAX_COUNT_SCENES_LOCAL_CACHE" (10). Nothing outside of the cache root is ever removed. */
    void setRecentScene(QString const &key);

    /*! The scenes that are remembered, by key. */
    [[nodiscard]] std::vector<RecentScene> recentScenes();

    /*! \name Of PR_Preference
        The same operations, on this store. */
    /*!\{*/
    using PR_Preference::constBegin;
    using PR_Preference::constEnd;
    using PR_Preference::deleteKey;
    using PR_Preference::getBoolValue;
    using PR_Preference::getErrorCode;
    using PR_Preference::save;
    using PR_Preference::setBoolValue;
    /*!\}*/

private:
    explicit PR_LocalCachePref(QString const &name);

    int maxCountScenes() const;
    void cleanOldScenes(QString const &currentScene);
    Error initPreferences() override;
};

/*! The process's local cache store, created by the first call and kept; null when it could not be created then. */
[[nodiscard]] BRIVANT_PREFERENCE_EXPORT PR_LocalCachePref *localCachePrefs();

#endif
