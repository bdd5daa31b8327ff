#ifndef DEFINITIONCHECKER_H
#define DEFINITIONCHECKER_H

#include "ConditionSet.h"
#include "DefinitionHistory.h"
#include "FileChecker.h"

#include <QHash>

class KnownDefinitions;
class PR_IntItem;

/*! Checks a file of definitions: a main file, a preference set or an override. */
class DefinitionChecker final : public FileChecker {
public:
    /*! What a set or an override is checked against are the \a known definitions; null for a main file. */
    DefinitionChecker(
        PR_XmlFile xml, PR_DefinitionFile::Layer layer, SourceText const &source, KnownDefinitions *known);

    void check();

private:
    /*! A definition as one of those of its key, of whatever file. */
    struct Rival {
        PR_Definition definition;
        ConditionSet conditions;
        bool isLocked;
        bool isOwn; /*!< Of the file that is checked. */
    };
    using Rivals = std::vector<Rival>;

    void checkRoot(QDomElement const &root);
    void checkText(QDomElement const &element);
    void checkCategory(QDomElement const &category);
    void checkDefinition(PR_Definition const &definition);

    /*! \name Checks of the element */
    /*!\{*/
    void checkConditions(PR_Definition const &definition);
    bool checkConditionWords(QDomElement const &element);
    bool checkConditionWord(QDomElement const &element, QString const &attribute, Rule rule, QStringList const &words);
    bool checkFeature(QDomElement const &element);
    void checkFlag(PR_ItemElement const &element, QString const &attribute, Rule rule);
    bool checkNumber(PR_ItemElement const &element, QString const &attribute);
    void checkValue(PR_PrefItem const &item, PR_ItemElement const &element);
    void checkInt(PR_IntItem const &item, PR_ItemElement const &element);
    void checkAgainstKnown(PR_Definition const &definition, PR_PrefItem const &item);
    /*!\}*/

    Rivals rivalsOf(QString const &key) const;
    void checkRivals(Rivals const &rivals);
    bool checkPair(Rival const &earlier, Rival const &later);
    void reportRival(Rival const &own, Rule rule, QString const &text, Rival const &other);
    QString placeText(Rival const &rival);

    PR_DefinitionTree const m_tree;
    PR_DefinitionFile::Layer const m_layer;
    KnownDefinitions *const m_known;
    QHash<QString, Rivals> m_rivals; // of this file, by key
};

#endif
