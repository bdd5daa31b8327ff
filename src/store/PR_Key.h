#ifndef PR_KEY_H
#define PR_KEY_H

#include "brivantpreference_export.h"

#include <QKeySequence>
#include <QString>

#include <limits>

/*! The name of a font, as the value of a typed key. */
struct PR_FontName {
    QString name; /*!< Of a family. */

    bool operator==(PR_FontName const &other) const { return name == other.name; } /*!< Whether the names are equal. */
    bool operator!=(PR_FontName const &other) const { return name != other.name; } /*!< The opposite. */
};

/*! The text of a typed key. Literal: it refers to a text that lives as long as the program. */
class BRIVANT_PREFERENCE_EXPORT PR_KeyName {
public:
    /*! The key, which shares the literal text. */
    [[nodiscard]] QString text() const { return QString::fromRawData(reinterpret_cast<QChar const *>(m_text), m_size); }

protected:
    /*! From a literal text. */
    template <int size>
    constexpr explicit PR_KeyName(char16_t const (&text)[size])
        : m_text(text)
        , m_size(size - 1)
    {
    }

private:
    char16_t const *m_text;
    int m_size;
};

/*! A key with the type of its values and the default of its definition: what headers that are made from definition
   files hold, so that a misspelt key or a wrong type does not compile. \a T is bool, int, double, unsigned int for a
   colour, QString, QKeySequence or PR_FontName. The default of the last three is a text. */
template <class T> class BRIVANT_PREFERENCE_EXPORT PR_Key : public PR_KeyName {
public:
    /*! From a literal text. */
    template <int size>
    constexpr PR_Key(char16_t const (&text)[size], T value)
        : PR_KeyName(text)
        , m_default(value)
    {
    }

    [[nodiscard]] constexpr T defaultValue() const { return m_default; } /*!< That of the definition. */

private:
    T m_default;
};

/*! The key of an integer, which has a range. */
template <> class BRIVANT_PREFERENCE_EXPORT PR_Key<int> : public PR_KeyName {
public:
    /*! From a literal text; both ends belong to the range. */
    template <int size>
    constexpr PR_Key(char16_t const (&text)[size], int value, int minimum = std::numeric_limits<int>::min(),
        int maximum = std::numeric_limits<int>::max())
        : PR_KeyName(text)
        , m_default(value)
        , m_minimum(minimum)
        , m_maximum(maximum)
    {
    }

    [[nodiscard]] constexpr int defaultValue() const { return m_default; } /*!< That of the definition. */
    [[nodiscard]] constexpr int minValue() const { return m_minimum; } /*!< The least value of the range. */
    [[nodiscard]] constexpr int maxValue() const { return m_maximum; } /*!< The greatest value of the range. */

private:
    int m_default;
    int m_minimum;
    int m_maximum;
};

/*! What the keys of texts share: their default is a text. */
class BRIVANT_PREFERENCE_EXPORT PR_TextKey : public PR_KeyName {
public:
    /*! From literal texts. */
    template <int size>
    constexpr PR_TextKey(char16_t const (&text)[size], char16_t const *value)
        : PR_KeyName(text)
        , m_default(value)
    {
    }

    /*! That of the definition, as a text. */
    [[nodiscard]] QString defaultText() const { return QString::fromUtf16(m_default); }

private:
    char16_t const *m_default;
};

/*! The key of a text. */
template <> class BRIVANT_PREFERENCE_EXPORT PR_Key<QString> : public PR_TextKey {
public:
    using PR_TextKey::PR_TextKey;
    [[nodiscard]] QString defaultValue() const { return defaultText(); } /*!< That of the definition. */
};

/*! The key of a shortcut. */
template <> class BRIVANT_PREFERENCE_EXPORT PR_Key<QKeySequence> : public PR_TextKey {
public:
    using PR_TextKey::PR_TextKey;
    /*! That of the definition. */
    [[nodiscard]] QKeySequence defaultValue() const
    {
        return QKeySequence::fromString(defaultText(), QKeySequence::PortableText);
    }
};

/*! The key of a font. */
template <> class BRIVANT_PREFERENCE_EXPORT PR_Key<PR_FontName> : public PR_TextKey {
public:
    using PR_TextKey::PR_TextKey;
    [[nodiscard]] PR_FontName defaultValue() const { return { defaultText() }; } /*!< That of the definition. */
};

#endif
