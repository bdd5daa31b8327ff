#ifndef CHECKER_H
#define CHECKER_H

#include "Finding.h"
#include "KnownDefinitions.h"

#include <vector>

struct XmlOutline;

/*! Checks files of any kind.

    A file below a folder "preferenceSets" is a preference set; one with "override" in its name is an override; any
   other is a main file of definitions when its root holds a category or an element around elements, or when it has the
   name of one, and else a user's file. */
class Checker {
public:
    /*! Checks against the installation's definitions, those of the machine's settings when \a local. */
    explicit Checker(bool local);

    /*! What is wrong in a file, in the order of the file. */
    std::vector<Finding> check(QString const &path);

private:
    enum Kind { MainFile, Set, Override, UserFile };
    static Kind kindOf(QString const &path, XmlOutline const &outline);

    KnownDefinitions m_known;
};

#endif
