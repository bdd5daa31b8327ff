#ifndef UT_STRING_H
#define UT_STRING_H

#include <QString>

/*! The text type of the base library. */
class UT_String {
public:
    /*! An empty text. */
    UT_String() = default;
    /*! The same text. */
    explicit UT_String(QString const &text)
        : m_text(text)
    {
    }

    /*! The same text for Qt. */
    [[nodiscard]] QString ToQString() const { return m_text; }
    /*! Whether there is no character in it. */
    [[nodiscard]] bool isEmpty() const { return m_text.isEmpty(); }

private:
    QString m_text;
};

#endif
