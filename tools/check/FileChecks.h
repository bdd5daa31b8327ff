#ifndef FILECHECKS_H
#define FILECHECKS_H

#include "Findings.h"
#include "Installation.h"

class QTextStream;

/*! What the checks of several files share. */
struct CheckedFiles {
    struct Type {
        QString tag;
        QString place; /*!< "FILE:LINE" */
    };

    Installation installation;
    QHash<QString, Type> types = {}; /*!< By key, as the first definition has it. */
};

/*! \name Checks of a file that was read
    Each adds what it finds. */
/*!\{*/
void checkDefinitions(Findings &findings, PR_XmlFile const &file, PR_LoadObserver::Layer layer, CheckedFiles &files);
void checkUserFile(Findings &findings, PR_XmlFile const &file, Installation &installation);
/*!\}*/

/*! All that is wrong in a file, or why it could not be read. */
std::vector<Finding> findingsOf(PR_XmlFile const &file, PR_LoadObserver::Layer layer, CheckedFiles &files);

/*! As a line: place, severity, text and rule. */
void print(Finding const &finding, QTextStream &out);

/*! Looks for a preference set that a user's file, or a definition, names in an element. */
void checkSet(Findings &findings, PR_Element const &element, QString const &name);

#endif
