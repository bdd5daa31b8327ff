#ifndef FINDING_H
#define FINDING_H

#include "Rules.h"
#include "SourceText.h"

#include <QString>

/*! Something that is wrong in a file. */
struct Finding {
    QString file;
    Place place;
    Severity severity;
    Rule rule;
    QString key; /*!< Of the preference; empty when it is about none. */
    QString text;
    QString suggestion; /*!< The known word nearest to a wrong one; empty when none is near. */
};

#endif
