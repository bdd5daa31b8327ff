#ifndef PR_LOADER_P_H
#define PR_LOADER_P_H

#include "PR_ItemSet_p.h"
#include "PR_XmlReader_p.h"

#include <QHash>

#include <deque>
#include <functional>

class PR_PrefItemFactoryManager;

/*! Hears what a load finds, in the order of the load. What it is shown lives as long as the loader, but for items,
   which later definitions may replace. */
class PR_LoadObserver {
public:
    enum Layer : quint8 { MainFile, PreferenceSet, Override, UserFile, TextFile };

    struct Definition {
        Layer layer;
        PR_Element const *element; /*!< Below its category. */
        PR_PrefItem const *item; /*!< Null when the definition makes none, or is excluded. */
    };
    enum Outcome {
        Won, /*!< Gives the default, as far as the load has come. */
        Locked, /*!< Dropped: an earlier definition locks the key. */
        WrongPlatform,
        WrongMode,
        WrongFeature,
        NoMorphing,
        NoSuchType
    };
    /*! A value of a user's file. */
    struct UserValue {
        Layer layer;
        PR_Element const *element; /*!< Null in a text file, which knows no places. */
        QString key;
        QString text; /*!< As the file has it. */
        PR_PrefItem const *item; /*!< What has the key afterwards. */
        bool isTaken; /*!< Whether an item took it, be it one that is locked. */
    };

    virtual ~PR_LoadObserver();
    /*! A file was looked at. */
    virtual void file(Layer layer, PR_XmlFile const &file);
    /*! \a other is the definition that is replaced, or that locks the key; null when there is none. */
    virtual void definition(Definition const &definition, Outcome outcome, Definition const *other);
    virtual void userValue(UserValue const &value);
};

/*! Fills an item set: first the definitions of all layers, then the values of a user. Each rule of a load stands here
    alone; reports are the caller's. */
class PR_Loader {
public:
    using Layer = PR_LoadObserver::Layer;

    /*! A definition file with more elements would be worth no load. */
    static constexpr qsizetype MaximumDefinitions = 200000;

    /*! \name Paths of the definition files
        By the flavour of the host. A set's \a name is taken as it is. */
    /*!\{*/
    static QString mainPath();
    static QString localPath();
    static QString overridePath();
    static QString setPath(QString const &name);
    /*!\}*/
    /*! The value of the first element "string" of a user's file, wherever it stands, with the id "PREFERENCE_SET". */
    static QString preferenceSetOf(PR_XmlFile const &userFile);
    /*! Reads a file; why one is not XML goes to the log, as no report tells it. */
    static PR_XmlFile readFile(QString const &path, qsizetype maximumElements = PR_XmlFile::AnyNumber);
    /*! Where the values are kept that a run could not read and had to replace; empty when there are none. Goes to the
       log, as nothing takes them back by itself. */
    static QString keptFileOf(QString const &userFile);
    /*! Whether a definition locks its key. */
    static bool isLocked(PR_Element const &definition);

    explicit PR_Loader(PR_ItemSet &items, PR_LoadObserver *observer = nullptr);

    /*! Reads a file of definitions: the main file, then a preference set, then the override. One that is missing or
        cannot be read as a whole defines nothing. */
    PR_XmlFile const &read(Layer layer, QString const &path);
    PR_XmlFile const &read(Layer layer, PR_XmlFile file);
    /*! Reads the files of a store, with a set unless its name is empty; gives the main file. */
    PR_XmlFile const &readStore(bool isLocal, QString const &set, QString const &overrideFile = overridePath());
    /*! Makes the items of the definitions that were read, once all were. */
    void define();

    /*! How a value is kept that no item took: as a text. */
    using TextWriter = std::function<void(QString const &key, QString const &text)>;
    /*! One that announces nothing. */
    static TextWriter quietWriter(PR_ItemSet &items);
    /*! Gives the items the values of a user's file. */
    void loadUserFile(PR_XmlFile const &file, TextWriter const &writeText);
    /*! Gives them the value of one element. */
    void loadElement(PR_Element const &element, TextWriter const &writeText);
    /*! Gives them those of a text file of old versions; false when it cannot be read. */
    bool loadText(QString const &path, TextWriter const &writeText);

    /*! By key, the fonts of the user that could not be looked up, as there is no list of fonts. */
    QHash<QString, QString> unresolvedFonts;

private:
    void trim();
    void trimByHost(std::function<bool(QDomElement &, QStringList const &, bool)> const &trimConditions);
    void define(PR_Element const &element, PR_PrefItem::Category category, PR_LoadObserver::Outcome condition);
    std::unique_ptr<PR_PrefItem> createItem(PR_Element const &element, PR_PrefItem::Category category);
    void tell(PR_LoadObserver::Definition const &definition, PR_LoadObserver::Outcome outcome);
    bool offer(PR_ItemSet::Entry const &entry, PR_Element const &element);
    void noteFont(PR_ItemSet::Entry const &entry, QStringView name);

    PR_ItemSet &m_items;
    PR_LoadObserver *const m_observer;
    std::deque<PR_XmlFile> m_files;
    std::deque<PR_XmlTree> m_trees; // made of what a host's conditions leave
    PR_Element *m_root = nullptr; // of the main file, with the content of the other roots behind its own
    bool m_isFactoryOwn[PR_ItemTypes::Count] = {};
    QHash<QString, PR_LoadObserver::Definition> m_winners; // where there is an observer
};

#endif
