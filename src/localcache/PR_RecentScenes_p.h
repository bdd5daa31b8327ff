#ifndef PR_RECENTSCENES_P_H
#define PR_RECENTSCENES_P_H

#include <QDateTime>
#include <QString>

#include <vector>

class PR_PrefItem;

/*! What the items of the local cache store say about scenes, and which of them have to go. */
class PR_RecentScenes {
public:
    struct Scene {
        QString key;
        QString value; /*!< Of its item: when it was last used. */
        bool hasFolder;
    };

    /*! \a root is the cache root. */
    explicit PR_RecentScenes(QString const &root);

    /*! Whether a key names a scene: three parts separated by "/", none of them blank. */
    static bool isScene(QString const &key);
    /*! The text of an item's value for a scene used at a time, and the time of such a text. */
    static QString valueOf(QDateTime const &lastUse);
    static QDateTime lastUseOf(QString const &value);

    /*! The folder of a scene's cache, with the platform's separators. */
    QString folderOf(QString const &key) const;

    /*! Takes note of an item; one that is no scene is passed over. */
    void add(PR_PrefItem const *item);
    std::vector<Scene> const &all() const { return m_scenes; }
    /*! The scenes that have to go so that one more fits within \a limit: those without a folder and, of the others, the
        ones used least recently, earliest first. */
    std::vector<Scene> leaving(int limit) const;

    /*! Removes the folder of a scene, unless it lies outside of the root or holds the folder of \a currentScene; true
        when it is gone. */
    bool removeFolder(QString const &key, QString const &currentScene) const;

private:
    QString m_root;
    std::vector<Scene> m_scenes;
};

#endif
