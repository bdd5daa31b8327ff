#ifndef SOURCETEXTS_H
#define SOURCETEXTS_H

#include "SourceText.h"

#include "PR_Definition_p.h"

#include <map>

/*! The texts of the files in which something was found. */
class SourceTexts {
public:
    /*! The text of a file; read when it is first asked for. */
    SourceText const &of(QString const &path);

    Place placeOf(PR_Definition const &definition);
    /*! The same as "FILE:LINE". */
    QString placeText(PR_Definition const &definition);

private:
    std::map<QString, SourceText> m_texts;
};

#endif
