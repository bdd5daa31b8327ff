#ifndef MSG_TEXT_H
#define MSG_TEXT_H

#include "brivantbase_export.h"

#include <QString>

/*! A translated text with "%1"-style markers. */
class BRIVANT_BASE_EXPORT MSG_Text {
public:
    /*! An empty text. */
    MSG_Text() = default;
    /*! From an English \a source text and its \a translation, with the same markers. */
    MSG_Text(QString const &source, QString const &translation);

    /*! Fills the marker with the lowest number, right-aligned in \a fieldWidth characters (0: no padding). */
    MSG_Text &arg(QString const &value, int fieldWidth = 0);

    /*! The English text, its markers unfilled. */
    [[nodiscard]] QString const &getSource() const { return m_source; }
    /*! The translated text with the markers filled so far. */
    [[nodiscard]] QString getText() const { return m_text; }

private:
    QString m_source;
    QString m_text;
};

#endif
