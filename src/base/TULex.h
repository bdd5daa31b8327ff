#ifndef TULEX_H
#define TULEX_H

#include "brivantbase_export.h"

#include <QString>

/*! Reads a UTF-8 text file token by token.

    Tokens are separated by white space, line ends included. A token that begins with a double quote runs to the next
    double quote or to the end of its line and may hold blanks; in it \\", \\\\ and \\n stand for a quote, a backslash
    and a line feed. */
class BRIVANT_BASE_EXPORT TULex {
public:
    /*! Reads the file and stands on its first token; false when the file cannot be read. */
    bool openFile(QString const &path);

    /*! True when there is no current token. */
    [[nodiscard]] bool eof() const { return !m_hasToken; }
    /*! Advances to the next token; false when there is none. The argument is not used. */
    bool get(bool unused);
    /*! Advances to the first token of a later line than the one on which the current token began. */
    void skipToNextLine();

    /*! Text of the current token; empty at the end. */
    operator QString() const { return m_token; }
    /*! Whether the current token is \a text. */
    bool operator==(QString const &text) const { return m_token == text; }

    /*! \name Values
        Reads the current token as a value and advances. A token that is not of the type stays the current one, \a value
        stays as it is, and the result is false. */
    /*!\{*/
    bool get_bool(bool &value); /*!< Y, N, yes, no, true and false, in any case. */
    bool get_int(int &value); /*!< Decimal. */
    bool get_double(double &value); /*!< With a decimal point, whatever the locale. */
    /*!\}*/

private:
    void readQuoted();

    QString m_text;
    qsizetype m_position = 0; // just behind the current token
    QString m_token;
    bool m_hasToken = false;
};

#endif
