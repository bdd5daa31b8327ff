#include "UT_Json.h"

#include <QJsonArray>
#include <QJsonDocument>

// Qt's documents are objects or arrays; as the only element of an array, any value is one.

QVariant UT_Json::parse(QString const &text, bool &ok)
{
    QJsonArray const array = QJsonDocument::fromJson('[' + text.toUtf8() + ']').array();
    ok = array.size() == 1;
    return ok ? array.first().toVariant() : QVariant();
}

QString UT_Json::serializeStr(QVariant const &value)
{
    QByteArray const array = QJsonDocument(QJsonArray{ QJsonValue::fromVariant(value) }).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(array.mid(1, array.size() - 2));
}
