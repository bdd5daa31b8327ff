#ifndef PR_USERFILE_P_H
#define PR_USERFILE_P_H

#include "PR_ItemElement_p.h"
#include "PR_XmlFile_p.h"

#include <QDomDocument>

#include <vector>

class PR_PrefItem;

/*! A user's XML file, read: the elements below its root, and the preference set that it names. */
class PR_UserFile {
public:
    struct Element {
        PR_ItemElement content;
        /*! The whole element, where it holds more than the content tells, else null. */
        QDomElement dom;
        /*! \name Where its tag ends
            The line from 1; the number of characters before the end in that line. */
        /*!\{*/
        int line = 0;
        int column = 0;
        /*!\}*/
    };

    /*! Reads the file; the elements are those of the whole file or, unless its state is Read, none. */
    explicit PR_UserFile(QString const &path);

    PR_XmlFile const &file() const { return m_file; }
    std::vector<Element> const &elements() const { return m_elements; }
    /*! Offers one of the elements to an item of any class, as a child of the root; whether the item took it. */
    bool offer(Element const &element, PR_PrefItem &item) const;
    /*! The value of the first element "string", wherever it stands, whose id is "PREFERENCE_SET". */
    QString const &preferenceSet() const { return m_preferenceSet; }

private:
    class Parser;

    PR_XmlFile m_file;
    QDomDocument m_document; // of the root and the elements that have a DOM
    std::vector<Element> m_elements;
    QString m_preferenceSet;
};

#endif
