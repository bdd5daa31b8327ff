#ifndef INPUTFILE_H
#define INPUTFILE_H

class QByteArray;
class QString;

/*! Files that the user hands to a verb. */
namespace InputFile {
/*! All bytes of a file, "-" being standard input. Throws a Failure when it cannot be read or is larger than any that
    this program writes. */
QByteArray bytes(QString const &name);
} // namespace InputFile

#endif
