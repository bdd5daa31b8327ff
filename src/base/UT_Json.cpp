#include "UT_Json.h"

#include <QJsonDocument>

QVariant UT_Json::parse(QString const &text, bool &ok)
{
    QJsonParseError error;
    QJsonDocument const document = QJsonDocument::fromJson(text.toUtf8(), &error);
    ok = error.error == QJsonParseError::NoError;
    return document.toVariant();
}

QString UT_Json::serializeStr(QVariant const &value)
{
    return QString::fromUtf8(QJsonDocument::fromVariant(value).toJson(QJsonDocument::Compact));
}
