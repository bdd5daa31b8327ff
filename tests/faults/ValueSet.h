#ifndef VALUESET_H
#define VALUESET_H

#include <QByteArray>
#include <QString>

class PR_Preference;

/*! A full set of values, told apart by its number: what a save that is interrupted must not mix. */
namespace ValueSet {
constexpr int Default = 0; /*!< What a store without a user file holds. */
constexpr int NoFile = -1;
constexpr int Torn = -2; /*!< The file cannot be read. */
constexpr int Mixed = -3;

/*! The definitions of the values. */
QByteArray definitions();
void write(PR_Preference &store, int number);
/*! The number of the set, or Mixed. */
int read(PR_Preference const &store);

/*! A user file that holds a set. */
QByteArray userFile(int number);
/*! The number of the set in a user file, or NoFile, Torn, Mixed. */
int inFile(QString const &path);
} // namespace ValueSet

#endif
