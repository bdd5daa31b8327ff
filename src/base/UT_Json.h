#ifndef UT_JSON_H
#define UT_JSON_H

#include "brivantbase_export.h"

#include <QString>
#include <QVariant>

/*! JSON texts. */
class BRIVANT_BASE_EXPORT UT_Json {
public:
    /*! The value of a JSON text, an object as a QVariantMap. \a ok tells whether the text is one JSON value. */
    [[nodiscard]] static QVariant parse(QString const &text, bool &ok);
    /*! Compact JSON that parse() reads back. */
    [[nodiscard]] static QString serializeStr(QVariant const &value);
};

#endif
