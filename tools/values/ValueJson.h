#ifndef VALUEJSON_H
#define VALUEJSON_H

#include "ValueText.h"

#include <QJsonObject>

/*! Values of preferences as JSON: true or false, a number, or else the text that "set" takes. */
namespace ValueJson {
/*! The present value; null when there is no form in which it could be taken back without loss. */
QJsonValue of(PR_PrefItem &item);
/*! Gives an item, which must not be locked, the value. What of() gives counts as held, even null. */
ValueText::Outcome assign(PR_PrefItem &item, QJsonValue const &value);
/*! What a value of the item looks like, to go on with after "expected". */
QString expectedForm(PR_PrefItem &item);
/*! The value on one line, cut short when it is long. */
QString shown(QJsonValue const &value);
} // namespace ValueJson

#endif
