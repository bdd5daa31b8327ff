#ifndef FINDINGS_H
#define FINDINGS_H

#include "XmlText.h"

#include "PR_XmlReader_p.h"

#include <QStringList>

#include <optional>
#include <vector>

/*! What the checks of files look for, by Rules.def. */
enum class Rule {
#define RULE(Name, name, inDefinitions, inUserFile, explanation) Name,
#include "Rules.def"
    Count
};

enum class Severity { None, Warning, Error };

/*! What is said about a rule. */
struct RuleText {
    char const *name;
    Severity inDefinitions; /*!< Also in preference sets and overrides. */
    Severity inUserFile;
    char const *explanation;
};

QStringList ruleNames();
RuleText const &textOf(Rule rule);
char const *textOf(Severity severity);

/*! Something that is wrong in a file. */
struct Finding {
    QString file;
    int line; /*!< From 1, as the column; 0 for the file as a whole. */
    int column;
    Severity severity;
    Rule rule;
    QString key; /*!< Of the preference; empty when it is about none. */
    QString text;
    QString suggestion; /*!< What was probably meant; empty when nothing is near. */
};

/*! What is wrong in one file. */
class Findings {
public:
    enum FileKind { DefinitionFile, UserFile };

    /*! \a file must live as long. */
    Findings(PR_XmlFile const &file, FileKind kind);

    /*! Adds a finding about an element, placed at one of its attributes when there is such a one. */
    void add(Rule rule, PR_Element const &element, QString const &text, QString const &attribute = {},
        QString const &suggestion = {});
    /*! The file could not be read: why. */
    void addUnreadable();

    /*! The findings in the order of the file. */
    std::vector<Finding> const &inOrder();

private:
    XmlText const &text();

    PR_XmlFile const &m_file;
    FileKind const m_kind;
    std::optional<XmlText> m_text;
    std::vector<Finding> m_findings;
};

#endif
