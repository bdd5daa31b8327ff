#include "ValueJson.h"

#include "PR_BoolItem.h"
#include "PR_DoubleItem.h"
#include "PR_IntItem.h"

#include "UT_Json.h"

#include <QLocale>

#include <cmath>
#include <memory>

using namespace Qt::StringLiterals;

namespace {
QJsonValue::Type naturalType(PR_PrefItem const &item)
{
    if (dynamic_cast<PR_BoolItem const *>(&item))
        return QJsonValue::Bool;
    if (dynamic_cast<PR_IntItem const *>(&item) || dynamic_cast<PR_DoubleItem const *>(&item))
        return QJsonValue::Double;
    return QJsonValue::String;
}

QString textOf(double number)
{
    double const wholeLimit = 9007199254740992.0; // 2^53: up to here every whole number is a double
    if (std::abs(number) < wholeLimit && std::trunc(number) == number)
        return QString::number(static_cast<qint64>(number));
    return QString::number(number, 'g', QLocale::FloatingPointShortest);
}

QString textOf(QJsonValue const &value)
{
    if (value.isBool())
        return value.toBool() ? u"true"_s : u"false"_s;
    return value.isDouble() ? textOf(value.toDouble()) : value.toString();
}
} // namespace

QJsonValue ValueJson::of(PR_PrefItem &item)
{
    QString const text = ValueText::exact(item);
    std::unique_ptr<PR_PrefItem> const trial(item.clone());
    trial->removeFacilityOverride();
    if (ValueText::assign(*trial, text) != ValueText::Held)
        return QJsonValue::Null;
    switch (naturalType(item)) {
    case QJsonValue::Bool:
        return static_cast<PR_BoolItem &>(item).value();
    case QJsonValue::Double:
        return text.toDouble();
    default:
        return text;
    }
}

ValueText::Outcome ValueJson::assign(PR_PrefItem &item, QJsonValue const &value)
{
    if (value == of(item))
        return ValueText::Held;
    return value.type() == naturalType(item) ? ValueText::assign(item, textOf(value)) : ValueText::Refused;
}

QString ValueJson::expectedForm(PR_PrefItem &item)
{
    QJsonValue::Type const type = naturalType(item);
    QString const json = type == QJsonValue::Bool ? u"true or false"_s
        : type == QJsonValue::Double              ? u"a JSON number"_s
                                                  : u"a JSON string"_s;
    return u"%1, as %2"_s.arg(ValueText::expectedForm(item), json);
}

QString ValueJson::shown(QJsonValue const &value)
{
    qsizetype const limit = 60;
    QString const text = UT_Json::serializeStr(value.toVariant());
    return text.size() > limit ? text.left(limit) + "..."_L1 : text;
}
