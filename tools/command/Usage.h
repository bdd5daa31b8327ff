#ifndef USAGE_H
#define USAGE_H

class QString;
struct Verb;

/*! Texts on how to use the program, made from the table. */
namespace Usage {
/*! The help of the program, or of one verb. */
QString help(Verb const *verb);
/*! The page of section 1 of the manual. Its date is that of SOURCE_DATE_EPOCH, or today. */
QString manPage();
} // namespace Usage

#endif
