#ifndef UT_STRING_H
#define UT_STRING_H

#include <QString>

/*! The text type of the base library. */
class UT_String {
public:
    UT_String() = default;
    explicit UT_String(QString const &text)
        : m_text(text)
    {
    }

    QString ToQString() const { return m_text; }

private:
    QString m_text;
};

#endif
