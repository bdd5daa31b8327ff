#ifndef PR_DEFINITIONLIST_H
#define PR_DEFINITIONLIST_H

#include "PR_PrefItem.h"
#include "brivantpreference_export.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

class PR_Preference;

/*! What the definition files say to editors and what the items of a store do not keep: the order of the preferences,
    their groups, units, and names and limits of numbers. The files are read again, as the store's load reads them. */
class BRIVANT_PREFERENCE_EXPORT PR_DefinitionList {
public:
    /*! The files, a later one over an earlier one. */
    enum Layer { MainFile, PreferenceSet, Override };

    /*! A number that has a name. */
    struct Choice {
        int value; /*!< The number. */
        QString name; /*!< In English, as all texts here; translated() gives that to show. */
    };

    /*! What counts of the definitions of a key. */
    struct Definition {
        QString key; /*!< Of the preference. */
        PR_PrefItem::Category category = PR_PrefItem::Internal; /*!< As that of the item. */
        Layer layer = MainFile; /*!< Where the default comes from. */
        QString group; /*!< The heading under which an editor shows it; empty for none. */
        QString unit; /*!< Of a number, to show behind it; empty for none. */
        QList<Choice> choices; /*!< Of an int whose numbers have names; empty for any other. */
        std::optional<double> minimum; /*!< Least value of a double that an editor offers. */
        std::optional<double> maximum; /*!< Largest value of a double that an editor offers. */
    };

    /*! Reads the files of a store. A set or an override that leaves off the group, unit, choices or limits of a
        preference keeps those of the file below it. */
    explicit PR_DefinitionList(PR_Preference const &store);

    /*! The definitions in the order of the files, each at the place where its key stands first. */
    [[nodiscard]] QList<Definition> const &definitions() const { return m_definitions; }
    /*! The definition of a key; null when there is none. Valid as long as the list. */
    [[nodiscard]] Definition const *find(QString const &key) const;
    /*! The name of the preference set that was read; empty for none. */
    [[nodiscard]] QString const &preferenceSet() const { return m_preferenceSet; }

    /*! The names of the installed preference sets, sorted. */
    [[nodiscard]] static QStringList preferenceSets();
    /*! Reads the attribute "choices": "0=Never; 1=When asked". Nothing when that is not its form, or when a number
        occurs twice. */
    [[nodiscard]] static std::optional<QList<Choice>> choicesOf(QString const &text);
    /*! A text of a definition in the user's language, by HostPlatform::translateDefinition. */
    [[nodiscard]] static QString translated(QString const &key, QString const &text);

private:
    class Reader;

    QList<Definition> m_definitions;
    QHash<QString, qsizetype> m_places;
    QString m_preferenceSet;
};

#endif
