#ifndef VALUERULES_H
#define VALUERULES_H

#include "Findings.h"

class PR_PrefItem;

/*! Checks of one element, of a file of definitions or of a user's file. Each adds what it finds. */
namespace ValueRules {
/*! What an element of a type has for a value. */
QStringList valueAttributes(QStringView type);
/*! Words that are allowed, for the end of a message: ": a, b or c". */
QString oneOf(QStringList const &words);

void checkRootName(Findings &findings, PR_Element const &root);
/*! An element that is to hold elements alone holds a text. */
void checkText(Findings &findings, PR_Element const &element);
void checkAttributes(Findings &findings, PR_Element const &element, QStringList const &known);
/*! An element of an item holds more than, in the "cdata" form of a user's file, its value. */
void checkContent(Findings &findings, PR_Element const &element, bool mayHoldSection);
void checkDefault(Findings &findings, PR_Element const &definition, PR_PrefItem const &item);
/*! What is wrong with a user's value for the item of a definition, which stays as it is; with the definition, also by
    what the item does not know. */
void checkUserValue(
    Findings &findings, PR_Element const &element, PR_PrefItem &ofDefinition, PR_Element const *definition = nullptr);
} // namespace ValueRules

#endif
