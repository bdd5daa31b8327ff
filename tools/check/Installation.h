#ifndef INSTALLATION_H
#define INSTALLATION_H

#include "NearestWord_p.h"

#include "PR_Loader_p.h"

#include <map>
#include <memory>
#include <optional>
#include <vector>

/*! The item that a definition makes, without its texts and its lock; null when there is no such type. */
std::unique_ptr<PR_PrefItem> itemOf(PR_Element const &definition);

/*! All definitions of some files in the order of a load, those too that do not count in this product. */
class Definitions final : public PR_LoadObserver {
public:
    Definitions();

    /*! Reads the files, and then defines. */
    PR_Loader &loader() { return m_loader; }

    QStringList keys() const { return m_byKey.keys(); }
    std::vector<PR_Element const *> const &of(QString const &key) const;
    /*! The definition that gives a key its default or, where none does, the last one; null for an unknown key. */
    PR_Element const *find(QString const &key) const;
    /*! The item of a key; null when no definition of it counts. */
    PR_PrefItem *item(QString const &key) const { return m_items.find(key).item(); }
    /*! Where a definition stands, as "FILE:LINE". */
    QString placeOf(PR_Element const &definition) const;

private:
    void file(Layer layer, PR_XmlFile const &file) override;
    void definition(Definition const &definition, Outcome outcome, Definition const *other) override;

    PR_ItemSet m_items;
    PR_Loader m_loader;
    QString m_paths[Override + 1];
    QHash<QString, std::vector<PR_Element const *>> m_byKey;
    QHash<QString, PR_Element const *> m_winners;
};

/*! The definitions of an installation, read when they are first asked for. An installation without any is thrown as a
    Failure. */
class Installation {
public:
    /*! Users' files are taken for those of the machine's settings when \a local. A \a candidate takes the place of the
        installed override; an empty text leaves it. */
    Installation(bool local, QString candidate);

    /*! The definition files that are there, of both stores, with the sets and the override. */
    static QStringList files(QString const &candidate = {});

    bool isOfMachine() const { return m_isLocal; }
    /*! The main files of both stores: sets and overrides are laid over both. */
    std::vector<Definitions const *> mainFiles();
    /*! The override by itself. */
    Definitions const &facility();
    /*! What the store has with a preference set, whose name may be empty; until another one is asked for. */
    Definitions const &ofStore(QString const &setName);

    /*! What defines a key in the main files, and which of them; nulls for an unknown key. */
    std::pair<Definitions const *, PR_Element const *> find(QString const &key);
    /*! The key in the main files that is nearest to an unknown one. */
    QString nearestTo(QString const &key);

private:
    std::unique_ptr<Definitions> read(PR_LoadObserver::Layer layer, QString const &path, bool mustExist);

    bool const m_isLocal;
    QString const m_candidate;
    std::unique_ptr<Definitions> m_application;
    std::unique_ptr<Definitions> m_machine;
    std::unique_ptr<Definitions> m_facility;
    std::map<QString, std::unique_ptr<Definitions>> m_stores; // by the name of the set
    std::optional<NearestWord> m_keys;
};

#endif
